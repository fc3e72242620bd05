#include "vetlo/balance/totals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/forwarding.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using vetlo::testing::Day;
using vetlo::testing::FailingDatabase;
using vetlo::testing::FailurePlan;
using vetlo::testing::Money;
using vetlo::testing::SmallStore;

const Date kDay = Day(2026, 3, 20);

struct Totals {
  Currency assets;
  Currency liabilities;
  Currency credit_card_debt;
};

Totals TotalsOf(Database& store, Date date = kDay) {
  const auto accounts = store.OpenRecordset("Account");
  return {TotalAssets(store, *accounts, date), TotalLiabilities(store, *accounts, date),
          TotalCreditCardDebt(store, date)};
}

Totals TotalsOf(SmallStore& builder) {
  const auto store = builder.Open();
  return TotalsOf(*store);
}

TEST(BalanceTotals, AreZeroWithoutAccounts) {
  SmallStore builder;
  const Totals totals = TotalsOf(builder);
  EXPECT_EQ(totals.assets, Currency{});
  EXPECT_EQ(totals.liabilities, Currency{});
  EXPECT_EQ(totals.credit_card_debt, Currency{});
}

TEST(BalanceTotals, TakeTheSideFromTheSignAndNotFromTheType) {
  SmallStore builder;
  builder.Account(1, "Bank", kCheckingAccount, -100).Account(2, "Card", kCreditCard, 50);
  const Totals totals = TotalsOf(builder);
  EXPECT_EQ(totals.assets, Money(50));
  EXPECT_EQ(totals.liabilities, Money(100));
  EXPECT_EQ(totals.credit_card_debt, Currency{});
}

TEST(BalanceTotals, AddUpAllTypes) {
  SmallStore builder;
  for (std::int32_t type = 0; type <= 10; ++type) {
    builder.Account(10 + type, "Asset", type, 1);
    builder.Account(30 + type, "Debt", type, -2);
  }
  const Totals totals = TotalsOf(builder);
  EXPECT_EQ(totals.assets, Money(11));
  EXPECT_EQ(totals.liabilities, Money(22));
  EXPECT_EQ(totals.credit_card_debt, Money(2));
}

TEST(BalanceTotals, CountABalanceOfNothingOnNeitherSide) {
  SmallStore builder;
  builder.Account(1, "Bank", kCheckingAccount, 0).Account(2, "Card", kCreditCard, 0);
  const Totals totals = TotalsOf(builder);
  EXPECT_EQ(totals.assets, Currency{});
  EXPECT_EQ(totals.liabilities, Currency{});
  EXPECT_EQ(totals.credit_card_debt, Currency{});
}

TEST(BalanceTotals, AreExactToTheLastPlace) {
  SmallStore builder;
  builder.Account(1, "Bank", kCheckingAccount).Account(2, "Cash", kCashAccount);
  builder.Account(3, "Card", kCreditCard);
  builder.Execute("UPDATE Account SET OpeningBalance = 4000000000000000001");
  builder.Execute("UPDATE Account SET OpeningBalance = -1 WHERE AccountNumber = 3");
  const Totals totals = TotalsOf(builder);
  EXPECT_EQ(totals.assets.units(), 8000000000000000002);
  EXPECT_EQ(totals.liabilities.units(), 1);
}

TEST(BalanceTotals, AreThoseAtTheEndOfTheDay) {
  SmallStore builder;
  builder.Account(1, "Bank", kCheckingAccount, 10)
      .Transaction({.type = kIncome, .date = Day(2026, 3, 20), .total = 5, .account = 1})
      .Transaction({.type = kExpense, .date = Day(2026, 3, 21), .total = 40, .account = 1});
  const auto store = builder.Open();
  EXPECT_EQ(TotalsOf(*store, Day(2026, 3, 19)).assets, Money(10));
  EXPECT_EQ(TotalsOf(*store, Day(2026, 3, 20)).assets, Money(15));
  EXPECT_EQ(TotalsOf(*store, Day(2026, 3, 21)).assets, Currency{});
  EXPECT_EQ(TotalsOf(*store, Day(2026, 3, 21)).liabilities, Money(25));
}

// ---- the caller's recordset

TEST(TotalAssets, BeginsAtTheFirstRowWhereverTheRecordsetStands) {
  const auto store = SmallStore()
                         .Account(1, "Bank", kCheckingAccount, 10)
                         .Account(2, "Cash", kCashAccount, 5)
                         .Open();
  const auto accounts = store->OpenRecordset("Account");
  EXPECT_EQ(TotalAssets(*store, *accounts, kDay), Money(15));
  EXPECT_TRUE(accounts->Eof());
  EXPECT_EQ(TotalAssets(*store, *accounts, kDay), Money(15));
  accounts->Seek("=", 2);
  EXPECT_EQ(TotalAssets(*store, *accounts, kDay), Money(15));
  accounts->Seek("=", 99);
  EXPECT_EQ(TotalAssets(*store, *accounts, kDay), Money(15));
}

