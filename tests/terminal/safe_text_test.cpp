#include "quillmarsh/terminal/safe_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

constexpr const char* kMark = "\uFFFD";

// The text of one code point below U+10000.
std::string TextOf(unsigned code) {
  if (code < 0x80) {
    return {static_cast<char>(code)};
  }
  if (code < 0x800) {
    return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
  }
  return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
          static_cast<char>(0x80 | (code & 0x3F))};
}

class UnsafeRange : public testing::TestWithParam<std::pair<unsigned, unsigned>> {};

TEST_P(UnsafeRange, IsReplacedThroughout) {
  for (unsigned code = GetParam().first; code <= GetParam().second; ++code) {
    EXPECT_EQ(SafeText(TextOf(code)), kMark) << code;
  }
}

TEST_P(UnsafeRange, EndsWhereItsNeighboursBegin) {
  for (const unsigned code : {GetParam().first - 1, GetParam().second + 1}) {
    // Below the first control there is nothing.
    const std::string text = TextOf(code > 0xFFFF ? 0x20 : code);
    EXPECT_EQ(SafeText(text), text) << code;
  }
}

INSTANTIATE_TEST_SUITE_P(All, UnsafeRange,
                         testing::Values(std::pair{0x00U, 0x1FU}, std::pair{0x7FU, 0x9FU},
                                         std::pair{0x061CU, 0x061CU}, std::pair{0x200EU, 0x200FU},
                                         std::pair{0x2066U, 0x2069U}));

TEST(SafeText, ReplacesSeparatorsAndEmbeddings) {
  for (unsigned code = 0x2028; code <= 0x202E; ++code) {
    EXPECT_EQ(SafeText(TextOf(code)), kMark) << code;
  }
}

TEST(SafeText, LeavesTheNarrowBlankBehindTheEmbeddings) { EXPECT_EQ(SafeText("\u202F"), "\u202F"); }

TEST(SafeText, TakesTheTeethOutOfAnEscapeSequence) {
  EXPECT_EQ(SafeText("\x1B[2JRent"), std::string(kMark) + "[2JRent");
}

TEST(SafeText, ReplacesEveryInvalidByte) {
  EXPECT_EQ(SafeText("a\xFF\xE6\xBCz"), std::string("a") + kMark + kMark + kMark + "z");
}

TEST(SafeText, ReplacesASurrogate) {
  EXPECT_EQ(SafeText("\xED\xA0\x80"), std::string(kMark) + kMark + kMark);
}

TEST(SafeText, ReplacesAnOverlongForm) {
  EXPECT_EQ(SafeText("\xC0\x9B"), std::string(kMark) + kMark);
}

TEST(SafeText, LeavesEverythingElse) {
  const std::string text = "Größe 漢字 \U0001F600 e\u0301 \u200B\uFFFD";
  EXPECT_EQ(SafeText(text), text);
}

TEST(SafeText, KeepsTheNumberOfCells) {
  const std::string text = "a\x1B\xFF\u202E\u0085\xE6\xBC";
  EXPECT_EQ(CellsOf(SafeText(text)), CellsOf(text));
}

}  // namespace
}  // namespace quillmarsh
