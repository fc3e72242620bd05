#include "vetlo/balance/debts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/drawing.h"
#include "tests/support/january_report.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/services/signed_amounts.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

const Date kFrom = Day(2026, 1, 1);
const Date kTo = Day(2026, 1, 31);

constexpr std::int32_t kBank = 1;
constexpr std::int32_t kLoan = 6;
constexpr std::int32_t kLent = 7;
constexpr std::int32_t kLentToo = 17;
constexpr std::int32_t kBroker = 8;

SmallStore Accounts() {
  SmallStore store;
  store.Account(kBank, "Bank", kCheckingAccount)
      .Account(kLoan, "Loan", kLiability)
      .Account(kLent, "Lent", kCreditorsRights)
      .Account(kLentToo, "Lent too", kCreditorsRights)
      .Account(kBroker, "Broker", kInvestmentAccount);
  return store;
}

// Numbered from 1.
SmallStore WithPayees(SmallStore store, const std::vector<std::string>& names) {
  std::int32_t number = 0;
  for (const std::string& name : names) {
    store.Insert("Payee", {{"PayeeNumber", ++number}, {"PayeeName", name}});
  }
  return store;
}

TestTransaction Moved(std::int32_t type, double total, std::int32_t other,
                      const Variant& payee = Null{}) {
  return {.type = type, .total = total, .account = kBank, .other_account = other, .payee = payee};
}

// What a routine has made of these tests' month.
struct Shown {
  double total = 0;
  std::vector<ShownRow> rows;
};

using Routine = Currency (*)(Database&, AmountRows&, ChartOrReport);

template <Currency (*routine)(Database&, Date, AmountRows&, ChartOrReport)>
Currency AtTheEndOfTheMonth(Database& store, AmountRows& rows, ChartOrReport target) {
  return routine(store, kTo, rows, target);
}

Currency WithinTheMonth(Database& store, AmountRows& rows, ChartOrReport target) {
  return NetByPayee(store, kFrom, kTo, rows, target);
}

constexpr Routine kDebtors = AtTheEndOfTheMonth<DebtorsByPayee>;
constexpr Routine kCreditors = AtTheEndOfTheMonth<CreditorsByPayee>;
constexpr Routine kOverdrafts = AtTheEndOfTheMonth<OverdraftsByCreditCard>;
constexpr Routine kNet = WithinTheMonth;

Shown ShownBy(Database& store, Routine routine, ChartOrReport target = ChartOrReport::kReport) {
  AmountRows rows;
  const Currency total = routine(store, rows, target);
  return {ToDouble(total), RowsIn(rows)};
}

// What a routine without a row gives, too.
double TotalOrNothing(Database& store, Routine routine) {
  double total = 0;
  ResumeNext([&] { total = ShownBy(store, routine).total; });
  return total;
}

// ---- signs

// The account that a transfer is entered on and the type of the one at its other end, and the sign
// that 100 gets where the transfer goes out ("+-": kept) and where it comes in.
struct SignCase {
  std::int32_t account_type = 0;
  std::int32_t other_type = 0;  // kNoOther: Null
  std::string debt;
  std::string credit;
  std::string payee;
  std::string cash;
};

constexpr std::int32_t kNoOther = -1;
constexpr std::int32_t kNoSuchType = 42;

void PrintTo(const SignCase& a_case, std::ostream* out) {
  *out << "type " << a_case.account_type << ", other end " << a_case.other_type;
}

