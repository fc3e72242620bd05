// Whole reports and charts of the sample household, as the program prints them. A golden file
// holds a household and calls of the program with the text that each must print:
//
//   household: --seed 1 --until 2026-10-15
//   $ report HOUSEHOLD 5
//   ...
//
// With QUILLMARSH_REWRITE_GOLDEN set in the environment, the texts are written anew instead.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/support/program.h"

namespace vetlo::testing {
namespace {

struct GoldenCall {
  std::string words;
  std::string expected;
};

struct GoldenFile {
  std::string household;
  std::vector<GoldenCall> calls;
};

constexpr std::string_view kHouseholdMark = "household: ";
constexpr std::string_view kCallMark = "$ ";

GoldenFile Parse(const std::string& text) {
  GoldenFile golden;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(kHouseholdMark) && golden.calls.empty()) {
      golden.household = line.substr(kHouseholdMark.size());
    } else if (line.starts_with(kCallMark)) {
      golden.calls.push_back({line.substr(kCallMark.size()), ""});
    } else if (!golden.calls.empty()) {
      golden.calls.back().expected += line + "\n";
    }
  }
  return golden;
}

std::string Written(const GoldenFile& golden) {
  std::string text = std::string(kHouseholdMark) + golden.household + "\n";
  for (const GoldenCall& call : golden.calls) {
    text += std::string(kCallMark) + call.words + "\n" + call.expected;
  }
  return text;
}

std::vector<std::string> WordsOf(const std::string& text, const std::string& household) {
  std::vector<std::string> words;
  std::istringstream stream(text);
  for (std::string word; stream >> word;) {
    words.push_back(word == "HOUSEHOLD" ? household : word);
  }
  return words;
}

class Golden : public ::testing::TestWithParam<int> {
 protected:
  static std::string FileName() {
    return std::string(SOURCE_DIR) + "/tests/golden/" + (GetParam() < 10 ? "0" : "") +
           std::to_string(GetParam()) + ".golden";
  }
};

TEST_P(Golden, PrintsWhatTheFileSays) {
  GoldenFile golden = Parse(ReadFile(FileName()));
  ASSERT_FALSE(golden.calls.empty()) << "no expectation: " << FileName();
  const TestFolder folder;
  const std::string household = folder / "household.qm";
  std::vector<std::string> words = WordsOf("sample HOUSEHOLD " + golden.household, household);
  ASSERT_EQ(RunProgram(PROGRAM, words).status, 0);
  const bool rewrite = std::getenv("QUILLMARSH_REWRITE_GOLDEN") != nullptr;
  for (GoldenCall& call : golden.calls) {
    const ProgramRun run =
        RunProgram(PROGRAM, WordsOf(call.words, household), {"LC_ALL=C", "COLUMNS=100"});
    EXPECT_EQ(run.status, 0) << call.words << ": " << run.err;
    if (rewrite) {
      call.expected = run.out;
    } else {
      EXPECT_EQ(run.out, call.expected) << call.words;
      EXPECT_FALSE(call.expected.empty()) << "nothing is expected of " << call.words;
    }
  }
  if (rewrite) {
    WriteFile(FileName(), Written(golden));
  }
}

INSTANTIATE_TEST_SUITE_P(Reports, Golden, ::testing::Range(1, 60), [](const auto& number) {
  return "Number" + std::to_string(number.param);
});

}  // namespace
}  // namespace vetlo::testing
