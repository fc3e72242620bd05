#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using testing::Day;
using testing::Money;
using testing::SmallStore;
using testing::TestTransaction;

constexpr std::int32_t kOwn = 1;
constexpr std::int32_t kOther = 2;

const Date kToday = Day(2026, 3, 20);

Currency BalanceOf(Database& store, std::int32_t account, Date date = kToday) {
  return Services().AccountBalanceOnDate(store, account, date);
}

// Two accounts that hold cash and nothing else.
SmallStore CashAccounts() {
  SmallStore store;
  store.Account(kOwn, "own", kCheckingAccount).Account(kOther, "other", kCheckingAccount);
  return store;
}

// ---- where the money of one transaction goes

struct Movement {
  std::int32_t type;
  int own_alone;   // the change of AccountNumber, no other account being named
  int own_funded;  // the same where another is
  int other;       // the change of that other

  friend std::ostream& operator<<(std::ostream& out, const Movement& movement) {
    return out << movement.type;
  }
};

class MoneyOfATransaction : public ::testing::TestWithParam<Movement> {
 protected:
  [[nodiscard]] std::unique_ptr<Database> StoreWith(const Variant& account,
                                                    const Variant& other) const {
    return CashAccounts()
        .Transaction(
            {.type = GetParam().type, .total = 7, .account = account, .other_account = other})
        .Open();
  }
};

TEST_P(MoneyOfATransaction, MovesTheAccountThatStandsAlone) {
  const auto store = StoreWith(kOwn, Null{});
  EXPECT_EQ(BalanceOf(*store, kOwn), Money(7 * GetParam().own_alone));
  EXPECT_EQ(BalanceOf(*store, kOther), Money(0));
}

TEST_P(MoneyOfATransaction, MovesTheAccountsAtBothEnds) {
  const auto store = StoreWith(kOwn, kOther);
  EXPECT_EQ(BalanceOf(*store, kOwn), Money(7 * GetParam().own_funded));
  EXPECT_EQ(BalanceOf(*store, kOther), Money(7 * GetParam().other));
}

TEST_P(MoneyOfATransaction, MovesTheOtherEndWithoutAnOwn) {
  const auto store = StoreWith(Null{}, kOther);
  EXPECT_EQ(BalanceOf(*store, kOther), Money(7 * GetParam().other));
}

TEST_P(MoneyOfATransaction, MovesAnAccountThatStandsAtBothEndsByTheSum) {
  const auto store = StoreWith(kOwn, kOwn);
  EXPECT_EQ(BalanceOf(*store, kOwn), Money(7 * (GetParam().own_funded + GetParam().other)));
}

INSTANTIATE_TEST_SUITE_P(
    All, MoneyOfATransaction,
    ::testing::Values(Movement{kCorrectionUpwards, 1, 1, -1},
                      Movement{kCorrectionDownwards, -1, -1, 1}, Movement{kBuy, -1, 0, -1},
                      Movement{kSell, 1, 0, 1}, Movement{kDividend, 1, 0, 1},
                      Movement{kUnitsReceived, 0, 0, 0}, Movement{kHoldingInterest, 1, 0, 1},
                      Movement{kUnitsGivenAway, 0, 0, 0}, Movement{kCapitalGain, 1, 0, 1},
                      Movement{kHoldingCost, -1, 0, -1}, Movement{kIncome, 1, 1, -1},
                      Movement{kExpense, -1, -1, 1}, Movement{kTransferOut, -1, -1, 1},
                      Movement{kTransferIn, 1, 1, -1}, Movement{14, 1, 1, -1},
                      Movement{-1, 1, 1, -1}, Movement{255, 1, 1, -1}));

struct RecordTypeCase {
  std::int32_t type;
  bool counts;
};

class RecordType : public ::testing::TestWithParam<RecordTypeCase> {};

TEST_P(RecordType, DecidesWhetherATransactionCounts) {
  const auto store = CashAccounts()
                         .Transaction({.type = kTransferOut,
                                       .total = 7,
                                       .account = kOwn,
                                       .other_account = kOther,
                                       .record_type = GetParam().type})
                         .Open();
  EXPECT_EQ(BalanceOf(*store, kOwn), Money(GetParam().counts ? -7 : 0));
  EXPECT_EQ(BalanceOf(*store, kOther), Money(GetParam().counts ? 7 : 0));
}