std::vector<SignCase> SignTable() {
  std::vector<SignCase> cases;
  for (const std::int32_t other :
       {kNoOther, kLiability, kCreditorsRights, kCheckingAccount, kInvestmentAccount}) {
    for (const std::int32_t ordinary : {kCheckingAccount, kSavingsAccount, kTimeDeposit,
                                        kCashAccount, kCreditCard, kOtherAccount}) {
      cases.push_back({ordinary, other, "+-", "-+", "-+", "-+"});
    }
    cases.push_back({kLiability, other, "-+", "+-", "+-", "-+"});
    // What is owed to the user is ordinary where the user's own debts are asked for.
    cases.push_back({kCreditorsRights, other, "-+", "-+", "+-", "-+"});
    // Neither flag: nothing is turned.
    cases.push_back({kCommonAsset, other, "++", "++", "++", "++"});
    cases.push_back({kNoSuchType, other, "++", "++", "++", "++"});
  }
  // An account that holds items goes by the money at the other end, which comes in where the
  // transfer goes out.
  cases.push_back({kInvestmentAccount, kNoOther, "-+", "+-", "+-", "+-"});
  cases.push_back({kInvestmentAccount, kCheckingAccount, "-+", "+-", "+-", "+-"});
  cases.push_back({kInvestmentAccount, kInvestmentAccount, "-+", "+-", "+-", "+-"});
  cases.push_back({kInvestmentAccount, kLiability, "+-", "-+", "-+", "+-"});
  cases.push_back({kInvestmentAccount, kCreditorsRights, "+-", "+-", "-+", "+-"});
  return cases;
}

// One transfer of 100 between accounts of the case's types.
std::unique_ptr<Database> StoreOf(const SignCase& the_case, std::int32_t type) {
  constexpr std::int32_t kOwn = 101;
  constexpr std::int32_t kOther = 102;
  SmallStore store;
  store.Account(kOwn, "Own", the_case.account_type);
  TestTransaction transfer{.type = type, .total = 100, .account = kOwn};
  if (the_case.other_type != kNoOther) {
    store.Account(kOther, "Other", the_case.other_type);
    transfer.other_account = kOther;
  }
  return store.Transaction(transfer).Open();
}

double Sign(const std::string& signs, std::int32_t type) {
  return signs.at(type == kTransferOut ? 0 : 1) == '+' ? 1 : -1;
}

double SignedBy(const SignRule& rule, const SignCase& the_case, std::int32_t type) {
  const auto store = StoreOf(the_case, type);
  ScopedRecordset account(*store, "Account");
  account->SetIndex(kPrimaryIndex);
  ScopedRecordset record(*store, "TransactionRecord");
  return ToDouble(SignedAmount(*record, *account, rule));
}

class SignOfATransfer
    : public ::testing::TestWithParam<std::tuple<SignCase, std::int32_t /* type */>> {
 protected:
  [[nodiscard]] const SignCase& Case() const { return std::get<0>(GetParam()); }
  [[nodiscard]] std::int32_t Type() const { return std::get<1>(GetParam()); }
};

TEST_P(SignOfATransfer, AmongDebts) {
  EXPECT_EQ(SignedBy(kDebtRule, Case(), Type()), 100 * Sign(Case().debt, Type()));
}

TEST_P(SignOfATransfer, AmongCredits) {
  EXPECT_EQ(SignedBy(kCreditRule, Case(), Type()), 100 * Sign(Case().credit, Type()));
}

TEST_P(SignOfATransfer, OfAPayee) {
  EXPECT_EQ(SignedBy(kPayeeRule, Case(), Type()), 100 * Sign(Case().payee, Type()));
}

TEST_P(SignOfATransfer, OfCash) {
  EXPECT_EQ(SignedBy(kCashRule, Case(), Type()), 100 * Sign(Case().cash, Type()));
}

// It is selected once for each of its ends that is such an account.
int EndsOfType(const SignCase& the_case, std::int32_t type) {
  return (the_case.account_type == type ? 1 : 0) + (the_case.other_type == type ? 1 : 0);
}

TEST_P(SignOfATransfer, CountsInTheTotalOfDebtorsOnceForEachEnd) {
  const auto store = StoreOf(Case(), Type());
  EXPECT_EQ(TotalOrNothing(*store, kDebtors),
            100 * Sign(Case().debt, Type()) * EndsOfType(Case(), kCreditorsRights));
}

TEST_P(SignOfATransfer, CountsInTheTotalOfCreditorsOnceForEachEnd) {
  const auto store = StoreOf(Case(), Type());
  EXPECT_EQ(TotalOrNothing(*store, kCreditors),
            100 * Sign(Case().credit, Type()) * EndsOfType(Case(), kLiability));
}

