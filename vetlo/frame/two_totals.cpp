#include "vetlo/frame/two_totals.h"

#include <vector>

#include "vetlo/balance/totals.h"
#include "vetlo/cashflow/period_totals.h"
#include "vetlo/output/chart_writer.h"
#include "vetlo/output/date_range_caption.h"

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

TwoTotals AssetsAndLiabilities(ReportCall& call) {
  call.blnCleanUpArmed = false;
  const auto recAccount = call.dbDov.OpenRecordset("Account");
  const TwoTotals totals{ToDouble(TotalAssets(call.dbDov, *recAccount, call.dtmToDate)),
                         ToDouble(TotalLiabilities(call.dbDov, *recAccount, call.dtmToDate))};
  recAccount->Close();
  return totals;
}

void ReportTwoTotals(ReportCall& call, const TwoTotals& totals, const TwoLabels& labels) {
  const NumberLocale& locale = call.platform.Locale();
  const std::vector<std::string> names = {labels.first, labels.second};
  const std::vector<std::string> amounts = {Format(totals.first, kAmountPicture, locale),
                                            Format(totals.second, kAmountPicture, locale)};
  const std::string strTotal = Format(totals.first - totals.second, kAmountPicture, locale);
  ReportPage page = call.Page();
  page.LayOut({{"Item", ColumnSide::kLeft, names, labels.total},
               {"Total", ColumnSide::kRight, amounts, strTotal}});
  page.WriteHeading(call.row.strTitle, DateRangeCaption(call.dtmFromDate, call.dtmToDate));
  page.WriteHeaderLine();
  page.WriteCells(std::vector<std::string>{names[0], amounts[0]}, "\r\n");
  page.WriteCells(std::vector<std::string>{names[1], amounts[1]}, "\r\n\r\n");
  page.WriteTotal(std::vector<std::string>{labels.total, strTotal});
}

void ChartTwoTotals(ReportCall& call, const TwoTotals& totals, const TwoLabels& labels) {
  const NumberLocale& locale = call.platform.Locale();
  AmountMatrix amounts(1, 2);
  amounts(1, 1) = totals.first;
  amounts(1, 2) = totals.second;
  const ScaledChart chart = ScaleChartData(amounts, ChartUnit::kMoney, locale);
  ChartWriter writer(*call.objChart, call.row.ChartType, call.form, locale);
  writer.SetData(chart.ScaledMatrix);
  writer.SetTitle(call.row.strTitle);
  writer.SetFootnote(DateRangeCaption(call.dtmFromDate, call.dtmToDate));
  writer.SetAxisTitle(chart.strUnitLabel);
  writer.LabelItems({{labels.first, totals.first}, {labels.second, totals.second}},
                    ChartUnit::kMoney, ": ");
}

TwoTotals IncomeAndExpenses(ReportCall& call) {
  call.blnCleanUpArmed = false;
  return {ToDouble(TotalIncome(call.dbDov, call.dtmFromDate, call.dtmToDate)),
          ToDouble(TotalExpenses(call.dbDov, call.dtmFromDate, call.dtmToDate))};
}

constexpr TwoLabels kNetWorth = {"Assets", "Liabilities", "Net Worth"};
constexpr TwoLabels kNetIncome = {"Income", "Expenses", "Net Income"};

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
