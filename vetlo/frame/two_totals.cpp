#include "vetlo/frame/two_totals.h"

#include <vector>

#include "vetlo/balance/totals.h"
#include "vetlo/cashflow/period_totals.h"
#include "vetlo/output/chart_writer.h"

namespace vetlo {
namespace {

struct TwoTotals {
  double first = 0;
  double second = 0;
};

struct TwoLabels {
  const char* first;
  const char* second;
  const char* total;
};

constexpr TwoLabels kNetWorth = {"Assets", "Liabilities", "Net Worth"};
constexpr TwoLabels kNetIncome = {"Income", "Expenses", "Net Income"};

// What computes is not guarded: its failures go to the caller, and nobody cleans up.

TwoTotals AssetsAndLiabilities(ReportCall& call) {
  call.blnCleanUpArmed = false;
  const auto recAccount = call.dbDov.OpenRecordset("Account");
  const TwoTotals totals{ToDouble(TotalAssets(call.dbDov, *recAccount, call.dtmToDate)),
                         ToDouble(TotalLiabilities(call.dbDov, *recAccount, call.dtmToDate))};
  recAccount->Close();
  return totals;
}

TwoTotals IncomeAndExpenses(ReportCall& call) {
  call.blnCleanUpArmed = false;
  return {ToDouble(TotalIncome(call.dbDov, call.dtmFromDate, call.dtmToDate)),
          ToDouble(TotalExpenses(call.dbDov, call.dtmFromDate, call.dtmToDate))};
}

void ReportTwoTotals(ReportCall& call, const TwoTotals& totals, const TwoLabels& labels) {
  const NumberLocale& locale = call.platform.Locale();
  AmountRows rows;
  rows.Start();
  rows.Add(totals.first, labels.first);
  rows.Add(totals.second, labels.second);
  rows.Close();
  ReportPage page = call.Page();
  WriteAmountReport(page, {"Item", "Total", labels.total, RowRule::kAllRows}, call.Title(), rows,
                    Format(totals.first - totals.second, kAmountPicture, locale), true, locale);
}

void ChartTwoTotals(ReportCall& call, const TwoTotals& totals, const TwoLabels& labels) {
  const NumberLocale& locale = call.platform.Locale();
  AmountMatrix amounts(1, 2);
  amounts(1, 1) = totals.first;
  amounts(1, 2) = totals.second;
  const ScaledChart chart = ScaleChartData(amounts, ChartUnit::kMoney, locale);
  ChartWriter writer = call.Writer();
  writer.SetData(chart.ScaledMatrix);
  writer.SetTitle(call.row.strTitle);
  writer.SetFootnote(call.Caption());
  writer.SetAxisTitle(chart.strUnitLabel);
  writer.LabelItems({{labels.first, totals.first}, {labels.second, totals.second}},
                    ChartUnit::kMoney, ": ");
}

}  // namespace

void ReportAssetsAndLiabilities(ReportCall& call) {
  ReportTwoTotals(call, AssetsAndLiabilities(call), kNetWorth);
}

void ChartAssetsAndLiabilities(ReportCall& call) {
  ChartTwoTotals(call, AssetsAndLiabilities(call), kNetWorth);
}

void ReportIncomeAndExpenses(ReportCall& call) {
  ReportTwoTotals(call, IncomeAndExpenses(call), kNetIncome);
}

void ChartIncomeAndExpenses(ReportCall& call) {
  ChartTwoTotals(call, IncomeAndExpenses(call), kNetIncome);
}

}  // namespace vetlo
