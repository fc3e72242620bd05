#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using testing::Day;
using ::testing::ElementsAre;
using testing::Money;
using testing::SmallStore;

struct History {
  std::vector<std::string> dates;
  std::vector<double> balances;
};

History HistoryOf(Database& store, std::int32_t account, Date from, Date to) {
  AmountMatrix matrix;
  ItemLabels labels;
  Services().BalanceHistory(store, account, from, to, matrix, labels);
  EXPECT_EQ(matrix.Series(), 1U);
  EXPECT_EQ(matrix.Items(), labels.UpperBound());
  return {labels.elements(), matrix.elements()};
}

const Date kOpenStart = Services().EarliestDate();
const Date kOpenEnd = Services().LatestDate();

// An account with an opening balance of 100 and nothing that moved.
SmallStore QuietAccount() {
  SmallStore store;
  store.Account(1, "a", kCheckingAccount, 100);
  return store;
}

std::vector<std::string> PointsOf(Date from, Date to) {
  return HistoryOf(*QuietAccount().Open(), 1, from, to).dates;
}

// ---- the points

TEST(HistoryPoints, OfADayAreThatDay) {
  EXPECT_THAT(PointsOf(Day(2026, 3, 1), Day(2026, 3, 1)), ElementsAre("2026/03/01"));
}

TEST(HistoryPoints, AreTheDaysEarliestFirst) {
  EXPECT_THAT(PointsOf(Day(2026, 2, 27), Day(2026, 3, 2)),
              ElementsAre("2026/02/27", "2026/02/28", "2026/03/01", "2026/03/02"));
}

TEST(HistoryPoints, LeaveTheTimesAside) {
  EXPECT_THAT(PointsOf(Date{Day(2026, 3, 1).days + 0.75}, Date{Day(2026, 3, 2).days + 0.25}),
              ElementsAre("2026/03/01", "2026/03/02"));
}

TEST(HistoryPoints, AreDailyUpToSixtyTwoDays) {
  const auto points = PointsOf(Day(2026, 1, 1), AddDays(Day(2026, 1, 1), 61));
  ASSERT_EQ(points.size(), 62U);
  EXPECT_EQ(points.front(), "2026/01/01");
  EXPECT_EQ(points[1], "2026/01/02");
  EXPECT_EQ(points.back(), "2026/03/03");
}

TEST(HistoryPoints, AreWeeklyFromSixtyThreeDaysOn) {
  EXPECT_THAT(PointsOf(Day(2026, 1, 1), AddDays(Day(2026, 1, 1), 62)),
              ElementsAre("2026/01/07", "2026/01/14", "2026/01/21", "2026/01/28", "2026/02/04",
                          "2026/02/11", "2026/02/18", "2026/02/25", "2026/03/04"));
}

TEST(HistoryPoints, OfWholeWeeksReachTheStart) {
  const auto points = PointsOf(Day(2026, 1, 1), AddDays(Day(2026, 1, 1), 70));
  ASSERT_EQ(points.size(), 11U);
  EXPECT_EQ(points.front(), "2026/01/01");
}

TEST(HistoryPoints, AreWeeklyUpToSevenHundredAndThirtyOneDays) {
  const auto points = PointsOf(Day(2024, 1, 1), AddDays(Day(2024, 1, 1), 730));
  ASSERT_EQ(points.size(), 105U);
  EXPECT_EQ(points.front(), "2024/01/03");
  EXPECT_EQ(points[1], "2024/01/10");
  EXPECT_EQ(points.back(), "2025/12/31");
}

TEST(HistoryPoints, AreMonthlyFromSevenHundredAndThirtyTwoDaysOn) {
  const auto points = PointsOf(Day(2024, 1, 1), AddDays(Day(2024, 1, 1), 731));
  ASSERT_EQ(points.size(), 25U);
  EXPECT_EQ(points.front(), "2024/01/31");
  EXPECT_EQ(points[1], "2024/02/29");
  EXPECT_EQ(points[23], "2025/12/31");
  EXPECT_EQ(points.back(), "2026/01/01");
}

