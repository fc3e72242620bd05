#include "vetlo/platform/format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

const NumberLocale kPlain;
const NumberLocale kNarrowBlanks{",", "\xE2\x80\xAF", " \xE2\x82\xAC", false};
const NumberLocale kNoSeparators{"", "", "", true};

struct Case {
  double value;
  const char* picture;
  const char* text;
};

struct AmountCase {
  std::int64_t units;
  const char* picture;
  const char* text;
};

template <std::size_t kCount>
void ExpectFormatted(const Case (&cases)[kCount], const NumberLocale& locale = kPlain) {
  for (const auto& [value, picture, text] : cases) {
    EXPECT_EQ(Format(value, picture, locale), text) << value << " by " << picture;
  }
}

template <std::size_t kCount>
void ExpectAmountsFormatted(const AmountCase (&cases)[kCount]) {
  for (const auto& [units, picture, text] : cases) {
    EXPECT_EQ(Format(Currency::FromUnits(units), picture, kPlain), text)
        << units << " by " << picture;
  }
}

// Leaves single digits where the next call has its locals: at every even or every odd place.
[[gnu::noinline]] void LeaveDigitsOnTheStack(unsigned odd) {
  volatile char stack[4096];
  for (unsigned i = 0; i < sizeof stack; ++i) {
    stack[i] = i % 2 == odd ? '3' : '\0';
  }
}

TEST(Format, AlwaysShowsTheDigitsOfZeros) {
  ExpectFormatted({{0, "0.00", "0.00"},
                   {1, "0.00", "1.00"},
                   {1234.5, "0.00", "1234.50"},
                   {7, "000", "007"},
                   {0.5, "#,##0.00", "0.50"}});
}

TEST(Format, ShowsTheOtherDigitsWhereTheyAreSignificant) {
  ExpectFormatted({{0.5, "#.##", ".5"},
                   {0.05, "#.##", ".05"},
                   {12.34, "#.##", "12.34"},
                   {0.25, "#,##0.##", "0.25"},
                   {0.1, "#,##0.######", "0.1"},
                   {1.000001, "#,##0.######", "1.000001"},
                   {0, "#", ""}});
}

// No gap is left between digits and those that are always shown.
TEST(Format, ShowsAPlaceBetweenZerosAndThePointAlways) {
  ExpectFormatted({{5, "0#", "05"},
                   {0, "0#", "00"},
                   {12, "0#", "12"},
                   {5, "#0#", "05"},
                   {7, "0##.#0", "007.00"},
                   {0, "#0.", "0."}});
}

TEST(Format, ShowsThePointWhateverFollowsIt) {
  ExpectFormatted({{0, "#.##", "."}, {12, "#,##0.##", "12."}, {12, "#,##0.######", "12."}});
}

TEST(Format, ShowsNoPointThatThePictureDoesNotHave) {
  ExpectFormatted({{12.25, "#,##0", "12"}, {12.25, "0", "12"}});
}

TEST(Format, ShowsObligatoryDecimalsBeforeOptionalOnes) {
  ExpectFormatted({{1, "#,##0.00####", "1.00"},
                   {1.5, "#,##0.00####", "1.50"},
                   {1.234, "#,##0.00####", "1.234"},
                   {1.2345678, "#,##0.00####", "1.234568"}});
}

TEST(Format, GroupsTheWholePartByThrees) {
  ExpectFormatted({{1, kAmountPicture.data(), "1.00"},
                   {999, "#,##0", "999"},
                   {1000, "#,##0", "1,000"},
                   {123456, "#,##0", "123,456"},
                   {1234567.5, "#,##0.00", "1,234,567.50"},
                   {-1000, "#,##0", "-1,000"},
                   {7, "0,000", "0,007"},
                   {1234.56789, "#,##0.0000", "1,234.5679"}});
}

TEST(Format, DoesNotGroupWithoutAComma) { ExpectFormatted({{1234567, "0", "1234567"}}); }

TEST(Format, RoundsAHalfAwayFromZero) {
  ExpectFormatted({{2.5, "#,##0", "3"},
                   {3.5, "#,##0", "4"},
                   {0.5, "#,##0", "1"},
                   {-2.5, "#,##0", "-3"},
                   {0.125, "0.00", "0.13"},
                   {0.375, "0.00", "0.38"}});
}

TEST(Format, RoundsWhatLiesBelowAHalfTowardsZero) {
  ExpectFormatted({{2.4999, "#,##0", "2"}, {0.1249, "0.00", "0.12"}, {0.04, "0.0", "0.0"}});
}

