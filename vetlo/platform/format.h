#pragma once

#include <string>
#include <string_view>

#include "vetlo/platform/currency.h"

namespace vetlo {

// How the surroundings write numbers. Each text is UTF-8 and may have several bytes, or none.
struct NumberLocale {
  std::string decimal_point = ".";
  std::string thousands_separator = ",";
  std::string currency_sign = "$";
  bool sign_in_front = true;
};

// The picture of amounts, and of numbers with as many decimals as they have.
inline constexpr std::string_view kAmountPicture = "#,##0.00";

// Writes a number by a picture: `0` is a digit always shown, `#` one shown where it is
// significant, `,` before the point asks for groups of three, `.` is the decimal point and is
// shown whatever follows it. The number is taken to 15 significant digits and rounded half away
// from zero to the picture's last place; a minus sign stands in front unless all shown digits are
// zero. A number that is not finite fails with kOverflow, a picture with any other character with
// kInvalidCall.
std::string Format(double value, std::string_view picture, const NumberLocale& locale);

// The same from the exact decimal of an amount.
std::string Format(Currency value, std::string_view picture, const NumberLocale& locale);

// Quantities and prices with as many decimals as they have: no point behind a whole number.
std::string FormatTrimmedNumber(Currency value, const NumberLocale& locale);
std::string FormatTrimmedPrice(double value, const NumberLocale& locale);

enum class LeadingDigit { kNo, kYes };

// An amount with the locale's currency sign, so many digits behind the point. Without a leading
// digit a zero before the point is left out: with no digits behind it either, the sign alone
// remains.
std::string FormatCurrency(double value, int digits, LeadingDigit leading,
                           const NumberLocale& locale);

}  // namespace vetlo
