#include "vetlo/schedule/histories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <tuple>

#include "tests/support/drawing.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Kind = HistorySubject::Kind;

const Date kFrom = Day(2026, 3, 15);
const Date kTo = Day(2026, 5, 10);

constexpr std::int32_t kBank = 1;
constexpr std::int32_t kSubject = 3;

constexpr auto kKinds = {Kind::kPayee, Kind::kCategory, Kind::kSubCategory,
                         Kind::kClassificationItem, Kind::kClassificationSubItem};

// A record of every subject with the number 3.
TestTransaction OfAll(Date date, double total, std::int32_t type = kIncome) {
  return {.type = type,
          .date = date,
          .total = total,
          .account = kBank,
          .category = kSubject,
          .sub_category = kSubject,
          .payee = kSubject,
          .classification1_item = kSubject,
          .classification2_sub_item = kSubject};
}

SmallStore Accounts() {
  SmallStore store;
  store.Account(kBank, "Bank", kCheckingAccount);
  return store;
}

std::vector<ShownRow> HistoryOf(Database& store, Kind kind, Date from = kFrom, Date to = kTo) {
  MonthBuckets buckets;
  MonthHistory(store, {kind, kSubject}, from, to, buckets);
  std::vector<ShownRow> rows;
  for (std::size_t i = 0; i < buckets.labels.size(); ++i) {
    rows.push_back({buckets.amounts.at(i), buckets.labels.at(i)});
  }
  return rows;
}

// ---- labels

TEST(MonthBucketLabel, OfTheFirstMonthIsCutToTheRange) {
  EXPECT_EQ(MonthBucketLabel(Day(2026, 3, 20), kFrom, kTo), "2026/03/15-2026/03/31");
}

TEST(MonthBucketLabel, OfAMonthWithinTheRangeIsWhole) {
  EXPECT_EQ(MonthBucketLabel(Day(2026, 4, 30), kFrom, kTo), "2026/04/01-2026/04/30");
}

TEST(MonthBucketLabel, OfTheLastMonthIsCutToTheRange) {
  EXPECT_EQ(MonthBucketLabel(Day(2026, 5, 1), kFrom, kTo), "2026/05/01-2026/05/10");
}

TEST(MonthBucketLabel, OfDecemberEndsWithTheYear) {
  EXPECT_EQ(MonthBucketLabel(Day(2025, 12, 5), Day(2025, 1, 1), kTo), "2025/12/01-2025/12/31");
}

TEST(MonthBucketLabel, OfTheEarliestDateIsUnassigned) {
  EXPECT_EQ(MonthBucketLabel(Services().EarliestDate(), Services().EarliestDate(), kTo),
            "Unassigned Date");
}

TEST(MonthBucketLabel, OfTheLatestDateIsUnassigned) {
  EXPECT_EQ(MonthBucketLabel(Services().LatestDate(), kFrom, Services().LatestDate()),
            "Unassigned Date");
}

// ---- buckets

class HistoryOfA : public ::testing::TestWithParam<Kind> {};

TEST_P(HistoryOfA, HasABucketForEachMonthWithRecords) {
  const auto store = Accounts()
                         .Transaction(OfAll(Day(2026, 5, 10), 8))
                         .Transaction(OfAll(Day(2026, 3, 15), 1))
                         .Transaction(OfAll(Day(2026, 3, 31), 2, kExpense))
                         .Transaction(OfAll(Day(2026, 4, 30), 4))
                         .Open();
  EXPECT_THAT(HistoryOf(*store, GetParam()), ElementsAre(ShownRow{-1, "2026/03/15-2026/03/31"},
                                                         ShownRow{4, "2026/04/01-2026/04/30"},
                                                         ShownRow{8, "2026/05/01-2026/05/10"}));
}

TEST_P(HistoryOfA, LeavesOutAMonthWithoutRecords) {
  const auto store = Accounts()
                         .Transaction(OfAll(Day(2026, 3, 20), 1))
                         .Transaction(OfAll(Day(2026, 5, 2), 2))
                         .Open();
  EXPECT_THAT(HistoryOf(*store, GetParam()), ElementsAre(ShownRow{1, "2026/03/15-2026/03/31"},
                                                         ShownRow{2, "2026/05/01-2026/05/10"}));
}

