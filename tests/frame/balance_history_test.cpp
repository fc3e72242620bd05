#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "tests/support/trace_lines.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr std::int32_t kReportRow = 1;
constexpr std::int32_t kChartRow = 2;

const std::string kRule(20, '_');  // 2235 twips

// A wallet of 100 of which 30 are spent on the second of three days.
SmallStore Spending(std::int32_t kind = kBarChart) {
  TestRow report{.number = kReportRow,
                 .report_number = 25,
                 .chart_type = kind,
                 .title = "Course",
                 .range = 15,
                 .from = Day(2026, 3, 2),
                 .to = Day(2026, 3, 4),
                 .group = kCallerParametersGroup};
  TestRow chart = report;
  chart.number = kChartRow;
  chart.output = ChartOrReport::kChart;
  SmallStore store;
  store.Account(12, "Wallet", kCashAccount, 100)
      .Account(2, "Second", kSavingsAccount, 5)
      .Transaction({.type = kExpense, .date = Day(2026, 3, 3), .total = 30, .account = 12})
      .Row(report)
      .Row(chart);
  return store;
}

// ---- as a report

TEST(BalanceHistoryReport, IsWrittenInThisOrder) {
  const auto store = Spending().Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kReportRow, 12);
  std::vector<std::string> expected;
  expected << Put("window", "MousePointer", "11") << Put("report", "MousePointer", "11")
           << OpenedTables() << Put("report", "Locked", "false") << PutText("report", "Text", "")
           << Put("report", "SelIndent", "283.5") << Put("report", "SelRightIndent", "283.5")
           << Put("report", "SelAlignment", "2") << PutText("report", "SelFontName", "Monospace")
           << Put("report", "SelFontSize", "10.0") << PutText("report", "SelText", "\r\n")
           << PutText("report", "SelFontName", "MS Sans Serif")
           << Put("report", "SelFontSize", "12.0")
           << PutText("report", "SelText", "Course:Cash:Wallet\r\n")
           << PutText("report", "SelFontName", "Monospace") << Put("report", "SelFontSize", "10.0")
           << PutText("report", "SelText", "\r\n2026/03/02 Through 2026/03/04\r\n\r\n\r\n")
           << Put("report", "SelAlignment", "0") << Put("report", "RightMargin", "3192.0")
           << Put("report", "RightMargin", "12310.0") << Put("report", "SelTabCount", "2")
           << TabStop(0, "283.5") << TabStop(1, "1678.5")
           << PutText("report", "SelText",
                      "Date\t Balance\r\n" + kRule + "\r\n\r\n" +  //
                          "2026/03/02\t  100.00\r\n"               //
                          "2026/03/03\t   70.00\r\n"               //
                          "2026/03/04\t   70.00")
           << Put("report", "Locked", "true") << Put("report", "Visible", "true")
           << Put("report", "SelStart", "0") << Put("chart", "Visible", "false") << ClosedTables()
           << Put("window", "MousePointer", "0") << Put("report", "MousePointer", "0");
  EXPECT_THAT(EventsWithWholeTexts(drawing), ElementsAreArray(expected));
}

TEST(BalanceHistoryReport, OfAnAccountThatIsNotThereIsItsTitleAndCaption) {
  const auto store = Spending().Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kReportRow, 99), 0);
  EXPECT_EQ(drawing.report.Text(), "\r\nCourse\r\n\r\n2026/03/02 Through 2026/03/04\r\n\r\n\r\n");
  EXPECT_TRUE(drawing.report.Locked());
  EXPECT_TRUE(drawing.report.Visible());
}

// 480 for "Date", 840 for "Balance".
TEST(BalanceHistoryReport, OfAnAccountThatIsNotThereIsLaidOutForItsHeaders) {
  const auto store = Spending().Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 99);
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("2472.0", "12310.0"));
  EXPECT_THAT(drawing.Puts("report", "SelTabs"), ElementsAre("283.5", "958.5"));
}