TEST_P(SignOfATransfer, CountsNegatedInTheNetOfPayees) {
  const auto store = StoreOf(Case(), Type());
  EXPECT_EQ(ShownBy(*store, kNet).total, -100 * Sign(Case().payee, Type()));
}

INSTANTIATE_TEST_SUITE_P(InEveryCell, SignOfATransfer,
                         ::testing::Combine(::testing::ValuesIn(SignTable()),
                                            ::testing::Values(kTransferOut, kTransferIn)));

// ---- debtors and creditors

TEST(Debtors, BetweenTwoAccountsOfTheTypeCountTwice) {
  SmallStore builder = WithPayees(Accounts(), {"Ann"});
  builder.Transaction(
      {.type = kTransferOut, .total = 30, .account = kLent, .other_account = kLentToo, .payee = 1});
  const auto store = builder.Open();
  const Shown shown = ShownBy(*store, kDebtors);
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{-60, "Ann"}));
  EXPECT_EQ(shown.total, -60);
}

TEST(Debtors, ATransferFromTheBankCountsOnceByTheBank) {
  const auto store =
      WithPayees(Accounts(), {"Ann"}).Transaction(Moved(kTransferOut, 60, kLent, 1)).Open();
  const Shown shown = ShownBy(*store, kDebtors);
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{60, "Ann"}));
  EXPECT_EQ(shown.total, 60);
}

TEST(Debtors, AreListedByNameNegativeOnesToo) {
  const auto store = WithPayees(Accounts(), {"Zoe", "Ann"})
                         .Transaction(Moved(kTransferOut, 60, kLent, 1))
                         .Transaction(Moved(kTransferIn, 15, kLent, 2))
                         .Open();
  EXPECT_THAT(ShownBy(*store, kDebtors).rows,
              ElementsAre(ShownRow{-15, "Ann"}, ShownRow{60, "Zoe"}));
}

TEST(Debtors, AtExactlyNothingHaveNoRow) {
  const auto store = WithPayees(Accounts(), {"Ann", "Ben"})
                         .Transaction(Moved(kTransferOut, 60, kLent, 1))
                         .Transaction(Moved(kTransferIn, 60, kLent, 1))
                         .Transaction(Moved(kTransferOut, 1, kLent, 2))
                         .Open();
  EXPECT_THAT(ShownBy(*store, kDebtors).rows, ElementsAre(ShownRow{1, "Ben"}));
}

struct Opening {
  std::string name;
  Routine routine;
  std::int32_t type;
  double opening;
  double shown;
  std::string label;
};

void PrintTo(const Opening& a_case, std::ostream* out) { *out << a_case.name; }

class OpeningBalanceOfADebt : public ::testing::TestWithParam<Opening> {};

TEST_P(OpeningBalanceOfADebt, StandsUnassignedBehindABlankRowInAReport) {
  const auto store = SmallStore().Account(1, "It", GetParam().type, GetParam().opening).Open();
  const Shown shown = ShownBy(*store, GetParam().routine);
  EXPECT_THAT(shown.rows,
              ElementsAre(ShownRow{0, ""}, ShownRow{GetParam().shown, GetParam().label}));
  EXPECT_EQ(shown.total, GetParam().shown);
}

TEST_P(OpeningBalanceOfADebt, StandsUnassignedAloneInAChart) {
  const auto store = SmallStore().Account(1, "It", GetParam().type, GetParam().opening).Open();
  const Shown shown = ShownBy(*store, GetParam().routine, ChartOrReport::kChart);
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{GetParam().shown, GetParam().label}));
  EXPECT_EQ(shown.total, GetParam().shown);
}

TEST_P(OpeningBalanceOfADebt, IsNoPayees) {
  const auto store = WithPayees(SmallStore(), {"Ann"})
                         .Account(1, "It", GetParam().type, GetParam().opening)
                         .Open();
  EXPECT_THAT(ShownBy(*store, GetParam().routine, ChartOrReport::kChart).rows,
              ElementsAre(ShownRow{GetParam().shown, GetParam().label}));
}