TEST(HistoryPoints, OfMonthsHaveTheEndOnceWhereItEndsAMonth) {
  const auto points = PointsOf(Day(2023, 1, 31), Day(2026, 1, 31));
  ASSERT_EQ(points.size(), 37U);
  EXPECT_EQ(points.front(), "2023/01/31");
  EXPECT_EQ(points[35], "2025/12/31");
  EXPECT_EQ(points.back(), "2026/01/31");
}

TEST(HistoryPoints, ReachTheEndOfTheCalendar) {
  EXPECT_EQ(PointsOf(Day(9996, 1, 1), Day(9999, 12, 31)).back(), "9999/12/31");
}

// ---- open ends

std::unique_ptr<Database> MovedBetween(Date first, Date last) {
  return QuietAccount()
      .Account(2, "b", kCheckingAccount)
      .Transaction(
          {.type = kTransferOut, .date = last, .total = 1, .account = 2, .other_account = 1})
      .Transaction({.type = kIncome, .date = first, .total = 1, .account = 1})
      .Transaction({.type = kIncome,
                    .date = Day(2020, 1, 1),
                    .total = 1,
                    .account = 1,
                    .record_type = kVoidRecord})
      .Open();
}

TEST(OpenEnds, AreThoseOfTheAccountsTransactionsAtEitherEnd) {
  const auto store = MovedBetween(Day(2026, 3, 1), Date{Day(2026, 3, 3).days + 0.5});
  EXPECT_THAT(HistoryOf(*store, 1, kOpenStart, kOpenEnd).dates,
              ElementsAre("2026/03/01", "2026/03/02", "2026/03/03"));
}

TEST(OpenEnds, AreTakenOneByOne) {
  const auto store = MovedBetween(Day(2026, 3, 1), Day(2026, 3, 3));
  EXPECT_THAT(HistoryOf(*store, 1, Day(2026, 3, 2), kOpenEnd).dates,
              ElementsAre("2026/03/02", "2026/03/03"));
  EXPECT_THAT(HistoryOf(*store, 1, kOpenStart, Day(2026, 3, 2)).dates,
              ElementsAre("2026/03/01", "2026/03/02"));
}

TEST(OpenEnds, TakeTheOtherEndWithoutTransactions) {
  const auto store = QuietAccount().Open();
  EXPECT_THAT(HistoryOf(*store, 1, kOpenStart, Day(2026, 3, 2)).dates, ElementsAre("2026/03/02"));
  EXPECT_THAT(HistoryOf(*store, 1, Day(2026, 3, 2), kOpenEnd).dates, ElementsAre("2026/03/02"));
}

TEST(OpenEnds, OfAFundAreThoseOfItsHoldingsToo) {
  const auto store = SmallStore()
                         .Account(8, "fund", kInvestmentAccount)
                         .Account(1, "cash", kCheckingAccount)
                         .Transaction({.type = kUnitsReceived,
                                       .date = Day(2026, 3, 1),
                                       .account = 8,
                                       .item = 3,
                                       .quantity = 1.0})
                         .Transaction({.type = kBuy,
                                       .date = Day(2026, 3, 2),
                                       .total = 5,
                                       .account = 8,
                                       .other_account = 1,
                                       .item = 3,
                                       .quantity = 1.0})
                         .Open();
  EXPECT_THAT(HistoryOf(*store, 8, kOpenStart, kOpenEnd).dates,
              ElementsAre("2026/03/01", "2026/03/02"));
}

// ---- nothing to show

bool ShowsNothing(Database& store, std::int32_t account, Date from, Date to) {
  return static_cast<bool>(
      Raises(FailureNumber::kNothingToShow, [&] { HistoryOf(store, account, from, to); }));
}

TEST(NoHistory, IsThatOfAQuietAccountWithoutAnEnd) {
  EXPECT_TRUE(ShowsNothing(*QuietAccount().Open(), 1, kOpenStart, kOpenEnd));
}

