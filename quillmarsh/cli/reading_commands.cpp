// The words of the commands that only read a store.

#include <string>

#include "quillmarsh/cli/figure_command.h"
#include "quillmarsh/cli/list_command.h"
#include "quillmarsh/cli/program.h"
#include "quillmarsh/cli/show_command.h"
#include "quillmarsh/cli/trace_command.h"

namespace quillmarsh {
namespace {

void AddToday(CLI::App& command, std::optional<std::string>& today) {
  command.add_option("--today", today, "draw as of this day, such as 2026-03-31 (default: today)");
}

void AddList(CLI::App& app, Program& program) {
  auto store = std::make_shared<std::string>();
  CLI::App* const command = app.add_subcommand(
      "list",
      "List the reports and charts that a store has settings for. Those whose settings are not the "
      "defaults any more are marked as customized; 'quillmarsh reset' brings them back.");
  AddExample(*command, "list home.qm");
  command->add_option("FILE", *store, kStoreHelp)->required();
  RunsWith(*command, program, store, ListCommand);
}

void AddShow(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<ShowArguments>();
  CLI::App* const command =
      app.add_subcommand("show", "Draw a report or chart of the list, as its settings say.");
  AddExample(*command, "show home.qm \"Net Worth\"");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  command->add_option("ROW", arguments->row, kRowHelp)->required();
  AddToday(*command, arguments->today);
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  RunsWith(*command, program, arguments, ShowCommand);
}

void AddReport(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<ReportArguments>();
  CLI::App* const command = app.add_subcommand(
      "report", "Draw a report by its report number, 1 to 59, with settings of the moment.");
  AddExample(*command, "report home.qm 6 --kind pie --range previous-year");
  command->add_option("FILE", arguments->store, kStoreHelp)->required();
  command->add_option("NUMBER", arguments->number, "the report number")->required();
  command->add_flag("--chart", arguments->chart, "as a chart");
  command->add_option("--kind", arguments->kind, kKindHelp);
  command->add_option("--title", arguments->title, "the title (default: the report's own)");
  command->add_option("--range", arguments->range, kRangeHelp);
  command->add_option("--n", arguments->n, kNumberHelp);
  command->add_option(
      "--from", arguments->from,
      "the first day, such as 2026-03-01, for custom-dates; empty for an open start");
  command->add_option(
      "--to", arguments->to,
      "the last day, such as 2026-03-31, for custom-dates and up-to-a-date; empty for an open end");
  AddToday(*command, arguments->today);
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  RunsWith(*command, program, arguments, ReportCommand);
}

void AddFigure(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<FigureArguments>();
  std::string names;
  for (const std::string& name : FigureOperations()) {
    names += (names.empty() ? "" : ", ") + name;
  }
  CLI::App* const command = app.add_subcommand("figure", "Print one plain figure of a store.");
  AddExample(*command, "figure home.qm TotalAssets --to 2026-03-31");
  command->add_option("STORE", arguments->store, kStoreHelp)->required();
  command->add_option("OPERATION", arguments->operation, "one of " + names)->required();
  command->add_option("--from", arguments->from,
                      "the first day, such as 2026-03-01 (default: open)");
  command->add_option("--to", arguments->to, "the last day, such as 2026-03-31 (default: open)");
  command->add_option("--number", arguments->number, "the category or subcategory");
  command->add_flag("--unassigned", arguments->unassigned,
                    "what has no category, or of a category what has no subcategory");
  command->add_option("--cur", arguments->cur,
                      "twelve monthly amounts joined by commas, for TotalBudgetOfDateRange, which "
                      "reads no store: give - for STORE");
  command->add_option("--format", arguments->format, "text or json")->capture_default_str();
  RunsWith(*command, program, arguments, FigureCommand);
}

void AddTrace(CLI::App& app, Program& program) {
  auto arguments = std::make_shared<TraceArguments>();
  CLI::App* const command = app.add_subcommand(
      "trace",
      "Draw a settings row on objects that only record, and print what was done to them "
      "as JSON Lines. For whoever writes a host.");
  AddExample(*command, "trace home.qm 5 --store");
  command->add_option("STORE", arguments->store, kStoreHelp)->required();
  command->add_option("ROW", arguments->row, "the number of the settings row")->required();
  AddToday(*command, arguments->today);
  AddParameters(*command, arguments->parameter1, arguments->parameter2);
  command->add_flag("--store", arguments->store_events, "tell the store's events too");
  RunsWith(*command, program, arguments, TraceCommand);
}

}  // namespace

void AddReadingCommands(CLI::App& app, Program& program) {
  AddList(app, program);
  AddShow(app, program);
  AddReport(app, program);
  AddFigure(app, program);
  AddTrace(app, program);
}

}  // namespace quillmarsh
