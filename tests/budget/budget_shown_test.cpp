#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/budget/budget_store.h"
#include "tests/cashflow/cash_household.h"
#include "tests/support/failing_database.h"
#include "tests/support/failing_objects.h"
#include "tests/support/raises.h"
#include "tests/support/trace_lines.h"

// The reports of budgets as their document receives them.

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kAnnual = 58;
constexpr std::int32_t kAgainstActual = 59;

TestRow RowOf(std::int32_t report_number, Date to = kTo) {
  return {.report_number = report_number, .title = "Mine", .range = 15, .from = kFrom, .to = to};
}

SmallStore Household() {
  SmallStore store = Accounts();
  store.Insert("Budget", {{"BudgetNumber", kInForce}, {"BudgetAttr", 1}});
  AddCategory(store, 1, "Food", kExpenseCategory);
  AddCategory(store, 2, "Salary", kIncomeCategory);
  AddSubCategory(store, 11, "Bakery", 1);
  BudgetCategory(store, 1, EveryMonth(80));
  BudgetSubCategory(store, 11, EveryMonth(20.5));
  store.Transaction(Booked(kExpense, 45.5, 1, 11)).Transaction(Booked(kIncome, 900, 2));
  return store;
}

// A line of a table, its figures ending at the right edges of columns of these widths.
std::string Line(const std::vector<std::string>& texts, const std::vector<std::size_t>& widths) {
  std::string line = texts.front();
  for (std::size_t i = 1; i < texts.size(); ++i) {
    line += "\t" + std::string(widths.at(i - 1) + 1 - texts[i].size(), ' ') + texts[i];
  }
  return line;
}

const std::string kHeadOfMonth = "\r\nMine\r\n\r\n2026/01/01 Through 2026/01/31\r\n\r\n\r\n";

// ---- budget against actual

TEST(BudgetAgainstActualReport, IsThisText) {
  const auto store = Household().Row(RowOf(kAgainstActual)).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  const std::string rule(54, '_');  // 26, 6, 6 and 10 cells with three gaps: 6345 twips
  const auto line = [](const std::vector<std::string>& texts) { return Line(texts, {6, 6, 10}); };
  EXPECT_EQ(drawing.report.Text(),
            kHeadOfMonth +                                                               //
                line({"Category", "Actual", "Budget", "Difference"}) + "\r\n" +          //
                rule + "\r\n\r\n" +                                                      //
                "\r\nExpense Category\r\n" + rule + "\r\n" +                             //
                line({"Food", "45.50", "100.5", "-55.00"}) + "\r\n" +                    //
                line({"    Bakery", "45.50", "20.5", "25.00"}) + "\r\n" +                //
                line({"    Unassigned Subcategory", "0.00", "80", "-80.00"}) + "\r\n" +  //
                "\r\n" +                                                                 //
                line({"Total Expenses", "45.50", "100.5", "-55.00"}) + "\r\n" +          //
                "\r\nIncome Category\r\n" + rule + "\r\n" +                              //
                line({"Salary", "900.00", "0", "900.00"}) + "\r\n" +                     //
                "\r\n" +                                                                 //
                line({"Total Income", "900.00", "0", "900.00"}));
}

TEST(BudgetAgainstActualReport, HasFourTabStops) {
  const auto store = Household().Row(RowOf(kAgainstActual)).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("report", "SelTabCount"), ElementsAre("4"));
  EXPECT_THAT(drawing.Puts("report", "SelTabs"),
              ElementsAre("283.5", "3598.5", "4513.5", "5428.5"));
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("7302.0", "12310.0"));
}

TEST(BudgetAgainstActualReport, IsTotalsAloneWithoutACategory) {
  const auto store = SmallStore()
                         .Insert("Budget", {{"BudgetNumber", 1}, {"BudgetAttr", 1}})
                         .Row(RowOf(kAgainstActual))
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  const auto line = [](const std::vector<std::string>& texts) { return Line(texts, {6, 6, 10}); };
  const std::string rule(42, '_');  // 14, 6, 6 and 10 cells with three gaps: 4905 twips
  EXPECT_EQ(drawing.report.Text(),
            kHeadOfMonth + line({"Category", "Actual", "Budget", "Difference"}) + "\r\n" + rule +
                "\r\n\r\n" + "\r\n" + line({"Total Expenses", "0.00", "0", "0.00"}) + "\r\n" +
                "\r\n" + line({"Total Income", "0.00", "0", "0.00"}));
}

// ---- the annual budget

const std::vector<std::size_t> kAnnualWidths = {5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6};

