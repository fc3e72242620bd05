#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cashflow/cash_household.h"
#include "tests/support/failing_database.h"
#include "tests/support/failing_objects.h"
#include "tests/support/raises.h"
#include "tests/support/trace_lines.h"

// The reports and charts of income and expenses as their objects receive them.

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr std::int32_t kRow = 1;

TestRow RowOf(std::int32_t report_number, ChartOrReport output, std::int32_t chart_type) {
  return {.number = kRow,
          .report_number = report_number,
          .output = output,
          .chart_type = chart_type,
          .title = "Mine",
          .range = 15,
          .from = kFrom,
          .to = kTo};
}

SmallStore Household() {
  SmallStore store = Accounts();
  AddCategory(store, 1, "Salary", kIncomeCategory);
  AddCategory(store, 2, "Food", kExpenseCategory);
  AddCategory(store, 3, "Toys", kExpenseCategory);
  AddSubCategory(store, 21, "Bakery", 2);
  store.Transaction(Booked(kIncome, 900, 1))
      .Transaction(Booked(kExpense, 45.5, 2, 21))
      .Transaction(Booked(kExpense, 12, 2))
      .Transaction(Booked(kExpense, 1.5, 3));
  return store;
}

// A text that ends at the right edge of a column of so many characters.
std::string AtRight(std::size_t width, const std::string& text) {
  return std::string(width + 1 - text.size(), ' ') + text;
}

std::string TextOf(SmallStore& builder, std::int32_t report_number) {
  const auto store = builder.Row(RowOf(report_number, ChartOrReport::kReport, kBarChart)).Open();
  Drawing drawing;
  drawing.Show(*store, kRow);
  return drawing.report.Text();
}

// ---- expenses, income

class ExpenseReports : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(ExpenseReports, ListCategoriesWithTheirPartsOverTheTotal) {
  SmallStore builder = Household();
  const std::string text = TextOf(builder, GetParam());
  const std::string rule(35, '_');  // 26 cells, a gap of 195 twips, 6 cells: 4035 twips
  EXPECT_THAT(text, ::testing::EndsWith(
                        "Category\t" + AtRight(6, "Amount") + "\r\n" + rule + "\r\n\r\n" +  //
                        "Expense Category\r\n" + rule + "\r\n" +                            //
                        "Food\t" + AtRight(6, "57.50") + "\r\n" +                           //
                        "    Bakery\t" + AtRight(6, "45.50") + "\r\n" +                     //
                        "    Unassigned Subcategory\t" + AtRight(6, "12.00") + "\r\n" +     //
                        "Toys\t" + AtRight(6, "1.50") + "\r\n\r\n" +                        //
                        rule + "\r\n" + rule + "\r\n" +                                     //
                        "Total Expenses\t" + AtRight(6, "59.00")));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, ExpenseReports,
                         ::testing::Values(1, 23, 36, 38, 46, 48, 50, 52));

class IncomeReports : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(IncomeReports, ListCategoriesOverTheTotal) {
  SmallStore builder = Household();
  const std::string text = TextOf(builder, GetParam());
  const std::string rule(24, '_');  // 15 cells, a gap, 6 cells: 2715 twips
  EXPECT_THAT(text, ::testing::EndsWith("Category\t" + AtRight(6, "Amount") + "\r\n" + rule +
                                        "\r\n\r\n" +                                      //
                                        "Income Category\r\n" + rule + "\r\n" +           //
                                        "Salary\t" + AtRight(6, "900.00") + "\r\n\r\n" +  //
                                        rule + "\r\n" + rule + "\r\n" +                   //
                                        "Total Income\t" + AtRight(6, "900.00")));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, IncomeReports,
                         ::testing::Values(22, 35, 37, 45, 47, 49, 51));

class EmptyReports : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(EmptyReports, AreTitleAndCaptionAlone) {
  SmallStore builder = Accounts();
  const auto store = builder.Row(RowOf(GetParam(), ChartOrReport::kReport, kBarChart)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kRow), 0);
  EXPECT_THAT(drawing.report.Text(), Not(::testing::HasSubstr("Category")));
  EXPECT_THAT(drawing.report.Text(), ::testing::StartsWith("\r\nMine\r\n\r\n"));
  EXPECT_THAT(drawing.report.Text(), ::testing::EndsWith("\r\n\r\n\r\n"));
  EXPECT_TRUE(drawing.report.Locked());
}

