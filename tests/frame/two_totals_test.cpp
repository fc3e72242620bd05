#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "tests/frame/both_rows.h"
#include "tests/frame/frame_lines.h"
#include "tests/support/failing_database.h"
#include "tests/support/failing_objects.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

TestRow RowOf(std::int32_t report_number, std::int32_t kind) {
  return {.report_number = report_number,
          .chart_type = kind,
          .title = "Mine",
          .range = 12,
          .to = Day(2026, 1, 31)};
}

SmallStore Household(std::int32_t kind = kBarChart, std::int32_t report_number = 18) {
  SmallStore store;
  store.Account(1, "Bank", kCheckingAccount, 1234.5).Account(2, "Card", kCreditCard, -40.25);
  AddBothRows(store, RowOf(report_number, kind));
  return store;
}

class AssetsAndLiabilities : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(AssetsAndLiabilities, AreReportedInThisOrder) {
  const auto store = Household(kBarChart, GetParam()).Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kReportRow);
  const std::string rule(22, '_');  // 1320 + 195 + 960 = 2475 twips
  std::vector<std::string> expected;
  expected << kReportPointers << OpenedTables() << kReportPrepared << OpenedAndClosed({"Account"})
           << LayOutLines("3432.0", "1798.5") << HeadingLines("Mine", "Up to 2026/01/31")
           << PutText("report", "SelText",
                      "Item\t    Total\r\n" + rule + "\r\n\r\n" +  //
                          "Assets\t 1,234.50\r\n" +                //
                          "Liabilities\t    40.25\r\n\r\n" +       //
                          rule + "\r\n" + rule + "\r\n" + "Net Worth\t 1,194.25")
           << kReportShown << ClosedTables() << kReportPointersBack;
  EXPECT_THAT(EventsWithWholeTexts(drawing), ElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(All, AssetsAndLiabilities, ::testing::Values(18, 31, 39));

TEST(AssetsAndLiabilitiesReport, ShowsBothRowsWhereThereIsNothing) {
  const auto store = SmallStore().Row({.report_number = 18, .title = "Mine"}).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_TRUE(drawing.report.Text().find("Assets\t  0.00\r\nLiabilities\t  0.00\r\n\r\n") !=
              std::string::npos)
      << drawing.report.Text();
  EXPECT_TRUE(drawing.report.Text().ends_with("Net Worth\t  0.00"));
}

TEST(AssetsAndLiabilitiesReport, ShowsANetWorthBelowZero) {
  const auto store = SmallStore()
                         .Account(2, "Card", kCreditCard, -40.25)
                         .Row({.report_number = 18, .title = "Mine"})
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_TRUE(drawing.report.Text().ends_with("Net Worth\t -40.25")) << drawing.report.Text();
}

// ---- as a chart

struct KindCase {
  std::int32_t kind;
  std::string chart_type;
  std::string assets;
  std::string liabilities;
};

void PrintTo(const KindCase& test, std::ostream* out) { *out << "kind " << test.kind; }

class AssetsAndLiabilitiesChart : public ::testing::TestWithParam<KindCase> {};

TEST_P(AssetsAndLiabilitiesChart, IsWrittenInThisOrder) {
  const auto store = Household(GetParam().kind).Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kChartRow);
  std::vector<std::string> expected;
  expected << kChartPointers << OpenedTables() << ChartPrepared("false", GetParam().chart_type)
           << OpenedAndClosed({"Account"}) << Put("chart", "ChartData", "[[1234.5,40.25]]")
           << PutText("chart", "TitleText", "Mine")
           << PutText("chart", "FootnoteText", "Up to 2026/01/31")
           << PutText("chart", "Plot.Axis(1,1).AxisTitle.Text", "$1") << Put("chart", "Row", "1")
           << PutText("chart", "RowLabel", "") << Put("chart", "Column", "1")
           << PutText("chart", "ColumnLabel", GetParam().assets) << Put("chart", "Column", "2")
           << PutText("chart", "ColumnLabel", GetParam().liabilities) << kChartShown
           << ClosedTables() << kChartPointersBack;
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, AssetsAndLiabilitiesChart,
                         ::testing::Values(KindCase{kLineChart, "3", "", ""},
                                           KindCase{kBarChart, "1", "Assets", "Liabilities"},
                                           KindCase{kPieChart, "14", "Assets: 1,234.50",
                                                    "Liabilities: 40.25"}));

