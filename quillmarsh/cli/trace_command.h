#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace quillmarsh {

struct TraceArguments {
  std::string store;
  std::string row;
  std::optional<std::string> today;
  std::optional<std::string> parameter1;
  std::optional<std::string> parameter2;
  bool store_events = false;
};

// Draws a settings row on objects that only record, and prints what was done to them, an event a
// line.
void TraceCommand(const TraceArguments& arguments, std::ostream& out);

}  // namespace quillmarsh
