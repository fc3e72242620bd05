#include "vetlo/budget/budget_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/budget/budget_store.h"
#include "tests/cashflow/cash_household.h"
#include "tests/support/raises.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

using Events = std::vector<std::string>;

const NumberLocale kLocale = {};

SmallStore InForce() {
  SmallStore store = Accounts();
  store.Insert("Budget", {{"BudgetNumber", kInForce}, {"BudgetAttr", 1}});
  return store;
}

SmallStore Household() {
  SmallStore store = InForce();
  AddCategory(store, 1, "Food", kExpenseCategory);
  AddCategory(store, 2, "Salary", kIncomeCategory);
  AddCategory(store, 3, "Moved", kNeitherCategory);
  AddSubCategory(store, 11, "market", 1);
  AddSubCategory(store, 12, "Bakery", 1);
  return store;
}

std::vector<BudgetRow> AgainstActual(Database& store, Date from = kFrom, Date to = kTo) {
  BudgetRows rows;
  BudgetAgainstActualRows(store, from, to, rows, kLocale);
  return rows.elements();
}

std::vector<BudgetRow> AgainstActual(SmallStore& builder, Date from = kFrom, Date to = kTo) {
  const auto store = builder.Open();
  return AgainstActual(*store, from, to);
}

std::vector<BudgetRow> Annual(SmallStore& builder) {
  const auto store = builder.Open();
  BudgetRows rows;
  AnnualBudgetRows(*store, rows, kLocale);
  return rows.elements();
}

BudgetRow Blank(std::size_t columns) { return BudgetRow(columns); }
BudgetRow Heading(const std::string& label, std::size_t columns) {
  BudgetRow row(columns);
  row[0] = label;
  return row;
}
// The same text in every month, and the year's.
BudgetRow Year(const std::string& label, const std::string& month, const std::string& year) {
  BudgetRow row(14, month);
  row.front() = label;
  row.back() = year;
  return row;
}

// ---- budget against actual

TEST(BudgetAgainstActualRows, ListBothGroupsWithTheirPartsAndTotals) {
  SmallStore builder = Household();
  BudgetCategory(builder, 1, {{1, Money(80)}});
  BudgetSubCategory(builder, 12, {{1, Money(20)}});
  BudgetCategory(builder, 2, {{1, Money(1000)}});
  builder.Transaction(Booked(kExpense, 45.5, 1, 12))
      .Transaction(Booked(kExpense, 80, 1))
      .Transaction(Booked(kIncome, 900, 2));
  EXPECT_THAT(
      AgainstActual(builder),
      ElementsAre(Heading("Expense Category", 4),  //
                  BudgetRow{"Food", "125.50", "100", "25.50"},
                  BudgetRow{"    Bakery", "45.50", "20", "25.50"},
                  BudgetRow{"    market", "0.00", "0", "0.00"},
                  BudgetRow{"    Unassigned Subcategory", "80.00", "80", "0.00"}, Blank(4),
                  BudgetRow{"Total Expenses", "125.50", "100", "25.50"},
                  Heading("Income Category", 4), BudgetRow{"Salary", "900.00", "1,000", "-100.00"},
                  Blank(4), BudgetRow{"Total Income", "900.00", "1,000", "-100.00"}));
}

TEST(BudgetAgainstActualRows, HaveNoHeadingButATotalWhereAGroupHasNoCategory) {
  SmallStore builder = InForce();
  EXPECT_THAT(AgainstActual(builder),
              ElementsAre(Blank(4), BudgetRow{"Total Expenses", "0.00", "0", "0.00"}, Blank(4),
                          BudgetRow{"Total Income", "0.00", "0", "0.00"}));
}

TEST(BudgetAgainstActualRows, KeepACategoryWithoutAnyFigure) {
  SmallStore builder = Household();
  const auto rows = AgainstActual(builder);
  EXPECT_EQ(rows.at(1), (BudgetRow{"Food", "0.00", "0", "0.00"}));
  EXPECT_EQ(rows.at(4), (BudgetRow{"    Unassigned Subcategory", "0.00", "0", "0.00"}));
}

TEST(BudgetAgainstActualRows, TrimTheBudgetAlone) {
  SmallStore builder = Household();
  BudgetCategory(builder, 2, {{1, Money(12.5)}});
  builder.Transaction(Booked(kIncome, 12.5, 2));
  EXPECT_EQ(AgainstActual(builder).at(8), (BudgetRow{"Salary", "12.50", "12.5", "0.00"}));
}

