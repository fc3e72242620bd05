#include "vetlo/output/report_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "quillmarsh/cli/event_text.h"
#include "quillmarsh/cli/json_text.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "tests/output/measured_platform.h"
#include "vetlo/host/recording.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct AmountRow {
  double amount;
  std::string label;
};

AmountRows RowsOf(const std::vector<AmountRow>& rows) {
  AmountRows filled;
  filled.Start();
  for (const AmountRow& row : rows) {
    filled.Add(row.amount, row.label);
  }
  filled.Close();
  return filled;
}

// A report that is written into a recording document. Characters are 120 twips wide.
class Writing {
 public:
  explicit Writing(Platform& platform) : platform_(platform), form_(platform) {
    Unheard unheard;
    least_margin = SetUpReport(report, platform, unheard);
  }

  void Write(const AmountTable& table, const ReportTitle& title, const AmountRows& rows,
             Currency total, bool computed = true) {
    ReportPage page(report, form_, least_margin);
    WriteAmountReport(page, table, title, rows, Format(total, kAmountPicture, platform_.Locale()),
                      computed, platform_.Locale());
  }

  ReportPage Page() { return {report, form_, least_margin}; }

  // The values put into a member, as the trace shows them.
  [[nodiscard]] std::vector<std::string> Puts(std::string_view member) const {
    std::vector<std::string> values;
    for (const Event& event : log.events()) {
      if (event.member == member) {
        const std::string text = quillmarsh::EventText(event);
        const std::size_t at = text.find("\"value\":") + 8;
        values.push_back(text.substr(at, text.size() - at - 1));
      }
    }
    return values;
  }

  [[nodiscard]] std::vector<std::string> Events() const {
    std::vector<std::string> lines;
    for (const Event& event : log.events()) {
      lines.push_back(quillmarsh::EventText(event));
    }
    return lines;
  }

  [[nodiscard]] std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (const Paragraph& paragraph : report.Paragraphs()) {
      lines.push_back(paragraph.Text());
    }
    return lines;
  }

  EventLog log;
  RecordingReport report{log, nullptr};
  float least_margin = 0;

 private:
  Platform& platform_;
  frmTamo form_;
};

class ReportPageTest : public ::testing::Test {
 protected:
  quillmarsh::TerminalPlatform platform_{NumberLocale{}};
  Writing writing_{platform_};
};

const AmountTable kNetWorth = {"Account", "Total", "Net Worth", RowRule::kHeadingRows};
const ReportTitle kTitle = {"Mine", "Up to 2026/01/31"};

std::string Put(const std::string& member, const std::string& value) {
  return R"({"on":"report","put":")" + member + R"(","value":)" + value + "}";
}

std::string PutText(const std::string& text) { return Put("SelText", quillmarsh::JsonText(text)); }

// ---- the set-up

TEST_F(ReportPageTest, SetUpUnlocksClearsAndIndents) {
  EXPECT_THAT(writing_.Events(),
              ElementsAre(Put("Locked", "false"), Put("Text", "\"\""), Put("SelIndent", "283.5"),
                          Put("SelRightIndent", "283.5")));
}

TEST_F(ReportPageTest, SetUpTakesAStandardPageWhereThereIsNoPrinter) {
  EXPECT_EQ(writing_.least_margin, 12310);
}

TEST(SetUpReport, TakesThePrintersPage) {
  MeasuredPlatform platform;
  platform.page_width = 16838.5F;
  Document report;
  Unheard unheard;
  EXPECT_EQ(SetUpReport(report, platform, unheard), 17228.5F);
}

// ---- the whole of a report

