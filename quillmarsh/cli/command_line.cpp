#include "quillmarsh/cli/command_line.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <ostream>
#include <sstream>
#include <utility>
#include <vector>

#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/nearest.h"
#include "quillmarsh/cli/program.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/host/component.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

// An error is one line, whatever the words were that it repeats; it is made before it is begun.
void Tell(Program& program, const std::string& error) {
  const std::string line = "quillmarsh: " + SafeText(error) + "\n";
  program.err << line;
}

// An option with an empty value, "--title=", as the two words that it stands for; the parser would
// take the word behind it for the value.
std::vector<std::string> WordsOf(int argc, const char* const* argv) {
  std::vector<std::string> words;
  bool options = true;
  for (int i = 1; i < argc; ++i) {
    std::string word = argv[i];
    options = options && word != "--";
    if (options && word.starts_with("--") && word.find('=') + 1 == word.size()) {
      word.pop_back();
      words.push_back(word);
      word.clear();
    }
    words.push_back(word);
  }
  return words;
}

// What a user is told whose first word is no command, or nothing.
std::string UnknownCommand(const CLI::App& app, const std::vector<std::string>& words) {
  if (words.empty() || words.front().starts_with('-')) {
    return {};
  }
  std::vector<std::string> commands;
  for (const CLI::App* const command : app.get_subcommands({})) {
    commands.push_back(command->get_name());
  }
  const std::string& word = words.front();
  if (std::ranges::find(commands, word) != commands.end()) {
    return {};
  }
  const std::string hint = DidYouMean(word, commands);
  return "there is no command '" + word + "'" +
         (hint.empty() ? "; 'quillmarsh --help' shows what there is" : hint);
}

// The end of what was asked for: its output must have reached its place.
int Finish(Program& program) {
  if (program.out.flush()) {
    return kExitDone;
  }
  // Writing nothing meets the same trouble.
  const bool closed = write(STDOUT_FILENO, "", 0) < 0 && errno == EBADF;
  Tell(program, closed ? "the output cannot be written: standard output is closed"
                       : "the output cannot be written; see whether its disk is full");
  return kExitFailed;
}

int Misused(const CLI::App& app, const CLI::ParseError& error, Program& program) {
  std::ostringstream out;
  std::ostringstream err;
  if (app.exit(error, out, err) == 0) {
    program.out << out.str();
    return Finish(program);
  }
  Tell(program, std::string(error.what()) + " ('quillmarsh --help' shows what there is)");
  return kExitMisused;
}

int Run(Program& program) {
  try {
    program.run();
    return Finish(program);
  } catch (const LeftOut& left_out) {
    Finish(program);
    for (const std::string& line : left_out.Lines()) {
      Tell(program, line);
    }
  } catch (const UserError& error) {
    Tell(program, error.what());
  } catch (const vetlo::ComponentError& error) {
    Tell(program, error.what());
  } catch (const vetlo::Failure& failure) {
    Tell(program, FailureLine(failure.number(), failure.what()));
  }
  return kExitFailed;
}

int RunWords(int argc, const char* const* argv, Program& program) {
  CLI::App app{
      "Quillmarsh shows where a household's money is: 59 reports and charts over one "
      "store file.",
      "quillmarsh"};
  app.footer(
      "Try:  quillmarsh sample home.qm\n"
      "      quillmarsh list home.qm\n"
      "      quillmarsh show home.qm \"Net Worth\"\n"
      "'quillmarsh COMMAND --help' tells more of a command.\n");
  app.set_version_flag("--version", "quillmarsh " QUILLMARSH_VERSION);
  app.require_subcommand(0, 1);
  AddSample(app, program);
  AddReadingCommands(app, program);
  AddChangingCommands(app, program);
  AddComponentCommands(app, program);
  try {
    std::vector<std::string> words = WordsOf(argc, argv);
    if (const std::string error = UnknownCommand(app, words); !error.empty()) {
      Tell(program, error);
      return kExitMisused;
    }
    std::ranges::reverse(words);  // the parser takes them from the end
    app.parse(std::move(words));
  } catch (const CLI::ParseError& error) {
    return Misused(app, error, program);
  }
  if (!program.run) {
    Tell(program, "name a command; 'quillmarsh --help' shows what there is");
    return kExitMisused;
  }
  return Run(program);
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  try {
    Program program{out, err, {}};
    return RunWords(argc, argv, program);
  } catch (const std::bad_alloc&) {
    err << kNoMemoryLine;
  }
  return kExitFailed;
}

}  // namespace quillmarsh
