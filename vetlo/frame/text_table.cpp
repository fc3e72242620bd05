#include "vetlo/frame/text_table.h"

namespace vetlo {
namespace {

std::string TextAt(const TextRow& row, std::size_t column) {
  return column < row.size() ? row[column] : "";
}

}  // namespace

void LayOutTexts(ReportPage& page, const TextColumns& columns, std::span<const TextRow> rows,
                 FirstStop first_stop) {
  const std::size_t count = columns.headers.size();
  std::vector<std::vector<std::string>> texts(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (const TextRow& row : rows) {
      texts[i].push_back(TextAt(row, i));
    }
  }
  std::vector<ReportColumn> measured;
  for (std::size_t i = 0; i < count; ++i) {
    measured.push_back({columns.headers[i],
                        i < columns.left_columns ? ColumnSide::kLeft : ColumnSide::kRight, texts[i],
                        TextAt(columns.extras, i)});
  }
  page.LayOut(measured, first_stop);
}

}  // namespace vetlo
