#include "vetlo/platform/currency.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr Currency Units(std::int64_t units) { return Currency::FromUnits(units); }

struct Rounding {
  double value;
  std::int64_t units;
};

TEST(Currency, IsZeroAtFirst) { EXPECT_EQ(Currency().units(), 0); }

TEST(Currency, AddsExactlyUpToTheLastUnit) {
  EXPECT_EQ(Units(kMost - 1) + Units(1), Units(kMost));
  EXPECT_EQ(Units(kLeast + 1) + Units(-1), Units(kLeast));
  EXPECT_EQ(Units(kMost) + Units(kLeast), Units(-1));
}

TEST(Currency, SumPast64BitsOverflows) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { (void)(Units(kMost) + Units(1)); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { (void)(Units(kLeast) + Units(-1)); }));
}

TEST(Currency, SubtractsExactlyUpToTheLastUnit) {
  EXPECT_EQ(Units(kMost - 1) - Units(-1), Units(kMost));
  EXPECT_EQ(Units(kLeast + 1) - Units(1), Units(kLeast));
  EXPECT_EQ(Units(-1) - Units(kLeast), Units(kMost));
}

TEST(Currency, DifferencePast64BitsOverflows) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { (void)(Units(kMost) - Units(-1)); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { (void)(Units(kLeast) - Units(1)); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { (void)(Units(0) - Units(kLeast)); }));
}

TEST(Currency, NegatesTheGreatestAmount) { EXPECT_EQ(-Units(kMost), Units(kLeast + 1)); }

TEST(Currency, NegatingTheLeastAmountOverflows) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { (void)-Units(kLeast); }));
}

TEST(Currency, SumInPlaceThatOverflowsLeavesTheAmount) {
  Currency amount = Units(kMost);
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { amount += Units(1); }));
  EXPECT_EQ(amount, Units(kMost));
}

TEST(Currency, DifferenceInPlaceThatOverflowsLeavesTheAmount) {
  Currency amount = Units(kLeast);
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { amount -= Units(1); }));
  EXPECT_EQ(amount, Units(kLeast));
}

TEST(Currency, ComparesByAmount) {
  EXPECT_LT(Units(-1), Units(0));
  EXPECT_GT(Units(kMost), Units(kLeast));
}

TEST(CurrencyToDouble, IsTheNearestDouble) {
  EXPECT_EQ(ToDouble(Units(123400)), 12.34);
  EXPECT_EQ(ToDouble(Units(-1)), -0.0001);
  EXPECT_EQ(ToDouble(Units(9007199254740991)), 900719925474.0991);
}

TEST(CurrencyToDouble, IsTheNearestDoubleOfAmountsPast53Bits) {
  EXPECT_EQ(ToDouble(Units(637509808674084888)), 63750980867408.4888);
  EXPECT_EQ(ToDouble(Units(-637509808674084888)), -63750980867408.4888);
  EXPECT_EQ(ToDouble(Units(kMost)), 922337203685477.5807);
  EXPECT_EQ(ToDouble(Units(kLeast)), -922337203685477.5808);
}

TEST(CCur, KeepsFourDecimals) {
  EXPECT_EQ(CCur(12.34), Units(123400));
  EXPECT_EQ(CCur(-0.0001), Units(-1));
  EXPECT_EQ(CCur(0.1 + 0.2), Units(3000));
}

TEST(CCur, RoundsToTheNearestUnit) {
  EXPECT_EQ(CCur(1.00004), Units(10000));
  EXPECT_EQ(CCur(1.00006), Units(10001));
  EXPECT_EQ(CCur(-1.00006), Units(-10001));
}

// Odd multiples of 1/32 are all the exact halves there are.
TEST(CCur, RoundsAnExactHalfToTheEvenNeighbour) {
  constexpr Rounding kCases[] = {
      {1.0 / 32, 312},   // 312.5 ten-thousandths
      {3.0 / 32, 938},   // 937.5
      {5.0 / 32, 1562},  // 1562.5
      {7.0 / 32, 2188},  // 2187.5
      {1 + 1.0 / 32, 10312}, {-1.0 / 32, -312}, {-3.0 / 32, -938},
  };
  for (const auto& [value, units] : kCases) {
    EXPECT_EQ(CCur(value), Units(units)) << value;
  }
}

