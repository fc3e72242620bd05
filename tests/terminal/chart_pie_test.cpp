#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/terminal/chart_support.h"

namespace quillmarsh {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using vetlo::ChartKind;
using vetlo::ChartModel;

ChartModel Pie(const std::vector<std::pair<std::string, double>>& items) {
  return ChartOf(ChartKind::kPie, items);
}

TEST(PieChart, IsATableOfShares) {
  EXPECT_EQ(Draw(Pie({{"Cash:1.00", 1}, {"Bonds:3.00", 3}})),
            R"(Cash:1.00   25.0%  █████▎
Bonds:3.00  75.0%  ███████████████▊
)");
}

TEST(PieChart, AWholePieFillsTheWidth) {
  const std::string text = Draw(Pie({{"Cash", 1}}));
  EXPECT_EQ(WidestOf(text), 40U);
  EXPECT_THAT(text, StartsWith("Cash  100.0%  █"));
}

TEST(PieChart, KeepsTheOrderOfTheSlices) {
  EXPECT_THAT(LinesOf(Draw(Pie({{"b", 1}, {"c", 3}, {"a", 2}}))),
              testing::ElementsAre(StartsWith("b"), StartsWith("c"), StartsWith("a")));
}

TEST(PieChart, SharesAreOfTheSizesOfTheNumbers) {
  const Labels lines = LinesOf(Draw(Pie({{"a", -1}, {"b", 3}})));
  EXPECT_THAT(lines, testing::ElementsAre(HasSubstr(" 25.0% "), HasSubstr(" 75.0% ")));
}

TEST(PieChart, SharesOfNothingAreNothing) {
  EXPECT_EQ(Draw(Pie({{"a", 0}, {"b", 0}})), "a  0.0%\nb  0.0%\n");
}

TEST(PieChart, SharesOfVeryLargeNumbersAreRight) {
  EXPECT_THAT(Draw(Pie({{"a", 1.5e308}, {"b", 1.5e308}})), StartsWith("a  50.0%"));
}

TEST(PieChart, OneColumnOfSeveralRowsIsOnePie) {
  EXPECT_THAT(LinesOf(Draw(ChartOf(ChartKind::kPie, {"a", "b"}, {"c"}, {{1}, {1}}))),
              testing::ElementsAre(StartsWith("a  50.0%"), StartsWith("b  50.0%")));
}

TEST(PieChart, EveryOfSeveralRowsIsAPie) {
  EXPECT_THAT(LinesOf(Draw(
                  ChartOf(ChartKind::kPie, {"January", "February"}, {"a", "b"}, {{1, 1}, {0, 7}}))),
              testing::ElementsAre("January", StartsWith("a   50.0%"), StartsWith("b   50.0%"),
                                   "February", StartsWith("a    0.0%"), StartsWith("b  100.0%")));
}

TEST(PieChart, ALongNameGivesWayToItsAmount) {
  EXPECT_THAT(Draw(Pie({{"Bonds and other things:20,000.00", 1}})),
              StartsWith("Bonds and…:20,000.00  100.0%"));
}

TEST(PieChart, ALongLabelWithoutAnAmountIsShortened) {
  EXPECT_THAT(Draw(Pie({{"Bonds and other things", 1}})),
              StartsWith("Bonds and other thi…  100.0%"));
}

TEST(PieChart, LabelsAlignByCells) {
  EXPECT_THAT(LinesOf(Draw(Pie({{"漢字", 0}, {"a", 0}}))),
              testing::ElementsAre("漢字  0.0%", "a     0.0%"));
}

TEST(PieChart, LabelsAreSafe) { EXPECT_THAT(Draw(Pie({{"a\x1B", 0}})), StartsWith("a\uFFFD  ")); }

TEST(PieChart, SharesFollowTheLocale) {
  EXPECT_THAT(RenderChart(Pie({{"a", 1}}), 40, vetlo::NumberLocale{",", ".", "€", false}),
              StartsWith("a  100,0%"));
}

}  // namespace
}  // namespace quillmarsh
