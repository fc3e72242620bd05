#include "vetlo/output/chart_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "quillmarsh/cli/event_text.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "tests/output/measured_platform.h"
#include "tests/support/raises.h"
#include "vetlo/host/recording.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;

AmountMatrix OneAmount(double amount) {
  AmountMatrix amounts(1, 1);
  amounts(1, 1) = amount;
  return amounts;
}

ScaledChart Scaled(const AmountMatrix& amounts) {
  return ScaleChartData(amounts, ChartUnit::kMoney, NumberLocale{});
}

// ---- the unit

struct UnitCase {
  double largest;
  double scaled;
  std::string label;
};

void PrintTo(const UnitCase& test, std::ostream* out) { *out << test.largest; }

class ChartUnits : public ::testing::TestWithParam<UnitCase> {};

TEST_P(ChartUnits, FollowTheLargestAmount) {
  const ScaledChart chart = Scaled(OneAmount(GetParam().largest));
  EXPECT_EQ(chart.ScaledMatrix(1, 1), GetParam().scaled);
  EXPECT_EQ(chart.strUnitLabel, GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(
    AtBothSidesOfEachBound, ChartUnits,
    ::testing::Values(UnitCase{0, 0, "$1"}, UnitCase{1, 1, "$1"},
                      UnitCase{999999.99, 999999.99, "$1"}, UnitCase{1e6, 1e5, "$10"},
                      UnitCase{9999990, 999999, "$10"}, UnitCase{1e7, 1e5, "$100"},
                      UnitCase{99999900, 999999, "$100"}, UnitCase{1e8, 1e5, "$1K"},
                      UnitCase{999999e3, 999999, "$1K"}, UnitCase{1e9, 1e5, "$10K"},
                      UnitCase{999999e4, 999999, "$10K"}, UnitCase{1e10, 1e5, "$100K"},
                      UnitCase{999999e5, 999999, "$100K"}, UnitCase{1e11, 1e5, "$1M"},
                      UnitCase{999999e6, 999999, "$1M"}, UnitCase{1e12, 1e5, "$10M"},
                      UnitCase{999999e7, 999999, "$10M"}, UnitCase{1e13, 1e5, "$100M"},
                      UnitCase{999999e8, 999999, "$100M"}, UnitCase{1e14, 1e5, "$1G"},
                      UnitCase{999999e9, 999999, "$1G"}, UnitCase{1e15, 1, "$"},
                      UnitCase{4e15, 1, "$"}, UnitCase{-999999.99, -999999.99, "$1"},
                      UnitCase{-2500000, -250000, "$10"}, UnitCase{-1e15, -1, "$"}));

TEST(ScaleChartData, DividesAllAmountsByTheSameUnit) {
  AmountMatrix amounts(2, 2);
  amounts(1, 1) = 5;
  amounts(2, 1) = -20000000;
  amounts(1, 2) = 0;
  amounts(2, 2) = 300;
  const ScaledChart chart = Scaled(amounts);
  ASSERT_EQ(chart.ScaledMatrix.Series(), 2U);
  ASSERT_EQ(chart.ScaledMatrix.Items(), 2U);
  EXPECT_EQ(chart.ScaledMatrix(1, 1), 0.05);
  EXPECT_EQ(chart.ScaledMatrix(2, 1), -200000);
  EXPECT_EQ(chart.ScaledMatrix(1, 2), 0);
  EXPECT_EQ(chart.ScaledMatrix(2, 2), 3);
  EXPECT_EQ(chart.strUnitLabel, "$100");
}

TEST(ScaleChartData, BringsTheLargestToOneBeyondTheLastUnit) {
  AmountMatrix amounts(1, 2);
  amounts(1, 1) = 1e15;
  amounts(1, 2) = -4e15;
  const ScaledChart chart = Scaled(amounts);
  EXPECT_EQ(chart.ScaledMatrix(1, 1), 0.25);
  EXPECT_EQ(chart.ScaledMatrix(1, 2), -1);
}

// The largest amount decides wherever it stands.
TEST(ScaleChartData, LooksAtEveryAmount) {
  for (const auto& [series, items] :
       {std::pair<std::size_t, std::size_t>{1, 3}, {3, 1}, {2, 2}, {2, 3}}) {
    for (std::size_t i = 1; i <= series; ++i) {
      for (std::size_t j = 1; j <= items; ++j) {
        AmountMatrix amounts(series, items);
        amounts(i, j) = -1e6;
        EXPECT_EQ(Scaled(amounts).strUnitLabel, "$10") << i << " " << j;
      }
    }
  }
}

TEST(ScaleChartData, FailsForAMatrixWithoutElements) {
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [] { Scaled(AmountMatrix{}); }));
}

