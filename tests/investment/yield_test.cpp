#include "vetlo/investment/yield.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/investment/securities.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"

namespace vetlo {

void PrintTo(const YieldRow& row, std::ostream* out) {
  *out << row.strName << "|" << row.strGain << "|" << row.strYield;
}

bool operator==(const YieldRow& a, const YieldRow& b) {
  return a.strName == b.strName && a.strGain == b.strGain && a.strYield == b.strYield;
}

namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

constexpr auto kReport = ChartOrReport::kReport;
constexpr auto kChart = ChartOrReport::kChart;
constexpr auto kCost = YieldFamily::kCost;
constexpr auto kReturn = YieldFamily::kReturn;
constexpr auto kNoRow = FailureNumber::kSubscriptOutOfRange;

using Row = YieldRow;
const Row kBlank{};

using Routine = Currency (*)(Database&, Yields&, ChartOrReport, const NumberLocale&);

struct YieldsAndTotal : Yields {
  Currency curTotalGainLoss;
};

YieldsAndTotal YieldsOf(Routine routine, SmallStore& builder, ChartOrReport target = kReport) {
  const auto store = builder.Open();
  YieldsAndTotal yields;
  yields.curTotalGainLoss = routine(*store, yields, target, NumberLocale{});
  return yields;
}

std::vector<Row> ReportOf(Routine routine, SmallStore& builder) {
  return YieldsOf(routine, builder).report.elements();
}

// Bought for 1000, worth 1100, with 50 of dividends.
SmallStore Holding(double worth = 1100) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, worth / 10);
  store.Transaction(Traded(kBuy, 1, 1000, 10.0)).Transaction(Traded(kDividend, 1, 50));
  SetBalance(store, kBroker, worth);
  return store;
}

// ---- the sums

using Sum = std::function<Currency(Database&, YieldFamily)>;

struct SumCase {
  std::string name;
  Sum sum;
  std::string selection;
  std::string prefix;
};

void PrintTo(const SumCase& test, std::ostream* out) { *out << test.name; }

std::string TextOf(const SumCase& test, YieldFamily family) {
  const std::string& p = test.prefix;
  std::string text = test.selection + " AND (" + p + "TransactionRecordType= 0 OR " + p +
                     "TransactionRecordType= 4) AND (" + p + "TransactionType= ";
  return text + (family == kCost ? "2 OR " + p + "TransactionType= 9)"
                                 : "3 OR " + p + "TransactionType= 4 OR " + p +
                                       "TransactionType= 6 OR " + p + "TransactionType= 8)");
}

class YieldSum : public ::testing::TestWithParam<SumCase> {};

TEST_P(YieldSum, IsOneText) {
  SmallStore builder = Market();
  const auto store = builder.Open();
  for (const YieldFamily family : {kCost, kReturn}) {
    KeepingStore keeping(*store);
    GetParam().sum(*keeping, family);
    EXPECT_THAT(keeping.events, ElementsAreArray(OneAfterAnother({TextOf(GetParam(), family)})));
  }
}

TEST_P(YieldSum, TellsTheFamiliesByType) {
  SmallStore builder = Market();
  AddItem(builder, 1, "Alder");
  for (std::int32_t type = kCorrectionUpwards; type <= kTransferIn; ++type) {
    builder.Transaction(Traded(type, 1, 1 << type));
  }
  const auto store = builder.Open();
  EXPECT_EQ(GetParam().sum(*store, kCost), Money((1 << 2) + (1 << 9)));
  EXPECT_EQ(GetParam().sum(*store, kReturn), Money((1 << 3) + (1 << 4) + (1 << 6) + (1 << 8)));
}

TEST_P(YieldSum, CountsOrdinaryRecordsAndSplitLines) {
  SmallStore builder = Market();
  AddItem(builder, 1, "Alder");
  for (std::int32_t kind = kOrdinaryRecord; kind <= kSplitLine; ++kind) {
    TestTransaction traded = Traded(kBuy, 1, 1 << kind);
    traded.record_type = kind;
    builder.Transaction(traded);
  }
  const auto store = builder.Open();
  EXPECT_EQ(GetParam().sum(*store, kCost), Money(17));
}

