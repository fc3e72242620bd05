#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace vetlo {

// A moment as days since 1899-12-30; the fraction is the time of day, counted forward from the
// start of the day. Real dates run from 0100-01-01 to 9999-12-31; a Date may hold a number
// outside of that, which is refused where the date is needed.
struct Date {
  double days = 0;

  friend constexpr auto operator<=>(Date, Date) = default;
};

inline constexpr Date kFirstRealDate{-657434};  // 0100-01-01
inline constexpr Date kLastRealDate{2958465};   // 9999-12-31

struct CalendarDay {
  std::int32_t year = 0;
  std::int32_t month = 0;  // 1 to 12
  std::int32_t day = 0;    // 1 to 31

  friend constexpr auto operator<=>(const CalendarDay&, const CalendarDay&) = default;
};

// True for a date whose day is one of the calendar.
bool IsRealDate(Date date);

// The whole part: the day without its time.
Date DayOf(Date date);

// Fails with kInvalidCall for a date that there is not.
CalendarDay CalendarDayOf(Date date);

// The date of year, month and day, a month or day outside its range carried into its neighbours.
// Fails with kOverflow where an argument leaves 16 bits, with kInvalidCall where the result is no
// date.
Date DateSerial(std::int64_t year, std::int64_t month, std::int64_t day);

// The first day of a month, in the manner of DateSerial: month 0 is the December before.
inline Date FirstOfMonth(std::int64_t year, std::int64_t month) {
  return DateSerial(year, month, 1);
}

// The date so many days later. Fails with kOverflow where that is no date.
Date AddDays(Date date, double days);

// "YYYY-MM-DD", the four-digit year first. Fails with kInvalidCall for a date that there is not.
std::string IsoDateText(Date date);

// Reads "YYYY-MM-DD" strictly. Fails with kTypeMismatch for anything else.
Date ParseIsoDate(std::string_view text);

// The year, month and day between three parts of digits and `separator`, as "2026/03/01".
std::string DayText(const CalendarDay& day, char separator);

}  // namespace vetlo
