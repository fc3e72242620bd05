#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "tests/frame/both_rows.h"
#include "tests/frame/frame_lines.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

const std::string kRule(20, '_');  // 2235 twips

// A wallet of 100 of which 30 are spent on the second of three days.
SmallStore Spending(std::int32_t kind = kBarChart) {
  SmallStore store;
  store.Account(12, "Wallet", kCashAccount, 100)
      .Account(2, "Second", kSavingsAccount, 5)
      .Transaction({.type = kExpense, .date = Day(2026, 3, 3), .total = 30, .account = 12});
  AddBothRows(store, {.report_number = 25,
                      .chart_type = kind,
                      .title = "Course",
                      .range = 15,
                      .from = Day(2026, 3, 2),
                      .to = Day(2026, 3, 4),
                      .group = kCallerParametersGroup});
  return store;
}

// What a row shows of the spending, or of what some damage has made of it.
class Shown : public Drawing {
 public:
  explicit Shown(std::int32_t row, const Variant& subject = 12, const std::string& damage = "",
                 SmallStore builder = Spending()) {
    if (!damage.empty()) {
      builder.Execute(damage);
    }
    EXPECT_EQ(TryToShow(*builder.Open(), row, subject), 0);
  }
};

// ---- as a report

TEST(BalanceHistoryReport, IsWrittenInThisOrder) {
  const auto store = Spending().Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kReportRow, 12);
  std::vector<std::string> expected;
  expected << kReportPointers << OpenedTables() << kReportPrepared
           << HeadingLines("Course:Cash:Wallet", "2026/03/02 Through 2026/03/04")
           << LayOutLines("3192.0", "1678.5")
           << PutText("report", "SelText",
                      "Date\t Balance\r\n" + kRule + "\r\n\r\n" +  //
                          "2026/03/02\t  100.00\r\n"               //
                          "2026/03/03\t   70.00\r\n"               //
                          "2026/03/04\t   70.00")
           << kReportShown << ClosedTables() << kReportPointersBack;
  EXPECT_THAT(EventsWithWholeTexts(drawing), ElementsAreArray(expected));
}

TEST(BalanceHistoryReport, OfAnAccountThatIsNotThereIsItsTitleAndCaption) {
  const Shown drawing(kReportRow, 99);
  EXPECT_EQ(drawing.report.Text(), "\r\nCourse\r\n\r\n2026/03/02 Through 2026/03/04\r\n\r\n\r\n");
  EXPECT_TRUE(drawing.report.Locked());
  EXPECT_TRUE(drawing.report.Visible());
}

// 480 for "Date", 840 for "Balance".
TEST(BalanceHistoryReport, OfAnAccountThatIsNotThereIsLaidOutForItsHeaders) {
  const Shown drawing(kReportRow, 99);
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("2472.0", "12310.0"));
  EXPECT_THAT(drawing.Puts("report", "SelTabs"), ElementsAre("283.5", "958.5"));
}

TEST(BalanceHistoryReport, OfARangeThatRunsBackwardsIsItsTitleAndCaption) {
  const Shown drawing(kReportRow, 12, "UPDATE ChartReportSubType SET ToDate = FromDate - 1");
  EXPECT_EQ(drawing.report.Text(),
            "\r\nCourse:Cash:Wallet\r\n\r\n2026/03/02 Through 2026/03/01\r\n\r\n\r\n");
}

TEST(BalanceHistoryReport, OfOneDayHasNoLineEndBehindItsRow) {
  const Shown drawing(kReportRow, 12, "UPDATE ChartReportSubType SET ToDate = FromDate");
  EXPECT_TRUE(drawing.report.Text().ends_with("\r\n\r\n2026/03/02\t  100.00"));
}

TEST(BalanceHistoryReport, OfAnUnknownTypeOfAccountSaysSo) {
  const Shown drawing(kReportRow, 12, "UPDATE Account SET AccountType = 77");
  EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "Course:Unknown:Wallet");
}

