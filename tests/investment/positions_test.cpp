#include "vetlo/investment/positions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/investment/securities.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "vetlo/investment/values.h"

namespace vetlo {

void PrintTo(const PositionRow& row, std::ostream* out) {
  *out << row.strName << "|" << row.strQuantity << "|" << row.strPrice << "|" << row.strValue;
}

bool operator==(const PositionRow& a, const PositionRow& b) {
  return a.strName == b.strName && a.strQuantity == b.strQuantity && a.strPrice == b.strPrice &&
         a.strValue == b.strValue;
}

namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto kReport = ChartOrReport::kReport;
constexpr auto kChart = ChartOrReport::kChart;
constexpr auto kNoRow = FailureNumber::kSubscriptOutOfRange;

using Row = PositionRow;
const Row kBlank{};

using Routine = Currency (*)(Database&, Positions&, ChartOrReport, const NumberLocale&);

std::vector<Row> ReportOf(Routine routine, SmallStore& builder) {
  const auto store = builder.Open();
  Positions positions;
  routine(*store, positions, kReport, NumberLocale{});
  return positions.report.elements();
}

std::vector<ShownRow> ChartOf(Routine routine, SmallStore& builder) {
  const auto store = builder.Open();
  Positions positions;
  routine(*store, positions, kChart, NumberLocale{});
  return RowsIn(positions.chart);
}

Currency TotalOf(Routine routine, SmallStore& builder) {
  const auto store = builder.Open();
  Positions positions;
  return routine(*store, positions, kReport, NumberLocale{});
}

const std::string kAccountsText = "SELECT * FROM Account WHERE AccountType= 8";
const std::string kTypesText =
    "SELECT * FROM AccountItemType WHERE BasicAccountType= 2 ORDER BY AccountItemTypeNumber";
const std::string kItemsText =
    "SELECT T1.* FROM AccountItem AS T1,AccountItemType AS T2 WHERE "
    "T1.AccountItemTypeNumber=T2.AccountItemTypeNumber AND T2.BasicAccountType= 2";
const std::string kPairsText =
    "SELECT DISTINCT AssociatedAccountNumber,AccountNumber FROM AssociatedAccountInfo";
const std::string kCashText =
    "SELECT DISTINCT T1.AccountNumber,T1.AccountName,T1.Balance FROM Account AS "
    "T1,AssociatedAccountInfo AS T2 WHERE T1.AccountNumber=T2.AssociatedAccountNumber ORDER BY "
    "T1.AccountName";

// ---- by account

TEST(InvestmentsByAccount, ListsHoldingsAndCashUnderTheAccount) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 12.5);
  Hold(store, 1, 10.25);
  SetBalance(store, kBroker, 130);
  SetBalance(store, kBank, 700);
  Associate(store, kBroker, kBank);
  EXPECT_THAT(ReportOf(InvestmentsByAccount, store),
              ElementsAre(Row{"Broker", "", "", ""}, Row{"Alder", "10.25", "12.50", "128.13"},
                          Row{"Bank", "", "", "700.00"}, kBlank,
                          Row{"Total Broker", "", "", "830.00"}, kBlank));
}

TEST(InvestmentsByAccount, ShowsPricesWithUpToSixPlaces) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 1234.1234565);
  Hold(store, 1, 1234.5);
  EXPECT_THAT(ReportOf(InvestmentsByAccount, store),
              Contains(Row{"Alder", "1,234.5", "1,234.123457", "1,523,525.41"}));
}

TEST(InvestmentsByAccount, ListsAnAccountOfNothingInAReport) {
  SmallStore store = Market();
  EXPECT_THAT(
      ReportOf(InvestmentsByAccount, store),
      ElementsAre(Row{"Broker", "", "", ""}, kBlank, Row{"Total Broker", "", "", "0.00"}, kBlank));
}

TEST(InvestmentsByAccount, LeavesAnAccountOfNothingOutOfAChart) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount, -4);
  EXPECT_THAT(ChartOf(InvestmentsByAccount, store), ElementsAre(ShownRow{-4, "Second"}));
}

TEST(InvestmentsByAccount, ChartsBalancesWithTheirCash) {
  SmallStore store = Market();
  SetBalance(store, kBroker, 130);
  SetBalance(store, kBank, 700);
  Associate(store, kBroker, kBank);
  EXPECT_THAT(ChartOf(InvestmentsByAccount, store), ElementsAre(ShownRow{830, "Broker"}));
}