INSTANTIATE_TEST_SUITE_P(All, RecordType,
                         ::testing::Values(RecordTypeCase{kOrdinaryRecord, true},
                                           RecordTypeCase{kScheduledPattern, false},
                                           RecordTypeCase{kVoidRecord, false},
                                           RecordTypeCase{kSplitHead, false},
                                           RecordTypeCase{kSplitLine, true},
                                           RecordTypeCase{5, false}, RecordTypeCase{-1, false}));

// ---- the balance

TEST(AccountBalanceOnDate, StartsAtTheOpeningBalance) {
  const auto store = SmallStore().Account(1, "a", kCashAccount, -12.3456).Open();
  EXPECT_EQ(BalanceOf(*store, 1), Money(-12.3456));
  EXPECT_EQ(BalanceOf(*store, 1, Services().EarliestDate()), Money(-12.3456));
}

TEST(AccountBalanceOnDate, AddsUpAllThatMoved) {
  const auto store = SmallStore()
                         .Account(1, "a", kCashAccount, 10)
                         .Transaction({.type = kIncome, .total = 100.0001, .account = 1})
                         .Transaction({.type = kExpense, .total = 30, .account = 1})
                         .Transaction({.type = kTransferOut, .total = 5, .other_account = 1})
                         .Open();
  EXPECT_EQ(BalanceOf(*store, 1), Money(85.0001));
}

TEST(AccountBalanceOnDate, DoesNotLookAtTheBalanceThatIsKept) {
  const auto store = SmallStore()
                         .Account(1, "a", kCashAccount, 10)
                         .Execute("UPDATE Account SET Balance = 1")
                         .Open();
  EXPECT_EQ(BalanceOf(*store, 1), Money(10));
}

TEST(AccountBalanceOnDate, OfADebtIsNegative) {
  const auto store = SmallStore()
                         .Account(1, "card", kCreditCard, -20)
                         .Transaction({.type = kExpense, .total = 30, .account = 1})
                         .Open();
  EXPECT_EQ(BalanceOf(*store, 1), Money(-50));
}

class DayOfTheBalance : public ::testing::Test {
 protected:
  std::unique_ptr<Database> store_ =
      SmallStore()
          .Account(1, "a", kCashAccount)
          .Transaction({.date = Day(2026, 3, 9), .total = 1, .account = 1})
          .Transaction(
              {.date = Date{Day(2026, 3, 9).days + 86399.0 / 86400}, .total = 10, .account = 1})
          .Transaction({.date = Day(2026, 3, 10), .total = 100, .account = 1})
          .Open();
};

TEST_F(DayOfTheBalance, DoesNotCountBeforeItsDay) {
  EXPECT_EQ(BalanceOf(*store_, 1, Day(2026, 3, 8)), Money(0));
}

TEST_F(DayOfTheBalance, CountsToItsEnd) {
  EXPECT_EQ(BalanceOf(*store_, 1, Day(2026, 3, 9)), Money(11));
}

TEST_F(DayOfTheBalance, CountsToItsEndWhateverTheTimeAskedFor) {
  EXPECT_EQ(BalanceOf(*store_, 1, Date{Day(2026, 3, 9).days + 0.25}), Money(11));
}

TEST_F(DayOfTheBalance, CountsTheDaysBefore) {
  EXPECT_EQ(BalanceOf(*store_, 1, Day(2026, 3, 10)), Money(111));
}

TEST_F(DayOfTheBalance, MayBeTheLastOfTheSentinels) {
  EXPECT_EQ(BalanceOf(*store_, 1, Services().LatestDate()), Money(111));
}

// No day follows it.
TEST_F(DayOfTheBalance, MayBeTheLastOfTheCalendar) {
  const auto store =
      SmallStore()
          .Account(1, "a", kCashAccount)
          .Transaction({.date = Date{Day(9999, 12, 31).days + 0.5}, .total = 7, .account = 1})
          .Open();
  EXPECT_EQ(BalanceOf(*store, 1, Day(9999, 12, 31)), Money(7));
  EXPECT_EQ(BalanceOf(*store, 1, Day(9999, 12, 30)), Money(0));
}

TEST_F(DayOfTheBalance, CountsItsLastFractionOfASecond) {
  const auto store =
      SmallStore()
          .Account(1, "a", kCashAccount)
          .Transaction({.date = Date{Day(2026, 3, 9).days + 0.999999}, .total = 7, .account = 1})
          .Open();
  EXPECT_EQ(BalanceOf(*store, 1, Day(2026, 3, 9)), Money(7));
}

