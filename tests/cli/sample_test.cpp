// The file that `sample` makes: what it refuses, and what is left of it where it is interrupted.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "tests/cli/quill.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace fs = std::filesystem;

class Sample : public ::testing::Test {
 protected:
  ProgramRun Make(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> words = {"sample", file_,     "--years",    "1",      "--transactions",
                                      "300",    "--until", "2026-03-20", "--seed", "7"};
    words.insert(words.end(), more.begin(), more.end());
    return Quill(words);
  }
  std::string Refusal(const std::vector<std::string>& more = {}) const {
    const ProgramRun run = Make(more);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    ExpectOneLine(run.err);
    return run.err;
  }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  // Starts the program on a large sample, waits until it is at work and sends it a signal; the
  // signal that it died by.
  int SignalThatEnds(int signal) const {
    const std::vector<std::string> words = {"sample", file_, "--transactions", "2000000"};
    const pid_t child = fork();
    if (child == 0) {
      execl(PROGRAM, "quillmarsh", words[0].c_str(), words[1].c_str(), words[2].c_str(),
            words[3].c_str(), nullptr);
      _exit(127);
    }
    while (Names().empty() && kill(child, 0) == 0) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

  TestFolder folder_;
  std::string file_ = folder_ / "home.qm";
};

TEST_F(Sample, RefusesWhatIsLeftOfAnotherStoreUnlessForced) {
  ASSERT_EQ(Make().status, 0);
  const std::string whole = ReadFile(file_);
  RunSql(file_, "PRAGMA journal_mode = WAL");
  BreakOffAChange(file_, "UPDATE Account SET AccountName = 'torn'; COMMIT; BEGIN");
  fs::remove(file_);
  ASSERT_THAT(Names(), SizeIs(2));
  EXPECT_THAT(Refusal(), AllOf(HasSubstr("-wal' is left of another store"), HasSubstr("--force")));
  EXPECT_THAT(Names(), SizeIs(2));
  EXPECT_EQ(Make({"--force"}).status, 0);
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
  EXPECT_EQ(ReadFile(file_), whole);
}

TEST_F(Sample, ReplacesAStoreWhoseSaveWasBrokenOff) {
  ASSERT_EQ(Make().status, 0);
  const std::string whole = ReadFile(file_);
  BreakOffAChange(file_, "UPDATE TransactionRecord SET Memo = printf('%.*c', 200, 'x')");
  ASSERT_THAT(Names(), SizeIs(2));
  EXPECT_EQ(Make({"--force"}).status, 0);
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
  EXPECT_EQ(ReadFile(file_), whole);
}

TEST_F(Sample, DoesNotReplaceAStoreThatAnotherProgramIsUsing) {
  ASSERT_EQ(Make().status, 0);
  const std::string whole = ReadFile(file_);
  const OtherProcess other(file_, "BEGIN IMMEDIATE");
  EXPECT_THAT(Refusal({"--force"}), HasSubstr("another program is using the store"));
  EXPECT_EQ(ReadFile(file_), whole);
}

TEST_F(Sample, TellsOfAFolderThatIsNotThere) {
  file_ = folder_ / "none/home.qm";
  EXPECT_THAT(Refusal(), HasSubstr("there is no folder '" + folder_ / "none'"));
}

TEST_F(Sample, TellsOfAFolderInItsPlace) {
  fs::create_directory(file_);
  EXPECT_THAT(Refusal({"--force"}), HasSubstr("it is a folder"));
}

TEST_F(Sample, LeavesNothingWhereItIsInterrupted) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_EQ(SignalThatEnds(signal), signal);
    EXPECT_THAT(Names(), IsEmpty());
  }
}

TEST_F(Sample, TakesAwayWhatOneThatWasKilledHasLeft) {
  EXPECT_EQ(SignalThatEnds(SIGKILL), SIGKILL);
  EXPECT_THAT(Names(), SizeIs(1));
  EXPECT_EQ(Make().status, 0);
  EXPECT_THAT(Names(), ElementsAre("home.qm"));
}

}  // namespace
}  // namespace vetlo::testing
