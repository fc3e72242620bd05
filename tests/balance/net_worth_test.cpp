#include "vetlo/balance/net_worth.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/store/forwarding.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using vetlo::testing::Day;
using vetlo::testing::FailingDatabase;
using vetlo::testing::FailurePlan;
using vetlo::testing::Money;
using vetlo::testing::SmallStore;

const Date kDay = Day(2026, 3, 20);
constexpr auto kReport = ChartOrReport::kReport;
constexpr auto kChart = ChartOrReport::kChart;

using Routine = Currency (*)(Database&, Date, AmountRows&, ChartOrReport);

struct Outcome {
  std::vector<ShownRow> rows;
  Currency total;
};

Outcome OutcomeOf(Routine routine, Database& store, ChartOrReport target) {
  AmountRows rows;
  const Currency total = routine(store, kDay, rows, target);
  return {RowsIn(rows), total};
}

Outcome OutcomeOf(Routine routine, SmallStore& builder, ChartOrReport target) {
  const auto store = builder.Open();
  return OutcomeOf(routine, *store, target);
}

// ---- by single account

TEST(NetWorthByAccount, ListsOneAssetUnderItsHeading) {
  SmallStore builder;
  builder.Account(1, "Wallet", kCashAccount, 12.5);
  const auto [rows, total] = OutcomeOf(NetWorthByAccount, builder, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-1, "Assets"}, ShownRow{12.5, "Cash:Wallet"},
                                ShownRow{-1, ""}, ShownRow{12.5, "Total Assets"}));
  EXPECT_EQ(total, Money(12.5));
}

TEST(NetWorthByAccount, OpensWithABlankLineWhereThereAreDebtsAlone) {
  SmallStore builder;
  builder.Account(1, "Visa", kCreditCard, -35.5);
  const auto [rows, total] = OutcomeOf(NetWorthByAccount, builder, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Liabilities"},
                                ShownRow{35.5, "Credit Card:Visa"}, ShownRow{-1, ""},
                                ShownRow{35.5, "Total Liabilities"}));
  EXPECT_EQ(total, Money(-35.5));
}

TEST(NetWorthByAccount, ListsAssetsBeforeDebts) {
  SmallStore builder;
  builder.Account(1, "Visa", kCreditCard, -35.5).Account(2, "Wallet", kCashAccount, 12.5);
  const auto [rows, total] = OutcomeOf(NetWorthByAccount, builder, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-1, "Assets"}, ShownRow{12.5, "Cash:Wallet"},
                                ShownRow{-1, ""}, ShownRow{12.5, "Total Assets"},  //
                                ShownRow{-1, ""}, ShownRow{-1, "Liabilities"},
                                ShownRow{35.5, "Credit Card:Visa"}, ShownRow{-1, ""},
                                ShownRow{35.5, "Total Liabilities"}));
  EXPECT_EQ(total, Money(-23));
}

TEST(NetWorthByAccount, ListsEveryAccountInAReportHoweverSmall) {
  SmallStore builder;
  builder.Account(1, "Large", kCashAccount, 1000000).Account(2, "Small", kCashAccount, 0.0001);
  builder.Account(3, "Debt", kLiability, -1000000).Account(4, "Trifle", kLiability, -0.0001);
  const auto rows = OutcomeOf(NetWorthByAccount, builder, kReport).rows;
  EXPECT_THAT(rows, ::testing::Contains(ShownRow{0.0001, "Cash:Small"}));
  EXPECT_THAT(rows, ::testing::Contains(ShownRow{0.0001, "Liability:Trifle"}));
  for (const ShownRow& row : rows) {
    EXPECT_NE(row.label, "All Other Assets");
    EXPECT_NE(row.label, "All Other Liabilities");
  }
}

TEST(NetWorthByAccount, LeavesOutAccountsOfNothing) {
  SmallStore builder;
  builder.Account(1, "Empty", kCashAccount, 0).Account(2, "Wallet", kCashAccount, 1);
  EXPECT_THAT(OutcomeOf(NetWorthByAccount, builder, kReport).rows,
              ElementsAre(ShownRow{-1, "Assets"}, ShownRow{1, "Cash:Wallet"}, ShownRow{-1, ""},
                          ShownRow{1, "Total Assets"}));
}

