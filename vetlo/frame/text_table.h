#pragma once

#include <span>
#include <string>
#include <vector>

#include "vetlo/output/report_page.h"

namespace vetlo {

using TextRow = std::vector<std::string>;

// The columns of a table that is computed as text.
struct TextColumns {
  std::vector<std::string> headers;
  std::size_t left_columns = 1;  // how many of them, from the first, are flush left
  TextRow extras = {};           // texts outside the rows that must fit too; may be empty
};

// Measures a table and lays the page out for it. A row that was never written counts as empty.
void LayOutTexts(ReportPage& page, const TextColumns& columns, std::span<const TextRow> rows,
                 FirstStop first_stop = FirstStop::kOnIndent);

}  // namespace vetlo