TEST(AccountBalanceOnDate, OfAnAccountThatThereIsNotFails) {
  const auto store = CashAccounts().Open();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { BalanceOf(*store, 3); }));
}

TEST(AccountBalanceOnDate, FailsForADateThatThereIsNot) {
  const auto store = CashAccounts().Open();
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { BalanceOf(*store, 1, Date{1e9}); }));
}

TEST(AccountBalanceOnDate, FailsOverADamagedTotal) {
  for (const char* total : {"'abc'", "1.5", "x'31'"}) {
    const auto store = CashAccounts()
                           .Transaction({.total = 1, .account = kOwn, .other_account = kOther})
                           .Execute(std::string("UPDATE TransactionRecord SET Total = ") + total)
                           .Open();
    for (const std::int32_t account : {kOwn, kOther}) {
      EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { BalanceOf(*store, account); }))
          << total;
    }
  }
}

TEST(AccountBalanceOnDate, FailsOverADamagedTransactionType) {
  const auto store = CashAccounts()
                         .Transaction({.total = 1, .account = kOwn})
                         .Execute("UPDATE TransactionRecord SET TransactionType = 'abc'")
                         .Open();
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { BalanceOf(*store, kOwn); }));
}

TEST(AccountBalanceOnDate, FailsOverADamagedOpeningBalance) {
  const auto store = CashAccounts().Execute("UPDATE Account SET OpeningBalance = 1.5").Open();
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { BalanceOf(*store, kOwn); }));
}

TEST(AccountBalanceOnDate, OverflowsPast64Bits) {
  const auto store = CashAccounts()
                         .Transaction({.total = 1, .account = kOwn})
                         .Execute("UPDATE Account SET OpeningBalance = 9223372036854775807")
                         .Open();
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { BalanceOf(*store, kOwn); }));
}

TEST(AccountBalanceOnDate, ClosesWhatItOpens) {
  const auto store = CashAccounts().Transaction({.total = 1, .account = kOwn}).Open();
  testing::FailurePlan plan;
  testing::FailingDatabase failing(*store, plan);
  BalanceOf(failing, kOwn);
  EXPECT_EQ(failing.OpenRecordsets(), 0);
}

// ---- holdings

constexpr std::int32_t kFund = 8;
constexpr std::int32_t kItem = 3;
constexpr std::int32_t kUsualPrices = 2;  // the default price type

SmallStore FundAccount() {
  SmallStore store;
  store.Account(kFund, "fund", kInvestmentAccount, 100)
      .Account(kOwn, "cash", kCheckingAccount)
      .Insert("PriceType", {{"PriceTypeNumber", 1}, {"PriceTypeAttr", 0}})
      .Insert("PriceType", {{"PriceTypeNumber", kUsualPrices}, {"PriceTypeAttr", 1}})
      .Insert("PriceType", {{"PriceTypeNumber", 5}, {"PriceTypeAttr", 1}});
  return store;
}

void AddPrice(SmallStore& store, Date date, double price, std::int32_t item = kItem,
              std::int32_t price_type = kUsualPrices) {
  store.Insert("PriceRecord", {{"AccountItemNumber", item},
                               {"PriceTypeNumber", price_type},
                               {"PriceDate", date},
                               {"Price", price}});
}

void AddUnits(SmallStore& store, std::int32_t type, const Variant& quantity,
              Date date = Day(2026, 1, 10), std::int32_t item = kItem) {
  store.Transaction(
      {.type = type, .date = date, .account = kFund, .item = item, .quantity = quantity});
}

TEST(FundBalance, AddsTheWorthOfItsUnits) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 4.0);
  AddPrice(builder, Day(2026, 1, 1), 2.5);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(110));
}

TEST(FundBalance, AddsItsOwnCash) {
  SmallStore builder = FundAccount();
  builder.Transaction(
      {.type = kBuy, .total = 30, .account = kFund, .item = kItem, .quantity = 4.0});
  AddPrice(builder, Day(2026, 1, 1), 2.5);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(80));
}

