#include "vetlo/investment/prices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <random>

#include "tests/investment/securities.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

const Date kFrom = Day(2026, 3, 1);
const Date kTo = Day(2026, 3, 31);
constexpr auto kReport = ChartOrReport::kReport;
constexpr auto kChart = ChartOrReport::kChart;
constexpr auto kNothingToShow = FailureNumber::kNothingToShow;

// A day of March and what each item costs on it.
struct Shown {
  std::string date;
  std::vector<double> prices;

  friend bool operator==(const Shown&, const Shown&) = default;
};

void PrintTo(const Shown& shown, std::ostream* out) {
  *out << shown.date << ": " << ::testing::PrintToString(shown.prices);
}

std::vector<Shown> RowsOf(const PriceHistory& history) {
  std::vector<Shown> rows;
  for (std::size_t date = 1; date <= history.dblPrices.Series(); ++date) {
    Shown row{history.strDates(date), {}};
    for (std::size_t item = 1; item <= history.dblPrices.Items(); ++item) {
      row.prices.push_back(history.dblPrices(date, item));
    }
    rows.push_back(row);
  }
  return rows;
}

// All tests of several items run for one account and for all of them.
enum class Scope { kAccount, kAll };

class PriceHistories : public ::testing::TestWithParam<Scope> {
 protected:
  static void Run(Database& store, PriceHistory& history, ChartOrReport target = kReport) {
    if (GetParam() == Scope::kAccount) {
      AccountPriceHistory(store, kBroker, kFrom, kTo, history, target);
    } else {
      AllInvestmentsPriceHistory(store, kFrom, kTo, history, target);
    }
  }
  static PriceHistory HistoryOf(SmallStore builder, ChartOrReport target = kReport) {
    const auto store = builder.Open();
    PriceHistory history;
    Run(*store, history, target);
    return history;
  }
  static std::int32_t ErrorOf(SmallStore builder) {
    const auto store = builder.Open();
    PriceHistory history;
    return ResumeNext([&] { Run(*store, history); });
  }
  static constexpr std::int32_t kNothing = static_cast<std::int32_t>(kNothingToShow);
};

INSTANTIATE_TEST_SUITE_P(Of, PriceHistories, ::testing::Values(Scope::kAccount, Scope::kAll),
                         [](const auto& test) {
                           return test.param == Scope::kAccount ? "OneAccount" : "AllAccounts";
                         });

// What an item cost on a day of March.
struct Price {
  std::int32_t item = 1;
  double day = 0;
  double price = 0;
  std::int32_t price_type = kCharted;
};

SmallStore Priced(SmallStore store, const std::vector<Price>& prices) {
  for (const Price& price : prices) {
    AddPrice(store, price.item, price.day, price.price, price.price_type);
  }
  return store;
}

SmallStore OneHeld(const std::vector<Price>& prices = {}) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  Hold(store, 1, 10);
  return Priced(std::move(store), prices);
}

SmallStore TwoHeld(const std::vector<Price>& prices) {
  SmallStore store = OneHeld();
  AddItem(store, 2, "Birch", kBond);
  Hold(store, 2, 1);
  return Priced(std::move(store), prices);
}

TEST_P(PriceHistories, ShowTheFirstDayAndEveryDayOfAChange) {
  EXPECT_THAT(RowsOf(HistoryOf(OneHeld({{1, 5, 10}, {1, 6, 10}, {1, 9, 12.5}, {1, 12, 12.5}}))),
              ElementsAre(Shown{"2026/03/05", {10}}, Shown{"2026/03/09", {12.5}}));
}

TEST_P(PriceHistories, ShowAllItemsOnADayOnWhichOneChanges) {
  EXPECT_THAT(RowsOf(HistoryOf(TwoHeld({{1, 5, 10}, {2, 5, 99}, {2, 7, 98}}))),
              ElementsAre(Shown{"2026/03/05", {10, 99}}, Shown{"2026/03/07", {10, 98}}));
}

TEST_P(PriceHistories, ShowNothingForAnItemBeforeItsFirstPrice) {
  EXPECT_THAT(RowsOf(HistoryOf(TwoHeld({{1, 5, 10}, {2, 9, 99}}))),
              ElementsAre(Shown{"2026/03/05", {10, 0}}, Shown{"2026/03/09", {10, 99}}));
}