INSTANTIATE_TEST_SUITE_P(
    OnEitherSide, OpeningBalanceOfADebt,
    ::testing::Values(
        Opening{"Debtor", kDebtors, kCreditorsRights, 75, 75, "Unassigned Debtors"},
        Opening{"OverpaidDebtor", kDebtors, kCreditorsRights, -5, -5, "Unassigned Debtors"},
        Opening{"Creditor", kCreditors, kLiability, -100, 100, "Unassigned Creditors"},
        Opening{"OverpaidCreditor", kCreditors, kLiability, 5, -5, "Unassigned Creditors"}),
    [](const auto& the_case) { return the_case.param.name; });

struct RecordType {
  std::int32_t type = 0;
  double total = 0;
};

void PrintTo(const RecordType& a_case, std::ostream* out) { *out << a_case.type; }

class DebtOfARecord : public ::testing::TestWithParam<RecordType> {
 protected:
  static std::unique_ptr<Database> Store(std::int32_t other) {
    TestTransaction record = Moved(kTransferOut, 60, other);
    record.record_type = GetParam().type;
    return Accounts().Transaction(record).Open();
  }
};

TEST_P(DebtOfARecord, CountsAmongDebtors) {
  const auto store = Store(kLent);
  EXPECT_EQ(TotalOrNothing(*store, kDebtors), GetParam().total);
}

TEST_P(DebtOfARecord, CountsAmongCreditors) {
  const auto store = Store(kLoan);
  EXPECT_EQ(-TotalOrNothing(*store, kCreditors), GetParam().total);
}

TEST_P(DebtOfARecord, CountsInTheNetOfPayees) {
  const auto store = Store(kLent);
  EXPECT_EQ(TotalOrNothing(*store, kNet), GetParam().total);
}

INSTANTIATE_TEST_SUITE_P(OfEveryRecordType, DebtOfARecord,
                         ::testing::Values(RecordType{kOrdinaryRecord, 60},
                                           RecordType{kScheduledPattern, 0},
                                           RecordType{kVoidRecord, 0}, RecordType{kSplitHead, 0},
                                           RecordType{kSplitLine, 0}));

TEST(Debtors, CountUpToAndWithTheDay) {
  SmallStore builder = Accounts();
  TestTransaction on_the_day = Moved(kTransferOut, 1, kLent);
  on_the_day.date = kTo;
  TestTransaction behind = Moved(kTransferOut, 2, kLent);
  behind.date = Day(2026, 2, 1);
  TestTransaction long_ago = Moved(kTransferOut, 4, kLent);
  long_ago.date = Day(1999, 1, 1);
  const auto store =
      builder.Transaction(on_the_day).Transaction(behind).Transaction(long_ago).Open();
  EXPECT_EQ(ShownBy(*store, kDebtors).total, 5);
}

TEST(NetByPayee, CountsBothEndsOfThePeriod) {
  SmallStore builder = Accounts();
  double total = 1;
  for (const Date date : {Day(2025, 12, 31), kFrom, kTo, Day(2026, 2, 1)}) {
    builder.Transaction({.type = kExpense, .date = date, .total = total, .account = kBank});
    total *= 2;
  }
  const auto store = builder.Open();
  EXPECT_EQ(ShownBy(*store, kNet).total, 6);
}

TEST(NetByPayee, ShowsWhatWentToAPayeeAboveNothing) {
  const auto store = WithPayees(Accounts(), {"Shop", "Employer", "Even"})
                         .Transaction({.type = kExpense, .total = 40, .account = kBank, .payee = 1})
                         .Transaction({.type = kIncome, .total = 900, .account = kBank, .payee = 2})
                         .Transaction({.type = kIncome, .total = 3, .account = kBank, .payee = 3})
                         .Transaction({.type = kExpense, .total = 3, .account = kBank, .payee = 3})
                         .Transaction({.type = kExpense, .total = 7, .account = kBank})
                         .Open();
  const Shown shown = ShownBy(*store, kNet);
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{-900, "Employer"}, ShownRow{40, "Shop"},
                                      ShownRow{0, ""}, ShownRow{7, "Unassigned Payee"}));
  EXPECT_EQ(shown.total, -853);
}

