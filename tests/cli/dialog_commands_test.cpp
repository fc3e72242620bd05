// The commands that do what the dialogs do: customize, reset, favorite, unfavorite.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <ostream>
#include <tuple>

#include "tests/cli/quill.h"
#include "tests/support/child_process.h"
#include "tests/support/childs_terminal.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Words = std::vector<std::string>;
using Fields = std::map<std::string, Variant>;

constexpr std::int32_t kSpending = 1;  // offers everything
constexpr std::int32_t kWorth = 2;     // holds on one date
constexpr std::int32_t kAccounts = 3;  // has no chart
constexpr std::int32_t kCourse = 4;    // takes its parameters from the caller
constexpr std::int32_t kMine = 7;      // a favourite with parameters
constexpr std::int32_t kDates = 8;     // between two dates
constexpr std::int32_t kDays = 9;      // of the last 45 days
constexpr std::int32_t kBudget = 10;   // needs two ends
constexpr std::int32_t kNewRow = 12;

constexpr const char* kNumberMessage =
    "quillmarsh: Please enter a valid number which should be between 1 and 32767. Please enter "
    "again.\n";
constexpr const char* kDateMessage =
    "quillmarsh: Please enter a valid date such as \"2000/10/01\" or \"1999/10/01\" etc. The year "
    "should be entered with four digits. The following situations have exception: From the year "
    "1930 to 1999, you can enter from 30 to 99; from the year 2000 to 2029, you can enter from 0 "
    "to 29.\n";
constexpr const char* kEmptyNameMessage =
    "quillmarsh: 名称不能为空。请输入一个非空的名称。 (The name must not be empty. Give a name.)\n";
constexpr const char* kLongNameMessage =
    "quillmarsh: "
    "图形报表名称最多只能有50个字符（注：一个汉字视为2个字符）。请输入一个在此范围内的名称。 "
    "(The name may have at most 50 characters. Give a shorter one.)\n";

std::string Repeated(const std::string& text, int count) {
  std::string repeated;
  for (int i = 0; i < count; ++i) {
    repeated += text;
  }
  return repeated;
}

class DialogCommands : public ::testing::Test {
 protected:
  DialogCommands() {
    SmallStore store(store_);
    store.Account(1, "Wallet", kCashAccount, 1234.5);
    const auto row = [&](const char* name, TestRow facts) {
      facts.title = name;
      store.Row(facts);
      store.Execute("UPDATE ChartReportSubType SET ChartReportSubTypeName = '" + std::string(name) +
                    "' WHERE ChartReportSubTypeNumber = " + std::to_string(facts.number));
    };
    row("Spending", {.number = kSpending, .report_number = 1, .chart_type = 2, .range = 2});
    row("Worth", {.number = kWorth, .report_number = 5, .range = 1});
    row("Accounts", {.number = kAccounts, .report_number = 7, .chart_type = 255});
    row("Course", {.number = kCourse, .report_number = 25, .group = 5});
    row("Twice", {.number = 5, .report_number = 18, .group = 4});
    row("Twice", {.number = 6, .report_number = 18, .group = 4});
    row("Mine", {.number = kMine,
                 .report_number = 3,
                 .legend = true,
                 .range = 14,
                 .range_number = 7,
                 .group = 4,
                 .parameter1 = 42,
                 .parameter2 = "two"});
    row("Dates", {.number = kDates,
                  .report_number = 1,
                  .chart_type = 2,
                  .range = 15,
                  .from = Day(2026, 1, 2),
                  .to = Day(2026, 2, 27)});
    row("Days", {.number = kDays, .report_number = 1, .range = 13, .range_number = 45});
    row("Budget", {.number = kBudget, .report_number = 59, .range = 2});
    row("Plain", {.number = 11, .report_number = 1, .parameter1 = 9});
    store.Finish();
  }