TEST_P(PriceHistories, TakeAPriceFromBeforeTheRange) {
  EXPECT_THAT(RowsOf(HistoryOf(TwoHeld({{1, 5, 10}, {2, -5, 97}, {2, 9, 99}}))),
              ElementsAre(Shown{"2026/03/05", {10, 97}}, Shown{"2026/03/09", {10, 99}}));
}

TEST_P(PriceHistories, TakeTheLastEnteredOfTwoPricesOnADay) {
  EXPECT_THAT(RowsOf(HistoryOf(OneHeld({{1, 5, 12}, {1, 5, 11}}))),
              ElementsAre(Shown{"2026/03/05", {11}}));
}

TEST_P(PriceHistories, IgnoreOtherPriceTypes) {
  EXPECT_THAT(RowsOf(HistoryOf(OneHeld({{1, 5, 10}, {1, 6, 77, kUncharted}}))),
              ElementsAre(Shown{"2026/03/05", {10}}));
}

TEST_P(PriceHistories, BeginAndEndWithTheDaysOfTheRange) {
  EXPECT_THAT(RowsOf(HistoryOf(OneHeld({{1, 0, 1}, {1, 1, 2}, {1, 31, 3}, {1, 32, 4}}))),
              ElementsAre(Shown{"2026/03/01", {2}}, Shown{"2026/03/31", {3}}));
}

TEST_P(PriceHistories, ShowAnOnlyPriceOfZero) {
  EXPECT_THAT(RowsOf(HistoryOf(OneHeld({{1, 5, 0}}))), ElementsAre(Shown{"2026/03/05", {0}}));
}

// The number of days is rounded: from a quarter past one day to the start of another is 3.75 days
// and one, which makes five.
TEST_P(PriceHistories, RoundTheNumberOfDaysWherePricesHaveATimeOfDay) {
  EXPECT_THAT(RowsOf(HistoryOf(OneHeld({{1, 5.25, 10}, {1, 9, 11}}))),
              ElementsAre(Shown{"2026/03/05", {10}}, Shown{"2026/03/09", {11}}));
}

TEST_P(PriceHistories, LeaveOutWhatIsHeldWithoutAPriceInTheRange) {
  const PriceHistory history = HistoryOf(TwoHeld({{1, 5, 10}, {2, 40, 99}}));
  EXPECT_THAT(history.strItems, ElementsAre("Stock:Alder"));
  EXPECT_THAT(RowsOf(history), ElementsAre(Shown{"2026/03/05", {10}}));
}

TEST_P(PriceHistories, LeaveOutWhatIsNotHeld) {
  SmallStore store = OneHeld({{1, 5, 10}, {2, 6, 99}});
  AddItem(store, 2, "Birch");
  EXPECT_THAT(RowsOf(HistoryOf(std::move(store))), ElementsAre(Shown{"2026/03/05", {10}}));
}

TEST_P(PriceHistories, LeaveOutItemsThatAreNoInvestments) {
  SmallStore store = OneHeld({{1, 5, 10}, {2, 5, 99}});
  AddItem(store, 2, "Penny", kStamp);
  Hold(store, 2, 1);
  EXPECT_THAT(HistoryOf(std::move(store)).strItems, ElementsAre("Stock:Alder"));
}

TEST_P(PriceHistories, LabelItemsByTypeAndNameInAReport) {
  EXPECT_THAT(HistoryOf(TwoHeld({{1, 5, 10}, {2, 5, 99}}), kReport).strItems,
              ElementsAre("Stock:Alder", "Bond:Birch"));
}

TEST_P(PriceHistories, LabelItemsByNameInAChart) {
  EXPECT_THAT(HistoryOf(TwoHeld({{1, 5, 10}, {2, 5, 99}}), kChart).strItems,
              ElementsAre("Alder", "Birch"));
}

TEST_P(PriceHistories, FailWithoutAChartedPriceType) {
  SmallStore store = OneHeld({{1, 5, 10}});
  store.Execute("UPDATE PriceType SET PriceTypeAttr = 0");
  EXPECT_EQ(ErrorOf(std::move(store)), kNothing);
}

TEST_P(PriceHistories, FailWithoutAnInvestment) { EXPECT_EQ(ErrorOf(Market()), kNothing); }

