#include "vetlo/platform/currency.h"

#include <cmath>
#include <limits>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

constexpr int kUnitsPerOne = 10000;
constexpr int kMantissaBits = 53;

[[noreturn]] void RaiseOverflow() { throw Failure(FailureNumber::kOverflow); }

// __int128 is an extension that the compilers of this project share; a product of a 53-bit
// mantissa and 10000 needs 67 bits.
__extension__ using Wide = __int128;

Wide DivideByPowerOfTwoToEven(Wide value, int power) {
  if (power > 100) {
    return 0;
  }
  const Wide divisor = Wide{1} << power;
  Wide quotient = value / divisor;
  const Wide twice = 2 * (value % divisor);
  const bool up = twice > divisor || (twice == divisor && quotient % 2 != 0);
  return up ? quotient + 1 : quotient;
}

}  // namespace

Currency Currency::operator-() const { return Currency{} - *this; }

Currency operator+(Currency a, Currency b) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(a.units_, b.units_, &sum)) {
    RaiseOverflow();
  }
  return Currency::FromUnits(sum);
}

Currency operator-(Currency a, Currency b) {
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(a.units_, b.units_, &difference)) {
    RaiseOverflow();
  }
  return Currency::FromUnits(difference);
}

double ToDouble(Currency amount) {
  constexpr std::int64_t kExactInADouble = std::int64_t{1} << kMantissaBits;
  const std::int64_t units = amount.units();
  if (units >= -kExactInADouble && units <= kExactInADouble) {
    return static_cast<double>(units) / kUnitsPerOne;
  }
  // Whole ones are exact up to here, and no fraction of this few digits comes near enough to a
  // half of the last place to be rounded twice.
  const std::int64_t ones = units / kUnitsPerOne;
  return static_cast<double>(ones) + static_cast<double>(units % kUnitsPerOne) / kUnitsPerOne;
}

Currency CCur(double value) {
  constexpr double kBeyond = 1e15;  // 2^63 ten-thousandths are less than that many ones
  if (!(std::fabs(value) < kBeyond)) {
    RaiseOverflow();
  }
  int exponent = 0;
  const double fraction = std::frexp(std::fabs(value), &exponent);
  const auto mantissa = static_cast<std::int64_t>(std::ldexp(fraction, kMantissaBits));
  const int power = kMantissaBits - exponent;
  const Wide scaled = Wide{mantissa} * kUnitsPerOne;
  const Wide units = power > 0 ? DivideByPowerOfTwoToEven(scaled, power) : scaled << -power;
  const Wide limit = Wide{std::numeric_limits<std::int64_t>::max()} + (value < 0 ? 1 : 0);
  if (units > limit) {
    RaiseOverflow();
  }
  return Currency::FromUnits(static_cast<std::int64_t>(value < 0 ? -units : units));
}

bool ExceedsShare(Currency part, Currency whole, double share) {
  if (whole == Currency{}) {
    return part != Currency{};
  }
  // Of the counts of ten-thousandths, which doubles hold: a part that is just the share gives just
  // the share, where amounts such as 0.07 of 1.40 would not.
  return static_cast<double>(part.units()) / static_cast<double>(whole.units()) > share;
}

}  // namespace vetlo