  // The fields of a settings row; none where there is no such row.
  Fields RowOf(std::int32_t number) const {
    const auto store = OpenStore(store_, StoreAccess::kReadOnly);
    const auto rec = store->OpenRecordset("ChartReportSubType");
    rec->SetIndex(kPrimaryIndex);
    rec->Seek("=", number);
    Fields fields;
    if (!rec->NoMatch()) {
      for (const Column& column : FindTable("ChartReportSubType")->columns) {
        fields[std::string(column.name)] = rec->Fields(column.name);
      }
    }
    return fields;
  }

  ProgramRun QuillOn(const std::string& command, const Words& words) const {
    Words all = {command, store_};
    all.insert(all.end(), words.begin(), words.end());
    return Quill(all);
  }

  void ExpectDone(const std::string& command, const Words& words) const {
    const ProgramRun run = QuillOn(command, words);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(std::ranges::count(run.out, '\n'), 1) << run.out;
  }

  // The refusal, after which the store is what it was to the byte.
  std::string Refusal(const std::string& command, const Words& words) const {
    const std::string before = ReadFile(store_);
    const ProgramRun run = QuillOn(command, words);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    ExpectOneLine(run.err);
    EXPECT_TRUE(ReadFile(store_) == before) << "something was written";
    return run.err;
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "home.qm";
};

// ---- customize

struct ChangeCase {
  const char* name;
  std::int32_t row;
  Words options;
  Fields changed;  // all else stays

