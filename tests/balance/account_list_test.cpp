#include "vetlo/balance/account_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "tests/support/drawing.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;

std::vector<AccountRow> RowsOf(Database& store) {
  GrowingArray<AccountRow> rows;
  AccountListRows(store, rows, NumberLocale{});
  return rows.elements();
}

struct TypeCase {
  std::int32_t type = 0;
  std::string name;
  std::string balance;  // of a stored balance of -1234.5
};

void PrintTo(const TypeCase& a_case, std::ostream* out) { *out << a_case.type; }

class ListedAccount : public ::testing::TestWithParam<TypeCase> {};

TEST_P(ListedAccount, ShowsItsTypeAndItsBalanceAsThatTypeCounts) {
  const auto store = SmallStore().Account(1, "It", GetParam().type, -1234.5).Open();
  EXPECT_THAT(RowsOf(*store),
              ElementsAre(ElementsAre("It", GetParam().name, "", "", "", GetParam().balance)));
}

INSTANTIATE_TEST_SUITE_P(OfEveryType, ListedAccount,
                         ::testing::Values(TypeCase{0, "Checking Account", "-1,234.50"},
                                           TypeCase{1, "Savings Account", "-1,234.50"},
                                           TypeCase{2, "Time Deposit", "-1,234.50"},
                                           TypeCase{3, "Cash", "-1,234.50"},
                                           TypeCase{4, "Credit Card", "1,234.50"},
                                           TypeCase{5, "Common Asset", "-1,234.50"},
                                           TypeCase{6, "Liability", "1,234.50"},
                                           TypeCase{7, "Creditor's Rights", "-1,234.50"},
                                           TypeCase{8, "Investment", "-1,234.50"},
                                           TypeCase{9, "Other", "-1,234.50"},
                                           TypeCase{42, "Unknown", "1,234.50"}));

TEST(AccountList, GoesByNameThenTypeThenNumber) {
  const auto store = SmallStore()
                         .Account(3, "Same", kCashAccount, 1)
                         .Account(2, "Same", kCashAccount, 2)
                         .Account(4, "Same", kSavingsAccount, 3)
                         .Account(5, "Able", kOtherAccount, 4)
                         .Open();
  std::vector<std::string> balances;
  for (const AccountRow& row : RowsOf(*store)) {
    balances.push_back(row.at(5));
  }
  EXPECT_THAT(balances, ElementsAre("4.00", "3.00", "2.00", "1.00"));
}

TEST(AccountList, ShowsTheStoredBalance) {
  const auto store = SmallStore()
                         .Account(1, "It", kCashAccount, 10)
                         .Transaction({.type = kIncome, .total = 5, .account = 1})
                         .Open();
  EXPECT_EQ(RowsOf(*store).front().at(5), "10.00");
}

TEST(AccountList, FailsWithoutAnAccount) {
  const auto store = SmallStore().Open();
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { RowsOf(*store); }));
}

TEST(AccountList, IsReadByOneText) {
  const auto store = SmallStore().Account(1, "It", kCashAccount).Open();
  KeepingStore keeping(*store);
  RowsOf(*keeping);
  EXPECT_EQ(keeping.events, OneAfterAnother({"SELECT * FROM Account ORDER BY "
                                             "AccountName,AccountType,AccountNumber"}));
}

// ---- as a report

SmallStore WithRow(SmallStore store, ChartOrReport output = ChartOrReport::kReport) {
  store.Row({.number = 1, .report_number = 7, .output = output, .title = "Mine"});
  return store;
}

SmallStore TwoAccounts() {
  SmallStore store;
  store.Account(2, "Wallet", kCashAccount, 12.5)
      .Insert("Account", {{"AccountNumber", 1},
                          {"AccountName", "Bank"},
                          {"AccountType", kLiability},
                          {"BankName", "First Bank"},
                          {"AccountNames", "Ann"},
                          {"Accounts", "12-34"},
                          {"Balance", Money(-1000)},
                          {"OpeningBalance", Money(0)}});
  return store;
}

std::string AtRight(std::size_t width, const std::string& text) {
  return std::string(width + 1 - text.size(), ' ') + text;
}

TEST(AccountListReport, IsThisText) {
  const auto store = WithRow(TwoAccounts()).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  // Six columns and the five gaps between them.
  const std::string rule(7 + 9 + 10 + 13 + 14 + 8 + 9, '_');
  EXPECT_EQ(drawing.report.Text(),
            "\r\nMine\r\n\r\n\r\nAccount\tType\tBank Name\tAccount Names\tAccount Number\t" +
                AtRight(8, "Balance") + "\r\n" + rule + "\r\n\r\n" +                             //
                "Bank\tLiability\tFirst Bank\tAnn\t12-34\t" + AtRight(8, "1,000.00") + "\r\n" +  //
                "Wallet\tCash\t\t\t\t" + AtRight(8, "12.50"));
}

TEST(AccountListReport, HasSixStopsTheFirstOnTheIndent) {
  const auto store = WithRow(TwoAccounts()).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("report", "SelTabCount"), ElementsAre("6"));
  EXPECT_THAT(drawing.Puts("report", "SelTabs"),
              ElementsAre("283.5", "1318.5", "2593.5", "3988.5", "5743.5", "7618.5"));
}

TEST(AccountListReport, WithoutAnAccountIsItsTitleAlone) {
  const auto store = WithRow(SmallStore()).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, 1), 0);
  EXPECT_EQ(drawing.report.Text(), "\r\nMine\r\n\r\n\r\n");
  EXPECT_TRUE(drawing.report.Locked());
}

TEST(AccountListReport, HasNoChart) {
  const auto store = WithRow(TwoAccounts(), ChartOrReport::kChart).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_EQ(drawing.chart.Title(), "");
  EXPECT_TRUE(drawing.Puts("chart", "ChartData").empty());
}

}  // namespace
}  // namespace vetlo