TEST(ScaleChartData, PutsPercentBehindTheUnitOfPercentages) {
  const NumberLocale locale;
  EXPECT_EQ(ScaleChartData(OneAmount(80), ChartUnit::kPercent, locale).strUnitLabel, "1%");
  EXPECT_EQ(ScaleChartData(OneAmount(1e8), ChartUnit::kPercent, locale).strUnitLabel, "1K%");
  EXPECT_EQ(ScaleChartData(OneAmount(1e15), ChartUnit::kPercent, locale).strUnitLabel, "%");
}

struct SignCase {
  std::string name;
  NumberLocale locale;
  std::string label;
};

void PrintTo(const SignCase& test, std::ostream* out) { *out << test.name; }

class CurrencySigns : public ::testing::TestWithParam<SignCase> {};

TEST_P(CurrencySigns, StandWhereTheLocalePutsThem) {
  EXPECT_EQ(ScaleChartData(OneAmount(1e8), ChartUnit::kMoney, GetParam().locale).strUnitLabel,
            GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(
    Of, CurrencySigns,
    ::testing::Values(SignCase{"OneByteInFront", {".", ",", "$", true}, "$1K"},
                      SignCase{"OneByteBehind", {",", ".", "$", false}, "1K$"},
                      SignCase{"SeveralBytesInFront", {".", ",", "€", true}, "€1K"},
                      SignCase{"SeveralBytesBehind", {",", ".", "€", false}, "1K€"},
                      SignCase{"SeveralCharactersInFront", {".", ",", "R$", true}, "R$1K"},
                      SignCase{"SeveralCharactersBehind", {",", ".", "kr", false}, "1Kkr"},
                      SignCase{"None", {".", ",", "", true}, "1K"}),
    [](const auto& test) { return test.param.name; });

std::string Put(const std::string& member, const std::string& value) {
  return R"({"on":"chart","put":")" + member + R"(","value":)" + value + "}";
}

// ---- the kind

class ChartWriting : public ::testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> Events() const {
    std::vector<std::string> lines;
    for (const Event& event : log_.events()) {
      lines.push_back(quillmarsh::EventText(event));
    }
    return lines;
  }

  ChartWriter Writer(std::int32_t kind) { return {chart_, kind, form_, platform_.Locale()}; }

  quillmarsh::TerminalPlatform platform_{NumberLocale{}};
  frmTamo form_{platform_};
  EventLog log_;
  RecordingChart chart_{log_, 2400, nullptr};  // ten characters in half of it
};

TEST_F(ChartWriting, KindsHaveTheNumbersOfTheControl) {
  SetChartKind(chart_, 0);
  SetChartKind(chart_, 1);
  SetChartKind(chart_, 2);
  EXPECT_THAT(Events(),
              ElementsAre(Put("chartType", "3"), Put("chartType", "1"), Put("chartType", "14")));
}

TEST_F(ChartWriting, UnknownKindLeavesTheKindAlone) {
  for (const std::int32_t kind : {3, 14, 255, -1}) {
    SetChartKind(chart_, kind);
  }
  EXPECT_TRUE(Events().empty());
}

TEST_F(ChartWriting, SetUpClearsAndSetsInThisOrder) {
  SetUpChart(chart_, true, 2, form_);
  EXPECT_THAT(Events(),
              ElementsAre(Put("Repaint", "false"), Put("RowCount", "0"), Put("ColumnCount", "0"),
                          Put("ShowLegend", "true"), Put("chartType", "14"),
                          Put("Legend.Font", R"({"name":"Monospace","size":10.0})")));
}

TEST_F(ChartWriting, SetUpOfAnUnknownKindLeavesOutTheKindAlone) {
  SetUpChart(chart_, false, 9, form_);
  EXPECT_THAT(Events(), ElementsAre(Put("Repaint", "false"), Put("RowCount", "0"),
                                    Put("ColumnCount", "0"), Put("ShowLegend", "false"),
                                    Put("Legend.Font", R"({"name":"Monospace","size":10.0})")));
}

// ---- the labels

struct LabelCase {
  std::int32_t kind;
  ChartUnit unit;
  std::string between;
  std::vector<std::string> labels;
};

void PrintTo(const LabelCase& test, std::ostream* out) {
  *out << "kind " << test.kind << " between " << ::testing::PrintToString(test.between) << " unit "
       << static_cast<int>(test.unit);
}

class ItemLabelling : public ::testing::TestWithParam<LabelCase> {};

TEST_P(ItemLabelling, FollowsTheKind) {
  quillmarsh::TerminalPlatform platform{NumberLocale{}};
  frmTamo form(platform);
  ChartModel chart(12000);
  chart.SetChartData(AmountMatrix(1, 2));
  ChartWriter writer(chart, GetParam().kind, form, platform.Locale());
  writer.LabelItems({{"Cash", 1234.5}, {"", -2}}, GetParam().unit, GetParam().between);
  EXPECT_EQ(chart.ColumnLabels(), GetParam().labels);
  EXPECT_THAT(chart.RowLabels(), ElementsAre(""));
}

INSTANTIATE_TEST_SUITE_P(
    All, ItemLabelling,
    ::testing::Values(LabelCase{0, ChartUnit::kMoney, ":", {"", ""}},
                      LabelCase{1, ChartUnit::kMoney, ":", {"Cash", ""}},
                      LabelCase{2, ChartUnit::kMoney, ":", {"Cash:1,234.50", ":-2.00"}},
                      LabelCase{2, ChartUnit::kMoney, ": ", {"Cash: 1,234.50", ": -2.00"}},
                      LabelCase{0, ChartUnit::kPercent, ":", {"", ""}},
                      LabelCase{1, ChartUnit::kPercent, ":", {"Cash", ""}},
                      LabelCase{2, ChartUnit::kPercent, ":", {"Cash:1,234.50%", ":-2.00%"}},
                      LabelCase{7, ChartUnit::kMoney, ":", {"", ""}}));

TEST_F(ChartWriting, LabelsOneRowAndThenColumnByColumn) {
  chart_.ChartModel::SetChartData(AmountMatrix(1, 2));
  Writer(kBarChart).LabelItems({{"a", 1}, {"b", 2}}, ChartUnit::kMoney, ":");
  EXPECT_THAT(Events(), ElementsAre(Put("Row", "1"), Put("RowLabel", R"("")"), Put("Column", "1"),
                                    Put("ColumnLabel", R"("a")"), Put("Column", "2"),
                                    Put("ColumnLabel", R"("b")")));
}

TEST_F(ChartWriting, CutsColumnLabelsToHalfOfTheWidth) {
  chart_.ChartModel::SetChartData(AmountMatrix(1, 2));
  Writer(kBarChart).LabelItems({{"ten letter", 1}, {"eleven char", 2}}, ChartUnit::kMoney, ":");
  EXPECT_THAT(chart_.ColumnLabels(), ElementsAre("ten letter", "eleven ..."));
}

TEST_F(ChartWriting, CutsASlicesLabelAsAWhole) {
  chart_.ChartModel::SetChartData(AmountMatrix(1, 1));
  Writer(kPieChart).LabelItems({{"Wallet", 1234.5}}, ChartUnit::kMoney, ":");
  EXPECT_THAT(chart_.ColumnLabels(), ElementsAre("Wallet:..."));
}

TEST_F(ChartWriting, MeasuresLabelsInTheLegendsFont) {
  MeasuredPlatform platform;
  frmTamo form(platform);
  ChartModel chart(1000);
  chart.SetChartData(AmountMatrix(1, 2));
  ChartWriter writer(chart, kBarChart, form, platform.Locale());
  writer.LabelItems({{"lililililil", 1}, {"WWW", 2}}, ChartUnit::kMoney, ":");
  // 495 and 510 of 500 twips; "WW..." is 475 wide.
  EXPECT_THAT(chart.ColumnLabels(), ElementsAre("lililililil", "WW..."));
}

TEST_F(ChartWriting, LeavesRowLabelsUncut) {
  chart_.ChartModel::SetChartData(AmountMatrix(2, 1));
  Writer(kBarChart).LabelRows(ItemLabels({"a label past half of it", "b"}));
  EXPECT_THAT(Events(),
              ElementsAre(Put("Row", "1"), Put("RowLabel", R"("a label past half of it")"),
                          Put("Row", "2"), Put("RowLabel", R"("b")")));
}

TEST_F(ChartWriting, WritesASeriesInThisOrder) {
  AmountRows rows;
  rows.Start();
  rows.Add(2500000, "a");
  rows.Add(-5, "b");
  rows.Close();
  ChartWriter writer = Writer(kPieChart);
  WriteSeries(writer, rows, ChartUnit::kMoney, platform_.Locale());
  EXPECT_THAT(Events(), ElementsAre(Put("ChartData", "[[250000.0,-0.5]]"), Put("Row", "1"),
                                    Put("RowLabel", R"("")"), Put("Column", "1"),
                                    Put("ColumnLabel", R"("a:2,500...")"), Put("Column", "2"),
                                    Put("ColumnLabel", R"("b:-5.00")"),
                                    Put("Plot.Axis(1,1).AxisTitle.Text", R"("$10")")));
}

TEST_F(ChartWriting, ASeriesWithoutRowsFails) {
  ChartWriter writer = Writer(kBarChart);
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] {
    WriteSeries(writer, AmountRows{}, ChartUnit::kMoney, platform_.Locale());
  }));
  EXPECT_TRUE(Events().empty());
}

}  // namespace
}  // namespace vetlo
