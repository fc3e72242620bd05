#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>

#include "tests/support/raises.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

constexpr double kSecond = 1.0 / 86400;
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr double kNoDates[] = {-657434.5, -657435,    2958466,    1e300,
                               kInfinity, -kInfinity, kNotANumber};

TEST(SqlDateLiteral, IsADayBetweenMarks) {
  EXPECT_EQ(Services().SqlDateLiteral(DateSerial(2026, 3, 1)), "#2026-03-01#");
  EXPECT_EQ(Services().SqlDateLiteral(DateSerial(100, 1, 1)), "#0100-01-01#");
  EXPECT_EQ(Services().SqlDateLiteral(DateSerial(9999, 12, 31)), "#9999-12-31#");
}

TEST(SqlDateLiteral, HasTheTimeOfDayWhereThereIsOne) {
  const double day = DateSerial(2026, 3, 1).days;
  EXPECT_EQ(Services().SqlDateLiteral(Date{day + 0.5}), "#2026-03-01 12:00:00#");
  EXPECT_EQ(Services().SqlDateLiteral(Date{day + kSecond}), "#2026-03-01 00:00:01#");
  EXPECT_EQ(Services().SqlDateLiteral(Date{day + 86399 * kSecond}), "#2026-03-01 23:59:59#");
  EXPECT_EQ(Services().SqlDateLiteral(Date{day + 36610 * kSecond}), "#2026-03-01 10:10:10#");
}

TEST(SqlDateLiteral, CountsTheTimeForwardBeforeDayZeroToo) {
  EXPECT_EQ(Services().SqlDateLiteral(Date{-1.25}), "#1899-12-28 18:00:00#");
}

TEST(SqlDateLiteral, LeavesOutATimeBelowHalfASecond) {
  EXPECT_EQ(Services().SqlDateLiteral(Date{46082 + 0.4 * kSecond}), "#2026-03-01#");
}

TEST(SqlDateLiteral, OfTheLastMomentOfTheCalendarIsOfItsLastDay) {
  std::string text;
  EXPECT_EQ(ResumeNext([&] { text = Services().SqlDateLiteral(Date{2958465.999999}); }), 0);
  EXPECT_EQ(text.substr(0, 11), "#9999-12-31");
}

TEST(SqlDateLiteral, FailsForADateThatThereIsNot) {
  for (const double days : kNoDates) {
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] {
      return Services().SqlDateLiteral(Date{days});
    })) << days;
  }
}

TEST(DateDisplayText, IsYearMonthAndDayInTenCharacters) {
  EXPECT_EQ(Services().DateDisplayText(DateSerial(2026, 3, 1)), "2026/03/01");
  EXPECT_EQ(Services().DateDisplayText(DateSerial(100, 1, 1)), "0100/01/01");
  EXPECT_EQ(Services().DateDisplayText(DateSerial(9999, 12, 31)), "9999/12/31");
}

TEST(DateDisplayText, LeavesTheTimeAside) {
  EXPECT_EQ(Services().DateDisplayText(Date{46082.99}), "2026/03/01");
}

TEST(DateDisplayText, FailsForADateThatThereIsNot) {
  for (const double days : kNoDates) {
    EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] {
      return Services().DateDisplayText(Date{days});
    })) << days;
  }
}

struct DateText {
  const char* text;
  const char* date;

  friend std::ostream& operator<<(std::ostream& out, const DateText& test) {
    return out << test.text;
  }
};

class ParseDateText : public ::testing::TestWithParam<DateText> {};

TEST_P(ParseDateText, ReadsTheDate) {
  EXPECT_EQ(IsoDateText(Services().ParseDateText(GetParam().text)), GetParam().date);
}

INSTANTIATE_TEST_SUITE_P(Separators, ParseDateText,
                         ::testing::Values(DateText{"2026/03/01", "2026-03-01"},
                                           DateText{"2026-03-01", "2026-03-01"},
                                           DateText{"2026.03.01", "2026-03-01"}));