TEST(NetWorthByAccount, TakesTheSideFromTheSignAndTheNameFromTheType) {
  SmallStore builder;
  builder.Account(1, "Overdrawn", kCheckingAccount, -5).Account(2, "In Credit", kCreditCard, 3);
  const auto [rows, total] = OutcomeOf(NetWorthByAccount, builder, kReport);
  EXPECT_EQ(rows[1], (ShownRow{3, "Credit Card:In Credit"}));
  EXPECT_EQ(rows[6], (ShownRow{5, "Checking Account:Overdrawn"}));
  EXPECT_EQ(total, Money(-2));
}

TEST(NetWorthByAccount, NamesATypeThatIsNotKnownSo) {
  SmallStore builder;
  builder.Account(1, "Odd", 77, 5);
  EXPECT_EQ(OutcomeOf(NetWorthByAccount, builder, kReport).rows[1], (ShownRow{5, "Unknown:Odd"}));
}

TEST(NetWorthByAccount, ListsByNameThenTypeThenNumberWithoutRegardToCase) {
  SmallStore builder;
  builder.Account(9, "beta", kCashAccount, 3)
      .Account(5, "Beta", kCheckingAccount, 2)
      .Account(7, "BETA", kCheckingAccount, 3)
      .Account(1, "Gamma", kCashAccount, 4)
      .Account(2, "alpha", kCashAccount, 5)
      .Account(3, "Zeta", kCashAccount, 6)
      .Account(4, "_ahead", kCashAccount, 7);
  std::vector<std::string> labels;
  for (const ShownRow& row : OutcomeOf(NetWorthByAccount, builder, kChart).rows) {
    labels.push_back(row.label);
  }
  EXPECT_THAT(labels, ElementsAre("_ahead", "alpha", "Beta", "BETA", "beta", "Gamma", "Zeta"));
}

TEST(NetWorthByAccount, ChartsDebtsBelowZeroAndNothingElse) {
  SmallStore builder;
  builder.Account(1, "Visa", kCreditCard, -35.5).Account(2, "Wallet", kCashAccount, 12.5);
  const auto [rows, total] = OutcomeOf(NetWorthByAccount, builder, kChart);
  EXPECT_THAT(rows, ElementsAre(ShownRow{12.5, "Wallet"}, ShownRow{-35.5, "Visa"}));
  EXPECT_EQ(total, Money(-23));
}

// The debts that stand by themselves lie below zero, the rest of them above it.
TEST(NetWorthByAccount, ChartsTheRestOfTheDebtsAboveZero) {
  SmallStore builder;
  builder.Account(1, "Loan", kLiability, -100)
      .Account(2, "Small", kLiability, -3)
      .Account(3, "Smaller", kLiability, -2);
  EXPECT_THAT(OutcomeOf(NetWorthByAccount, builder, kChart).rows,
              ElementsAre(ShownRow{-100, "Loan"}, ShownRow{5, "All Other Liabilities"}));
}

TEST(NetWorthByAccount, ChartsTheRestAloneWhereEveryAccountIsSmall) {
  SmallStore builder;
  for (std::int32_t number = 1; number <= 25; ++number) {
    builder.Account(number, "Asset", kCashAccount, 1);
    builder.Account(100 + number, "Debt", kLiability, -1);
  }
  EXPECT_THAT(OutcomeOf(NetWorthByAccount, builder, kChart).rows,
              ElementsAre(ShownRow{25, "All Other Assets"}, ShownRow{25, "All Other Liabilities"}));
}

// ---- the share

struct ShareCase {
  std::string name;
  double part;
  double rest;
  bool listed;
};

void PrintTo(const ShareCase& test, std::ostream* out) { *out << test.name; }

