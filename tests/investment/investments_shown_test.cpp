#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/investment/securities.h"
#include "tests/support/failing_objects.h"
#include "tests/support/trace_lines.h"

// The reports and charts of investments as their objects receive them.

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr std::int32_t kRow = 1;

const std::string kCaption = "2026/03/01 Through 2026/03/31";

TestRow RowOf(std::int32_t report_number, ChartOrReport output, std::int32_t chart_type) {
  return {.number = kRow,
          .report_number = report_number,
          .output = output,
          .chart_type = chart_type,
          .title = "Mine",
          .range = 15,
          .from = Day(2026, 3, 1),
          .to = Day(2026, 3, 31),
          .group = kCallerParametersGroup};
}

// Alder was bought for 1000 and brought 50, Birch came without money; the bank serves the broker.
SmallStore Household(double cash = 700) {
  SmallStore store = Market();
  AddItem(store, 11, "Alder");
  AddItem(store, 12, "Birch", kBond);
  AddLatestPrice(store, 11, 110);
  AddLatestPrice(store, 12, 0.5);
  store.Transaction(Traded(kBuy, 11, 1000, 10.0)).Transaction(Traded(kDividend, 11, 50));
  Hold(store, 12, 3);
  AddPrice(store, 11, 5, 100);
  AddPrice(store, 11, 9, 110);
  AddPrice(store, 12, 9, 0.5);
  SetBalance(store, kBroker, 1101.5);
  SetBalance(store, kBank, cash);
  Associate(store, kBroker, kBank);
  return store;
}

std::string ReportOf(SmallStore builder, std::int32_t report_number,
                     const Variant& subject = Empty{}) {
  const auto store = builder.Row(RowOf(report_number, ChartOrReport::kReport, kBarChart)).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kRow, subject), 0);
  EXPECT_TRUE(drawing.report.Locked());
  return drawing.report.Text();
}

// Where a number does not convert nobody takes the rows of number 0 for its subject.
SmallStore HouseholdWithNumbersNought() {
  SmallStore store = Household();
  store.Account(0, "Nought", kInvestmentAccount);
  AddItem(store, 0, "Nought");
  Hold(store, 0, 1, 0);
  AddPrice(store, 0, 9, 1);
  return store;
}

// A row of a number as a chart.
class ShownChart : public Drawing {
 public:
  ShownChart(SmallStore builder, std::int32_t report_number, std::int32_t kind,
             const Variant& subject) {
    const auto store = builder.Row(RowOf(report_number, ChartOrReport::kChart, kind)).Open();
    EXPECT_EQ(TryToShow(*store, kRow, subject), 0);
  }
};

// What becomes of a chart whose title cannot be put.
struct UntitledChart {
  explicit UntitledChart(std::int32_t report_number) {
    const auto store =
        Household().Row(RowOf(report_number, ChartOrReport::kChart, kBarChart)).Open();
    const auto rows = store->OpenRecordset("ChartReportSubType");
    Drawing drawing;
    FailingChart chart(drawing.log, &drawing.frame, {"TitleText"});
    failure = ResumeNext(
        [&] { drawing.component.ShowChartReport(*store, *rows, kRow, &chart, &drawing.report); });
    repainted = chart.Repaint();
  }

  std::int32_t failure = 0;
  bool repainted = false;
};

std::string Heading(const std::string& title = "Mine") {
  return "\r\n" + title + "\r\n\r\n" + kCaption + "\r\n\r\n\r\n";
}

// Lines as a report joins them, "=" for its rule.
std::string Lines(const std::string& rule, const std::vector<std::string>& lines) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    text += (i == 0 ? "" : "\r\n") + (lines[i] == "=" ? rule : lines[i]);
  }
  return text;
}

// ---- positions and yields

// 12, 8, 12 and 8 cells and three gaps: 5385 twips.
TEST(InvestmentsByAccountReport, IsSectionsOverTheTotal) {
  EXPECT_EQ(ReportOf(Household(), 13),
            Heading() + Lines(std::string(46, '_'),
                              {"Investment\t Quantity\t Latest Price\t    Value", "=", "", "Broker",
                               "=", "", "Alder\t       10\t       110.00\t 1,100.00",
                               "Birch\t        3\t         0.50\t     1.50",
                               "Bank\t         \t             \t   700.00", "",
                               "Total Broker\t         \t             \t 1,801.50", "", "=", "=",
                               "Total\t\t\t 1,801.50"}));
}