// Another item of another type, in another account, the bank's.
TEST_P(YieldSum, CountsItsScopeAlone) {
  SmallStore builder = Market();
  AddItem(builder, 1, "Alder");
  AddItem(builder, 2, "Birch", kBond);
  builder.Transaction(Traded(kBuy, 1, 1)).Transaction(Traded(kBuy, 2, 2, Null{}, kBank));
  const auto store = builder.Open();
  EXPECT_EQ(GetParam().sum(*store, kCost), Money(1));
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryScope, YieldSum,
    ::testing::Values(
        SumCase{"item in account",
                [](Database& store, YieldFamily family) {
                  return SumOfItemInAccount(store, family, kBroker, 1);
                },
                "SELECT * FROM TransactionRecord WHERE AccountNumber= 5 AND AccountItemNumber= 1",
                ""},
        SumCase{"item",
                [](Database& store, YieldFamily family) { return SumOfItem(store, family, 1); },
                "SELECT * FROM TransactionRecord WHERE AccountItemNumber= 1", ""},
        SumCase{"account",
                [](Database& store, YieldFamily family) {
                  return SumOfAccount(store, family, kBroker);
                },
                "SELECT * FROM TransactionRecord WHERE AccountNumber= 5", ""},
        SumCase{"item type",
                [](Database& store, YieldFamily family) {
                  return SumOfItemType(store, family, kStock);
                },
                "SELECT T1.* FROM TransactionRecord AS T1,AccountItem AS T2 WHERE "
                "T1.AccountItemNumber=T2.AccountItemNumber AND T2.AccountItemTypeNumber= 1",
                "T1."},
        SumCase{"all",
                [](Database& store, YieldFamily family) {
                  return SumOfAllInvestments(store, family, 2);
                },
                "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
                "T1.AccountNumber=T2.AccountNumber AND (T2.AccountType= 8)",
                "T1."}));

TEST(SumOfAllInvestments, FailsForAnyOtherAttribute) {
  SmallStore builder = Market();
  const auto store = builder.Open();
  EXPECT_NE(ResumeNext([&] { SumOfAllInvestments(*store, kCost, 1); }), 0);
}

// ---- by account

TEST(YieldByAccount, ShowsGainAndYieldOfItemAccountAndAll) {
  SmallStore store = Holding();
  const YieldsAndTotal yields = YieldsOf(YieldByAccount, store);
  EXPECT_THAT(yields.report.elements(),
              ElementsAre(Row{"Broker", "", ""}, Row{"Alder", "150.00", "15.00%"}, kBlank,
                          Row{"Total Broker", "150.00", "15.00%"}, kBlank));
  EXPECT_EQ(yields.curTotalGainLoss, Money(150));
  EXPECT_EQ(yields.curTotalYield, Money(15));
}

TEST(YieldByAccount, ShowsNoYieldOfWhatCostNothing) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 2);
  Hold(store, 1, 10);
  EXPECT_THAT(ReportOf(YieldByAccount, store),
              ElementsAre(Row{"Broker", "", ""}, Row{"Alder", "20.00", ""}));
}

TEST(YieldByAccount, ShowsWhatIsSoldByItsTransactionsAlone) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 77);
  store.Transaction(Traded(kBuy, 1, 100, 1.0)).Transaction(Traded(kSell, 1, 90, 1.0));
  EXPECT_THAT(ReportOf(YieldByAccount, store), Contains(Row{"Alder", "-10.00", "-10.00%"}));
}

TEST(YieldByAccount, LeavesOutWhatWasNeverTradedAndIsNotHeld) {
  SmallStore store = Holding();
  AddItem(store, 2, "Birch");
  AddLatestPrice(store, 2, 7);
  EXPECT_EQ(ReportOf(YieldByAccount, store).size(), 5U);
}

TEST(YieldByAccount, ShowsTheTotalOfAnAccountWithABalanceAlone) {
  SmallStore store = Market();
  SetBalance(store, kBroker, 4);
  EXPECT_THAT(ReportOf(YieldByAccount, store),
              ElementsAre(Row{"Broker", "", ""}, kBlank, Row{"Total Broker", "4.00", ""}, kBlank));
}

