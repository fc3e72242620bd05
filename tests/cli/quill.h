#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "quillmarsh/cli/command_line.h"
#include "tests/support/program.h"

namespace vetlo::testing {

// The program's function with these words.
inline ProgramRun Quill(std::vector<std::string> words) {
  words.insert(words.begin(), "quillmarsh");
  std::vector<const char*> argv;
  for (const std::string& word : words) {
    argv.push_back(word.c_str());
  }
  std::ostringstream out;
  std::ostringstream err;
  const int status =
      quillmarsh::RunCommandLine(static_cast<int>(argv.size()), argv.data(), out, err);
  return {status, out.str(), err.str()};
}

// An error of the program.
inline void ExpectOneLine(const std::string& text) {
  EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
  EXPECT_THAT(text, ::testing::StartsWith("quillmarsh: "));
}

}  // namespace vetlo::testing
