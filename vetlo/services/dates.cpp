#include <array>
#include <cmath>
#include <string>

#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

constexpr int kSecondsPerDay = 86400;

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

struct DayAndSeconds {
  Date day;
  int seconds = 0;
};

// The moment to the nearest second.
DayAndSeconds SplitToSeconds(Date date) {
  Date day = DayOf(date);
  const double rest = date.days - day.days;
  int seconds = static_cast<int>(std::lround(rest * kSecondsPerDay));
  if (seconds == kSecondsPerDay && day == DayOf(kLastRealDate)) {
    seconds = kSecondsPerDay - 1;
  }
  if (seconds == kSecondsPerDay) {
    day.days += 1;
    seconds = 0;
  }
  return {day, seconds};
}

bool IsSeparator(char c) { return c == '/' || c == '-' || c == '.'; }

[[noreturn]] void RaiseNoDate() { throw Failure(FailureNumber::kTypeMismatch); }

// Year, month and day as they were typed.
std::array<std::string_view, 3> PartsOf(std::string_view text) {
  std::array<std::string_view, 3> parts;
  for (std::size_t part = 0; part < parts.size(); ++part) {
    std::size_t length = 0;
    while (length < text.size() && !IsSeparator(text[length])) {
      ++length;
    }
    parts.at(part) = text.substr(0, length);
    const bool last = part + 1 == parts.size();
    if (last != (length == text.size())) {
      RaiseNoDate();
    }
    text.remove_prefix(last ? length : length + 1);
  }
  return parts;
}

int NumberOf(std::string_view digits, std::size_t most_digits) {
  if (digits.empty() || digits.size() > most_digits) {
    RaiseNoDate();
  }
  int number = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') {
      RaiseNoDate();
    }
    number = number * 10 + (c - '0');
  }
  return number;
}

// Two digits stand for 1930 to 2029.
int YearOf(std::string_view digits) {
  constexpr int kFirstOfLastCentury = 30;
  constexpr std::size_t kMostDigits = 4;
  const int year = NumberOf(digits, kMostDigits);
  if (digits.size() > 2) {
    return year;
  }
  return year + (year >= kFirstOfLastCentury ? 1900 : 2000);
}

}  // namespace

std::string CommonServices::SqlDateLiteral(Date dtmDate) const {
  const auto [day, seconds] = SplitToSeconds(dtmDate);
  std::string text = "#" + IsoDateText(day);
  if (seconds != 0) {
    text += " " + TwoDigits(seconds / 3600) + ":" + TwoDigits(seconds / 60 % 60) + ":" +
            TwoDigits(seconds % 60);
  }
  return text + "#";
}

std::string CommonServices::DateDisplayText(Date dtmDate) const {
  return DayText(CalendarDayOf(dtmDate), '/');
}

Date CommonServices::ParseDateText(std::string_view strText) const {
  const auto [year, month, day] = PartsOf(strText);
  const CalendarDay asked{YearOf(year), NumberOf(month, 2), NumberOf(day, 2)};
  // A day that does not exist carries into another one, and so is seen to be none.
  Date date;
  if (ResumeNext([&] { date = DateSerial(asked.year, asked.month, asked.day); }) != 0 ||
      CalendarDayOf(date) != asked) {
    RaiseNoDate();
  }
  return date;
}

}  // namespace vetlo