class TwentiethOfASide : public ::testing::TestWithParam<ShareCase> {
 protected:
  static SmallStore Store(double sign) {
    SmallStore builder;
    builder.Account(1, "Part", kCashAccount, sign * GetParam().part)
        .Account(2, "Rest", kCashAccount, sign * GetParam().rest);
    return builder;
  }

  static std::vector<ShownRow> Expected(double sign, const std::string& all_other) {
    const auto [name, part, rest, listed] = GetParam();
    return listed ? std::vector<ShownRow>{{sign * part, "Part"}, {sign * rest, "Rest"}}
                  : std::vector<ShownRow>{{sign * rest, "Rest"}, {part, all_other}};
  }
};

TEST_P(TwentiethOfASide, MustBeExceededByAnAsset) {
  SmallStore builder = Store(1);
  EXPECT_EQ(OutcomeOf(NetWorthByAccount, builder, kChart).rows, Expected(1, "All Other Assets"));
}

TEST_P(TwentiethOfASide, MustBeExceededByADebt) {
  SmallStore builder = Store(-1);
  EXPECT_EQ(OutcomeOf(NetWorthByAccount, builder, kChart).rows,
            Expected(-1, "All Other Liabilities"));
}

TEST_P(TwentiethOfASide, MustBeExceededInAListOfAssets) {
  SmallStore builder = Store(1);
  EXPECT_EQ(OutcomeOf(AssetsByAccount, builder, kChart).rows, Expected(1, "All Other Assets"));
}

INSTANTIATE_TEST_SUITE_P(Of, TwentiethOfASide,
                         ::testing::Values(ShareCase{"Exactly5Of100", 5, 95, false},
                                           ShareCase{"JustAbove5Of100", 5.0001, 95, true},
                                           ShareCase{"JustBelow5Of100", 4.9999, 95, false},
                                           ShareCase{"Exactly1Of20", 1, 19, false},
                                           ShareCase{"Exactly7CentsOf140", 0.07, 1.33, false}),
                         [](const auto& test) { return test.param.name; });

// ---- by group

TEST(NetWorthByGroup, PutsEveryTypeIntoItsGroupOfAssets) {
  SmallStore builder;
  builder.Account(1, "a", kCheckingAccount, 1)
      .Account(2, "b", kSavingsAccount, 2)
      .Account(3, "c", kTimeDeposit, 4)
      .Account(4, "d", kCashAccount, 10)
      .Account(5, "e", kCommonAsset, 20)
      .Account(6, "f", kCreditorsRights, 30)
      .Account(7, "g", kInvestmentAccount, 40)
      .Account(8, "h", kCreditCard, 100)
      .Account(9, "i", kLiability, 200)
      .Account(10, "j", kOtherAccount, 400);
  const auto [rows, total] = OutcomeOf(NetWorthByGroup, builder, kReport);
  EXPECT_THAT(
      rows,
      ElementsAre(ShownRow{-1, "Assets"}, ShownRow{7, "Bank Accounts"},
                  ShownRow{10, "Cash Accounts"}, ShownRow{20, "Common Asset Accounts"},
                  ShownRow{30, "Creditor's Rights Accounts"}, ShownRow{40, "Investment Accounts"},
                  ShownRow{700, "Other Assets"}, ShownRow{-1, ""}, ShownRow{807, "Total Assets"}));
  EXPECT_EQ(total, Money(807));
}

TEST(NetWorthByGroup, PutsEveryTypeIntoItsGroupOfDebts) {
  SmallStore builder;
  for (std::int32_t type = 0; type <= 9; ++type) {
    builder.Account(type + 1, "x", type, -1);
  }
  const auto [rows, total] = OutcomeOf(NetWorthByGroup, builder, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Liabilities"},
                                ShownRow{1, "Credit Card Accounts"},
                                ShownRow{1, "Liability Accounts"}, ShownRow{8, "Other Liabilities"},
                                ShownRow{-1, ""}, ShownRow{10, "Total Liabilities"}));
  EXPECT_EQ(total, Money(-10));
}