  friend std::ostream& operator<<(std::ostream& out, const ChangeCase& test) {
    return out << test.name;
  }
};

class Changing : public DialogCommands, public ::testing::WithParamInterface<ChangeCase> {};

TEST_P(Changing, WritesWhatIsGivenAndLeavesTheRest) {
  const ChangeCase& change = GetParam();
  const std::string rest = ReadStoredBytes(store_, change.row).rest;
  Fields expected = RowOf(change.row);
  for (const auto& [field, value] : change.changed) {
    ASSERT_NE(expected.at(field), value) << field << " was so before";
    expected[field] = value;
  }
  Words words = {std::to_string(change.row)};
  words.insert(words.end(), change.options.begin(), change.options.end());
  ExpectDone("customize", words);
  EXPECT_EQ(RowOf(change.row), expected);
  EXPECT_EQ(ReadStoredBytes(store_, change.row).rest, rest);
}

INSTANTIATE_TEST_SUITE_P(
    Options, Changing,
    ::testing::Values(
        ChangeCase{"As", kSpending, {"--as", "chart"}, {{"ChartOrReportType", 0}}},
        ChangeCase{"AsInCapitals", kSpending, {"--as", "Chart"}, {{"ChartOrReportType", 0}}},
        ChangeCase{"AsAgain", kSpending, {"--as", "report"}, {}},
        ChangeCase{"Kind", kSpending, {"--kind", "line"}, {{"ChartType", 0}}},
        ChangeCase{"LegendOn", kSpending, {"--legend", "on"}, {{"Legend", true}}},
        ChangeCase{"LegendInCapitals", kSpending, {"--legend", "ON"}, {{"Legend", true}}},
        ChangeCase{"LegendOff", kMine, {"--legend", "off"}, {{"Legend", false}}},
        ChangeCase{"Title", kSpending, {"--title", "Ours"}, {{"Title", "Ours"}}},
        ChangeCase{"TitleOfARowWithDates", kDates, {"--title", "Ours"}, {{"Title", "Ours"}}},
        ChangeCase{"TitleOfARowWithANumber", kDays, {"--title", "Ours"}, {{"Title", "Ours"}}},
        ChangeCase{"TitleOfARowWithoutAChart", kAccounts, {"--title", "Ours"}, {{"Title", "Ours"}}},
        ChangeCase{"LongestTitle",
                   kSpending,
                   {"--title", Repeated("長", 50)},
                   {{"Title", Repeated("長", 50)}}},
        ChangeCase{"Range", kSpending, {"--range", "previous-year"}, {{"DateRangeType", 7}}},
        ChangeCase{"RangeByNumber", kSpending, {"--range", "0"}, {{"DateRangeType", 0}}},
        ChangeCase{"UsualNumberOfDays",
                   kSpending,
                   {"--range", "last-n-days"},
                   {{"DateRangeType", 13}, {"DateRangeExtInfo", 30}}},
        ChangeCase{"UsualNumberOfMonths",
                   kSpending,
                   {"--range", "last-n-months"},
                   {{"DateRangeType", 14}, {"DateRangeExtInfo", 3}}},
        ChangeCase{"Number", kDays, {"--n", "32767"}, {{"DateRangeExtInfo", 32767}}},
        ChangeCase{"EmptyNumber", kDays, {"--n", ""}, {{"DateRangeExtInfo", 1}}},
        ChangeCase{"NumberIsGoneWithItsRange",
                   kDays,
                   {"--range", "all-dates"},
                   {{"DateRangeType", 0}, {"DateRangeExtInfo", 1}}},
        ChangeCase{"DatesAreGoneWithTheirRange",
                   kDates,
                   {"--range", "current-month"},
                   {{"DateRangeType", 2}, {"FromDate", Null{}}, {"ToDate", Null{}}}},
        ChangeCase{"From", kDates, {"--from", "2026-02-27"}, {{"FromDate", Day(2026, 2, 27)}}},
        ChangeCase{
            "FromAsShown", kDates, {"--from", "2026/02/27"}, {{"FromDate", Day(2026, 2, 27)}}},
        ChangeCase{
            "FromWithTwoDigits", kDates, {"--from", "30.1.2"}, {{"FromDate", Day(1930, 1, 2)}}},
        ChangeCase{"To", kDates, {"--to", "29/12/31"}, {{"ToDate", Day(2029, 12, 31)}}},
        ChangeCase{"OpenEnds",
                   kDates,
                   {"--from", "", "--to", ""},
                   {{"FromDate", Null{}}, {"ToDate", Null{}}}},
        ChangeCase{"DatesWithoutARange",
                   kDays,
                   {"--from", "2026-03-01", "--to", "2026-03-01"},
                   {{"DateRangeType", 15},
                    {"DateRangeExtInfo", 1},
                    {"FromDate", Day(2026, 3, 1)},
                    {"ToDate", Day(2026, 3, 1)}}},
        ChangeCase{"EndWithoutARangeOnOneDate",
                   kWorth,
                   {"--to", "2026-03-31"},
                   {{"DateRangeType", 12}, {"ToDate", Day(2026, 3, 31)}}},
        ChangeCase{"Everything",
                   kSpending,
                   {"--as", "chart", "--kind", "bar", "--legend", "on", "--title", "All", "--range",
                    "custom-dates", "--from", "2026-01-01", "--to", "2026-01-31"},
                   {{"ChartOrReportType", 0},
                    {"ChartType", 1},
                    {"Legend", true},
                    {"Title", "All"},
                    {"DateRangeType", 15},
                    {"FromDate", Day(2026, 1, 1)},
                    {"ToDate", Day(2026, 1, 31)}}}),
    [](const auto& test) { return test.param.name; });

struct RefusalCase {
  const char* name;
  Words words;  // the row and the options
  std::string told;