TEST(YieldByAccount, ShowsNothingOfAnAccountOfNothing) {
  SmallStore store = Holding();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  EXPECT_EQ(ReportOf(YieldByAccount, store).size(), 5U);
}

TEST(YieldByAccount, LeavesTheCashAccountsOut) {
  SmallStore store = Holding();
  SetBalance(store, kBank, 700);
  Associate(store, kBroker, kBank);
  EXPECT_EQ(YieldsOf(YieldByAccount, store).curTotalGainLoss, Money(150));
}

// 0.00499 per cent stays below half of the last place; rounded to four places first, it does not.
TEST(YieldByAccount, RoundsTheTotalsYieldButNoRows) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  store.Transaction(Traded(kBuy, 1, 1000000)).Transaction(Traded(kSell, 1, 1000049.99));
  const YieldsAndTotal yields = YieldsOf(YieldByAccount, store);
  EXPECT_THAT(yields.report.elements(), Contains(Row{"Total Broker", "49.99", "0.00%"}));
  EXPECT_EQ(yields.curTotalYield, Money(0.005));
}

TEST(YieldByAccount, KeepsATotalYieldOfNothingWhereItDoesNotFit) {
  SmallStore store = Market();
  SetBalance(store, kBroker, 900000000000000);
  store.Transaction(Traded(kBuy, 1, 0.0001));
  EXPECT_EQ(YieldsOf(YieldByAccount, store).curTotalYield, Money(0));
}

TEST(YieldByAccount, KeepsThePriceBeforeWhereAnItemHasNone) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 1, "Alder");
  AddItem(store, 2, "Birch");
  AddLatestPrice(store, 2, 5);
  Hold(store, 1, 10);
  Hold(store, 2, 1);
  Hold(store, 1, 10, kSecondBroker);
  EXPECT_THAT(ReportOf(YieldByAccount, store),
              ElementsAre(Row{"Broker", "", ""}, Row{"Alder", "0.00", ""}, Row{"Birch", "5.00", ""},
                          Row{"Second", "", ""}, Row{"Alder", "50.00", ""}));
}

// A sum that cannot be taken is the one before: of the item before, or of the account, or of all.
TEST(YieldByAccount, KeepsTheSumBeforeWhereOneFails) {
  SmallStore store = Holding();
  AddItem(store, 2, "Birch");
  const auto open = store.Open();
  DenyingDatabase denying(*open, [](std::string_view text) {
    return text.find("AccountItemNumber= 2 AND (TransactionRecordType") != std::string::npos &&
           text.find("TransactionType= 9") != std::string::npos;
  });
  Yields yields;
  YieldByAccount(denying, yields, kReport, NumberLocale{});
  EXPECT_THAT(yields.report.elements(), Contains(Row{"Birch", "-1,000.00", "-100.00%"}));
}

TEST(YieldByAccount, KeepsTheSumsOfAllWhereTheFirstItemsFail) {
  SmallStore store = Holding();
  const auto open = store.Open();
  DenyingDatabase denying(*open, [](std::string_view text) {
    return text.starts_with(
        "SELECT * FROM TransactionRecord WHERE AccountNumber= 5 AND AccountItemNumber= 1 AND "
        "(TransactionRecordType= 0 OR TransactionRecordType= 4) AND (TransactionType");
  });
  Yields yields;
  YieldByAccount(denying, yields, kReport, NumberLocale{});
  EXPECT_THAT(yields.report.elements(), Contains(Row{"Alder", "150.00", "15.00%"}));
}

TEST(YieldByAccount, ChartsYieldsOtherThanZero) {
  SmallStore store = Holding();
  store.Account(kSecondBroker, "Second", kInvestmentAccount, 10);
  store.Transaction(Traded(kBuy, 1, 10, Null{}, kSecondBroker));
  EXPECT_THAT(RowsIn(YieldsOf(YieldByAccount, store, kChart).chart),
              ElementsAre(ShownRow{15, "Broker Yield"}));
}

// ---- by type