std::string YearLine(const std::string& label, const std::string& month, const std::string& year) {
  std::vector<std::string> texts(14, month);
  texts.front() = label;
  texts.back() = year;
  return Line(texts, kAnnualWidths);
}

std::string AnnualTable() {
  const std::string rule(114, '_');  // 26, twelve times 5, and 6 cells with 13 gaps: 13575 twips
  return Line({"Category", "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct",
               "Nov", "Dec", "Annual"},
              kAnnualWidths) +
         "\r\n" + rule + "\r\n\r\n" +                                    //
         "\r\nExpense Category\r\n" + rule + "\r\n" +                    //
         YearLine("Food", "100.5", "1,206") + "\r\n" +                   //
         YearLine("    Bakery", "20.5", "246") + "\r\n" +                //
         YearLine("    Unassigned Subcategory", "80", "960") + "\r\n" +  //
         "\r\n" +                                                        //
         YearLine("Total Expense Budget", "100.5", "1,206") + "\r\n" +   //
         "\r\nIncome Category\r\n" + rule + "\r\n" +                     //
         YearLine("Salary", "0", "0") + "\r\n" +                         //
         "\r\n" +                                                        //
         YearLine("Total Income Budget", "0", "0");
}

TEST(AnnualBudgetReport, IsThisText) {
  const auto store = Household().Row(RowOf(kAnnual)).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_EQ(drawing.report.Text(), kHeadOfMonth + AnnualTable());
}

TEST(AnnualBudgetReport, ShowsTheSameFiguresForAnotherRange) {
  const auto store = Household().Row(RowOf(kAnnual, Day(2027, 5, 3))).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_EQ(drawing.report.Text(),
            "\r\nMine\r\n\r\n2026/01/01 Through 2027/05/03\r\n\r\n\r\n" + AnnualTable());
}

TEST(AnnualBudgetReport, WidensTheDocumentBeyondThePage) {
  const auto store = Household().Row(RowOf(kAnnual)).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("14532.0"));
  EXPECT_THAT(drawing.Puts("report", "SelTabCount"), ElementsAre("14"));
  const auto stops = drawing.Puts("report", "SelTabs");
  ASSERT_EQ(stops.size(), 14U);
  EXPECT_EQ(stops[1], "3598.5");  // 26 cells and a gap
  EXPECT_EQ(stops[2], "4393.5");  // 5 cells and a gap
  EXPECT_EQ(stops[13], "13138.5");
}

// ---- both

class BudgetReports : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(BudgetReports, AreTitleAndCaptionAloneWithoutABudgetInForce) {
  SmallStore builder = Household();
  builder.Execute("UPDATE Budget SET BudgetAttr = 0");
  const auto store = builder.Row(RowOf(GetParam())).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, 1), 0);
  EXPECT_EQ(drawing.report.Text(), kHeadOfMonth);
  EXPECT_TRUE(drawing.report.Locked());
  EXPECT_EQ(drawing.window.MousePointer(), kDefaultPointer);
}

TEST_P(BudgetReports, LeaveAChartEmpty) {
  TestRow row = RowOf(GetParam());
  row.output = ChartOrReport::kChart;
  const auto store = Household().Row(row).Open();
  KeepingStore keeping(*store);
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*keeping, 1), 0);
  EXPECT_THAT(drawing.Puts("chart", "TitleText"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_THAT(EventsAt(keeping.events, "Budget"), IsEmpty());
}

TEST_P(BudgetReports, AreMeasuredByTheRowsThatAFailureHasLeft) {
  const auto store = Household().Row(RowOf(GetParam())).Open();
  RefusingDatabase refusing(*store, "SELECT * FROM Category WHERE CategoryType= 0");
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(refusing, 1), 0);
  EXPECT_EQ(drawing.report.Text(), kHeadOfMonth);
  EXPECT_EQ(drawing.Puts("report", "SelTabs").at(1), "3598.5");
}

TEST_P(BudgetReports, FailToTheCallerWhereTheyCannotBeWritten) {
  const auto store = Household().Row(RowOf(GetParam())).Open();
  Drawing drawing;
  FailingReport report(drawing.log, &drawing.frame, {"SelText"});
  const auto rows = store->OpenRecordset("ChartReportSubType");
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] {
    drawing.component.ShowChartReport(*store, *rows, 1, nullptr, &report);
  }));
  EXPECT_EQ(drawing.window.MousePointer(), kHourglassPointer);
}

INSTANTIATE_TEST_SUITE_P(OfBothKinds, BudgetReports, ::testing::Values(kAnnual, kAgainstActual));

}  // namespace
}  // namespace vetlo