TEST_P(EmptyReports, AreChartsOfTitleAndFootnoteAlone) {
  SmallStore builder = Accounts();
  const auto store = builder.Row(RowOf(GetParam(), ChartOrReport::kChart, kBarChart)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kRow), 0);
  const bool alone = GetParam() == 4;
  EXPECT_EQ(drawing.chart.Title(), alone ? "Mine" : "Mine:0.00");
  EXPECT_FALSE(drawing.chart.Footnote().empty());
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "Row"), IsEmpty());
  EXPECT_TRUE(drawing.chart.Repaint());
}

INSTANTIATE_TEST_SUITE_P(OfEveryRoutine, EmptyReports, ::testing::Values(1, 22, 4, 3));

// A figure below zero is taken for a heading.
TEST(ExpenseReport, ShowsRowsBelowZeroAsHeadings) {
  SmallStore builder = Accounts();
  AddCategory(builder, 2, "Food", kExpenseCategory);
  builder.Transaction(Booked(kExpense, -7, 2));
  const std::string text = TextOf(builder, 1);
  EXPECT_THAT(text, ::testing::HasSubstr("\r\nFood\r\n__"));
  EXPECT_THAT(text, ::testing::EndsWith("Total Expenses\t" + AtRight(6, "-7.00")));
}

// ---- both directions

class NetReports : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(NetReports, ShowIncomeLessExpensesAsExpensesLessIncome) {
  SmallStore builder = Household();
  EXPECT_THAT(TextOf(builder, GetParam()),
              ::testing::EndsWith("Total Expenses\t" + AtRight(6, "59.00") + "\r\n\r\n" +
                                  std::string(35, '_') + "\r\n" + std::string(35, '_') +
                                  "\r\nExpenses Less Income\t" + AtRight(6, "841.00")));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, NetReports, ::testing::Values(3, 4, 55, 56, 57));

class NetCharts : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(NetCharts, HaveExpensesBelowTheAxis) {
  SmallStore builder = Household();
  const auto store = builder.Row(RowOf(GetParam(), ChartOrReport::kChart, kPieChart)).Open();
  Drawing drawing;
  drawing.Show(*store, kRow);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[900.0,-57.5,-1.5]]"));
  EXPECT_THAT(drawing.chart.ColumnLabels(),
              ElementsAre("Salary:900.00", "Food:-57.50", "All Other Expenses:-1.50"));
  EXPECT_EQ(drawing.chart.Title(), GetParam() == 3 ? "Mine:841.00" : "Mine");
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, NetCharts, ::testing::Values(3, 4, 55, 56, 57));

class ExpenseCharts : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(ExpenseCharts, ShowTheTotalInTheirTitle) {
  SmallStore builder = Household();
  const auto store = builder.Row(RowOf(GetParam(), ChartOrReport::kChart, kBarChart)).Open();
  Drawing drawing;
  drawing.Show(*store, kRow);
  EXPECT_EQ(drawing.chart.Title(), "Mine:59.00");
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[57.5,1.5]]"));
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("Food", "All Other Expenses"));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, ExpenseCharts,
                         ::testing::Values(1, 23, 36, 38, 46, 48, 50, 52));

// Without its amounts a report is measured by the labels that there are.
TEST(NetReport, IsMeasuredByItsLabelsWhereTheRoutineFails) {
  SmallStore builder = Household();
  AddCategory(builder, 4, "A category of a long name", kIncomeCategory);
  builder.Transaction(Booked(kIncome, 1234567, 4)).Row(RowOf(4, ChartOrReport::kReport, kBarChart));
  const auto store = builder.Open();
  RefusingDatabase refusing(*store, "SELECT * FROM SubCategory");
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(refusing, kRow), 0);
  // 25 cells and a gap, and a column that is no wider than its header.
  EXPECT_THAT(drawing.Puts("report", "SelTabs"), ElementsAre("283.5", "3478.5"));
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("4752.0", "12310.0"));
}

