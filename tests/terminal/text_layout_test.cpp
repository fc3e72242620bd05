#include "quillmarsh/terminal/text_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmarsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PadLeft, PutsBlanksInFront) { EXPECT_EQ(PadLeft("漢", 4), "  漢"); }

TEST(PadLeft, LeavesATextThatIsWider) { EXPECT_EQ(PadLeft("Rent", 3), "Rent"); }

TEST(PadRight, PutsBlanksBehind) { EXPECT_EQ(PadRight("漢", 4), "漢  "); }

TEST(Centred, LeansToTheLeft) { EXPECT_EQ(Centred("ab", 5), " ab"); }

TEST(Centred, LeavesATextThatIsWider) { EXPECT_EQ(Centred("Rent", 3), "Rent"); }

TEST(Repeated, MayBeNothing) { EXPECT_EQ(Repeated("█", 0), ""); }

TEST(Repeated, JoinsThePieces) { EXPECT_EQ(Repeated("ab", 3), "ababab"); }

TEST(Shortened, LeavesATextThatFits) { EXPECT_EQ(Shortened("Rent", 4), "Rent"); }

TEST(Shortened, EndsWithAnEllipsis) { EXPECT_EQ(Shortened("Insurance", 4), "Ins…"); }

TEST(Shortened, CountsCells) { EXPECT_EQ(Shortened("漢字漢字", 4), "漢…"); }

TEST(Shortened, IsEmptyWithoutCells) { EXPECT_EQ(Shortened("Rent", 0), ""); }

TEST(Wrapped, AnEmptyTextHasNoLines) { EXPECT_THAT(Wrapped("", 10), IsEmpty()); }

TEST(Wrapped, LeavesATextThatFits) { EXPECT_THAT(Wrapped("a b c", 5), ElementsAre("a b c")); }

TEST(Wrapped, BreaksAtTheLastBlankThatFits) {
  EXPECT_THAT(Wrapped("one two three", 9), ElementsAre("one two", "three"));
}

TEST(Wrapped, BreaksAtABlankRightBehindTheLine) {
  EXPECT_THAT(Wrapped("one two three", 7), ElementsAre("one two", "three"));
}

TEST(Wrapped, BreaksAWordThatIsTooLong) {
  EXPECT_THAT(Wrapped("abcdefgh", 3), ElementsAre("abc", "def", "gh"));
}

TEST(Wrapped, BreaksBetweenWideCharacters) {
  EXPECT_THAT(Wrapped("漢字漢", 5), ElementsAre("漢字", "漢"));
}

TEST(AppendLine, DropsTrailingBlanks) {
  std::string text = "a\n";
  AppendLine(text, " b  ");
  EXPECT_EQ(text, "a\n b\n");
}

TEST(AppendLine, ALineOfBlanksIsEmpty) {
  std::string text;
  AppendLine(text, "   ");
  EXPECT_EQ(text, "\n");
}

}  // namespace
}  // namespace quillmarsh