TEST_P(PriceHistories, FailWhereNothingHeldHasAPriceInTheRange) {
  EXPECT_EQ(ErrorOf(OneHeld({{1, 32, 10}})), kNothing);
}

TEST_P(PriceHistories, FailWhereAnItemsTypeIsLostWhileDaysAreWalked) {
  const auto open = OneHeld({{1, 5, 10}}).Open();
  DenyingDatabase denying(*open, [](std::string_view text) { return text == "AccountItemType"; });
  PriceHistory history;
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { Run(denying, history); }));
}

// ---- of one account

TEST(AccountPriceHistory, LeavesOutWhatAnotherAccountHolds) {
  SmallStore store = OneHeld({{1, 5, 10}, {2, 5, 99}});
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 2, "Birch");
  Hold(store, 2, 1, kSecondBroker);
  const auto open = store.Open();
  PriceHistory history;
  AccountPriceHistory(*open, kBroker, kFrom, kTo, history, kReport);
  EXPECT_THAT(history.strItems, ElementsAre("Stock:Alder"));
}

TEST(AccountPriceHistory, FailsForAnAccountThatIsNotThere) {
  const auto open = OneHeld({{1, 5, 10}}).Open();
  PriceHistory history;
  EXPECT_TRUE(Raises(kNothingToShow,
                     [&] { AccountPriceHistory(*open, 99, kFrom, kTo, history, kReport); }));
}

TEST(AccountPriceHistory, FailsForAnAccountThatHoldsNoItems) {
  SmallStore store = OneHeld({{1, 5, 10}});
  Hold(store, 1, 1, kBank);
  const auto open = store.Open();
  PriceHistory history;
  EXPECT_TRUE(Raises(kNothingToShow,
                     [&] { AccountPriceHistory(*open, kBank, kFrom, kTo, history, kReport); }));
}

const std::string kItemsText =
    "SELECT T1.* FROM AccountItem AS T1,AccountItemType AS T2 WHERE "
    "T1.AccountItemTypeNumber=T2.AccountItemTypeNumber AND T2.BasicAccountType= 2";
const std::string kInRangeText =
    "SELECT * FROM PriceRecord WHERE AccountItemNumber= 1 AND PriceTypeNumber= 7 AND "
    "PriceDate>=#2026-03-01# AND PriceDate<=#2026-03-31# ORDER BY PriceDate";

std::string OnOrBefore(const std::string& day) {
  return "SELECT * FROM PriceRecord WHERE AccountItemNumber= 1 AND PriceDate<=#" + day +
         "# AND PriceTypeNumber= 7 ORDER BY PriceDate";
}

TEST(AccountPriceHistory, OpensTheseTexts) {
  const auto open = OneHeld({{1, 5, 10}, {1, 6, 11}}).Open();
  KeepingStore keeping(*open);
  PriceHistory history;
  AccountPriceHistory(*keeping, kBroker, kFrom, kTo, history, kReport);
  EXPECT_THAT(OpenedIn(keeping),
              ElementsAre("PriceType", "Account", kItemsText, kInRangeText, "AccountItem",
                          "AccountItemType", OnOrBefore("2026-03-05"), OnOrBefore("2026-03-06")));
}

TEST(AccountPriceHistory, AsksForThePriceOnEveryDayAndItem) {
  const auto open = OneHeld({{1, 5, 10}, {1, 14, 11}}).Open();
  KeepingStore keeping(*open);
  PriceHistory history;
  AccountPriceHistory(*keeping, kBroker, kFrom, kTo, history, kReport);
  EXPECT_EQ(OpenedIn(keeping).size(), 6U + 10U);
}

// ---- of all

TEST(AllInvestmentsPriceHistory, OpensTheseTexts) {
  const auto open = OneHeld({{1, 5, 10}}).Open();
  KeepingStore keeping(*open);
  PriceHistory history;
  AllInvestmentsPriceHistory(*keeping, kFrom, kTo, history, kReport);
  EXPECT_THAT(
      OpenedIn(keeping),
      ElementsAre("PriceType", kItemsText, "SELECT * FROM Account WHERE AccountType= 8",
                  kInRangeText, "AccountItem", "AccountItemType", OnOrBefore("2026-03-05")));
}

