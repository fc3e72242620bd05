#include "quillmarsh/terminal/report_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>
#include <vector>

namespace quillmarsh {
namespace {

using vetlo::Alignment;
using vetlo::Document;

constexpr ScreenWidth kUnlimited;
constexpr float kCell = 120;

void SetStops(Document& report, const std::vector<float>& stops) {
  report.SetSelTabCount(static_cast<std::int32_t>(stops.size()));
  for (std::size_t i = 0; i < stops.size(); ++i) {
    report.SetSelTabs(static_cast<std::int32_t>(i), stops[i]);
  }
}

std::string LineWith(float indent, const std::vector<float>& stops, std::string_view text) {
  Document report;
  report.SetSelIndent(indent);
  SetStops(report, stops);
  report.SetSelText(text);
  return RenderReport(report, kUnlimited);
}

ScreenWidth Guessed(std::size_t columns) { return {columns, false}; }
ScreenWidth Limited(std::size_t columns) { return {columns, true}; }

std::string Title(std::string_view text, float margin, const ScreenWidth& screen, float indent = 0,
                  float right_indent = 0) {
  Document report;
  report.SetRightMargin(margin);
  report.SetSelIndent(indent);
  report.SetSelRightIndent(right_indent);
  report.SetSelAlignment(Alignment::kCenter);
  report.SetSelText(text);
  return RenderReport(report, screen);
}

TEST(RenderReport, ANewReportHasNoLines) { EXPECT_EQ(RenderReport(Document(), kUnlimited), ""); }

TEST(RenderReport, EndsEveryLine) { EXPECT_EQ(LineWith(0, {}, "a\r\nb"), "a\nb\n"); }

TEST(RenderReport, HasNoLineBehindTheLastLineEnd) {
  EXPECT_EQ(LineWith(0, {}, "a\r\nb\r\n"), "a\nb\n");
}

TEST(RenderReport, KeepsEmptyLines) { EXPECT_EQ(LineWith(0, {}, "\r\na\r\n\r\n"), "\na\n\n"); }

TEST(RenderReport, StartsALineAtItsIndent) { EXPECT_EQ(LineWith(3 * kCell, {}, "a"), "   a\n"); }

TEST(RenderReport, RoundsTheIndentToCells) { EXPECT_EQ(LineWith(2.5F * kCell, {}, "a"), "   a\n"); }

TEST(RenderReport, DropsTrailingBlanks) { EXPECT_EQ(LineWith(0, {1200}, "a  \t\t"), "a\n"); }

TEST(RenderReport, KeepsBlanksWithinALine) { EXPECT_EQ(LineWith(0, {}, "  a  b"), "  a  b\n"); }

TEST(RenderReport, KeepsRuleLines) { EXPECT_EQ(LineWith(0, {}, "_____"), "_____\n"); }

TEST(RenderReport, ATabGoesToTheNextStop) {
  EXPECT_EQ(LineWith(0, {5 * kCell, 9 * kCell}, "a\tb\tc"), "a    b   c\n");
}

TEST(RenderReport, TheFirstTabGoesPastTheStopOnTheIndent) {
  EXPECT_EQ(LineWith(2 * kCell, {2 * kCell, 6 * kCell}, "\tb"), "      b\n");
}

TEST(RenderReport, ATextThatEndsOnAStopGoesPastIt) {
  EXPECT_EQ(LineWith(0, {3 * kCell, 6 * kCell}, "abc\td"), "abc   d\n");
}

TEST(RenderReport, ATextPastAStopGoesToTheOneBehindIt) {
  EXPECT_EQ(LineWith(0, {3 * kCell, 6 * kCell}, "abcd\te"), "abcd  e\n");
}

TEST(RenderReport, TabsInARowCountOneByOne) {
  EXPECT_EQ(LineWith(0, {2 * kCell, 4 * kCell, 6 * kCell}, "\t\t\ta"), "      a\n");
}

TEST(RenderReport, ATabBehindTheLastStopIsABlank) {
  EXPECT_EQ(LineWith(0, {2 * kCell}, "abc\td\te"), "abc d e\n");
}

TEST(RenderReport, PassesOverStopsThatWereNotSet) {
  EXPECT_EQ(LineWith(0, {0, 0, 4 * kCell}, "a\tb"), "a   b\n");
}

TEST(RenderReport, MeasuresWideCharactersUpToAStop) {
  EXPECT_EQ(LineWith(0, {6 * kCell}, "漢字\ta"), "漢字  a\n");
}

TEST(RenderReport, DoesNotLetTextsTouchWhereRoundingWouldMakeThem) {
  EXPECT_EQ(LineWith(0, {250}, "ab\tcd"), "ab cd\n");
}

// The columns of a real report: text widths and 195 twips between them, from an indent of 283.5.
TEST(RenderReport, LaysOutTheColumnsOfAReport) {
  const std::vector<float> stops = {283.5F, 283.5F + 8 * kCell + 195,
                                    283.5F + 8 * kCell + 195 + 9 * kCell + 195};
  EXPECT_EQ(LineWith(283.5F, stops,
                     "Account\t  Balance\tNote\r\n"
                     "________\t_________\t____\r\n"
                     "Checking\t 1,234.00\tx\r\n"
                     "漢字\t   -55.10\ty\r\n"),
            "  Account     Balance  Note\n"
            "  ________  _________  ____\n"
            "  Checking   1,234.00  x\n"
            "  漢字         -55.10  y\n");
}

TEST(RenderReport, JoinsTheRunsOfALine) {
  Document report;
  report.SetSelText("Re");
  report.SetSelFontSize(12);
  report.SetSelText("nt");
  EXPECT_EQ(RenderReport(report, kUnlimited), "Rent\n");
}

TEST(RenderReport, MakesTextsSafe) { EXPECT_EQ(LineWith(0, {}, "a\x1B[m"), "a\uFFFD[m\n"); }

TEST(RenderReport, ALoneLineFeedEndsNoLine) { EXPECT_EQ(LineWith(0, {}, "a\nb"), "a\uFFFDb\n"); }

TEST(RenderReport, LeavesALineWiderThanAGuess) {
  Document report;
  report.SetSelText("a long line");
  EXPECT_EQ(RenderReport(report, Guessed(4)), "a long line\n");
}

TEST(RenderReport, CentresOnThePage) { EXPECT_EQ(Title("ab", 10 * kCell, kUnlimited), "    ab\n"); }

TEST(RenderReport, CentresOnNoMoreThanTheTerminal) {
  EXPECT_EQ(Title("ab", 100 * kCell, Guessed(10)), "    ab\n");
}

TEST(RenderReport, CentresOnAPageNarrowerThanTheTerminal) {
  EXPECT_EQ(Title("ab", 10 * kCell, Guessed(100)), "    ab\n");
}

TEST(RenderReport, CentresOnTheTerminalWithoutAPage) {
  EXPECT_EQ(Title("ab", 0, Guessed(10)), "    ab\n");
}

TEST(RenderReport, CentresBetweenTheIndents) {
  EXPECT_EQ(Title("ab", 20 * kCell, kUnlimited, 2 * kCell, 6 * kCell), "       ab\n");
}

TEST(RenderReport, CentresByCells) {
  EXPECT_EQ(Title("漢字", 10 * kCell, kUnlimited), "   漢字\n");
}

TEST(RenderReport, ATitleWiderThanThePageStartsAtTheLeft) {
  EXPECT_EQ(Title("a wide title", 10 * kCell, kUnlimited), "a wide title\n");
}

TEST(RenderReport, ATabInATitleIsABlank) {
  EXPECT_EQ(Title("a\tb", 9 * kCell, kUnlimited), "   a b\n");
}

TEST(RenderReport, TitlesAreSafe) { EXPECT_EQ(Title("\x1B", 1 * kCell, kUnlimited), "\uFFFD\n"); }

// ---- on a screen that is a limit

// A table of names and amounts: seven cells of names, ten of amounts, two between them, from the
// third cell on.
std::string AmountsOn(const ScreenWidth& screen) {
  Document report;
  report.SetSelIndent(2 * kCell);
  SetStops(report, {2 * kCell, 11 * kCell});
  report.SetSelText(
      "Account\t     Total\r\n"
      "__________________\r\n"
      "Assets\r\n"
      "Savings\t  1,234.50\r\n"
      "漢字漢\t    -55.10\r\n"
      "Sum\t  1,179.40");
  return RenderReport(report, screen);
}

TEST(RenderReport, LeavesATableThatFitsTheScreen) {
  EXPECT_EQ(AmountsOn(Limited(21)), AmountsOn(kUnlimited));
}

TEST(RenderReport, CutsNamesToTheScreen) {
  EXPECT_EQ(AmountsOn(Limited(19)),
            "  Acco…       Total\n"
            "  ________________\n"
            "  Asse…\n"
            "  Savi…    1,234.50\n"
            "  漢字…      -55.10\n"
            "  Sum      1,179.40\n");
}

TEST(RenderReport, CutsNoNameToLessThanFourCellsAndNoAmount) {
  const std::string narrow = AmountsOn(Limited(4));
  EXPECT_EQ(narrow, AmountsOn(Limited(18)));
  EXPECT_EQ(narrow,
            "  Acc…       Total\n"
            "  _______________\n"
            "  Ass…\n"
            "  Sav…    1,234.50\n"
            "  漢…       -55.10\n"
            "  Sum     1,179.40\n");
}

TEST(RenderReport, CutsNothingForAGuess) {
  EXPECT_EQ(AmountsOn(Guessed(18)), AmountsOn(kUnlimited));
}

std::string TextsOn(std::size_t columns) {
  Document report;
  SetStops(report, {0, 11 * kCell, 18 * kCell});
  report.SetSelText(
      "Date\tPayee\tCategory\r\n"
      "2026/03/01\tBakery\tFood and Drink\r\n"
      "2026/03/02\tCorner\tHousehold");
  return RenderReport(report, Limited(columns));
}

TEST(RenderReport, CutsTheWidestNamesFirst) {
  EXPECT_EQ(TextsOn(28),
            "Date       Payee  Category\n"
            "2026/03/01 Bakery Food and …\n"
            "2026/03/02 Corner Household\n");
}

TEST(RenderReport, MovesWhatStandsBehindACutName) {
  EXPECT_EQ(TextsOn(22),
            "Date       Payee Cate…\n"
            "2026/03/01 Bake… Food…\n"
            "2026/03/02 Corn… Hous…\n");
}

TEST(RenderReport, CutsTablesOfDifferentStopsForThemselves) {
  Document report;
  SetStops(report, {4 * kCell});
  report.SetSelText("abcd\r\n");
  SetStops(report, {14 * kCell});
  report.SetSelText("a longer name\t  1.00");
  EXPECT_EQ(RenderReport(report, Limited(13)), "abcd\na lon…   1.00\n");
}

TEST(RenderReport, ATitleWiderThanTheScreenGoesOnInTheNextLine) {
  EXPECT_EQ(Title("History of a Payee:Corner Shop", 100 * kCell, Limited(20)),
            "    History of a\n  Payee:Corner Shop\n");
}

TEST(RenderReport, ATitleAsWideAsTheScreenStaysInOneLine) {
  EXPECT_EQ(Title("History of a Payee", 100 * kCell, Limited(18)), "History of a Payee\n");
}

TEST(RenderReport, ATitleOnAScreenNarrowerThanItsIndentsIsStillWritten) {
  EXPECT_NE(Title("Net Worth", 100 * kCell, Limited(3), 5 * kCell, 5 * kCell), "");
}

TEST(RenderReport, ANegativeIndentIsNone) { EXPECT_EQ(LineWith(-500, {}, "a"), "a\n"); }

TEST(RenderReport, AnIndentThatIsNoNumberIsNone) {
  EXPECT_EQ(LineWith(std::numeric_limits<float>::quiet_NaN(), {600}, "a\tb"), "a b\n");
}

TEST(RenderReport, AStopOutOfAllMeasureMakesNoEndlessLine) {
  EXPECT_LT(LineWith(0, {3e9F}, "a\tb").size(), 20000U);
}

}  // namespace
}  // namespace quillmarsh
