#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "tests/output/measured_platform.h"
#include "tests/support/raises.h"
#include "vetlo/output/report_page.h"

namespace vetlo {
namespace {

const ProportionalBox kFont;

using Texts = std::vector<std::string>;

// ---- the numbers as they are shown

TEST(FormatAmountMatrix, ShowsEveryElementInItsPlace) {
  AmountMatrix amounts(2, 3);
  amounts(1, 1) = 1234.5;
  amounts(2, 1) = -0.005;
  amounts(1, 2) = 0;
  amounts(2, 2) = 1e6;
  amounts(1, 3) = -1;
  amounts(2, 3) = 0.994;
  const Matrix<std::string> texts = FormatAmountMatrix(amounts, NumberLocale{});
  ASSERT_EQ(texts.Series(), 2U);
  ASSERT_EQ(texts.Items(), 3U);
  EXPECT_EQ(texts(1, 1), "1,234.50");
  EXPECT_EQ(texts(2, 1), "-0.01");
  EXPECT_EQ(texts(1, 2), "0.00");
  EXPECT_EQ(texts(2, 2), "1,000,000.00");
  EXPECT_EQ(texts(1, 3), "-1.00");
  EXPECT_EQ(texts(2, 3), "0.99");
}

TEST(FormatAmountMatrix, TakesTheSeparatorsFromTheLocale) {
  AmountMatrix amounts(1, 1);
  amounts(1, 1) = 1234.5;
  EXPECT_EQ(FormatAmountMatrix(amounts, NumberLocale{",", ".", "€", false})(1, 1), "1.234,50");
}

TEST(FormatAmountMatrix, LeavesNothingOfAMatrixWithoutElements) {
  for (const AmountMatrix& amounts :
       {AmountMatrix(), AmountMatrix(0, 0), AmountMatrix(2, 0), AmountMatrix(0, 2)}) {
    EXPECT_TRUE(FormatAmountMatrix(amounts, NumberLocale{}).elements().empty());
  }
}

// ---- the width of a column

TEST(MaxColumnTextWidth, IsTheWidestTextAndNotTheLongest) {
  EXPECT_EQ(MaxColumnTextWidth(Texts{"ililil", "WW", "i"}, "", "", kFont), 340);
}

TEST(MaxColumnTextWidth, IncludesTheHeaderAlways) {
  EXPECT_EQ(MaxColumnTextWidth(Texts{"W"}, "Date", "", kFont), 440);
  EXPECT_EQ(MaxColumnTextWidth(Texts{}, "Date", "", kFont), 440);
}

TEST(MaxColumnTextWidth, IncludesTheExtraText) {
  EXPECT_EQ(MaxColumnTextWidth(Texts{"W"}, "Date", "WWWW", kFont), 680);
  EXPECT_EQ(MaxColumnTextWidth(Texts{"WWWWW"}, "Date", "WWWW", kFont), 850);
}

// Measured, this one is as wide as a page.
TEST(MaxColumnTextWidth, DoesNotMeasureAnEmptyExtraText) {
  const TableBox font({{"", 9999}, {"Date", 440}});
  EXPECT_EQ(MaxColumnTextWidth(Texts{}, "Date", "", font), 440);
}

TEST(MaxColumnTextWidth, IsZeroWhereThereIsNothing) {
  EXPECT_EQ(MaxColumnTextWidth(Texts{}, "", "", kFont), 0);
}

// ---- rules

struct RuleCase {
  float width;
  std::size_t underscores;
};

void PrintTo(const RuleCase& test, std::ostream* out) { *out << test.width; }

class RuleLine : public ::testing::TestWithParam<RuleCase> {};

TEST_P(RuleLine, FillsItsWidth) {
  EXPECT_EQ(RuleLineForWidth(GetParam().width, kFont), std::string(GetParam().underscores, '_'));
}

INSTANTIATE_TEST_SUITE_P(OfUnderscores90TwipsWide, RuleLine,
                         ::testing::Values(RuleCase{0, 1},      // 89 / 90
                                           RuleCase{1, 1},      // 90 / 90
                                           RuleCase{45, 1},     // 134 / 90
                                           RuleCase{46, 2},     // an exact half, to the even 2
                                           RuleCase{90, 2},     // 179 / 90
                                           RuleCase{136, 2},    // an exact half, to the even 2
                                           RuleCase{137, 3},    // past the half
                                           RuleCase{900, 11},   // 989 / 90
                                           RuleCase{2235, 26},  // 2324 / 90
                                           RuleCase{-43, 1},    // 46 / 90
                                           RuleCase{-44, 0},    // an exact half, to the even 0
                                           RuleCase{-89, 0},    // 0 / 90
                                           RuleCase{-500, 0}));

TEST(RuleLineForWidth, CountsWithTheUnderscoreAsWideAsItIs) {
  EXPECT_EQ(RuleLineForWidth(100, TableBox({{"_", 66.5F}})), "__");   // 165.5 / 66.5 = 2.49
  EXPECT_EQ(RuleLineForWidth(102, TableBox({{"_", 66.5F}})), "___");  // 167.5 / 66.5 = 2.52
}

TEST(RuleLineForWidth, FailsWhereTheUnderscoreHasNoWidth) {
  const TableBox font({{"_", 0}});
  for (const float width : {0.0F, 100.0F}) {
    EXPECT_TRUE(Raises(FailureNumber::kDivisionByZero, [&] { RuleLineForWidth(width, font); }))
        << width;
  }
}

// ---- numbers at the right edge of their column

struct AlignCase {
  float width;
  std::size_t blanks;
};

void PrintTo(const AlignCase& test, std::ostream* out) { *out << test.width; }

class RightAlign : public ::testing::TestWithParam<AlignCase> {};

TEST_P(RightAlign, PadsOnTheLeft) {
  EXPECT_EQ(RightAlignToWidth(GetParam().width, "ab", kFont),
            std::string(GetParam().blanks, ' ') + "ab");
}

INSTANTIATE_TEST_SUITE_P(OfAText220TwipsWideWithBlanksOf50, RightAlign,
                         ::testing::Values(AlignCase{220, 1},  // exactly as wide: 49 / 50
                                           AlignCase{221, 1},  // 50 / 50
                                           AlignCase{245, 1},  // 74 / 50
                                           AlignCase{246, 2},  // an exact half, to the even 2
                                           AlignCase{270, 2},  // 99 / 50
                                           AlignCase{296, 2},  // an exact half, to the even 2
                                           AlignCase{297, 3},  // past the half
                                           AlignCase{197, 1},  // wider than its column: 26 / 50
                                           AlignCase{196, 0},  // an exact half, to the even 0
                                           AlignCase{171, 0},  // 0 / 50
                                           AlignCase{0, 0}));

TEST(RightAlignToWidth, PadsAnEmptyText) { EXPECT_EQ(RightAlignToWidth(100, "", kFont), "   "); }

// 220.5 and 50.5 count as 220 and 50: 75 / 50 is an exact half, to the even 2.
TEST(RightAlignToWidth, RoundsTheWidthsOfTextAndBlankHalfToEven) {
  EXPECT_EQ(RightAlignToWidth(246, "a", TableBox({{"a", 220.5F}, {" ", 50.5F}})), "  a");
  // 221.5 counts as 222: 73 / 50.
  EXPECT_EQ(RightAlignToWidth(246, "a", TableBox({{"a", 221.5F}, {" ", 50.5F}})), " a");
}

// Half a twip counts as none.
TEST(RightAlignToWidth, FailsWhereTheBlankHasNoWidth) {
  for (const float blank : {0.0F, 0.5F}) {
    const TableBox font({{"a", 220}, {" ", blank}});
    EXPECT_TRUE(Raises(FailureNumber::kDivisionByZero, [&] { RightAlignToWidth(246, "a", font); }))
        << blank;
  }
}

TEST(RightAlignToWidth, LeavesTheColumnsOwnFraction) {
  const TableBox font({{"a", 220}, {" ", 50}});
  EXPECT_EQ(RightAlignToWidth(245.5F, "a", font), " a");   // 74.5 / 50
  EXPECT_EQ(RightAlignToWidth(246.5F, "a", font), "  a");  // 75.5 / 50
}

}  // namespace
}  // namespace vetlo
