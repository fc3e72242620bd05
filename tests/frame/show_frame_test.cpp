#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <ostream>

#include "tests/frame/both_rows.h"
#include "tests/frame/frame_lines.h"
#include "tests/support/drawing.h"
#include "tests/support/failing_database.h"
#include "tests/support/failing_objects.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr std::int32_t kNullUsed = static_cast<std::int32_t>(FailureNumber::kInvalidUseOfNull);
constexpr std::int32_t kInvalidCall = static_cast<std::int32_t>(FailureNumber::kInvalidCall);

// One account, and the same row as a report and as a chart.
SmallStore Wallet(const TestRow& row = {}) {
  SmallStore store;
  store.Account(1, "Wallet", kCashAccount, 12.5);
  AddBothRows(store, row);
  return store;
}

// Calls on a wallet that name the objects to draw into.
class WalletCalls : public Drawing {
 public:
  explicit WalletCalls(const TestRow& row = {}) : store(Wallet(row).Open()) {}

  bool Call(std::int32_t row, ChartObject* chart_target, ReportObject* report_target) {
    return CallOn(*store, row, chart_target, report_target);
  }
  bool CallOn(Database& database, std::int32_t row, ChartObject* chart_target = nullptr,
              ReportObject* report_target = nullptr) {
    return component.ShowChartReport(database, *rows_, row, chart_target, report_target);
  }

  const std::unique_ptr<Database> store;

 private:
  const std::unique_ptr<Recordset> rows_ = store->OpenRecordset("ChartReportSubType");
};

const std::vector<std::string> kGroupTexts = {
    "SELECT * FROM Account WHERE AccountType= 0 OR AccountType= 1 OR AccountType= 2",
    "SELECT * FROM Account WHERE AccountType= 3",
    "SELECT * FROM Account WHERE AccountType= 5",
    "SELECT * FROM Account WHERE AccountType= 7",
    "SELECT * FROM Account WHERE AccountType= 8",
    "SELECT * FROM Account WHERE AccountType= 4 OR AccountType= 6 OR AccountType= 9",
    "Account",
    "SELECT * FROM Account WHERE AccountType= 4",
    "SELECT * FROM Account WHERE AccountType= 6",
    "SELECT * FROM Account WHERE AccountType<> 4 AND AccountType<> 6"};

// ---- the order of one call

TEST(ShowChartReport, DrawsAReportInThisOrder) {
  const auto store = Wallet({.title = "Mine", .range = 12, .to = Day(2026, 1, 31)}).Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kReportRow);

  const std::string rule(21, '_');  // 2355 twips
  std::vector<std::string> expected;
  expected << kReportPointers << OpenedTables() << kReportPrepared << OpenedAndClosed({"Account"})
           << OpenedAndClosed(kGroupTexts) << LayOutLines("3312.0", "2038.5")
           << HeadingLines("Mine", "Up to 2026/01/31")
           << PutText("report", "SelText",
                      "Account\t Total\r\n" + rule + "\r\n\r\n" +  //
                          "Assets\r\n" + rule + "\r\n" +           //
                          "Cash Accounts\t 12.50\r\n" + "\r\n" +   //
                          "Total Assets\t 12.50\r\n\r\n" +         //
                          rule + "\r\n" + rule + "\r\n" + "Net Worth\t 12.50")
           << kReportShown << ClosedTables() << kReportPointersBack;
  EXPECT_THAT(EventsWithWholeTexts(drawing), ElementsAreArray(expected));
}

TEST(ShowChartReport, DrawsAChartInThisOrder) {
  const auto store =
      Wallet({.legend = true, .title = "Mine", .range = 12, .to = Day(2026, 1, 31)}).Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kChartRow);

  std::vector<std::string> expected;
  expected << kChartPointers << OpenedTables() << ChartPrepared("true")
           << OpenedAndClosed({"Account"}) << OpenedAndClosed(kGroupTexts)
           << Put("chart", "ChartData", "[[12.5,-1.0,12.5]]") << Put("chart", "Row", "1")
           << PutText("chart", "RowLabel", "") << Put("chart", "Column", "1")
           << PutText("chart", "ColumnLabel", "Cash Accounts") << Put("chart", "Column", "2")
           << PutText("chart", "ColumnLabel", "") << Put("chart", "Column", "3")
           << PutText("chart", "ColumnLabel", "Total Assets")
           << PutText("chart", "Plot.Axis(1,1).AxisTitle.Text", "$1")
           << PutText("chart", "TitleText", "Mine:12.50")
           << PutText("chart", "FootnoteText", "Up to 2026/01/31") << kChartShown << ClosedTables()
           << kChartPointersBack;
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