// The amounts of one direction are not gathered apart: they are measured with the labels.
TEST(IncomeReport, IsMeasuredByItsAmountsTooWhereTheRoutineFails) {
  SmallStore builder = Household();
  AddCategory(builder, 4, "A category of a long name", kIncomeCategory);
  builder.Transaction(Booked(kIncome, 1234567, 4))
      .Row(RowOf(22, ChartOrReport::kReport, kBarChart));
  const auto store = builder.Open();
  RefusingDatabase refusing(*store, "SELECT * FROM SubCategory");
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(refusing, kRow), 0);
  // 25 and 12 cells with a gap.
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("5592.0", "12310.0"));
}

// ---- a chart that is a routine of its own

struct ChartThatCannotBeTitled {
  explicit ChartThatCannotBeTitled(std::int32_t report_number)
      : store(Household().Row(RowOf(report_number, ChartOrReport::kChart, kBarChart)).Open()),
        watched(*store, never),
        chart(drawing.log, &drawing.frame, {"TitleText"}) {}

  std::int32_t Show() {
    const auto rows = store->OpenRecordset("ChartReportSubType");
    return ResumeNext(
        [&] { drawing.component.ShowChartReport(watched, *rows, kRow, &chart, &drawing.report); });
  }

  std::unique_ptr<Database> store;
  FailurePlan never;
  FailingDatabase watched;
  Drawing drawing;
  FailingChart chart;
};

TEST(CashFlowChart, IsCleanedUpAfterWhereItFailsBehindItsFigures) {
  ChartThatCannotBeTitled shown(3);
  EXPECT_EQ(shown.Show(), 0);
  EXPECT_FALSE(shown.chart.Repaint());
  EXPECT_EQ(shown.drawing.window.MousePointer(), kDefaultPointer);
  EXPECT_EQ(shown.chart.MousePointer(), kDefaultPointer);
  EXPECT_EQ(shown.watched.OpenRecordsets(), 0);
}

TEST(CashFlowChart, LeavesTheReportAloneAndIsShownAnewWhereItFails) {
  ChartThatCannotBeTitled shown(3);
  shown.Show();
  EXPECT_THAT(shown.drawing.Puts("report", "Visible"), IsEmpty());
  EXPECT_THAT(shown.drawing.Puts("chart", "Visible"), ElementsAre("false", "true"));
  EXPECT_THAT(shown.drawing.Puts("chart", "FootnoteText"), IsEmpty());
}

class ChartsOfTheFrame : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(ChartsOfTheFrame, FailToTheCallerBehindTheirFigures) {
  ChartThatCannotBeTitled shown(GetParam());
  EXPECT_EQ(shown.Show(), static_cast<std::int32_t>(FailureNumber::kInvalidCall));
  EXPECT_FALSE(shown.chart.Repaint());
  EXPECT_EQ(shown.drawing.window.MousePointer(), kHourglassPointer);
  EXPECT_THAT(shown.drawing.Puts("chart", "Visible"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfOtherNumbers, ChartsOfTheFrame, ::testing::Values(1, 4, 19, 22));

TEST(CashFlowReport, FailsToTheCallerWhereItCannotBeWritten) {
  const auto store = Household().Row(RowOf(3, ChartOrReport::kReport, kBarChart)).Open();
  Drawing drawing;
  FailingReport report(drawing.log, &drawing.frame, {"SelText"});
  const auto rows = store->OpenRecordset("ChartReportSubType");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] {
    drawing.component.ShowChartReport(*store, *rows, kRow, nullptr, &report);
  }));
  EXPECT_EQ(drawing.window.MousePointer(), kHourglassPointer);
}

// ---- income and expenses as two figures

class TwoFigures : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(TwoFigures, AreReportedWithTheirDifference) {
  SmallStore builder = Household();
  const std::string rule(19, '_');  // 10 cells, a gap, 6 cells: 2115 twips
  EXPECT_THAT(TextOf(builder, GetParam()),
              ::testing::EndsWith("Item\t" + AtRight(6, "Total") + "\r\n" + rule + "\r\n\r\n" +  //
                                  "Income\t" + AtRight(6, "900.00") + "\r\n" +                   //
                                  "Expenses\t" + AtRight(6, "59.00") + "\r\n\r\n" +              //
                                  rule + "\r\n" + rule + "\r\n" +                                //
                                  "Net Income\t" + AtRight(6, "841.00")));
}

