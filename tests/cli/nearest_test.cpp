#include "quillmarsh/cli/nearest.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillmarsh {
namespace {

const std::vector<std::string> kCommands = {"sample", "list",  "show",      "report",
                                            "reset",  "trace", "customize", "favorite"};

std::string NearestCommand(std::string_view mistyped) {
  return Nearest(mistyped, kCommands).value_or("none");
}

TEST(Nearest, FindsAWordWithALetterLeftOut) { EXPECT_EQ(NearestCommand("lst"), "list"); }

TEST(Nearest, FindsAWordWithALetterTooMany) { EXPECT_EQ(NearestCommand("favourite"), "favorite"); }

TEST(Nearest, FindsAWordWithAnotherLetter) { EXPECT_EQ(NearestCommand("customise"), "customize"); }

TEST(Nearest, TakesTwoSwappedLettersForOneStep) { EXPECT_EQ(NearestCommand("hsow"), "show"); }

TEST(Nearest, FindsABeginning) { EXPECT_EQ(NearestCommand("custom"), "customize"); }

TEST(Nearest, IgnoresTheCaseOfLetters) { EXPECT_EQ(NearestCommand("SHOW"), "show"); }

TEST(Nearest, IsTheWordOfTheFewestSteps) {
  EXPECT_EQ(NearestCommand("resort"), "report");
  EXPECT_EQ(NearestCommand("resed"), "reset");
}

TEST(Nearest, IsTheFirstOfEquals) {
  EXPECT_EQ(Nearest("bat", std::vector<std::string>{"cat", "hat"}), "cat");
}

TEST(Nearest, IsNoWordThatSharesLittle) {
  EXPECT_EQ(NearestCommand("dance"), "none");
  EXPECT_EQ(NearestCommand("ls"), "none");
  EXPECT_EQ(NearestCommand(""), "none");
}

TEST(Nearest, IsNoneAmongNoWords) { EXPECT_EQ(Nearest("list", {}), std::nullopt); }

TEST(Nearest, LooksAtNoEndlessWord) {
  EXPECT_EQ(Nearest("list", std::vector<std::string>{std::string(10'000'000, 'l'), "list"}),
            "list");
  EXPECT_EQ(NearestCommand(std::string(10'000'000, 'l')), "none");
}

TEST(DidYouMean, AsksForTheNearestWord) {
  EXPECT_EQ(DidYouMean("lst", kCommands), "; did you mean 'list'?");
}

TEST(DidYouMean, IsNothingWithoutOne) { EXPECT_EQ(DidYouMean("dance", kCommands), ""); }

}  // namespace
}  // namespace quillmarsh