TEST(NetWorthByGroup, PutsACardInCreditUnderOtherAssetsAlone) {
  SmallStore builder;
  builder.Account(1, "Card", kCreditCard, 50);
  EXPECT_THAT(OutcomeOf(NetWorthByGroup, builder, kReport).rows,
              ElementsAre(ShownRow{-1, "Assets"}, ShownRow{50, "Other Assets"}, ShownRow{-1, ""},
                          ShownRow{50, "Total Assets"}));
}

TEST(NetWorthByGroup, DoesNotNetWithinAGroup) {
  SmallStore builder;
  builder.Account(1, "a", kCheckingAccount, 10).Account(2, "b", kSavingsAccount, -4);
  EXPECT_THAT(OutcomeOf(NetWorthByGroup, builder, kReport).rows,
              ElementsAre(ShownRow{-1, "Assets"}, ShownRow{10, "Bank Accounts"}, ShownRow{-1, ""},
                          ShownRow{10, "Total Assets"}, ShownRow{-1, ""},
                          ShownRow{-1, "Liabilities"}, ShownRow{4, "Other Liabilities"},
                          ShownRow{-1, ""}, ShownRow{4, "Total Liabilities"}));
}

// A type of no group of assets has its total alone.
TEST(NetWorthByGroup, PutsAHeadingOverATotalWithoutGroups) {
  SmallStore builder;
  builder.Account(1, "Odd", 77, 5);
  EXPECT_THAT(OutcomeOf(NetWorthByGroup, builder, kReport).rows,
              ElementsAre(ShownRow{-1, "Assets"}, ShownRow{-1, ""}, ShownRow{5, "Total Assets"}));
}

// A store whose groups have all gone since their totals were taken.
class StoreWithoutGroups : public ForwardingDatabase {
 public:
  using Database::OpenRecordset;
  using ForwardingDatabase::ForwardingDatabase;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type) override {
    return ForwardingDatabase::OpenRecordset(
        source == "Account" ? source : "SELECT * FROM Account WHERE AccountType= 99", type);
  }
  Database& Unobserved() override { return Store(); }
};

// Unlike the heading over a group, that over a total of debts has no blank line before it.
TEST(NetWorthByGroup, PutsNoBlankLineBeforeAHeadingWithoutGroups) {
  SmallStore builder;
  builder.Account(1, "Wallet", kCashAccount, 12.5).Account(2, "Visa", kCreditCard, -35.5);
  const auto store = builder.Open();
  StoreWithoutGroups lacking(*store);
  EXPECT_THAT(OutcomeOf(NetWorthByGroup, lacking, kReport).rows,
              ElementsAre(ShownRow{-1, "Assets"}, ShownRow{-1, ""}, ShownRow{12.5, "Total Assets"},
                          ShownRow{-1, "Liabilities"}, ShownRow{-1, ""},
                          ShownRow{35.5, "Total Liabilities"}));
  EXPECT_THAT(OutcomeOf(NetWorthByGroup, lacking, kChart).rows,
              ElementsAre(ShownRow{-1, ""}, ShownRow{12.5, "Total Assets"}, ShownRow{-1, ""},
                          ShownRow{35.5, "Total Liabilities"}));
}

TEST(NetWorthByGroup, KeepsBlankLinesAndTotalsInAChart) {
  SmallStore builder;
  builder.Account(1, "Wallet", kCashAccount, 12.5).Account(2, "Visa", kCreditCard, -35.5);
  const auto [rows, total] = OutcomeOf(NetWorthByGroup, builder, kChart);
  EXPECT_THAT(rows,
              ElementsAre(ShownRow{12.5, "Cash Accounts"}, ShownRow{-1, ""},
                          ShownRow{12.5, "Total Assets"}, ShownRow{-35.5, "Credit Card Accounts"},
                          ShownRow{-1, ""}, ShownRow{35.5, "Total Liabilities"}));
  EXPECT_EQ(total, Money(-23));
}

