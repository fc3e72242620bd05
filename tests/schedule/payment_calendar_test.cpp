#include "vetlo/schedule/payment_calendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <ostream>

#include "tests/support/drawing.h"
#include "tests/support/january_report.h"
#include "tests/support/raises.h"
#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Date kFrom = Day(2026, 1, 1);
const Date kTo = Day(2026, 1, 31);

constexpr std::int32_t kBank = 1;
constexpr std::int32_t kBroker = 8;
constexpr std::int32_t kHouse = 5;

// ---- frequencies

struct FrequencyCase {
  std::int32_t type = 0;
  std::string once;
  std::string twice;
  std::string thrice;
};

void PrintTo(const FrequencyCase& a_case, std::ostream* out) { *out << a_case.type; }

class FrequencyIn : public ::testing::TestWithParam<FrequencyCase> {};

TEST_P(FrequencyIn, WordsForOne) { EXPECT_EQ(FrequencyText(GetParam().type, 1), GetParam().once); }

TEST_P(FrequencyIn, WordsForNoneIsThatForOne) {
  EXPECT_EQ(FrequencyText(GetParam().type, 0), GetParam().once);
}

TEST_P(FrequencyIn, WordsBelowNothingIsThatForOne) {
  EXPECT_EQ(FrequencyText(GetParam().type, -3), GetParam().once);
}

TEST_P(FrequencyIn, WordsForTwo) { EXPECT_EQ(FrequencyText(GetParam().type, 2), GetParam().twice); }

TEST_P(FrequencyIn, WordsForThree) {
  EXPECT_EQ(FrequencyText(GetParam().type, 3), GetParam().thrice);
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryType, FrequencyIn,
    ::testing::Values(
        FrequencyCase{0, "Only Once", "Only Once", "Only Once"},
        FrequencyCase{1, "Daily", "Every 2 days", "Every 3 days"},
        FrequencyCase{2, "Weekly", "Every 2 weeks", "Every 3 weeks"},
        FrequencyCase{3, "Every other Week", "Every other Week", "Every other Week"},
        FrequencyCase{4, "Twice a month", "Twice a month", "Twice a month"},
        FrequencyCase{5, "Monthly", "Every 2 months", "Every 3 months"},
        FrequencyCase{6, "Every other month", "Every other month", "Every other month"},
        FrequencyCase{7, "Every three months", "Every three months", "Every three months"},
        FrequencyCase{8, "Twice a year", "Twice a year", "Twice a year"},
        FrequencyCase{9, "Yearly", "Every 2 years", "Every 3 years"},
        FrequencyCase{10, "Every other year", "Every other year", "Every other year"},
        FrequencyCase{11, "Every four weeks", "Every four weeks", "Every four weeks"},
        FrequencyCase{12, "Every four months", "Every four months", "Every four months"},
        FrequencyCase{13, "", "", ""}, FrequencyCase{-1, "", "", ""},
        FrequencyCase{std::numeric_limits<std::int32_t>::max(), "", "", ""},
        FrequencyCase{std::numeric_limits<std::int32_t>::min(), "", "", ""}));

// ---- rows

SmallStore Accounts() {
  SmallStore store;
  store.Account(kBank, "Bank", kCheckingAccount)
      .Account(kBroker, "Broker", kInvestmentAccount)
      .Account(kHouse, "House", kCommonAsset)
      .Insert("Payee", {{"PayeeNumber", 1}, {"PayeeName", "Shop"}})
      .Insert("Category", {{"CategoryNumber", 1}, {"CategoryName", "Food"}, {"CategoryType", 1}})
      .Insert("SubCategory",
              {{"SubCategoryNumber", 1}, {"SubCategoryName", "Bakery"}, {"CategoryNumber", 1}});
  return store;
}

// The record with this number is due by this frequency.
void Schedule(SmallStore& store, std::int32_t record, std::int32_t frequency = 5,
              std::int32_t count = 1) {
  store.Insert("PaymentCalendar", {{"TransactionRecordNumber", record},
                                   {"FrequencyType", frequency},
                                   {"FrequencyExtInfo", count}});
}

constexpr CalendarFilter kBoth = {true, true};

std::vector<CalendarRow> RowsOf(Database& store, CalendarFilter filter = kBoth) {
  GrowingArray<CalendarRow> rows;
  PaymentCalendarRows(store, kFrom, kTo, rows, filter, NumberLocale{});
  return rows.elements();
}

