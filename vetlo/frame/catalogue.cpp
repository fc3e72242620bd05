#include "vetlo/frame/catalogue.h"

#include <algorithm>
#include <vector>

#include "vetlo/balance/debts.h"
#include "vetlo/balance/net_worth.h"
#include "vetlo/cashflow/category_reports.h"
#include "vetlo/frame/balance_history.h"
#include "vetlo/frame/budget_reports.h"
#include "vetlo/frame/history_reports.h"
#include "vetlo/frame/investment_reports.h"
#include "vetlo/frame/list_reports.h"
#include "vetlo/frame/price_reports.h"
#include "vetlo/frame/two_totals.h"
#include "vetlo/investment/positions.h"

namespace vetlo {
namespace {

enum class ChartTitle { kWithTotal, kAlone };

using Case = void (*)(ReportCall& call);

// One family of numbers that run the same code. A family of one amount series differs from the
// next in what computes it and in its words; what is not such a series has cases of its own.
struct Family {
  std::vector<std::int32_t> numbers;
  Currency (*compute)(const ReportCall& call, AmountRows& rows) = nullptr;
  AmountTable table = {};
  ChartTitle chart_title = ChartTitle::kAlone;
  // A chart that is a routine of its own guards for itself: what fails in it later is cleaned up
  // after.
  bool chart_guards_itself = false;
  Case own_report = nullptr;
  Case own_chart = nullptr;
};

Family OfSeries(std::vector<std::int32_t> numbers,
                Currency (*compute)(const ReportCall&, AmountRows&), AmountTable table,
                ChartTitle chart_title) {
  Family family{std::move(numbers)};
  family.compute = compute;
  family.table = std::move(table);
  family.chart_title = chart_title;
  return family;
}

Family OfItsOwn(std::vector<std::int32_t> numbers, Case report, Case chart) {
  Family family{std::move(numbers)};
  family.own_report = report;
  family.own_chart = chart;
  return family;
}

Family WithAReportOfItsOwn(Family family, Case report) {
  family.own_report = report;
  return family;
}

Family WithAChartApart(Family family) {
  family.chart_guards_itself = true;
  return family;
}

// ---- the skeletons of one amount series

void ReportSeries(ReportCall& call, const Family& family) {
  const NumberLocale& locale = call.platform.Locale();
  AmountRows rows;
  Currency curTotal;
  const std::int32_t lngComputeError = call.Guard([&] { curTotal = family.compute(call, rows); });
  ReportPage page = call.Page();
  WriteAmountReport(page, family.table, call.Title(), rows,
                    Format(curTotal, kAmountPicture, locale), lngComputeError == 0, locale);
}

void ChartSeries(ReportCall& call, const Family& family) {
  const NumberLocale& locale = call.platform.Locale();
  AmountRows rows;
  Currency curTotal;
  const auto compute = [&] { curTotal = family.compute(call, rows); };
  const std::int32_t lngComputeError =
      family.chart_guards_itself ? ResumeNext(call.dbDov, compute) : call.Guard(compute);
  ChartWriter writer = call.Writer();
  if (lngComputeError == 0) {
    WriteSeries(writer, rows, ChartUnit::kMoney, locale);
  }
  writer.SetTitle(family.chart_title == ChartTitle::kWithTotal
                      ? call.row.strTitle + ":" + Format(curTotal, kAmountPicture, locale)
                      : call.row.strTitle);
  writer.SetFootnote(call.Caption());
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

Currency ValuesByType(const ReportCall& call, AmountRows& rows) {
  return InvestmentValuesByType(call.dbDov, rows, call.Target());
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
      OfItsOwn({7}, ReportAccountList, nullptr),
      OfItsOwn({9, 10, 54}, ReportPaymentCalendar, nullptr),
      OfSeries({2}, Between<NetByPayee>,
               {"Payee", "From Payee Less Pay to Payee",
                "Total Receiving Amount Less Total Payment Amount", RowRule::kLabelledRows},
               kAlone),
      OfSeries({8}, On<DebtorsByPayee>, {"Debtor", "Total", "Total", RowRule::kLabelledRows},
               kWithTotal),
      OfSeries({11}, On<OverdraftsByCreditCard>,
               {"Credit Card", "Overdraft", "Total", RowRule::kAllRows}, kWithTotal),
      OfSeries({12}, On<CreditorsByPayee>, {"Creditor", "Total", "Total", RowRule::kLabelledRows},
               kWithTotal),
      OfItsOwn({28, 29, 30}, ReportHistory, ChartHistory),
      WithAReportOfItsOwn(OfSeries({13}, ChartedInvestmentsByAccount, {}, kAlone),
                          ReportInvestmentsByAccount),
      WithAReportOfItsOwn(OfSeries({14}, ChartedInvestmentsByType, {}, kAlone),
                          ReportInvestmentsByType),
      OfItsOwn({15}, ReportYieldByAccount, ChartYieldByAccount),
      OfItsOwn({16}, ReportYieldByType, ChartYieldByType),
      OfItsOwn({17}, ReportAllPrices, ChartAllPrices),
      OfSeries({24, 53}, ValuesByType,
               {"Investment Type", "Value", "Total", RowRule::kNonNegativeRows}, kWithTotal),
      OfItsOwn({26}, ReportAccountPrices, ChartAccountPrices),
      OfItsOwn({27}, ReportItemPrices, ChartItemPrices),
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
  if (family == nullptr) {
    return;
  }
  if (family->own_report != nullptr) {
    family->own_report(call);
  } else {
    ReportSeries(call, *family);
  }
}

void DrawChart(ReportCall& call) {
  const Family* const family = FamilyOf(call.row.ChartReportSubTypeAttr);
  if (family == nullptr) {
    return;
  }
  if (family->own_chart != nullptr) {
    family->own_chart(call);
  } else if (family->compute != nullptr) {
    ChartSeries(call, *family);
  }
}

}  // namespace vetlo
