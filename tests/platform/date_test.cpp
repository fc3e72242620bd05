#include "vetlo/platform/date.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

struct Serial {
  std::int64_t year, month, day;
};

struct CarriedSerial {
  Serial asked;
  const char* date;
};

std::string SerialText(const Serial& asked) {
  return IsoDateText(DateSerial(asked.year, asked.month, asked.day));
}

std::string Shown(const Serial& asked) {
  return std::to_string(asked.year) + " " + std::to_string(asked.month) + " " +
         std::to_string(asked.day);
}

template <std::size_t kCount>
void ExpectCarried(const CarriedSerial (&cases)[kCount]) {
  for (const auto& [asked, date] : cases) {
    EXPECT_EQ(SerialText(asked), date) << Shown(asked);
  }
}

template <std::size_t kCount>
void ExpectSerialsRaise(FailureNumber number, const Serial (&cases)[kCount]) {
  for (const Serial& asked : cases) {
    EXPECT_TRUE(Raises(number, [&] { DateSerial(asked.year, asked.month, asked.day); }))
        << Shown(asked);
  }
}

TEST(Date, CountsDaysFromTheLastButOneDayOf1899) {
  EXPECT_EQ(DateSerial(1899, 12, 30).days, 0);
  EXPECT_EQ(DateSerial(1899, 12, 29).days, -1);
  EXPECT_EQ(DateSerial(1900, 1, 1).days, 2);
  EXPECT_EQ(DateSerial(1970, 1, 1).days, 25569);
  EXPECT_EQ(DateSerial(2000, 2, 29).days, 36585);
}

TEST(Date, FirstAndLastRealDateAreTheBordersOfTheCalendar) {
  EXPECT_EQ(IsoDateText(kFirstRealDate), "0100-01-01");
  EXPECT_EQ(IsoDateText(kLastRealDate), "9999-12-31");
}

TEST(IsRealDate, HoldsFromTheFirstDayToTheEndOfTheLast) {
  EXPECT_TRUE(IsRealDate(kFirstRealDate));
  EXPECT_TRUE(IsRealDate(Date{0}));
  EXPECT_TRUE(IsRealDate(Date{kLastRealDate.days + 0.999}));
}

TEST(IsRealDate, RefusesWhatLiesOutside) {
  EXPECT_FALSE(IsRealDate(Date{kFirstRealDate.days - 0.001}));
  EXPECT_FALSE(IsRealDate(Date{kLastRealDate.days + 1}));
  EXPECT_FALSE(IsRealDate(Date{kInfinity}));
  EXPECT_FALSE(IsRealDate(Date{-kInfinity}));
  EXPECT_FALSE(IsRealDate(Date{kNotANumber}));
}

TEST(DayOf, DropsTheTime) { EXPECT_EQ(DayOf(Date{46082.75}), Date{46082}); }

TEST(DayOf, CountsTheTimeForwardBeforeDayZeroToo) { EXPECT_EQ(DayOf(Date{-1.25}), Date{-2}); }

TEST(CalendarDayOf, GivesYearMonthAndDay) {
  EXPECT_EQ(CalendarDayOf(Date{36585}), (CalendarDay{2000, 2, 29}));
}

TEST(CalendarDayOf, LeavesTheTimeAside) {
  EXPECT_EQ(CalendarDayOf(Date{kLastRealDate.days + 0.999}), (CalendarDay{9999, 12, 31}));
  EXPECT_EQ(CalendarDayOf(Date{-1.25}), (CalendarDay{1899, 12, 28}));
}

TEST(CalendarDayOf, FailsForADateThatThereIsNot) {
  for (const double days :
       {kFirstRealDate.days - 1, kLastRealDate.days + 1, 1e300, kInfinity, kNotANumber}) {
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { CalendarDayOf(Date{days}); })) << days;
  }
}

TEST(CalendarDayOf, UndoesDateSerialOnTheFirstAndLastDayOfEveryMonth) {
  for (std::int32_t year = 100; year <= 9999; ++year) {
    for (std::int32_t month = 1; month <= 12; ++month) {
      const Date first = DateSerial(year, month, 1);
      const Date last = DateSerial(year, month + 1, 0);
      ASSERT_EQ(CalendarDayOf(first), (CalendarDay{year, month, 1}));
      ASSERT_EQ(CalendarDayOf(last).month, month) << year;
      ASSERT_EQ(CalendarDayOf(last).day, last.days - first.days + 1) << year << "-" << month;
    }
  }
}

TEST(DateSerial, CarriesAMonthOutsideTheYear) {
  ExpectCarried({{{2026, 0, 1}, "2025-12-01"},
                 {{2026, -11, 1}, "2025-01-01"},
                 {{2026, -12, 1}, "2024-12-01"},
                 {{2026, 13, 1}, "2027-01-01"},
                 {{2026, 24, 31}, "2027-12-31"},
                 {{2026, 25, 1}, "2028-01-01"}});
}

