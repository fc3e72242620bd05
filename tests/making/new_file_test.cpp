#include "quillmarsh/making/new_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>

#include "tests/support/child_process.h"
#include "tests/support/program.h"
#include "tests/support/system_calls.h"

namespace vetlo::testing {
namespace {

using quillmarsh::FileError;
using quillmarsh::NewFile;
using quillmarsh::PlaceTaken;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace fs = std::filesystem;

// A number that no process has any more.
pid_t GoneProcess() {
  const pid_t child = fork();
  if (child == 0) {
    _exit(0);
  }
  waitpid(child, nullptr, 0);
  return child;
}

class Making : public ::testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
  [[nodiscard]] std::string LeaveBehind(const std::string& name) const {
    WriteFile(folder_ / name, "half");
    return name;
  }
  static std::string ErrorOf(const std::string& name) {
    try {
      const NewFile file(name);
      return "";
    } catch (const FileError& error) {
      return error.what();
    }
  }

  TestFolder folder_;
  std::string name_ = folder_ / "home.csv";
};

// ---- the name

TEST_F(Making, IsSeenUnderItsNameOnlyWhenItIsWhole) {
  NewFile file(name_);
  WriteFile(file.path(), "new");
  EXPECT_FALSE(fs::exists(name_));
  EXPECT_EQ(fs::path(file.path()).parent_path(), folder_.path());
  file.TakeFreeName();
  EXPECT_THAT(Names(), ElementsAre("home.csv"));
  EXPECT_EQ(ReadFile(name_), "new");
}

TEST_F(Making, LeavesNothingWhereItIsNotFinished) {
  {
    const NewFile file(name_);
    WriteFile(file.path(), "half");
  }
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(Making, DoesNotReplaceWhatHasComeUpMeanwhile) {
  NewFile file(name_);
  WriteFile(file.path(), "new");
  WriteFile(name_, "another's");
  EXPECT_THROW(file.TakeFreeName(), PlaceTaken);
  EXPECT_EQ(ReadFile(name_), "another's");
}

TEST_F(Making, DoesNotReplaceALinkToNothing) {
  fs::create_symlink("nowhere", name_);
  NewFile file(name_);
  WriteFile(file.path(), "new");
  EXPECT_THROW(file.TakeFreeName(), PlaceTaken);
  EXPECT_TRUE(fs::is_symlink(name_));
}

TEST_F(Making, ReplacesTheOldFileOnDemand) {
  for (const char* const text : {"first", "second"}) {
    NewFile file(name_);
    WriteFile(file.path(), text);
    file.TakeName();
    EXPECT_EQ(ReadFile(name_), text);
  }
  EXPECT_THAT(Names(), ElementsAre("home.csv"));
}

TEST_F(Making, TakesANameAsLongAsTheFileSystemHas) {
  const std::string longest = folder_ / std::string(255, 'x');
  NewFile file(longest);
  WriteFile(file.path(), "new");
  file.TakeFreeName();
  EXPECT_EQ(ReadFile(longest), "new");
  EXPECT_THAT(ErrorOf(longest + "x"), HasSubstr("no name of a file"));
}

TEST_F(Making, TakesSeveralAtOnce) {
  std::vector<std::unique_ptr<NewFile>> files;
  for (int i = 0; i < 20; ++i) {
    files.push_back(std::make_unique<NewFile>(folder_ / std::to_string(i)));
    WriteFile(files.back()->path(), "new");
  }
  for (const auto& file : files) {
    file->TakeFreeName();
  }
  EXPECT_EQ(Names().size(), 20U);
}

TEST_F(Making, NeedsAFolderAndTheNameOfAFile) {
  WriteFile(folder_ / "file", "");
  EXPECT_EQ(ErrorOf(folder_ / "none/home.csv"), "there is no folder '" + folder_ / "none" + "'");
  EXPECT_EQ(ErrorOf(folder_ / "file/home.csv"), "'" + folder_ / "file" + "' is no folder");
  EXPECT_EQ(ErrorOf(folder_.path()), "it is a folder");
  for (const std::string& name : {std::string(), folder_ / "new/", std::string("a\0b", 3)}) {
    EXPECT_NE(ErrorOf(name), "") << name;
  }
}

TEST_F(Making, OfAFileThatWasNeverWrittenIsAnError) {
  NewFile file(name_);
  EXPECT_THROW(file.TakeFreeName(), FileError);
  EXPECT_THROW(file.TakeName(), FileError);
  EXPECT_THAT(Names(), IsEmpty());
}

// ---- file systems that know fewer ways

class PoorFileSystem : public Making {
 protected:
  enum Answer { kTookName = 0, kWasTaken = 1, kFailed = 2, kNotTested = 3 };

  // Gives a new file its name where these calls fail with an error.
  int TakeFreeNameWithout(std::initializer_list<long> calls, int error) const {
    return InChild([&] {
      NewFile file(name_);
      WriteFile(file.path(), "new");
      if (!RefuseCalls(calls, error)) {
        return kNotTested;
      }
      try {
        file.TakeFreeName();
        return kTookName;
      } catch (const PlaceTaken&) {
        return kWasTaken;
      } catch (const FileError&) {
        return kFailed;
      }
    });
  }

  // The same for a name that is free, and for one that is not.
  void ExpectTheSame(std::initializer_list<long> calls, int error) {
    const int answer = TakeFreeNameWithout(calls, error);
    if (answer == kNotTested) {
      GTEST_SKIP() << "no filter of system calls here";
    }
    EXPECT_EQ(answer, kTookName);
    EXPECT_EQ(ReadFile(name_), "new");
    EXPECT_THAT(Names(), ElementsAre("home.csv"));
    WriteFile(name_, "another's");
    EXPECT_EQ(TakeFreeNameWithout(calls, error), kWasTaken);
    EXPECT_EQ(ReadFile(name_), "another's");
  }
};

#ifdef SYS_link
constexpr std::initializer_list<long> kRenameAndLink = {SYS_renameat2, SYS_link, SYS_linkat};
#else
constexpr std::initializer_list<long> kRenameAndLink = {SYS_renameat2, SYS_linkat};
#endif

TEST_F(PoorFileSystem, ThatCannotRenameWithoutReplacingLinks) {
  ExpectTheSame({SYS_renameat2}, EINVAL);
}

TEST_F(PoorFileSystem, ThatCannotLinkEitherTakesTheNameFirst) {
  ExpectTheSame(kRenameAndLink, EPERM);
}

TEST_F(PoorFileSystem, ThatDoesNotKnowTheCallsIsLikeIt) { ExpectTheSame(kRenameAndLink, ENOSYS); }

TEST_F(PoorFileSystem, ThatFailsForAnotherReasonIsAnError) {
  EXPECT_EQ(TakeFreeNameWithout({SYS_renameat2}, EIO), kFailed);
  EXPECT_THAT(Names(), IsEmpty());
  EXPECT_EQ(TakeFreeNameWithout({SYS_fsync}, EIO), kFailed);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PoorFileSystem, ThatFailsAfterTheNameWasTakenGivesItBack) {
#ifdef SYS_rename
  EXPECT_EQ(TakeFreeNameWithout({SYS_renameat2, SYS_link, SYS_linkat, SYS_rename}, EPERM), kFailed);
  EXPECT_THAT(Names(), IsEmpty());
#endif
}

// ---- interruptions

class Interruption : public Making, public ::testing::WithParamInterface<int> {};

TEST_P(Interruption, TakesTheFileAwayAndEndsTheProgram) {
  const int signal = GetParam();
  EXPECT_EQ(InChild([&] {
              const NewFile file(name_);
              const NewFile other(folder_ / "other.csv");
              WriteFile(file.path(), "half");
              WriteFile(other.path(), "half");
              std::raise(signal);
              return 0;
            }),
            128 + signal);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_P(Interruption, LeavesAFinishedFile) {
  const int signal = GetParam();
  EXPECT_EQ(InChild([&] {
              NewFile file(name_);
              WriteFile(file.path(), "new");
              file.TakeFreeName();
              std::raise(signal);
              return 0;
            }),
            128 + signal);
  EXPECT_THAT(Names(), ElementsAre("home.csv"));
}

TEST_P(Interruption, ThatIsIgnoredStaysSo) {
  const int signal = GetParam();
  EXPECT_EQ(InChild([&] {
              std::signal(signal, SIG_IGN);
              NewFile file(name_);
              WriteFile(file.path(), "new");
              std::raise(signal);
              file.TakeFreeName();
              return 0;
            }),
            0);
  EXPECT_EQ(ReadFile(name_), "new");
}

TEST_P(Interruption, OfAForkedProcessLeavesTheFileOfItsParent) {
  const NewFile file(name_);
  WriteFile(file.path(), "half");
  const int signal = GetParam();
  EXPECT_EQ(InChild([&] {
              std::raise(signal);
              return 0;
            }),
            128 + signal);
  EXPECT_TRUE(fs::exists(file.path()));
}

INSTANTIATE_TEST_SUITE_P(Signals, Interruption,
                         ::testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT));

// ---- what was left behind

TEST_F(Making, TakesAwayWhatKilledProgramsLeftInTheFolder) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(InChild([&] {
                const NewFile file(folder_ / "other.csv");
                WriteFile(file.path(), "half");
                return std::raise(SIGKILL);
              }),
              128 + SIGKILL);
    EXPECT_THAT(Names(), ElementsAre(StartsWith("quillmarsh-making-")));
  }
  NewFile file(name_);
  WriteFile(file.path(), "new");
  file.TakeFreeName();
  EXPECT_THAT(Names(), ElementsAre("home.csv"));
}

