// A store whose last save was broken off: its journal lies beside it, and whoever opens it next,
// also to read alone, undoes what the save had written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/program.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;

namespace fs = std::filesystem;

constexpr const char* kEverything =
    "UPDATE Payee SET PayeeName = 'torn'; UPDATE ChartReportSubType SET Title = 'torn'";

class BrokenSave : public ::testing::Test {
 protected:
  BrokenSave() {
    SmallStore store(store_);
    store.Row({.number = 1, .title = "whole"});
    for (std::int32_t i = 1; i <= 2000; ++i) {
      store.Insert("Payee", {{"PayeeNumber", i}, {"PayeeName", "A payee of some length"}});
    }
    store.Finish();
    bytes_ = ReadFile(store_);
  }

  void BreakOff() {
    BreakOffAChange(store_, kEverything);
    ASSERT_TRUE(fs::exists(journal_));
    ASSERT_TRUE(ReadFile(store_) != bytes_) << "nothing of the save has reached the file";
  }

  static std::string Title(Database& store) {
    return TextField(*store.OpenRecordset("SELECT * FROM ChartReportSubType"), "Title");
  }

  // What somebody without rights is told who opens the store; empty where it opens.
  std::string ToldNobody(StoreAccess access) {
    const TestFolder answers;
    fs::permissions(answers.path(), fs::perms::all);
    const std::string told = answers / "told";
    const pid_t child = fork();
    if (child == 0) {
      BecomeNobody();
      try {
        OpenStore(store_, access);
      } catch (const Failure& failure) {
        WriteFile(told, failure.what());
      }
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    return ReadFile(told);
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "store";
  const std::string journal_ = store_ + "-journal";
  std::string bytes_;
};

TEST_F(BrokenSave, IsUndoneForAReader) {
  BreakOff();
  const auto store = OpenStore(store_, StoreAccess::kReadOnly);
  EXPECT_EQ(Title(*store), "whole");
  EXPECT_FALSE(fs::exists(journal_));
  EXPECT_TRUE(ReadFile(store_) == bytes_) << "something is left of it";
}

TEST_F(BrokenSave, IsUndoneForAWriter) {
  BreakOff();
  EXPECT_EQ(Title(*OpenStore(store_, StoreAccess::kReadWrite)), "whole");
  EXPECT_FALSE(fs::exists(journal_));
  EXPECT_TRUE(ReadFile(store_) == bytes_) << "something is left of it";
}

TEST_F(BrokenSave, LeavesAReaderWithoutTheRightToWrite) {
  BreakOff();
  const auto store = OpenStore(store_, StoreAccess::kReadOnly);
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { store->BeginTrans(); }));
}

TEST_F(BrokenSave, WaitsForSomebodyWhoMayUndoIt) {
  BreakOff();
  constexpr auto kReading = fs::perms::owner_read | fs::perms::others_read;
  fs::permissions(folder_.path(), kReading | fs::perms::owner_exec | fs::perms::others_exec);
  fs::permissions(store_, kReading);
  const std::string torn = ReadFile(store_);
  EXPECT_THAT(ToldNobody(StoreAccess::kReadOnly), HasSubstr("may write the file and its folder"));
  EXPECT_THAT(ToldNobody(StoreAccess::kReadWrite), HasSubstr("may write the file and its folder"));
  EXPECT_TRUE(ReadFile(store_) == torn) << "something was written";
  fs::permissions(folder_.path(), fs::perms::owner_all);
  fs::permissions(store_, fs::perms::owner_all);
  EXPECT_EQ(Title(*OpenStore(store_, StoreAccess::kReadOnly)), "whole");
}

TEST_F(BrokenSave, IsNotOneThatIsStillGoingOn) {
  OtherProcess other(store_, std::string("BEGIN IMMEDIATE; ") + kEverything);
  ASSERT_TRUE(fs::exists(journal_));
  EXPECT_EQ(Title(*OpenStore(store_, StoreAccess::kReadOnly)), "whole");
  EXPECT_TRUE(fs::exists(journal_)) << "somebody else's save was undone";
}

// The journal of a change of several files names, at its end, a file that goes with it.
TEST_F(BrokenSave, OfSeveralFilesTakesNoFileAway) {
  BreakOff();
  const std::string kept = folder_ / "kept";
  WriteFile(kept, "precious");
  std::uint32_t sum = 0;
  for (const char c : kept) {
    sum += static_cast<unsigned char>(c);
  }
  const auto word = [](std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
      bytes += static_cast<char>(value >> shift);
    }
    return bytes;
  };
  constexpr std::uint32_t kPageOfTheLocks = 0x40000000 / 4096 + 1;
  WriteFile(journal_, ReadFile(journal_) + word(kPageOfTheLocks) + kept +
                          word(static_cast<std::uint32_t>(kept.size())) + word(sum) +
                          "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7");
  for (const StoreAccess access : {StoreAccess::kReadOnly, StoreAccess::kReadWrite}) {
    EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { OpenStore(store_, access); }));
    EXPECT_EQ(ReadFile(kept), "precious");
  }
  RunSql(store_, "PRAGMA schema_version");
  EXPECT_FALSE(fs::exists(kept)) << "the name was not read, so nothing was tested";
}

}  // namespace
}  // namespace vetlo::testing