TEST(NetWorthByGroup, FoldsNothingInAChart) {
  SmallStore builder;
  builder.Account(1, "Wallet", kCashAccount, 0.01).Account(2, "Bank", kCheckingAccount, 1000);
  EXPECT_THAT(OutcomeOf(NetWorthByGroup, builder, kChart).rows,
              ElementsAre(ShownRow{1000, "Bank Accounts"}, ShownRow{0.01, "Cash Accounts"},
                          ShownRow{-1, ""}, ShownRow{1000.01, "Total Assets"}));
}

// ---- one side

TEST(AssetsByAccount, ListsAssetsWithoutHeadingsAndTotals) {
  SmallStore builder;
  builder.Account(1, "Visa", kCreditCard, -35.5)
      .Account(2, "Wallet", kCashAccount, 12.5)
      .Account(3, "Bank", kCheckingAccount, 0.5);
  const auto [rows, total] = OutcomeOf(AssetsByAccount, builder, kReport);
  EXPECT_THAT(rows,
              ElementsAre(ShownRow{0.5, "Checking Account:Bank"}, ShownRow{12.5, "Cash:Wallet"}));
  EXPECT_EQ(total, Money(13));
}

TEST(AssetsByAccount, LabelsByNameAloneInAChart) {
  SmallStore builder;
  builder.Account(2, "Wallet", kCashAccount, 12.5);
  EXPECT_THAT(OutcomeOf(AssetsByAccount, builder, kChart).rows,
              ElementsAre(ShownRow{12.5, "Wallet"}));
}

TEST(AssetsByAccount, EndsWithTheRest) {
  SmallStore builder;
  builder.Account(1, "Bank", kCheckingAccount, 96)
      .Account(2, "Cash", kCashAccount, 1)
      .Account(3, "Coins", kCashAccount, 3);
  const auto [rows, total] = OutcomeOf(AssetsByAccount, builder, kChart);
  EXPECT_THAT(rows, ElementsAre(ShownRow{96, "Bank"}, ShownRow{4, "All Other Assets"}));
  EXPECT_EQ(total, Money(100));
}

TEST(LiabilitiesByAccount, ListsDebtsAboveZeroForBothTargets) {
  SmallStore builder;
  builder.Account(1, "Visa", kCreditCard, -35.5).Account(2, "Wallet", kCashAccount, 12.5);
  const auto store = builder.Open();
  const auto [rows, total] = OutcomeOf(LiabilitiesByAccount, *store, kReport);
  EXPECT_THAT(rows, ElementsAre(ShownRow{35.5, "Credit Card:Visa"}));
  EXPECT_EQ(total, Money(35.5));
  EXPECT_THAT(OutcomeOf(LiabilitiesByAccount, *store, kChart).rows,
              ElementsAre(ShownRow{35.5, "Visa"}));
}

TEST(LiabilitiesByAccount, EndsWithTheRest) {
  SmallStore builder;
  builder.Account(1, "Loan", kLiability, -96)
      .Account(2, "Friend", kLiability, -1)
      .Account(3, "Shop", kLiability, -3);
  EXPECT_THAT(OutcomeOf(LiabilitiesByAccount, builder, kChart).rows,
              ElementsAre(ShownRow{96, "Loan"}, ShownRow{4, "All Other Liabilities"}));
}

// ---- all of them

struct RoutineCase {
  std::string name;
  Routine routine;
  std::vector<std::string> sources;
};

void PrintTo(const RoutineCase& test, std::ostream* out) { *out << test.name; }

const std::string kByName = "SELECT * FROM Account ORDER BY AccountName,AccountType,AccountNumber";

class NetWorthRoutines : public ::testing::TestWithParam<RoutineCase> {
 protected:
  static SmallStore BothSides() {
    SmallStore builder;
    builder.Account(1, "Wallet", kCashAccount, 12.5)
        .Account(2, "Visa", kCreditCard, -35.5)
        .Transaction({.total = 1, .account = 1})
        .Transaction({.total = 1, .account = 2});
    return builder;
  }
};