TEST(InvestmentsByAccount, FailsWhereAChartHasNoAmount) {
  SmallStore store = Market();
  EXPECT_TRUE(Raises(kNoRow, [&] { ChartOf(InvestmentsByAccount, store); }));
}

TEST(InvestmentsByAccount, FailsWhereACashAccountIsNotThere) {
  SmallStore store = Market();
  Associate(store, kBroker, 99);
  EXPECT_TRUE(
      Raises(FailureNumber::kNoCurrentRecord, [&] { ReportOf(InvestmentsByAccount, store); }));
}

TEST(InvestmentsByAccount, TakesTheFirstOfSeveralCashAccounts) {
  SmallStore store = Market();
  store.Account(2, "Purse", kCashAccount, 3);
  Associate(store, kBroker, 2);
  Associate(store, kBroker, kBank);
  EXPECT_THAT(ReportOf(InvestmentsByAccount, store), Contains(Row{"Purse", "", "", "3.00"}));
}

// A price that is missing stays that of the item before, of an account to the next.
TEST(InvestmentsByAccount, KeepsThePriceBeforeWhereAnItemHasNone) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 1, "Alder");
  AddItem(store, 2, "Birch");
  AddItem(store, 3, "Cedar");
  AddLatestPrice(store, 2, 5);
  for (const std::int32_t account : {kBroker, kSecondBroker}) {
    Hold(store, 1, 10, account);
    Hold(store, 3, 10, account);
  }
  EXPECT_THAT(ReportOf(InvestmentsByAccount, store),
              ElementsAre(Row{"Broker", "", "", ""}, Row{"Alder", "10", "0.00", "0.00"},
                          Row{"Cedar", "10", "5.00", "50.00"}, kBlank,
                          Row{"Total Broker", "", "", "0.00"}, kBlank, Row{"Second", "", "", ""},
                          Row{"Alder", "10", "5.00", "50.00"}, Row{"Cedar", "10", "5.00", "50.00"},
                          kBlank, Row{"Total Second", "", "", "0.00"}, kBlank));
}

TEST(InvestmentsByAccount, OpensTheseTexts) {
  SmallStore store = Market();
  const auto open = store.Open();
  KeepingStore keeping(*open);
  Positions positions;
  InvestmentsByAccount(*keeping, positions, kReport, NumberLocale{});
  EXPECT_THAT(OpenedIn(keeping),
              ElementsAre("Account", "AssociatedAccountInfo", "LatestPriceInfo", "Account",
                          "Account", kPairsText, kAccountsText, kItemsText));
}

// ---- by type

TEST(InvestmentsByType, ListsItemsByNameUnderThePluralOfTheirType) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 1, "Birch");
  AddItem(store, 2, "alder");
  AddLatestPrice(store, 1, 2);
  AddLatestPrice(store, 2, 3);
  Hold(store, 1, 10);
  Hold(store, 2, 4);
  Hold(store, 2, 2.5, kSecondBroker);
  EXPECT_THAT(ReportOf(InvestmentsByType, store),
              ElementsAre(Row{"Stocks", "", "", ""}, Row{"alder", "6.5", "3.00", "19.50"},
                          Row{"Birch", "10", "2.00", "20.00"}, kBlank,
                          Row{"Total Stocks", "", "", "39.50"}, kBlank));
}

TEST(InvestmentsByType, EndsWithTheCashWithoutABlankLine) {
  SmallStore store = Market();
  store.Account(2, "Acorn", kCashAccount, 3).Account(3, "None", kCashAccount);
  SetBalance(store, kBank, -7.5);
  Associate(store, kBroker, kBank);
  Associate(store, kBroker, 2);
  Associate(store, kBroker, 3);
  EXPECT_THAT(ReportOf(InvestmentsByType, store),
              ElementsAre(Row{"Associated Cash Account", "", "", ""}, Row{"Acorn", "", "", "3.00"},
                          Row{"Bank", "", "", "-7.50"}, kBlank,
                          Row{"Total Associated Cash Accounts", "", "", "-4.50"}));
}

TEST(InvestmentsByType, ListsCashThatServesTwoOnceAndCountsItTwice) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  SetBalance(store, kBank, 7);
  Associate(store, kBroker, kBank);
  Associate(store, kSecondBroker, kBank);
  EXPECT_THAT(ReportOf(InvestmentsByType, store),
              ElementsAre(Row{"Associated Cash Account", "", "", ""}, Row{"Bank", "", "", "7.00"},
                          kBlank, Row{"Total Associated Cash Accounts", "", "", "14.00"}));
}