  friend std::ostream& operator<<(std::ostream& out, const RefusalCase& test) {
    return out << test.name;
  }
};

class RefusedChange : public DialogCommands, public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(RefusedChange, IsToldInOneLineAndWritesNothing) {
  EXPECT_THAT(Refusal("customize", GetParam().words), HasSubstr(GetParam().told));
}

INSTANTIATE_TEST_SUITE_P(
    Options, RefusedChange,
    ::testing::Values(
        RefusalCase{"NoOption", {"1"}, "say what to change: --as, --kind"},
        RefusalCase{"NoRow", {"99", "--as", "chart"}, "'quillmarsh list'"},
        RefusalCase{"NoRowOfThatName", {"None", "--as", "chart"}, "'quillmarsh list'"},
        RefusalCase{"TwoRowsOfThatName", {"Twice", "--as", "chart"}, "by its number: 5, 6"},
        RefusalCase{"WrongForm", {"1", "--as", "poem"}, "--as takes report or chart, not 'poem'"},
        RefusalCase{"EmptyForm", {"1", "--as", "", "--title", "x"}, "--as takes report or chart"},
        RefusalCase{"FormOfTwoLines", {"1", "--as", "a\nb"}, "--as takes report or chart, not 'a"},
        RefusalCase{"WrongKind", {"1", "--kind", "cake"}, "--kind takes line, bar or pie"},
        RefusalCase{"EmptyKind", {"1", "--kind", "", "--title", "x"}, "--kind takes line"},
        RefusalCase{"WrongLegend", {"1", "--legend", "yes"}, "--legend takes on or off"},
        RefusalCase{"WrongRange", {"1", "--range", "soon"}, "--range takes 0 to 15 or one of"},
        RefusalCase{"EmptyRange", {"1", "--range", "", "--title", "x"}, "--range takes 0 to 15"},
        RefusalCase{"Range16", {"1", "--range", "16"}, "--range takes 0 to 15 or one of"},
        RefusalCase{"ChartNotOffered", {"3", "--as", "chart"}, "this report has no chart"},
        RefusalCase{"KindNotOffered", {"3", "--kind", "pie"}, "this report has no chart"},
        RefusalCase{"LegendNotOffered", {"3", "--legend", "on"}, "and so no legend"},
        RefusalCase{"RangeNotOffered",
                    {"2", "--range", "13"},
                    "does not offer 'Last N Days'; it offers: 'All Dates', 'Up to Today'"},
        RefusalCase{"StartNotOffered", {"2", "--from", "2026-01-01"}, "does not offer 'Custom"},
        RefusalCase{"EndAloneNotOffered", {"10", "--range", "12"}, "does not offer 'Up to a Date'"},
        RefusalCase{"Number0", {"9", "--n", "0"}, kNumberMessage},
        RefusalCase{"Number32768", {"9", "--n", "32768"}, kNumberMessage},
        RefusalCase{"NegativeNumber", {"9", "--n", "-1"}, kNumberMessage},
        RefusalCase{"HugeNumber", {"9", "--n", "99999999999999999999"}, kNumberMessage},
        RefusalCase{"NumberInWords", {"9", "--n", "ten"}, kNumberMessage},
        RefusalCase{
            "NumberWithoutItsRange", {"1", "--n", "3"}, "--n goes with --range last-n-days"},
        RefusalCase{"StartWithoutItsRange",
                    {"1", "--range", "2", "--from", "2026-01-01"},
                    "--from goes with --range custom-dates"},
        RefusalCase{"EndWithoutItsRange",
                    {"1", "--range", "2", "--to", "2026-01-01"},
                    "--to goes with --range custom-dates or up-to-a-date"},
        RefusalCase{"NoDate", {"8", "--from", "soon"}, kDateMessage},
        RefusalCase{"NoSuchDay", {"8", "--to", "2026-02-29"}, kDateMessage},
        RefusalCase{"DatesCrossed",
                    {"8", "--from", "2026-03-02", "--to", "2026-03-01"},
                    "quillmarsh: The \"To Date\" can not be earlier than the \"From Date\". Please "
                    "enter again.\n"},
        RefusalCase{"CrossedWithTheStoredEnd", {"8", "--from", "2026-02-28"}, "can not be earlier"},
        RefusalCase{"EmptyTitle",
                    {"1", "--title", ""},
                    "quillmarsh: The Report/Chart title can not be empty.\n"},
        RefusalCase{"TitleTooLong",
                    {"1", "--title", Repeated("長", 51)},
                    "--title takes at most 50 characters"},
        RefusalCase{"TitleOfTwoLines", {"1", "--title", "a\nb"}, "leave out line breaks"},
        RefusalCase{"TitleOfNoText", {"1", "--title", "\xff"}, "no UTF-8"},
        RefusalCase{"GoodAndBad", {"1", "--title", "Good", "--legend", "maybe"}, "--legend takes"}),
    [](const auto& test) { return test.param.name; });

TEST_F(DialogCommands, TellWhatTheRowIsNow) {
  const ProgramRun run =
      QuillOn("customize", {"spending", "--as", "chart", "--range", "13", "--n", "5"});
  EXPECT_EQ(run.out, "Changed 1  Spending: pie chart, Last 5 Days\n");
}

TEST_F(DialogCommands, AreSeenByListAndShow) {
  ExpectDone("customize", {"1", "--title", "Where It Went", "--range", "all-dates"});
  EXPECT_THAT(Quill({"list", store_}).out, HasSubstr("1  Spending  report      All Dates"));
  EXPECT_THAT(Quill({"show", store_, "1"}).out, HasSubstr("Where It Went"));
  ExpectDone("customize", {"2", "--as", "chart"});
  EXPECT_THAT(Quill({"list", store_}).out, HasSubstr("bar chart"));
}

TEST_F(DialogCommands, OfTheProgramItselfEndWithAStatusAndOneLine) {
  const ProgramRun done = RunProgram(PROGRAM, {"customize", store_, "1", "--title", "Ours"});
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.out, "Changed 1  Spending: report, Current Month\n");
  EXPECT_EQ(done.err, "");
  const ProgramRun refused = RunProgram(PROGRAM, {"customize", store_, "1", "--title", ""});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err, "quillmarsh: The Report/Chart title can not be empty.\n");
  for (const Words& misused :
       {Words{"customize"}, Words{"customize", store_},
        Words{"customize", store_, "1", "--colour", "red"}, Words{"favorite", store_, "1"},
        Words{"reset", store_}, Words{"unfavorite", store_, "a", "b"}}) {
    const ProgramRun run = RunProgram(PROGRAM, misused);
    EXPECT_EQ(run.status, 2) << run.err;
    EXPECT_EQ(run.out, "");
    ExpectOneLine(run.err);
  }
  EXPECT_EQ(RowOf(kSpending).at("Title"), Variant("Ours"));
}