TEST_P(NetWorthRoutines, OpenAndCloseTheseInThisOrder) {
  const auto store = BothSides().Open();
  for (const auto target : {kReport, kChart}) {
    KeepingStore keeping(*store);
    (void)OutcomeOf(GetParam().routine, *keeping, target);
    EXPECT_EQ(keeping.events, OneAfterAnother(GetParam().sources));
  }
}

TEST_P(NetWorthRoutines, FailWhereThereIsNoAccount) {
  const auto store = SmallStore().Open();
  for (const auto target : {kReport, kChart}) {
    KeepingStore keeping(*store);
    EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange,
                       [&] { (void)OutcomeOf(GetParam().routine, *keeping, target); }));
    EXPECT_EQ(keeping.events, OneAfterAnother(GetParam().sources));
  }
}

TEST_P(NetWorthRoutines, FailWhereEveryBalanceIsNothing) {
  const auto store =
      SmallStore().Account(1, "Wallet", kCashAccount, 0).Account(2, "Visa", kCreditCard, 0).Open();
  for (const auto target : {kReport, kChart}) {
    EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange,
                       [&] { (void)OutcomeOf(GetParam().routine, *store, target); }));
  }
}

TEST_P(NetWorthRoutines, CloseWhatIsOpenWhereABalanceFails) {
  const auto store = BothSides().Execute("UPDATE TransactionRecord SET Total = 'much'").Open();
  for (const auto target : {kReport, kChart}) {
    KeepingStore keeping(*store);
    EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch,
                       [&] { (void)OutcomeOf(GetParam().routine, *keeping, target); }));
    ASSERT_EQ(keeping.events.size() % 2, 0U);
    for (std::size_t i = 0; i < keeping.events.size(); i += 2) {
      EXPECT_EQ(keeping.events[i].substr(5), keeping.events[i + 1].substr(6));
      EXPECT_EQ(keeping.events[i + 1].substr(0, 6), "close ");
    }
  }
}

TEST_P(NetWorthRoutines, LeaveNothingOpenWhereverTheStoreFails) {
  const auto store = BothSides().Open();
  FailurePlan plan;
  FailingDatabase failing(*store, plan);
  (void)OutcomeOf(GetParam().routine, failing, kReport);
  const std::int64_t operations = plan.Operations();
  ASSERT_GT(operations, 20);
  for (std::int64_t n = 1; n <= operations; ++n) {
    FailurePlan failing_plan;
    failing_plan.FailAt(n, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    FailingDatabase once(*store, failing_plan);
    const std::int32_t failure =
        ResumeNext([&] { (void)OutcomeOf(GetParam().routine, once, kReport); });
    // Where only a balance within a total fails, the total goes on.
    EXPECT_TRUE(failure == 0 || failure == static_cast<std::int32_t>(FailureNumber::kStoreUnusable))
        << n << ": " << failure;
    EXPECT_EQ(once.OpenRecordsets(), 0) << n;
  }
}

TEST_P(NetWorthRoutines, CountAllOfTheDay) {
  const auto store = SmallStore()
                         .Account(1, "Wallet", kCashAccount, 10)
                         .Account(2, "Loan", kLiability, -10)
                         .Transaction({.type = kExpense, .date = kDay, .total = 2, .account = 1})
                         .Transaction({.type = kExpense, .date = kDay, .total = 2, .account = 2})
                         .Transaction({.date = Date{kDay.days + 1}, .total = 1000, .account = 1})
                         .Transaction({.date = Date{kDay.days + 1}, .total = 1000, .account = 2})
                         .Open();
  double largest = 0;
  for (const ShownRow& row : OutcomeOf(GetParam().routine, *store, kReport).rows) {
    largest = std::max(largest, row.amount);
  }
  EXPECT_EQ(largest, GetParam().routine == AssetsByAccount ? 8 : 12);
}

INSTANTIATE_TEST_SUITE_P(
    All, NetWorthRoutines,
    ::testing::Values(
        RoutineCase{"ByAccount", NetWorthByAccount, {"Account", kByName, "Account", kByName}},
        RoutineCase{
            "ByGroup",
            NetWorthByGroup,
            {"Account",
             "SELECT * FROM Account WHERE AccountType= 0 OR AccountType= 1 OR AccountType= 2",
             "SELECT * FROM Account WHERE AccountType= 3",
             "SELECT * FROM Account WHERE AccountType= 5",
             "SELECT * FROM Account WHERE AccountType= 7",
             "SELECT * FROM Account WHERE AccountType= 8",
             "SELECT * FROM Account WHERE AccountType= 4 OR AccountType= 6 OR AccountType= 9",
             "Account", "SELECT * FROM Account WHERE AccountType= 4",
             "SELECT * FROM Account WHERE AccountType= 6",
             "SELECT * FROM Account WHERE AccountType<> 4 AND AccountType<> 6"}},
        RoutineCase{"AssetsByAccount", AssetsByAccount, {"Account", kByName}},
        RoutineCase{"LiabilitiesByAccount", LiabilitiesByAccount, {"Account", kByName}}),
    [](const auto& test) { return test.param.name; });

// ---- what a failed routine leaves

TEST(NetWorthByAccount, LeavesTheRowsBeforeAFailure) {
  const auto store = SmallStore()
                         .Account(1, "First", kCashAccount, 5)
                         .Account(2, "Second", kCashAccount, 6)
                         .Transaction({.account = 2})
                         .Execute("UPDATE TransactionRecord SET Total = 'much'")
                         .Open();
  AmountRows rows;
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch,
                     [&] { (void)NetWorthByAccount(*store, kDay, rows, kReport); }));
  EXPECT_THAT(RowsIn(rows),
              ElementsAre(ShownRow{-1, "Assets"}, ShownRow{5, "Cash:First"}, ShownRow{0, ""}));
}