TEST(NetByPayee, HasNoBlankRowInAChart) {
  const auto store =
      Accounts().Transaction({.type = kExpense, .total = 7, .account = kBank}).Open();
  EXPECT_THAT(ShownBy(*store, kNet, ChartOrReport::kChart).rows,
              ElementsAre(ShownRow{7, "Unassigned Payee"}));
}

TEST(NetByPayee, TakesNoOpeningBalance) {
  SmallStore builder;
  const auto store = builder.Account(1, "Lent", kCreditorsRights, 75)
                         .Transaction({.type = kExpense, .total = 7, .account = 1})
                         .Open();
  EXPECT_EQ(ShownBy(*store, kNet).total, -7);
}

// ---- totals

TEST(Debtors, AddUpToTheTotal) {
  const auto store = WithPayees(Accounts(), {"Ann", "Ben"})
                         .Account(27, "Lent before", kCreditorsRights, 12.5)
                         .Transaction(Moved(kTransferOut, 60, kLent, 1))
                         .Transaction(Moved(kTransferIn, 20, kLent, 2))
                         .Transaction(Moved(kTransferOut, 3, kLentToo))
                         .Open();
  const Shown shown = ShownBy(*store, kDebtors);
  double sum = 0;
  for (const ShownRow& row : shown.rows) {
    sum += row.amount;
  }
  EXPECT_EQ(sum, 55.5);
  EXPECT_EQ(shown.total, 55.5);
}

// ---- failures

struct PayeeRoutine {
  std::string name;
  std::int32_t report_number = 0;
  Routine routine = nullptr;
  std::int32_t other_end = 0;  // an account whose transactions it looks at
};

void PrintTo(const PayeeRoutine& a_case, std::ostream* out) { *out << a_case.name; }

class RoutineOfPayees : public ::testing::TestWithParam<PayeeRoutine> {};

TEST_P(RoutineOfPayees, FailsOnARecordWithoutAnAccount) {
  const auto store =
      Accounts().Transaction({.total = 5, .other_account = GetParam().other_end}).Open();
  EXPECT_TRUE(Raises(FailureNumber::kNothingToShow, [&] { ShownBy(*store, GetParam().routine); }));
}

TEST_P(RoutineOfPayees, FailsOnARecordOfAnAccountThatIsNotThere) {
  const auto store =
      Accounts()
          .Transaction({.total = 5, .account = 99, .other_account = GetParam().other_end})
          .Open();
  EXPECT_TRUE(
      Raises(FailureNumber::kNoCurrentRecord, [&] { ShownBy(*store, GetParam().routine); }));
}

TEST_P(RoutineOfPayees, FailsWhereThereIsNoAmountAtAll) {
  const auto store = WithPayees(Accounts(), {"Ann"}).Open();
  EXPECT_TRUE(
      Raises(FailureNumber::kSubscriptOutOfRange, [&] { ShownBy(*store, GetParam().routine); }));
}

TEST_P(RoutineOfPayees, ClosesWhatItOpenedWhereItFails) {
  const auto store =
      Accounts().Transaction({.total = 5, .other_account = GetParam().other_end}).Open();
  KeepingStore keeping(*store);
  EXPECT_TRUE(
      Raises(FailureNumber::kNothingToShow, [&] { ShownBy(*keeping, GetParam().routine); }));
  const auto opened = [](const std::string& event) { return event.starts_with("open "); };
  EXPECT_EQ(std::ranges::count_if(keeping.events, opened) * 2, std::ssize(keeping.events));
}

TEST_P(RoutineOfPayees, ShowsTitleAndCaptionAloneOnARecordWithoutAnAccount) {
  SmallStore builder = Accounts();
  builder.Transaction({.total = 5, .other_account = GetParam().other_end});
  EXPECT_EQ(ReportOfJanuary(std::move(builder), GetParam().report_number), kJanuaryHeading);
}

TEST_P(RoutineOfPayees, ShowsTitleAndCaptionAloneOnAnAccountThatIsNotThere) {
  SmallStore builder = Accounts();
  builder.Transaction({.total = 5, .account = 99, .other_account = GetParam().other_end});
  EXPECT_EQ(ReportOfJanuary(std::move(builder), GetParam().report_number), kJanuaryHeading);
}

