#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace quillmarsh {

// The component's dialogs without a window: the words of the command line are what a user would do
// in them. What a dialog refuses fails with a UserError in the dialog's own words.

// What is not given stays as it is.
struct CustomizeArguments {
  std::string store;
  std::string row;                // a number or a name
  std::optional<std::string> as;  // report or chart
  std::optional<std::string> kind;
  std::optional<std::string> legend;  // on or off
  std::optional<std::string> title;
  std::optional<std::string> range;
  std::optional<std::string> n;
  std::optional<std::string> from;
  std::optional<std::string> to;
};

void CustomizeCommand(const CustomizeArguments& arguments, std::ostream& out);

struct ResetArguments {
  std::string store;
  std::string row;
  bool yes = false;
};

// Puts a row back to the defaults of its report number. A favourite loses by that what makes it
// one: it needs `yes`, or a user who says so on the terminal.
void ResetCommand(const ResetArguments& arguments, std::ostream& out);

struct FavoriteArguments {
  std::string store;
  std::string row;
  std::string name;
  bool replace = false;
  std::optional<std::string> parameter1;
  std::optional<std::string> parameter2;
};

// Saves the settings of a row as a favourite. One of a row that takes its parameters from the
// caller keeps those that are given here, any other those of its row.
void FavoriteCommand(const FavoriteArguments& arguments, std::ostream& out);

struct UnfavoriteArguments {
  std::string store;
  std::string name;
};

// Takes the favourite of this name away.
void UnfavoriteCommand(const UnfavoriteArguments& arguments, std::ostream& out);

}  // namespace quillmarsh