// The one row of a scheduled record.
CalendarRow RowOfRecord(const TestTransaction& record) {
  SmallStore builder = Accounts();
  builder.Transaction(record);
  Schedule(builder, 1);
  const auto store = builder.Open();
  const auto rows = RowsOf(*store);
  return rows.size() == 1 ? rows.front() : CalendarRow{};
}

TEST(PaymentCalendar, HasARowOfSixTexts) {
  EXPECT_THAT(RowOfRecord({.type = kExpense,
                           .total = 1234.5,
                           .account = kBank,
                           .category = 1,
                           .sub_category = 1,
                           .payee = 1}),
              ElementsAre("2026/01/15", "Monthly", "Shop", "Bank", "Food:Bakery", "-1,234.50"));
}

TEST(PaymentCalendar, LeavesEmptyWhatHasNoNumber) {
  EXPECT_THAT(RowOfRecord({.type = kIncome, .total = 5, .account = kBank}),
              ElementsAre("2026/01/15", "Monthly", "", "Bank", "", "5.00"));
}

TEST(PaymentCalendar, ShowsACategoryWithoutAPartAlone) {
  EXPECT_EQ(RowOfRecord({.total = 5, .account = kBank, .category = 1}).at(4), "Food");
}

TEST(PaymentCalendar, ShowsNothingForAPartWithoutItsCategory) {
  EXPECT_EQ(RowOfRecord({.total = 5, .account = kBank, .sub_category = 1}).at(4), "");
}

TEST(PaymentCalendar, ListsADailyScheduleOnce) {
  SmallStore builder = Accounts();
  builder.Transaction({.total = 5, .account = kBank}).Transaction({.total = 6, .account = kBank});
  Schedule(builder, 1, 1, 1);
  Schedule(builder, 2, 1, 3);
  const auto store = builder.Open();
  EXPECT_THAT(RowsOf(*store),
              ElementsAre(ElementsAre("2026/01/15", "Daily", "", "Bank", "", "5.00"),
                          ElementsAre("2026/01/15", "Every 3 days", "", "Bank", "", "6.00")));
}

TEST(PaymentCalendar, ListsOnlyWhatIsScheduledInTheRange) {
  SmallStore builder = Accounts();
  std::int32_t record = 0;
  for (const Date date : {Day(2025, 12, 31), kFrom, kTo, Day(2026, 2, 1)}) {
    builder.Transaction({.date = date, .total = 5, .account = kBank});
    Schedule(builder, ++record, 1);
  }
  builder.Transaction({.total = 5, .account = kBank});
  const auto store = builder.Open();
  EXPECT_THAT(RowsOf(*store),
              ElementsAre(ElementsAre("2026/01/01", "Daily", "", "Bank", "", "5.00"),
                          ElementsAre("2026/01/31", "Daily", "", "Bank", "", "5.00")));
}

TEST(PaymentCalendar, GoesByDateAndThenByTheRecordsNumber) {
  SmallStore builder = Accounts();
  builder.Transaction({.date = Day(2026, 1, 20), .total = 1, .account = kBank})
      .Transaction({.date = Day(2026, 1, 10), .total = 2, .account = kBank})
      .Transaction({.date = Day(2026, 1, 10), .total = 3, .account = kBank});
  for (const std::int32_t record : {1, 3, 2}) {
    Schedule(builder, record);
  }
  const auto store = builder.Open();
  std::vector<std::string> amounts;
  for (const CalendarRow& row : RowsOf(*store)) {
    amounts.push_back(row.at(5));
  }
  EXPECT_THAT(amounts, ElementsAre("2.00", "3.00", "1.00"));
}

class CalendarRecordType : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(CalendarRecordType, IsNotAskedFor) {
  EXPECT_EQ(RowOfRecord({.total = 5, .account = kBank, .record_type = GetParam()}).size(), 6U);
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, CalendarRecordType,
                         ::testing::Values(kOrdinaryRecord, kScheduledPattern, kVoidRecord,
                                           kSplitHead, kSplitLine));

// ---- directions

struct DirectionCase {
  std::string name;
  std::int32_t account = 0;
  std::int32_t type = 0;
  Variant other;
  std::string shown_account;
  std::string amount;
};

void PrintTo(const DirectionCase& a_case, std::ostream* out) { *out << a_case.name; }