TEST(YieldByType, ShowsGainAndYieldOfItemTypeAndAll) {
  SmallStore store = Holding();
  const YieldsAndTotal yields = YieldsOf(YieldByType, store);
  EXPECT_THAT(yields.report.elements(),
              ElementsAre(Row{"Stock Investment", "", ""}, Row{"Alder", "150.00", "15.00%"}, kBlank,
                          Row{"Total Stock Investment", "150.00", "15.00%"}, kBlank));
  EXPECT_EQ(yields.curTotalGainLoss, Money(150));
  EXPECT_EQ(yields.curTotalYield, Money(15));
}

// Rounded by account the worth would be twice 0.0025, which shows as 0.01.
TEST(YieldByType, AddsUnitsBeforeItRoundsTheWorth) {
  SmallStore store = Market();
  store.Account(kSecondBroker, "Second", kInvestmentAccount);
  AddItem(store, 1, "Alder");
  AddLatestPrice(store, 1, 0.00246);
  Hold(store, 1, 1);
  Hold(store, 1, 1, kSecondBroker);
  EXPECT_THAT(ReportOf(YieldByType, store), Contains(Row{"Alder", "0.00", ""}));
}

TEST(YieldByType, KeepsThePriceBeforeAcrossTypesAlsoOfWhatIsNotHeld) {
  SmallStore store = Market();
  AddItem(store, 1, "Alder");
  AddItem(store, 2, "Birch", kBond);
  AddLatestPrice(store, 1, 5);
  Hold(store, 2, 3);
  EXPECT_THAT(ReportOf(YieldByType, store),
              ElementsAre(Row{"Bond Investment", "", ""}, Row{"Birch", "15.00", ""}));
}

TEST(YieldByType, ListsItemsByName) {
  SmallStore store = Market();
  AddItem(store, 1, "Birch");
  AddItem(store, 2, "alder");
  Hold(store, 1, 1);
  Hold(store, 2, 1);
  EXPECT_THAT(ReportOf(YieldByType, store),
              ElementsAre(Row{"Stock Investment", "", ""}, Row{"alder", "0.00", ""},
                          Row{"Birch", "0.00", ""}));
}

// Items start without a sum; what is known of the type is none of theirs.
TEST(YieldByType, KeepsTheSumOfTheItemBeforeWhereOneFails) {
  SmallStore store = Holding();
  AddItem(store, 2, "Birch");
  AddItem(store, 3, "Aaron");
  const auto open = store.Open();
  DenyingDatabase denying(*open, [](std::string_view text) {
    return text.starts_with("SELECT * FROM TransactionRecord WHERE AccountItemNumber= 2") ||
           text.starts_with("SELECT * FROM TransactionRecord WHERE AccountItemNumber= 3");
  });
  Yields yields;
  YieldByType(denying, yields, kReport, NumberLocale{});
  EXPECT_THAT(yields.report.elements(),
              ElementsAre(Row{"Stock Investment", "", ""}, Row{"Alder", "150.00", "15.00%"},
                          Row{"Birch", "-950.00", "-95.00%"}, kBlank,
                          Row{"Total Stock Investment", "150.00", "15.00%"}, kBlank));
}

TEST(YieldByType, ChartsYieldsOtherThanZero) {
  SmallStore store = Holding();
  AddItem(store, 2, "Birch", kBond);
  AddLatestPrice(store, 2, 10);
  store.Transaction(Traded(kBuy, 2, 10, 1.0));
  EXPECT_THAT(RowsIn(YieldsOf(YieldByType, store, kChart).chart),
              ElementsAre(ShownRow{15, "Stock Investment Yield"}));
}

class NoYield : public ::testing::TestWithParam<Routine> {};

TEST_P(NoYield, FailsInAReport) {
  SmallStore store;
  EXPECT_TRUE(Raises(kNoRow, [&] { YieldsOf(GetParam(), store); }));
}

TEST_P(NoYield, FailsInAChart) {
  SmallStore store = Holding(950);
  EXPECT_TRUE(Raises(kNoRow, [&] { YieldsOf(GetParam(), store, kChart); }));
}

INSTANTIATE_TEST_SUITE_P(Of, NoYield, ::testing::Values(YieldByAccount, YieldByType));

}  // namespace
}  // namespace vetlo