TEST(FundBalance, LeavesTheCashToTheAccountThatFunds) {
  SmallStore builder = FundAccount();
  builder.Transaction({.type = kBuy,
                       .total = 30,
                       .account = kFund,
                       .other_account = kOwn,
                       .item = kItem,
                       .quantity = 4.0});
  AddPrice(builder, Day(2026, 1, 1), 2.5);
  const auto store = builder.Open();
  EXPECT_EQ(BalanceOf(*store, kFund), Money(110));
  EXPECT_EQ(BalanceOf(*store, kOwn), Money(-30));
}

struct UnitsCase {
  std::int32_t type;
  int change;
};

class UnitsOfATransaction : public ::testing::TestWithParam<UnitsCase> {};

TEST_P(UnitsOfATransaction, MoveTheHolding) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kUnitsReceived, 10.0);
  AddUnits(builder, GetParam().type, 4.0);
  AddPrice(builder, Day(2026, 1, 1), 1);
  const auto store = builder.Open();
  EXPECT_EQ(BalanceOf(*store, kFund), Money(110 + 4 * GetParam().change));
  EXPECT_EQ(Services().QuantityHeld(*store, kFund, kItem), 10 + 4 * GetParam().change);
}

INSTANTIATE_TEST_SUITE_P(All, UnitsOfATransaction,
                         ::testing::Values(UnitsCase{0, 0}, UnitsCase{1, 0}, UnitsCase{kBuy, 1},
                                           UnitsCase{kSell, -1}, UnitsCase{4, 0},
                                           UnitsCase{kUnitsReceived, 1}, UnitsCase{6, 0},
                                           UnitsCase{kUnitsGivenAway, -1}, UnitsCase{8, 0},
                                           UnitsCase{9, 0}, UnitsCase{10, 0}, UnitsCase{11, 0},
                                           UnitsCase{12, 0}, UnitsCase{13, 0}, UnitsCase{14, 0},
                                           UnitsCase{-1, 0}));

TEST(FundBalance, TakesTheLastPriceOnOrBeforeTheDate) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0, Day(2026, 1, 1));
  AddPrice(builder, Day(2026, 2, 3), 4);
  AddPrice(builder, Day(2026, 2, 1), 2);
  AddPrice(builder, Day(2026, 2, 2), 3);
  const auto store = builder.Open();
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 1, 31)), Money(100));
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 2, 1)), Money(102));
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 2, 2)), Money(103));
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 2, 28)), Money(104));
}

TEST(FundBalance, TakesTheLastEnteredOfADaysPrices) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0);
  AddPrice(builder, Day(2026, 2, 1), 9);
  AddPrice(builder, Day(2026, 2, 1), 2);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(102));
}

TEST(FundBalance, CountsAPriceOfAnyTimeOfTheDay) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0);
  AddPrice(builder, Date{Day(2026, 2, 1).days + 0.75}, 9);
  const auto store = builder.Open();
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 2, 1)), Money(109));
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 1, 31)), Money(100));
}

TEST(FundBalance, TakesThePricesOfTheFirstDefaultTypeAlone) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0);
  AddPrice(builder, Day(2026, 2, 1), 2);
  AddPrice(builder, Day(2026, 2, 2), 77, kItem, 1);
  AddPrice(builder, Day(2026, 2, 3), 88, kItem, 5);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(102));
}

TEST(FundBalance, TakesThePricesOfItsItemAlone) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0);
  AddPrice(builder, Day(2026, 2, 1), 77, kItem + 1);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(100));
}

TEST(FundBalance, IsCashAloneWithoutADefaultPriceType) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0);
  AddPrice(builder, Day(2026, 2, 1), 2);
  builder.Execute("UPDATE PriceType SET PriceTypeAttr = 0");
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(100));
}

TEST(FundBalance, CountsTheUnitsOfTheDate) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 4.0, Day(2026, 2, 1));
  AddUnits(builder, kSell, 3.0, Date{Day(2026, 2, 10).days + 0.5});
  AddPrice(builder, Day(2026, 1, 1), 1);
  const auto store = builder.Open();
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 1, 31)), Money(100));
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 2, 9)), Money(104));
  EXPECT_EQ(BalanceOf(*store, kFund, Day(2026, 2, 10)), Money(101));
}

TEST(FundBalance, AddsUpItsItems) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 2.0);
  AddUnits(builder, kBuy, 3.0, Day(2026, 1, 10), 7);
  AddUnits(builder, kBuy, 5.0, Day(2026, 1, 10), 9);
  AddPrice(builder, Day(2026, 1, 1), 10);
  AddPrice(builder, Day(2026, 1, 1), 100, 7);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(420));
}