TEST(BalanceHistoryReport, OfARangeThatRunsBackwardsIsItsTitleAndCaption) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE ChartReportSubType SET ToDate = FromDate - 1");
  const auto store = builder.Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kReportRow, 12), 0);
  EXPECT_EQ(drawing.report.Text(),
            "\r\nCourse:Cash:Wallet\r\n\r\n2026/03/02 Through 2026/03/01\r\n\r\n\r\n");
}

TEST(BalanceHistoryReport, OfOneDayHasNoLineEndBehindItsRow) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE ChartReportSubType SET ToDate = FromDate");
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 12);
  EXPECT_TRUE(drawing.report.Text().ends_with("\r\n\r\n2026/03/02\t  100.00"));
}

TEST(BalanceHistoryReport, OfAnUnknownTypeOfAccountSaysSo) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE Account SET AccountType = 77");
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 12);
  EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "Course:Unknown:Wallet");
}

TEST(BalanceHistoryReport, ShowsDebtsBelowZero) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE Account SET OpeningBalance = -1000000");
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 12);
  EXPECT_TRUE(drawing.report.Text().ends_with("2026/03/04\t -130.00"));
}

TEST(BalanceHistoryReport, OfARangeWithoutEndsHasNoCaption) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE ChartReportSubType SET DateRangeType = 0");
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 12);
  EXPECT_EQ(drawing.report.Text(), "\r\nCourse:Cash:Wallet\r\n\r\n\r\nDate\t Balance\r\n" + kRule +
                                       "\r\n\r\n2026/03/03\t   70.00");
}

// ---- the subject

struct SubjectCase {
  std::string name;
  Variant parameter;
  std::string account;  // empty where the parameter is no number
};

void PrintTo(const SubjectCase& test, std::ostream* out) { *out << test.name; }

class Subjects : public ::testing::TestWithParam<SubjectCase> {};

TEST_P(Subjects, OfAReport) {
  const auto store = Spending().Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kReportRow, GetParam().parameter), 0);
  if (GetParam().account.empty()) {
    EXPECT_THAT(drawing.report.Paragraphs(), IsEmpty());
    EXPECT_THAT(drawing.Puts("report", "SelText"), IsEmpty());
  } else {
    EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "Course:" + GetParam().account);
  }
  EXPECT_TRUE(drawing.report.Locked());
  EXPECT_TRUE(drawing.report.Visible());
}

TEST_P(Subjects, OfAChart) {
  SmallStore builder = Spending();
  builder.Account(0, "Nought", kCashAccount, 1);  // not to be taken for a subject that is none
  const auto store = builder.Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kChartRow, GetParam().parameter), 0);
  const std::string& account = GetParam().account;
  EXPECT_EQ(drawing.chart.Title(),
            account.empty() ? "Course" : "Course:" + account.substr(account.find(':') + 1));
  EXPECT_EQ(drawing.chart.Footnote(), "2026/03/02 Through 2026/03/04");
  EXPECT_EQ(drawing.Puts("chart", "ChartData").size(), account.empty() ? 0U : 1U);
}

INSTANTIATE_TEST_SUITE_P(
    All, Subjects,
    ::testing::Values(
        SubjectCase{"ALong", 12, "Cash:Wallet"}, SubjectCase{"AText", "12", "Cash:Wallet"},
        SubjectCase{"ATextInBlanks", " 12 ", "Cash:Wallet"}, SubjectCase{"AnotherText", "x", ""},
        SubjectCase{"AnEmptyText", "", ""}, SubjectCase{"Nothing", Empty{}, ""},
        SubjectCase{"Null", Null{}, ""}, SubjectCase{"AFraction", 11.75, "Cash:Wallet"},
        SubjectCase{"AHalfAboveAnEvenNumber", 12.5, "Cash:Wallet"},
        SubjectCase{"AHalfBelowAnEvenNumber", 1.5, "Savings Account:Second"},
        SubjectCase{"AFractionAsText", "2.5", "Savings Account:Second"},
        SubjectCase{"PastALong", 3e9, ""}, SubjectCase{"AnAmount", Money(12), "Cash:Wallet"}),
    [](const auto& test) { return test.param.name; });

