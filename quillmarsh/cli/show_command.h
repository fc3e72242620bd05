#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace quillmarsh {

struct ShowArguments {
  std::string store;
  std::string row;  // a number or a name
  std::optional<std::string> today;
  std::optional<std::string> parameter1;
  std::optional<std::string> parameter2;
};

// Draws a settings row of the store in the terminal.
void ShowCommand(const ShowArguments& arguments, std::ostream& out);

struct ReportArguments {
  std::string store;
  std::string number;  // of the report
  bool chart = false;
  std::optional<std::string> kind;
  std::optional<std::string> title;
  std::optional<std::string> range;
  std::optional<std::string> n;
  std::optional<std::string> from;  // empty for an open end
  std::optional<std::string> to;
  std::optional<std::string> today;
  std::optional<std::string> parameter1;
  std::optional<std::string> parameter2;
};

// Draws a report number with settings of the moment, which are not stored.
void ReportCommand(const ReportArguments& arguments, std::ostream& out);

}  // namespace quillmarsh
