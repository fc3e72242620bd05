#include "vetlo/cashflow/investment_flows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cashflow/cash_household.h"
#include "tests/support/raises.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAreArray;

std::string MovedAt(const std::string& account, const std::string& types) {
  return "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
         "T1.AccountNumber=T2.AccountNumber AND T2.AccountType= 8 AND T1.ToOrFundAccountNumber= " +
         account + " AND " + types +
         "  AND T1.TransactionDate>=#2026-01-01# AND T1.TransactionDate<=#2026-01-31#";
}

const std::string kIncomeTypes =
    "(T1.TransactionType= 3 OR T1.TransactionType= 4 OR T1.TransactionType= 6 OR "
    "T1.TransactionType= 8)";
const std::string kExpenseTypes = "(T1.TransactionType= 2 OR T1.TransactionType= 9)";

TEST(InvestmentIncomeIntoAccount, IsOneText) {
  const auto store = Accounts().Open();
  KeepingStore keeping(*store);
  InvestmentIncomeIntoAccount(*keeping, kFrom, kTo, kBank);
  EXPECT_THAT(keeping.events, ElementsAreArray(OneAfterAnother({MovedAt("1", kIncomeTypes)})));
}

TEST(InvestmentExpensesFromAccount, IsOneText) {
  const auto store = Accounts().Open();
  KeepingStore keeping(*store);
  InvestmentExpensesFromAccount(*keeping, kFrom, kTo, kBank);
  EXPECT_THAT(keeping.events, ElementsAreArray(OneAfterAnother({MovedAt("1", kExpenseTypes)})));
}

struct TypeCase {
  std::int32_t type;
  double income;
  double expenses;
};

class InvestmentMovement : public ::testing::TestWithParam<TypeCase> {};

TEST_P(InvestmentMovement, CountsByItsType) {
  const auto store = Accounts().Transaction(Funded(GetParam().type, 7)).Open();
  EXPECT_EQ(InvestmentIncomeIntoAccount(*store, kFrom, kTo, kBank), Money(GetParam().income));
  EXPECT_EQ(InvestmentExpensesFromAccount(*store, kFrom, kTo, kBank), Money(GetParam().expenses));
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryType, InvestmentMovement,
    ::testing::Values(TypeCase{kCorrectionUpwards, 0, 0}, TypeCase{kCorrectionDownwards, 0, 0},
                      TypeCase{kBuy, 0, 7}, TypeCase{kSell, 7, 0}, TypeCase{kDividend, 7, 0},
                      TypeCase{kUnitsReceived, 0, 0}, TypeCase{kHoldingInterest, 7, 0},
                      TypeCase{kUnitsGivenAway, 0, 0}, TypeCase{kCapitalGain, 7, 0},
                      TypeCase{kHoldingCost, 0, 7}, TypeCase{kIncome, 0, 0},
                      TypeCase{kExpense, 0, 0}, TypeCase{kTransferOut, 0, 0},
                      TypeCase{kTransferIn, 0, 0}));

TEST(InvestmentMovementAtAnAccount, CountsWhateverTheTypeOfTheRecord) {
  TestTransaction pattern = Funded(kDividend, 7);
  pattern.record_type = kScheduledPattern;
  const auto store = Accounts().Transaction(pattern).Open();
  EXPECT_EQ(InvestmentIncomeIntoAccount(*store, kFrom, kTo, kBank), Money(7));
}

TEST(InvestmentMovementAtAnAccount, CountsOnlyWhatComesFromAnInvestmentAccount) {
  TestTransaction dividend = Funded(kDividend, 7);
  dividend.account = kHouse;
  const auto store = Accounts().Transaction(dividend).Open();
  EXPECT_EQ(InvestmentIncomeIntoAccount(*store, kFrom, kTo, kBank), Money(0));
}

TEST(InvestmentMovementAtAnAccount, CountsOnlyWhatNamesTheAccount) {
  const auto store = Accounts().Transaction(Funded(kDividend, 7)).Open();
  EXPECT_EQ(InvestmentIncomeIntoAccount(*store, kFrom, kTo, kHouse), Money(0));
}

TEST(InvestmentMovementAtAnAccount, CountsBothEndsOfTheRange) {
  TestTransaction first = Funded(kBuy, 1);
  first.date = kFrom;
  TestTransaction last = Funded(kBuy, 2);
  last.date = kTo;
  TestTransaction after = Funded(kBuy, 4);
  after.date = Day(2026, 2, 1);
  const auto store = Accounts().Transaction(first).Transaction(last).Transaction(after).Open();
  EXPECT_EQ(InvestmentExpensesFromAccount(*store, kFrom, kTo, kBank), Money(3));
}

TEST(TotalIncomeFromInvestmentAccounts, WalksTheOtherAccountsInNoAskedOrder) {
  const auto store = Accounts().Open();
  KeepingStore keeping(*store);
  TotalIncomeFromInvestmentAccounts(*keeping, kFrom, kTo);
  std::vector<std::string> expected = {"open SELECT * FROM Account WHERE AccountType<> 8"};
  for (const std::string& event :
       OneAfterAnother({MovedAt("1", kIncomeTypes), MovedAt("6", kIncomeTypes)})) {
    expected.push_back(event);
  }
  expected.emplace_back("close SELECT * FROM Account WHERE AccountType<> 8");
  EXPECT_THAT(keeping.events, ElementsAreArray(expected));
}

TEST(TotalExpensesOnInvestmentAccounts, AddsUpAllOtherAccounts) {
  TestTransaction house = Funded(kBuy, 2);
  house.other_account = kHouse;
  TestTransaction broker = Funded(kBuy, 4);
  broker.other_account = kBroker;
  const auto store =
      Accounts().Transaction(Funded(kHoldingCost, 1)).Transaction(house).Transaction(broker).Open();
  EXPECT_EQ(TotalExpensesOnInvestmentAccounts(*store, kFrom, kTo), Money(3));
}

TEST(TotalIncomeFromInvestmentAccounts, IsNothingWithoutAnAccount) {
  const auto store = SmallStore().Open();
  EXPECT_EQ(TotalIncomeFromInvestmentAccounts(*store, kFrom, kTo), Money(0));
}

TEST(TotalIncomeFromInvestmentAccounts, FailsWithoutClosingWhereAnAccountFails) {
  const auto store = Accounts().Open();
  RefusingDatabase refusing(*store, "SELECT T1.*");
  KeepingStore keeping(refusing);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable,
                     [&] { TotalIncomeFromInvestmentAccounts(*keeping, kFrom, kTo); }));
  EXPECT_EQ(keeping.events,
            std::vector<std::string>{"open SELECT * FROM Account WHERE AccountType<> 8"});
}

}  // namespace
}  // namespace vetlo
