#pragma once

#include <span>
#include <string>
#include <vector>

#include "vetlo/frame/report_call.h"

namespace vetlo {

using TextRow = std::vector<std::string>;

// A table that is computed as text.
struct TextTable {
  std::vector<std::string> headers;
  std::size_t left_columns = 1;  // how many of them, from the first, are flush left
  TextRow total = {};            // the last line, under a double rule; empty: there is none
  FirstStop first_stop = FirstStop::kOnIndent;
};

// Writes one row as it is told apart by what stands in it: a head, a blank line, data.
using TextRowWriter = void (*)(ReportPage& page, const TextRow& row, bool last);

// The whole report of such a table. All rows are measured, one that was never written as empty
// texts. Where computing failed the report is its heading alone.
void WriteTextReport(ReportCall& call, const TextTable& table, std::span<const TextRow> rows,
                     bool computed, TextRowWriter write_row);

}  // namespace vetlo