TEST(CCur, TellsTheNeighboursOfAnExactHalfFromIt) {
  EXPECT_EQ(CCur(std::nextafter(1.0 / 32, 1.0)), Units(313));
  EXPECT_EQ(CCur(std::nextafter(3.0 / 32, 0.0)), Units(937));
}

// None of these decimals has a double of its own: the nearest one lies above or below the half.
TEST(CCur, JudgesAHalfOnTheValueTheDoubleHas) {
  constexpr Rounding kCases[] = {
      {0.00005, 1},      // 0.000050000000000000002...
      {0.00015, 1},      // 0.000149999999999999986...
      {0.00025, 3},      // 0.000250000000000000005...
      {0.00035, 3},      // 0.000349999999999999996...
      {0.00045, 4},      // 0.000449999999999999987...
      {1.00005, 10001},  // 1.000050000000000105...
      {-0.00005, -1},    // as above, on the other side of zero
      {-0.00015, -1},
  };
  for (const auto& [value, units] : kCases) {
    EXPECT_EQ(CCur(value), Units(units)) << value;
  }
}

TEST(CCur, TakesTheSmallestDoublesForZero) {
  EXPECT_EQ(CCur(0.0), Units(0));
  EXPECT_EQ(CCur(-0.0), Units(0));
  EXPECT_EQ(CCur(std::numeric_limits<double>::denorm_min()), Units(0));
  EXPECT_EQ(CCur(-std::numeric_limits<double>::min()), Units(0));
}

// The doubles of this magnitude lie an eighth apart.
TEST(CCur, ReachesTheLastDoublesWithin64Bits) {
  EXPECT_EQ(CCur(922337203685477.5), Units(9223372036854775000));
  EXPECT_EQ(CCur(-922337203685477.5), Units(-9223372036854775000));
}

TEST(CCur, OverflowsPast64Bits) {
  for (const double value : {922337203685477.625, -922337203685477.625, 1e15, -1e15, 1e300,
                             std::numeric_limits<double>::max()}) {
    EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { CCur(value); })) << value;
  }
}

TEST(CCur, OverflowsForWhatIsNoNumber) {
  for (const double value : {kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { CCur(value); })) << value;
  }
}

TEST(ExceedsShare, HoldsAboveTheShareAlone) {
  EXPECT_TRUE(ExceedsShare(Units(26), Units(100), 0.25));
  EXPECT_FALSE(ExceedsShare(Units(25), Units(100), 0.25));
  EXPECT_FALSE(ExceedsShare(Units(24), Units(100), 0.25));
}

TEST(ExceedsShare, DoesNotHoldForATwentiethWhateverTheAmounts) {
  for (std::int64_t part = 1; part <= 20'000; ++part) {
    ASSERT_FALSE(ExceedsShare(Units(part), Units(20 * part), 0.05)) << part;
    ASSERT_TRUE(ExceedsShare(Units(part + 1), Units(20 * part), 0.05)) << part;
  }
}

TEST(ExceedsShare, MindsTheSignsOfPartAndWhole) {
  EXPECT_TRUE(ExceedsShare(Units(-26), Units(-100), 0.25));
  EXPECT_FALSE(ExceedsShare(Units(-26), Units(100), 0.25));
  EXPECT_FALSE(ExceedsShare(Units(26), Units(-100), 0.25));
}

TEST(ExceedsShare, HoldsForAnyPartButNothingOfAWholeOfNothing) {
  EXPECT_TRUE(ExceedsShare(Units(1), Units(0), 0.25));
  EXPECT_TRUE(ExceedsShare(Units(-1), Units(0), 0.25));
  EXPECT_FALSE(ExceedsShare(Units(0), Units(0), 0.25));
}

}  // namespace
}  // namespace vetlo