TEST(BudgetAgainstActualRows, SetPartOfAMonthBesideTheBudgetOfAllOfIt) {
  SmallStore builder = Household();
  BudgetCategory(builder, 2, {{1, Money(100)}});
  TestTransaction early = Booked(kIncome, 40, 2);
  early.date = Day(2026, 1, 5);
  TestTransaction late = Booked(kIncome, 50, 2);
  late.date = Day(2026, 1, 25);
  builder.Transaction(early).Transaction(late);
  EXPECT_EQ(AgainstActual(builder, Day(2026, 1, 1), Day(2026, 1, 10)).at(8),
            (BudgetRow{"Salary", "40.00", "100", "-60.00"}));
}

TEST(BudgetAgainstActualRows, CountTheBudgetOfEveryMonthOfTwoYears) {
  SmallStore builder = Household();
  BudgetCategory(builder, 2, EveryMonth(1));
  EXPECT_EQ(AgainstActual(builder, Day(2025, 1, 1), Day(2026, 12, 31)).at(8),
            (BudgetRow{"Salary", "0.00", "24", "-24.00"}));
}

// An expense booked to a category of income is in neither group.
TEST(BudgetAgainstActualRows, CountTheRecordsOfTheGroupsOwnDirection) {
  SmallStore builder = Household();
  builder.Transaction(Booked(kExpense, 5, 2)).Transaction(Booked(kIncome, 7, 1, 11));
  const auto rows = AgainstActual(builder);
  EXPECT_EQ(rows.at(1).at(1), "0.00");
  EXPECT_EQ(rows.at(3).at(1), "0.00");
  EXPECT_EQ(rows.at(8).at(1), "0.00");
}

TEST(BudgetAgainstActualRows, CountACategoryThatThePeriodTotalLeavesOut) {
  SmallStore builder = InForce();
  AddCategory(builder, 9, "Kept out", kExpenseCategory, 9);
  builder.Transaction(Booked(kExpense, 5, 9));
  EXPECT_EQ(AgainstActual(builder).at(3), (BudgetRow{"Total Expenses", "5.00", "0", "5.00"}));
}

Events operator+(Events events, const Events& more) {
  events.insert(events.end(), more.begin(), more.end());
  return events;
}

std::string Categories(std::int32_t type) {
  return "SELECT * FROM Category WHERE CategoryType= " + std::to_string(type) +
         " ORDER BY CategoryName";
}
std::string Parts(const std::string& category) {
  return "SELECT * FROM SubCategory WHERE CategoryNumber= " + category +
         " ORDER BY SubCategoryName";
}

Events WholeBudgetOf(const std::string& category) {
  std::vector<std::string> sources = {"CategoryBudgetInfo"};
  for (const std::string_view month : kMonthNames) {
    sources.push_back(SumText(month, category, "1"));
  }
  return OneAfterAnother(sources);
}

SmallStore OneCategoryWithAPart() {
  SmallStore store = InForce();
  AddCategory(store, 1, "Food", kExpenseCategory);
  AddSubCategory(store, 11, "Bakery", 1);
  return store;
}

TEST(BudgetAgainstActualRows, OpenTheBudgetOfASubjectBeforeItsRecords) {
  const auto store = OneCategoryWithAPart().Open();
  KeepingStore keeping(*store);
  AgainstActual(*keeping);
  constexpr Flow kOut = Flow::kOutgoing;
  EXPECT_THAT(
      keeping.events,
      ElementsAreArray(
          Events{"open Budget", "close Budget", "open " + Categories(1)} + WholeBudgetOf("1") +
          EventsOfCategoryTotal(kOut, " AND CategoryNumber= 1", "Category") +
          Events{"open " + Parts("1"), "open SubCategoryBudgetInfo",
                 "close SubCategoryBudgetInfo"} +
          EventsOfCategoryTotal(kOut, " AND SubCategoryNumber= 11", "SubCategory") +
          Events{"open CategoryBudgetInfo", "close CategoryBudgetInfo"} +
          EventsOfCategoryTotal(kOut, " AND CategoryNumber= 1 AND ISNULL(SubCategoryNumber)",
                                "Category") +
          Events{"close " + Parts("1"), "close " + Categories(1), "open " + Categories(0),
                 "close " + Categories(0)}));
}

TEST(BudgetAgainstActualRows, AreClosedAndFailWhereATotalFails) {
  const auto store = OneCategoryWithAPart().Open();
  RefusingDatabase refusing(*store, "SubCategoryBudgetInfo");
  KeepingStore keeping(refusing);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { AgainstActual(*keeping); }));
  const Events last(keeping.events.end() - 3, keeping.events.end());
  EXPECT_THAT(last, ::testing::UnorderedElementsAre("open " + Parts("1"), "close " + Parts("1"),
                                                    "close " + Categories(1)));
}