TEST_F(ReportPageTest, WritesARowsReportInThisOrder) {
  writing_.Write(kNetWorth, kTitle,
                 RowsOf({{-1, "Assets"}, {12.5, "Wallet"}, {-1, ""}, {1000, "Bank"}}),
                 CCur(1012.5));
  const std::string rule(20, '_');  // 2235 twips
  EXPECT_THAT(writing_.Events(),
              ElementsAre(Put("Locked", "false"), Put("Text", "\"\""), Put("SelIndent", "283.5"),
                          Put("SelRightIndent", "283.5"),                               //
                          Put("RightMargin", "3192.0"), Put("RightMargin", "12310.0"),  //
                          Put("SelTabCount", "2"),
                          R"({"on":"report","put":"SelTabs","at":[0],"value":283.5})",
                          R"({"on":"report","put":"SelTabs","at":[1],"value":1558.5})",
                          Put("SelAlignment", "2"),                                         //
                          Put("SelFontName", "\"Monospace\""), Put("SelFontSize", "10.0"),  //
                          PutText("\r\n"), Put("SelFontName", "\"MS Sans Serif\""),
                          Put("SelFontSize", "12.0"), PutText("Mine\r\n"),
                          Put("SelFontName", "\"Monospace\""), Put("SelFontSize", "10.0"),
                          PutText("\r\nUp to 2026/01/31\r\n\r\n\r\n"),  //
                          Put("SelAlignment", "0"),                     //
                          PutText("Account\t    Total\r\n"),            //
                          PutText(rule + "\r\n\r\n"),                   //
                          PutText("Assets\r\n" + rule), PutText("\r\n"),
                          PutText("Wallet\t    12.50"), PutText("\r\n"),  //
                          PutText("\r\n"),                                //
                          PutText("Bank\t 1,000.00"), PutText("\r\n\r\n"), PutText(rule + "\r\n"),
                          PutText(rule + "\r\n"), PutText("Net Worth\t 1,012.50")));
}

TEST_F(ReportPageTest, EndsBehindItsTotal) {
  writing_.Write(kNetWorth, kTitle, RowsOf({{1, "Wallet"}}), CCur(1));
  EXPECT_EQ(writing_.Lines().back(), "Net Worth\t  1.00");
}

TEST_F(ReportPageTest, PutsTwoLineEndsUnderTheTitleWhereThereIsNoCaption) {
  writing_.Write(kNetWorth, {"Mine", ""}, RowsOf({{1, "Wallet"}}), CCur(1));
  const auto lines = writing_.Lines();
  ASSERT_GE(lines.size(), 5U);
  EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 5),
            (std::vector<std::string>{"", "Mine", "", "", "Account\t Total"}));
}

TEST_F(ReportPageTest, PutsTheCaptionBetweenOneAndThreeLineEnds) {
  writing_.Write(kNetWorth, kTitle, RowsOf({{1, "Wallet"}}), CCur(1));
  const auto lines = writing_.Lines();
  ASSERT_GE(lines.size(), 7U);
  EXPECT_EQ(
      std::vector<std::string>(lines.begin(), lines.begin() + 7),
      (std::vector<std::string>{"", "Mine", "", "Up to 2026/01/31", "", "", "Account\t Total"}));
}

TEST_F(ReportPageTest, CentresTheHeadingAlone) {
  writing_.Write(kNetWorth, kTitle, RowsOf({{1, "Wallet"}}), CCur(1));
  const auto& paragraphs = writing_.report.Paragraphs();
  for (std::size_t i = 0; i < paragraphs.size(); ++i) {
    EXPECT_EQ(paragraphs[i].alignment, i < 6 ? Alignment::kCenter : Alignment::kLeft) << i;
  }
}

// ---- rows

struct RuleRows {
  RowRule rule;
  std::vector<std::string> lines;
};

void PrintTo(const RuleRows& test, std::ostream* out) {
  *out << "rule " << static_cast<int>(test.rule);
}

class RowRules : public ::testing::TestWithParam<RuleRows> {};