TEST(NoHistory, IsThatOfAStartAfterTheEnd) {
  EXPECT_TRUE(ShowsNothing(*QuietAccount().Open(), 1, Day(2026, 3, 2), Day(2026, 3, 1)));
}

TEST(NoHistory, IsThatOfAnEndBeforeTheFirstTransaction) {
  const auto store = MovedBetween(Day(2026, 3, 1), Day(2026, 3, 3));
  EXPECT_TRUE(ShowsNothing(*store, 1, kOpenStart, Day(2026, 2, 28)));
}

TEST(NoHistory, IsThatOfAStartAfterTheLastTransaction) {
  const auto store = MovedBetween(Day(2026, 3, 1), Day(2026, 3, 3));
  EXPECT_TRUE(ShowsNothing(*store, 1, Day(2026, 3, 4), kOpenEnd));
}

TEST(NoHistory, IsThatOfAnAccountThatThereIsNot) {
  EXPECT_TRUE(ShowsNothing(*QuietAccount().Open(), 9, Day(2026, 3, 1), Day(2026, 3, 2)));
}

TEST(NoHistory, LeavesWhatTheCallerHad) {
  const auto store = QuietAccount().Open();
  AmountMatrix matrix(1, 2);
  matrix(1, 2) = 7;
  ItemLabels labels({"a", "b"});
  ResumeNext(
      [&] { return Services().BalanceHistory(*store, 1, kOpenStart, kOpenEnd, matrix, labels); });
  EXPECT_EQ(matrix.Items(), 2U);
  EXPECT_EQ(matrix(1, 2), 7);
  EXPECT_EQ(labels(1), "a");
}

// ---- the balances

TEST(HistoryBalances, AreThoseAtTheEndOfEachPoint) {
  const auto store =
      QuietAccount()
          .Transaction({.date = Day(2026, 2, 1), .total = 10, .account = 1})
          .Transaction({.date = Date{Day(2026, 3, 2).days + 0.9}, .total = 1, .account = 1})
          .Transaction({.type = kExpense, .date = Day(2026, 3, 3), .total = 0.5, .account = 1})
          .Transaction({.date = Day(2026, 3, 5), .total = 1000, .account = 1})
          .Open();
  EXPECT_THAT(HistoryOf(*store, 1, Day(2026, 3, 1), Day(2026, 3, 4)).balances,
              ElementsAre(110, 111, 110.5, 110.5));
}

TEST(HistoryBalances, MoveByTransfersAtBothEnds) {
  const auto store = QuietAccount()
                         .Account(2, "b", kCheckingAccount)
                         .Transaction({.type = kTransferOut,
                                       .date = Day(2026, 3, 1),
                                       .total = 30,
                                       .account = 1,
                                       .other_account = 2})
                         .Transaction({.type = kTransferIn,
                                       .date = Day(2026, 3, 2),
                                       .total = 5,
                                       .account = 2,
                                       .other_account = 1})
                         .Open();
  EXPECT_THAT(HistoryOf(*store, 1, kOpenStart, kOpenEnd).balances, ElementsAre(70, 65));
  EXPECT_THAT(HistoryOf(*store, 2, kOpenStart, kOpenEnd).balances, ElementsAre(30, 35));
}

TEST(HistoryBalances, OfAFundMoveWithItsUnitsAndPricesFromTheirDayOn) {
  SmallStore builder;
  builder.Account(8, "fund", kInvestmentAccount)
      .Insert("PriceType", {{"PriceTypeNumber", 1}, {"PriceTypeAttr", 1}});
  for (const int day : {2, 3, 4}) {
    builder.Transaction({.type = kUnitsReceived,
                         .date = Day(2026, 3, day),
                         .account = 8,
                         .item = 3,
                         .quantity = 1.0});
    builder.Insert("PriceRecord", {{"AccountItemNumber", 3},
                                   {"PriceTypeNumber", 1},
                                   {"PriceDate", Day(2026, 3, day + 1)},
                                   {"Price", 10.0 * day}});
  }
  EXPECT_THAT(HistoryOf(*builder.Open(), 8, Day(2026, 3, 1), Day(2026, 3, 4)).balances,
              ElementsAre(0, 0, 40, 90));
}

