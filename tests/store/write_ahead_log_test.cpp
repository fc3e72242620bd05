// Stores that keep a log of their changes beside them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/support/child_process.h"
#include "tests/support/program.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace fs = std::filesystem;

constexpr auto kReading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr auto kEntering =
    kReading | fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

constexpr const char* kChange = "UPDATE ChartReportSubType SET Title = 'second'";

class LoggedStore : public ::testing::Test {
 protected:
  LoggedStore() {
    SmallStore store(store_);
    store.Row({.number = 1, .title = "first"}).Finish();
    RunSql(store_, "PRAGMA journal_mode = WAL");
  }
  ~LoggedStore() override { fs::permissions(folder_.path(), fs::perms::owner_all); }

  // What lies in the folder.
  std::set<std::string> Files() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) {
      names.insert(entry.path().filename());
    }
    return names;
  }

  static std::string Title(Database& store) {
    return TextField(*store.OpenRecordset("SELECT * FROM ChartReportSubType"), "Title");
  }

  std::string TitleToRead() const { return Title(*OpenStore(store_, StoreAccess::kReadOnly)); }

  // A change that was committed to the log by somebody who then was killed.
  void LeaveAChangeInTheLog() const { OtherProcess(store_, kChange).End(); }

  void Permit(fs::perms file, fs::perms folder) const {
    for (const std::string& name : Files()) {
      fs::permissions(folder_ / name, file);
    }
    fs::permissions(folder_.path(), folder);
  }

  // What a user without rights of his own reads, or is told where he cannot.
  std::string ReadByNobody() const {
    const TestFolder answers;
    fs::permissions(answers.path(), fs::perms::all);
    const std::string answer = answers / "answer";
    EXPECT_EQ(InChild([&] {
                DropPrivileges();
                try {
                  WriteFile(answer, TitleToRead());
                } catch (const Failure& failure) {
                  WriteFile(answer, failure.what());
                }
                return 0;
              }),
              0);
    return ReadFile(answer);
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "store";
};

TEST_F(LoggedStore, IsReadWithoutATrace) {
  EXPECT_EQ(TitleToRead(), "first");
  EXPECT_THAT(Files(), ElementsAre("store"));
}

TEST_F(LoggedStore, IsSavedToWithoutATrace) {
  {
    const auto store = OpenStore(store_, StoreAccess::kReadWrite);
    const auto rec = store->OpenRecordset("ChartReportSubType");
    rec->Edit();
    rec->SetField("Title", "second");
    rec->Update();
  }
  EXPECT_EQ(TitleToRead(), "second");
  EXPECT_THAT(Files(), ElementsAre("store"));
}

TEST_F(LoggedStore, ShowsWhatStandsInItsLogAndTakesItIn) {
  LeaveAChangeInTheLog();
  ASSERT_THAT(Files(), ElementsAre("store", "store-shm", "store-wal"));
  EXPECT_EQ(TitleToRead(), "second");
  EXPECT_THAT(Files(), ElementsAre("store"));
  EXPECT_EQ(TitleToRead(), "second");
}

TEST_F(LoggedStore, LeavesTheLogToWhoeverElseIsUsingIt) {
  OtherProcess other(store_, kChange);
  EXPECT_EQ(TitleToRead(), "second");
  EXPECT_THAT(Files(), ElementsAre("store", "store-shm", "store-wal"));
}

TEST_F(LoggedStore, CannotBeChangedByAReader) {
  const auto store = OpenStore(store_, StoreAccess::kReadOnly);
  const auto rec = store->OpenRecordset("ChartReportSubType");
  rec->Edit();
  rec->SetField("Title", "second");
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { rec->Update(); }));
  EXPECT_EQ(Title(*store), "first");
}

TEST_F(LoggedStore, IsReadWhereTheFolderMayNotBeWritten) {
  Permit(fs::perms::all, kEntering);
  EXPECT_EQ(ReadByNobody(), "first");
  EXPECT_THAT(Files(), ElementsAre("store"));
}

TEST_F(LoggedStore, IsReadWhereTheFileMayNotBeWritten) {
  Permit(kReading, fs::perms::all);
  EXPECT_EQ(ReadByNobody(), "first");
  EXPECT_THAT(Files(), ElementsAre("store"));
}

TEST_F(LoggedStore, IsReadWhereNothingMayBeWritten) {
  Permit(kReading, kEntering);
  EXPECT_EQ(ReadByNobody(), "first");
  EXPECT_THAT(Files(), ElementsAre("store"));
}

TEST_F(LoggedStore, IsReadWithItsLogWhereNothingMayBeWritten) {
  LeaveAChangeInTheLog();
  Permit(kReading, kEntering);
  EXPECT_EQ(ReadByNobody(), "second");
  EXPECT_THAT(Files(), ElementsAre("store", "store-shm", "store-wal"));
}

TEST_F(LoggedStore, SaysWhereItsLogCannotBeTakenIn) {
  LeaveAChangeInTheLog();
  fs::remove(store_ + "-shm");
  Permit(kReading, kEntering);
  EXPECT_THAT(ReadByNobody(), HasSubstr("a user who may write the file and its folder"));
  EXPECT_THAT(Files(), ElementsAre("store", "store-wal"));
  Permit(fs::perms::all, fs::perms::all);
  EXPECT_EQ(TitleToRead(), "second");
}

TEST_F(LoggedStore, IsRefusedInMemoryAsItIsInItsFile) {
  WriteFile(store_, ReadFile(store_).substr(0, 5000));
  Permit(kReading, kEntering);
  const std::string told = ReadByNobody();
  EXPECT_THAT(told, HasSubstr("damaged"));
}

}  // namespace
}  // namespace vetlo::testing