TEST_P(HistoryOfA, KeepsOneMonthOfTwoYearsApart) {
  const auto store = Accounts()
                         .Transaction(OfAll(Day(2025, 4, 20), 1))
                         .Transaction(OfAll(Day(2026, 4, 20), 2))
                         .Open();
  EXPECT_THAT(
      HistoryOf(*store, GetParam(), Day(2025, 1, 1), kTo),
      ElementsAre(ShownRow{1, "2025/04/01-2025/04/30"}, ShownRow{2, "2026/04/01-2026/04/30"}));
}

TEST_P(HistoryOfA, LeavesOutWhatLiesOutsideTheRange) {
  const auto store = Accounts()
                         .Transaction(OfAll(Day(2026, 3, 14), 1))
                         .Transaction(OfAll(Day(2026, 4, 1), 2))
                         .Transaction(OfAll(Day(2026, 5, 11), 4))
                         .Open();
  EXPECT_THAT(HistoryOf(*store, GetParam()), ElementsAre(ShownRow{2, "2026/04/01-2026/04/30"}));
}

TEST_P(HistoryOfA, HasItsUnassignedDatesInTheirPlaces) {
  const auto store = Accounts()
                         .Transaction(OfAll(Services().EarliestDate(), 1))
                         .Transaction(OfAll(Day(2026, 4, 1), 2))
                         .Transaction(OfAll(Services().LatestDate(), 4))
                         .Open();
  EXPECT_THAT(HistoryOf(*store, GetParam(), Services().EarliestDate(), Services().LatestDate()),
              ElementsAre(ShownRow{1, "Unassigned Date"}, ShownRow{2, "2026/04/01-2026/04/30"},
                          ShownRow{4, "Unassigned Date"}));
}

// A bucket changes with the month, whatever its label says.
TEST_P(HistoryOfA, PutsARealDateInTheMonthOfAnUnassignedOneWithIt) {
  const auto store = Accounts()
                         .Transaction(OfAll(Services().EarliestDate(), 1))
                         .Transaction(OfAll(Day(100, 1, 20), 2))
                         .Open();
  EXPECT_THAT(HistoryOf(*store, GetParam(), Services().EarliestDate(), kTo),
              ElementsAre(ShownRow{3, "Unassigned Date"}));
}

TEST_P(HistoryOfA, FailsWithoutARecord) {
  const auto store = Accounts().Open();
  EXPECT_TRUE(Raises(FailureNumber::kNothingToShow, [&] { HistoryOf(*store, GetParam()); }));
}

TEST_P(HistoryOfA, FailsOnARecordWithoutAnAccount) {
  TestTransaction record = OfAll(Day(2026, 4, 1), 2);
  record.account = Null{};
  const auto store = Accounts().Transaction(record).Open();
  EXPECT_TRUE(Raises(FailureNumber::kNothingToShow, [&] { HistoryOf(*store, GetParam()); }));
}

TEST_P(HistoryOfA, FailsOnAnAccountThatIsNotThere) {
  TestTransaction record = OfAll(Day(2026, 4, 1), 2);
  record.account = 99;
  const auto store = Accounts().Transaction(record).Open();
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { HistoryOf(*store, GetParam()); }));
}

TEST_P(HistoryOfA, LeavesOutOtherRecordTypes) {
  SmallStore builder = Accounts();
  for (const std::int32_t type : {kScheduledPattern, kVoidRecord, kSplitHead}) {
    TestTransaction record = OfAll(Day(2026, 4, 1), 5);
    record.record_type = type;
    builder.Transaction(record);
  }
  const auto store = builder.Transaction(OfAll(Day(2026, 4, 1), 2)).Open();
  EXPECT_THAT(HistoryOf(*store, GetParam()), ElementsAre(ShownRow{2, "2026/04/01-2026/04/30"}));
}