TEST(ShowChartReport, GivesFalseInEveryCase) {
  WalletCalls d;
  for (const std::int32_t row : {kReportRow, kChartRow, 99}) {
    EXPECT_FALSE(d.Call(row, &d.chart, &d.report)) << row;
  }
}

TEST(ShowChartReport, RebuildsTheDocumentOnEveryCall) {
  const auto store = Wallet().Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow);
  const std::string once = drawing.ReportText();
  drawing.Show(*store, kReportRow);
  EXPECT_EQ(drawing.ReportText(), once);
}

// ---- the row

TEST(ShowChartReport, ARowThatIsNotThereDrawsNothing) {
  const auto store = Wallet().Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  EXPECT_EQ(drawing.TryToShow(traced, 99), 0);
  EXPECT_THAT(drawing.Events(), IsEmpty());
}

TEST(ShowChartReport, ReadsTheRowInThisOrder) {
  const auto store = Wallet({.range = 15}).Open();
  WatchedRows rows(*store);
  Drawing d;
  d.component.ShowChartReport(*store, rows, kReportRow, &d.chart, &d.report);
  EXPECT_THAT(rows.calls, ElementsAre("Index PrimaryIndex", "Seek =", "Legend", "ChartOrReportType",
                                      "ChartReportSubTypeAttr", "ChartType", "DateRangeExtInfo",
                                      "DateRangeType", "Title", "ChartReportType", "Parameter1",
                                      "Parameter2", "FromDate", "ToDate"));
}

TEST(ShowChartReport, LeavesTheParametersOfACallersRowUnread) {
  const auto store = Wallet({.group = kCallerParametersGroup}).Open();
  WatchedRows rows(*store);
  Drawing d;
  d.component.ShowChartReport(*store, rows, kReportRow, &d.chart, &d.report);
  EXPECT_THAT(rows.calls, ::testing::Not(Contains("Parameter1")));
  EXPECT_THAT(rows.calls, ::testing::Not(Contains("Parameter2")));
}

class NeededFields : public ::testing::TestWithParam<std::string> {};

TEST_P(NeededFields, FailToTheCallerWhereTheyAreNull) {
  const auto store = Wallet().Open();
  WatchedRows rows(*store);
  rows.instead[GetParam()] = Null{};
  Drawing d;
  TracedStore traced(*store, d.log);
  for (const std::int32_t row : {kReportRow, kChartRow}) {
    EXPECT_TRUE(ResumeNext([&] {
                  d.component.ShowChartReport(traced, rows, row, &d.chart, &d.report);
                }) == kNullUsed);
  }
  EXPECT_THAT(d.Events(), IsEmpty());
}

class NeededNumbers : public ::testing::TestWithParam<std::string> {};

TEST_P(NeededNumbers, FailToTheCallerWhereTheyAreNone) {
  const auto store = Wallet().Open();
  WatchedRows rows(*store);
  rows.instead[GetParam()] = "x";
  Drawing d;
  EXPECT_EQ(ResumeNext([&] {
              d.component.ShowChartReport(*store, rows, kReportRow, &d.chart, &d.report);
            }),
            static_cast<std::int32_t>(FailureNumber::kTypeMismatch));
  EXPECT_THAT(d.Events(), IsEmpty());
}

constexpr auto kNameOfField = [](const auto& test) { return test.param; };

INSTANTIATE_TEST_SUITE_P(All, NeededFields,
                         ::testing::Values("Legend", "ChartOrReportType", "ChartReportSubTypeAttr",
                                           "ChartType", "DateRangeExtInfo", "DateRangeType",
                                           "Title"),
                         kNameOfField);
INSTANTIATE_TEST_SUITE_P(All, NeededNumbers,
                         ::testing::Values("Legend", "ChartOrReportType", "ChartReportSubTypeAttr",
                                           "ChartType", "DateRangeExtInfo", "DateRangeType"),
                         kNameOfField);

TEST(ShowChartReport, AnEmptyTitleIsATitle) {
  const auto store = Wallet({.title = ""}).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kReportRow), 0);
  EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "");
  EXPECT_TRUE(drawing.report.Visible());
}

// ---- the target

