#include "quillmarsh/cli/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <ostream>
#include <sstream>
#include <utility>
#include <vector>

#include "quillmarsh/cli/component_commands.h"
#include "quillmarsh/cli/dialog_commands.h"
#include "quillmarsh/cli/figure_command.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/list_command.h"
#include "quillmarsh/cli/sample_command.h"
#include "quillmarsh/cli/show_command.h"
#include "quillmarsh/cli/trace_command.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/host/component.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

// The streams that a command writes to, and what the arguments have asked for.
struct Program {
  std::ostream& out;
  std::ostream& err;
  std::function<void()> run;
};

void AddParameters(CLI::App& command, std::optional<std::string>& first,
                   std::optional<std::string>& second) {
  command.add_option("--parameter1", first, "the subject of a history, such as an account number");
  command.add_option("--parameter2", second, "the second subject, such as a sub-category number");
}

void AddToday(CLI::App& command, std::string& today) {
  command.add_option("--today", today, "draw as of this day, YYYY-MM-DD (default: today)");
}

void AddSample(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<SampleArguments>();
  CLI::App* const command = app.add_subcommand(
      "sample",
      "Write an invented household to try the reports on: accounts of all kinds, "
      "transactions, investments, budgets and scheduled payments.");
  command->add_option("FILE", arguments->file, "the store file to write")->required();
  command->add_option("--years", arguments->years, "years of history, 1 to 60")
      ->capture_default_str();
  command
      ->add_option("--transactions", arguments->transactions,
                   "about how many transactions, 200 to 2000000")
      ->capture_default_str();
  command->add_option("--seed", arguments->seed, "another number gives another household")
      ->capture_default_str();
  command->add_option("--until", arguments->until,
                      "the last day of the history, YYYY-MM-DD (default: today); the same seed and "
                      "day give the same file");
  command->add_flag("--force", arguments->force, "replace a file that is there already");
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { SampleCommand(*arguments, program.out, program.err); };
  });
}

void AddList(CLI::App& app, Program& program) {
  auto store = std::make_shared<std::string>();
  CLI::App* const command =
      app.add_subcommand("list", "List the reports and charts that a store has settings for.");
  command->add_option("FILE", *store, "the store file")->required();
  command->callback(
      [&program, store] { program.run = [&program, store] { ListCommand(*store, program.out); }; });
}

void AddShow(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<ShowArguments>();
  CLI::App* const command =
      app.add_subcommand("show", "Draw a report or chart of the list, as its settings say.");
  command->add_option("FILE", arguments->store, "the store file")->required();
  command->add_option("ROW", arguments->row, "its number or its name in the list")->required();
  AddToday(*command, arguments->today);
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { ShowCommand(*arguments, program.out); };
  });
}

void AddReport(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<ReportArguments>();
  CLI::App* const command = app.add_subcommand(
      "report", "Draw a report by its report number, 1 to 59, with settings of the moment.");
  command->add_option("FILE", arguments->store, "the store file")->required();
  command->add_option("NUMBER", arguments->number, "the report number")->required();
  command->add_flag("--chart", arguments->chart, "as a chart");
  command->add_option("--kind", arguments->kind, "the kind of chart: line, bar or pie");
  command->add_option("--title", arguments->title, "the title (default: the report's own)");
  command->add_option("--range", arguments->range,
                      "the date range: 0 to 15, or a name such as current-month, previous-year, "
                      "last-n-months, custom-dates");
  command->add_option("--n", arguments->n, "how many days or months, for last-n-days and -months");
  command->add_option("--from", arguments->from, "the first day, YYYY-MM-DD, for custom-dates");
  command->add_option("--to", arguments->to,
                      "the last day, YYYY-MM-DD, for custom-dates and up-to-a-date");
  AddToday(*command, arguments->today);
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { ReportCommand(*arguments, program.out); };
  });
}

void AddTrace(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<TraceArguments>();
  CLI::App* const command = app.add_subcommand(
      "trace",
      "Draw a settings row on objects that only record, and print what was done to them "
      "as JSON Lines. For whoever writes a host.");
  command->add_option("STORE", arguments->store, "the store file")->required();
  command->add_option("ROW", arguments->row, "the number of the settings row")->required();
  AddToday(*command, arguments->today);
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  command->add_flag("--store", arguments->store_events, "tell the store's events too");
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { TraceCommand(*arguments, program.out); };
  });
}

void AddFigure(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<FigureArguments>();
  std::string names;
  for (const std::string& name : FigureOperations()) {
    names += (names.empty() ? "" : ", ") + name;
  }
  CLI::App* const command = app.add_subcommand("figure", "Print one plain figure of a store.");
  command->add_option("STORE", arguments->store, "the store file")->required();
  command->add_option("OPERATION", arguments->operation, "one of " + names)->required();
  command->add_option("--from", arguments->from, "the first day, YYYY-MM-DD (default: open)");
  command->add_option("--to", arguments->to, "the last day, YYYY-MM-DD (default: open)");
  command->add_option("--number", arguments->number, "the category or subcategory");
  command->add_flag("--unassigned", arguments->unassigned,
                    "what has no category, or of a category what has no subcategory");
  command->add_option("--cur", arguments->cur,
                      "twelve monthly amounts joined by commas, for TotalBudgetOfDateRange, which "
                      "reads no store: give - for STORE");
  command->add_option("--format", arguments->format, "text or json")->capture_default_str();
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { FigureCommand(*arguments, program.out); };
  });
}