TEST(BalanceHistory, AFavoriteReadsItsSubjectFromTheRow) {
  const auto store = SmallStore()
                         .Account(12, "Wallet", kCashAccount, 100)
                         .Row({.report_number = 25,
                               .title = "Course",
                               .range = 1,
                               .group = kFavoriteGroup,
                               .parameter1 = "12"})
                         .Open();
  Drawing drawing;
  drawing.Show(*store, 1, 99);
  EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "Course:Cash:Wallet");
}

// ---- as a chart

TEST(BalanceHistoryChart, IsWrittenInThisOrder) {
  const auto store = Spending().Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kChartRow, 12);
  std::vector<std::string> expected;
  expected << Put("window", "MousePointer", "11") << Put("chart", "MousePointer", "11") << kDoEvents
           << OpenedTables() << Put("chart", "Repaint", "false") << Put("chart", "RowCount", "0")
           << Put("chart", "ColumnCount", "0") << Put("chart", "ShowLegend", "false")
           << Put("chart", "chartType", "1")
           << Put("chart", "Legend.Font", R"({"name":"Monospace","size":10.0})")
           << Put("chart", "ChartData", "[[100.0],[70.0],[70.0]]") << Put("chart", "Row", "1")
           << PutText("chart", "RowLabel", "2026/03/02") << Put("chart", "Row", "2")
           << PutText("chart", "RowLabel", "2026/03/03") << Put("chart", "Row", "3")
           << PutText("chart", "RowLabel", "2026/03/04") << Put("chart", "Column", "1")
           << PutText("chart", "ColumnLabel", "Wallet")
           << PutText("chart", "Plot.Axis(1,1).AxisTitle.Text", "$1")
           << PutText("chart", "TitleText", "Course:Wallet")
           << PutText("chart", "FootnoteText", "2026/03/02 Through 2026/03/04")
           << Put("chart", "Repaint", "true") << Put("report", "Visible", "false") << ClosedTables()
           << Put("window", "MousePointer", "0") << Put("chart", "MousePointer", "0")
           << Put("chart", "Visible", "false") << Put("chart", "Visible", "true");
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

TEST(BalanceHistoryChart, IsTheSameInEveryKind) {
  for (const std::int32_t kind : {kLineChart, kPieChart}) {
    const auto store = Spending(kind).Open();
    Drawing drawing;
    drawing.Show(*store, kChartRow, 12);
    EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("Wallet"));
    EXPECT_THAT(drawing.chart.RowLabels(), ElementsAre("2026/03/02", "2026/03/03", "2026/03/04"));
  }
}

TEST(BalanceHistoryChart, OfAnAccountThatIsNotThereIsItsTitleAndFootnote) {
  const auto store = Spending().Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kChartRow, 99), 0);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "ColumnLabel"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "Plot.Axis(1,1).AxisTitle.Text"), IsEmpty());
  EXPECT_EQ(drawing.chart.Title(), "Course");
  EXPECT_EQ(drawing.chart.Footnote(), "2026/03/02 Through 2026/03/04");
}

TEST(BalanceHistoryChart, OfARangeThatRunsBackwardsStillNamesItsAccount) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE ChartReportSubType SET ToDate = FromDate - 1");
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, kChartRow, 12);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_EQ(drawing.chart.Title(), "Course:Wallet");
}

TEST(BalanceHistoryChart, IsScaledAsAWhole) {
  SmallStore builder = Spending();
  builder.Execute("UPDATE Account SET OpeningBalance = 20000000000");
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, kChartRow, 12);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[2e+05],[199997.0],[199997.0]]"));
  EXPECT_EQ(drawing.chart.AxisTitle(), "$10");
}

TEST(BalanceHistoryChart, CutsTheNameToHalfOfTheWidth) {
  const auto store = Spending().Open();
  const auto rows = store->OpenRecordset("ChartReportSubType");
  Drawing d;
  RecordingChart narrow(d.log, 1200, &d.frame);
  d.component.ShowChartReport(*store, *rows, kChartRow, &narrow, nullptr, 12);
  EXPECT_THAT(narrow.ColumnLabels(), ElementsAre("Wa..."));
  EXPECT_EQ(narrow.Title(), "Course:Wallet");
}

}  // namespace
}  // namespace vetlo
