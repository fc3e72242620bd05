#include "quillmarsh/terminal/terminal_platform.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

TEST(TerminalPlatform, ShowsTheDateItWasGiven) {
  TerminalPlatform platform({}, vetlo::Date{45000.25});
  EXPECT_EQ(platform.Now(), vetlo::Date{45000.25});
}

TEST(TerminalPlatform, FollowsTheLocalClockWithoutADate) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ASSERT_NE(localtime_r(&now, &local), nullptr);
  TerminalPlatform platform({});
  // The clock may be set back by an hour in between.
  EXPECT_NEAR(platform.Now().days, DateOf(local).days, 0.1);
}

TEST(TerminalPlatform, KeepsItsLocale) {
  TerminalPlatform platform({",", ".", "€", false});
  EXPECT_EQ(platform.Locale().currency_sign, "€");
}

TEST(TerminalPlatform, HasNoPrinter) {
  TerminalPlatform platform({});
  try {
    platform.PrinterPageWidth();
    FAIL();
  } catch (const vetlo::Failure& failure) {
    EXPECT_EQ(failure.number(), static_cast<std::int32_t>(vetlo::FailureNumber::kNoPrinter));
  }
}

TEST(TerminalPlatform, ABoxStartsWithTheDefaultFont) {
  TerminalPlatform platform({});
  EXPECT_EQ(platform.NewPictureBox()->GetFont(), (vetlo::Font{"Monospace", 10, false}));
}

TEST(TerminalPlatform, ABoxKeepsItsFont) {
  TerminalPlatform platform({});
  const auto box = platform.NewPictureBox();
  const vetlo::Font font{"Serif", 14, true};
  box->SetFont(font);
  EXPECT_EQ(box->GetFont(), font);
}

TEST(TerminalPlatform, ABoxMeasuresCells) {
  TerminalPlatform platform({});
  EXPECT_EQ(platform.NewPictureBox()->TextWidth("ab漢"), 480.0F);
}

TEST(TerminalPlatform, ABoxMeasuresAlikeInEveryFont) {
  TerminalPlatform platform({});
  const auto box = platform.NewPictureBox();
  box->SetFont({"Serif", 72, true});
  EXPECT_EQ(box->TextWidth("ab"), 240.0F);
}

std::tm TimeOf(int year, int month, int day, int hour) {
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  return time;
}

TEST(DateOf, CountsDaysFromDayZero) { EXPECT_EQ(DateOf(TimeOf(1970, 1, 1, 0)).days, 25569); }

TEST(DateOf, HasTheTimeOfDayAsItsFraction) {
  std::tm time = TimeOf(2000, 1, 1, 18);
  time.tm_min = 45;
  time.tm_sec = 36;
  EXPECT_DOUBLE_EQ(DateOf(time).days, 36526 + (18 * 3600 + 45 * 60 + 36) / 86400.0);
}

}  // namespace
}  // namespace quillmarsh
