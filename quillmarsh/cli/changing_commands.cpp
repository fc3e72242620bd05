// The words of the commands that make or change something: a store, or what is registered.

#include <string>

#include "quillmarsh/cli/component_commands.h"
#include "quillmarsh/cli/dialog_commands.h"
#include "quillmarsh/cli/program.h"
#include "quillmarsh/cli/sample_command.h"
#include "quillmarsh/cli/tidy_command.h"

namespace quillmarsh {
namespace {

void AddCustomize(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<CustomizeArguments>();
  CLI::App* const command = app.add_subcommand(
      "customize", "Change how a report of the list is shown, as its dialog does.");
  AddExample(*command, "customize home.qm \"Net Worth\" --as chart --to 2026-03-31");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  command->add_option("ROW", arguments->row, kRowHelp)->required();
  command->add_option("--as", arguments->as, "report or chart");
  command->add_option("--kind", arguments->kind, kKindHelp);
  command->add_option("--legend", arguments->legend, "the chart's legend: on or off");
  command->add_option("--title", arguments->title, "the title");
  command->add_option("--range", arguments->range, kRangeHelp);
  command->add_option("--n", arguments->n, kNumberHelp);
  command->add_option("--from", arguments->from,
                      "the first day, such as 2026-03-01, empty for an open start; without --range "
                      "it asks for custom-dates");
  command->add_option(
      "--to", arguments->to,
      "the last day, such as 2026-03-31, empty for an open end; without --range it asks for "
      "custom-dates, or where there are none for up-to-a-date");
  RunsWith(*command, program, arguments, CustomizeCommand);
}

void AddReset(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<ResetArguments>();
  CLI::App* const command = app.add_subcommand(
      "reset",
      "Put a report of the list back to its defaults. A favorite loses its title, its form and its "
      "dates by that, so you are asked first.");
  AddExample(*command, "reset home.qm \"Net Worth\"");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  command->add_option("ROW", arguments->row, kRowHelp)->required();
  command->add_flag("--yes", arguments->yes, "reset a favorite without being asked");
  RunsWith(*command, program, arguments, ResetCommand);
}

void AddFavorite(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<FavoriteArguments>();
  CLI::App* const command = app.add_subcommand(
      "favorite", "Save the settings of a report of the list as a favorite of its own.");
  AddExample(*command, "favorite home.qm 1 \"Where it goes\"");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  command->add_option("ROW", arguments->row, kRowHelp)->required();
  command->add_option("NAME", arguments->name, "the favorite's name")->required();
  command->add_flag("--replace", arguments->replace, "replace the favorite of that name");
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  RunsWith(*command, program, arguments, FavoriteCommand);
}

void AddUnfavorite(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<UnfavoriteArguments>();
  CLI::App* const command = app.add_subcommand("unfavorite", "Take a favorite off the list.");
  AddExample(*command, "unfavorite home.qm \"Where it goes\"");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  command->add_option("NAME", arguments->name, "the favorite's name")->required();
  RunsWith(*command, program, arguments, UnfavoriteCommand);
}

void AddTidy(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<TidyArguments>();
  CLI::App* const command = app.add_subcommand(
      "tidy",
      "Put the indexes into a store that another tool has written without them. It shows the same "
      "with them, faster.");
  AddExample(*command, "tidy home.qm");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  RunsWith(*command, program, arguments, TidyCommand);
}

}  // namespace

void AddSample(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<SampleArguments>();
  CLI::App* const command = app.add_subcommand(
      "sample",
      "Write an invented household to try the reports on: accounts of all kinds, "
      "transactions, investments, budgets and scheduled payments.");
  AddExample(*command, "sample home.qm --years 10 --transactions 20000");
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
                      "the last day of the history, such as 2026-03-31 (default: today); the same "
                      "seed and day give the same file");
  command->add_flag("--force", arguments->force, "replace a file that is there already");
  command->callback([&program, arguments] {
    program.run = [&program, arguments] { SampleCommand(*arguments, program.out, program.err); };
  });
}

void AddChangingCommands(CLI::App& app, Program& program) {
  AddCustomize(app, program);
  AddReset(app, program);
  AddFavorite(app, program);
  AddUnfavorite(app, program);
  AddTidy(app, program);
}

// They take no arguments.
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
    CLI::App* const command = app.add_subcommand(operation.name, operation.description);
    AddExample(*command, operation.name);
    command->callback(
        [&program, run = operation.run] { program.run = [&program, run] { run(program.out); }; });
  }
}

}  // namespace quillmarsh