TEST(TotalLiabilities, BeginsAtTheFirstRowWhereverTheRecordsetStands) {
  const auto store = SmallStore()
                         .Account(1, "Bank", kCheckingAccount, -10)
                         .Account(2, "Cash", kCashAccount, -5)
                         .Open();
  const auto accounts = store->OpenRecordset("Account");
  EXPECT_EQ(TotalLiabilities(*store, *accounts, kDay), Money(15));
  EXPECT_TRUE(accounts->Eof());
  EXPECT_EQ(TotalLiabilities(*store, *accounts, kDay), Money(15));
}

// Tells what is asked of it.
class AskedAccounts : public ForwardingRecordset {
 public:
  using ForwardingRecordset::ForwardingRecordset;
  void SetIndex(std::string_view index) override {
    asked.push_back("Index " + std::string(index));
    ForwardingRecordset::SetIndex(index);
  }
  std::int32_t RecordCount() override {
    asked.emplace_back("RecordCount");
    return ForwardingRecordset::RecordCount();
  }
  void MoveFirst() override {
    asked.emplace_back("MoveFirst");
    ForwardingRecordset::MoveFirst();
  }
  bool Eof() override {
    asked.emplace_back("EOF");
    return ForwardingRecordset::Eof();
  }
  Variant Fields(std::string_view name) override {
    asked.emplace_back(name);
    return ForwardingRecordset::Fields(name);
  }
  void MoveNext() override {
    asked.emplace_back("MoveNext");
    ForwardingRecordset::MoveNext();
  }
  void Close() override { asked.emplace_back("Close"); }

  std::vector<std::string> asked;
};

TEST(TotalAssets, AsksTheRecordsetInThisOrder) {
  const auto store = SmallStore().Account(1, "Bank", kCheckingAccount, 10).Open();
  AskedAccounts accounts(store->OpenRecordset("Account"));
  (void)TotalAssets(*store, accounts, kDay);
  EXPECT_THAT(accounts.asked, ElementsAre("Index PrimaryIndex", "RecordCount", "MoveFirst", "EOF",
                                          "AccountNumber", "MoveNext", "EOF"));
}

TEST(TotalAssets, DoesNotMoveInAnEmptyTable) {
  const auto store = SmallStore().Open();
  AskedAccounts accounts(store->OpenRecordset("Account"));
  EXPECT_EQ(TotalAssets(*store, accounts, kDay), Currency{});
  EXPECT_EQ(TotalLiabilities(*store, accounts, kDay), Currency{});
  EXPECT_THAT(accounts.asked, ElementsAre("Index PrimaryIndex", "RecordCount", "Index PrimaryIndex",
                                          "RecordCount"));
}

TEST(TotalCreditCardDebt, OpensAndClosesTheCardsAlone) {
  const auto store = SmallStore().Account(1, "Card", kCreditCard, -10).Open();
  KeepingStore keeping(*store);
  EXPECT_EQ(TotalCreditCardDebt(*keeping, kDay), Money(10));
  EXPECT_EQ(keeping.events, OneAfterAnother({"SELECT * FROM Account WHERE AccountType= 4"}));
}

TEST(TotalCreditCardDebt, ClosesWhereThereIsNoCard) {
  const auto store = SmallStore().Account(1, "Bank", kCheckingAccount, -10).Open();
  KeepingStore keeping(*store);
  EXPECT_EQ(TotalCreditCardDebt(*keeping, kDay), Currency{});
  EXPECT_EQ(keeping.events, OneAfterAnother({"SELECT * FROM Account WHERE AccountType= 4"}));
}

TEST(TotalAssets, OpensAndClosesNothingOfItsOwn) {
  const auto store = SmallStore().Account(1, "Bank", kCheckingAccount, 10).Open();
  const auto accounts = store->OpenRecordset("Account");
  KeepingStore keeping(*store);
  (void)TotalAssets(*keeping, *accounts, kDay);
  (void)TotalLiabilities(*keeping, *accounts, kDay);
  EXPECT_THAT(keeping.events, IsEmpty());
}

// ---- balances that cannot be had

// Three accounts of one side, of which single balances fail.
class BalancesThatFail : public ::testing::Test {
 protected:
  static std::unique_ptr<Database> Store(double sign, const std::string& failing) {
    return SmallStore()
        .Account(1, "First", kCreditCard, sign * 1)
        .Account(2, "Second", kCreditCard, sign * 20)
        .Account(3, "Third", kCreditCard, sign * 300)
        .Transaction({.account = 1})
        .Transaction({.account = 2})
        .Transaction({.account = 3})
        .Execute("UPDATE TransactionRecord SET Total = 'much' WHERE AccountNumber IN (" + failing +
                 ")")
        .Open();
  }
};