class NoTargets : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(NoTargets, DrawNothing) {
  const auto store = Wallet().Open();
  WatchedRows rows(*store);
  rows.instead["ChartOrReportType"] = GetParam();
  Drawing d;
  TracedStore traced(*store, d.log);
  EXPECT_FALSE(d.component.ShowChartReport(traced, rows, kReportRow, &d.chart, &d.report));
  EXPECT_THAT(d.Events(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfOtherNumbers, NoTargets,
                         ::testing::Values(2, -1, 255, std::numeric_limits<std::int32_t>::max()));

TEST(ShowChartReport, AReportIsNotDrawnIntoTheChartInstead) {
  WalletCalls d;
  TracedStore traced(*d.store, d.log);
  EXPECT_FALSE(d.CallOn(traced, kReportRow, &d.chart, nullptr));
  EXPECT_FALSE(d.CallOn(traced, kReportRow));
  EXPECT_THAT(d.Events(), IsEmpty());
}

TEST(ShowChartReport, AChartIsNotDrawnIntoTheReportInstead) {
  WalletCalls d;
  TracedStore traced(*d.store, d.log);
  EXPECT_FALSE(d.CallOn(traced, kChartRow, nullptr, &d.report));
  EXPECT_FALSE(d.CallOn(traced, kChartRow));
  EXPECT_THAT(d.Events(), IsEmpty());
}

TEST(ShowChartReport, NeedsTheTargetAlone) {
  WalletCalls d;
  d.Call(kReportRow, nullptr, &d.report);
  EXPECT_TRUE(d.report.Visible());
  EXPECT_TRUE(d.report.Locked());
  d.Call(kChartRow, &d.chart, nullptr);
  EXPECT_TRUE(d.chart.Visible());
  EXPECT_TRUE(d.chart.Repaint());
  EXPECT_THAT(d.Puts("chart", "Visible"), ElementsAre("false", "true"));
  EXPECT_THAT(d.Puts("report", "Visible"), ElementsAre("true"));
}

// ---- the parameters

TEST(ShowChartReport, ARowOfTheCallersGroupTakesTheCallersParameters) {
  const auto store =
      Wallet({.report_number = 25, .group = kCallerParametersGroup, .parameter1 = 99}).Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 1);
  EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "Title:Cash:Wallet");
}

TEST(ShowChartReport, ARowOfTheCallersGroupWithoutParametersHasNone) {
  const auto store =
      Wallet({.report_number = 25, .group = kCallerParametersGroup, .parameter1 = 1}).Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow);
  EXPECT_THAT(drawing.report.Paragraphs(), IsEmpty());
}

TEST(ShowChartReport, ARowOfAnyOtherGroupHasItsOwnParameters) {
  for (const std::int32_t group : {0, 1, kFavoriteGroup, 6, -5}) {
    const auto store = Wallet({.report_number = 25, .group = group, .parameter1 = 1}).Open();
    Drawing drawing;
    drawing.Show(*store, kReportRow, 99);
    EXPECT_EQ(drawing.report.Paragraphs().at(1).Text(), "Title:Cash:Wallet") << group;
  }
}

TEST(ShowChartReport, ARowWithoutParametersOfItsOwnTakesNoneOfTheCallers) {
  const auto store = Wallet({.report_number = 25}).Open();
  Drawing drawing;
  drawing.Show(*store, kReportRow, 1, 1);
  EXPECT_THAT(drawing.report.Paragraphs(), IsEmpty());
}

// ---- the pointers

TEST(ShowChartReport, RestoresThePointersThatItFound) {
  const auto store = Wallet().Open();
  for (const std::int32_t row : {kReportRow, kChartRow}) {
    Drawing drawing;
    drawing.window.SetMousePointer(2);
    drawing.report.SetMousePointer(3);
    drawing.chart.SetMousePointer(4);
    drawing.Show(*store, row);
    EXPECT_EQ(drawing.window.MousePointer(), 2);
    EXPECT_EQ(drawing.report.MousePointer(), 3);
    EXPECT_EQ(drawing.chart.MousePointer(), 4);
  }
}

TEST(ShowChartReport, LeavesThePointerOfWhatStandsBetweenTargetAndWindow) {
  const auto store = Wallet().Open();
  Drawing drawing;
  drawing.frame.SetMousePointer(7);
  drawing.platform.page_width = 1.0F;
  drawing.Show(*store, kReportRow);
  EXPECT_EQ(drawing.frame.MousePointer(), 7);
}

