// The help of the program and of each of its commands.

#include <unistd.h>

#include <cstdio>
#include <tuple>

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

// ---- where it goes

void FillOutput() { std::ignore = std::freopen("/dev/full", "w", stdout); }

TEST(Help, ThatCannotBeWrittenIsAFailure) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"--help"}, {"--version"}, {"show", "--help"}}) {
    const ProgramRun run = RunProgram(PROGRAM, words, {}, FillOutput);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "quillmarsh: the output cannot be written; see whether its disk is full\n");
  }
}

TEST(Help, SaysThatStandardOutputIsClosed) {
  const ProgramRun run = RunProgram(PROGRAM, {"--help"}, {}, [] { close(STDOUT_FILENO); });
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "quillmarsh: the output cannot be written: standard output is closed\n");
}

TEST(Output, ThatIsClosedDoesNotGoIntoTheStore) {
  const TestFolder folder;
  const std::string store = folder / "home.qm";
  const std::vector<std::string> sample = {"sample",  store,        "--years",        "1",
                                           "--until", "2026-03-20", "--transactions", "200"};
  const ProgramRun made = RunProgram(PROGRAM, sample, {}, [] { close(STDOUT_FILENO); });
  EXPECT_EQ(made.status, 1);
  EXPECT_THAT(made.err, HasSubstr("standard output is closed"));
  const std::string as_written = ReadFile(store);
  ASSERT_EQ(std::remove(store.c_str()), 0);
  EXPECT_EQ(RunProgram(PROGRAM, sample).status, 0);
  EXPECT_TRUE(ReadFile(store) == as_written);

  const ProgramRun listed = RunProgram(PROGRAM, {"list", store}, {}, [] { close(STDOUT_FILENO); });
  EXPECT_EQ(listed.status, 1);
  EXPECT_THAT(listed.err, HasSubstr("standard output is closed"));
  EXPECT_TRUE(ReadFile(store) == as_written);
}

}  // namespace
}  // namespace vetlo::testing
