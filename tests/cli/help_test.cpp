// The help of the program and of each of its commands.

#include "tests/cli/quill.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;

// The commands that the program's own help lists.
std::vector<std::string> Commands() {
  std::istringstream help(Quill({"--help"}).out);
  std::vector<std::string> commands;
  bool listing = false;
  for (std::string line; std::getline(help, line);) {
    if (listing && line.empty()) {
      break;
    }
    if (listing) {
      std::istringstream words(line);
      words >> commands.emplace_back();
    }
    listing = listing || line == "Subcommands:";
  }
  return commands;
}

TEST(Help, ListsTheCommands) {
  EXPECT_THAT(Commands(), ::testing::IsSupersetOf({"sample", "list", "figure", "component"}));
}

TEST(Help, OfACommandShowsAnExampleOfIt) {
  for (const std::string& command : Commands()) {
    const ProgramRun run = Quill({command, "--help"});
    EXPECT_EQ(run.status, 0) << command;
    EXPECT_EQ(run.err, "") << command;
    EXPECT_THAT(run.out, HasSubstr("\nExample:  quillmarsh " + command));
  }
}

}  // namespace
}  // namespace vetlo::testing
