#include "vetlo/platform/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

constexpr std::size_t kSignificantDigits = 15;
constexpr int kCurrencyDecimals = 4;
constexpr std::ptrdiff_t kGroup = 3;

// A number as decimal digits: 12.34 is the digits "1234" with point 2, 0.05 is "5" with point -1.
struct Decimal {
  bool negative = false;
  std::string digits;
  std::ptrdiff_t point = 0;  // how many of the digits stand before the decimal point

  // Keeps the first `count` digits, rounding half away from zero; a negative count leaves nothing.
  void RoundTo(std::ptrdiff_t count) {
    if (count >= static_cast<std::ptrdiff_t>(digits.size())) {
      return;
    }
    const bool up = count >= 0 && digits[static_cast<std::size_t>(count)] >= '5';
    digits.resize(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)));
    if (up) {
      Increment();
    }
  }

  // The digit that stands `place` places behind the point (0 is the first decimal, -1 the ones).
  [[nodiscard]] char DigitAt(std::ptrdiff_t place) const {
    const std::ptrdiff_t at = point + place;
    const bool inside = at >= 0 && at < static_cast<std::ptrdiff_t>(digits.size());
    return inside ? digits[static_cast<std::size_t>(at)] : '0';
  }

 private:
  void Increment() {
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
      if (*digit != '9') {
        ++*digit;
        return;
      }
      *digit = '0';
    }
    digits.insert(digits.begin(), '1');
    ++point;
  }
};

Decimal DecimalOf(double value) {
  if (!std::isfinite(value)) {
    throw Failure(FailureNumber::kOverflow);
  }
  // Twice the digits that count: enough to see on which side of a half the value lies.
  constexpr int kDigitsBehindFirst = 30;
  char buffer[kDigitsBehindFirst + 16] = {};  // ends in a NUL, which strtol needs
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                    std::chars_format::scientific, kDigitsBehindFirst);
  const std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
  const std::size_t mark = text.find('e');
  Decimal decimal;
  decimal.negative = value < 0;
  decimal.digits = text.substr(0, 1);
  decimal.digits += text.substr(2, mark - 2);
  decimal.point = std::strtol(text.data() + mark + 1, nullptr, 10) + 1;
  decimal.RoundTo(kSignificantDigits);
  return decimal;
}

Decimal DecimalOf(Currency value) {
  Decimal decimal;
  decimal.negative = value.units() < 0;
  const auto magnitude = decimal.negative ? 0 - static_cast<std::uint64_t>(value.units())
                                          : static_cast<std::uint64_t>(value.units());
  decimal.digits = std::to_string(magnitude);
  decimal.point = static_cast<std::ptrdiff_t>(decimal.digits.size()) - kCurrencyDecimals;
  return decimal;
}

// A picture taken apart.
struct Picture {
  std::ptrdiff_t least_whole = 0;     // digits before the point that are always shown
  std::ptrdiff_t least_decimals = 0;  // decimals that are always shown
  std::ptrdiff_t most_decimals = 0;
  bool grouped = false;
  bool has_point = false;
};

Picture ReadPicture(std::string_view text) {
  Picture picture;
  for (const char c : text) {
    if (c == '.' && !picture.has_point) {
      picture.has_point = true;
    } else if (c == ',' && !picture.has_point) {
      picture.grouped = true;
    } else if ((c == '0' || c == '#') && picture.has_point) {
      ++picture.most_decimals;
      picture.least_decimals = c == '0' ? picture.most_decimals : picture.least_decimals;
    } else if (c == '0' || c == '#') {
      // An optional place behind an obligatory one is obligatory too.
      picture.least_whole += c == '0' || picture.least_whole > 0 ? 1 : 0;
    } else {
      throw Failure(FailureNumber::kInvalidCall);
    }
  }
  return picture;
}

std::string WholePart(const Decimal& number, const Picture& picture, const NumberLocale& locale) {
  std::ptrdiff_t count = std::max<std::ptrdiff_t>(number.point, 0);
  while (count > 0 && number.DigitAt(-count) == '0') {
    --count;
  }
  count = std::max(count, picture.least_whole);
  std::string text;
  for (std::ptrdiff_t left = count; left > 0; --left) {
    text += number.DigitAt(-left);
    if (picture.grouped && left > 1 && (left - 1) % kGroup == 0) {
      text += locale.thousands_separator;
    }
  }
  return text;
}

std::string Decimals(const Decimal& number, const Picture& picture) {
  std::ptrdiff_t count = picture.most_decimals;
  while (count > picture.least_decimals && number.DigitAt(count - 1) == '0') {
    --count;
  }
  std::string text;
  for (std::ptrdiff_t place = 0; place < count; ++place) {
    text += number.DigitAt(place);
  }
  return text;
}

std::string Write(Decimal number, std::string_view picture_text, const NumberLocale& locale) {
  const Picture picture = ReadPicture(picture_text);
  number.RoundTo(number.point + picture.most_decimals);
  const bool zero = number.digits.find_first_not_of('0') == std::string::npos;
  std::string text = number.negative && !zero ? "-" : "";
  text += WholePart(number, picture, locale);
  if (picture.has_point) {
    text += locale.decimal_point;
  }
  return text + Decimals(number, picture);
}

std::string WithoutTrailingPoint(std::string text, const NumberLocale& locale) {
  if (!locale.decimal_point.empty() && text.ends_with(locale.decimal_point)) {
    text.resize(text.size() - locale.decimal_point.size());
  }
  return text;
}

}  // namespace

std::string Format(double value, std::string_view picture, const NumberLocale& locale) {
  return Write(DecimalOf(value), picture, locale);
}

std::string Format(Currency value, std::string_view picture, const NumberLocale& locale) {
  return Write(DecimalOf(value), picture, locale);
}

std::string FormatTrimmedNumber(Currency value, const NumberLocale& locale) {
  return WithoutTrailingPoint(Format(value, "#,##0.##", locale), locale);
}

std::string FormatTrimmedPrice(double value, const NumberLocale& locale) {
  return WithoutTrailingPoint(Format(value, "#,##0.######", locale), locale);
}

std::string FormatCurrency(double value, int digits, LeadingDigit leading,
                           const NumberLocale& locale) {
  std::string picture = leading == LeadingDigit::kYes ? "#,##0" : "#,###";
  if (digits > 0) {
    picture += '.' + std::string(static_cast<std::size_t>(digits), '0');
  }
  std::string number = Format(std::fabs(value), picture, locale);
  number = locale.sign_in_front ? locale.currency_sign + number : number + locale.currency_sign;
  const bool zero = number.find_first_of("123456789") == std::string::npos;
  return value < 0 && !zero ? "-" + number : number;
}

}  // namespace vetlo