TEST(HistoryBalances, FailOverADamagedTotal) {
  const auto store = QuietAccount()
                         .Transaction({.date = Day(2026, 3, 1), .total = 1, .account = 1})
                         .Execute("UPDATE TransactionRecord SET Total = 'abc'")
                         .Open();
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch,
                     [&] { HistoryOf(*store, 1, Day(2026, 3, 1), Day(2026, 3, 2)); }));
}

TEST(HistoryBalances, CloseWhatTheyOpen) {
  const auto store = QuietAccount().Open();
  testing::FailurePlan plan;
  testing::FailingDatabase failing(*store, plan);
  HistoryOf(failing, 1, Day(2026, 3, 1), Day(2026, 3, 2));
  EXPECT_EQ(failing.OpenRecordsets(), 0);
}

// A fund that is traded all the time, at all times of the day, with prices that change.
std::unique_ptr<Database> BusyFund(double latest_time) {
  SmallStore store;
  store.Account(8, "fund", kInvestmentAccount, 1000)
      .Account(1, "cash", kCheckingAccount, 500)
      .Insert("PriceType", {{"PriceTypeNumber", 1}, {"PriceTypeAttr", 1}});
  std::uint32_t seed = 1;
  const auto roll = [&seed](std::uint32_t sides) {
    seed = seed * 1664525U + 1013904223U;
    return static_cast<int>((seed >> 16U) % sides);
  };
  for (int i = 0; i < 400; ++i) {
    const double time = latest_time * roll(4) / 3;
    store.Transaction({.type = roll(15),
                       .date = Date{Day(2023, 6, 1).days + roll(1000) + time},
                       .total = roll(100000) / 100.0,
                       .account = 8,
                       .other_account = roll(2) == 0 ? Variant(1) : Variant(Null{}),
                       .record_type = roll(5),
                       .item = roll(4) == 0 ? Variant(Null{}) : Variant(roll(3)),
                       .quantity = roll(5) == 0 ? Variant(Null{}) : Variant(roll(1000) / 7.0)});
    store.Insert("PriceRecord", {{"AccountItemNumber", roll(3)},
                                 {"PriceTypeNumber", 1},
                                 {"PriceDate", Date{Day(2023, 6, 1).days + roll(1000) + time}},
                                 {"Price", roll(10000) / 300.0}});
  }
  return store.Open();
}

struct Span {
  Date from;
  Date to;
};

class HistoryOfABusyFund : public ::testing::TestWithParam<Span> {
 protected:
  static void ExpectAgreement(Database& store, std::int32_t account) {
    const History history = HistoryOf(store, account, GetParam().from, GetParam().to);
    for (std::size_t i = 0; i < history.dates.size(); ++i) {
      const Date point = Services().ParseDateText(history.dates[i]);
      EXPECT_EQ(history.balances[i],
                ToDouble(Services().AccountBalanceOnDate(store, account, point)))
          << history.dates[i];
    }
  }
};

TEST_P(HistoryOfABusyFund, AgreesWithTheBalanceOnEachDate) { ExpectAgreement(*BusyFund(0.75), 8); }

TEST_P(HistoryOfABusyFund, AgreesWithTheBalanceOfItsCashAccount) {
  ExpectAgreement(*BusyFund(0.75), 1);
}

TEST_P(HistoryOfABusyFund, AgreesToTheLastFractionOfEachDay) {
  ExpectAgreement(*BusyFund(0.999999), 8);
}

INSTANTIATE_TEST_SUITE_P(All, HistoryOfABusyFund,
                         ::testing::Values(Span{kOpenStart, kOpenEnd},
                                           Span{Day(2024, 1, 1), Day(2024, 2, 15)},
                                           Span{Day(2024, 1, 1), Day(2025, 2, 15)},
                                           Span{Day(2022, 1, 1), kOpenEnd}));

}  // namespace
}  // namespace vetlo