TEST(ShowChartReport, AnObjectRightOnItsWindowShowsTheHourglassAlone) {
  WalletCalls d;
  d.window.SetMousePointer(2);
  const std::size_t before = d.log.events().size();
  RecordingReport report(d.log, &d.window);
  RecordingChart chart(d.log, 12000, &d.window);
  EXPECT_FALSE(d.Call(kReportRow, nullptr, &report));
  EXPECT_FALSE(d.Call(kChartRow, &chart, nullptr));
  EXPECT_THAT(d.Puts("window", "MousePointer"), ElementsAre("2"));
  EXPECT_EQ(before, 1U);
  EXPECT_THAT(d.Puts("report", "MousePointer"), ElementsAre("11", "0"));
  EXPECT_THAT(d.Puts("chart", "MousePointer"), ElementsAre("11", "0"));
  EXPECT_TRUE(report.Visible());
  EXPECT_TRUE(chart.Visible());
}

TEST(ShowChartReport, AnObjectAtTheTopShowsTheHourglassAlone) {
  WalletCalls d;
  RecordingReport report(d.log, nullptr);
  EXPECT_FALSE(d.Call(kReportRow, nullptr, &report));
  EXPECT_THAT(d.Puts("report", "MousePointer"), ElementsAre("11", "0"));
  EXPECT_TRUE(report.Visible());
}

TEST(ShowChartReport, PointersThatCannotBeSetAreLetBe) {
  WalletCalls d;
  FailingWindow window;
  PlainContainer frame(&window);
  FailingReport report(d.log, &frame, {"MousePointer"});
  EXPECT_FALSE(d.Call(kReportRow, nullptr, &report));
  EXPECT_TRUE(report.Visible());
  EXPECT_TRUE(report.Locked());
}

TEST(ShowChartReport, YieldsOnceForAChartAndNeverForAReport) {
  const auto store = Wallet().Open();
  for (const std::int32_t row : {kReportRow, kChartRow}) {
    Drawing drawing;
    drawing.Show(*store, row);
    const auto events = drawing.Events();
    EXPECT_EQ(std::ranges::count(events, kDoEvents), row == kChartRow ? 1 : 0);
  }
}

// ---- numbers that draw nothing

class NumbersWithoutChart : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(NumbersWithoutChart, ShowAClearedChart) {
  const auto store = Wallet({.report_number = GetParam()}).Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kChartRow);
  std::vector<std::string> expected;
  expected << kChartPointers << OpenedTables() << ChartPrepared() << kChartShown << ClosedTables()
           << kChartPointersBack;
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(All, NumbersWithoutChart,
                         ::testing::Values(7, 9, 10, 54, 58, 59, 60, 0, -1, 1000,
                                           std::numeric_limits<std::int32_t>::max(),
                                           std::numeric_limits<std::int32_t>::min()));

class NumbersWithoutReport : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(NumbersWithoutReport, ShowAnEmptyDocument) {
  const auto store = Wallet({.report_number = GetParam()}).Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  drawing.Show(traced, kReportRow);
  std::vector<std::string> expected;
  expected << kReportPointers << OpenedTables() << kReportPrepared << kReportShown << ClosedTables()
           << kReportPointersBack;
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(All, NumbersWithoutReport,
                         ::testing::Values(60, 0, -1, 1000,
                                           std::numeric_limits<std::int32_t>::max(),
                                           std::numeric_limits<std::int32_t>::min()));

TEST(ShowChartReport, AChartOfAnUnknownKindKeepsTheKindThatItHad) {
  const auto store = Wallet({.chart_type = 3}).Open();
  Drawing drawing;
  drawing.chart.ChartModel::SetChartType(ChartKind::kPie);
  drawing.Show(*store, kChartRow);
  EXPECT_THAT(drawing.Puts("chart", "chartType"), IsEmpty());
  EXPECT_EQ(drawing.chart.Kind(), ChartKind::kPie);
  EXPECT_THAT(drawing.chart.ColumnLabels(), ElementsAre("", "", ""));
}

// ---- the page

TEST(ShowChartReport, ADocumentIsAsWideAsThePrintersPage) {
  const auto store = Wallet().Open();
  Drawing drawing;
  drawing.platform.page_width = 16838.0F;
  drawing.Show(*store, kReportRow);
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("3312.0", "17228.0"));
}

TEST(ShowChartReport, AnyFailureOfThePrinterMeansNoPrinter) {
  class JammedPlatform : public quillmarsh::TerminalPlatform {
   public:
    JammedPlatform() : TerminalPlatform(NumberLocale{}, Day(2026, 3, 20)) {}
    float PrinterPageWidth() override { throw Failure(FailureNumber::kOverflow); }
  };
  const auto store = Wallet().Open();
  const auto rows = store->OpenRecordset("ChartReportSubType");
  JammedPlatform platform;
  clsTamo component(platform);
  Document report;
  component.ShowChartReport(*store, *rows, kReportRow, nullptr, &report);
  EXPECT_EQ(report.RightMargin(), 12310);
}

