#include "vetlo/services/date_range.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using vetlo::testing::Day;
using vetlo::testing::SmallStore;
using vetlo::testing::TestRow;

const Date kEarliest = Services().EarliestDate();
const Date kLatest = Services().LatestDate();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

// Stands on a settings row of these stored dates.
class StoredRow {
 public:
  explicit StoredRow(const TestRow& row = {}, const std::string& damage = "") {
    SmallStore builder;
    builder.Row(row);
    if (!damage.empty()) {
      builder.Execute(damage);
    }
    store_ = builder.Open();
    rows_ = store_->OpenRecordset("ChartReportSubType");
    rows_->SetIndex(kPrimaryIndex);
    rows_->Seek("=", row.number);
  }

  [[nodiscard]] ResolvedRange Resolve(std::int32_t kind, std::int32_t n = 1,
                                      Date today = Day(2026, 3, 20)) const {
    return ResolveDateRange(kind, n, today, *rows_);
  }

 private:
  std::unique_ptr<Database> store_;
  std::unique_ptr<Recordset> rows_;
};

struct RangeCase {
  Date today;
  std::int32_t kind;
  std::int32_t n;
  Date from;
  Date to;
};

void PrintTo(const RangeCase& test, std::ostream* out) {
  *out << "kind " << test.kind << " of " << test.n << " on " << IsoDateText(test.today);
}

class ResolvedRanges : public ::testing::TestWithParam<RangeCase> {};

TEST_P(ResolvedRanges, FollowTheirKindAndTheDay) {
  const StoredRow row;
  const RangeCase& test = GetParam();
  const auto [from, to] = row.Resolve(test.kind, test.n, test.today);
  EXPECT_EQ(IsoDateText(from), IsoDateText(test.from));
  EXPECT_EQ(IsoDateText(to), IsoDateText(test.to));
  EXPECT_EQ(from, DayOf(from));
  EXPECT_EQ(to, DayOf(to));
}

const Date kMidYear = Day(2026, 7, 15);
INSTANTIATE_TEST_SUITE_P(
    InTheMiddleOfAYear, ResolvedRanges,
    ::testing::Values(RangeCase{kMidYear, 0, 5, kEarliest, kLatest},
                      RangeCase{kMidYear, 1, 5, kEarliest, kMidYear},
                      RangeCase{kMidYear, 2, 5, Day(2026, 7, 1), Day(2026, 7, 31)},
                      RangeCase{kMidYear, 3, 5, Day(2026, 1, 1), Day(2026, 12, 31)},
                      RangeCase{kMidYear, 4, 5, Day(2026, 7, 1), kMidYear},
                      RangeCase{kMidYear, 5, 5, Day(2026, 1, 1), kMidYear},
                      RangeCase{kMidYear, 6, 5, Day(2026, 6, 1), Day(2026, 6, 30)},
                      RangeCase{kMidYear, 7, 5, Day(2025, 1, 1), Day(2025, 12, 31)},
                      RangeCase{kMidYear, 8, 5, Day(2026, 6, 16), kMidYear},
                      RangeCase{kMidYear, 9, 5, Day(2026, 5, 1), kMidYear},
                      RangeCase{kMidYear, 10, 5, Day(2026, 2, 1), kMidYear},
                      RangeCase{kMidYear, 11, 5, Day(2025, 8, 1), kMidYear},
                      RangeCase{kMidYear, 12, 5, kEarliest, kLatest},
                      RangeCase{kMidYear, 13, 5, Day(2026, 7, 11), kMidYear},
                      RangeCase{kMidYear, 14, 5, Day(2026, 3, 1), kMidYear},
                      RangeCase{kMidYear, 15, 5, kEarliest, kLatest}));

const Date kJanuary = Day(2026, 1, 1);
INSTANTIATE_TEST_SUITE_P(
    OnTheFirstOfJanuary, ResolvedRanges,
    ::testing::Values(RangeCase{kJanuary, 2, 1, Day(2026, 1, 1), Day(2026, 1, 31)},
                      RangeCase{kJanuary, 4, 1, kJanuary, kJanuary},
                      RangeCase{kJanuary, 5, 1, kJanuary, kJanuary},
                      RangeCase{kJanuary, 6, 1, Day(2025, 12, 1), Day(2025, 12, 31)},
                      RangeCase{kJanuary, 7, 1, Day(2025, 1, 1), Day(2025, 12, 31)},
                      RangeCase{kJanuary, 8, 1, Day(2025, 12, 3), kJanuary},
                      RangeCase{kJanuary, 9, 1, Day(2025, 11, 1), kJanuary},
                      RangeCase{kJanuary, 10, 1, Day(2025, 8, 1), kJanuary},
                      RangeCase{kJanuary, 11, 1, Day(2025, 2, 1), kJanuary},
                      RangeCase{kJanuary, 13, 2, Day(2025, 12, 31), kJanuary},
                      RangeCase{kJanuary, 14, 2, Day(2025, 12, 1), kJanuary}));

