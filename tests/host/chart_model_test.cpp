#include "vetlo/host/chart_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;

AmountMatrix TwoByThree() {
  AmountMatrix data(2, 3);
  data(2, 3) = 7;
  return data;
}

TEST(ChartModel, TakesTheFirstDimensionForRows) {
  ChartModel chart(12000);
  chart.SetChartData(TwoByThree());
  EXPECT_EQ(chart.Data(), TwoByThree());
  EXPECT_THAT(chart.RowLabels(), ElementsAre("", ""));
  EXPECT_THAT(chart.ColumnLabels(), ElementsAre("", "", ""));
}

TEST(ChartModel, LabelsTheSelectedRowAndColumn) {
  ChartModel chart(12000);
  chart.SetChartData(TwoByThree());
  chart.SetRow(2);
  chart.SetRowLabel("row");
  chart.SetColumn(3);
  chart.SetColumnLabel("column");
  EXPECT_THAT(chart.RowLabels(), ElementsAre("", "row"));
  EXPECT_THAT(chart.ColumnLabels(), ElementsAre("", "", "column"));
}

TEST(ChartModel, RefusesALabelWhereThereIsNoRowOrColumn) {
  ChartModel chart(12000);
  chart.SetChartData(TwoByThree());
  for (const std::int32_t row : {0, -1, 3}) {
    chart.SetRow(row);
    EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { chart.SetRowLabel("x"); }));
  }
  for (const std::int32_t column : {0, -1, 4}) {
    chart.SetColumn(column);
    EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { chart.SetColumnLabel("x"); }));
  }
}

TEST(ChartModel, ACountOfZeroClearsDataAndLabels) {
  for (const bool rows : {true, false}) {
    ChartModel chart(12000);
    chart.SetChartData(TwoByThree());
    rows ? chart.SetRowCount(0) : chart.SetColumnCount(0);
    EXPECT_TRUE(chart.Data().elements().empty());
    EXPECT_TRUE(chart.RowLabels().empty());
    EXPECT_TRUE(chart.ColumnLabels().empty());
  }
}

TEST(ChartModel, ClearingLeavesTheOldTitles) {
  ChartModel chart(12000);
  chart.SetTitleText("title");
  chart.SetFootnoteText("footnote");
  chart.SetAxisTitleText("$1");
  chart.SetRowCount(0);
  chart.SetColumnCount(0);
  EXPECT_EQ(chart.Title(), "title");
  EXPECT_EQ(chart.Footnote(), "footnote");
  EXPECT_EQ(chart.AxisTitle(), "$1");
}

TEST(ChartModel, KeepsItsDataForAnyOtherCount) {
  ChartModel chart(12000);
  chart.SetChartData(TwoByThree());
  chart.SetRowCount(5);
  chart.SetColumnCount(5);
  EXPECT_EQ(chart.Data(), TwoByThree());
}

}  // namespace
}  // namespace vetlo
