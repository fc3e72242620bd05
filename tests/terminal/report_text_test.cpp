#include "quillmarsh/terminal/report_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>
#include <vector>

namespace quillmarsh {
namespace {

using vetlo::Alignment;
using vetlo::Document;

constexpr std::size_t kUnlimited = 0;
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

std::string Title(std::string_view text, float margin, std::size_t columns, float indent = 0,
                  float right_indent = 0) {
  Document report;
  report.SetRightMargin(margin);
  report.SetSelIndent(indent);
  report.SetSelRightIndent(right_indent);
  report.SetSelAlignment(Alignment::kCenter);
  report.SetSelText(text);
  return RenderReport(report, columns);
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

TEST(RenderReport, LeavesALineWiderThanTheTerminal) {
  Document report;
  report.SetSelText("a long line");
  EXPECT_EQ(RenderReport(report, 4), "a long line\n");
}

TEST(RenderReport, CentresOnThePage) { EXPECT_EQ(Title("ab", 10 * kCell, kUnlimited), "    ab\n"); }

TEST(RenderReport, CentresOnNoMoreThanTheTerminal) {
  EXPECT_EQ(Title("ab", 100 * kCell, 10), "    ab\n");
}

TEST(RenderReport, CentresOnAPageNarrowerThanTheTerminal) {
  EXPECT_EQ(Title("ab", 10 * kCell, 100), "    ab\n");
}

TEST(RenderReport, CentresOnTheTerminalWithoutAPage) { EXPECT_EQ(Title("ab", 0, 10), "    ab\n"); }

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

TEST(RenderReport, ANegativeIndentIsNone) { EXPECT_EQ(LineWith(-500, {}, "a"), "a\n"); }

TEST(RenderReport, AnIndentThatIsNoNumberIsNone) {
  EXPECT_EQ(LineWith(std::numeric_limits<float>::quiet_NaN(), {600}, "a\tb"), "a b\n");
}

TEST(RenderReport, AStopOutOfAllMeasureMakesNoEndlessLine) {
  EXPECT_LT(LineWith(0, {3e9F}, "a\tb").size(), 20000U);
}

}  // namespace
}  // namespace quillmarsh