TEST(FundBalance, RoundsEachItemByItself) {
  SmallStore builder = FundAccount();
  for (const std::int32_t item : {3, 4, 5}) {
    AddUnits(builder, kBuy, 1.0, Day(2026, 1, 10), item);
    AddPrice(builder, Day(2026, 1, 1), 0.00004, item);
  }
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(100));
}

TEST(FundBalance, RoundsAHalfToEven) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1.0);
  AddPrice(builder, Day(2026, 1, 1), 0.00390625 * 0.0625 * 4);  // 9.765625 ten-thousandths
  AddUnits(builder, kBuy, 1.0, Day(2026, 1, 10), 4);
  AddPrice(builder, Day(2026, 1, 1), 0.03125, 4);  // 312.5
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Currency::FromUnits(1000000 + 10 + 312));
}

TEST(FundBalance, CountsNullForNoUnits) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 2.0);
  AddUnits(builder, kBuy, Null{});
  AddPrice(builder, Day(2026, 1, 1), 1);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(102));
}

TEST(FundBalance, LeavesOutUnitsThatDoNotCount) {
  SmallStore builder = FundAccount();
  for (const std::int32_t type : {kScheduledPattern, kVoidRecord, kSplitHead}) {
    builder.Transaction(
        {.type = kBuy, .account = kFund, .record_type = type, .item = kItem, .quantity = 5.0});
  }
  AddPrice(builder, Day(2026, 1, 1), 1);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(100));
}

TEST(FundBalance, LeavesOutTheUnitsOfOtherAccounts) {
  SmallStore builder = FundAccount();
  builder.Transaction(
      {.type = kBuy, .account = kOwn, .other_account = kFund, .item = kItem, .quantity = 5.0});
  AddPrice(builder, Day(2026, 1, 1), 1);
  EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(100));
}

TEST(FundBalance, IsForFundsAlone) {
  for (const std::int32_t type : {kCheckingAccount, kCommonAsset, kOtherAccount, 42}) {
    SmallStore builder;
    builder.Account(kFund, "no fund", type, 100)
        .Insert("PriceType", {{"PriceTypeNumber", kUsualPrices}, {"PriceTypeAttr", 1}});
    AddUnits(builder, kBuy, 2.0);
    AddPrice(builder, Day(2026, 1, 1), 1);
    EXPECT_EQ(BalanceOf(*builder.Open(), kFund), Money(100)) << type;
  }
}

TEST(FundBalance, FailsOverADamagedPriceOrQuantity) {
  for (const char* damage : {"UPDATE PriceRecord SET Price = 'dear'",
                             "UPDATE TransactionRecord SET Quantity = 'many'"}) {
    SmallStore builder = FundAccount();
    AddUnits(builder, kBuy, 2.0);
    AddPrice(builder, Day(2026, 1, 1), 1);
    const auto store = builder.Execute(damage).Open();
    EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { BalanceOf(*store, kFund); })) << damage;
  }
}

TEST(FundBalance, OverflowsForAWorthPast64Bits) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1e10);
  AddPrice(builder, Day(2026, 1, 1), 1e10);
  const auto store = builder.Open();
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { BalanceOf(*store, kFund); }));
}

// ---- QuantityHeld

class QuantityHeld : public ::testing::Test {
 protected:
  static std::unique_ptr<Database> Holding(const std::vector<double>& bought) {
    SmallStore builder = FundAccount();
    for (const double units : bought) {
      AddUnits(builder, units >= 0 ? kBuy : kSell, units >= 0 ? units : -units);
    }
    return builder.Open();
  }

  static double Held(Database& store) { return Services().QuantityHeld(store, kFund, kItem); }
};

TEST_F(QuantityHeld, IsWhatWasBoughtLessWhatWasSold) {
  EXPECT_EQ(Held(*Holding({10, -4, 0.5})), 6.5);
}

TEST_F(QuantityHeld, MayBeNegative) { EXPECT_EQ(Held(*Holding({1, -4})), -3); }

TEST_F(QuantityHeld, AddsInTheOrderOfTheTransactions) {
  EXPECT_EQ(Held(*Holding({1e16, 1, -1e16, 1})), 1);
  EXPECT_EQ(Held(*Holding({1, 1, 1e16, -1e16 + 2})), 4);
}