TEST(InvestmentsByType, ChartsTypesAndCash) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 2);
  Hold(store, 1, 10);
  SetBalance(store, kBank, 7);
  Associate(store, kBroker, kBank);
  EXPECT_THAT(ChartOf(InvestmentsByType, store),
              ElementsAre(ShownRow{20, "Stocks"}, ShownRow{7, "Total Associated Cash Accounts"}));
}

// Across the items of a type and from type to type; one that is not held is not asked for.
TEST(InvestmentsByType, KeepsThePriceBeforeWhereAnItemHasNone) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddItem(store, 2, "Birch");
  AddItem(store, 3, "Cedar", kBond);
  AddItem(store, 4, "Unheld", kStock);
  AddLatestPrice(store, 1, 5);
  AddLatestPrice(store, 4, 99);
  Hold(store, 1, 1);
  Hold(store, 2, 2);
  Hold(store, 3, 3);
  EXPECT_THAT(
      ReportOf(InvestmentsByType, store),
      ElementsAre(Row{"Stocks", "", "", ""}, Row{"Alder", "1", "5.00", "5.00"},
                  Row{"Birch", "2", "5.00", "10.00"}, kBlank, Row{"Total Stocks", "", "", "15.00"},
                  kBlank, Row{"Bonds", "", "", ""}, Row{"Cedar", "3", "5.00", "15.00"}, kBlank,
                  Row{"Total Bonds", "", "", "0.00"}, kBlank));
}

TEST(InvestmentsByType, OpensTheseTexts) {
  SmallStore store = Market();
  store.Execute("DELETE FROM AccountItemType WHERE AccountItemTypeNumber <> 1");
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 1);
  Hold(store, 1, 1);
  const auto open = store.Open();
  KeepingStore keeping(*open);
  Positions positions;
  InvestmentsByType(*keeping, positions, kReport, NumberLocale{});
  EXPECT_THAT(OpenedIn(keeping),
              ElementsAre("LatestPriceInfo", "Account", "Account", kPairsText, kTypesText,
                          "AccountItemType", "Account", "LatestPriceInfo",
                          "SELECT * FROM AccountItem WHERE AccountItemTypeNumber= 1",
                          "SELECT * FROM AccountItem WHERE AccountItemTypeNumber= 1 ORDER BY "
                          "AccountItemName",
                          kAccountsText, "Account", kPairsText, kCashText));
}

class EmptyPositions : public ::testing::TestWithParam<Routine> {};

TEST_P(EmptyPositions, FailInAReport) {
  SmallStore store;
  EXPECT_TRUE(Raises(kNoRow, [&] { ReportOf(GetParam(), store); }));
}

TEST_P(EmptyPositions, FailInAChart) {
  SmallStore store;
  EXPECT_TRUE(Raises(kNoRow, [&] { ChartOf(GetParam(), store); }));
}

TEST_P(EmptyPositions, TotalBalancesAndCash) {
  SmallStore store = Market();
  SetBalance(store, kBroker, 130);
  SetBalance(store, kBank, 700);
  Associate(store, kBroker, kBank);
  EXPECT_EQ(TotalOf(GetParam(), store), Money(830));
}

INSTANTIATE_TEST_SUITE_P(Of, EmptyPositions,
                         ::testing::Values(InvestmentsByAccount, InvestmentsByType));

// ---- values by type

std::vector<ShownRow> ValuesOf(SmallStore& builder, ChartOrReport target) {
  const auto store = builder.Open();
  AmountRows rows;
  InvestmentValuesByType(*store, rows, target);
  return RowsIn(rows);
}

SmallStore WithCash(double cash) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 2);
  Hold(store, 1, 10);
  SetBalance(store, kBank, cash);
  Associate(store, kBroker, kBank);
  return store;
}

TEST(InvestmentValuesByType, PutsABlankLineBeforeTheCashInAReport) {
  SmallStore store = WithCash(7);
  EXPECT_THAT(ValuesOf(store, kReport), ElementsAre(ShownRow{20, "Stocks"}, ShownRow{-1, ""},
                                                    ShownRow{7, "Associated Cash Accounts"}));
}

TEST(InvestmentValuesByType, PutsNothingBeforeTheCashInAChart) {
  SmallStore store = WithCash(-7);
  EXPECT_THAT(ValuesOf(store, kChart),
              ElementsAre(ShownRow{20, "Stocks"}, ShownRow{-7, "Associated Cash Accounts"}));
}