TEST(InvestmentsByTypeReport, IsSectionsOverTheTotal) {
  EXPECT_EQ(
      ReportOf(Household(), 14),
      Heading() + Lines(std::string(64, '_'),
                        {"Investment\t Quantity\t Latest Price\t    Value",
                         "=",
                         "",
                         "Stocks",
                         "=",
                         "",
                         "Alder\t       10\t       110.00\t 1,100.00",
                         "",
                         "Total Stocks\t         \t             \t 1,100.00",
                         "",
                         "Bonds",
                         "=",
                         "",
                         "Birch\t        3\t         0.50\t     1.50",
                         "",
                         "Total Bonds\t         \t             \t     1.50",
                         "",
                         "Associated Cash Account",
                         "=",
                         "",
                         "Bank\t         \t             \t   700.00",
                         "",
                         "Total Associated Cash Accounts\t         \t             \t   700.00",
                         "=",
                         "=",
                         "Total\t\t\t 1,801.50"}));
}

TEST(YieldByAccountReport, IsSectionsOverTheTotal) {
  EXPECT_EQ(ReportOf(Household(), 15),
            Heading() + Lines(std::string(31, '_'),
                              {"Investment\t Gain/Loss\t  Yield", "=", "", "Broker", "=", "",
                               "Alder\t    150.00\t 15.00%", "Birch\t      1.50\t       ", "",
                               "Total Broker\t    151.50\t 15.15%", "", "=", "=",
                               "Total\t    151.50\t 15.15%"}));
}

// The rows and what came of them are measured; a total that failed is nothing.
TEST(YieldByTypeReport, LaysOutATotalOfNothingWhereItFails) {
  SmallStore builder;
  builder.Account(1, "Broker", kInvestmentAccount);
  builder.Execute("UPDATE Account SET Balance = 1234567890000").Row({.report_number = 16});
  const auto store = builder.Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("4227.0", "12310.0"));
}

TEST(YieldByTypeReport, IsSectionsOverTheTotal) {
  EXPECT_EQ(ReportOf(Household(), 16),
            Heading() + Lines(std::string(41, '_'), {"Investment\t Gain/Loss\t  Yield",
                                                     "=",
                                                     "",
                                                     "Stock Investment",
                                                     "=",
                                                     "",
                                                     "Alder\t    150.00\t 15.00%",
                                                     "",
                                                     "Total Stock Investment\t    150.00\t 15.00%",
                                                     "",
                                                     "Bond Investment",
                                                     "=",
                                                     "",
                                                     "Birch\t      1.50\t       ",
                                                     "",
                                                     "Total Bond Investment\t      1.50\t       ",
                                                     "",
                                                     "=",
                                                     "=",
                                                     "Total\t    151.50\t 15.15%"}));
}

TEST(YieldReport, ShowsAYieldOfNothingWhereNothingWasPaid) {
  SmallStore store = Household();
  store.Execute("DELETE FROM TransactionRecord WHERE TransactionType = 2");
  EXPECT_THAT(ReportOf(std::move(store), 15), ::testing::EndsWith("\t 0.00%"));
}

class ValuesByType : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(ValuesByType, ListTypesAndCashOverTheTotal) {
  EXPECT_EQ(ReportOf(Household(), GetParam()),
            Heading() + Lines(std::string(35, '_'),
                              {"Investment Type\t    Value", "=", "", "Stocks\t 1,100.00",
                               "Bonds\t     1.50", "", "Associated Cash Accounts\t   700.00", "",
                               "=", "=", "Total\t 1,801.50"}));
}

TEST_P(ValuesByType, LeaveALineEmptyForCashBelowZero) {
  EXPECT_EQ(ReportOf(Household(-7), GetParam()),
            Heading() + Lines(std::string(35, '_'),
                              {"Investment Type\t    Value", "=", "", "Stocks\t 1,100.00",
                               "Bonds\t     1.50", "", "", "", "=", "=", "Total\t 1,094.50"}));
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, ValuesByType, ::testing::Values(24, 53));

class EmptyInvestments : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(EmptyInvestments, AreTitleAndCaptionInAReport) {
  EXPECT_EQ(ReportOf(SmallStore(), GetParam(), 5), Heading());
}