TEST_F(QuantityHeld, AddsInTheOrderOfTheNumbersWhateverTheDates) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 1e16, Day(2026, 3, 1));
  AddUnits(builder, kBuy, 1.0, Day(2026, 2, 1));
  AddUnits(builder, kSell, 1e16, Day(2026, 1, 1));
  AddUnits(builder, kBuy, 3.0, Day(2025, 1, 1));
  EXPECT_EQ(Held(*builder.Open()), 3);
}

TEST_F(QuantityHeld, CountsAllDates) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 2.0, Day(9999, 12, 31));
  AddUnits(builder, kBuy, 3.0, Day(100, 1, 1));
  EXPECT_EQ(Held(*builder.Open()), 5);
}

TEST_F(QuantityHeld, CountsNullForNoUnits) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 2.0);
  AddUnits(builder, kBuy, Null{});
  EXPECT_EQ(Held(*builder.Open()), 2);
}

TEST_F(QuantityHeld, CountsRecordsOfTheTypesThatCount) {
  SmallStore builder = FundAccount();
  for (std::int32_t type = -1; type <= 5; ++type) {
    builder.Transaction({.type = kBuy,
                         .account = kFund,
                         .record_type = type,
                         .item = kItem,
                         .quantity = type == 0 ? 1.0 : (type == 4 ? 10.0 : 100.0)});
  }
  EXPECT_EQ(Held(*builder.Open()), 11);
}

TEST_F(QuantityHeld, FailsWithoutAHolding) {
  const auto store = Holding({});
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { Held(*store); }));
}

TEST_F(QuantityHeld, FailsForAHoldingThatWasSold) {
  const auto store = Holding({0.1, 0.2, -0.3});
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { Held(*store); }));
}

TEST_F(QuantityHeld, FailsBelowTheLeastHolding) {
  for (const double units : {0.000000499, -0.000000499}) {
    const auto store = Holding({units});
    EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { Held(*store); })) << units;
  }
}

TEST_F(QuantityHeld, HoldsFromTheLeastHoldingOn) {
  EXPECT_EQ(Held(*Holding({0.0000005})), 0.0000005);
  EXPECT_EQ(Held(*Holding({-0.0000005})), -0.0000005);
}

TEST_F(QuantityHeld, IsThatOfTheItemAndTheAccount) {
  SmallStore builder = FundAccount();
  AddUnits(builder, kBuy, 2.0);
  AddUnits(builder, kBuy, 50.0, Day(2026, 1, 10), kItem + 1);
  builder.Transaction({.type = kBuy, .account = kOwn, .item = kItem, .quantity = 500.0});
  EXPECT_EQ(Held(*builder.Open()), 2);
}

TEST_F(QuantityHeld, FailsForAnAccountThatThereIsNot) {
  const auto store = Holding({1});
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord,
                     [&] { return Services().QuantityHeld(*store, 99, kItem); }));
}

// ---- LatestPriceOfItem

class LatestPriceOfItem : public ::testing::Test {
 protected:
  LatestPriceOfItem() { prices_->SetIndex(kPrimaryIndex); }

  double PriceOf(std::int32_t item) { return Services().LatestPriceOfItem(*prices_, item); }

  std::unique_ptr<Database> store_ =
      SmallStore()
          .Insert("LatestPriceInfo", {{"AccountItemNumber", 3}, {"Price", 2.25}})
          .Insert("LatestPriceInfo", {{"AccountItemNumber", 4}, {"Price", 7}})
          .Open();
  std::unique_ptr<Recordset> prices_ = store_->OpenRecordset("LatestPriceInfo");
};

TEST_F(LatestPriceOfItem, IsThatOfTheItemsRow) {
  EXPECT_EQ(PriceOf(3), 2.25);
  EXPECT_EQ(PriceOf(4), 7);
}

TEST_F(LatestPriceOfItem, FailsWithoutARow) {
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { PriceOf(5); }));
}

TEST_F(LatestPriceOfItem, WorksAgainAfterAFailure) {
  ResumeNext([&] { PriceOf(5); });
  EXPECT_EQ(PriceOf(3), 2.25);
}

TEST_F(LatestPriceOfItem, FailsInATableThatIsClosed) {
  prices_->Close();
  EXPECT_TRUE(Raises(FailureNumber::kObjectClosed, [&] { PriceOf(3); }));
}

}  // namespace
}  // namespace vetlo