TEST_F(BalancesThatFail, CountTheOneBeforeOnceMore) {
  EXPECT_EQ(TotalsOf(*Store(1, "2")).assets, Money(1 + 1 + 300));
  EXPECT_EQ(TotalsOf(*Store(-1, "2")).liabilities, Money(1 + 1 + 300));
  EXPECT_EQ(TotalsOf(*Store(-1, "2")).credit_card_debt, Money(1 + 1 + 300));
}

TEST_F(BalancesThatFail, CountTheOneBeforeEachTime) {
  EXPECT_EQ(TotalsOf(*Store(1, "2, 3")).assets, Money(1 + 1 + 1));
  EXPECT_EQ(TotalsOf(*Store(-1, "2, 3")).liabilities, Money(1 + 1 + 1));
  EXPECT_EQ(TotalsOf(*Store(-1, "2, 3")).credit_card_debt, Money(1 + 1 + 1));
}

TEST_F(BalancesThatFail, CountNothingWhereThereIsNoneBefore) {
  EXPECT_EQ(TotalsOf(*Store(1, "1")).assets, Money(20 + 300));
  EXPECT_EQ(TotalsOf(*Store(-1, "1")).liabilities, Money(20 + 300));
  EXPECT_EQ(TotalsOf(*Store(-1, "1")).credit_card_debt, Money(20 + 300));
}

TEST_F(BalancesThatFail, CountOnTheSideOfTheOneBefore) {
  const auto store = SmallStore()
                         .Account(1, "First", kCheckingAccount, -7)
                         .Account(2, "Second", kCheckingAccount, 20)
                         .Transaction({.account = 2})
                         .Execute("UPDATE TransactionRecord SET Total = 'much'")
                         .Open();
  EXPECT_EQ(TotalsOf(*store).assets, Currency{});
  EXPECT_EQ(TotalsOf(*store).liabilities, Money(14));
}

// ---- failures that reach the caller

TEST(BalanceTotals, ASumPastAnAmountFails) {
  SmallStore builder;
  builder.Account(1, "First", kCreditCard).Account(2, "Second", kCreditCard);
  builder.Execute("UPDATE Account SET OpeningBalance = -9000000000000000000");
  const auto store = builder.Open();
  const auto accounts = store->OpenRecordset("Account");
  EXPECT_TRUE(
      Raises(FailureNumber::kOverflow, [&] { (void)TotalLiabilities(*store, *accounts, kDay); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { (void)TotalCreditCardDebt(*store, kDay); }));
}

// Accounts whose n-th operation of a kind fails.
class BrokenAccounts : public ForwardingRecordset {
 public:
  BrokenAccounts(std::unique_ptr<Recordset> rows, std::string broken)
      : ForwardingRecordset(std::move(rows)), broken_(std::move(broken)) {}

  Variant Fields(std::string_view name) override {
    FailAt(name);
    return ForwardingRecordset::Fields(name);
  }
  void MoveNext() override {
    FailAt("MoveNext");
    ForwardingRecordset::MoveNext();
  }

 private:
  void FailAt(std::string_view operation) {
    if (operation == broken_) {
      throw Failure(FailureNumber::kStoreUnusable);
    }
  }

  std::string broken_;
};

class UnguardedReading : public ::testing::TestWithParam<std::string> {};

TEST_P(UnguardedReading, FailsToTheCaller) {
  const auto store = SmallStore().Account(1, "Bank", kCheckingAccount, 10).Open();
  BrokenAccounts accounts(store->OpenRecordset("Account"), GetParam());
  EXPECT_TRUE(
      Raises(FailureNumber::kStoreUnusable, [&] { (void)TotalAssets(*store, accounts, kDay); }));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable,
                     [&] { (void)TotalLiabilities(*store, accounts, kDay); }));
}

INSTANTIATE_TEST_SUITE_P(OfAnAccount, UnguardedReading,
                         ::testing::Values("AccountNumber", "MoveNext"));

// The cards are let go of, but not closed.
TEST(TotalCreditCardDebt, LeavesItsCardsToThemselvesWhereItFails) {
  class BrokenCards : public ForwardingDatabase {
   public:
    using Database::OpenRecordset;
    using ForwardingDatabase::ForwardingDatabase;
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type) override {
      return std::make_unique<BrokenAccounts>(ForwardingDatabase::OpenRecordset(source, type),
                                              "MoveNext");
    }
    Database& Unobserved() override { return Store(); }
  };
  const auto store = SmallStore().Account(1, "Card", kCreditCard, -10).Open();
  FailurePlan never;
  FailingDatabase watched(*store, never);
  BrokenCards broken(watched);
  KeepingStore keeping(broken);
  EXPECT_TRUE(
      Raises(FailureNumber::kStoreUnusable, [&] { (void)TotalCreditCardDebt(*keeping, kDay); }));
  EXPECT_THAT(keeping.events, ElementsAre("open SELECT * FROM Account WHERE AccountType= 4"));
  EXPECT_EQ(watched.OpenRecordsets(), 0);
}

}  // namespace
}  // namespace vetlo
