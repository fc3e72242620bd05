#pragma once

#include <optional>
#include <string>

namespace quillmarsh {

// Asks a question on the terminal, to be answered with y or yes; anything else, and the end of the
// input, is No. None, and nothing is asked, where standard input or standard error is no terminal:
// nobody would answer, or see the question.
std::optional<bool> AskOnTerminal(const std::string& question);

}  // namespace quillmarsh