// ---- failures that are cleaned up after

// What a call that ends quietly before it draws has done.
std::vector<std::string> QuietReport(const std::vector<std::string>& between = {}) {
  std::vector<std::string> expected;
  expected << kReportPointers << between << kReportPointersBack;
  return expected;
}
std::vector<std::string> QuietChart(const std::vector<std::string>& between = {}) {
  std::vector<std::string> expected;
  expected << kChartPointers << between << kChartPointersBack;
  return expected;
}

struct BadRange {
  std::string name;
  TestRow row;
  std::string damage;
};

void PrintTo(const BadRange& test, std::ostream* out) { *out << test.name; }

class RangesThatFail : public ::testing::TestWithParam<BadRange> {};

TEST_P(RangesThatFail, EndTheCallQuietly) {
  SmallStore builder = Wallet(GetParam().row);
  if (!GetParam().damage.empty()) {
    builder.Execute(GetParam().damage);
  }
  const auto store = builder.Open();
  Drawing report;
  TracedStore report_store(*store, report.log);
  EXPECT_EQ(report.TryToShow(report_store, kReportRow), 0);
  EXPECT_EQ(report.Events(), QuietReport());
  Drawing chart;
  TracedStore chart_store(*store, chart.log);
  EXPECT_EQ(chart.TryToShow(chart_store, kChartRow), 0);
  EXPECT_EQ(chart.Events(), QuietChart());
}

INSTANTIATE_TEST_SUITE_P(
    All, RangesThatFail,
    ::testing::Values(
        BadRange{
            "AStartThatIsNoDate", {.range = 15}, "UPDATE ChartReportSubType SET FromDate = 'soon'"},
        BadRange{
            "AnEndThatIsNoDate", {.range = 12}, "UPDATE ChartReportSubType SET ToDate = 'soon'"},
        BadRange{"AnEndOutOfTheCalendar",
                 {.range = 15},
                 "UPDATE ChartReportSubType SET ToDate = 99999999"},
        BadRange{"TooManyMonths", {.range = 14, .range_number = 40000}, ""},
        BadRange{"FarTooManyMonths",
                 {.range = 14, .range_number = std::numeric_limits<std::int32_t>::max()},
                 ""},
        BadRange{"MonthsBeforeTheCalendar", {.range = 14, .range_number = 30000}, ""}),
    [](const auto& test) { return test.param.name; });

class LookUpTablesThatFail : public ::testing::TestWithParam<std::size_t> {};

// Fails as the table of this name is opened for the first time.
class StoreWithoutTable : public ForwardingDatabase {
 public:
  StoreWithoutTable(Database& store, std::string table)
      : ForwardingDatabase(store), table_(std::move(table)) {}
  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type) override {
    if (source == table_) {
      throw Failure(FailureNumber::kTableNotFound);
    }
    return ForwardingDatabase::OpenRecordset(source, type);
  }

 private:
  std::string table_;
};

TEST_P(LookUpTablesThatFail, EndTheCallQuietly) {
  const auto store = Wallet().Open();
  StoreWithoutTable lacking(*store, kLookUpTables[GetParam()]);
  std::vector<std::string> opened = OpenedTables();
  opened.resize(GetParam());
  std::vector<std::string> closed = ClosedTables();
  closed.resize(GetParam());
  std::vector<std::string> between;
  between << opened << closed;

  Drawing report;
  TracedStore report_store(lacking, report.log);
  EXPECT_EQ(report.TryToShow(report_store, kReportRow), 0);
  EXPECT_EQ(report.Events(), QuietReport(between));
  Drawing chart;
  TracedStore chart_store(lacking, chart.log);
  EXPECT_EQ(chart.TryToShow(chart_store, kChartRow), 0);
  EXPECT_EQ(chart.Events(), QuietChart(between));
}

INSTANTIATE_TEST_SUITE_P(EachOfThem, LookUpTablesThatFail,
                         ::testing::Range(std::size_t{0}, std::size_t{9}));

