#include "vetlo/platform/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace vetlo {
namespace {

// Two, three and four bytes long.
constexpr const char* kMixed = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x92\xB0z";

TEST(Trim, RemovesTheOuterBlanksAlone) {
  EXPECT_EQ(Trim("  a  b "), "a  b");
  EXPECT_EQ(Trim("a"), "a");
}

TEST(Trim, LeavesNothingOfBlanks) {
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(Trim, KeepsWhatIsNoBlank) { EXPECT_EQ(Trim(" \ta\r\n "), "\ta\r\n"); }

TEST(Str, PutsABlankInFrontOfANumberThatIsNotNegative) {
  EXPECT_EQ(Str(0), " 0");
  EXPECT_EQ(Str(11), " 11");
  EXPECT_EQ(Str(std::numeric_limits<std::int32_t>::max()), " 2147483647");
}

TEST(Str, PutsNothingInFrontOfAMinusSign) {
  EXPECT_EQ(Str(-1), "-1");
  EXPECT_EQ(Str(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

TEST(CharacterCount, CountsCodePoints) {
  EXPECT_EQ(CharacterCount(""), 0U);
  EXPECT_EQ(CharacterCount("abc"), 3U);
  EXPECT_EQ(CharacterCount(kMixed), 5U);
}

TEST(CharacterCount, CountsACombiningMarkAsACharacter) {
  EXPECT_EQ(CharacterCount("a\xCC\x88"), 2U);
}

TEST(FirstCharacters, CutsBetweenCharacters) {
  EXPECT_EQ(FirstCharacters(kMixed, 1), "a");
  EXPECT_EQ(FirstCharacters(kMixed, 2), "a\xC3\xA4");
  EXPECT_EQ(FirstCharacters(kMixed, 3), "a\xC3\xA4\xE2\x82\xAC");
  EXPECT_EQ(FirstCharacters(kMixed, 4), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x92\xB0");
}

TEST(FirstCharacters, IsTheWholeTextWhereThereAreNoMore) {
  EXPECT_EQ(FirstCharacters(kMixed, 5), kMixed);
  EXPECT_EQ(FirstCharacters(kMixed, 100), kMixed);
}

TEST(FirstCharacters, IsNothingForNone) {
  EXPECT_EQ(FirstCharacters(kMixed, 0), "");
  EXPECT_EQ(FirstCharacters("", 3), "");
}

TEST(FirstCharacters, HoldsAsManyCharactersAsAreCounted) {
  for (std::size_t count = 0; count <= 5; ++count) {
    EXPECT_EQ(CharacterCount(FirstCharacters(kMixed, count)), count);
  }
}

struct Rounding {
  double value;
  double whole;
};

TEST(RoundHalfEven, TakesAHalfToTheEvenNeighbour) {
  constexpr Rounding kCases[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {-2.5, -2}};
  for (const auto& [value, whole] : kCases) {
    EXPECT_EQ(RoundHalfEven(value), whole) << value;
  }
}

TEST(RoundHalfEven, TakesAnythingElseToTheNearest) {
  const Rounding kCases[] = {{1.25, 1},
                             {1.75, 2},
                             {-1.25, -1},
                             {-1.75, -2},
                             {7, 7},
                             {std::nextafter(0.5, 0.0), 0},
                             {std::nextafter(0.5, 1.0), 1},
                             {std::nextafter(-0.5, 0.0), 0},
                             {std::nextafter(2.5, 3.0), 3}};
  for (const auto& [value, whole] : kCases) {
    EXPECT_EQ(RoundHalfEven(value), whole) << value;
  }
}

TEST(RoundHalfEven, KeepsNumbersTooLargeForAFraction) {
  EXPECT_EQ(RoundHalfEven(9007199254740993.0), 9007199254740993.0);
  EXPECT_EQ(RoundHalfEven(-1e300), -1e300);
}

}  // namespace
}  // namespace vetlo
