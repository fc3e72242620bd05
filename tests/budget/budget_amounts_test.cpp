#include "vetlo/budget/budget_amounts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/budget/budget_store.h"
#include "tests/cashflow/cash_household.h"
#include "tests/support/drawing.h"
#include "tests/support/raises.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

// ---- the amount of a range

// January 1, February 2, and so on in powers of ten of the month's own number: no two sums of
// different months are equal.
MonthAmounts Marked() {
  MonthAmounts months = {};
  std::int64_t amount = 1;
  for (Currency& month : months) {
    month = Currency::FromUnits(amount);
    amount *= 10;
  }
  return months;
}

struct RangeCase {
  std::string name;
  Date from;
  Date to;
  std::int64_t expected;  // a digit for each month, January last
};

void PrintTo(const RangeCase& a_case, std::ostream* out) { *out << a_case.name; }

class BudgetOfDateRange : public ::testing::TestWithParam<RangeCase> {};

TEST_P(BudgetOfDateRange, CountsEveryMonthThatItTouchesWhole) {
  EXPECT_EQ(TotalBudgetOfDateRange(Marked(), GetParam().from, GetParam().to),
            Currency::FromUnits(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, BudgetOfDateRange,
    ::testing::Values(
        RangeCase{"OneDay", Day(2026, 3, 7), Day(2026, 3, 7), 100},
        RangeCase{"WithinAMonth", Day(2026, 3, 7), Day(2026, 3, 20), 100},
        RangeCase{"OneWholeMonth", Day(2026, 2, 1), Day(2026, 2, 28), 10},
        RangeCase{"TwoDaysInTwoMonths", Day(2026, 1, 31), Day(2026, 2, 1), 11},
        RangeCase{"AcrossTheTurnOfTheYear", Day(2025, 12, 31), Day(2026, 1, 1), 100000000001},
        RangeCase{"December", Day(2026, 12, 5), Day(2026, 12, 6), 100000000000},
        RangeCase{"OneYear", Day(2026, 1, 1), Day(2026, 12, 31), 111111111111},
        RangeCase{"ThirteenMonths", Day(2026, 1, 15), Day(2027, 1, 15), 111111111112},
        RangeCase{"TwoYears", Day(2026, 1, 1), Day(2027, 12, 31), 222222222222},
        RangeCase{"BackwardsWithinAMonth", Day(2026, 3, 20), Day(2026, 3, 7), 100},
        RangeCase{"BackwardsByAMonth", Day(2026, 4, 1), Day(2026, 3, 31), 0},
        RangeCase{"BackwardsByAYear", Day(2027, 3, 1), Day(2026, 3, 1), 0},
        RangeCase{"BeforeTheEpoch", Day(1899, 11, 30), Day(1899, 12, 1), 110000000000},
        RangeCase{"WithATimeOfDay", Date{Day(2026, 3, 31).days + 0.75},
                  Date{Day(2026, 3, 31).days + 0.99}, 100},
        RangeCase{"AtTheEndOfAllDates", Day(9998, 12, 1), Day(9998, 12, 31), 100000000000},
        RangeCase{"AMonthBeforeTheCalendarsLast", Day(9999, 10, 31), Day(9999, 11, 1),
                  11000000000}),
    [](const auto& named) { return named.param.name; });

// From the first date that there is to the last: 9899 years.
TEST(TotalBudgetOfDateRange, CountsEveryMonthOfAllDates) {
  MonthAmounts ones;
  ones.fill(Money(1));
  EXPECT_EQ(TotalBudgetOfDateRange(ones, Day(100, 1, 1), Day(9998, 12, 31)), Money(9899 * 12));
}

// The day behind the range's last month is looked for, and there is none.
TEST(TotalBudgetOfDateRange, FailsInTheLastMonthOfTheCalendar) {
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall,
                     [] { TotalBudgetOfDateRange(Marked(), Day(9999, 12, 1), Day(9999, 12, 1)); }));
}

TEST(TotalBudgetOfDateRange, FailsAtTheFirstMonthThatIsNotThere) {
  const std::vector<Currency> two = {Money(1), Money(2)};
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange,
                     [&] { TotalBudgetOfDateRange(two, Day(2026, 2, 1), Day(2026, 3, 1)); }));
}