TEST(ShowChartReport, AFailureInTheSetUpOfAChartEndsTheCallQuietly) {
  WalletCalls d;
  TracedStore traced(*d.store, d.log);
  FailingChart chart(d.log, &d.frame, {"Legend.Font"});
  EXPECT_FALSE(d.CallOn(traced, kChartRow, &chart, &d.report));
  std::vector<std::string> between;
  between << OpenedTables() << Put("chart", "Repaint", "false") << Put("chart", "RowCount", "0")
          << Put("chart", "ColumnCount", "0") << Put("chart", "ShowLegend", "false")
          << Put("chart", "chartType", "1") << ClosedTables();
  EXPECT_EQ(d.Events(), QuietChart(between));
}

// The chart of the cash flow guards its figures by itself.
TEST(ShowChartReport, AFailureInAChartThatIsARoutineOfItsOwnEndsTheCallQuietly) {
  WalletCalls d({.report_number = 3});
  FailingChart chart(d.log, &d.frame, {"TitleText"});
  EXPECT_FALSE(d.Call(kChartRow, &chart, &d.report));
  EXPECT_THAT(d.Puts("chart", "Repaint"), ElementsAre("false"));
  EXPECT_THAT(d.Puts("report", "Visible"), IsEmpty());
  EXPECT_THAT(d.Puts("window", "MousePointer"), ElementsAre("11", "0"));
  EXPECT_THAT(d.Puts("chart", "MousePointer"), ElementsAre("11", "0"));
  EXPECT_THAT(d.Puts("chart", "Visible"), ElementsAre("false", "true"));
}

// Memory that runs out is a failure like any other.
TEST(ShowChartReport, AStoreWithoutMemoryForItsTablesEndsTheCallQuietly) {
  class StoreWithoutMemory : public ForwardingDatabase {
   public:
    using Database::OpenRecordset;
    using ForwardingDatabase::ForwardingDatabase;
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type) override {
      if (source == "Payee") {
        throw std::bad_alloc();
      }
      return ForwardingDatabase::OpenRecordset(source, type);
    }
  };
  WalletCalls d;
  StoreWithoutMemory poor(*d.store);
  EXPECT_EQ(ResumeNext([&] { d.CallOn(poor, kReportRow, &d.chart, &d.report); }), 0);
  EXPECT_EQ(d.Events(), QuietReport());
}

TEST(ShowChartReport, AFailureAfterAnEmptyDispatchOfAChartEndsTheCallQuietly) {
  WalletCalls d({.report_number = 7});
  FailingChart chart(d.log, &d.frame, {"Repaint true"});
  EXPECT_FALSE(d.Call(kChartRow, &chart, &d.report));
  EXPECT_THAT(d.Puts("report", "Visible"), IsEmpty());
  EXPECT_THAT(d.Puts("chart", "MousePointer"), ElementsAre("11", "0"));
}

TEST(ShowChartReport, AChartThatCannotBeShownAnewIsLetBe) {
  WalletCalls d;
  FailingChart chart(d.log, &d.frame, {"Visible"});
  EXPECT_FALSE(d.Call(kChartRow, &chart, &d.report));
  EXPECT_THAT(d.Puts("window", "MousePointer"), ElementsAre("11", "0"));
}

TEST(ShowChartReport, AWindowThatCannotRepaintIsLetBe) {
  class FrozenPlatform : public quillmarsh::TerminalPlatform {
   public:
    FrozenPlatform() : TerminalPlatform(NumberLocale{}, Day(2026, 3, 20)) {}
    void DoEvents() override { throw Failure(FailureNumber::kInvalidCall); }
  };
  const auto store = Wallet().Open();
  const auto rows = store->OpenRecordset("ChartReportSubType");
  FrozenPlatform platform;
  clsTamo component(platform);
  ChartModel chart(12000);
  EXPECT_FALSE(component.ShowChartReport(*store, *rows, kChartRow, &chart, nullptr));
  EXPECT_EQ(chart.Title(), "Title:12.50");
  EXPECT_TRUE(chart.Repaint());
}

// ---- fonts that cannot be had: the hidden form is created when something is first measured

// The legend's font is the last thing that the set-up of a chart puts.
TEST(ShowChartReport, AChartWithoutFontsEndsTheCallQuietlyAtItsLegend) {
  WalletCalls d;
  d.platform.has_fonts = false;
  TracedStore traced(*d.store, d.log);
  EXPECT_EQ(d.TryToShow(traced, kChartRow), 0);
  std::vector<std::string> prepared = ChartPrepared();
  prepared.pop_back();
  std::vector<std::string> between;
  between << OpenedTables() << prepared << ClosedTables();
  EXPECT_EQ(d.Events(), QuietChart(between));
}

