#include "vetlo/host/document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> LinesOf(const Document& document) {
  std::vector<std::string> lines;
  for (const Paragraph& paragraph : document.Paragraphs()) {
    lines.push_back(paragraph.Text());
  }
  return lines;
}

TEST(Document, HasNoLineAtFirst) {
  const Document document;
  EXPECT_TRUE(document.Paragraphs().empty());
  EXPECT_EQ(document.Text(), "");
}

TEST(Document, JoinsTextsWrittenOneAfterAnother) {
  Document document;
  document.SetSelText("one");
  document.SetSelText("");
  document.SetSelText(" line");
  EXPECT_THAT(LinesOf(document), ElementsAre("one line"));
}

TEST(Document, BreaksLinesAtLineEndsAlone) {
  Document document;
  document.SetSelText("a\nb\rc\r\n\r\nd");
  EXPECT_THAT(LinesOf(document), ElementsAre("a\nb\rc", "", "d"));
}

TEST(Document, BeginsAnEmptyLineBehindALineEnd) {
  Document document;
  document.SetSelText("a\r\n");
  EXPECT_THAT(LinesOf(document), ElementsAre("a", ""));
}

TEST(Document, GivesItsWholeTextBack) {
  Document document;
  document.SetSelText("\r\ntitle\r\n");
  document.SetSelText("a\tb");
  EXPECT_EQ(document.Text(), "\r\ntitle\r\na\tb");
}

TEST(Document, KeepsTheFontOfEachPieceOfALine) {
  Document document;
  document.SetSelFontName("Serif");
  document.SetSelFontSize(9);
  document.SetSelText("small");
  document.SetSelFontName("Sans");
  document.SetSelFontSize(12);
  document.SetSelText("large");
  ASSERT_EQ(document.Paragraphs().size(), 1U);
  const auto& runs = document.Paragraphs()[0].runs;
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(runs[0].text, "small");
  EXPECT_EQ(runs[0].font_name, "Serif");
  EXPECT_EQ(runs[0].font_size, 9);
  EXPECT_EQ(runs[1].text, "large");
  EXPECT_EQ(runs[1].font_name, "Sans");
  EXPECT_EQ(runs[1].font_size, 12);
}

TEST(Document, KeepsTheSettingsThatHeldWhereALineBegan) {
  Document document;
  document.SetSelAlignment(Alignment::kCenter);
  document.SetSelIndent(10);
  document.SetSelRightIndent(20);
  document.SetSelTabCount(1);
  document.SetSelTabs(0, 30);
  document.SetSelText("first\r\n");
  document.SetSelAlignment(Alignment::kLeft);
  document.SetSelIndent(11);
  document.SetSelRightIndent(21);
  document.SetSelTabs(0, 31);
  document.SetSelText("second");
  ASSERT_EQ(document.Paragraphs().size(), 2U);
  const Paragraph& first = document.Paragraphs()[0];
  EXPECT_EQ(first.alignment, Alignment::kCenter);
  EXPECT_EQ(first.indent, 10);
  EXPECT_EQ(first.right_indent, 20);
  EXPECT_THAT(first.tab_stops, ElementsAre(30));
  const Paragraph& second = document.Paragraphs()[1];
  EXPECT_EQ(second.alignment, Alignment::kLeft);
  EXPECT_EQ(second.indent, 11);
  EXPECT_EQ(second.right_indent, 21);
  EXPECT_THAT(second.tab_stops, ElementsAre(31));
}

TEST(Document, LeavesALineThatHasTextAsItBegan) {
  Document document;
  document.SetSelText("first");
  document.SetSelAlignment(Alignment::kCenter);
  document.SetSelText(" and the rest of it");
  ASSERT_EQ(document.Paragraphs().size(), 1U);
  EXPECT_EQ(document.Paragraphs()[0].alignment, Alignment::kLeft);
}

TEST(Document, ClearingLeavesTheSettings) {
  Document document;
  document.SetSelIndent(10);
  document.SetSelTabCount(2);
  document.SetSelTabs(1, 30);
  document.SetSelText("gone");
  document.SetText("");
  EXPECT_TRUE(document.Paragraphs().empty());
  EXPECT_EQ(document.SelIndent(), 10);
  EXPECT_EQ(document.SelTabs(1), 30);
}

TEST(Document, ANewTextReplacesTheOld) {
  Document document;
  document.SetSelText("gone");
  document.SetText("a\r\nb");
  EXPECT_THAT(LinesOf(document), ElementsAre("a", "b"));
}

TEST(Document, CountsStopsFromZero) {
  Document document;
  document.SetSelTabCount(2);
  document.SetSelTabs(0, 5);
  document.SetSelTabs(1, 7);
  EXPECT_EQ(document.SelTabs(0), 5);
  EXPECT_EQ(document.SelTabs(1), 7);
}

TEST(Document, RefusesAStopThatIsNotCounted) {
  Document document;
  document.SetSelTabCount(2);
  for (const std::int32_t stop : {-1, 2, 3}) {
    EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { document.SetSelTabs(stop, 1); }))
        << stop;
    EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { document.SelTabs(stop); }))
        << stop;
  }
}

TEST(Document, HasNoStopsForACountBelowZero) {
  Document document;
  document.SetSelTabCount(-3);
  EXPECT_TRUE(Raises(FailureNumber::kSubscriptOutOfRange, [&] { document.SelTabs(0); }));
}

TEST(Document, KeepsWhatItsOtherMembersAreSetTo) {
  PlainContainer frame;
  Document document(&frame);
  EXPECT_EQ(document.Container(), &frame);
  document.SetMousePointer(kHourglassPointer);
  document.SetVisible(true);
  document.SetLocked(true);
  document.SetRightMargin(12310);
  EXPECT_EQ(document.MousePointer(), kHourglassPointer);
  EXPECT_TRUE(document.Visible());
  EXPECT_TRUE(document.Locked());
  EXPECT_EQ(document.RightMargin(), 12310);
}

}  // namespace
}  // namespace vetlo