TEST(TotalBudgetOfDateRange, DoesWithTheMonthsThatItReads) {
  const std::vector<Currency> two = {Money(1), Money(2)};
  EXPECT_EQ(TotalBudgetOfDateRange(two, Day(2026, 1, 1), Day(2026, 2, 1)), Money(3));
}

TEST(TotalBudgetOfDateRange, FailsWithoutAnyMonth) {
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange,
                     [] { TotalBudgetOfDateRange({}, Day(2026, 1, 1), Day(2026, 1, 1)); }));
}

TEST(TotalBudgetOfDateRange, ReadsNothingWhereTheRangeIsBackwards) {
  EXPECT_EQ(TotalBudgetOfDateRange({}, Day(2026, 2, 1), Day(2026, 1, 1)), Money(0));
}

TEST(TotalBudgetOfDateRange, FailsPastTheLargestAmount) {
  MonthAmounts months;
  months.fill(Currency::FromUnits(9000000000000000000));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow,
                     [&] { TotalBudgetOfDateRange(months, Day(2026, 1, 1), Day(2026, 2, 1)); }));
}

TEST(TotalBudgetOfDateRange, IsWhatTheComponentAnswers) {
  Drawing drawing;
  EXPECT_EQ(drawing.component.TotalBudgetOfDateRange(Marked(), Day(2026, 1, 31), Day(2026, 2, 1)),
            Currency::FromUnits(11));
}

// ---- the amounts of a subcategory

SmallStore Household() {
  SmallStore store;
  AddCategory(store, 1, "Food", kExpenseCategory);
  AddCategory(store, 2, "Home", kExpenseCategory);
  AddSubCategory(store, 11, "Bakery", 1);
  AddSubCategory(store, 12, "Market", 1);
  AddSubCategory(store, 21, "Rent", 2);
  return store;
}

MonthAmounts MonthsOf(const std::vector<std::pair<std::size_t, double>>& amounts) {
  MonthAmounts months = {};
  for (const auto& [month, amount] : amounts) {
    months.at(month - 1) = Money(amount);
  }
  return months;
}

TEST(SubCategoryBudgetByMonth, TakesTheTwelveColumnsInTheOrderOfTheYear) {
  SmallStore builder = Household();
  Budgeted months;
  MonthAmounts expected = {};
  for (std::int32_t month = 1; month <= 12; ++month) {
    months.emplace_back(month, Money(month));
    expected.at(static_cast<std::size_t>(month - 1)) = Money(month);
  }
  BudgetSubCategory(builder, 11, months);
  const auto store = builder.Open();
  EXPECT_EQ(SubCategoryBudgetByMonth(*store, kInForce, 11), expected);
}

TEST(SubCategoryBudgetByMonth, CountsNullAsNought) {
  SmallStore builder = Household();
  BudgetSubCategory(builder, 11, {{2, Money(5)}, {3, Null{}}, {4, Money(7)}});
  const auto store = builder.Open();
  EXPECT_EQ(SubCategoryBudgetByMonth(*store, kInForce, 11), MonthsOf({{2, 5}, {4, 7}}));
}

TEST(SubCategoryBudgetByMonth, LooksAtBothPartsOfTheKey) {
  SmallStore builder = Household();
  BudgetSubCategory(builder, 11, EveryMonth(5), 2);
  BudgetSubCategory(builder, 12, EveryMonth(7));
  const auto store = builder.Open();
  EXPECT_EQ(SubCategoryBudgetByMonth(*store, kInForce, 11), MonthAmounts{});
}

TEST(SubCategoryBudgetByMonth, OpensOneTable) {
  const auto store = Household().Open();
  KeepingStore keeping(*store);
  SubCategoryBudgetByMonth(*keeping, kInForce, 11);
  EXPECT_THAT(keeping.events, ElementsAreArray(OneAfterAnother({"SubCategoryBudgetInfo"})));
}

// ---- the amounts of a category

TEST(CategoryBudgetByMonth, AddsTheSubcategoriesToTheCategorysOwn) {
  SmallStore builder = Household();
  BudgetCategory(builder, 1, {{1, Money(1)}, {3, Money(2)}});
  BudgetSubCategory(builder, 11, {{1, Money(10)}, {12, Money(20)}});
  BudgetSubCategory(builder, 12, {{1, Money(100)}});
  BudgetSubCategory(builder, 21, EveryMonth(1000));
  const auto store = builder.Open();
  EXPECT_EQ(CategoryBudgetByMonth(*store, kInForce, 1, false),
            MonthsOf({{1, 111}, {3, 2}, {12, 20}}));
}