TEST_F(DialogCommands, SayWhereTheirOutputCannotBeWritten) {
  const ProgramRun run = RunProgram(PROGRAM, {"list", store_}, {},
                                    [] { std::ignore = std::freopen("/dev/full", "w", stdout); });
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("the output cannot be written"));
}

// ---- reset

TEST_F(DialogCommands, ResetBringsBackTheDefaultsOfTheReportNumber) {
  Fields expected = RowOf(kDates);
  expected["ChartType"] = 2;
  expected["Legend"] = true;
  expected["Title"] = "Expenses by Category";
  expected["DateRangeType"] = 2;
  expected["FromDate"] = Null{};
  expected["ToDate"] = Null{};
  const std::string rest = ReadStoredBytes(store_, kDates).rest;
  ExpectDone("reset", {"Dates"});
  EXPECT_EQ(RowOf(kDates), expected);
  EXPECT_EQ(ReadStoredBytes(store_, kDates).rest, rest);
  ExpectDone("reset", {"9"});
  EXPECT_EQ(RowOf(kDays).at("DateRangeExtInfo"), Variant(1));
}

TEST_F(DialogCommands, ResetOfAFavoriteNeedsAYes) {
  // Wherever the tests run, there is no terminal to ask on.
  const auto reset = [&](Words words) {
    words.insert(words.begin(), {"reset", store_});
    return RunProgram(PROGRAM, words, {},
                      [] { std::ignore = std::freopen("/dev/null", "r", stdin); });
  };
  const std::string before = ReadFile(store_);
  const ProgramRun refused = reset({"Mine"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err,
            "quillmarsh: 'Mine' is a favorite; its title, its form and its dates would become the "
            "defaults of report number 3; give --yes to reset it\n");
  EXPECT_TRUE(ReadFile(store_) == before);
  EXPECT_EQ(reset({"Mine", "--yes"}).out, "Changed 7  Mine: report, Year to Date\n");
  EXPECT_EQ(RowOf(kMine).at("Title"), Variant("Cash Flow"));
}

TEST_F(DialogCommands, ResetOfAnotherRowNeedsNoYes) {
  ExpectDone("reset", {"Plain"});
  ExpectDone("reset", {"Plain", "--yes"});
}

TEST_F(DialogCommands, ResetOfAFavoriteAsksOnATerminal) {
  const ChildsTerminal terminal(80);
  if (!terminal.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  const auto answer = [&](const std::string& line) {
    terminal.Type(line);
    return RunProgram(PROGRAM, {"reset", store_, "Mine"}, {}, [&] {
      terminal.TakeFor({STDIN_FILENO, STDERR_FILENO});
    });
  };
  const std::string before = ReadFile(store_);
  for (const char* const no : {"\n", "n\n", "yet\n", "\x04"}) {
    EXPECT_EQ(answer(no).status, 1);
    const std::string shown = terminal.Shown();
    EXPECT_THAT(shown, HasSubstr("defaults of report number 3. Reset it? [y/N] "));
    EXPECT_THAT(shown, HasSubstr("quillmarsh: nothing was reset"));
  }
  EXPECT_TRUE(ReadFile(store_) == before);
  EXPECT_EQ(answer("y\n").out, "Changed 7  Mine: report, Year to Date\n");
  EXPECT_EQ(answer("Yes\n").status, 0);
}

TEST_F(DialogCommands, ResetNeedsARow) {
  EXPECT_THAT(Refusal("reset", {"99"}), HasSubstr("'quillmarsh list'"));
  EXPECT_THAT(Refusal("reset", {"Twice"}), HasSubstr("by its number: 5, 6"));
}

// ---- favorite

// The row that a favourite of another row is.
Fields FavoriteOf(Fields row, std::int32_t number, const std::string& name) {
  row["ChartReportSubTypeNumber"] = number;
  row["ChartReportSubTypeName"] = name;
  row["ChartReportType"] = 4;
  return row;
}

TEST_F(DialogCommands, FavoriteCopiesTheRowWithItsParameters) {
  const std::string rest = ReadStoredBytes(store_, kNewRow).rest;
  const ProgramRun run = QuillOn("favorite", {"Plain", "  Copy  "});
  EXPECT_EQ(run.out, "Saved 12  Copy: report, All Dates\n");
  EXPECT_EQ(RowOf(kNewRow), FavoriteOf(RowOf(11), kNewRow, "Copy"));
  EXPECT_EQ(RowOf(kNewRow).at("Parameter1"), Variant(9));
  EXPECT_EQ(ReadStoredBytes(store_, kNewRow).rest, rest);
  EXPECT_THAT(Quill({"list", store_}).out, HasSubstr("12  Copy"));
  EXPECT_EQ(Quill({"show", store_, "Copy"}).status, 0);
}

TEST_F(DialogCommands, FavoriteOfAFavoriteKeepsItsReportNumberAndParameters) {
  ExpectDone("favorite", {"Mine", "Mine Too"});
  EXPECT_EQ(RowOf(kNewRow), FavoriteOf(RowOf(kMine), kNewRow, "Mine Too"));
}

TEST_F(DialogCommands, FavoriteOfThatNameIsReplacedOnlyOnDemand) {
  EXPECT_EQ(
      Refusal("favorite", {"1", "Mine"}),
      "quillmarsh: 您真的要替换“Mine”吗？ (Do you really want to replace the favorite 'Mine'?) "
      "Give --replace to say yes.\n");
  const std::string rest = ReadStoredBytes(store_, kMine).rest;
  ExpectDone("favorite", {"1", "Mine", "--replace"});
  EXPECT_EQ(RowOf(kMine), FavoriteOf(RowOf(kSpending), kMine, "Mine"));
  EXPECT_EQ(ReadStoredBytes(store_, kMine).rest, rest);
}

TEST_F(DialogCommands, FavoriteInOtherCaseIsAnother) {
  const Fields mine = RowOf(kMine);
  ExpectDone("favorite", {"1", "MINE", "--replace"});
  EXPECT_EQ(RowOf(kMine), mine);
  EXPECT_EQ(RowOf(kNewRow).at("ChartReportSubTypeName"), Variant("MINE"));
}

TEST_F(DialogCommands, FavoriteReplacesTheFirstOfTwo) {
  const Fields second = RowOf(6);
  ExpectDone("favorite", {"1", "Twice", "--replace"});
  EXPECT_EQ(RowOf(5), FavoriteOf(RowOf(kSpending), 5, "Twice"));
  EXPECT_EQ(RowOf(6), second);
}

TEST_F(DialogCommands, FavoriteTakesFiftyCharacters) {
  const std::string name = Repeated("長", 50);
  ExpectDone("favorite", {"1", name});
  EXPECT_EQ(RowOf(kNewRow).at("ChartReportSubTypeName"), Variant(name));
}

TEST_F(DialogCommands, FavoriteRefusesANameThatIsNone) {
  EXPECT_EQ(Refusal("favorite", {"1", ""}), kEmptyNameMessage);
  EXPECT_EQ(Refusal("favorite", {"1", "   "}), kEmptyNameMessage);
  EXPECT_EQ(Refusal("favorite", {"1", Repeated("長", 51)}), kLongNameMessage);
  EXPECT_EQ(Refusal("favorite", {"1", std::string(10000, 'x')}), kLongNameMessage);
  EXPECT_THAT(Refusal("favorite", {"1", "a\nb"}), HasSubstr("leave out line breaks"));
  EXPECT_THAT(Refusal("favorite", {"99", "Name"}), HasSubstr("'quillmarsh list'"));
}

TEST_F(DialogCommands, FavoriteStopsAtAHundred) {
  RunSql(store_,
         "WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 195) "
         "INSERT INTO ChartReportSubType SELECT i, 'Favorite ' || i, 4, 1, 1, 2, 0, 'T', 0, 1, "
         "NULL, NULL, NULL, NULL FROM n");
  ExpectDone("favorite", {"1", "The Hundredth"});
  EXPECT_EQ(RowOf(196).at("ChartReportSubTypeName"), Variant("The Hundredth"));
  EXPECT_THAT(
      Refusal("favorite", {"1", "One More"}),
      ::testing::StartsWith(
          "quillmarsh: 您已建立了很多的图形报表类型，因此已不能新建图形报表类型。"
          "您可以先删除其他图形报表类型，然后建立此图形报表类型。 (There are a hundred favorites "
          "already. Take one away first, with 'quillmarsh unfavorite'.)"));
  ExpectDone("favorite", {"1", "Mine", "--replace"});
  ExpectDone("unfavorite", {"Mine"});
  ExpectDone("favorite", {"1", "One More"});
}

TEST_F(DialogCommands, FavoriteThatCannotBeSavedSaysSoInEnglishToo) {
  const auto on_a_full_disk = [&](Words words) {
    words.insert(words.begin(), {"favorite", store_});
    const ProgramRun run = RunProgram(PROGRAM, words, {}, [] { FillDisk(0); });
    EXPECT_EQ(run.status, 1);
    ExpectOneLine(run.err);
    return run.err;
  };
  EXPECT_THAT(on_a_full_disk({"1", "Name"}),
              ::testing::StartsWith(
                  "quillmarsh: 不能建立图形报表类型，您可以用其他图形报表类型名称试一试。如果还有"
                  "问题，请与程序开发商联系。 (The favorite could not be added; another name may "
                  "help.) ("));
  EXPECT_THAT(on_a_full_disk({"1", "Mine", "--replace"}),
              HasSubstr(" (The favorite could not be changed; another name may help.) ("));
}

TEST_F(DialogCommands, FavoriteOfAHistoryKeepsTheSubjectThatIsGiven) {
  EXPECT_THAT(Refusal("favorite", {"Course", "Wallet"}), HasSubstr("--parameter1"));
  for (const char* const none : {"abc", "", "99999999999"}) {
    EXPECT_THAT(Refusal("favorite", {"Course", "Wallet", "--parameter1", none}),
                HasSubstr("what was given is no such number"));
  }
  ExpectDone("favorite", {"Course", "Wallet", "--parameter1", "1", "--parameter2", "x"});
  EXPECT_EQ(RowOf(kNewRow).at("Parameter1"), Variant(1));
  EXPECT_EQ(RowOf(kNewRow).at("Parameter2"), Variant("x"));
  EXPECT_THAT(Quill({"show", store_, "12"}).out, HasSubstr("Wallet"));
}

TEST_F(DialogCommands, FavoriteOfAnotherRowTakesNoSubject) {
  EXPECT_THAT(Refusal("favorite", {"1", "Name", "--parameter1", "1"}),
              HasSubstr("this row takes no parameters"));
}

TEST_F(DialogCommands, AnOptionWithAnEmptyValueTakesNoOtherWordForIt) {
  EXPECT_THAT(Refusal("customize", {"1", "--title=", "--range=0"}),
              HasSubstr("title can not be empty"));
  EXPECT_THAT(Refusal("customize", {"1", "--title="}), HasSubstr("title can not be empty"));
  const ProgramRun open_ends = QuillOn("customize", {"1", "--range=15", "--from=", "--to="});
  EXPECT_EQ(open_ends.status, 0) << open_ends.err;
  EXPECT_THAT(open_ends.out, HasSubstr("All Dates"));
}

TEST_F(DialogCommands, OneDamagedRowKeepsNobodyFromTheOthers) {
  RunSql(store_,
         "UPDATE ChartReportSubType SET FromDate='abc', ToDate=1e9, DateRangeType=15 "
         "WHERE ChartReportSubTypeNumber=7");
  EXPECT_EQ(QuillOn("customize", {"1", "--title", "Fine"}).status, 0);
  const ProgramRun list = RunProgram(PROGRAM, {"list", store_});
  EXPECT_THAT(list.out, HasSubstr("Spending"));
  EXPECT_THAT(list.err, HasSubstr("no date: ChartReportSubType.FromDate, row 7"));
  const ProgramRun damaged = RunProgram(PROGRAM, {"customize", store_, "7", "--title", "Mended"});
  EXPECT_EQ(damaged.status, 1);
  EXPECT_EQ(
      damaged.err,
      "quillmarsh: the store holds something that is no date: ChartReportSubType.FromDate, row "
      "7; mend it or restore the store from a copy (failure 13)\n");
}

TEST_F(DialogCommands, ARowOfAnUnknownNumberHasNothingToChangeOrToResetTo) {
  RunSql(store_,
         "UPDATE ChartReportSubType SET ChartReportSubTypeAttr=60 "
         "WHERE ChartReportSubTypeNumber=1");
  EXPECT_THAT(Refusal("customize", {"1", "--title", "x"}), HasSubstr("cannot be changed"));
  EXPECT_THAT(Refusal("customize", {"1", "--as", "report"}), HasSubstr("no report"));
  EXPECT_THAT(Refusal("reset", {"1"}), HasSubstr("Can not modify the Report/Chart settings."));
}

// ---- unfavorite

TEST_F(DialogCommands, UnfavoriteTakesTheFavoriteAway) {
  const std::string rest = ReadStoredBytes(store_, kMine).rest;
  const ProgramRun run = QuillOn("unfavorite", {"Mine"});
  EXPECT_EQ(run.out, "Removed 7  Mine: report, Last 7 Months\n");
  EXPECT_EQ(ReadStoredBytes(store_, kMine).row, "");
  EXPECT_EQ(ReadStoredBytes(store_, kMine).rest, rest);
  EXPECT_THAT(Quill({"list", store_}).out, Not(HasSubstr("Mine")));
}

TEST_F(DialogCommands, UnfavoriteTakesOneOfTwoAtATime) {
  ExpectDone("unfavorite", {"Twice"});
  EXPECT_TRUE(RowOf(5).empty());
  EXPECT_FALSE(RowOf(6).empty());
  ExpectDone("unfavorite", {"Twice"});
  EXPECT_TRUE(RowOf(6).empty());
}

TEST_F(DialogCommands, UnfavoriteKnowsFavoritesByTheirExactNameAlone) {
  for (const char* name : {"None", "mine", "7", "", "Spending"}) {
    EXPECT_THAT(Refusal("unfavorite", {name}),
                HasSubstr("there is no favorite '" + std::string(name) + "'; there are 'Twice', "))
        << name;
  }
}

}  // namespace
}  // namespace vetlo::testing
