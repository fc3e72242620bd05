#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/terminal/chart_support.h"

namespace quillmarsh {
namespace {

using testing::Contains;
using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using vetlo::ChartKind;
using vetlo::ChartModel;

// One column over rows that are named "r1", "r2" and so on.
ChartModel Line(const std::vector<double>& values) {
  Labels labels;
  Rows rows;
  for (const double value : values) {
    rows.push_back({value});
    labels.push_back("r" + std::to_string(rows.size()));
  }
  return ChartOf(ChartKind::kLine, labels, {"Balance"}, rows);
}

ChartModel TwoLines() {
  return ChartOf(ChartKind::kLine, {"r1", "r2", "r3"}, {"Cash", "Bonds"}, {{0, 4}, {1, 3}, {2, 2}});
}

// The texts in front of the ticks, from the top.
Labels TicksOf(const std::string& text) {
  Labels ticks;
  for (const std::string& line : LinesOf(text)) {
    const std::size_t mark = line.find(" ┤");
    if (mark != std::string::npos) {
      ticks.push_back(line.substr(line.find_first_not_of(' '), mark - line.find_first_not_of(' ')));
    }
  }
  return ticks;
}

// The line under the axis.
std::string PointLabelsOf(const std::string& text) {
  const Labels lines = LinesOf(text);
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    if (lines[i].find("└") != std::string::npos) {
      return lines[i + 1];
    }
  }
  return "";
}

TEST(LineChart, RunsOverTheRows) {
  EXPECT_EQ(Draw(Line({0, 4, 2})), R"(4 ┤                  ⡠⢄
  │                 ⡰⠁ ⠑⢄
  │                ⡔⠁    ⠑⠤⡀
  │              ⢀⠜        ⠈⠢⡀
3 ┤             ⢀⠎           ⠈⠢⢄
  │            ⢠⠊               ⠑⢄
  │           ⢠⠃                  ⠑⠤⡀
  │          ⡰⠁                     ⠈⠢⡀
2 ┤         ⡰⠁                        ⠈⠢
  │        ⡜
  │      ⢀⠎
  │     ⢀⠎
1 ┤    ⢠⠃
  │   ⡠⠃
  │  ⡰⠁
  │ ⡜
0 ┤⠜
  └─────────────────────────────────────
   r1               r2                r3
)");
}

TEST(LineChart, TheTicksAreRoundNumbers) {
  EXPECT_THAT(TicksOf(Draw(Line({130, 480}))),
              testing::ElementsAre("500", "400", "300", "200", "100"));
}

TEST(LineChart, TheTicksHaveTheDecimalsOfTheirStep) {
  EXPECT_THAT(TicksOf(Draw(Line({0, 0.9}))), testing::ElementsAre("1.0", "0.5", "0.0"));
}

TEST(LineChart, TheTicksFollowTheLocale) {
  const std::string text =
      RenderChart(Line({0, 4000}), 40, vetlo::NumberLocale{",", ".", "€", false});
  EXPECT_EQ(TicksOf(text)[0], "4.000");
}

TEST(LineChart, TheTicksReachBelowZero) {
  EXPECT_THAT(TicksOf(Draw(Line({-10, 10}))), testing::ElementsAre("10", "5", "0", "-5", "-10"));
}

TEST(LineChart, ALevelLineIsSeenAgainstZero) {
  EXPECT_THAT(TicksOf(Draw(Line({8, 8}))), testing::ElementsAre("8", "6", "4", "2", "0"));
}

TEST(LineChart, ZerosHaveAScale) {
  EXPECT_THAT(TicksOf(Draw(Line({0, 0}))), testing::ElementsAre("1.0", "0.5", "0.0"));
}

TEST(LineChart, MarksZeroWithinTheRange) {
  EXPECT_THAT(LinesOf(Draw(Line({-10, 10}))), Contains(AllOf(StartsWith("  0 ┤"), HasSubstr("┄"))));
}

TEST(LineChart, DoesNotMarkZeroOnTheFloor) {
  EXPECT_THAT(Draw(Line({0, 10})), Not(HasSubstr("┄")));
}

TEST(LineChart, ASinglePointIsMarkedInTheMiddle) {
  EXPECT_THAT(LinesOf(Draw(Line({7}))), Contains(EndsWith(std::string(17, ' ') + "●")));
}

TEST(LineChart, SkipsANumberThatIsNotFinite) {
  const std::string with_gap = Draw(Line({0, std::numeric_limits<double>::quiet_NaN(), 4}));
  EXPECT_THAT(TicksOf(with_gap), testing::ElementsAre("4", "3", "2", "1", "0"));
  EXPECT_NE(with_gap, Draw(Line({0, 2, 4})));
}

TEST(LineChart, NamesTheFirstTheMiddleAndTheLastRow) {
  EXPECT_EQ(PointLabelsOf(Draw(Line({1, 2, 3}))), "     r1              r2               r3");
}

TEST(LineChart, LeavesOutAMiddleNameWithoutRoom) {
  const ChartModel chart =
      ChartOf(ChartKind::kLine, {"first", std::string(30, 'm'), "last"}, {""}, {{1}, {2}, {3}});
  EXPECT_THAT(PointLabelsOf(Draw(chart)), testing::MatchesRegex(" +first +last"));
}

TEST(LineChart, RowLabelsAreSafe) {
  const ChartModel chart = ChartOf(ChartKind::kLine, {"a\x1B", "b"}, {""}, {{1}, {2}});
  EXPECT_THAT(PointLabelsOf(Draw(chart)), HasSubstr("a\uFFFD "));
}

TEST(LineChart, HasNoLineOfNamesWithoutAnyName) {
  EXPECT_THAT(LinesOf(Draw(ChartOf(ChartKind::kLine, {{"", 1}, {"", 2}}))).back(), HasSubstr("└"));
}

TEST(LineChart, OneRowRunsOverItsColumns) {
  const ChartModel row = ChartOf(ChartKind::kLine, {""}, {"r1", "r2", "r3"}, {{5, 1, 3}});
  EXPECT_EQ(Draw(row), Draw(Line({5, 1, 3})));
}

TEST(LineChart, TheUnitStandsOverTheTicks) {
  ChartModel chart = Line({0, 4000});
  chart.SetAxisTitleText("$1");
  EXPECT_EQ(LinesOf(Draw(chart))[0], "   $1");
}

TEST(LineChart, TheUnitMakesRoomForItself) {
  ChartModel chart = Line({0, 4});
  chart.SetAxisTitleText("$10K");
  EXPECT_THAT(LinesOf(Draw(chart))[1], StartsWith("   4 ┤"));
}

TEST(LineChart, OneSeriesHasNoMarkers) { EXPECT_THAT(Draw(Line({1, 2, 3})), Not(HasSubstr("●"))); }

TEST(LineChart, EveryOfSeveralSeriesHasItsMarker) {
  const std::string text = Draw(TwoLines());
  const std::string plot = text.substr(0, text.find("└"));
  EXPECT_THAT(plot, HasSubstr("●"));
  EXPECT_THAT(plot, HasSubstr("○"));
}

TEST(LineChart, ALegendNamesSeveralSeries) {
  EXPECT_EQ(LinesOf(Draw(TwoLines())).back(), "            ● Cash   ○ Bonds");
}

TEST(LineChart, AnAskedForLegendNamesASingleSeries) {
  ChartModel chart = Line({1, 2});
  chart.SetShowLegend(true);
  EXPECT_EQ(LinesOf(Draw(chart)).back(), "               ── Balance");
}

TEST(LineChart, ASingleSeriesHasNoLegendUnasked) {
  EXPECT_THAT(LinesOf(Draw(Line({1, 2}))), Each(Not(HasSubstr("Balance"))));
}

TEST(LineChart, HasNoLegendWithoutNames) {
  ChartModel chart = ChartOf(ChartKind::kLine, {"a", "b"}, {"", ""}, {{1, 2}, {3, 4}});
  chart.SetShowLegend(true);
  EXPECT_THAT(LinesOf(Draw(chart)).back(), HasSubstr("a"));
}

TEST(LineChart, ALongLegendTakesSeveralLines) {
  const std::string name(16, 'n');
  const ChartModel chart =
      ChartOf(ChartKind::kLine, {"a", "b"}, {name, name, name}, {{1, 2, 3}, {3, 4, 5}});
  EXPECT_EQ(LinesOf(Draw(chart)).back(), "           ■ " + name);
}

TEST(LineChart, LegendNamesAreSafe) {
  const ChartModel chart = ChartOf(ChartKind::kLine, {"a", "b"}, {"c\x1B", "d"}, {{1, 2}, {3, 4}});
  EXPECT_THAT(LinesOf(Draw(chart)).back(), HasSubstr("● c\uFFFD"));
}

}  // namespace
}  // namespace quillmarsh
