#include "quillmarsh/sample/dice.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace quillmarsh {
namespace {

std::vector<std::int64_t> Rolls(std::uint64_t seed) {
  Dice dice(seed);
  std::vector<std::int64_t> rolls;
  rolls.reserve(5);
  for (int i = 0; i < 5; ++i) {
    rolls.push_back(dice.Roll(1, 1000));
  }
  return rolls;
}

TEST(Dice, RollTheSameOnEveryPlatform) {
  EXPECT_EQ(Rolls(1), (std::vector<std::int64_t>{466, 520, 591, 236, 762}));
}

TEST(Dice, RollOtherwiseFromAnotherSeed) { EXPECT_NE(Rolls(1), Rolls(2)); }

TEST(Dice, ReachBothEndsAndNothingBeyond) {
  Dice dice(3);
  std::set<std::int64_t> seen;
  for (int i = 0; i < 200; ++i) {
    seen.insert(dice.Roll(-1, 2));
  }
  EXPECT_EQ(seen, (std::set<std::int64_t>{-1, 0, 1, 2}));
}

TEST(Dice, HaveOneFaceWhereTheEndsMeet) {
  Dice dice(3);
  EXPECT_EQ(dice.Roll(7, 7), 7);
}

TEST(Dice, StayWithinThePercentageAround) {
  Dice dice(4);
  for (int i = 0; i < 200; ++i) {
    const std::int64_t amount = dice.Around(1000, 20);
    EXPECT_GE(amount, 800);
    EXPECT_LE(amount, 1200);
  }
}

TEST(Dice, GiveTheAmountItselfWithoutAPercentage) {
  Dice dice(4);
  EXPECT_EQ(dice.Around(1234, 0), 1234);
}

}  // namespace
}  // namespace quillmarsh