INSTANTIATE_TEST_SUITE_P(Digits, ParseDateText,
                         ::testing::Values(DateText{"2026/3/1", "2026-03-01"},
                                           DateText{"2026/03/1", "2026-03-01"},
                                           DateText{"2026/3/01", "2026-03-01"},
                                           DateText{"2026/12/31", "2026-12-31"}));
INSTANTIATE_TEST_SUITE_P(
    ShortYears, ParseDateText,
    ::testing::Values(DateText{"30/1/1", "1930-01-01"}, DateText{"99/12/31", "1999-12-31"},
                      DateText{"00/1/1", "2000-01-01"}, DateText{"29/12/31", "2029-12-31"},
                      DateText{"5/1/1", "2005-01-01"}, DateText{"0/2/29", "2000-02-29"}));
INSTANTIATE_TEST_SUITE_P(LongYears, ParseDateText,
                         ::testing::Values(DateText{"100/1/1", "0100-01-01"},
                                           DateText{"0100/1/1", "0100-01-01"},
                                           DateText{"999/12/31", "0999-12-31"},
                                           DateText{"9999/12/31", "9999-12-31"},
                                           DateText{"1929/1/1", "1929-01-01"}));
INSTANTIATE_TEST_SUITE_P(LeapDays, ParseDateText,
                         ::testing::Values(DateText{"2024/2/29", "2024-02-29"},
                                           DateText{"2000/2/29", "2000-02-29"}));

class TextThatIsNoDate : public ::testing::TestWithParam<const char*> {};

TEST_P(TextThatIsNoDate, IsRefused) {
  EXPECT_TRUE(
      Raises(FailureNumber::kTypeMismatch, [] { return Services().ParseDateText(GetParam()); }));
}

INSTANTIATE_TEST_SUITE_P(DaysThatAreNot, TextThatIsNoDate,
                         ::testing::Values("2026/2/29", "1900/2/29", "2026/4/31", "2026/1/32",
                                           "2026/1/0", "2026/0/1", "2026/13/1", "9999/12/32",
                                           "9999/13/1", "0099/1/1", "099/1/1", "000/1/1",
                                           "0000/1/1", "100/0/31", "100/1/0"));
INSTANTIATE_TEST_SUITE_P(Parts, TextThatIsNoDate,
                         ::testing::Values("", "2026", "2026/3", "2026/3/", "2026//1", "/3/1",
                                           "2026/3/1/", "/2026/3/1", "2026/3/1/1", "//",
                                           "20260301"));
INSTANTIATE_TEST_SUITE_P(Digits, TextThatIsNoDate,
                         ::testing::Values("12026/1/1", "2026/003/1", "2026/3/001", "2026/x/1",
                                           "2026/3/1x", "a/b/c", "-2026/3/1", "2026/+3/1",
                                           "2026/-3/1", "2026/3/1.5"));
INSTANTIATE_TEST_SUITE_P(Blanks, TextThatIsNoDate,
                         ::testing::Values(" ", " 2026/3/1", "2026/3/1 ", "2026/ 3/1", "2026 3 1",
                                           "2026/3/1\n", "2026/3/1 12:00:00"));
INSTANTIATE_TEST_SUITE_P(Others, TextThatIsNoDate,
                         ::testing::Values("2026,3,1", "2026\\3\\1", "2026:3:1", "March 1, 2026",
                                           "２０２６/3/1", "#2026-03-01#"));

TEST(ParseDateText, RefusesATextWithANullCharacter) {
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch,
                     [] { return Services().ParseDateText(std::string_view("2026/3/1\0", 9)); }));
}

TEST(ParseDateText, UndoesDateDisplayText) {
  for (double days = -657434; days <= 2958465; days += 997) {
    EXPECT_EQ(Services().ParseDateText(Services().DateDisplayText(Date{days})), Date{days});
  }
}

}  // namespace
}  // namespace vetlo