TEST(DateSerial, CarriesADayOutsideTheMonth) {
  ExpectCarried({{{2026, 1, 32}, "2026-02-01"},
                 {{2026, 1, 366}, "2027-01-01"},
                 {{2026, 3, 0}, "2026-02-28"},
                 {{2026, 1, -1}, "2025-12-30"},
                 {{2026, 4, 31}, "2026-05-01"}});
}

TEST(DateSerial, CarriesTheMonthBeforeTheDay) {
  ExpectCarried({{{2023, 14, 29}, "2024-02-29"}, {{2026, 0, 32}, "2026-01-01"}});
}

TEST(DateSerial, KnowsTheLeapYears) {
  ExpectCarried({{{2024, 2, 29}, "2024-02-29"},
                 {{2000, 2, 29}, "2000-02-29"},
                 {{2023, 2, 29}, "2023-03-01"},
                 {{1900, 2, 29}, "1900-03-01"},
                 {{100, 2, 29}, "0100-03-01"}});
}

TEST(DateSerial, MayCarryFromOutsideIntoTheCalendar) {
  ExpectCarried({{{99, 13, 1}, "0100-01-01"},
                 {{99, 12, 32}, "0100-01-01"},
                 {{10000, 0, 31}, "9999-12-31"},
                 {{10000, 1, 0}, "9999-12-31"}});
}

TEST(DateSerial, FailsForADateThatThereIsNot) {
  ExpectSerialsRaise(FailureNumber::kInvalidCall, {{99, 12, 31},
                                                   {100, 1, 0},
                                                   {100, 0, 31},
                                                   {9999, 12, 32},
                                                   {9999, 13, 1},
                                                   {10000, 1, 1},
                                                   {0, 1, 1},
                                                   {-1, 1, 1},
                                                   {32767, 32767, 32767},
                                                   {-32768, -32768, -32768}});
}

TEST(DateSerial, OverflowsPast16BitsOfAnyArgument) {
  ExpectSerialsRaise(FailureNumber::kOverflow, {{32768, 1, 1},
                                                {-32769, 1, 1},
                                                {2026, 32768, 1},
                                                {2026, -32769, 1},
                                                {2026, 1, 32768},
                                                {2026, 1, -32769},
                                                {std::numeric_limits<std::int64_t>::max(), 1, 1}});
}

TEST(DateSerial, TakesAnyArgumentOf16Bits) {
  ExpectCarried({{{2026, 1, 32767}, "2115-09-18"},
                 {{2026, 1, -32768}, "1936-04-14"},
                 {{2026, 32767, 1}, "4756-07-01"}});
}

TEST(FirstOfMonth, CarriesTheMonth) {
  EXPECT_EQ(IsoDateText(FirstOfMonth(2026, 0)), "2025-12-01");
  EXPECT_EQ(IsoDateText(FirstOfMonth(2026, 13)), "2027-01-01");
}

TEST(AddDays, KeepsTheTime) { EXPECT_EQ(AddDays(Date{46082.25}, -2), Date{46080.25}); }

TEST(AddDays, ReachesTheBordersOfTheCalendar) {
  EXPECT_EQ(AddDays(Date{kLastRealDate.days - 1}, 1), kLastRealDate);
  EXPECT_EQ(AddDays(Date{kFirstRealDate.days + 1}, -1), kFirstRealDate);
}

TEST(AddDays, OverflowsWhereThereIsNoDate) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { AddDays(kLastRealDate, 1); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { AddDays(kFirstRealDate, -1); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { AddDays(Date{0}, kNotANumber); }));
}

TEST(DayText, PadsEveryPart) {
  EXPECT_EQ(DayText({26, 3, 1}, '/'), "0026/03/01");
  EXPECT_EQ(DayText({2026, 12, 31}, '.'), "2026.12.31");
}

TEST(IsoDateText, LeavesTheTimeAside) { EXPECT_EQ(IsoDateText(Date{46082.75}), "2026-03-01"); }

TEST(IsoDateText, FailsForADateThatThereIsNot) {
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [] { IsoDateText(Date{2958466}); }));
}

TEST(ParseIsoDate, UndoesIsoDateText) {
  for (const char* text : {"2026-03-01", "2024-02-29", "0100-01-01", "9999-12-31", "1899-12-29"}) {
    EXPECT_EQ(IsoDateText(ParseIsoDate(text)), text);
  }
}

TEST(ParseIsoDate, RefusesAnotherShape) {
  for (const char* text :
       {"", "2026-3-1", "2026-03-01 ", " 2026-03-01", "2026/03/01", "20260301", "26-03-01",
        "+026-03-01", "-026-03-01", "2026-03-0a", "2026-+3-01", "2026-03-01T00:00"}) {
    EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { ParseIsoDate(text); })) << text;
  }
}

TEST(ParseIsoDate, RefusesADayThatThereIsNot) {
  for (const char* text : {"2023-02-29", "2026-04-31", "2026-00-10", "2026-13-01", "2026-01-00",
                           "0099-12-31", "0000-00-00", "9999-12-32", "9999-12-99"}) {
    EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { ParseIsoDate(text); })) << text;
  }
}

}  // namespace
}  // namespace vetlo