TEST(BalanceHistoryReport, ShowsDebtsBelowZero) {
  const Shown drawing(kReportRow, 12, "UPDATE Account SET OpeningBalance = -1000000");
  EXPECT_TRUE(drawing.report.Text().ends_with("2026/03/04\t -130.00"));
}

TEST(BalanceHistoryReport, OfARangeWithoutEndsHasNoCaption) {
  const Shown drawing(kReportRow, 12, "UPDATE ChartReportSubType SET DateRangeType = 0");
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
  const Shown drawing(kReportRow, GetParam().parameter);
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
  const Shown drawing(kChartRow, GetParam().parameter);
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

// A number that does not convert stays 0, and the chart's title asks for that account.
SmallStore SpendingBesideAccountNought() {
  SmallStore store = Spending();
  store.Account(0, "Nought", kCashAccount, 1);
  return store;
}

TEST(BalanceHistoryChart, OfNoSubjectIsTitledWithTheAccountOfNumberNought) {
  const Shown drawing(kChartRow, "x", "", SpendingBesideAccountNought());
  EXPECT_EQ(drawing.chart.Title(), "Course:Nought");
  EXPECT_EQ(drawing.chart.Footnote(), "2026/03/02 Through 2026/03/04");
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "Column"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "Plot.Axis(1,1).AxisTitle.Text"), IsEmpty());
}

TEST(BalanceHistoryReport, OfNoSubjectStaysEmptyBesideAnAccountOfNumberNought) {
  const Shown drawing(kReportRow, "x", "", SpendingBesideAccountNought());
  EXPECT_THAT(drawing.report.Paragraphs(), IsEmpty());
}

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
  expected << kChartPointers << OpenedTables() << ChartPrepared()
           << Put("chart", "ChartData", "[[100.0],[70.0],[70.0]]") << Put("chart", "Row", "1")
           << PutText("chart", "RowLabel", "2026/03/02") << Put("chart", "Row", "2")
           << PutText("chart", "RowLabel", "2026/03/03") << Put("chart", "Row", "3")
           << PutText("chart", "RowLabel", "2026/03/04") << Put("chart", "Column", "1")
           << PutText("chart", "ColumnLabel", "Wallet")
           << PutText("chart", "Plot.Axis(1,1).AxisTitle.Text", "$1")
           << PutText("chart", "TitleText", "Course:Wallet")
           << PutText("chart", "FootnoteText", "2026/03/02 Through 2026/03/04") << kChartShown
           << ClosedTables() << kChartPointersBack;
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

TEST(BalanceHistoryChart, IsTheSameInEveryKind) {
  for (const std::int32_t kind : {kLineChart, kPieChart}) {
    const Shown drawing(kChartRow, 12, "", Spending(kind));
    EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("Wallet"));
    EXPECT_THAT(drawing.chart.RowLabels(), ElementsAre("2026/03/02", "2026/03/03", "2026/03/04"));
  }
}

TEST(BalanceHistoryChart, OfAnAccountThatIsNotThereIsItsTitleAndFootnote) {
  const Shown drawing(kChartRow, 99);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "ColumnLabel"), IsEmpty());
  EXPECT_THAT(drawing.Puts("chart", "Plot.Axis(1,1).AxisTitle.Text"), IsEmpty());
  EXPECT_EQ(drawing.chart.Title(), "Course");
  EXPECT_EQ(drawing.chart.Footnote(), "2026/03/02 Through 2026/03/04");
}

TEST(BalanceHistoryChart, OfARangeThatRunsBackwardsStillNamesItsAccount) {
  const Shown drawing(kChartRow, 12, "UPDATE ChartReportSubType SET ToDate = FromDate - 1");
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_EQ(drawing.chart.Title(), "Course:Wallet");
}

TEST(BalanceHistoryChart, IsScaledAsAWhole) {
  const Shown drawing(kChartRow, 12, "UPDATE Account SET OpeningBalance = 20000000000");
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
