#include "vetlo/frame/catalogue.h"

#include <algorithm>
#include <vector>

#include "vetlo/balance/net_worth.h"
#include "vetlo/cashflow/category_reports.h"
#include "vetlo/frame/balance_history.h"
#include "vetlo/frame/budget_reports.h"
#include "vetlo/frame/two_totals.h"
#include "vetlo/output/chart_writer.h"
#include "vetlo/output/date_range_caption.h"

namespace vetlo {
namespace {

enum class ChartTitle { kWithTotal, kAlone };

// One family of numbers that run the same code. A family of one amount series differs from the
// next in what computes it and in its words; any other has routines of its own.
struct Family {
  std::vector<std::int32_t> numbers;
  Currency (*compute)(const ReportCall& call, AmountRows& rows) = nullptr;
  AmountTable table;
  ChartTitle chart_title = ChartTitle::kAlone;
  void (*report)(ReportCall& call) = nullptr;  // in place of the above
  void (*chart)(ReportCall& call) = nullptr;
};

Family OfSeries(std::vector<std::int32_t> numbers,
                Currency (*compute)(const ReportCall&, AmountRows&), AmountTable table,
                ChartTitle chart_title);

Family OfItsOwn(std::vector<std::int32_t> numbers, void (*report)(ReportCall&),
                void (*chart)(ReportCall&)) {
  return {std::move(numbers), nullptr, {}, ChartTitle::kAlone, report, chart};
}

// ---- the skeletons of one amount series

const Family* FamilyOf(std::int32_t number);

void ReportSeries(ReportCall& call) {
  const Family& family = *FamilyOf(call.row.ChartReportSubTypeAttr);
  AmountRows rows;
  Currency curTotal;
  const std::int32_t lngComputeError = call.Guard([&] { curTotal = family.compute(call, rows); });
  ReportPage page = call.Page();
  WriteAmountReport(page, family.table,
                    {call.row.strTitle, DateRangeCaption(call.dtmFromDate, call.dtmToDate)}, rows,
                    curTotal, lngComputeError == 0, call.platform.Locale());
}

// A chart that is a routine of its own guards for itself: what fails in it later is cleaned up
// after.
enum class Guarded { kByTheFrame, kByItself };

template <Guarded guarded>
void ChartSeries(ReportCall& call) {
  const Family& family = *FamilyOf(call.row.ChartReportSubTypeAttr);
  const NumberLocale& locale = call.platform.Locale();
  AmountRows rows;
  Currency curTotal;
  const auto compute = [&] { curTotal = family.compute(call, rows); };
  const std::int32_t lngComputeError =
      guarded == Guarded::kByTheFrame ? call.Guard(compute) : ResumeNext(compute);
  ChartWriter writer(*call.objChart, call.row.ChartType, call.form, locale);
  if (lngComputeError == 0) {
    WriteSeries(writer, rows, ChartUnit::kMoney, locale);
  }
  writer.SetTitle(family.chart_title == ChartTitle::kWithTotal
                      ? call.row.strTitle + ":" + Format(curTotal, kAmountPicture, locale)
                      : call.row.strTitle);
  writer.SetFootnote(DateRangeCaption(call.dtmFromDate, call.dtmToDate));
}

Family OfSeries(std::vector<std::int32_t> numbers,
                Currency (*compute)(const ReportCall&, AmountRows&), AmountTable table,
                ChartTitle chart_title) {
  return {std::move(numbers), compute,      std::move(table),
          chart_title,        ReportSeries, ChartSeries<Guarded::kByTheFrame>};
}

Family WithAChartApart(Family family) {
  family.chart = ChartSeries<Guarded::kByItself>;
  return family;
}

// ---- families whose figures are still to come stand under their title

void ReportTitleAlone(ReportCall& call) {
  ReportPage page = call.Page();
  page.LayOut({});
  page.WriteHeading(call.row.strTitle, DateRangeCaption(call.dtmFromDate, call.dtmToDate));
}

void ChartTitleAlone(ReportCall& call) {
  call.objChart->SetTitleText(call.row.strTitle);
  call.objChart->SetFootnoteText(DateRangeCaption(call.dtmFromDate, call.dtmToDate));
}

// ---- what computes the families of one series

using OnOneDate = Currency (*)(Database&, Date, AmountRows&, ChartOrReport);

template <OnOneDate routine>
Currency On(const ReportCall& call, AmountRows& rows) {
  return routine(call.dbDov, call.dtmToDate, rows, call.Target());
}

using OfAPeriod = Currency (*)(Database&, Date, Date, AmountRows&, ChartOrReport);

template <OfAPeriod routine>
Currency Between(const ReportCall& call, AmountRows& rows) {
  return routine(call.dbDov, call.dtmFromDate, call.dtmToDate, rows, call.Target());
}

const std::vector<Family>& Catalogue() {
  constexpr auto kWithTotal = ChartTitle::kWithTotal;
  constexpr auto kAlone = ChartTitle::kAlone;
  static const std::vector<Family> families = {
      OfSeries({5}, On<NetWorthByGroup>, {"Account", "Total", "Net Worth", RowRule::kHeadingRows},
               kWithTotal),
      OfSeries({6}, On<NetWorthByAccount>, {"Account", "Total", "Net Worth", RowRule::kHeadingRows},
               kAlone),
      OfSeries({20, 43}, On<AssetsByAccount>, {"Account", "Balance", "Total", RowRule::kAllRows},
               kWithTotal),
      OfSeries({21, 44}, On<LiabilitiesByAccount>,
               {"Account", "Balance", "Total", RowRule::kAllRows}, kWithTotal),
      OfItsOwn({18, 31, 39}, ReportAssetsAndLiabilities, ChartAssetsAndLiabilities),
      OfItsOwn({25}, ReportBalanceHistory, ChartBalanceHistory),
      OfSeries({1, 23, 36, 38, 46, 48, 50, 52}, Between<ExpensesByCategory>,
               {"Category", "Amount", "Total Expenses", RowRule::kHeadingRows}, kWithTotal),
      OfSeries({22, 35, 37, 45, 47, 49, 51}, Between<IncomeByCategory>,
               {"Category", "Amount", "Total Income", RowRule::kHeadingRows}, kWithTotal),
      OfSeries({4, 55, 56, 57}, Between<IncomeAndExpensesByCategory>,
               {"Category", "Total", "Expenses Less Income", RowRule::kHeadingRows}, kAlone),
      WithAChartApart(OfSeries({3}, Between<CashFlowByCategory>,
                               {"Category", "Total", "Expenses Less Income", RowRule::kHeadingRows},
                               kWithTotal)),
      OfItsOwn({19, 32, 33, 34, 40, 41, 42}, ReportIncomeAndExpenses, ChartIncomeAndExpenses),
      OfItsOwn({58}, ShowAnnualBudgetReport, nullptr),
      OfItsOwn({59}, ShowBudgetAgainstActualReport, nullptr),
      OfItsOwn({7, 9, 10, 54}, ReportTitleAlone, nullptr),
      OfItsOwn({2, 8, 11, 12, 13, 14, 15, 16, 17, 24, 26, 27, 28, 29, 30, 53}, ReportTitleAlone,
               ChartTitleAlone),
  };
  return families;
}

const Family* FamilyOf(std::int32_t number) {
  const auto found = std::ranges::find_if(Catalogue(), [number](const Family& family) {
    return std::ranges::find(family.numbers, number) != family.numbers.end();
  });
  return found == Catalogue().end() ? nullptr : &*found;
}

}  // namespace

void DrawReport(ReportCall& call) {
  const Family* const family = FamilyOf(call.row.ChartReportSubTypeAttr);
  if (family != nullptr) {
    family->report(call);
  }
}

void DrawChart(ReportCall& call) {
  const Family* const family = FamilyOf(call.row.ChartReportSubTypeAttr);
  if (family != nullptr && family->chart != nullptr) {
    family->chart(call);
  }
}

}  // namespace vetlo
