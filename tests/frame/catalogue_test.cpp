#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <set>

#include "tests/frame/both_rows.h"
#include "tests/support/failing_database.h"
#include "tests/support/trace_lines.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::set<std::int32_t> kWithoutChart = {7, 9, 10, 54, 58, 59};

// An asset, a debt and something earned and spent.
std::unique_ptr<Database> SmallHousehold(std::int32_t report_number, std::int32_t kind) {
  SmallStore store;
  store.Account(1, "Bank", kCheckingAccount, 900)
      .Account(2, "Card", kCreditCard, -40)
      .Insert("Category", {{"CategoryNumber", 1}, {"CategoryName", "Food"}, {"CategoryType", 1}})
      .Insert("Payee", {{"PayeeNumber", 1}, {"PayeeName", "Shop"}})
      .Transaction({.type = kIncome, .total = 100, .account = 1, .category = 1, .payee = 1})
      .Transaction({.type = kExpense, .total = 30, .account = 1, .category = 1, .payee = 1});
  AddBothRows(store, {.report_number = report_number,
                      .chart_type = kind,
                      .title = "Mine",
                      .range = 15,
                      .from = Day(2026, 1, 1),
                      .to = Day(2026, 3, 31),
                      .parameter1 = 1,
                      .parameter2 = 1});
  return store.Open();
}

class EveryNumber : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(EveryNumber, IsShownAsAReport) {
  const auto store = SmallHousehold(GetParam(), kBarChart);
  FailurePlan never;
  FailingDatabase watched(*store, never);
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(watched, kReportRow), 0);
  ASSERT_GE(drawing.report.Paragraphs().size(), 2U);
  EXPECT_EQ(drawing.report.Paragraphs()[1].Text().substr(0, 4), "Mine");
  EXPECT_EQ(drawing.report.Paragraphs()[1].alignment, Alignment::kCenter);
  EXPECT_TRUE(drawing.report.Locked());
  EXPECT_THAT(drawing.Puts("report", "Visible"), ElementsAre("true"));
  EXPECT_THAT(drawing.Puts("chart", "Visible"), ElementsAre("false"));
  EXPECT_EQ(drawing.window.MousePointer(), kDefaultPointer);
  EXPECT_EQ(watched.OpenRecordsets(), 0);
}

TEST_P(EveryNumber, IsShownAsAChartOfEveryKind) {
  for (const std::int32_t kind : {kLineChart, kBarChart, kPieChart, 9}) {
    const auto store = SmallHousehold(GetParam(), kind);
    FailurePlan never;
    FailingDatabase watched(*store, never);
    Drawing drawing;
    EXPECT_EQ(drawing.TryToShow(watched, kChartRow), 0);
    EXPECT_EQ(drawing.chart.Title().substr(0, 4), kWithoutChart.contains(GetParam()) ? "" : "Mine");
    EXPECT_THAT(drawing.Puts("chart", "Repaint"), ElementsAre("false", "true"));
    EXPECT_THAT(drawing.Puts("chart", "Visible"), ElementsAre("false", "true"));
    EXPECT_THAT(drawing.Puts("report", "Visible"), ElementsAre("false"));
    EXPECT_EQ(drawing.window.MousePointer(), kDefaultPointer);
    EXPECT_EQ(watched.OpenRecordsets(), 0);
  }
}

TEST_P(EveryNumber, IsShownOfAnEmptyStore) {
  SmallStore builder;
  AddBothRows(builder, {.report_number = GetParam(), .title = "Mine"});
  const auto store = builder.Open();
  for (const std::int32_t number : {kReportRow, kChartRow}) {
    Drawing drawing;
    EXPECT_EQ(drawing.TryToShow(*store, number), 0);
    EXPECT_EQ(drawing.window.MousePointer(), kDefaultPointer);
  }
}

INSTANTIATE_TEST_SUITE_P(OfTheCatalogue, EveryNumber, ::testing::Range(1, 60));

// ---- numbers that run the same code

class SameFigures : public ::testing::TestWithParam<std::vector<std::int32_t>> {};