// The nearest doubles of these lie below the half; their 15 digits are the half itself.
TEST(Format, RoundsFrom15SignificantDigits) {
  ExpectFormatted({{0.285, "0.00", "0.29"},
                   {1.005, "0.00", "1.01"},
                   {-1.005, "0.00", "-1.01"},
                   {8.345, "#,##0.00", "8.35"},
                   {0.1 + 0.2, "0.##################", "0.3"},
                   {2.4999999999999996, "0", "3"}});
}

TEST(Format, HasZerosBehindThe15thDigit) {
  ExpectFormatted({{123456789012345678.0, "#,##0", "123,456,789,012,346,000"},
                   {1234567890123456.0, "0", "1234567890123460"},
                   {1e22, "#,##0", "10,000,000,000,000,000,000,000"}});
}

TEST(Format, CarriesThroughNines) {
  ExpectFormatted({{0.999, "0.00", "1.00"},
                   {999.995, "#,##0.00", "1,000.00"},
                   {-9.5, "0", "-10"},
                   {999999999999999.6, "#,##0", "1,000,000,000,000,000"}});
}

TEST(Format, ShowsNoMinusSignBeforeZerosAlone) {
  ExpectFormatted({{-0.0, "0.00", "0.00"},
                   {-0.004, "0.00", "0.00"},
                   {-0.4, "#,##0", "0"},
                   {-1e-300, "#,##0.00", "0.00"},
                   {-0.001, "#.##", "."}});
}

TEST(Format, ShowsTheMinusSignBeforeTheLeastDigit) {
  ExpectFormatted({{-0.005, "0.00", "-0.01"}, {-0.5, "#,##0", "-1"}, {-0.25, "#.##", "-.25"}});
}

TEST(Format, ReachesTheExtremesOfADouble) {
  EXPECT_EQ(Format(1e100, "0", kPlain), "1" + std::string(100, '0'));
  EXPECT_EQ(Format(5e-324, "0.00", kPlain), "0.00");
  EXPECT_EQ(Format(std::numeric_limits<double>::max(), "0", kPlain),
            "179769313486232" + std::string(294, '0'));
}

TEST(Format, DoesNotDependOnWhatRanBefore) {
  for (const unsigned odd : {0U, 1U}) {
    LeaveDigitsOnTheStack(odd);
    EXPECT_EQ(Format(1.5, "0.00", kPlain), "1.50");
  }
}

TEST(Format, WritesSeparatorsOfSeveralBytes) {
  ExpectFormatted({{1234567.5, "#,##0.00",
                    "1\xE2\x80\xAF"
                    "234\xE2\x80\xAF"
                    "567,50"}},
                  kNarrowBlanks);
}

TEST(Format, WritesSeparatorsThatAreEmpty) {
  ExpectFormatted({{1234567.5, "#,##0.00", "123456750"}}, kNoSeparators);
}

TEST(Format, OverflowsForWhatIsNotFinite) {
  for (const double value : {kInfinity, -kInfinity, kNotANumber}) {
    EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { Format(value, "0", kPlain); })) << value;
  }
}

TEST(Format, RefusesAPictureWithAnyOtherCharacter) {
  for (const char* picture : {"0%", "$0", "abc", "0 0", "0.0.0", "0.0,0", "-0"}) {
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { Format(1.0, picture, kPlain); }))
        << picture;
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { Format(Currency(), picture, kPlain); }))
        << picture;
  }
}

TEST(FormatOfAnAmount, WritesTheExactDecimal) {
  ExpectAmountsFormatted(
      {{0, "#,##0.00", "0.00"},
       {1, "0.0000", "0.0001"},
       {123400, "#,##0.00", "12.34"},
       {-123400, "#,##0.00", "-12.34"},
       {9007199254740993, "#,##0.0000", "900,719,925,474.0993"},
       {std::numeric_limits<std::int64_t>::max(), "#,##0.0000", "922,337,203,685,477.5807"},
       {std::numeric_limits<std::int64_t>::min(), "#,##0.0000", "-922,337,203,685,477.5808"},
       {std::numeric_limits<std::int64_t>::min(), "#,##0.00", "-922,337,203,685,477.58"}});
}

TEST(FormatOfAnAmount, RoundsAHalfAwayFromZero) {
  ExpectAmountsFormatted({{50, "0.00", "0.01"},
                          {-50, "0.00", "-0.01"},
                          {10250, "0.00", "1.03"},
                          {5000, "#,##0", "1"},
                          {25000, "#,##0", "3"}});
}