// A balance that fails within the total alone leaves a rest in a report too.
class BalanceFailingOnce : public ::testing::TestWithParam<double> {};

TEST_P(BalanceFailingOnce, LeavesARestInAReport) {
  const double sign = GetParam();
  const auto store = SmallStore()
                         .Account(1, "First", kLiability, sign * 5)
                         .Account(2, "Second", kLiability, sign * 4)
                         .Open();
  // The total of the side asks for the second balance first of all.
  bool found = false;
  FailurePlan counting;
  FailingDatabase counted(*store, counting);
  (void)OutcomeOf(NetWorthByAccount, counted, kReport);
  for (std::int64_t n = 1; n <= counting.Operations() && !found; ++n) {
    FailurePlan plan;
    plan.FailAt(n, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    FailingDatabase failing(*store, plan);
    Outcome outcome;
    if (ResumeNext([&] { outcome = OutcomeOf(NetWorthByAccount, failing, kReport); }) != 0 ||
        outcome.total != Money(sign * 10)) {
      continue;
    }
    found = true;
    if (sign > 0) {
      EXPECT_THAT(outcome.rows,
                  ElementsAre(ShownRow{-1, "Assets"}, ShownRow{5, "Liability:First"},
                              ShownRow{4, "Liability:Second"}, ShownRow{1, "All Other Assets"},
                              ShownRow{-1, ""}, ShownRow{10, "Total Assets"}));
    } else {
      // The heading of the debts comes a second time, whatever stands before.
      EXPECT_THAT(
          outcome.rows,
          ElementsAre(ShownRow{-1, ""}, ShownRow{-1, "Liabilities"}, ShownRow{5, "Liability:First"},
                      ShownRow{4, "Liability:Second"}, ShownRow{-1, ""},
                      ShownRow{-1, "Liabilities"}, ShownRow{1, "All Other Liabilities"},
                      ShownRow{-1, ""}, ShownRow{10, "Total Liabilities"}));
    }
  }
  EXPECT_TRUE(found);
}

INSTANTIATE_TEST_SUITE_P(OfEachSide, BalanceFailingOnce, ::testing::Values(1.0, -1.0));

}  // namespace
}  // namespace vetlo
