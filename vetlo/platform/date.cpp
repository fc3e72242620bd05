#include "vetlo/platform/date.h"

#include <chrono>
#include <cmath>
#include <limits>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

// 1899-12-30 counted from the epoch of std::chrono.
constexpr std::int64_t kDayZero =
    std::chrono::sys_days{std::chrono::year{1899} / 12 / 30}.time_since_epoch().count();

bool FitsSixteenBits(std::int64_t value) {
  return value >= std::numeric_limits<std::int16_t>::min() &&
         value <= std::numeric_limits<std::int16_t>::max();
}

void AppendPadded(std::string& text, std::int32_t number, std::size_t width) {
  const std::string digits = std::to_string(number);
  text.append(width > digits.size() ? width - digits.size() : 0, '0');
  text += digits;
}

// The number of exactly `width` digits at `at`, or -1.
std::int32_t FixedDigits(std::string_view text, std::size_t at, std::size_t width) {
  std::int32_t number = 0;
  for (std::size_t i = at; i < at + width; ++i) {
    if (text[i] < '0' || text[i] > '9') {
      return -1;
    }
    number = number * 10 + (text[i] - '0');
  }
  return number;
}

}  // namespace

bool IsRealDate(Date date) {
  return date.days >= kFirstRealDate.days && date.days < kLastRealDate.days + 1;
}

Date DayOf(Date date) { return Date{std::floor(date.days)}; }

CalendarDay CalendarDayOf(Date date) {
  if (!IsRealDate(date)) {
    throw Failure(FailureNumber::kInvalidCall, "a date outside the years 100 to 9999");
  }
  const auto whole = static_cast<std::int32_t>(DayOf(date).days);
  const std::chrono::year_month_day day{
      std::chrono::sys_days{std::chrono::days{whole + static_cast<std::int32_t>(kDayZero)}}};
  return {int{day.year()}, static_cast<std::int32_t>(unsigned{day.month()}),
          static_cast<std::int32_t>(unsigned{day.day()})};
}

Date DateSerial(std::int64_t year, std::int64_t month, std::int64_t day) {
  if (!FitsSixteenBits(year) || !FitsSixteenBits(month) || !FitsSixteenBits(day)) {
    throw Failure(FailureNumber::kOverflow);
  }
  const std::int64_t months = year * 12 + (month - 1);
  const std::int64_t carried_year = months >= 0 ? months / 12 : (months - 11) / 12;
  const auto carried_month = static_cast<unsigned>(months - carried_year * 12 + 1);
  if (!FitsSixteenBits(carried_year)) {
    throw Failure(FailureNumber::kInvalidCall);
  }
  const std::chrono::sys_days first =
      std::chrono::year{static_cast<int>(carried_year)} / std::chrono::month{carried_month} / 1;
  const Date date{static_cast<double>(first.time_since_epoch().count() - kDayZero + day - 1)};
  if (!IsRealDate(date)) {
    throw Failure(FailureNumber::kInvalidCall);
  }
  return date;
}

Date AddDays(Date date, double days) {
  const Date sum{date.days + days};
  if (!IsRealDate(sum)) {
    throw Failure(FailureNumber::kOverflow);
  }
  return sum;
}

std::string DayText(const CalendarDay& day, char separator) {
  std::string text;
  AppendPadded(text, day.year, 4);
  text += separator;
  AppendPadded(text, day.month, 2);
  text += separator;
  AppendPadded(text, day.day, 2);
  return text;
}

std::string IsoDateText(Date date) { return DayText(CalendarDayOf(date), '-'); }

Date ParseIsoDate(std::string_view text) {
  const bool shaped = text.size() == 10 && text[4] == '-' && text[7] == '-';
  const CalendarDay asked = shaped ? CalendarDay{FixedDigits(text, 0, 4), FixedDigits(text, 5, 2),
                                                 FixedDigits(text, 8, 2)}
                                   : CalendarDay{-1, -1, -1};
  const std::chrono::year_month_day day{std::chrono::year{asked.year},
                                        std::chrono::month{static_cast<unsigned>(asked.month)},
                                        std::chrono::day{static_cast<unsigned>(asked.day)}};
  if (asked.year < 100 || !day.ok()) {
    throw Failure(FailureNumber::kTypeMismatch);
  }
  const auto days = std::chrono::sys_days{day}.time_since_epoch().count();
  return Date{static_cast<double>(days - kDayZero)};
}

}  // namespace vetlo