TEST_P(SameFigures, DifferInNothing) {
  for (const std::int32_t row : {kReportRow, kChartRow}) {
    Drawing first;
    first.Show(*SmallHousehold(GetParam().front(), kBarChart), row);
    for (const std::int32_t number : GetParam()) {
      Drawing other;
      other.Show(*SmallHousehold(number, kBarChart), row);
      EXPECT_EQ(other.Events(), first.Events()) << number;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(OfAFamily, SameFigures,
                         ::testing::Values(std::vector<std::int32_t>{1, 23, 36, 38, 46, 48, 50, 52},
                                           std::vector<std::int32_t>{4, 55, 56, 57},
                                           std::vector<std::int32_t>{18, 31, 39},
                                           std::vector<std::int32_t>{19, 32, 33, 34, 40, 41, 42},
                                           std::vector<std::int32_t>{20, 43},
                                           std::vector<std::int32_t>{21, 44},
                                           std::vector<std::int32_t>{22, 35, 37, 45, 47, 49, 51},
                                           std::vector<std::int32_t>{24, 53}));

// ---- the families of net worth

struct NetWorthCase {
  std::int32_t number;
  std::string headers;
  std::string total_line;
  std::string chart_title;
  std::string chart_data;
};

void PrintTo(const NetWorthCase& test, std::ostream* out) { *out << "number " << test.number; }

class NetWorthNumbers : public ::testing::TestWithParam<NetWorthCase> {};

TEST_P(NetWorthNumbers, HaveTheirWordsInTheReport) {
  Drawing drawing;
  drawing.Show(*SmallHousehold(GetParam().number, kBarChart), kReportRow);
  const auto& paragraphs = drawing.report.Paragraphs();
  ASSERT_GE(paragraphs.size(), 7U);
  EXPECT_EQ(paragraphs[6].Text(), GetParam().headers);
  EXPECT_EQ(paragraphs.back().Text(), GetParam().total_line);
}

TEST_P(NetWorthNumbers, HaveTheirTitleAndDataInTheChart) {
  Drawing drawing;
  drawing.Show(*SmallHousehold(GetParam().number, kBarChart), kChartRow);
  EXPECT_EQ(drawing.chart.Title(), GetParam().chart_title);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre(GetParam().chart_data));
}

INSTANTIATE_TEST_SUITE_P(
    All, NetWorthNumbers,
    ::testing::Values(
        NetWorthCase{5, "Account\t  Total", "Net Worth\t 930.00", "Mine:930.00",
                     "[[970.0,-1.0,970.0,-40.0,-1.0,40.0]]"},
        NetWorthCase{6, "Account\t  Total", "Net Worth\t 930.00", "Mine", "[[970.0,-40.0]]"},
        NetWorthCase{20, "Account\t Balance", "Total\t  970.00", "Mine:970.00", "[[970.0]]"},
        NetWorthCase{43, "Account\t Balance", "Total\t  970.00", "Mine:970.00", "[[970.0]]"},
        NetWorthCase{21, "Account\t Balance", "Total\t   40.00", "Mine:40.00", "[[40.0]]"},
        NetWorthCase{44, "Account\t Balance", "Total\t   40.00", "Mine:40.00", "[[40.0]]"}));

TEST(NetWorth, LeavesOutHeadingsFromTheOneSidedReports) {
  Drawing drawing;
  drawing.Show(*SmallHousehold(21, kBarChart), kReportRow);
  EXPECT_EQ(drawing.report.Paragraphs().at(9).Text(), "Credit Card:Card\t   40.00");
}

// A slice shows its amount and the axis its unit.
TEST(NetWorth, ASliceShowsTheUnscaledAmount) {
  const auto store = SmallStore()
                         .Account(1, "Bank", kCheckingAccount, 2500000)
                         .Row({.report_number = 20,
                               .output = ChartOrReport::kChart,
                               .chart_type = kPieChart,
                               .title = "Mine"})
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("Bank:2,500,000.00"));
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[250000.0]]"));
  EXPECT_EQ(drawing.chart.AxisTitle(), "$10");
  EXPECT_EQ(drawing.chart.Title(), "Mine:2,500,000.00");
}

TEST(NetWorth, ALineHasNoLabels) {
  Drawing drawing;
  drawing.Show(*SmallHousehold(6, kLineChart), kChartRow);
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("", ""));
}

}  // namespace
}  // namespace vetlo
