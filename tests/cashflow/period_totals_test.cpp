#include "vetlo/cashflow/period_totals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cashflow/cash_household.h"
#include "tests/support/drawing.h"
#include "tests/support/raises.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

// ---- the texts

TEST(PeriodTotalText, OfExpensesTakesOrdinaryRecordsOfTypeEleven) {
  EXPECT_EQ(OrdinaryText(Flow::kOutgoing, kFrom, kTo),
            "SELECT * FROM TransactionRecord WHERE TransactionType= 11 AND "
            "TransactionDate>=#2026-01-01# AND TransactionDate<=#2026-01-31# AND "
            "(TransactionRecordType= 0 OR TransactionRecordType= 4) AND "
            "(NOT ISNULL(AccountNumber))");
}

class PeriodTotalEvents : public ::testing::TestWithParam<Flow> {};

TEST_P(PeriodTotalEvents, AreTheTablesAroundTheOrdinaryRecordsAndThenTheInvestments) {
  const auto store = Accounts().Open();
  KeepingStore keeping(*store);
  TotalOfFlow(*keeping, GetParam(), kFrom, kTo);
  EXPECT_THAT(keeping.events, ElementsAreArray(EventsOfPeriodTotal(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(InBothDirections, PeriodTotalEvents,
                         ::testing::Values(Flow::kIncoming, Flow::kOutgoing));

// ---- what counts

struct Totals {
  double income = 0;
  double expenses = 0;
};

struct CountCase {
  std::string name;
  TestTransaction record;
  Totals expected;
};

void PrintTo(const CountCase& a_case, std::ostream* out) { *out << a_case.name; }

class CountedRecord : public ::testing::TestWithParam<CountCase> {};

TEST_P(CountedRecord, ReachesTheTotalsOfItsDirection) {
  SmallStore builder = Accounts();
  AddCategory(builder, 1, "Salary", kIncomeCategory);
  AddCategory(builder, 2, "Food", kExpenseCategory);
  AddCategory(builder, 3, "Moved", kNeitherCategory);
  AddCategory(builder, 9, "Kept out", kExpenseCategory, 9);
  AddCategory(builder, 10, "Marked otherwise", kExpenseCategory, 8);
  const auto store = builder.Transaction(GetParam().record).Open();
  EXPECT_EQ(TotalIncome(*store, kFrom, kTo), Money(GetParam().expected.income));
  EXPECT_EQ(TotalExpenses(*store, kFrom, kTo), Money(GetParam().expected.expenses));
}

TestTransaction OnDay(TestTransaction record, Date day) {
  record.date = day;
  return record;
}
TestTransaction OfRecordType(TestTransaction record, std::int32_t type) {
  record.record_type = type;
  return record;
}
TestTransaction At(TestTransaction record, const Variant& account) {
  record.account = account;
  return record;
}
TestTransaction Unfunded(TestTransaction record) {
  record.other_account = Null{};
  return record;
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, CountedRecord,
    ::testing::Values(
        CountCase{"Income", Booked(kIncome, 7), {7, 0}},
        CountCase{"Expense", Booked(kExpense, 7), {0, 7}},
        CountCase{"AnAmountBelowZeroAsItStands", Booked(kExpense, -7), {0, -7}},
        CountCase{"IncomeOfAnExpenseCategory", Booked(kIncome, 7, 2), {7, 0}},
        CountCase{"ExpenseOfAnIncomeCategory", Booked(kExpense, 7, 1), {0, 7}},
        CountCase{"ExpenseOfACategoryOfNeither", Booked(kExpense, 7, 3), {0, 7}},
        CountCase{"ExpenseThatItsCategoryKeepsOut", Booked(kExpense, 7, 9), {0, 0}},
        CountCase{"IncomeThatItsCategoryKeepsOut", Booked(kIncome, 7, 9), {0, 0}},
        CountCase{"ExpenseOfACategoryMarkedOtherwise", Booked(kExpense, 7, 10), {0, 7}},
        CountCase{"OnTheFirstDay", OnDay(Booked(kExpense, 7), kFrom), {0, 7}},
        CountCase{"OnTheLastDay", OnDay(Booked(kExpense, 7), kTo), {0, 7}},
        CountCase{"BeforeTheFirstDay", OnDay(Booked(kExpense, 7), Day(2025, 12, 31)), {0, 0}},
        CountCase{"AfterTheLastDay", OnDay(Booked(kIncome, 7), Day(2026, 2, 1)), {0, 0}},
        CountCase{"Pattern", OfRecordType(Booked(kExpense, 7), kScheduledPattern), {0, 0}},
        CountCase{"Void", OfRecordType(Booked(kExpense, 7), kVoidRecord), {0, 0}},
        CountCase{"HeadOfASplit", OfRecordType(Booked(kExpense, 7), kSplitHead), {0, 0}},
        CountCase{"LineOfASplit", OfRecordType(Booked(kExpense, 7), kSplitLine), {0, 7}},
        CountCase{"PatternOfAnInvestment",
                  OfRecordType(Funded(kHoldingCost, 7), kScheduledPattern),
                  {0, 0}},
        CountCase{
            "LineOfASplitOfAnInvestment", OfRecordType(Funded(kDividend, 7), kSplitLine), {7, 0}},
        CountCase{"AtAnAccountWithoutCashFlow", At(Booked(kExpense, 7), kHouse), {0, 0}},
        CountCase{"AtNoAccount", At(Booked(kExpense, 7), Null{}), {0, 0}},
        CountCase{"InvestmentAtNoAccount", At(Funded(kDividend, 7), Null{}), {0, 0}},
        CountCase{"Dividend", Funded(kDividend, 7), {7, 0}},
        CountCase{"Interest", Funded(kHoldingInterest, 7), {7, 0}},
        CountCase{"CapitalGain", Funded(kCapitalGain, 7), {7, 0}},
        CountCase{"Cost", Funded(kHoldingCost, 7), {0, 7}},
        CountCase{"CostThatItsCategoryKeepsOut", Funded(kHoldingCost, 7, 9), {0, 7}},
        CountCase{"DividendOfAnUnknownCategory", Funded(kDividend, 7, 77), {7, 0}},
        CountCase{"CostAtAnUnknownAccount", At(Funded(kHoldingCost, 7), 77), {0, 7}},
        CountCase{"CostWithoutAFund", Unfunded(Funded(kHoldingCost, 7)), {0, 0}},
        CountCase{"DividendWithoutAReceiver", Unfunded(Funded(kDividend, 7)), {0, 0}},
        CountCase{"Purchase", Funded(kBuy, 7), {0, 0}}, CountCase{"Sale", Funded(kSell, 7), {0, 0}},
        CountCase{"UnitsReceived", Funded(kUnitsReceived, 7), {0, 0}},
        CountCase{"TransferOut", Funded(kTransferOut, 7), {0, 0}},
        CountCase{"TransferIn", Funded(kTransferIn, 7), {0, 0}},
        CountCase{"CorrectionUpwards", Booked(kCorrectionUpwards, 7), {0, 0}}),
    [](const auto& named) { return named.param.name; });

TEST(PeriodTotal, IsTheSumOfOrdinaryRecordsAndInvestments) {
  const auto store = Accounts()
                         .Transaction(Booked(kExpense, 0.0001))
                         .Transaction(Booked(kExpense, 10))
                         .Transaction(Funded(kHoldingCost, 2.5))
                         .Open();
  EXPECT_EQ(TotalExpenses(*store, kFrom, kTo), Money(12.5001));
}

TEST(PeriodTotal, IsNothingWithoutARecord) {
  const auto store = SmallStore().Open();
  EXPECT_EQ(TotalIncome(*store, kFrom, kTo), Money(0));
  EXPECT_EQ(TotalExpenses(*store, kFrom, kTo), Money(0));
}

TEST(PeriodTotal, IsNothingWhereTheRangeEndsBeforeItBegins) {
  const auto store = Accounts().Transaction(Booked(kExpense, 10)).Open();
  EXPECT_EQ(TotalExpenses(*store, kTo, kFrom), Money(0));
}

TEST(PeriodTotal, IsWhatTheComponentAnswers) {
  const auto store =
      Accounts().Transaction(Booked(kExpense, 10)).Transaction(Booked(kIncome, 3)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.component.TotalExpenses(*store, kFrom, kTo), Money(10));
  EXPECT_EQ(drawing.component.TotalIncome(*store, kFrom, kTo), Money(3));
}

// ---- failures

struct FailureCase {
  std::string name;
  TestTransaction record;
};

void PrintTo(const FailureCase& a_case, std::ostream* out) { *out << a_case.name; }

class RecordThatPointsNowhere : public ::testing::TestWithParam<FailureCase> {};

TEST_P(RecordThatPointsNowhere, FailsToTheCallerWithoutClosing) {
  const auto store = Accounts().Transaction(GetParam().record).Open();
  KeepingStore keeping(*store);
  EXPECT_TRUE(
      Raises(FailureNumber::kNoCurrentRecord, [&] { TotalExpenses(*keeping, kFrom, kTo); }));
  EXPECT_THAT(keeping.events,
              ElementsAre("open Account", "open Category", "open " + OrdinaryIn(Flow::kOutgoing)));
}

INSTANTIATE_TEST_SUITE_P(ByAccountOrCategory, RecordThatPointsNowhere,
                         ::testing::Values(FailureCase{"Account", At(Booked(kExpense, 7), 77)},
                                           FailureCase{"Category", Booked(kExpense, 7, 77)}),
                         [](const auto& named) { return named.param.name; });

TEST(PeriodTotal, LooksUpNoCategoryAtAnAccountWithoutCashFlow) {
  const auto store = Accounts().Transaction(At(Booked(kExpense, 7, 77), kHouse)).Open();
  EXPECT_EQ(TotalExpenses(*store, kFrom, kTo), Money(0));
}

TEST(PeriodTotal, FailsForADateThatThereIsNot) {
  const auto store = Accounts().Open();
  EXPECT_TRUE(
      Raises(FailureNumber::kInvalidCall, [&] { TotalIncome(*store, Date{-700000}, kTo); }));
}

TEST(PeriodTotal, FailsPastTheLargestAmount) {
  SmallStore builder = Accounts();
  builder.Transaction(Booked(kExpense, 1)).Transaction(Booked(kExpense, 1));
  builder.Execute("UPDATE TransactionRecord SET Total = 9000000000000000000");
  const auto store = builder.Open();
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { TotalExpenses(*store, kFrom, kTo); }));
}

}  // namespace
}  // namespace vetlo
