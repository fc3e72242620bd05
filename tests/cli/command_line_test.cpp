#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cli/quill.h"
#include "tests/support/program.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

// A store file with two accounts and a few settings rows.
class CommandLine : public ::testing::Test {
 protected:
  CommandLine() : store_(folder_ / "home.qm") {
    StoreBuilder builder(store_);
    const auto account = [&](std::int32_t number, const char* name, std::int32_t type,
                             double balance) {
      builder.Insert("Account", {{"AccountNumber", number},
                                 {"AccountName", name},
                                 {"AccountType", type},
                                 {"OpeningBalance", Money(balance)}});
    };
    account(1, "Wallet", kCashAccount, 1234.5);
    account(2, "Visiting\x1b[31mCard", kCreditCard, -35.25);
    const auto row = [&](std::int32_t number, const char* name, std::int32_t report,
                         std::int32_t output, std::int32_t group) {
      builder.Insert("ChartReportSubType", {{"ChartReportSubTypeNumber", number},
                                            {"ChartReportSubTypeName", name},
                                            {"ChartReportType", group},
                                            {"ChartReportSubTypeAttr", report},
                                            {"ChartOrReportType", output},
                                            {"ChartType", 1},
                                            {"Legend", false},
                                            {"Title", name},
                                            {"DateRangeType", 1}});
    };
    row(1, "Worth", 5, 1, 1);
    row(2, "Worth in Bars", 6, 0, 1);
    row(3, "Twice", 18, 1, 4);
    row(4, "Twice", 18, 0, 4);
    row(5, "Course", 25, 1, 5);
    row(6, "Neither", 5, 2, 1);
    builder.Finish();
  }

  TestFolder folder_;
  std::string store_;
};

TEST_F(CommandLine, ShowsAReportByNumberAndByName) {
  const ProgramRun by_number = Quill({"show", store_, "1", "--today", "2026-03-20"});
  EXPECT_EQ(by_number.status, 0);
  EXPECT_THAT(by_number.out, HasSubstr("Up to 2026/03/20"));
  EXPECT_THAT(by_number.out, HasSubstr("Cash Accounts          1,234.50"));
  EXPECT_EQ(Quill({"show", store_, "worth", "--today", "2026-03-20"}).out, by_number.out);
}

TEST_F(CommandLine, TextsOfAStoreCarryNoControlCharactersIntoTheTerminal) {
  const ProgramRun chart = Quill({"show", store_, "2"});
  EXPECT_EQ(chart.status, 0);
  EXPECT_THAT(chart.out, HasSubstr("Visiting"));
  EXPECT_THAT(chart.out, Not(HasSubstr("\x1b")));
}

TEST_F(CommandLine, ANameOfTwoRowsAsksForANumber) {
  const ProgramRun run = Quill({"show", store_, "Twice"});
  EXPECT_EQ(run.status, 1);
  ExpectOneLine(run.err);
  EXPECT_THAT(run.err, HasSubstr("3, 4"));
}

TEST_F(CommandLine, ListsRowsUnderTheirSubjects) {
  const ProgramRun run = Quill({"list", store_});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, StartsWith("Favorites\n    3  Twice"));
  EXPECT_THAT(run.out, HasSubstr("Net worth\n    1  Worth          report      Up to Today"));
  EXPECT_THAT(run.out, HasSubstr("bar chart"));
}

