#pragma once

#include <compare>
#include <cstdint>

namespace vetlo {

// An amount of money: a signed 64-bit count of ten-thousandths of the currency unit.
// Sums are exact; one that leaves 64 bits fails with kOverflow.
class Currency {
 public:
  constexpr Currency() = default;

  // 12.34 is FromUnits(123400).
  static constexpr Currency FromUnits(std::int64_t units) {
    Currency amount;
    amount.units_ = units;
    return amount;
  }

  [[nodiscard]] constexpr std::int64_t units() const { return units_; }

  Currency operator-() const;
  friend Currency operator+(Currency a, Currency b);
  friend Currency operator-(Currency a, Currency b);
  Currency& operator+=(Currency other) { return *this = *this + other; }
  Currency& operator-=(Currency other) { return *this = *this - other; }

  friend constexpr auto operator<=>(Currency, Currency) = default;

 private:
  std::int64_t units_ = 0;
};

// The double nearest to the amount.
double ToDouble(Currency amount);

// Rounds to four decimals, an exact half to the even neighbour, judged on the value that the
// double really has. Fails with kOverflow past 64 bits and for a value that is no number.
Currency CCur(double value);

// True where a part is more than this share of the whole, strictly. Of a whole of nothing any part
// but nothing is.
bool ExceedsShare(Currency part, Currency whole, double share);

}  // namespace vetlo