TEST(ShowChartReport, AReportWithoutFontsFailsToTheCallerWhereItIsFirstMeasured) {
  WalletCalls d;
  d.platform.has_fonts = false;
  TracedStore traced(*d.store, d.log);
  EXPECT_EQ(d.TryToShow(traced, kReportRow), kInvalidCall);
  std::vector<std::string> expected;
  expected << kReportPointers << OpenedTables() << kReportPrepared << OpenedAndClosed({"Account"})
           << OpenedAndClosed(kGroupTexts);
  EXPECT_THAT(d.Events(), ElementsAreArray(expected));
}

// The heading of a history is written before its table is measured.
TEST(ShowChartReport, AHistoryWithoutFontsFailsToTheCallerAtItsHeading) {
  WalletCalls d({.report_number = 25, .parameter1 = "1"});
  d.platform.has_fonts = false;
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), kInvalidCall);
  std::vector<std::string> expected;
  expected << kReportPointers << kReportPrepared << Put("report", "SelAlignment", "2");
  EXPECT_THAT(d.Events(), ElementsAreArray(expected));
}

// A number outside the catalogue, and a subject that is none.
class ReportsThatNeverMeasure : public ::testing::TestWithParam<std::int32_t> {};

TEST_P(ReportsThatNeverMeasure, NeedNoFonts) {
  WalletCalls d({.report_number = GetParam()});
  d.platform.has_fonts = false;
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), 0);
  std::vector<std::string> expected;
  expected << kReportPointers << kReportPrepared << kReportShown << kReportPointersBack;
  EXPECT_THAT(d.Events(), ElementsAreArray(expected));
}

INSTANTIATE_TEST_SUITE_P(Some, ReportsThatNeverMeasure, ::testing::Values(0, 60, 25, 27, 28, 30));

TEST(ShowChartReport, FontsThatCanBeHadAgainAreUsedByTheNextCall) {
  WalletCalls d;
  d.platform.has_fonts = false;
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), kInvalidCall);
  d.platform.has_fonts = true;
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), 0);
  EXPECT_TRUE(d.report.Locked());
}

TEST(ShowChartReport, FontsThatWereHadOnceStayForTheLifeOfTheComponent) {
  WalletCalls d;
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), 0);
  d.platform.has_fonts = false;
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), 0);
  EXPECT_EQ(d.TryToShow(*d.store, kChartRow), 0);
}

// ---- failures of what is computed

// The balance of its one account cannot be had where it is listed.
SmallStore WalletOfUnknownBalance() {
  SmallStore store = Wallet({.title = "Mine", .range = 1});
  store.Execute("UPDATE Account SET OpeningBalance = 'much'");
  return store;
}

TEST(ShowChartReport, AReportWhoseFiguresFailIsItsTitleAndCaption) {
  const auto store = WalletOfUnknownBalance().Open();
  Drawing drawing;
  TracedStore traced(*store, drawing.log);
  EXPECT_EQ(drawing.TryToShow(traced, kReportRow), 0);
  EXPECT_EQ(drawing.report.Text(), "\r\nMine\r\n\r\nUp to 2026/03/20\r\n\r\n\r\n");
  EXPECT_TRUE(drawing.report.Locked());
  EXPECT_TRUE(drawing.report.Visible());
  EXPECT_THAT(drawing.Puts("chart", "Visible"), ElementsAre("false"));
  EXPECT_THAT(drawing.Puts("report", "RightMargin"), ElementsAre("2832.0", "12310.0"));
  EXPECT_THAT(drawing.Puts("report", "MousePointer"), ElementsAre("11", "0"));
}

TEST(ShowChartReport, AChartWhoseFiguresFailIsItsTitleAndFootnote) {
  const auto store = WalletOfUnknownBalance().Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, kChartRow), 0);
  std::vector<std::string> expected;
  expected << kChartPointers << ChartPrepared() << PutText("chart", "TitleText", "Mine:0.00")
           << PutText("chart", "FootnoteText", "Up to 2026/03/20") << kChartShown
           << kChartPointersBack;
  EXPECT_THAT(drawing.Events(), ElementsAreArray(expected));
}

TEST(ShowChartReport, AnEmptyStoreShowsTitleAndCaption) {
  const auto store = SmallStore().Row({.title = "Mine", .range = 1}).Open();
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(*store, 1), 0);
  EXPECT_EQ(drawing.report.Text(), "\r\nMine\r\n\r\nUp to 2026/03/20\r\n\r\n\r\n");
}

