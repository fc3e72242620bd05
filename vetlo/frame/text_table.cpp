#include "vetlo/frame/text_table.h"

namespace vetlo {
namespace {

std::string TextAt(const TextRow& row, std::size_t column) {
  return column < row.size() ? row[column] : "";
}

void LayOut(ReportPage& page, const TextTable& table, std::span<const TextRow> rows) {
  const std::size_t count = table.headers.size();
  std::vector<std::vector<std::string>> texts(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (const TextRow& row : rows) {
      texts[i].push_back(TextAt(row, i));
    }
  }
  std::vector<ReportColumn> measured;
  for (std::size_t i = 0; i < count; ++i) {
    measured.push_back({table.headers[i],
                        i < table.left_columns ? ColumnSide::kLeft : ColumnSide::kRight, texts[i],
                        TextAt(table.total, i)});
  }
  page.LayOut(measured, table.first_stop);
}

}  // namespace

void WriteTextReport(ReportCall& call, const TextTable& table, std::span<const TextRow> rows,
                     bool computed, TextRowWriter write_row) {
  ReportPage page = call.Page();
  LayOut(page, table, rows);
  page.WriteHeading(call.row.strTitle, call.Caption());
  if (!computed) {
    return;
  }
  page.WriteHeaderLine();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    write_row(page, rows[i], i + 1 == rows.size());
  }
  if (!table.total.empty()) {
    page.WriteTotal(table.total);
  }
}

}  // namespace vetlo