TEST(AssetsAndLiabilitiesChart, ShowsUnscaledAmountsInSlices) {
  const auto store = SmallStore()
                         .Account(1, "Bank", kCheckingAccount, 2500000)
                         .Row({.report_number = 31,
                               .output = ChartOrReport::kChart,
                               .chart_type = kPieChart,
                               .title = "Mine"})
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[250000.0,0.0]]"));
  EXPECT_THAT(drawing.chart.ColumnLabels(),
              ElementsAre("Assets: 2,500,000.00", "Liabilities: 0.00"));
}

// ---- income and expenses

SmallStore Earning(std::int32_t report_number, std::int32_t kind) {
  SmallStore store;
  store.Account(1, "Bank", kCheckingAccount, 7)
      .Insert("Category", {{"CategoryNumber", 1}, {"CategoryName", "Work"}, {"CategoryType", 0}})
      .Transaction({.type = kIncome, .total = 1234.5, .account = 1, .category = 1})
      .Transaction({.type = kExpense, .total = 40.25, .account = 1, .category = 1});
  AddBothRows(store, RowOf(report_number, kind));
  return store;
}

class IncomeAndExpenses : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(IncomeAndExpenses, AreReportedWithTheirNet) {
  const auto store = Earning(GetParam(), kBarChart).Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow);
  const std::string rule(21, '_');  // 1200 + 195 + 960 = 2355 twips
  EXPECT_TRUE(drawing.report.Text().ends_with("Income\t 1,234.50\r\nExpenses\t    40.25\r\n\r\n" +
                                              rule + "\r\n" + rule + "\r\nNet Income\t 1,194.25"))
      << drawing.report.Text();
}

TEST_P(IncomeAndExpenses, AreChartedAsTwoColumns) {
  const auto store = Earning(GetParam(), kPieChart).Open();
  Drawing drawing;
  drawing.Show(*store, kChartRow);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[1234.5,40.25]]"));
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("Income: 1,234.50", "Expenses: 40.25"));
  EXPECT_EQ(drawing.chart.Title(), "Mine");
}

INSTANTIATE_TEST_SUITE_P(All, IncomeAndExpenses, ::testing::Values(19, 32, 33, 34, 40, 41, 42));

// ---- without a guard

class TotalsThatFail : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(TotalsThatFail, FailToTheCaller) {
  SmallStore builder = Household();
  // Their sum is more than an amount can be.
  builder.Execute("UPDATE Account SET OpeningBalance = 9000000000000000000");
  const auto store = builder.Open();
  FailurePlan never;
  FailingDatabase watched(*store, never);
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(watched, GetParam()),
            static_cast<std::int32_t>(FailureNumber::kOverflow));
  EXPECT_EQ(drawing.window.MousePointer(), kHourglassPointer);
  EXPECT_THAT(drawing.Puts("report", "Visible"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "Visible"), IsEmpty());
  EXPECT_FALSE(drawing.report.Locked());
  EXPECT_EQ(watched.OpenRecordsets(), 0);
}

INSTANTIATE_TEST_SUITE_P(AsReportAndAsChart, TotalsThatFail,
                         ::testing::Values(kReportRow, kChartRow));

// The balance before counts once more, so that both sides stay without a failure.
TEST(AssetsAndLiabilitiesReport, CountsTheBalanceBeforeInPlaceOfOneThatFails) {
  SmallStore builder = Household();
  builder.Execute("UPDATE Account SET OpeningBalance = 'much' WHERE AccountNumber = 2");
  const auto store = builder.Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kReportRow), 0);
  EXPECT_TRUE(drawing.report.Text().ends_with("Net Worth\t 2,469.00")) << drawing.report.Text();
}

}  // namespace
}  // namespace vetlo