TEST_P(HistoryOfA, CountsSplitLinesUnlessItIsAPayees) {
  TestTransaction line = OfAll(Day(2026, 4, 2), 5);
  line.record_type = kSplitLine;
  const auto store = Accounts().Transaction(OfAll(Day(2026, 4, 1), 2)).Transaction(line).Open();
  EXPECT_THAT(
      HistoryOf(*store, GetParam()),
      ElementsAre(ShownRow{GetParam() == Kind::kPayee ? 2.0 : 7.0, "2026/04/01-2026/04/30"}));
}

INSTANTIATE_TEST_SUITE_P(Subject, HistoryOfA, ::testing::ValuesIn(kKinds));

// A month opens its bucket only once its first amount is known.
TEST(History, ThatFailsInANewMonthKeepsTheMonthsBeforeAlone) {
  TestTransaction record = OfAll(Day(2026, 4, 1), 2);
  record.account = Null{};
  const auto store = Accounts().Transaction(OfAll(Day(2026, 3, 20), 1)).Transaction(record).Open();
  MonthBuckets buckets;
  EXPECT_TRUE(Raises(FailureNumber::kNothingToShow, [&] {
    MonthHistory(*store, {Kind::kPayee, kSubject}, kFrom, kTo, buckets);
  }));
  EXPECT_THAT(buckets.labels, ElementsAre("2026/03/15-2026/03/31"));
}

TEST(History, ThatFailsInItsFirstMonthHasThatMonthOpened) {
  TestTransaction record = OfAll(Day(2026, 4, 1), 2);
  record.account = Null{};
  const auto store = Accounts().Transaction(record).Open();
  MonthBuckets buckets;
  EXPECT_TRUE(Raises(FailureNumber::kNothingToShow, [&] {
    MonthHistory(*store, {Kind::kPayee, kSubject}, kFrom, kTo, buckets);
  }));
  EXPECT_THAT(buckets.labels, ElementsAre("2026/04/01-2026/04/30"));
  EXPECT_THAT(buckets.amounts, ElementsAre(0));
}

struct EitherColumn {
  std::string name;
  Kind kind = Kind::kClassificationItem;
  Variant TestTransaction::*column = nullptr;
};

void PrintTo(const EitherColumn& a_case, std::ostream* out) { *out << a_case.name; }

class Classified : public ::testing::TestWithParam<EitherColumn> {};

