#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace quillmarsh {

// The streams that a command writes to, and what the arguments have asked for.
struct Program {
  std::ostream& out;
  std::ostream& err;
  std::function<void()> run;
};

// When the words of this command are read, the program is to run it with them.
template <typename Arguments>
void RunsWith(CLI::App& command, Program& program, std::shared_ptr<Arguments> arguments,
              void (*run)(const Arguments& arguments, std::ostream& out)) {
  command.callback([&program, arguments = std::move(arguments), run] {
    program.run = [&program, arguments, run] { run(*arguments, program.out); };
  });
}

// Each adds the words of its commands, with their help.
void AddSample(CLI::App& app, Program& program);
void AddReadingCommands(CLI::App& app, Program& program);
void AddChangingCommands(CLI::App& app, Program& program);
void AddComponentCommands(CLI::App& app, Program& program);

// An example of a command, the words behind "quillmarsh", as the end of its help.
void AddExample(CLI::App& command, const std::string& words);

// Words that several commands have.
inline constexpr const char* kStoreHelp = "the store file";
inline constexpr const char* kRowHelp = "its number or its name in the list";
inline constexpr const char* kKindHelp = "the kind of chart: line, bar or pie";
inline constexpr const char* kRangeHelp =
    "the date range: 0 to 15, or a name such as current-month, previous-year, last-n-months, "
    "custom-dates";
inline constexpr const char* kNumberHelp =
    "how many days or months, 1 to 32767, for last-n-days and -months";
void AddParameters(CLI::App& command, std::optional<std::string>& first,
                   std::optional<std::string>& second);

}  // namespace quillmarsh
