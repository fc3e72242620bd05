#include "quillmarsh/terminal/text_width.h"

#include <gtest/gtest.h>

namespace quillmarsh {
namespace {

TEST(CellsOf, AnEmptyTextHasNone) { EXPECT_EQ(CellsOf(""), 0U); }

TEST(CellsOf, AnAsciiCharacterHasOne) { EXPECT_EQ(CellsOf("Rent 12.50"), 10U); }

TEST(CellsOf, ANarrowCharacterOfSeveralBytesHasOne) { EXPECT_EQ(CellsOf("Größe €"), 7U); }

TEST(CellsOf, AWideCharacterHasTwo) { EXPECT_EQ(CellsOf("漢字"), 4U); }

TEST(CellsOf, AFullwidthFormHasTwo) { EXPECT_EQ(CellsOf("\uFF21"), 2U); }

TEST(CellsOf, AHalfwidthFormHasOne) { EXPECT_EQ(CellsOf("\uFF71"), 1U); }

TEST(CellsOf, AWideCharacterOutsideTheFirstPlaneHasTwo) { EXPECT_EQ(CellsOf("\U00020000"), 2U); }

TEST(CellsOf, AnAmbiguousCharacterHasOne) { EXPECT_EQ(CellsOf("█"), 1U); }

TEST(CellsOf, ANonspacingMarkHasNone) { EXPECT_EQ(CellsOf("e\u0301"), 1U); }

TEST(CellsOf, ASpacingMarkHasNone) { EXPECT_EQ(CellsOf("\u0915\u0903"), 1U); }

TEST(CellsOf, AnEnclosingMarkHasNone) { EXPECT_EQ(CellsOf("a\u20DD"), 1U); }

TEST(CellsOf, AWideMarkHasNone) { EXPECT_EQ(CellsOf("\u302A"), 0U); }

TEST(CellsOf, AControlHasOne) { EXPECT_EQ(CellsOf("\t\x1B\x7F"), 3U); }

TEST(CellsOf, AFormatCharacterHasOne) { EXPECT_EQ(CellsOf("\u200B\u00AD"), 2U); }

TEST(CellsOf, AnInvalidByteHasOne) { EXPECT_EQ(CellsOf("a\xFF\xC3z"), 4U); }

TEST(CellsOf, EveryByteOfABrokenCharacterHasOne) { EXPECT_EQ(CellsOf("\xE6\xBC"), 2U); }

TEST(ClipToCells, LeavesATextThatFits) { EXPECT_EQ(ClipToCells("Rent", 4), "Rent"); }

TEST(ClipToCells, CutsBehindTheLastCell) { EXPECT_EQ(ClipToCells("Rental", 4), "Rent"); }

TEST(ClipToCells, DoesNotHalveAWideCharacter) { EXPECT_EQ(ClipToCells("漢字", 3), "漢"); }

TEST(ClipToCells, KeepsTheMarksOfTheLastCharacter) {
  EXPECT_EQ(ClipToCells("e\u0301e\u0301", 1), "e\u0301");
}

TEST(ClipToCells, NothingFitsIntoNoCells) { EXPECT_EQ(ClipToCells("Rent", 0), ""); }

}  // namespace
}  // namespace quillmarsh
