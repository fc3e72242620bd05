#include "vetlo/frame/budget_reports.h"

#include <functional>
#include <vector>

#include "vetlo/budget/budget_amounts.h"
#include "vetlo/budget/budget_rows.h"
#include "vetlo/frame/text_table.h"

namespace vetlo {
namespace {

// A row with a first figure is data, one with a label alone a heading over a rule, any other a
// blank line.
void WriteRow(ReportPage& page, const BudgetRow& row, bool last) {
  if (!row[1].empty()) {
    page.WriteCells(row);
  } else if (!row[0].empty()) {
    page.Write("\r\n" + row[0] + "\r\n" + page.RuleLine());
  }
  if (!last) {
    page.Write("\r\n");
  }
}

void ShowBudgetTable(ReportCall& call, const std::vector<std::string>& headers,
                     const std::function<void(BudgetRows&)>& compute) {
  BudgetRows rows;
  const std::int32_t lngComputeError = call.Guard([&] { compute(rows); });
  WriteTextReport(call, {.headers = headers}, rows.elements(), lngComputeError == 0, WriteRow);
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