TEST(AllInvestmentsPriceHistory, ShowsWhatAnyAccountHolds) {
  SmallStore store = OneHeld({{1, 5, 10}, {2, 5, 99}});
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 2, "Birch");
  Hold(store, 2, 1, kSecondBroker);
  const auto open = store.Open();
  PriceHistory history;
  AllInvestmentsPriceHistory(*open, kFrom, kTo, history, kReport);
  EXPECT_THAT(history.strItems, ElementsAre("Stock:Alder", "Stock:Birch"));
}

TEST(AllInvestmentsPriceHistory, LeavesOutWhatOnlyAnAccountOfAnotherKindHolds) {
  SmallStore store = Priced(Market(), {{1, 5, 10}});
  AddItem(store, 1, "Alder");
  Hold(store, 1, 1, kBank);
  const auto open = store.Open();
  PriceHistory history;
  EXPECT_TRUE(Raises(kNothingToShow,
                     [&] { AllInvestmentsPriceHistory(*open, kFrom, kTo, history, kReport); }));
}

// ---- over centuries

const Date kEarliest = Services().EarliestDate();
const Date kLatest = Services().LatestDate();

// A date as the tests' prices count their days, and back.
double DayOfDate(Date date) { return date.days - Day(2026, 3, 1).days + 1; }
Date DateOfDay(double day) { return Date{Day(2026, 3, 1).days + day - 1}; }

PriceHistory HistoryBetween(Database& store, Date from, Date to) {
  PriceHistory history;
  AllInvestmentsPriceHistory(store, from, to, history, kReport);
  return history;
}

// A price a day short of a century after the first one, or a day later.
std::size_t TextsOfAHistoryOf(int days) {
  const auto open = OneHeld({{1, 1, 10}, {1, static_cast<double>(days), 11}}).Open();
  KeepingStore keeping(*open);
  EXPECT_EQ(HistoryBetween(*keeping, kEarliest, kLatest).dblPrices.Series(), 2U);
  const std::vector<std::string> opened = OpenedIn(keeping);
  return static_cast<std::size_t>(std::ranges::count_if(opened, [](const std::string& text) {
    return text.find("PriceDate<=") != std::string::npos && text.find(">=") == std::string::npos;
  }));
}

TEST(LongPriceHistory, OfACenturyAsksForThePriceOnEveryDay) {
  EXPECT_EQ(TextsOfAHistoryOf(36525), 36525U);
}

// The first day, the one behind it, and the last.
TEST(LongPriceHistory, OfMoreThanACenturyAsksOnTheDaysOfPricesAlone) {
  EXPECT_EQ(TextsOfAHistoryOf(36526), 3U);
}

TEST(LongPriceHistory, ShowsPricesFromOneEndOfTheCalendarToTheOther) {
  const auto open = TwoHeld({{1, DayOfDate(kEarliest), 1},
                             {2, 5, 99},
                             {1, 6, 10},
                             {1, 7, 10},
                             {2, DayOfDate(kLatest), 98}})
                        .Open();
  EXPECT_THAT(RowsOf(HistoryBetween(*open, kEarliest, kLatest)),
              ElementsAre(Shown{"0100/01/01", {1, 0}}, Shown{"2026/03/05", {1, 99}},
                          Shown{"2026/03/06", {10, 99}}, Shown{"9998/12/31", {10, 98}}));
}

// What a history of two items shows by going through all days.
std::vector<Shown> ShownDayByDay(const std::vector<Price>& prices, double from, double to) {
  std::vector<double> in_range;
  for (const Price& price : prices) {
    if (price.day >= from && price.day <= to) {
      in_range.push_back(price.day);
    }
  }
  const auto [first, last] = std::ranges::minmax(in_range);
  std::vector<Shown> rows;
  std::vector<double> shown = {0, 0};
  auto next = prices.begin();  // they stand in the order of their days
  for (int i = 0; i < std::nearbyint(last - first + 1); ++i) {
    const double day = first + i;
    for (; next != prices.end() && next->day <= day; ++next) {
      shown.at(static_cast<std::size_t>(next->item - 1)) = next->price;
    }
    if (rows.empty() || rows.back().prices != shown) {
      rows.push_back({Services().DateDisplayText(DateOfDay(day)), shown});
    }
  }
  return rows;
}