TEST_P(RowRules, DecideWhatARowShows) {
  quillmarsh::TerminalPlatform platform{NumberLocale{}};
  Writing writing(platform);
  writing.Write({"A", "B", "C", GetParam().rule}, {"T", ""},
                RowsOf({{5, "Five"}, {-1, "Head"}, {-1, ""}, {0, ""}, {0, "Nil"}, {-0.01, "Owed"}}),
                CCur(5));
  auto lines = writing.Lines();
  ASSERT_GE(lines.size(), 11U);
  // Above the rows: the heading, the headers, a rule, a blank line; below: a blank line, the
  // double rule and the total.
  EXPECT_EQ(std::vector<std::string>(lines.begin() + 7, lines.end() - 4), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    All, RowRules,
    ::testing::Values(RuleRows{RowRule::kHeadingRows,
                               {"Five\t  5.00", "Head", "____________", "", "\t  0.00",
                                "Nil\t  0.00", "Owed", "____________"}},
                      RuleRows{RowRule::kNonNegativeRows,
                               {"Five\t  5.00", "", "", "\t  0.00", "Nil\t  0.00", ""}},
                      RuleRows{
                          RowRule::kLabelledRows,
                          {"Five\t  5.00", "Head\t -1.00", "", "", "Nil\t  0.00", "Owed\t -0.01"}},
                      RuleRows{RowRule::kAllRows,
                               {"Five\t  5.00", "Head\t -1.00", "\t -1.00", "\t  0.00",
                                "Nil\t  0.00", "Owed\t -0.01"}}));

// ---- the layout

struct WidthCase {
  std::string name;
  AmountTable table;
  double amount;
  std::string label;
  double total;
  std::string label_column;  // SelTabs(1), at the left edge of the second column
  std::string right_margin;
};

void PrintTo(const WidthCase& test, std::ostream* out) { *out << test.name; }

class ColumnWidths : public ::testing::TestWithParam<WidthCase> {};

// 283.5 + the first column + 195; the margin is that + the second column + 283.5 + 390.
TEST_P(ColumnWidths, AreThoseOfTheWidestText) {
  quillmarsh::TerminalPlatform platform{NumberLocale{}};
  Writing writing(platform);
  writing.Write(GetParam().table, kTitle, RowsOf({{GetParam().amount, GetParam().label}}),
                CCur(GetParam().total));
  EXPECT_THAT(writing.Puts("SelTabs"), ElementsAre("283.5", GetParam().label_column));
  EXPECT_EQ(writing.Puts("RightMargin").front(), GetParam().right_margin);
}

INSTANTIATE_TEST_SUITE_P(
    Of, ColumnWidths,
    ::testing::Values(
        WidthCase{"ALabel", {"A", "B", "C"}, 1, "Wallet", 1, "1198.5", "2352.0"},
        WidthCase{"ALabelHeader", {"Account", "B", "C"}, 1, "x", 1, "1318.5", "2472.0"},
        WidthCase{"ATotalLabel", {"A", "B", "Net Worth"}, 1, "x", 1, "1558.5", "2712.0"},
        WidthCase{"AnAmount", {"A", "B", "C"}, 1000, "x", 1, "598.5", "2232.0"},
        WidthCase{"ATotal", {"A", "B", "C"}, 1, "x", 1000, "598.5", "2232.0"},
        WidthCase{"AnAmountHeader", {"A", "Balance", "C"}, 1, "x", 1, "598.5", "2112.0"}),
    [](const auto& test) { return test.param.name; });

TEST_F(ReportPageTest, SetsTheMarginTwiceWhereTheTableIsNarrowerThanThePage) {
  writing_.least_margin = 1273.6F;
  writing_.Write({"A", "B", "C"}, kTitle, RowsOf({{1, "x"}}), CCur(1));  // 1752 wide in all
  writing_.least_margin = 1752.5F;
  writing_.Write({"A", "B", "C"}, kTitle, RowsOf({{1, "x"}}), CCur(1));
  EXPECT_THAT(writing_.Puts("RightMargin"), ElementsAre("1752.0", "1752.0", "1752.5"));
}

TEST_F(ReportPageTest, SetsTheMarginOnceWhereTheTableIsJustAsWideAsThePage) {
  writing_.least_margin = 1752;
  writing_.Write({"A", "B", "C"}, kTitle, RowsOf({{1, "x"}}), CCur(1));
  EXPECT_THAT(writing_.Puts("RightMargin"), ElementsAre("1752.0"));
}

TEST_F(ReportPageTest, ATableWiderThanThePageWidensTheDocument) {
  writing_.Write({"A", "B", "C"}, kTitle, RowsOf({{1, std::string(120, 'x')}}), CCur(1));
  EXPECT_THAT(writing_.Puts("RightMargin"), ElementsAre("16032.0"));
  EXPECT_EQ(writing_.Lines().at(7), std::string(127, '_'));  // 15075 twips
}

TEST_F(ReportPageTest, ALongTitleWidensNothing) {
  writing_.Write({"A", "B", "C"}, {std::string(300, 't'), std::string(300, 'c')},
                 RowsOf({{1, "x"}}), CCur(1));
  EXPECT_THAT(writing_.Puts("RightMargin"), ElementsAre("1752.0", "12310.0"));
}

TEST_F(ReportPageTest, LaysOutAnyNumberOfColumns) {
  const std::vector<std::string> first = {"four"};
  const std::vector<std::string> second = {"seventy"};
  ReportPage page = writing_.Page();
  page.LayOut({{"a", ColumnSide::kLeft, first, ""},
               {"b", ColumnSide::kRight, second, ""},
               {"c", ColumnSide::kLeft, {}, "extra"},
               {"head", ColumnSide::kRight, {}, ""}});
  EXPECT_THAT(writing_.Puts("SelTabCount"), ElementsAre("4"));
  EXPECT_THAT(writing_.Puts("SelTabs"), ElementsAre("283.5", "958.5", "1993.5", "2788.5"));
  // 480 + 840 + 600 + 480 and three gaps.
  EXPECT_EQ(writing_.Puts("RightMargin").front(), "3942.0");
  EXPECT_EQ(page.RuleLine(), std::string(26, '_'));
}

TEST_F(ReportPageTest, WritesEachCellAtItsSide) {
  const std::vector<std::string> none;
  ReportPage page = writing_.Page();
  page.LayOut({{"left", ColumnSide::kLeft, none, ""},
               {"right", ColumnSide::kRight, none, ""},
               {"again", ColumnSide::kLeft, none, ""}});
  page.WriteHeaderLine();
  page.WriteCells(std::vector<std::string>{"a", "b", "c"});
  EXPECT_EQ(writing_.Lines().front(), "left\t right\tagain");
  EXPECT_EQ(writing_.Lines().back(), "a\t     b\tc");
}

TEST(ReportPageInAProportionalFont, EndsNumbersAtTheRightEdge) {
  MeasuredPlatform platform;
  Writing writing(platform);
  writing.Write({"A", "B", "C"}, {"T", ""}, RowsOf({{1, "Wil"}, {1234.5, "x"}}), CCur(1));
  // The second column is 750 twips wide: "1,234.50" six wide and two narrow characters; "1.00"
  // leaves 375 of them, (375 + 50 - 1) / 50 blanks.
  const auto lines = writing.Lines();
  ASSERT_GE(lines.size(), 9U);
  EXPECT_EQ(lines[4], "A\t" + std::string(14, ' ') + "B");
  EXPECT_EQ(lines[7], "Wil\t" + std::string(8, ' ') + "1.00");
  EXPECT_EQ(lines[8], "x\t 1,234.50");
  // "Wil" is 260 wide.
  EXPECT_THAT(writing.Puts("SelTabs"), ElementsAre("283.5", "738.5"));
}

// ---- what could not be computed

TEST_F(ReportPageTest, ShowsTheHeadingAloneWhereComputingFailed) {
  writing_.Write(kNetWorth, kTitle, AmountRows{}, Currency{}, false);
  EXPECT_THAT(writing_.Lines(), ElementsAre("", "Mine", "", "Up to 2026/01/31", "", "", ""));
}

TEST_F(ReportPageTest, LaysOutForTheHeadersWhereComputingFailed) {
  writing_.Write({"Account", "B", ""}, kTitle, AmountRows{}, Currency{}, false);
  // 840 + 195 + "0.00".
  EXPECT_THAT(writing_.Puts("RightMargin"), ElementsAre("2472.0", "12310.0"));
  EXPECT_THAT(writing_.Puts("SelTabCount"), ElementsAre("2"));
  EXPECT_THAT(writing_.Puts("SelTabs"), ElementsAre("283.5", "1318.5"));
  EXPECT_THAT(writing_.Puts("SelAlignment"), ElementsAre("2", "0"));
}

TEST_F(ReportPageTest, MeasuresWhatAFailedRoutineHasLeft) {
  AmountRows rows;
  rows.Start();
  rows.Add(1000, "A label of 21 letters");
  writing_.Write({"A", "B", "C"}, kTitle, rows, Currency{}, false);
  EXPECT_THAT(writing_.Puts("SelTabs"), ElementsAre("283.5", "2998.5"));
  EXPECT_EQ(writing_.Puts("RightMargin").front(), "4632.0");
}

}  // namespace
}  // namespace vetlo
