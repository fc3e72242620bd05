#include "vetlo/services/date_range_caption.h"

#include <gtest/gtest.h>

#include "tests/support/raises.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

const Date kEarliest = Services().EarliestDate();
const Date kLatest = Services().LatestDate();
const Date kStart = DateSerial(2026, 1, 5);
const Date kEnd = DateSerial(2026, 11, 30);

TEST(DateRangeCaption, NamesBothEnds) {
  EXPECT_EQ(DateRangeCaption(kStart, kEnd), "2026/01/05 Through 2026/11/30");
}

TEST(DateRangeCaption, NamesTheEndOfARangeWithoutAStart) {
  EXPECT_EQ(DateRangeCaption(kEarliest, kEnd), "Up to 2026/11/30");
}

TEST(DateRangeCaption, NamesTheStartOfARangeWithoutAnEnd) {
  EXPECT_EQ(DateRangeCaption(kStart, kLatest), "From 2026/01/05");
}

TEST(DateRangeCaption, IsEmptyForARangeWithoutEnds) {
  EXPECT_EQ(DateRangeCaption(kEarliest, kLatest), "");
}

TEST(DateRangeCaption, TakesTheDaysBesideTheSentinelsForEnds) {
  EXPECT_EQ(DateRangeCaption(Date{kEarliest.days + 1}, kLatest), "From 0100/01/02");
  EXPECT_EQ(DateRangeCaption(kEarliest, Date{kLatest.days - 1}), "Up to 9998/12/30");
  EXPECT_EQ(DateRangeCaption(kEarliest, Date{kLatest.days + 1}), "Up to 9999/01/01");
}

TEST(DateRangeCaption, ComparesTheTimeOfDayToo) {
  EXPECT_EQ(DateRangeCaption(Date{kEarliest.days + 0.5}, kLatest), "From 0100/01/01");
}

TEST(DateRangeCaption, NamesTheEndsOfARangeThatRunsBackwards) {
  EXPECT_EQ(DateRangeCaption(kEnd, kStart), "2026/11/30 Through 2026/01/05");
}

TEST(DateRangeCaption, FailsForADateThatThereIsNot) {
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [] { DateRangeCaption(Date{-700000}, kEnd); }));
}

}  // namespace
}  // namespace vetlo
