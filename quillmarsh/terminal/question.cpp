#include "quillmarsh/terminal/question.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <string_view>

#include "quillmarsh/terminal/safe_text.h"

namespace quillmarsh {
namespace {

// One line as it is typed, without its end.
std::string TypedLine() {
  std::string line;
  char c = 0;
  while (read(STDIN_FILENO, &c, 1) == 1 && c != '\n') {
    line += c;
  }
  return line;
}

}  // namespace

std::optional<bool> AskOnTerminal(const std::string& question) {
  if (isatty(STDIN_FILENO) == 0 || isatty(STDERR_FILENO) == 0) {
    return std::nullopt;
  }
  std::cerr << SafeText(question) << " [y/N] " << std::flush;
  constexpr std::array<std::string_view, 5> kYes = {"y", "Y", "yes", "Yes", "YES"};
  return std::ranges::find(kYes, TypedLine()) != kYes.end();
}

}  // namespace quillmarsh