const Date kDecember = Day(2026, 12, 31);
INSTANTIATE_TEST_SUITE_P(
    OnTheLastOfDecember, ResolvedRanges,
    ::testing::Values(RangeCase{kDecember, 2, 1, Day(2026, 12, 1), Day(2026, 12, 31)},
                      RangeCase{kDecember, 3, 1, Day(2026, 1, 1), Day(2026, 12, 31)},
                      RangeCase{kDecember, 5, 1, Day(2026, 1, 1), kDecember},
                      RangeCase{kDecember, 6, 1, Day(2026, 11, 1), Day(2026, 11, 30)},
                      RangeCase{kDecember, 7, 1, Day(2025, 1, 1), Day(2025, 12, 31)},
                      RangeCase{kDecember, 8, 1, Day(2026, 12, 2), kDecember},
                      RangeCase{kDecember, 11, 1, Day(2026, 1, 1), kDecember}));

INSTANTIATE_TEST_SUITE_P(
    InFebruary, ResolvedRanges,
    ::testing::Values(RangeCase{Day(2024, 2, 1), 2, 1, Day(2024, 2, 1), Day(2024, 2, 29)},
                      RangeCase{Day(2024, 2, 29), 2, 1, Day(2024, 2, 1), Day(2024, 2, 29)},
                      RangeCase{Day(2026, 2, 28), 2, 1, Day(2026, 2, 1), Day(2026, 2, 28)},
                      RangeCase{Day(2000, 2, 10), 2, 1, Day(2000, 2, 1), Day(2000, 2, 29)},
                      RangeCase{Day(2100, 2, 10), 2, 1, Day(2100, 2, 1), Day(2100, 2, 28)},
                      RangeCase{Day(2024, 3, 31), 6, 1, Day(2024, 2, 1), Day(2024, 2, 29)},
                      RangeCase{Day(2024, 3, 1), 8, 1, Day(2024, 2, 1), Day(2024, 3, 1)},
                      RangeCase{Day(2024, 2, 29), 7, 1, Day(2023, 1, 1), Day(2023, 12, 31)},
                      RangeCase{Day(2024, 2, 29), 11, 1, Day(2023, 3, 1), Day(2024, 2, 29)}));

const Date kToday = Day(2026, 3, 20);
INSTANTIATE_TEST_SUITE_P(OfSoManyDays, ResolvedRanges,
                         ::testing::Values(RangeCase{kToday, 13, 1, kToday, kToday},
                                           RangeCase{kToday, 13, 0, Day(2026, 3, 21), kToday},
                                           RangeCase{kToday, 13, -1, Day(2026, 3, 22), kToday},
                                           RangeCase{kToday, 13, 30, Day(2026, 2, 19), kToday},
                                           RangeCase{kToday, 13, 366, Day(2025, 3, 20), kToday},
                                           // As far back as there are days.
                                           RangeCase{kToday, 13, 703536, Day(100, 1, 1), kToday}));

INSTANTIATE_TEST_SUITE_P(OfSoManyMonths, ResolvedRanges,
                         ::testing::Values(RangeCase{kToday, 14, 1, Day(2026, 3, 1), kToday},
                                           RangeCase{kToday, 14, 0, Day(2026, 4, 1), kToday},
                                           RangeCase{kToday, 14, -1, Day(2026, 5, 1), kToday},
                                           RangeCase{kToday, 14, 3, Day(2026, 1, 1), kToday},
                                           RangeCase{kToday, 14, 4, Day(2025, 12, 1), kToday},
                                           RangeCase{kToday, 14, 12, Day(2025, 4, 1), kToday},
                                           RangeCase{kToday, 14, -10, Day(2027, 2, 1), kToday},
                                           // As far back as there are months.
                                           RangeCase{kToday, 14, 23115, Day(100, 1, 1), kToday}));

INSTANTIATE_TEST_SUITE_P(OfAKindThatThereIsNot, ResolvedRanges,
                         ::testing::Values(RangeCase{kToday, 16, 3, kEarliest, kLatest},
                                           RangeCase{kToday, 255, 3, kEarliest, kLatest},
                                           RangeCase{kToday, -1, 3, kEarliest, kLatest},
                                           RangeCase{kToday, kMost, 3, kEarliest, kLatest},
                                           RangeCase{kToday, kLeast, 3, kEarliest, kLatest}));

