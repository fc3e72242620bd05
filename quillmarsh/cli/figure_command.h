#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace quillmarsh {

struct FigureArguments {
  std::string store;  // "-" for the operation that reads none
  std::string operation;
  std::optional<std::string> from;  // empty for an open end
  std::optional<std::string> to;
  std::optional<std::string> number;
  bool unassigned = false;
  std::optional<std::string> cur;  // twelve amounts, joined by commas
  std::string format = "text";     // or "json"
};

// The names of the operations, for the help.
std::vector<std::string> FigureOperations();

// Prints one of the plain figures: the amount as the user reads it, or a line of JSON.
void FigureCommand(const FigureArguments& arguments, std::ostream& out);

}  // namespace quillmarsh