TEST(FormatOfAnAmount, ShowsNoMinusSignBeforeZerosAlone) {
  ExpectAmountsFormatted({{-49, "0.00", "0.00"}, {-4999, "#,##0", "0"}, {-1, "#.##", "."}});
}

TEST(FormatTrimmedNumber, ShowsNoPointBehindAWholeNumber) {
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(120000), kPlain), "12");
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(12000000), kPlain), "1,200");
  EXPECT_EQ(FormatTrimmedNumber(Currency(), kPlain), "0");
}

TEST(FormatTrimmedNumber, HasAsManyDecimalsAsTheNumberUpToTwo) {
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(125000), kPlain), "12.5");
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(12342500), kPlain), "1,234.25");
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(1250), kPlain), "0.13");
}

TEST(FormatTrimmedNumber, ShowsNoPointBehindWhatRoundsToAWholeNumber) {
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(120049), kPlain), "12");
}

TEST(FormatTrimmedNumber, KnowsThePointOfItsLocale) {
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(120000), kNarrowBlanks), "12");
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(125000), kNarrowBlanks), "12,5");
  EXPECT_EQ(FormatTrimmedNumber(Currency::FromUnits(120000), kNoSeparators), "12");
}

TEST(FormatTrimmedPrice, ShowsNoPointBehindAWholeNumber) {
  EXPECT_EQ(FormatTrimmedPrice(12, kPlain), "12");
  EXPECT_EQ(FormatTrimmedPrice(1200, kPlain), "1,200");
  EXPECT_EQ(FormatTrimmedPrice(12.0000001, kPlain), "12");
}

TEST(FormatTrimmedPrice, HasAsManyDecimalsAsTheNumberUpToSix) {
  EXPECT_EQ(FormatTrimmedPrice(0.125, kPlain), "0.125");
  EXPECT_EQ(FormatTrimmedPrice(1234.25, kPlain), "1,234.25");
  EXPECT_EQ(FormatTrimmedPrice(1.2345678, kPlain), "1.234568");
}

TEST(FormatTrimmedPrice, OverflowsForWhatIsNotFinite) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { FormatTrimmedPrice(kNotANumber, kPlain); }));
}

TEST(FormatCurrency, HasTheSignInFront) {
  EXPECT_EQ(FormatCurrency(1234.5, 2, LeadingDigit::kYes, kPlain), "$1,234.50");
  EXPECT_EQ(FormatCurrency(1, 0, LeadingDigit::kYes, kPlain), "$1");
}

TEST(FormatCurrency, HasTheSignBehindWhereTheLocaleSaysSo) {
  EXPECT_EQ(FormatCurrency(1234.5, 2, LeadingDigit::kYes, kNarrowBlanks),
            "1\xE2\x80\xAF"
            "234,50 \xE2\x82\xAC");
}

TEST(FormatCurrency, HasTheMinusSignBeforeAll) {
  EXPECT_EQ(FormatCurrency(-12.5, 2, LeadingDigit::kYes, kPlain), "-$12.50");
  EXPECT_EQ(FormatCurrency(-12.5, 2, LeadingDigit::kYes, kNarrowBlanks), "-12,50 \xE2\x82\xAC");
}

TEST(FormatCurrency, LeavesOutAZeroBeforeThePointWithoutALeadingDigit) {
  EXPECT_EQ(FormatCurrency(0.5, 2, LeadingDigit::kNo, kPlain), "$.50");
  EXPECT_EQ(FormatCurrency(0.5, 2, LeadingDigit::kYes, kPlain), "$0.50");
}

TEST(FormatCurrency, LeavesTheSignAloneOfAZeroWithoutAnyDigit) {
  EXPECT_EQ(FormatCurrency(0, 0, LeadingDigit::kNo, kPlain), "$");
  EXPECT_EQ(FormatCurrency(0, 0, LeadingDigit::kNo, kNarrowBlanks), " \xE2\x82\xAC");
}

TEST(FormatCurrency, KeepsOtherDigitsWithoutALeadingDigit) {
  EXPECT_EQ(FormatCurrency(1200, 0, LeadingDigit::kNo, kPlain), "$1,200");
}

TEST(FormatCurrency, OverflowsForWhatIsNotFinite) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow,
                     [] { FormatCurrency(-kInfinity, 2, LeadingDigit::kYes, kPlain); }));
}

}  // namespace
}  // namespace vetlo