TEST_P(EmptyInvestments, AreTitleAndFootnoteInAChart) {
  const ShownChart drawing(SmallStore(), GetParam(), kBarChart, 5);
  EXPECT_EQ(drawing.chart.Title(), GetParam() == 24 || GetParam() == 53 ? "Mine:0.00" : "Mine");
  EXPECT_EQ(drawing.chart.Footnote(), kCaption);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
  EXPECT_TRUE(drawing.chart.Repaint());
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, EmptyInvestments,
                         ::testing::Values(13, 14, 15, 16, 17, 24, 53, 26, 27));

// ---- prices

// 10, 11 and 6 cells and two gaps: 3630 twips.
const std::vector<std::string> kPriceLines = {"Date\tInvestment\t  Price",
                                              "=",
                                              "",
                                              "2026/03/05",
                                              "\tStock:Alder\t 100.00",
                                              "\tBond:Birch\t   0.00",
                                              "",
                                              "2026/03/09",
                                              "\tStock:Alder\t 110.00",
                                              "\tBond:Birch\t   0.50"};

TEST(AllPricesReport, IsAGroupForEachDate) {
  EXPECT_EQ(ReportOf(Household(), 17), Heading() + Lines(std::string(31, '_'), kPriceLines));
}

TEST(AccountPricesReport, IsAGroupForEachDate) {
  EXPECT_EQ(ReportOf(Household(), 26, kBroker),
            Heading("Mine:Investment:Broker") + Lines(std::string(31, '_'), kPriceLines));
}

TEST(ItemPricesReport, IsALineForEachRecord) {
  EXPECT_EQ(ReportOf(Household(), 27, 11),
            Heading("Mine:Stock:Alder") +
                Lines(std::string(19, '_'),
                      {"Date\t  Price", "=", "", "2026/03/05\t 100.00", "2026/03/09\t 110.00"}));
}

TEST(AccountPricesReport, OfAnAccountThatHoldsNothingIsItsTitleAndCaption) {
  EXPECT_EQ(ReportOf(Household(), 26, kBank), Heading("Mine:Checking Account:Bank"));
}

TEST(ItemPricesReport, OfAnItemWithoutATypeHasTheBareTitle) {
  SmallStore store = Household();
  store.Execute("DELETE FROM AccountItemType");
  EXPECT_THAT(ReportOf(std::move(store), 27, 11), ::testing::StartsWith(Heading()));
}

class PriceSubjects : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(PriceSubjects, ThatAreNoNumbersLeaveAReportEmpty) {
  EXPECT_EQ(ReportOf(HouseholdWithNumbersNought(), GetParam(), "x"), "");
  EXPECT_EQ(ReportOf(HouseholdWithNumbersNought(), GetParam(), Empty{}), "");
}

TEST_P(PriceSubjects, ThatAreNoNumbersLeaveAChartItsTitleAndFootnote) {
  const ShownChart drawing(HouseholdWithNumbersNought(), GetParam(), kBarChart, Null{});
  EXPECT_EQ(drawing.chart.Title(), "Mine");
  EXPECT_EQ(drawing.chart.Footnote(), kCaption);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, PriceSubjects, ::testing::Values(26, 27));

// ---- what fails when it is shown

// The chart of the yields by account is drawn in the frame, those of the yields by type and of all
// prices by routines apart.
TEST(InvestmentChartThatFailsWhenShown, TellsTheCallerOfYieldsByAccount) {
  EXPECT_EQ(UntitledChart(15).failure, static_cast<std::int32_t>(FailureNumber::kInvalidCall));
}

class ChartApartThatFailsWhenShown : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(ChartApartThatFailsWhenShown, EndsQuietlyAndIsNotRepainted) {
  const UntitledChart chart(GetParam());
  EXPECT_EQ(chart.failure, 0);
  EXPECT_FALSE(chart.repainted);
}

INSTANTIATE_TEST_SUITE_P(OfEveryNumber, ChartApartThatFailsWhenShown, ::testing::Values(16, 17));

// ---- charts

struct ChartCase {
  std::int32_t report_number;
  std::int32_t kind;
  std::int32_t subject;
  std::string data;
  std::vector<std::string> row_labels;
  std::vector<std::string> column_labels;
  std::string axis;
  std::string title;
};

void PrintTo(const ChartCase& test, std::ostream* out) {
  *out << test.report_number << " of kind " << test.kind;
}

class InvestmentChart : public ::testing::TestWithParam<ChartCase> {};