TEST_P(RoutineOfPayees, ShowsTitleAndCaptionAloneWhereThereIsNoAmount) {
  EXPECT_EQ(ReportOfJanuary(Accounts(), GetParam().report_number), kJanuaryHeading);
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, RoutineOfPayees,
                         ::testing::Values(PayeeRoutine{"Debtors", 8, kDebtors, kLent},
                                           PayeeRoutine{"Creditors", 12, kCreditors, kLoan},
                                           PayeeRoutine{"Net", 2, kNet, kLent}),
                         [](const auto& the_case) { return the_case.param.name; });

// An account at the other end that is not there is missed only by one that holds items.
TEST(NetByPayee, FailsOnAnOtherEndThatIsNotThere) {
  const auto store =
      Accounts()
          .Transaction({.type = kBuy, .total = 5, .account = kBroker, .other_account = 99})
          .Open();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { ShownBy(*store, kNet); }));
}

// ---- texts

std::vector<std::string> DebtEvents(const std::string& type, const std::string& condition,
                                    bool opening) {
  const std::string text =
      "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE T1.TransactionRecordType= 0 "
      "AND (T1.AccountNumber=T2.AccountNumber OR T1.ToOrFundAccountNumber=T2.AccountNumber) AND  "
      "T2.AccountType= " +
      type + condition + " AND TransactionDate<=#2026-01-31# ORDER BY T1.TransactionDate";
  std::vector<std::string> events = {"open Account", "open " + text, "close " + text};
  if (opening) {
    const std::string balances = "SELECT * FROM Account WHERE AccountType= " + type;
    events.insert(events.end(), {"open " + balances, "close " + balances});
  }
  events.emplace_back("close Account");
  return events;
}

std::vector<std::string> EventsByPayee(const std::string& type) {
  std::vector<std::string> events = DebtEvents(type, "", true);
  const auto add = [&](const std::vector<std::string>& more) {
    events.insert(events.end(), more.begin(), more.end());
  };
  add({"open SELECT * FROM Payee ORDER BY PayeeName"});
  add(DebtEvents(type, " AND T1.PayeeNumber= 2", false));
  add(DebtEvents(type, " AND T1.PayeeNumber= 1", false));
  add({"close SELECT * FROM Payee ORDER BY PayeeName"});
  add(DebtEvents(type, " AND ISNULL(T1.PayeeNumber)", true));
  return events;
}

SmallStore TwoPayees() { return WithPayees(SmallStore(), {"Zoe", "Ann"}); }

TEST(Debtors, AreReadInThisOrder) {
  const auto store = TwoPayees().Account(1, "Lent", kCreditorsRights, 5).Open();
  KeepingStore keeping(*store);
  ShownBy(*keeping, kDebtors);
  EXPECT_THAT(keeping.events, ElementsAreArray(EventsByPayee("7")));
}

TEST(Creditors, AreReadInThisOrder) {
  const auto store = TwoPayees().Account(1, "Loan", kLiability, -5).Open();
  KeepingStore keeping(*store);
  ShownBy(*keeping, kCreditors);
  EXPECT_THAT(keeping.events, ElementsAreArray(EventsByPayee("6")));
}

TEST(NetByPayee, IsReadInThisOrder) {
  const auto store = TwoPayees()
                         .Account(1, "Bank", kCheckingAccount)
                         .Transaction({.total = 5, .account = 1})
                         .Open();
  KeepingStore keeping(*store);
  ShownBy(*keeping, kNet);
  const auto net = [](const std::string& condition) {
    const std::string text =
        "SELECT * FROM TransactionRecord WHERE TransactionRecordType= 0 AND "
        "TransactionDate>=#2026-01-01# AND TransactionDate<=#2026-01-31#" +
        condition + " ORDER BY TransactionDate";
    return std::vector<std::string>{"open Account", "open " + text, "close " + text,
                                    "close Account"};
  };
  std::vector<std::string> expected = {"open SELECT * FROM Payee ORDER BY PayeeName"};
  const auto add = [&](const std::vector<std::string>& more) {
    expected.insert(expected.end(), more.begin(), more.end());
  };
  add(net(" AND PayeeNumber= 2"));
  add(net(" AND PayeeNumber= 1"));
  add({"close SELECT * FROM Payee ORDER BY PayeeName"});
  add(net(" AND ISNULL(PayeeNumber)"));
  EXPECT_THAT(keeping.events, ElementsAreArray(expected));
}