TEST_P(Classified, CountsUnderThisColumn) {
  TestTransaction record{.date = Day(2026, 4, 1), .total = 2, .account = kBank};
  record.*GetParam().column = kSubject;
  const auto store = Accounts().Transaction(record).Open();
  EXPECT_EQ(HistoryOf(*store, GetParam().kind).size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(InEither, Classified,
                         ::testing::Values(EitherColumn{"Item1", Kind::kClassificationItem,
                                                        &TestTransaction::classification1_item},
                                           EitherColumn{"Item2", Kind::kClassificationItem,
                                                        &TestTransaction::classification2_item},
                                           EitherColumn{"SubItem1", Kind::kClassificationSubItem,
                                                        &TestTransaction::classification1_sub_item},
                                           EitherColumn{
                                               "SubItem2", Kind::kClassificationSubItem,
                                               &TestTransaction::classification2_sub_item}),
                         [](const auto& the_case) { return the_case.param.name; });

// ---- signs

// The sign of a transfer out and of one in, in a payee's history and in every other.
struct SignCase {
  std::int32_t account_type = 0;
  std::int32_t other_type = 0;  // kNoOther: Null
  std::string payee;
  std::string others;
};

constexpr std::int32_t kNoOther = -1;

void PrintTo(const SignCase& a_case, std::ostream* out) {
  *out << "type " << a_case.account_type << ", other end " << a_case.other_type;
}

std::vector<SignCase> SignTable() {
  std::vector<SignCase> cases;
  for (const std::int32_t other : {kNoOther, kLiability, kCreditorsRights, kCheckingAccount}) {
    for (const std::int32_t ordinary : {kCheckingAccount, kSavingsAccount, kTimeDeposit,
                                        kCashAccount, kCreditCard, kOtherAccount}) {
      cases.push_back({ordinary, other, "-+", "-+"});
    }
    cases.push_back({kLiability, other, "+-", "-+"});
    cases.push_back({kCreditorsRights, other, "+-", "-+"});
    cases.push_back({kCommonAsset, other, "++", "++"});
    const bool owed = other == kLiability || other == kCreditorsRights;
    cases.push_back({kInvestmentAccount, other, owed ? "-+" : "+-", "+-"});
  }
  return cases;
}

class SignInAHistory
    : public ::testing::TestWithParam<std::tuple<SignCase, Kind, std::int32_t /* type */>> {};

TEST_P(SignInAHistory, IsThatOfTheTable) {
  const auto& [the_case, kind, type] = GetParam();
  SmallStore builder;
  builder.Account(kBank, "Own", the_case.account_type);
  TestTransaction record = OfAll(Day(2026, 4, 1), 100, type);
  if (the_case.other_type != kNoOther) {
    builder.Account(2, "Other", the_case.other_type);
    record.other_account = 2;
  }
  const auto store = builder.Transaction(record).Open();
  const std::string& signs = kind == Kind::kPayee ? the_case.payee : the_case.others;
  const double expected = signs.at(type == kTransferOut ? 0 : 1) == '+' ? 100 : -100;
  EXPECT_THAT(HistoryOf(*store, kind), ElementsAre(ShownRow{expected, "2026/04/01-2026/04/30"}));
}

INSTANTIATE_TEST_SUITE_P(InEveryCell, SignInAHistory,
                         ::testing::Combine(::testing::ValuesIn(SignTable()),
                                            ::testing::ValuesIn(kKinds),
                                            ::testing::Values(kTransferOut, kTransferIn)));

TEST(CategoryHistory, DoesNotLookAtTheOtherEnd) {
  TestTransaction record = OfAll(Day(2026, 4, 1), 100, kBuy);
  record.other_account = 99;
  const auto store =
      SmallStore().Account(kBank, "Broker", kInvestmentAccount).Transaction(record).Open();
  EXPECT_THAT(HistoryOf(*store, Kind::kCategory),
              ElementsAre(ShownRow{-100, "2026/04/01-2026/04/30"}));
}

// ---- texts

struct TextCase {
  Kind kind = Kind::kPayee;
  std::string text;
};

void PrintTo(const TextCase& a_case, std::ostream* out) { *out << a_case.text; }

class TextOfAHistory : public ::testing::TestWithParam<TextCase> {};

TEST_P(TextOfAHistory, IsOpenedBehindTheAccounts) {
  const auto store = Accounts().Transaction(OfAll(Day(2026, 4, 1), 2)).Open();
  KeepingStore keeping(*store);
  HistoryOf(*keeping, GetParam().kind);
  keeping.events.resize(2);
  EXPECT_THAT(keeping.events, ElementsAre("open Account", "open " + GetParam().text));
}

const std::string kDates = "TransactionDate>=#2026-03-15# AND TransactionDate<=#2026-05-10#";
const std::string kWithSplits =
    "SELECT * FROM TransactionRecord WHERE (TransactionRecordType= 0 OR "
    "TransactionRecordType= 4) AND " +
    kDates;

INSTANTIATE_TEST_SUITE_P(
    OfEverySubject, TextOfAHistory,
    ::testing::Values(
        TextCase{Kind::kPayee,
                 "SELECT * FROM TransactionRecord WHERE TransactionRecordType= 0 "
                 "AND " +
                     kDates + " AND PayeeNumber= 3 ORDER BY TransactionDate"},
        TextCase{Kind::kCategory, kWithSplits + " AND CategoryNumber= 3 ORDER BY TransactionDate"},
        TextCase{Kind::kSubCategory,
                 kWithSplits + " AND SubCategoryNumber= 3 ORDER BY TransactionDate"},
        TextCase{Kind::kClassificationItem,
                 kWithSplits + " AND (Classification1ItemNumber= 3 OR "
                               "Classification2ItemNumber= 3) ORDER BY TransactionDate"},
        TextCase{Kind::kClassificationSubItem,
                 kWithSplits + " AND (Classification1SubItemNumber= 3 OR "
                               "Classification2SubItemNumber= 3) ORDER BY TransactionDate"}));

}  // namespace
}  // namespace vetlo