class Direction : public ::testing::TestWithParam<DirectionCase> {
 protected:
  static CalendarRow Row() {
    return RowOfRecord({.type = GetParam().type,
                        .total = 5,
                        .account = GetParam().account,
                        .other_account = GetParam().other});
  }
};

TEST_P(Direction, SignsTheAmount) { EXPECT_EQ(Row().at(5), GetParam().amount); }

TEST_P(Direction, NamesTheAccount) { EXPECT_EQ(Row().at(3), GetParam().shown_account); }

INSTANTIATE_TEST_SUITE_P(
    OfEveryBranch, Direction,
    ::testing::Values(DirectionCase{"BankOut", kBank, kTransferOut, kBroker, "Bank", "-5.00"},
                      DirectionCase{"BankIn", kBank, kTransferIn, kBroker, "Bank", "5.00"},
                      DirectionCase{"BrokerOut", kBroker, kTransferOut, kBank, "Bank", "5.00"},
                      DirectionCase{"BrokerIn", kBroker, kTransferIn, kBank, "Bank", "-5.00"},
                      DirectionCase{"BrokerAlone", kBroker, kBuy, Null{}, "", "-5.00"},
                      DirectionCase{"HouseOut", kHouse, kTransferOut, kBank, "Bank", "5.00"},
                      DirectionCase{"HouseIn", kHouse, kTransferIn, kBank, "Bank", "-5.00"},
                      DirectionCase{"HouseAlone", kHouse, kExpense, Null{}, "", "-5.00"}),
    [](const auto& the_case) { return the_case.param.name; });

// ---- dates that stand for none

class UnsetDate : public ::testing::TestWithParam<bool> {};

TEST_P(UnsetDate, ShowsEmpty) {
  const Date date = GetParam() ? Services().EarliestDate() : Services().LatestDate();
  SmallStore builder = Accounts();
  builder.Transaction({.date = date, .total = 5, .account = kBank});
  Schedule(builder, 1);
  const auto store = builder.Open();
  GrowingArray<CalendarRow> rows;
  PaymentCalendarRows(*store, Services().EarliestDate(), Services().LatestDate(), rows, kBoth,
                      NumberLocale{});
  EXPECT_THAT(rows.elements(), ElementsAre(ElementsAre("", "Monthly", "", "Bank", "", "5.00")));
}

INSTANTIATE_TEST_SUITE_P(AtEitherEnd, UnsetDate, ::testing::Bool());

// ---- failures

TEST(PaymentCalendar, FailsWithoutARow) {
  const auto store = Accounts().Open();
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { RowsOf(*store); }));
}

struct FailingRecord {
  std::string name;
  TestTransaction record;
};

void PrintTo(const FailingRecord& a_case, std::ostream* out) { *out << a_case.name; }

// One record that is good and one that is not.
class CalendarRecord : public ::testing::TestWithParam<FailingRecord> {
 protected:
  static SmallStore Store() {
    SmallStore builder = Accounts();
    builder.Transaction({.total = 5, .account = kBank}).Transaction(GetParam().record);
    Schedule(builder, 1);
    Schedule(builder, 2);
    return builder;
  }
};

TEST_P(CalendarRecord, LeavesTheReportItsTitleAndCaption) {
  EXPECT_EQ(ReportOfJanuary(Store(), 10), kJanuaryHeading);
}

// The names are looked up before the directions are asked for.
TEST_P(CalendarRecord, DoesSoWhereItWouldNotBeListed) {
  EXPECT_EQ(ReportOfJanuary(Store(), 9), kJanuaryHeading);
}

TEST_P(CalendarRecord, HasAllClosed) {
  const auto store = Store().Open();
  KeepingStore keeping(*store);
  EXPECT_ANY_THROW(RowsOf(*keeping));
  const auto opened = [](const std::string& event) { return event.starts_with("open "); };
  EXPECT_EQ(std::ranges::count_if(keeping.events, opened), 5);
  EXPECT_EQ(keeping.events.size(), 10U);
}

INSTANTIATE_TEST_SUITE_P(
    ThatIsDamaged, CalendarRecord,
    ::testing::Values(
        FailingRecord{"NoAccount", {.total = 5}},
        FailingRecord{"AccountNotThere", {.total = 5, .account = 99}},
        FailingRecord{"OtherEndNotThere", {.total = 5, .account = kBroker, .other_account = 99}},
        FailingRecord{"PayeeNotThere", {.total = 5, .account = kBank, .payee = 99}},
        FailingRecord{"CategoryNotThere", {.total = 5, .account = kBank, .category = 99}},
        FailingRecord{"PartNotThere", {.total = 5, .account = kBank, .sub_category = 99}}),
    [](const auto& the_case) { return the_case.param.name; });

