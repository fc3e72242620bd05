#include "vetlo/frame/budget_reports.h"

#include <functional>
#include <vector>

#include "vetlo/budget/budget_amounts.h"
#include "vetlo/budget/budget_rows.h"

namespace vetlo {
namespace {

// The texts of one column, from the first row to the last.
std::vector<std::string> ColumnTexts(const BudgetRows& rows, std::size_t column) {
  std::vector<std::string> texts;
  for (const BudgetRow& row : rows.elements()) {
    texts.push_back(column < row.size() ? row[column] : "");
  }
  return texts;
}

// A row with a first figure is data, one with a label alone a heading over a rule, any other a
// blank line.
void WriteRow(ReportPage& page, const BudgetRow& row) {
  if (!row[1].empty()) {
    page.WriteCells(row);
  } else if (!row[0].empty()) {
    page.Write("\r\n" + row[0] + "\r\n" + page.RuleLine());
  }
}

void ShowBudgetTable(ReportCall& call, const std::vector<std::string>& headers,
                     const std::function<void(BudgetRows&)>& compute) {
  BudgetRows rows;
  const std::int32_t lngComputeError = call.Guard([&] { compute(rows); });
  std::vector<std::vector<std::string>> texts;
  for (std::size_t i = 0; i < headers.size(); ++i) {
    texts.push_back(ColumnTexts(rows, i));
  }
  std::vector<ReportColumn> columns;
  for (std::size_t i = 0; i < headers.size(); ++i) {
    columns.push_back({headers[i], i == 0 ? ColumnSide::kLeft : ColumnSide::kRight, texts[i], ""});
  }
  ReportPage page = call.Page();
  page.LayOut(columns);
  page.WriteHeading(call.row.strTitle, call.Caption());
  if (lngComputeError != 0) {
    return;
  }
  page.WriteHeaderLine();
  for (std::size_t i = 1; i <= rows.UpperBound(); ++i) {
    WriteRow(page, rows(i));
    if (i != rows.UpperBound()) {
      page.Write("\r\n");
    }
  }
}

}  // namespace

void ShowAnnualBudgetReport(ReportCall& call) {
  std::vector<std::string> headers = {"Category"};
  headers.insert(headers.end(), kMonthNames.begin(), kMonthNames.end());
  headers.emplace_back("Annual");
  ShowBudgetTable(call, headers, [&](BudgetRows& rows) {
    AnnualBudgetRows(call.dbDov, rows, call.platform.Locale());
  });
}

void ShowBudgetAgainstActualReport(ReportCall& call) {
  ShowBudgetTable(call, {"Category", "Actual", "Budget", "Difference"}, [&](BudgetRows& rows) {
    BudgetAgainstActualRows(call.dbDov, call.dtmFromDate, call.dtmToDate, rows,
                            call.platform.Locale());
  });
}

}  // namespace vetlo