TEST_P(InvestmentChart, HasItsDataLabelsAndTitle) {
  const ShownChart drawing(Household(), GetParam().report_number, GetParam().kind,
                           GetParam().subject);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre(GetParam().data));
  EXPECT_THAT(drawing.Puts("chart", "RowLabel"), ElementsAreArray(GetParam().row_labels));
  EXPECT_THAT(drawing.Puts("chart", "ColumnLabel"), ElementsAreArray(GetParam().column_labels));
  EXPECT_EQ(drawing.Puts("chart", "Plot.Axis(1,1).AxisTitle.Text"),
            std::vector<std::string>{GetParam().axis});
  EXPECT_EQ(drawing.chart.Title(), GetParam().title);
  EXPECT_EQ(drawing.chart.Footnote(), kCaption);
  EXPECT_TRUE(drawing.chart.Repaint());
}

const std::vector<std::string> kNoLabel = {R"("")"};
const std::vector<std::string> kDates = {R"("2026/03/05")", R"("2026/03/09")"};

INSTANTIATE_TEST_SUITE_P(
    OfEveryNumber, InvestmentChart,
    ::testing::Values(
        ChartCase{13, kBarChart, 0, "[[1801.5]]", kNoLabel, {R"("Broker")"}, R"("$1")", "Mine"},
        ChartCase{14,
                  kPieChart,
                  0,
                  "[[1100.0,1.5,700.0]]",
                  kNoLabel,
                  {R"("Stocks:1,100.00")", R"("Bonds:1.50")",
                   R"("Total Associated Cash Accounts:700.00")"},
                  R"("$1")",
                  "Mine"},
        ChartCase{
            15, kBarChart, 0, "[[15.15]]", kNoLabel, {R"("Broker Yield")"}, R"("1%")", "Mine"},
        ChartCase{15,
                  kPieChart,
                  0,
                  "[[15.15]]",
                  kNoLabel,
                  {R"("Broker Yield:15.15%")"},
                  R"("1%")",
                  "Mine"},
        ChartCase{15, kLineChart, 0, "[[15.15]]", kNoLabel, kNoLabel, R"("1%")", "Mine"},
        ChartCase{16,
                  kPieChart,
                  0,
                  "[[15.0]]",
                  kNoLabel,
                  {R"("Stock Investment Yield:15.00%")"},
                  R"("1%")",
                  "Mine"},
        ChartCase{17,
                  kLineChart,
                  0,
                  "[[100.0,0.0],[110.0,0.5]]",
                  kDates,
                  {R"("Alder")", R"("Birch")"},
                  R"("$1")",
                  "Mine"},
        ChartCase{24,
                  kBarChart,
                  0,
                  "[[1100.0,1.5,700.0]]",
                  kNoLabel,
                  {R"("Stocks")", R"("Bonds")", R"("Associated Cash Accounts")"},
                  R"("$1")",
                  "Mine:1,801.50"},
        ChartCase{26,
                  kLineChart,
                  kBroker,
                  "[[100.0,0.0],[110.0,0.5]]",
                  kDates,
                  {R"("Alder")", R"("Birch")"},
                  R"("$1")",
                  "Mine:Broker"},
        ChartCase{27,
                  kPieChart,
                  11,
                  "[[100.0],[110.0]]",
                  kDates,
                  {R"("Alder")"},
                  R"("$1")",
                  "Mine:Alder"}));

TEST(ItemPricesChart, OfAnItemThatIsGoneHasABareTitleAndNoLabel) {
  SmallStore builder = Household();
  builder.Execute("DELETE FROM AccountItem");
  const ShownChart drawing(std::move(builder), 27, kLineChart, 11);
  EXPECT_THAT(drawing.Puts("chart", "ChartData"), ElementsAre("[[100.0],[110.0]]"));
  EXPECT_THAT(drawing.Puts("chart", "ColumnLabel"), ElementsAreArray(kNoLabel));
  EXPECT_EQ(drawing.chart.Title(), "Mine");
}

// A name that is empty is found all the same.
TEST(AccountPricesChart, OfAnAccountWithAnEmptyNameKeepsTheColon) {
  SmallStore builder = Household();
  builder.Execute("UPDATE Account SET AccountName = '' WHERE AccountNumber = 5");
  const ShownChart drawing(std::move(builder), 26, kLineChart, kBroker);
  EXPECT_EQ(drawing.chart.Title(), "Mine:");
}

}  // namespace
}  // namespace vetlo
