#include "quillmarsh/terminal/chart_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "tests/terminal/chart_support.h"

namespace quillmarsh {
namespace {

using testing::HasSubstr;
using vetlo::ChartKind;
using vetlo::ChartModel;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

TEST(RenderChart, SaysThatThereIsNoData) {
  ChartModel chart(0);
  chart.SetTitleText("Balances");
  chart.SetFootnoteText("2024");
  EXPECT_EQ(Draw(chart), R"(                Balances

               (no data)

                  2024
)");
}

TEST(RenderChart, NeedsNeitherTitleNorFootnote) {
  EXPECT_EQ(Draw(ChartModel(0)), "               (no data)\n");
}

TEST(RenderChart, WrapsALongTitle) {
  ChartModel chart(0);
  chart.SetTitleText("A title that has more words than one line takes");
  EXPECT_THAT(Draw(chart),
              HasSubstr(" A title that has more words than one\n               line takes\n"));
}

TEST(RenderChart, ATitleMayHaveSeveralLines) {
  ChartModel chart(0);
  chart.SetTitleText("one\r\ntwo");
  EXPECT_EQ(LinesOf(Draw(chart))[1], "                  two");
}

TEST(RenderChart, CentresByCells) {
  ChartModel chart(0);
  chart.SetTitleText("漢字");
  EXPECT_EQ(LinesOf(Draw(chart))[0], "                  漢字");
}

TEST(RenderChart, MakesTitleAndFootnoteSafe) {
  ChartModel chart(0);
  chart.SetTitleText("a\x1B");
  chart.SetFootnoteText("b\x1B");
  const std::string text = Draw(chart);
  EXPECT_THAT(text, HasSubstr("a\uFFFD"));
  EXPECT_THAT(text, HasSubstr("b\uFFFD"));
}

TEST(RenderChart, ANarrowTerminalGetsTheNarrowestChart) {
  const ChartModel chart = ChartOf(ChartKind::kBar, {{"Rent", 5}});
  EXPECT_EQ(Draw(chart, 0), Draw(chart, kLeastChartColumns));
}

TEST(RenderChart, AnEndlessTerminalGetsTheWidestChart) {
  const ChartModel chart = ChartOf(ChartKind::kBar, {{"Rent", 5}});
  EXPECT_EQ(Draw(chart, std::numeric_limits<std::size_t>::max()), Draw(chart, kMostChartColumns));
}

TEST(RenderChart, AnUnknownKindIsDrawnAsBars) {
  ChartModel chart = ChartOf(ChartKind::kBar, {{"Rent", 5}});
  const std::string bars = Draw(chart);
  chart.SetChartType(static_cast<ChartKind>(77));
  EXPECT_EQ(Draw(chart), bars);
}

// Odd data, of any shape, in every kind of chart.
class OddChart : public testing::TestWithParam<std::tuple<ChartKind, std::size_t>> {
 protected:
  void ExpectToFit(const Labels& rows, const Labels& columns, const Rows& values) const {
    const auto [kind, width] = GetParam();
    ChartModel chart = ChartOf(kind, rows, columns, values);
    chart.SetShowLegend(true);
    chart.SetAxisTitleText("$10K");
    chart.SetTitleText(std::string(200, 't'));
    chart.SetFootnoteText("a footnote of many words, more than one line of a narrow page takes");
    const std::string text = Draw(chart, width);
    EXPECT_LE(WidestOf(text), width);
    EXPECT_GT(LinesOf(text).size(), 3U);
    EXPECT_THAT(text, testing::Not(HasSubstr(" \n")));
  }
};

TEST_P(OddChart, FitsWithAllZeros) { ExpectToFit({"a", "b"}, {"c", "d"}, {{0, 0}, {0, 0}}); }

TEST_P(OddChart, FitsWithASingleValue) { ExpectToFit({"a"}, {"b"}, {{7}}); }

TEST_P(OddChart, FitsWithASingleZero) { ExpectToFit({""}, {""}, {{0}}); }

TEST_P(OddChart, FitsWithNegativeNumbersOnly) { ExpectToFit({""}, {"a", "b"}, {{-1, -2000}}); }

TEST_P(OddChart, FitsWithFiveHundredColumns) {
  std::vector<double> values(500);
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = static_cast<double>(i % 7) - 3;
  }
  ExpectToFit({"a"}, Labels(500, "label"), {values});
}

TEST_P(OddChart, FitsWithFiveHundredRows) {
  Rows rows;
  for (int i = 0; i < 500; ++i) {
    rows.push_back({i * 1.5, -i * 0.5, 3});
  }
  ExpectToFit(Labels(500, "2024-01-01"), {"a", "b", "c"}, rows);
}

TEST_P(OddChart, FitsWithLongLabels) {
  const std::string label(300, 'x');
  ExpectToFit({label, label}, {label, label}, {{1, 2}, {3, 4}});
}

TEST_P(OddChart, FitsWithWideLabels) {
  const std::string label = "漢字漢字漢字漢字漢字漢字漢字漢字漢字漢字漢字漢字";
  ExpectToFit({label, label}, {label, label}, {{1, 2}, {3, 4}});
}

TEST_P(OddChart, FitsWithALongAmountBehindALabel) {
  ExpectToFit({""}, {"a:" + std::string(60, '9'), "b"}, {{1, 2}});
}

TEST_P(OddChart, FitsWithLargeNumbers) { ExpectToFit({""}, {"a", "b"}, {{1e15, -1e15}}); }

TEST_P(OddChart, FitsWithTheLargestNumbers) {
  constexpr double kMost = std::numeric_limits<double>::max();
  ExpectToFit({"a", "b"}, {"c", "d"}, {{kMost, -kMost}, {kMost, kMost}});
}

TEST_P(OddChart, FitsWithTheLeastNumbers) {
  constexpr double kLeast = std::numeric_limits<double>::denorm_min();
  ExpectToFit({"a", "b"}, {"c"}, {{kLeast}, {-kLeast}});
}

TEST_P(OddChart, FitsWithANoiseOfTheLastDigits) {
  ExpectToFit({"a", "b"}, {"c"}, {{1e15}, {1e15 + 0.125}});
}

TEST_P(OddChart, FitsWithNumbersThatAreNotFinite) {
  ExpectToFit({"a", "b", "c"}, {"d", "e"},
              {{kNoNumber, 1}, {kInfinity, -kInfinity}, {3, kNoNumber}});
}

TEST_P(OddChart, FitsWithNothingFinite) { ExpectToFit({""}, {"a", "b"}, {{kNoNumber, kInfinity}}); }

INSTANTIATE_TEST_SUITE_P(All, OddChart,
                         testing::Combine(testing::Values(ChartKind::kBar, ChartKind::kLine,
                                                          ChartKind::kPie),
                                          testing::Values(40U, 41U, 80U, 200U)));

}  // namespace
}  // namespace quillmarsh