struct BoundCase {
  std::int32_t kind;
  std::int32_t n;
};

void PrintTo(const BoundCase& test, std::ostream* out) {
  *out << "kind " << test.kind << " of " << test.n;
}

class RangesOutOfTheCalendar : public ::testing::TestWithParam<BoundCase> {};

TEST_P(RangesOutOfTheCalendar, Fail) {
  const StoredRow row;
  EXPECT_NE(ResumeNext([&] { (void)row.Resolve(GetParam().kind, GetParam().n); }), 0);
}

INSTANTIATE_TEST_SUITE_P(OfMonths, RangesOutOfTheCalendar,
                         ::testing::Values(BoundCase{14, 23116}, BoundCase{14, 32771},
                                           BoundCase{14, 32772}, BoundCase{14, -32764},
                                           BoundCase{14, kMost}, BoundCase{14, kLeast}));

TEST(ResolveDateRange, AMonthPast16BitsOverflows) {
  const StoredRow row;
  for (const std::int32_t n : {32773, -32764, 65539, kMost, kLeast}) {
    EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { (void)row.Resolve(14, n); })) << n;
  }
}

// ---- stored dates

TEST(ResolveDateRange, TakesTheStoredEndOfARangeUpToADate) {
  const StoredRow row({.from = Day(2020, 1, 1), .to = Day(2025, 6, 30)});
  const auto [from, to] = row.Resolve(12);
  EXPECT_EQ(from, kEarliest);
  EXPECT_EQ(to, Day(2025, 6, 30));
}

TEST(ResolveDateRange, TakesBothStoredDatesOfARangeBetweenDates) {
  const StoredRow row({.from = Day(2020, 1, 1), .to = Day(2025, 6, 30)});
  const auto [from, to] = row.Resolve(15);
  EXPECT_EQ(from, Day(2020, 1, 1));
  EXPECT_EQ(to, Day(2025, 6, 30));
}

TEST(ResolveDateRange, AStoredDateThatIsNullIsAnOpenEnd) {
  const auto no_start = StoredRow({.to = Day(2025, 6, 30)}).Resolve(15);
  EXPECT_EQ(no_start.dtmFromDate, kEarliest);
  EXPECT_EQ(no_start.dtmToDate, Day(2025, 6, 30));
  const auto no_end = StoredRow({.from = Day(2020, 1, 1)}).Resolve(15);
  EXPECT_EQ(no_end.dtmFromDate, Day(2020, 1, 1));
  EXPECT_EQ(no_end.dtmToDate, kLatest);
}

TEST(ResolveDateRange, TakesStoredDatesAsTheyAre) {
  const StoredRow row({.from = Date{46000.75}, .to = Day(2020, 1, 1)});
  const auto [from, to] = row.Resolve(15);
  EXPECT_EQ(from, Date{46000.75});
  EXPECT_EQ(to, Day(2020, 1, 1));
}

TEST(ResolveDateRange, KindsWithoutStoredDatesLeaveThemAlone) {
  const StoredRow row({.from = Day(2020, 1, 1), .to = Day(2020, 6, 30)});
  for (std::int32_t kind = 0; kind <= 16; ++kind) {
    if (kind != 12 && kind != 15) {
      const auto [from, to] = row.Resolve(kind);
      EXPECT_NE(from, Day(2020, 1, 1)) << kind;
      EXPECT_NE(to, Day(2020, 6, 30)) << kind;
    }
  }
}

TEST(ResolveDateRange, AStoredValueThatIsNoDateFails) {
  for (const std::string value : {"'soon'", "3000000", "-657435"}) {
    const StoredRow no_start({}, "UPDATE ChartReportSubType SET FromDate = " + value);
    EXPECT_NE(ResumeNext([&] { (void)no_start.Resolve(15); }), 0) << value;
    const StoredRow no_end({}, "UPDATE ChartReportSubType SET ToDate = " + value);
    EXPECT_NE(ResumeNext([&] { (void)no_end.Resolve(15); }), 0) << value;
    EXPECT_NE(ResumeNext([&] { (void)no_end.Resolve(12); }), 0) << value;
  }
}

TEST(ResolveDateRange, AStoredValueThatNobodyAsksForDoesNotFail) {
  const StoredRow row({}, "UPDATE ChartReportSubType SET FromDate = 'soon'");
  EXPECT_EQ(ResumeNext([&] { (void)row.Resolve(12); }), 0);
  EXPECT_EQ(ResumeNext([&] { (void)row.Resolve(2); }), 0);
}

}  // namespace
}  // namespace vetlo