TEST(CategoryBudgetByMonth, OfACategoryWithoutARowIsThatOfItsSubcategories) {
  SmallStore builder = Household();
  BudgetSubCategory(builder, 11, {{5, Money(10)}});
  const auto store = builder.Open();
  EXPECT_EQ(CategoryBudgetByMonth(*store, kInForce, 1, false), MonthsOf({{5, 10}}));
}

TEST(CategoryBudgetByMonth, OfTheCategoryAloneLeavesOutItsSubcategories) {
  SmallStore builder = Household();
  BudgetCategory(builder, 1, {{1, Money(1)}});
  BudgetSubCategory(builder, 11, EveryMonth(10));
  const auto store = builder.Open();
  EXPECT_EQ(CategoryBudgetByMonth(*store, kInForce, 1, true), MonthsOf({{1, 1}}));
}

TEST(CategoryBudgetByMonth, CountsNullAsNought) {
  SmallStore builder = Household();
  BudgetCategory(builder, 1, {{2, Money(1)}, {3, Null{}}, {4, Money(4)}});
  BudgetSubCategory(builder, 11, {{2, Null{}}, {3, Null{}}});
  const auto store = builder.Open();
  EXPECT_EQ(CategoryBudgetByMonth(*store, kInForce, 1, false), MonthsOf({{2, 1}, {4, 4}}));
}

TEST(CategoryBudgetByMonth, LeavesOutOtherBudgets) {
  SmallStore builder = Household();
  BudgetCategory(builder, 1, EveryMonth(5), 2);
  BudgetSubCategory(builder, 11, EveryMonth(7), 2);
  const auto store = builder.Open();
  EXPECT_EQ(CategoryBudgetByMonth(*store, kInForce, 1, false), MonthAmounts{});
}

TEST(CategoryBudgetByMonth, OpensTheTableAndThenAStatementForEachMonth) {
  const auto store = Household().Open();
  KeepingStore keeping(*store);
  CategoryBudgetByMonth(*keeping, 3, 17, false);
  std::vector<std::string> sources = {"CategoryBudgetInfo"};
  for (const char* month :
       {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}) {
    sources.push_back(SumText(month, "17", "3"));
  }
  EXPECT_THAT(keeping.events, ElementsAreArray(OneAfterAnother(sources)));
}

TEST(CategoryBudgetByMonth, OfTheCategoryAloneOpensTheTableAlone) {
  const auto store = Household().Open();
  KeepingStore keeping(*store);
  CategoryBudgetByMonth(*keeping, kInForce, 1, true);
  EXPECT_THAT(keeping.events, ElementsAreArray(OneAfterAnother({"CategoryBudgetInfo"})));
}

TEST(CategoryBudgetByMonth, FailsToTheCallerWhereTheStoreFails) {
  const auto store = Household().Open();
  RefusingDatabase refusing(*store, SumText("Apr", "1", "1"));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable,
                     [&] { CategoryBudgetByMonth(refusing, kInForce, 1, false); }));
}

// ---- the budget in force

SmallStore Budgets(const std::vector<std::pair<std::int32_t, std::int32_t>>& numbers_and_attrs) {
  SmallStore store;
  for (const auto& [number, attr] : numbers_and_attrs) {
    store.Insert("Budget", {{"BudgetNumber", number}, {"BudgetAttr", attr}});
  }
  return store;
}

TEST(BudgetInForce, IsTheFirstThatIsMarkedSo) {
  const auto store = Budgets({{1, 0}, {2, 9}, {4, 1}, {3, 1}}).Open();
  EXPECT_EQ(BudgetInForce(*store), 3);
}

class NoBudgetInForce
    : public ::testing::TestWithParam<std::vector<std::pair<std::int32_t, std::int32_t>>> {};

TEST_P(NoBudgetInForce, FailsAndClosesTheTable) {
  const auto store = Budgets(GetParam()).Open();
  KeepingStore keeping(*store);
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { BudgetInForce(*keeping); }));
  EXPECT_THAT(keeping.events, ElementsAre("open Budget", "close Budget"));
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutRows, NoBudgetInForce,
                         ::testing::Values(std::vector<std::pair<std::int32_t, std::int32_t>>{},
                                           std::vector<std::pair<std::int32_t, std::int32_t>>{
                                               {1, 0}, {2, 11}}));

}  // namespace
}  // namespace vetlo
