#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/terminal/chart_support.h"

namespace quillmarsh {
namespace {

using testing::ElementsAre;
using vetlo::ChartKind;
using vetlo::ChartModel;

ChartModel Bars(const std::vector<std::pair<std::string, double>>& items) {
  return ChartOf(ChartKind::kBar, items);
}

TEST(BarChart, HasALineForEveryColumnOfOneRow) {
  EXPECT_EQ(Draw(Bars({{"Rent", 1200}, {"Food", 600}, {"Fun", 0}})),
            R"(Rent │█████████████████████████ 1,200.00
Food │████████████▌               600.00
Fun  │                              0.00
)");
}

TEST(BarChart, HasALineForEveryRowOfOneColumn) {
  EXPECT_EQ(Draw(ChartOf(ChartKind::kBar, {"2024-01", "2024-02"}, {"Balance"}, {{10}, {5}})),
            R"(2024-01 │█████████████████████████ 10.00
2024-02 │████████████▌              5.00
)");
}

TEST(BarChart, ASingleNumberIsNamedByItsColumn) {
  EXPECT_EQ(Draw(ChartOf(ChartKind::kBar, {"row"}, {"Rent"}, {{5}})),
            "Rent │█████████████████████████████ 5.00\n");
}

TEST(BarChart, HasAGroupForEveryOfSeveralRows) {
  EXPECT_EQ(
      Draw(ChartOf(ChartKind::kBar, {"January", "February"}, {"In", "Out"}, {{30, 15}, {15, 0}})),
      R"(January
  In  │███████████████████████████ 30.00
  Out │█████████████▌              15.00
February
  In  │█████████████▌              15.00
  Out │                             0.00
)");
}

TEST(BarChart, NegativeNumbersGrowToTheLeftOfACommonAxis) {
  EXPECT_EQ(Draw(Bars({{"Pay", 20}, {"Rent", -10}})),
            R"(Pay           │██████████████████  20.00
Rent █████████│                   -10.00
)");
}

TEST(BarChart, NegativeNumbersAloneTakeTheWholeWidth) {
  EXPECT_EQ(Draw(Bars({{"a", -2}, {"b", -1}})),
            R"(a ███████████████████████████████│ -2.00
b                ▐███████████████│ -1.00
)");
}

TEST(BarChart, BothSidesHaveTheSameScale) {
  const Labels lines = LinesOf(Draw(Bars({{"a", 10}, {"b", -10}})));
  const auto blocks = [](const std::string& line) {
    std::size_t count = 0;
    for (std::size_t at = line.find("█"); at != std::string::npos; at = line.find("█", at + 1)) {
      ++count;
    }
    return count;
  };
  EXPECT_EQ(blocks(lines[0]), blocks(lines[1]));
}

TEST(BarChart, TheLeastNumberIsStillSeen) {
  const Labels lines = LinesOf(Draw(Bars({{"a", 1e9}, {"b", 0.01}})));
  EXPECT_THAT(lines[1], testing::HasSubstr("│▏"));
}

TEST(BarChart, TheLeastNegativeNumberIsStillSeen) {
  const Labels lines = LinesOf(Draw(Bars({{"a", 1e9}, {"b", -0.01}})));
  EXPECT_THAT(lines[1], testing::HasSubstr("▕│"));
}

TEST(BarChart, AZeroIsNotSeen) {
  EXPECT_EQ(LinesOf(Draw(Bars({{"a", 1}, {"b", 0}})))[1],
            "b │                                 0.00");
}

TEST(BarChart, ALabelTakesAThirdOfTheWidthAtMost) {
  EXPECT_THAT(Draw(Bars({{"Insurance and more", 5}})), testing::StartsWith("Insurance an… │"));
}

TEST(BarChart, ALabelMakesRoomForLongNumbers) {
  EXPECT_EQ(Draw(Bars({{"Insurance", 1e15}})), "Insura… │██████ 1,000,000,000,000,000.00\n");
}

TEST(BarChart, LabelsAlignByCells) {
  EXPECT_THAT(LinesOf(Draw(Bars({{"漢字", 0}, {"a", 0}}))),
              ElementsAre("漢字 │                              0.00",
                          "a    │                              0.00"));
}

TEST(BarChart, AnEmptyLabelIsBlank) {
  EXPECT_EQ(LinesOf(Draw(Bars({{"", 0}, {"ab", 0}})))[0],
            "   │                                0.00");
}

TEST(BarChart, LabelsAreSafe) {
  EXPECT_THAT(Draw(Bars({{"a\x1B", 0}})), testing::StartsWith("a\uFFFD │"));
}

TEST(BarChart, GroupLabelsAreSafe) {
  EXPECT_THAT(Draw(ChartOf(ChartKind::kBar, {"a\x1B", "b"}, {"c", "d"}, {{0, 0}, {0, 0}})),
              testing::StartsWith("a\uFFFD\n"));
}

TEST(BarChart, TheUnitStandsOverTheNumbers) {
  ChartModel chart = Bars({{"a", 0}});
  chart.SetAxisTitleText("$10K");
  EXPECT_EQ(LinesOf(Draw(chart))[0], "                                    $10K");
}

TEST(BarChart, TheUnitIsSafe) {
  ChartModel chart = Bars({{"a", 0}});
  chart.SetAxisTitleText("\x1B");
  EXPECT_THAT(LinesOf(Draw(chart))[0], testing::EndsWith(" \uFFFD"));
}

TEST(BarChart, NumbersFollowTheLocale) {
  const std::string text =
      RenderChart(Bars({{"a", 1234.5}}), 40, vetlo::NumberLocale{",", "\u202F", "€", false});
  EXPECT_THAT(text, testing::HasSubstr("1\u202F234,50\n"));
}

TEST(BarChart, ANumberWithTooManyDigitsIsScientific) {
  EXPECT_THAT(Draw(Bars({{"a", 1e300}})), testing::EndsWith(" 1.000e+300\n"));
}

TEST(BarChart, ANumberThatIsNotFiniteIsAQuestion) {
  EXPECT_EQ(Draw(Bars({{"a", std::numeric_limits<double>::infinity()}})),
            "a │                                    ?\n");
}

}  // namespace
}  // namespace quillmarsh