// ---- text and openings

TEST(PaymentCalendar, IsReadInThisOrder) {
  SmallStore builder = Accounts();
  builder.Transaction({.total = 5, .account = kBank});
  Schedule(builder, 1);
  const auto store = builder.Open();
  KeepingStore keeping(*store);
  RowsOf(*keeping);
  keeping.events.resize(5);
  EXPECT_THAT(keeping.events,
              ElementsAre("open Account", "open Category", "open Payee", "open SubCategory",
                          "open SELECT T1.FrequencyType,T1.FrequencyExtInfo,T2.* FROM "
                          "PaymentCalendar AS T1,TransactionRecord AS T2 WHERE "
                          "T1.TransactionRecordNumber=T2.TransactionRecordNumber AND "
                          "T2.TransactionDate>=#2026-01-01# AND T2.TransactionDate<=#2026-01-31# "
                          "ORDER BY T2.TransactionDate,T2.TransactionRecordNumber"));
}

// ---- as reports

SmallStore BothWays() {
  SmallStore builder = Accounts();
  builder
      .Transaction({.type = kExpense,
                    .date = Day(2026, 1, 10),
                    .total = 40,
                    .account = kBank,
                    .category = 1,
                    .payee = 1})
      .Transaction({.type = kIncome, .date = Day(2026, 1, 20), .total = 900, .account = kBank});
  Schedule(builder, 1);
  Schedule(builder, 2, 2, 2);
  return builder;
}

// A text that ends at the right edge of a column of so many characters.
std::string AtRight(std::size_t width, const std::string& text) {
  return std::string(width + 1 - text.size(), ' ') + text;
}

std::string Header(std::size_t rule) {
  return kJanuaryHeading + "Date\tFrequency\tPayee\tAccount\tCategory\t" + AtRight(6, "Amount") +
         "\r\n" + std::string(rule, '_') + "\r\n\r\n";
}

const std::string kPayment = "2026/01/10\tMonthly\tShop\tBank\tFood\t" + AtRight(6, "-40.00");
const std::string kDeposit = "2026/01/20\tEvery 2 weeks\t\tBank\t\t" + AtRight(6, "900.00");

TEST(PaymentCalendarReport, NineListsThePayments) {
  EXPECT_EQ(ReportOfJanuary(BothWays(), 9), Header(10 + 9 + 5 + 7 + 8 + 6 + 9) + kPayment);
}

TEST(PaymentCalendarReport, FiftyFourListsTheDeposits) {
  EXPECT_EQ(ReportOfJanuary(BothWays(), 54), Header(10 + 13 + 5 + 7 + 8 + 6 + 9) + kDeposit);
}

TEST(PaymentCalendarReport, TenListsBothWithoutALineEndAtItsEnd) {
  EXPECT_EQ(ReportOfJanuary(BothWays(), 10),
            Header(10 + 13 + 5 + 7 + 8 + 6 + 9) + kPayment + "\r\n" + kDeposit);
}

class CalendarNumber : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(CalendarNumber, WithoutARowIsTitleAndCaptionAlone) {
  EXPECT_EQ(ReportOfJanuary(Accounts(), GetParam()), kJanuaryHeading);
}

TEST_P(CalendarNumber, HasNoChart) {
  TestRow row = RowOfJanuary(GetParam());
  row.output = ChartOrReport::kChart;
  const auto store = BothWays().Row(row).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_EQ(drawing.chart.Title(), "");
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, CalendarNumber, ::testing::Values(9, 10, 54));

TEST(PaymentCalendarReport, HasFiveStopsAtTheColumnsBehindTheFirst) {
  const auto store = BothWays().Row(RowOfJanuary(10)).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("report", "SelTabCount"), ElementsAre("5"));
  // Columns of 10, 13, 5, 7 and 8 characters and the gap behind each.
  EXPECT_THAT(drawing.Puts("report", "SelTabs"),
              ElementsAre("1678.5", "3433.5", "4228.5", "5263.5", "6418.5"));
}

TEST(PaymentCalendarReport, WithoutARowHasTheStopsOfItsHeaders) {
  const auto store = Accounts().Row(RowOfJanuary(10)).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("report", "SelTabCount"), ElementsAre("5"));
}

}  // namespace
}  // namespace vetlo
