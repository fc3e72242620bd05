#include "tests/sweeps/swept_commands.h"

#include <ostream>

namespace sweeps {

std::ostream& operator<<(std::ostream& out, const SweptCommand& command) {
  return out << command.name;
}

const std::vector<SweptCommand>& SweptCommands() {
  static const std::vector<SweptCommand> commands = {
      {"Help", {"--help"}, true},
      {"Misuse", {"show"}, true},
      {"List", {"list", "STORE"}, true},
      {"ShowReport", {"show", "STORE", "5", "--today", "2026-03-20"}, true},
      {"ShowChart", {"show", "STORE", "106", "--today", "2026-03-20"}},
      {"ReportOfToday", {"report", "STORE", "5", "--range", "up-to-today"}},
      {"ShowOfAPlainStore", {"show", "PLAIN", "1", "--today", "2026-03-20"}},
      {"ShowYields", {"show", "STORE", "39", "--today", "2026-03-20"}},
      {"Report",
       {"report", "STORE", "6", "--kind", "pie", "--range", "up-to-a-date", "--to", "2026-03-05"}},
      {"Figure", {"figure", "STORE", "TotalAssets", "--to", "2026-03-31"}},
      {"FigureAsJson",
       {"figure", "STORE", "TotalExpensesOfCategory", "--number", "1", "--format", "json"}},
      {"Trace", {"trace", "STORE", "5", "--store", "--today", "2026-03-20"}},
      {"Customize", {"customize", "STORE", "5", "--as", "chart", "--title", "All that is ours"}},
      {"Reset", {"reset", "STORE", "5"}},
      {"Favorite", {"favorite", "STORE", "5", "Ours"}},
      {"Unfavorite", {"unfavorite", "STORE", "The old one"}},
      {"Tidy", {"tidy", "PLAIN"}},
      {"Sample",
       {"sample", "NEW", "--years", "1", "--transactions", "200", "--until", "2026-03-20"}},
      {"SampleForced",
       {"sample", "STORE", "--years", "1", "--transactions", "200", "--until", "2026-03-20",
        "--force"}},
      {"Component", {"component"}, true},
      {"Register", {"register"}, true, false},
      {"RegisterAgain", {"register"}, true},
      {"Unregister", {"unregister"}, true},
  };
  return commands;
}

}  // namespace sweeps