TEST_F(Making, TakesAwayWhatAnEarlierProcessOfItsOwnNumberLeft) {
  const std::string left = LeaveBehind("quillmarsh-making-" + std::to_string(getpid()) + "-999999");
  const NewFile file(name_);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(Making, LeavesWhatIsStillInTheMaking) {
  const NewFile own(folder_ / "other.csv");
  WriteFile(own.path(), "half");
  const std::string parents = LeaveBehind("quillmarsh-making-" + std::to_string(getppid()) + "-1");
  const NewFile file(name_);
  EXPECT_TRUE(fs::exists(own.path()));
  EXPECT_TRUE(fs::exists(folder_ / parents));
}

TEST_F(Making, LeavesWhatIsNoFileOfItsKind) {
  const std::string gone = "quillmarsh-making-" + std::to_string(GoneProcess());
  std::vector<std::string> names;
  for (const std::string& name :
       {std::string("film.making-1"), std::string("quillmarsh-making-"), gone, gone + "-",
        gone + "-x", gone + "-0", gone + "-1.csv", "x" + gone + "-1",
        std::string("quillmarsh-making--1-1"), std::string("quillmarsh-making-99999999999999-1")}) {
    names.push_back(LeaveBehind(name));
  }
  fs::create_directory(folder_ / gone + "-2");
  fs::create_symlink("film.making-1", folder_ / gone + "-3");
  const NewFile file(name_);
  for (const std::string& name : names) {
    EXPECT_TRUE(fs::exists(folder_ / name)) << name;
  }
  EXPECT_TRUE(fs::exists(folder_ / gone + "-2"));
  EXPECT_TRUE(fs::is_symlink(folder_ / gone + "-3"));
}

TEST_F(Making, LeavesWhatBelongsToAnotherUser) {
  constexpr uid_t kSomebodyElse = 65533;
  const std::string left = LeaveBehind("quillmarsh-making-" + std::to_string(GoneProcess()) + "-1");
  if (geteuid() != 0 || chown((folder_ / left).c_str(), kSomebodyElse, kSomebodyElse) != 0) {
    GTEST_SKIP() << "only root can give a file away";
  }
  const NewFile file(name_);
  EXPECT_TRUE(fs::exists(folder_ / left));
}

}  // namespace
}  // namespace vetlo::testing