// ---- credit cards

Shown Overdrafts(SmallStore& builder, ChartOrReport target = ChartOrReport::kReport) {
  const auto store = builder.Open();
  return ShownBy(*store, kOverdrafts, target);
}

TEST(Overdrafts, ArePositiveAndLeaveOutCardsInCredit) {
  const Shown shown = Overdrafts(SmallStore()
                                     .Account(1, "Grey", kCreditCard, -2.5)
                                     .Account(2, "Blue", kCreditCard, -40)
                                     .Account(3, "Red", kCreditCard, 20)
                                     .Account(4, "Even", kCreditCard, 0)
                                     .Account(5, "Bank", kCheckingAccount, -7));
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{40, "Blue"}, ShownRow{2.5, "Grey"}));
  EXPECT_EQ(shown.total, 42.5);
}

TEST(Overdrafts, OfOneNameComeByNumber) {
  const Shown shown = Overdrafts(
      SmallStore().Account(2, "Card", kCreditCard, -2).Account(1, "Card", kCreditCard, -1));
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{1, "Card"}, ShownRow{2, "Card"}));
}

TEST(Overdrafts, OfATwentiethOrLessAreOneRowInAChart) {
  const Shown shown = Overdrafts(SmallStore()
                                     .Account(1, "Big", kCreditCard, -94)
                                     .Account(2, "Exact", kCreditCard, -5)
                                     .Account(3, "Small", kCreditCard, -1),
                                 ChartOrReport::kChart);
  EXPECT_THAT(shown.rows, ElementsAre(ShownRow{94, "Big"}, ShownRow{6, "All Other Credit Cards"}));
  EXPECT_EQ(shown.total, 100);
}

TEST(Overdrafts, FailWhereAllCardsAreInCredit) {
  const auto store = SmallStore().Account(1, "Card", kCreditCard, 20).Open();
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { ShownBy(*store, kOverdrafts); }));
}

TEST(OverdraftReport, WithAllCardsInCreditIsTitleAndCaptionAlone) {
  EXPECT_EQ(ReportOfJanuary(std::move(SmallStore().Account(1, "Card", kCreditCard, 20)), 11),
            kJanuaryHeading);
}

TEST(Overdrafts, AreReadByThisText) {
  const auto store = SmallStore().Account(1, "Card", kCreditCard, -20).Open();
  KeepingStore keeping(*store);
  ShownBy(*keeping, kOverdrafts);
  EXPECT_THAT(keeping.events,
              ::testing::IsSupersetOf({"open SELECT * FROM Account WHERE AccountType= 4 ORDER BY "
                                       "AccountName,AccountType,AccountNumber"}));
}

// ---- as reports and charts

// A text that ends at the right edge of a column of so many characters.
std::string AtRight(std::size_t width, const std::string& text) {
  return std::string(width + 1 - text.size(), ' ') + text;
}

SmallStore Household() {
  SmallStore store;
  store.Account(kBank, "Bank", kCheckingAccount)
      .Account(kLoan, "Loan", kLiability, -500)
      .Account(kLent, "Lent", kCreditorsRights, 75);
  store = WithPayees(std::move(store), {"Corner Shop", "Zed", "Even"});
  store.Transaction(Moved(kTransferOut, 60, kLent, 1))
      .Transaction(Moved(kTransferOut, 25, kLoan, 1))
      .Transaction(Moved(kTransferIn, 10, kLent, 2))
      .Transaction(Moved(kTransferOut, 5, kLent, 3))
      .Transaction(Moved(kTransferIn, 5, kLent, 3))
      .Transaction({.type = kIncome, .total = 900, .account = kBank});
  return store;
}