TEST(BudgetAgainstActualRows, FailWithoutABudgetInForce) {
  SmallStore builder = Accounts();
  AddCategory(builder, 1, "Food", kExpenseCategory);
  const auto store = builder.Open();
  BudgetRows rows;
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord,
                     [&] { BudgetAgainstActualRows(*store, kFrom, kTo, rows, kLocale); }));
  EXPECT_EQ(rows.UpperBound(), 0U);
}

// ---- the annual budget

TEST(AnnualBudgetRows, ListMonthsAndYear) {
  SmallStore builder = Household();
  BudgetCategory(builder, 2, EveryMonth(1200));
  const auto rows = Annual(builder);
  EXPECT_EQ(rows.at(8), Year("Salary", "1,200", "14,400"));
  EXPECT_EQ(rows.at(10), Year("Total Income Budget", "1,200", "14,400"));
}

TEST(AnnualBudgetRows, ShowACategorysSumAndBelowItItsParts) {
  SmallStore builder = Household();
  BudgetCategory(builder, 1, EveryMonth(12.5));
  BudgetSubCategory(builder, 11, EveryMonth(1));
  BudgetSubCategory(builder, 12, EveryMonth(2));
  EXPECT_THAT(
      Annual(builder),
      ElementsAre(Heading("Expense Category", 14), Year("Food", "15.5", "186"),
                  Year("    Bakery", "2", "24"), Year("    market", "1", "12"),
                  Year("    Unassigned Subcategory", "12.5", "150"), Blank(14),
                  Year("Total Expense Budget", "15.5", "186"), Heading("Income Category", 14),
                  Year("Salary", "0", "0"), Blank(14), Year("Total Income Budget", "0", "0")));
}

TEST(AnnualBudgetRows, AddTheCategoriesOfAGroupMonthByMonth) {
  SmallStore builder = InForce();
  AddCategory(builder, 1, "Food", kExpenseCategory);
  AddCategory(builder, 2, "Home", kExpenseCategory);
  BudgetCategory(builder, 1, {{1, Money(1)}, {12, Money(2)}});
  BudgetCategory(builder, 2, {{1, Money(10)}, {6, Money(20)}});
  EXPECT_EQ(Annual(builder).at(4), (BudgetRow{"Total Expense Budget", "11", "0", "0", "0", "0",
                                              "20", "0", "0", "0", "0", "0", "2", "33"}));
}

TEST(AnnualBudgetRows, HaveNoHeadingButATotalWhereAGroupHasNoCategory) {
  SmallStore builder = InForce();
  EXPECT_THAT(Annual(builder), ElementsAre(Blank(14), Year("Total Expense Budget", "0", "0"),
                                           Blank(14), Year("Total Income Budget", "0", "0")));
}

TEST(AnnualBudgetRows, OpenNoRecords) {
  const auto store = OneCategoryWithAPart().Open();
  KeepingStore keeping(*store);
  BudgetRows rows;
  AnnualBudgetRows(*keeping, rows, kLocale);
  EXPECT_THAT(
      keeping.events,
      ElementsAreArray(
          Events{"open Budget", "close Budget", "open " + Categories(1)} + WholeBudgetOf("1") +
          Events{"open " + Parts("1"), "open SubCategoryBudgetInfo", "close SubCategoryBudgetInfo",
                 "open CategoryBudgetInfo", "close CategoryBudgetInfo", "close " + Parts("1"),
                 "close " + Categories(1), "open " + Categories(0), "close " + Categories(0)}));
}

TEST(AnnualBudgetRows, FailWithoutABudgetInForce) {
  const auto store = Accounts().Open();
  BudgetRows rows;
  EXPECT_TRUE(
      Raises(FailureNumber::kNoCurrentRecord, [&] { AnnualBudgetRows(*store, rows, kLocale); }));
}

TEST(AnnualBudgetRows, AreClosedWhereTheStoreFails) {
  const auto store = OneCategoryWithAPart().Open();
  RefusingDatabase refusing(*store, SumText("Dec", "1", "1"));
  KeepingStore keeping(refusing);
  BudgetRows rows;
  EXPECT_TRUE(
      Raises(FailureNumber::kStoreUnusable, [&] { AnnualBudgetRows(*keeping, rows, kLocale); }));
  EXPECT_EQ(keeping.events.back(), "close " + Categories(1));
}

}  // namespace
}  // namespace vetlo
