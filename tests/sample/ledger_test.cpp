#include "quillmarsh/sample/ledger.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/sample/sample_stores.h"

namespace quillmarsh {
namespace {

constexpr std::int32_t kDay = 46000;

class LedgerOfTest : public ::testing::Test {
 protected:
  // What an entry adds to an account's cash.
  std::int64_t Change(const Entry& entry, std::int32_t account) {
    const std::int64_t before = ledger_.CashCents(account);
    ledger_.Write(entry);
    return ledger_.CashCents(account) - before;
  }

  vetlo::StoreBuilder store_;
  Ledger ledger_{store_, {}};
};

TEST_F(LedgerOfTest, NumbersRecordsFromOne) {
  EXPECT_EQ(ledger_.Write({.day = kDay, .account = kWallet, .cents = 100}), 1);
  EXPECT_EQ(ledger_.Write({.day = kDay, .account = kWallet, .cents = 100}), 2);
}

TEST_F(LedgerOfTest, TakesAnExpenseFromItsAccount) {
  EXPECT_EQ(Change({.day = kDay, .account = kWallet, .cents = 250}, kWallet), -250);
}

TEST_F(LedgerOfTest, MovesATransferOutToTheOtherAccount) {
  const Entry entry = {.type = vetlo::kTransferOut,
                       .day = kDay,
                       .account = kWallet,
                       .other = kVouchers,
                       .cents = 300};
  EXPECT_EQ(Change(entry, kWallet), -300);
  EXPECT_EQ(Change(entry, kVouchers), 300);
}

TEST_F(LedgerOfTest, MovesATransferInFromTheOtherAccount) {
  const Entry entry = {.type = vetlo::kTransferIn,
                       .day = kDay,
                       .account = kWallet,
                       .other = kVouchers,
                       .cents = 300};
  EXPECT_EQ(Change(entry, kWallet), 300);
  EXPECT_EQ(Change(entry, kVouchers), -300);
}

TEST_F(LedgerOfTest, PaysAPurchaseFromTheFundingAccountAlone) {
  const Entry entry = {.type = vetlo::kBuy,
                       .day = kDay,
                       .account = kBrokerage,
                       .other = kBrokerageCash,
                       .item = kGrowthFund,
                       .units_hundredths = 100,
                       .cents = 3700};
  EXPECT_EQ(Change(entry, kBrokerageCash), -3700);
  EXPECT_EQ(Change(entry, kBrokerage), 0);
}

TEST_F(LedgerOfTest, PaysAPurchaseThatNobodyFundsFromItsOwnAccount) {
  EXPECT_EQ(Change({.type = vetlo::kBuy,
                    .day = kDay,
                    .account = kBrokerage,
                    .item = kGrowthFund,
                    .units_hundredths = 100,
                    .cents = 3700},
                   kBrokerage),
            -3700);
}

TEST_F(LedgerOfTest, MovesNoMoneyWithUnitsReceived) {
  EXPECT_EQ(Change({.type = vetlo::kUnitsReceived,
                    .day = kDay,
                    .account = kBrokerage,
                    .item = kHaldenWorks,
                    .units_hundredths = 100,
                    .cents = 6000},
                   kBrokerage),
            0);
  EXPECT_EQ(ledger_.UnitsHundredths(kBrokerage, kHaldenWorks), 100);
}

TEST_F(LedgerOfTest, CountsNoVoidRecord) {
  EXPECT_EQ(
      Change({.record_type = vetlo::kVoidRecord, .day = kDay, .account = kWallet, .cents = 250},
             kWallet),
      0);
}

TEST_F(LedgerOfTest, CountsASplitOnce) {
  const std::int64_t before = ledger_.CashCents(kWallet);
  const Entry entry = {.day = kDay, .account = kWallet, .cents = 400};
  std::array<Entry, 2> lines = {entry, entry};
  ledger_.WriteSplit(entry, lines);
  EXPECT_EQ(ledger_.CashCents(kWallet) - before, -800);
  EXPECT_EQ(ledger_.Written(), 3);
}

TEST_F(LedgerOfTest, WritesAHeadWithTheSumOfItsLines) {
  const Entry entry = {.day = kDay, .account = kWallet, .category = {1, 1}, .cents = 400};
  std::array<Entry, 2> lines = {entry, entry};
  ledger_.WriteSplit(entry, lines);
  const Row head = RowsOf(*store_.Open(), "TransactionRecord").front();
  EXPECT_EQ(head.Long("TransactionRecordType"), vetlo::kSplitHead);
  EXPECT_EQ(head.Money("Total"), FromCents(800));
  EXPECT_TRUE(head.IsNull("CategoryNumber"));
}

TEST_F(LedgerOfTest, WritesAnOpeningBalanceThatWasSetAnew) {
  Dice dice(1);
  ledger_.Open(kWallet, 12345);
  ledger_.WriteAccounts(Market(kDay, kDay, dice));
  const Row wallet = RowsOf(*store_.Open(), "Account")[kWallet - 1];
  EXPECT_EQ(wallet.Money("OpeningBalance"), FromCents(12345));
  EXPECT_EQ(wallet.Money("Balance"), FromCents(12345));
}

}  // namespace
}  // namespace quillmarsh