TEST(InvestmentValuesByType, LeavesOutCashOfNothing) {
  SmallStore store = WithCash(0);
  EXPECT_THAT(ValuesOf(store, kReport), ElementsAre(ShownRow{20, "Stocks"}));
}

TEST(InvestmentValuesByType, FailsWhereThereIsNothing) {
  SmallStore store;
  EXPECT_TRUE(Raises(kNoRow, [&] { ValuesOf(store, kReport); }));
}

// ---- sums

Currency WorthOf(SmallStore& builder, std::int32_t type = kStock) {
  const auto store = builder.Open();
  return TotalValueOfItemType(*store, type);
}

// Each product is below half of the last place, both together are above it.
TEST(TotalValueOfItemType, RoundsProductsBeforeItAddsThem) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 0.00004);
  Hold(store, 1, 1);
  Hold(store, 1, 1, kSecondBroker);
  EXPECT_EQ(WorthOf(store), Money(0));
}

TEST(TotalValueOfItemType, KeepsThePriceBeforeWhereAnItemHasNone) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddItem(store, 2, "Birch");
  AddItem(store, 3, "Cedar");
  AddLatestPrice(store, 2, 5);
  Hold(store, 1, 1);
  Hold(store, 3, 3);
  EXPECT_EQ(WorthOf(store), Money(15));
}

TEST(TotalValueOfItemType, IsNothingForATypeThatIsNotThere) {
  SmallStore store = WithCash(0);
  EXPECT_EQ(WorthOf(store, 99), Money(0));
}

TEST(TotalValueOfItemType, TakesTheTypesOwnKindOfAccount) {
  SmallStore store = Market();
  AddItem(store, 1, "Penny", kStamp);
  AddLatestPrice(store, 1, 5);
  Hold(store, 1, 1, kBank);
  Hold(store, 1, 2, kBroker);
  EXPECT_EQ(WorthOf(store, kStamp), Money(5));
}

// Alder's price times its units does not fit; Birch still counts.
TEST(TotalValueOfItemType, AddsNothingForAProductThatDoesNotFit) {
  SmallStore store = WithCash(0);
  AddItem(store, 2, "Birch");
  AddLatestPrice(store, 2, 1e300);
  Hold(store, 2, 1);
  EXPECT_EQ(WorthOf(store), Money(20));
}

TEST(TotalBalanceOfAttribute, AddsTheAccountsThatShareAFlag) {
  SmallStore store = Market();
  SetBalance(store, kBroker, 130);
  SetBalance(store, kBank, 700);
  const auto open = store.Open();
  EXPECT_EQ(TotalBalanceOfAttribute(*open, 2), Money(130));
  EXPECT_EQ(TotalBalanceOfAttribute(*open, 4), Money(830));
}

TEST(TotalBalanceOfAttribute, OfTheOnlyAccountIsItsBalance) {
  SmallStore store;
  store.Account(kBroker, "Broker", kInvestmentAccount);
  SetBalance(store, kBroker, 130);
  EXPECT_EQ(TotalBalanceOfAttribute(*store.Open(), 2), Money(130));
}

TEST(TotalBalanceOfAttribute, WithoutAnAccountIsNothing) {
  EXPECT_EQ(TotalBalanceOfAttribute(*SmallStore().Open(), 2), Money(0));
}

TEST(TotalAssociatedCash, LeavesOutWhatServesAnAccountOfAnotherKind) {
  SmallStore store = Market();
  SetBalance(store, kBank, 700);
  Associate(store, kBank, kBank);
  const auto open = store.Open();
  EXPECT_EQ(TotalAssociatedCash(*open, 2), Money(0));
}

TEST(TotalAssociatedCash, CountsARepeatedPairOnce) {
  SmallStore store = Market();
  SetBalance(store, kBank, 700);
  Associate(store, kBroker, kBank);
  Associate(store, kBroker, kBank);
  const auto open = store.Open();
  EXPECT_EQ(TotalAssociatedCash(*open, 2), Money(700));
}

TEST(TotalAssociatedCash, FailsForAnOwnerThatIsNotThere) {
  SmallStore store = Market();
  Associate(store, 99, kBank);
  const auto open = store.Open();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { TotalAssociatedCash(*open, 2); }));
}

}  // namespace
}  // namespace vetlo
