#include "vetlo/services/holdings.h"

#include <gtest/gtest.h>

#include "tests/support/failing_database.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using testing::Day;
using testing::Money;
using testing::SmallStore;

// ---- units

TEST(UnitsCourse, HasNothingBeforeItsFirstMovement) {
  UnitsCourse course;
  course.Add(Day(2026, 3, 2), 5);
  EXPECT_FALSE(course.GoTo(Day(2026, 3, 1)));
  EXPECT_TRUE(course.GoTo(Day(2026, 3, 2)));
  EXPECT_EQ(course.Units(), 5);
}

TEST(UnitsCourse, CountsAllOfADay) {
  UnitsCourse course;
  course.Add(Date{Day(2026, 3, 2).days + 0.999}, 5);
  course.Add(Day(2026, 3, 3), 1);
  EXPECT_TRUE(course.GoTo(Day(2026, 3, 2)));
  EXPECT_EQ(course.Units(), 5);
}

TEST(UnitsCourse, StaysWhereNothingMoves) {
  UnitsCourse course;
  course.Add(Day(2026, 3, 2), 5);
  course.GoTo(Day(2026, 3, 2));
  EXPECT_TRUE(course.GoTo(Day(2026, 3, 9)));
  EXPECT_EQ(course.Units(), 5);
}

// Added in any other order the sum has another last digit.
static_assert((0.1 + 0.2) + 0.3 != (0.3 + 0.2) + 0.1);

TEST(UnitsCourse, AddsInTheOrderOfEntryWhateverTheDates) {
  UnitsCourse course;
  course.Add(Day(2026, 3, 4), 0.1);
  course.Add(Day(2026, 3, 3), 0.2);
  course.Add(Day(2026, 3, 2), 0.3);
  course.GoTo(Day(2026, 3, 2));
  EXPECT_EQ(course.Units(), 0.3);
  course.GoTo(Day(2026, 3, 3));
  EXPECT_EQ(course.Units(), 0.2 + 0.3);
  course.GoTo(Day(2026, 3, 4));
  EXPECT_EQ(course.Units(), (0.1 + 0.2) + 0.3);
}

TEST(UnitsCourse, AddsInTheOrderOfEntryWhereSomeComeLater) {
  UnitsCourse course;
  course.Add(Day(2026, 3, 2), 0.3);
  course.Add(Day(2026, 3, 4), 0.2);
  course.Add(Day(2026, 3, 3), 0.1);
  course.GoTo(Day(2026, 3, 3));
  EXPECT_EQ(course.Units(), 0.3 + 0.1);
  course.GoTo(Day(2026, 3, 4));
  EXPECT_EQ(course.Units(), (0.3 + 0.2) + 0.1);
}

// ---- their worth

constexpr std::int32_t kFund = 8;

// One unit of one item, and a price of 10, then 20.
SmallStore OneUnit() {
  SmallStore store;
  store.Account(kFund, "fund", kInvestmentAccount)
      .Transaction({.type = kUnitsReceived,
                    .date = Day(1950, 1, 1),
                    .account = kFund,
                    .item = 3,
                    .quantity = 1.0})
      .Insert("PriceType", {{"PriceTypeNumber", 1}, {"PriceTypeAttr", 1}});
  for (const auto& [date, price] : {std::pair{Day(1950, 1, 1), 10.0}, {Day(1980, 1, 1), 20.0}}) {
    store.Insert(
        "PriceRecord",
        {{"AccountItemNumber", 3}, {"PriceTypeNumber", 1}, {"PriceDate", date}, {"Price", price}});
  }
  return store;
}

TEST(Holdings, AreWorthThePriceOfEachDate) {
  const auto store = OneUnit().Open();
  Holdings holdings(*store, kFund, Day(2026, 1, 1));
  EXPECT_EQ(holdings.WorthOn(Day(1949, 12, 31)), Currency{});
  EXPECT_EQ(holdings.WorthOn(Day(1950, 1, 1)), Money(10));
  EXPECT_EQ(holdings.WorthOn(Day(1979, 12, 31)), Money(10));
  EXPECT_EQ(holdings.WorthOn(Day(1980, 1, 1)), Money(20));
  EXPECT_EQ(holdings.WorthOn(Day(1980, 1, 1)), Money(20));
}

// Few operations for the 913 points from January 1950 to January 2026.
TEST(Holdings, AskTheStoreForWhatChangesNotForEveryDate) {
  const auto store = OneUnit().Open();
  testing::FailurePlan plan;
  testing::FailingDatabase counted(*store, plan);
  AmountMatrix matrix;
  ItemLabels labels;
  Services().BalanceHistory(counted, kFund, Day(1950, 1, 1), Day(2026, 1, 31), matrix, labels);
  EXPECT_EQ(labels.UpperBound(), 913U);
  EXPECT_EQ(matrix(1, 913), 20);
  EXPECT_LT(plan.Operations(), 100);
}

}  // namespace
}  // namespace vetlo