void AddCustomize(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<CustomizeArguments>();
  CLI::App* const command = app.add_subcommand(
      "customize", "Change how a report of the list is shown, as its dialog does.");
  command->footer(
      "Example:  quillmarsh customize home.qm \"Net Worth\" --as chart --to 2026-03-31\n");
  command->add_option("FILE", arguments->store, "the store file")->required();
  command->add_option("ROW", arguments->row, "its number or its name in the list")->required();
  command->add_option("--as", arguments->as, "report or chart");
  command->add_option("--kind", arguments->kind, "the kind of chart: line, bar or pie");
  command->add_option("--legend", arguments->legend, "the chart's legend: on or off");
  command->add_option("--title", arguments->title, "the title");
  command->add_option("--range", arguments->range,
                      "the date range: 0 to 15, or a name such as current-month, previous-year, "
                      "last-n-months, custom-dates");
  command->add_option("--n", arguments->n, "how many days or months, for last-n-days and -months");
  command->add_option("--from", arguments->from,
                      "the first day, YYYY-MM-DD, empty for an open start; without --range it "
                      "asks for custom-dates");
  command->add_option(
      "--to", arguments->to,
      "the last day, YYYY-MM-DD, empty for an open end; without --range it asks for "
      "custom-dates, or where there are none for up-to-a-date");
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { CustomizeCommand(*arguments, program.out); };
  });
}

void AddReset(CLI::App& app, Program& program) {
  auto store = std::make_shared<std::string>();
  auto row = std::make_shared<std::string>();
  CLI::App* const command =
      app.add_subcommand("reset", "Put a report of the list back to its defaults.");
  command->footer("Example:  quillmarsh reset home.qm \"Net Worth\"\n");
  command->add_option("FILE", *store, "the store file")->required();
  command->add_option("ROW", *row, "its number or its name in the list")->required();
  command->callback([&program, store, row] {
    program.run = [&program, store, row] { ResetCommand(*store, *row, program.out); };
  });
}

void AddFavorite(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<FavoriteArguments>();
  CLI::App* const command = app.add_subcommand(
      "favorite", "Save the settings of a report of the list as a favorite of its own.");
  command->footer("Example:  quillmarsh favorite home.qm 1 \"Where it goes\"\n");
  command->add_option("FILE", arguments->store, "the store file")->required();
  command->add_option("ROW", arguments->row, "its number or its name in the list")->required();
  command->add_option("NAME", arguments->name, "the favorite's name")->required();
  command->add_flag("--replace", arguments->replace, "replace the favorite of that name");
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { FavoriteCommand(*arguments, program.out); };
  });
}

void AddUnfavorite(CLI::App& app, Program& program) {
  auto store = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  CLI::App* const command = app.add_subcommand("unfavorite", "Take a favorite off the list.");
  command->footer("Example:  quillmarsh unfavorite home.qm \"Where it goes\"\n");
  command->add_option("FILE", *store, "the store file")->required();
  command->add_option("NAME", *name, "the favorite's name")->required();
  command->callback([&program, store, name] {
    program.run = [&program, store, name] { UnfavoriteCommand(*store, *name, program.out); };
  });
}

// The commands about the component itself: they take no arguments.
void AddComponentCommands(CLI::App& app, Program& program) {
  struct ComponentOperation {
    const char* name;
    const char* description;
    void (*run)(std::ostream& out);
  };
  constexpr ComponentOperation kOperations[] = {
      {"register", "Register the reports component beside this program for your programs.",
       &RegisterCommand},
      {"unregister", "Forget the registered component.", &UnregisterCommand},
      {"component", "Tell which component is loaded, from where, in which version.",
       &ComponentCommand},
  };
  for (const ComponentOperation& operation : kOperations) {
    app.add_subcommand(operation.name, operation.description)
        ->callback([&program, run = operation.run] {
          program.run = [&program, run] { run(program.out); };
        });
  }
}

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

int Misused(const CLI::App& app, const CLI::ParseError& error, Program& program) {
  std::ostringstream out;
  std::ostringstream err;
  if (app.exit(error, out, err) == 0) {
    program.out << out.str();
    return kExitDone;
  }
  Tell(program, std::string(error.what()) + " ('quillmarsh --help' shows what there is)");
  return kExitMisused;
}

int Run(Program& program) {
  try {
    program.run();
    if (program.out.flush()) {
      return kExitDone;
    }
    Tell(program, "the output cannot be written; see whether its disk is full");
  } catch (const LeftOut& left_out) {
    program.out.flush();
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
  AddList(app, program);
  AddShow(app, program);
  AddReport(app, program);
  AddCustomize(app, program);
  AddReset(app, program);
  AddFavorite(app, program);
  AddUnfavorite(app, program);
  AddFigure(app, program);
  AddTrace(app, program);
  AddComponentCommands(app, program);
  try {
    std::vector<std::string> words = WordsOf(argc, argv);
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