TEST(ShowChartReport, TheKindOfAllDatesHasNoCaption) {
  const auto store = SmallStore().Row({.title = "Mine", .range = 0}).Open();
  Drawing drawing;
  drawing.Show(*store, 1);
  EXPECT_EQ(drawing.report.Text(), "\r\nMine\r\n\r\n\r\n");
}

// ---- failures that reach the caller

// The hourglass stays, and nothing is closed.
class ReportsThatFail : public ::testing::TestWithParam<std::string> {};

TEST_P(ReportsThatFail, FailToTheCaller) {
  WalletCalls d;
  FailurePlan never;
  FailingDatabase watched(*d.store, never);
  TracedStore traced(watched, d.log);
  FailingReport report(d.log, &d.frame, {GetParam()});
  EXPECT_EQ(ResumeNext([&] { d.CallOn(traced, kReportRow, &d.chart, &report); }), kInvalidCall);
  EXPECT_THAT(d.Puts("window", "MousePointer"), ElementsAre("11"));
  EXPECT_THAT(d.Puts("report", "MousePointer"), ElementsAre("11"));
  EXPECT_THAT(d.Events(), ::testing::Not(Contains(Closed("Payee"))));
  EXPECT_THAT(d.Puts("chart", "Visible"), IsEmpty());
  EXPECT_FALSE(report.Visible());
  // Nothing is left behind either.
  EXPECT_EQ(watched.OpenRecordsets(), 0);
}

INSTANTIATE_TEST_SUITE_P(Where, ReportsThatFail,
                         ::testing::Values("Locked false", "Text", "RightMargin", "SelText",
                                           "Locked true", "Visible"));

TEST(ShowChartReport, AReportThatFailsWhileItIsWrittenStaysUnlocked) {
  WalletCalls d;
  FailingReport report(d.log, &d.frame, {"SelText"});
  ResumeNext([&] { d.Call(kReportRow, nullptr, &report); });
  EXPECT_FALSE(report.Locked());
}

class ChartsThatFail : public ::testing::TestWithParam<std::string> {};

TEST_P(ChartsThatFail, FailToTheCallerOnceFiguresAreComputed) {
  WalletCalls d;
  TracedStore traced(*d.store, d.log);
  FailingChart chart(d.log, &d.frame, {GetParam()});
  EXPECT_EQ(ResumeNext([&] { d.CallOn(traced, kChartRow, &chart, &d.report); }), kInvalidCall);
  EXPECT_THAT(d.Puts("window", "MousePointer"), ElementsAre("11"));
  EXPECT_THAT(d.Puts("chart", "MousePointer"), ElementsAre("11"));
  EXPECT_THAT(d.Puts("chart", "Repaint"), ElementsAre("false"));
  EXPECT_THAT(d.Puts("chart", "Visible"), IsEmpty());
  EXPECT_THAT(d.Events(), ::testing::Not(Contains(Closed("Payee"))));
}

INSTANTIATE_TEST_SUITE_P(Where, ChartsThatFail, ::testing::Values("TitleText", "Repaint true"));

TEST(ShowChartReport, ACallAfterAFailedOneDraws) {
  WalletCalls d;
  FailingReport failing(d.log, &d.frame, {"SelText"});
  ResumeNext([&] { d.Call(kReportRow, nullptr, &failing); });
  EXPECT_EQ(d.TryToShow(*d.store, kReportRow), 0);
  EXPECT_TRUE(d.report.Locked());
}

TEST(ShowChartReport, AStoreThatCannotBeReadFailsToTheCallerBeforeAnyEvent) {
  const auto store = Wallet().Open();
  FailurePlan plan;
  plan.FailAt(1, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
  FailingDatabase failing(*store, plan);
  Drawing d;
  EXPECT_EQ(ResumeNext([&] {
              const auto rows = failing.OpenRecordset("ChartReportSubType");
              d.component.ShowChartReport(failing, *rows, kReportRow, &d.chart, &d.report);
            }),
            static_cast<std::int32_t>(FailureNumber::kStoreUnusable));
  EXPECT_THAT(d.Events(), IsEmpty());
}

// ---- the time

TEST(ShowChartReport, TheTimeOfDayDoesNotCount) {
  const auto store = Wallet({.title = "Mine", .range = 8}).Open();
  Drawing drawing(Date{Day(2026, 3, 20).days + 0.99});
  drawing.Show(*store, kReportRow);
  EXPECT_EQ(drawing.report.Paragraphs().at(3).Text(), "2026/02/19 Through 2026/03/20");
}

}  // namespace
}  // namespace vetlo