TEST(DebtorReport, IsThisText) {
  const std::string rule(27, '_');
  EXPECT_EQ(ReportOfJanuary(Household(), 8),
            kJanuaryHeading + "Debtor\t" + AtRight(6, "Total") + "\r\n" + rule + "\r\n\r\n" +  //
                "Corner Shop\t" + AtRight(6, "60.00") + "\r\n" +                               //
                "Zed\t" + AtRight(6, "-10.00") + "\r\n" +                                      //
                "\r\n" +                                                                       //
                "Unassigned Debtors\t" + AtRight(6, "75.00") + "\r\n\r\n" +                    //
                rule + "\r\n" + rule + "\r\n" +                                                //
                "Total\t" + AtRight(6, "125.00"));
}

TEST(CreditorReport, IsThisText) {
  const std::string rule(29, '_');
  EXPECT_EQ(ReportOfJanuary(Household(), 12),
            kJanuaryHeading + "Creditor\t" + AtRight(6, "Total") + "\r\n" + rule + "\r\n\r\n" +  //
                "Corner Shop\t" + AtRight(6, "-25.00") + "\r\n" +                                //
                "\r\n" +                                                                         //
                "Unassigned Creditors\t" + AtRight(6, "500.00") + "\r\n\r\n" +                   //
                rule + "\r\n" + rule + "\r\n" +                                                  //
                "Total\t" + AtRight(6, "475.00"));
}

TEST(NetByPayeeReport, IsThisText) {
  const std::string rule(79, '_');
  EXPECT_EQ(ReportOfJanuary(Household(), 2),
            kJanuaryHeading + "Payee\t" + AtRight(28, "From Payee Less Pay to Payee") + "\r\n" +
                rule + "\r\n\r\n" +                                           //
                "Corner Shop\t" + AtRight(28, "85.00") + "\r\n" +             //
                "Zed\t" + AtRight(28, "-10.00") + "\r\n" +                    //
                "\r\n" +                                                      //
                "Unassigned Payee\t" + AtRight(28, "-900.00") + "\r\n\r\n" +  //
                rule + "\r\n" + rule + "\r\n" +                               //
                "Total Receiving Amount Less Total Payment Amount\t" + AtRight(28, "-825.00"));
}

TEST(OverdraftReport, IsThisText) {
  const std::string rule(23, '_');
  SmallStore builder;
  builder.Account(1, "Blue", kCreditCard, -40).Account(2, "Grey", kCreditCard, -2.5);
  EXPECT_EQ(ReportOfJanuary(std::move(builder), 11),
            kJanuaryHeading + "Credit Card\t" + AtRight(9, "Overdraft") + "\r\n" + rule +
                "\r\n\r\n" +                                  //
                "Blue\t" + AtRight(9, "40.00") + "\r\n" +     //
                "Grey\t" + AtRight(9, "2.50") + "\r\n\r\n" +  //
                rule + "\r\n" + rule + "\r\n" +               //
                "Total\t" + AtRight(9, "42.50"));
}

struct TitleCase {
  std::int32_t report_number = 0;
  std::string title;
};

void PrintTo(const TitleCase& a_case, std::ostream* out) { *out << a_case.report_number; }

class ChartOfDebts : public ::testing::TestWithParam<TitleCase> {};

TEST_P(ChartOfDebts, IsTitledSo) {
  SmallStore builder = Household();
  const auto store = builder.Account(9, "Card", kCreditCard, -40)
                         .Row(RowOfJanuary(GetParam().report_number, ChartOrReport::kChart))
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_EQ(drawing.chart.Title(), GetParam().title);
  EXPECT_EQ(drawing.chart.Footnote(), "2026/01/01 Through 2026/01/31");
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, ChartOfDebts,
                         ::testing::Values(TitleCase{2, "Mine"}, TitleCase{8, "Mine:125.00"},
                                           TitleCase{11, "Mine:40.00"},
                                           TitleCase{12, "Mine:475.00"}));

}  // namespace
}  // namespace vetlo