// Prices at any quarter of a day, some of them close together, and ranges that cut them off.
TEST(LongPriceHistory, ShowsWhatAWalkThroughAllDaysWouldShow) {
  constexpr int kRounds = 25;
  constexpr int kQuarters = 4 * 37000;
  std::mt19937 dice(20260321);
  const auto quarter = [&](int most) { return std::uniform_int_distribution(0, most)(dice) / 4.0; };
  for (int round = 0; round < kRounds; ++round) {
    std::vector<Price> prices = {{1, 20, 1}, {2, 20, 2}};
    while (prices.size() < 30) {
      const double day =
          prices.size() % 3 == 0 ? quarter(kQuarters) : prices.back().day + quarter(9);
      prices.push_back({std::uniform_int_distribution(1, 2)(dice), day, quarter(8)});
    }
    prices.insert(prices.end(), {{1, 36990, 9}, {1, 37100 + quarter(8), 5}, {2, 37103, 7}});
    std::ranges::stable_sort(prices, {}, &Price::day);
    const double from = quarter(80);
    const double to = prices.back().day - quarter(9);
    const auto open = TwoHeld(prices).Open();
    EXPECT_EQ(RowsOf(HistoryBetween(*open, DateOfDay(from), DateOfDay(to))),
              ShownDayByDay(prices, from, to))
        << "round " << round << " from " << from << " to " << to;
  }
}

// ---- of one item

PriceHistory ItemHistoryOf(SmallStore builder) {
  const auto store = builder.Open();
  PriceHistory history;
  ItemPriceHistory(*store, 1, kFrom, kTo, history);
  return history;
}

TEST(ItemPriceHistory, ShowsEveryRecordOfTheRangeAlsoTwoOnADay) {
  SmallStore store = Priced(
      Market(), {{1, 9, 12}, {1, 5, 10}, {1, 5, 10}, {1, 0, 1}, {1, 32, 2}, {1, 6, 3, kUncharted}});
  AddItem(store, 1, "Alder");
  EXPECT_THAT(
      RowsOf(ItemHistoryOf(std::move(store))),
      ElementsAre(Shown{"2026/03/05", {10}}, Shown{"2026/03/05", {10}}, Shown{"2026/03/09", {12}}));
}

TEST(ItemPriceHistory, OpensTheseTexts) {
  const auto open = Priced(Market(), {{1, 5, 10}}).Open();
  KeepingStore keeping(*open);
  PriceHistory history;
  ItemPriceHistory(*keeping, 1, kFrom, kTo, history);
  EXPECT_THAT(keeping.events,
              ElementsAreArray(OneAfterAnother(
                  {"PriceType",
                   "SELECT * FROM PriceRecord WHERE AccountItemNumber= 1 AND "
                   "PriceDate>=#2026-03-01# AND PriceDate<=#2026-03-31# AND PriceTypeNumber= 7 "
                   "ORDER BY PriceDate"})));
}

TEST(ItemPriceHistory, FailsWithoutAPriceInTheRange) {
  EXPECT_TRUE(Raises(kNothingToShow, [&] { ItemHistoryOf(Priced(Market(), {{1, 32, 10}})); }));
}

TEST(ItemPriceHistory, FailsWithoutAChartedPriceType) {
  SmallStore store = Priced(Market(), {{1, 5, 10}});
  store.Execute("DELETE FROM PriceType");
  EXPECT_TRUE(Raises(kNothingToShow, [&] { ItemHistoryOf(std::move(store)); }));
}

// ---- on a day

TEST(PriceOnOrBefore, IsTheLastOneUpToTheDay) {
  const auto open = Priced(Market(), {{1, 5, 10}, {1, 7, 11}, {1, 8, 12}}).Open();
  EXPECT_EQ(PriceOnOrBefore(*open, 1, Day(2026, 3, 7), kCharted), 11);
}

TEST(PriceOnOrBefore, IsNothingBeforeTheFirstPrice) {
  const auto open = Priced(Market(), {{1, 5, 10}}).Open();
  EXPECT_EQ(PriceOnOrBefore(*open, 1, Day(2026, 3, 4), kCharted), 0);
}

}  // namespace
}  // namespace vetlo