TEST_F(CommandLine, AHistoryWithoutItsSubjectSaysWhatItTakes) {
  const ProgramRun run = Quill({"show", store_, "Course"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("--parameter1"));
  EXPECT_THAT(Quill({"show", store_, "Course", "--parameter1", "1"}).out,
              HasSubstr("Course:Cash:Wallet"));
}

TEST_F(CommandLine, DrawsAReportNumberWithSettingsOfTheMoment) {
  const ProgramRun run = Quill({"report", store_, "5", "--title", "Mine", "--to", "2026-01-31"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("Mine\n"));
  EXPECT_THAT(run.out, HasSubstr("Up to 2026/01/31"));
}

TEST_F(CommandLine, ARangeIsNamedByItsNumberOrItsWords) {
  const std::vector<std::string> words = {"report",  store_,       "5",
                                          "--today", "2026-03-20", "--range"};
  const auto with_range = [&](const char* range) {
    auto all = words;
    all.emplace_back(range);
    return Quill(all).out;
  };
  EXPECT_EQ(with_range("7"), with_range("previous-year"));
  EXPECT_EQ(with_range("Previous Year"), with_range("7"));
  EXPECT_THAT(with_range("7"), HasSubstr("2025/01/01 Through 2025/12/31"));
}

TEST_F(CommandLine, DatesAreTakenInTheFormInWhichTheyAreShown) {
  EXPECT_EQ(Quill({"report", store_, "5", "--to", "2026/01/31"}).out,
            Quill({"report", store_, "5", "--to", "2026-01-31"}).out);
  EXPECT_THAT(Quill({"show", store_, "1", "--today", "2026/03/20"}).out,
              HasSubstr("Up to 2026/03/20"));
  EXPECT_EQ(Quill({"figure", store_, "TotalAssets", "--to", "2026/03/31"}).out, "1,234.50\n");
  EXPECT_EQ(Quill({"trace", store_, "1", "--today", "2026/03/20"}).out,
            Quill({"trace", store_, "1", "--today", "2026-03-20"}).out);
  EXPECT_THAT(Quill({"sample", folder_ / "small.qm", "--until", "2026/03/20", "--years", "1",
                     "--transactions", "200"})
                  .out,
              HasSubstr("up to 2026-03-20"));
}

TEST_F(CommandLine, AnEmptyDateIsAnOpenEnd) {
  EXPECT_EQ(Quill({"report", store_, "1", "--from", "", "--to", "2026-01-31"}).out,
            Quill({"report", store_, "1", "--to", "2026-01-31"}).out);
  EXPECT_EQ(Quill({"report", store_, "1", "--from=", "--to="}).out,
            Quill({"report", store_, "1", "--range", "all-dates"}).out);
  EXPECT_EQ(Quill({"figure", store_, "TotalAssets", "--to="}).out, "1,234.50\n");
}

TEST_F(CommandLine, WordsAreTakenInAnyCaseOfLetters) {
  EXPECT_EQ(Quill({"report", store_, "6", "--kind", "PIE"}).out,
            Quill({"report", store_, "6", "--kind", "pie"}).out);
  EXPECT_EQ(Quill({"figure", store_, "totalassets", "--format", "JSON"}).out,
            "{\"operation\":\"TotalAssets\",\"result\":\"1234.5000\"}\n");
}

TEST_F(CommandLine, TheLargestNumberOfMonthsIsTaken) {
  EXPECT_EQ(Quill({"report", store_, "1", "--range", "13", "--n", "32767"}).status, 0);
}

struct BadCase {
  const char* name;
  std::vector<std::string> words;  // HOME stands for the store file
  const char* told;
};

class BadInput : public CommandLine, public ::testing::WithParamInterface<BadCase> {};

TEST_P(BadInput, GetsOneLineThatSaysWhatAndWhatToDo) {
  std::vector<std::string> words = GetParam().words;
  std::ranges::replace(words, "HOME", store_);
  const ProgramRun run = Quill(words);
  EXPECT_TRUE(run.status == 1 || run.status == 2) << run.status;
  EXPECT_EQ(run.out, "");
  ExpectOneLine(run.err);
  EXPECT_THAT(run.err, HasSubstr(GetParam().told));
}

INSTANTIATE_TEST_SUITE_P(
    Words, BadInput,
    ::testing::Values(
        BadCase{"NoCommand", {}, "--help"},
        BadCase{"UnknownCommand",
                {"dance"},
                "there is no command 'dance'; 'quillmarsh --help' shows what there is\n"},
        BadCase{"MistypedCommand",
                {"lst", "HOME"},
                "there is no command 'lst'; did you mean 'list'?\n"},
        BadCase{"EmptyCommand", {""}, "there is no command ''; "},
        BadCase{"NoFile", {"list"}, "FILE"},
        BadCase{"MissingFile", {"list", "nowhere.qm"}, "no such file"},
        BadCase{"Folder", {"list", "."}, "no regular file"},
        BadCase{"NoStore", {"list", SOURCE_DIR "/README.md"}, "no database at all"},
        BadCase{"UnknownRow", {"show", "HOME", "99"}, "quillmarsh list"},
        BadCase{"UnknownName", {"show", "HOME", "Nothing"}, "quillmarsh list"},
        BadCase{"MistypedName",
                {"show", "HOME", "wort in bars"},
                "the store has no report 'wort in bars'; did you mean 'Worth in Bars'?\n"},
        BadCase{"RowOfNeither", {"show", "HOME", "6"}, "neither"},
        BadCase{"BadToday", {"show", "HOME", "1", "--today", "2026-02-30"}, "2026-02-30"},
        BadCase{"ReportNumber60", {"report", "HOME", "60"}, "1 to 59"},
        BadCase{"ReportNumberWord", {"report", "HOME", "five"}, "1 to 59"},
        BadCase{"NoChart", {"report", "HOME", "7", "--chart"}, "no chart"},
        BadCase{"BadKind", {"report", "HOME", "5", "--kind", "cake"}, "line, bar or pie"},
        BadCase{"EmptyKind", {"report", "HOME", "5", "--kind="}, "line, bar or pie"},
        BadCase{"EmptyRange", {"report", "HOME", "5", "--range="}, "--range takes"},
        BadCase{"BadRange", {"report", "HOME", "5", "--range", "soon"}, "Current Month"},
        BadCase{"MistypedRange",
                {"report", "HOME", "5", "--range", "prev-month"},
                "not 'prev-month'; did you mean 'Previous Month'?"},
        BadCase{"NOfTooMany",
                {"report", "HOME", "1", "--range", "13", "--n", "32768"},
                "--n takes a whole number from 1 to 32767, not '32768'"},
        BadCase{"BadN", {"report", "HOME", "5", "--range", "13", "--n", "0"}, "--n"},
        BadCase{"NWithoutRange", {"report", "HOME", "5", "--n", "3"}, "last-n-days"},
        BadCase{"FromWithoutCustom",
                {"report", "HOME", "5", "--range", "1", "--from", "2026-01-01"},
                "custom-dates"},
        BadCase{"BadFrom", {"report", "HOME", "5", "--from", "1.1.2026"}, "1.1.2026"},
        BadCase{"CrossedDates",
                {"report", "HOME", "1", "--from", "2026-03-02", "--to", "2026/03/01"},
                "--from 2026-03-02 lies after --to 2026-03-01"},
        BadCase{"HalfShownDate", {"report", "HOME", "5", "--to", "2026/03-31"}, "2026/03-31"},
        BadCase{"NoSuchShownDate", {"report", "HOME", "5", "--to", "2026/02/30"}, "2026/02/30"},
        BadCase{"ShortShownDate", {"report", "HOME", "5", "--to", "2026/3/1"}, "2026/3/1"},
        BadCase{"EmptyToday", {"show", "HOME", "1", "--today", ""}, "--today takes a date"},
        BadCase{"EmptyTodayOfATrace", {"trace", "HOME", "1", "--today="}, "--today takes a date"},
        BadCase{"TraceOfAName", {"trace", "HOME", "Worth"}, "Worth"},
        BadCase{"TraceOfNoStore", {"trace", "nowhere.qm", "1"}, "no such file"},
        BadCase{"TraceOnNoDay", {"trace", "HOME", "1", "--today", "today"}, "today"},
        BadCase{"UnknownFigure", {"figure", "HOME", "TotalJoy"}, "TotalAssets"},
        BadCase{"MistypedFigure",
                {"figure", "HOME", "TotalAsets"},
                "there is no figure 'TotalAsets'; did you mean 'TotalAssets'?\n"},
        BadCase{"FigureOfNoDay", {"figure", "HOME", "TotalAssets", "--to", "soon"}, "soon"},
        BadCase{
            "FigureWithFrom", {"figure", "HOME", "TotalAssets", "--from", "2026-01-01"}, "--from"},
        BadCase{"FigureOfCrossedDates",
                {"figure", "HOME", "TotalIncome", "--from", "2026-03-02", "--to", "2026-03-01"},
                "--from 2026-03-02 lies after --to 2026-03-01"},
        BadCase{"FigureOfCrossedMonths",
                {"figure", "-", "TotalBudgetOfDateRange", "--cur", "1,2,3,4,5,6,7,8,9,10,11,12",
                 "--from", "2026-03-02", "--to", "2026-03-01"},
                "lies after"},
        BadCase{"FigureWithUnassigned",
                {"figure", "HOME", "TotalIncome", "--unassigned"},
                "TotalIncome does not take --unassigned"},
        BadCase{"FigureWithAmounts",
                {"figure", "HOME", "TotalAssets", "--cur", ""},
                "TotalAssets does not take --cur"},
        BadCase{"FigureOfACategoryAndOfNone",
                {"figure", "HOME", "TotalIncomeOfCategory", "--number", "1", "--unassigned"},
                "takes --number or --unassigned, not both"},
        BadCase{"FigureOfNoCategory",
                {"figure", "HOME", "TotalIncomeOfCategory"},
                "takes --number, of a category, or --unassigned"},
        BadCase{"FigureOfNoStore",
                {"figure", "-", "TotalAssets"},
                "TotalAssets reads a store: give its file instead of -"},
        BadCase{"FigureOfAStoreItDoesNotRead",
                {"figure", "HOME", "TotalBudgetOfDateRange", "--cur", "1,2,3,4,5,6,7,8,9,10,11,12"},
                "TotalBudgetOfDateRange reads no store: give - instead of '"},
        BadCase{"FigureWithNumber", {"figure", "HOME", "TotalIncome", "--number", "1"}, "--number"},
        BadCase{"FigureWithoutNumber", {"figure", "HOME", "TotalIncomeOfSubCategory"}, "--number"},
        BadCase{"FigureOfAWord",
                {"figure", "HOME", "TotalIncomeOfCategory", "--number", "food"},
                "food"},
        BadCase{"FigureOfElevenMonths",
                {"figure", "-", "TotalBudgetOfDateRange", "--cur", "1,2,3,4,5,6,7,8,9,10,11"},
                "twelve"},
        BadCase{"FigureOfNoAmount",
                {"figure", "-", "TotalBudgetOfDateRange", "--cur", "1,2,3,4,5,6,7,8,9,10,11,x"},
                "twelve"},
        BadCase{"BadFormat", {"figure", "HOME", "TotalAssets", "--format", "xml"}, "json"},
        BadCase{"SampleOverAFile", {"sample", "HOME"}, "--force"},
        BadCase{"SampleUpToNoDay", {"sample", "new.qm", "--until", ""}, "--until takes a date"},
        BadCase{"SampleOfNoSeed", {"sample", "new.qm", "--seed", ""}, "--seed takes a whole"},
        BadCase{"SampleOfANegativeSeed", {"sample", "new.qm", "--seed", "-1"}, "not '-1'"},
        BadCase{"SampleOfAHugeSeed",
                {"sample", "new.qm", "--seed", "18446744073709551616"},
                "from 0 to 18446744073709551615"},
        BadCase{"SampleOfNoYears", {"sample", "new.qm", "--years", "0"}, "--years"},
        BadCase{
            "SampleOfTooMany", {"sample", "new.qm", "--transactions", "9999999"}, "--transactions"},
        BadCase{"SampleNowhere", {"sample", "nowhere/new.qm"}, "nowhere/new.qm"}),
    [](const auto& bad) { return bad.param.name; });

TEST_F(CommandLine, FiguresPrintTheAmountAsItIsRead) {
  EXPECT_EQ(Quill({"figure", store_, "TotalAssets"}).out, "1,234.50\n");
  EXPECT_EQ(Quill({"figure", store_, "TotalCreditCardDebt"}).out, "35.25\n");
}

TEST_F(CommandLine, FiguresInJsonHaveFourDecimals) {
  EXPECT_EQ(Quill({"figure", store_, "TotalLiabilities", "--format", "json"}).out,
            "{\"operation\":\"TotalLiabilities\",\"result\":\"35.2500\"}\n");
}

TEST_F(CommandLine, AFigureOfMonthsReadsNoStore) {
  EXPECT_EQ(Quill({"figure", "-", "TotalBudgetOfDateRange", "--cur", "1,2.5,3,4,5,6,7,8,9,10,11,12",
                   "--from", "2026-01-31", "--to", "2026-02-01"})
                .out,
            "3.50\n");
}

TEST_F(CommandLine, AFigureTellsTheDaysOfWhatItCounted) {
  const std::string sample = folder_ / "sample.qm";
  ASSERT_EQ(
      Quill({"sample", sample, "--until", "2026-03-20", "--years", "1", "--transactions", "400"})
          .status,
      0);
  EXPECT_THAT(Quill({"figure", sample, "TotalExpensesOfCategory", "--unassigned", "--format",
                     "json", "--to", "2026-03-20"})
                  .out,
              HasSubstr("\",\"first\":\"20"));
  EXPECT_EQ(Quill({"figure", sample, "TotalIncomeOfCategory", "--number", "1", "--format", "json",
                   "--to", "1990-01-01"})
                .out,
            "{\"operation\":\"TotalIncomeOfCategory\",\"result\":\"0.0000\"}\n");
}

TEST_F(CommandLine, AFailingFigureIsAnErrorLineOrAFailureInJson) {
  StoreBuilder builder(folder_ / "lost.qm");
  builder.Insert("TransactionRecord", {{"TransactionRecordNumber", 1},
                                       {"TransactionRecordType", 0},
                                       {"TransactionType", 10},
                                       {"TransactionDate", Day(2026, 1, 1)},
                                       {"AccountNumber", 77},
                                       {"Total", Money(1)}});
  builder.Finish();
  const ProgramRun text = Quill({"figure", folder_ / "lost.qm", "TotalIncome"});
  EXPECT_EQ(text.status, 1);
  ExpectOneLine(text.err);
  EXPECT_EQ(Quill({"figure", folder_ / "lost.qm", "TotalIncome", "--format", "json"}).out,
            "{\"operation\":\"TotalIncome\",\"failure\":3021}\n");
}

TEST_F(CommandLine, ATraceEndsWithWhatTheHostGets) {
  const ProgramRun run = Quill({"trace", store_, "1", "--today", "2026-03-20"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.out, StartsWith("{\"on\":\"window\",\"put\":\"MousePointer\",\"value\":11}\n"
                                  "{\"on\":\"report\",\"put\":\"MousePointer\",\"value\":11}\n"
                                  "{\"on\":\"report\",\"put\":\"Locked\",\"value\":false}\n"));
  EXPECT_THAT(run.out, ::testing::EndsWith("{\"on\":\"host\",\"return\":false}\n"));
  EXPECT_THAT(run.out, HasSubstr("{\"on\":\"report\",\"put\":\"SelTabs\",\"at\":[0],"
                                 "\"value\":283.5}\n"));
}

TEST_F(CommandLine, ATraceCarriesNoControlCharactersIntoTheTerminal) {
  RunSql(store_,
         "UPDATE ChartReportSubType SET Title = char(0x9b) || '31mMünze' || char(0x202e, 0x2028)");
  for (const char* const row : {"1", "2"}) {
    const ProgramRun run = Quill({"trace", store_, row, "--store"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr(R"(\u009b31mMünze\u202e\u2028)"));
    EXPECT_THAT(run.out, Not(HasSubstr("\u009B")));
    EXPECT_THAT(run.out, Not(HasSubstr("\u202E")));
    EXPECT_THAT(run.out, Not(HasSubstr("\u2028")));
  }
}

TEST_F(CommandLine, ATraceOfAMissingRowIsTheReturnAlone) {
  EXPECT_EQ(Quill({"trace", store_, "99"}).out, "{\"on\":\"host\",\"return\":false}\n");
}

TEST_F(CommandLine, ATraceTellsTheStoresEventsOnDemand) {
  const ProgramRun run = Quill({"trace", store_, "1", "--store"});
  EXPECT_THAT(run.out,
              HasSubstr("{\"on\":\"store\",\"call\":\"OpenRecordset\",\"source\":\"Account\"}\n"));
  EXPECT_THAT(run.out, HasSubstr("\"source\":\"SELECT * FROM Account WHERE AccountType= 3\"}"));
  EXPECT_THAT(run.out, Not(HasSubstr("TransactionRecord")));
  EXPECT_THAT(Quill({"trace", store_, "1"}).out, Not(HasSubstr("\"store\"")));
}

TEST_F(CommandLine, ASampleIsTheSameForTheSameSeedAndDay) {
  const auto make = [&](const char* name, const char* seed) {
    const ProgramRun run = Quill({"sample", folder_ / name, "--transactions", "400", "--years", "1",
                                  "--seed", seed, "--until", "2026-03-20"});
    EXPECT_EQ(run.status, 0) << run.err;
    return ReadFile(folder_ / name);
  };
  const std::string first = make("a.qm", "7");
  EXPECT_EQ(make("b.qm", "7"), first);
  EXPECT_NE(make("c.qm", "8"), first);
}

TEST_F(CommandLine, ASampleReplacesAFileOnlyWhenForced) {
  const std::string file = folder_ / "kept.qm";
  WriteFile(file, "precious");
  EXPECT_EQ(Quill({"sample", file, "--transactions", "300", "--years", "1"}).status, 1);
  EXPECT_EQ(ReadFile(file), "precious");
  EXPECT_EQ(Quill({"sample", file, "--transactions", "300", "--years", "1", "--force"}).status, 0);
  EXPECT_EQ(Quill({"list", file}).status, 0);
}

TEST_F(CommandLine, HelpAndVersionAreNoErrors) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"--help"}, {"--version"}, {"show", "--help"}}) {
    const ProgramRun run = Quill(words);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_FALSE(run.out.empty());
  }
}

}  // namespace
}  // namespace vetlo::testing