TEST_P(TwoFigures, AreNoughtWithoutATransaction) {
  SmallStore builder;
  EXPECT_THAT(TextOf(builder, GetParam()),
              ::testing::EndsWith("Income\t" + AtRight(5, "0.00") + "\r\nExpenses\t" +
                                  AtRight(5, "0.00") + "\r\n\r\n" + std::string(18, '_') + "\r\n" +
                                  std::string(18, '_') + "\r\nNet Income\t" + AtRight(5, "0.00")));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, TwoFigures, ::testing::Values(19, 32, 33, 34, 40, 41, 42));

struct KindCase {
  std::int32_t kind;
  std::string income;
  std::string expenses;
  std::string no_income;
  std::string no_expenses;
};

void PrintTo(const KindCase& a_case, std::ostream* out) { *out << a_case.kind; }

class TwoFiguresChart : public ::testing::TestWithParam<std::tuple<std::int32_t, KindCase>> {};

TEST_P(TwoFiguresChart, HasAColumnForEach) {
  const auto& [number, kind] = GetParam();
  const auto store = Household().Row(RowOf(number, ChartOrReport::kChart, kind.kind)).Open();
  Drawing drawing;
  drawing.Show(*store, kRow);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[900.0,59.0]]"));
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre(kind.income, kind.expenses));
  EXPECT_EQ(drawing.chart.Title(), "Mine");
}

TEST_P(TwoFiguresChart, HasTwoColumnsOfNoughtWithoutATransaction) {
  const auto& [number, kind] = GetParam();
  const auto store = SmallStore().Row(RowOf(number, ChartOrReport::kChart, kind.kind)).Open();
  Drawing drawing;
  drawing.Show(*store, kRow);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[0.0,0.0]]"));
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre(kind.no_income, kind.no_expenses));
  EXPECT_EQ(drawing.chart.AxisTitle(), "$1");
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryNumberAndKind, TwoFiguresChart,
    ::testing::Combine(::testing::Values(19, 32, 33, 34, 40, 41, 42),
                       ::testing::Values(KindCase{kLineChart, "", "", "", ""},
                                         KindCase{kBarChart, "Income", "Expenses", "Income",
                                                  "Expenses"},
                                         KindCase{kPieChart, "Income: 900.00", "Expenses: 59.00",
                                                  "Income: 0.00", "Expenses: 0.00"})));

TEST(TwoFiguresOfAPeriod, OpenIncomeBeforeExpensesBetweenSetUpAndLayOut) {
  const auto store = Accounts().Row(RowOf(19, ChartOrReport::kReport, kBarChart)).Open();
  KeepingStore keeping(*store);
  Drawing drawing;
  drawing.Show(*keeping, kRow);
  std::vector<std::string> expected;
  for (const std::string& table : kLookUpTables) {
    expected.push_back("open " + table);
  }
  expected << EventsOfPeriodTotal(Flow::kIncoming) << EventsOfPeriodTotal(Flow::kOutgoing);
  for (const std::string& table : kLookUpTables) {
    expected.push_back("close " + table);
  }
  // The settings row is the test's own.
  std::erase_if(keeping.events,
                [](const std::string& event) { return event.ends_with("ChartReportSubType"); });
  EXPECT_THAT(keeping.events, ElementsAreArray(expected));
}

class TwoFiguresThatFail : public ::testing::TestWithParam<ChartOrReport> {};

TEST_P(TwoFiguresThatFail, FailToTheCaller) {
  const auto store =
      Accounts().Transaction(Booked(kExpense, 1, 77)).Row(RowOf(19, GetParam(), kBarChart)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kRow),
            static_cast<std::int32_t>(FailureNumber::kNoCurrentRecord));
  EXPECT_EQ(drawing.window.MousePointer(), kHourglassPointer);
  EXPECT_THAT(drawing.Puts("report", "SelText"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(InBothOutputs, TwoFiguresThatFail,
                         ::testing::Values(ChartOrReport::kReport, ChartOrReport::kChart));

}  // namespace
}  // namespace vetlo
