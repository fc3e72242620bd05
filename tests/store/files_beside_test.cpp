// What lies beside a store, and what is opened of it and when.

#include "vetlo/store/sqlite/files_beside.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>

#include "tests/support/child_process.h"
#include "tests/support/program.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "tests/support/stored_bytes.h"
#include "vetlo/store/sqlite/sole_use.h"

namespace vetlo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

class FilesBesideAStore : public ::testing::Test {
 protected:
  FilesBesideAStore() { SmallStore(store_).Row({.number = 1, .title = "whole"}).Finish(); }

  [[nodiscard]] std::string RefusalOf(StoreAccess access) const {
    try {
      OpenStore(store_, access);
      return "";
    } catch (const Failure& failure) {
      return failure.what();
    }
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "store";
};

TEST_F(FilesBesideAStore, AreToldWhateverTheyAre) {
  EXPECT_THAT(FilesBeside(store_), IsEmpty());
  WriteFile(store_ + "-journal", "");
  fs::create_symlink("nowhere", store_ + "-wal");
  fs::create_directory(store_ + "-shm");
  WriteFile(store_ + "-other", "");
  EXPECT_THAT(FilesBeside(store_),
              ElementsAre(store_ + "-journal", store_ + "-wal", store_ + "-shm"));
}

TEST_F(FilesBesideAStore, KeepANewStoreFromTheName) {
  for (const char* const ending : {"-journal", "-wal", "-shm"}) {
    const std::string left = folder_ / "new" + ending;
    WriteFile(left, "");
    EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { StoreBuilder(folder_ / "new"); }));
    EXPECT_FALSE(fs::exists(folder_ / "new"));
    fs::remove(left);
  }
  EXPECT_EQ(ResumeNext([&] { StoreBuilder(folder_ / "new"); }), 0);
}

// ---- what is no regular file

struct Oddity {
  const char* name;
  std::function<void(const std::string& path)> make;
};
void PrintTo(const Oddity& oddity, std::ostream* out) { *out << oddity.name; }

class OddFilesBeside : public FilesBesideAStore, public ::testing::WithParamInterface<Oddity> {};

TEST_P(OddFilesBeside, AreRefusedAtOnce) {
  for (const char* const ending : {"-journal", "-wal", "-shm"}) {
    GetParam().make(store_ + ending);
    for (const StoreAccess access : {StoreAccess::kReadOnly, StoreAccess::kReadWrite}) {
      EXPECT_THAT(RefusalOf(access),
                  AllOf(HasSubstr("'" + store_ + ending + "'"), HasSubstr("no regular file")));
    }
    EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { SoleUse use(store_); }));
    fs::remove(store_ + ending);
  }
  EXPECT_EQ(RefusalOf(StoreAccess::kReadWrite), "");
}

INSTANTIATE_TEST_SUITE_P(
    All, OddFilesBeside,
    ::testing::Values(
        Oddity{"Fifo", [](const auto& path) { mkfifo(path.c_str(), 0600); }},
        Oddity{"Folder", [](const auto& path) { fs::create_directory(path); }},
        Oddity{"Zeros", [](const auto& path) { fs::create_symlink("/dev/zero", path); }},
        Oddity{"LinkToAFile", [](const auto& path) { fs::create_symlink("/etc/passwd", path); }}),
    [](const auto& oddity) { return oddity.param.name; });

TEST_F(FilesBesideAStore, MayBeAsLargeAsTheyLike) {
  WriteFile(store_ + "-journal", "");
  fs::resize_file(store_ + "-journal", 20'000'000'000);
  EXPECT_EQ(RefusalOf(StoreAccess::kReadOnly), "");
}

// ---- locks

// Whether another process would find this byte of a file locked by this one.
bool IsLocked(const std::string& path, off_t byte) {
  return InChild([&] {
           const int file = open(path.c_str(), O_RDWR | O_CLOEXEC);
           struct flock lock = {};
           lock.l_type = F_WRLCK;
           lock.l_whence = SEEK_SET;
           lock.l_start = byte;
           lock.l_len = 1;
           return fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 1 : 0;
         }) == 1;
}

// A file that a process opens and closes itself loses all locks that the process has on it.
TEST_F(FilesBesideAStore, AndTheStoreKeepTheLocksOfAChangeWhileItIsOpenedAgain) {
  constexpr off_t kReserved = 0x40000001;
  const auto changed = OpenStore(store_, StoreAccess::kReadWrite);
  const Transaction change(*changed);
  ASSERT_TRUE(IsLocked(store_, kReserved));
  EXPECT_EQ(RefusalOf(StoreAccess::kReadOnly), "");
  EXPECT_TRUE(IsLocked(store_, kReserved));
  EXPECT_EQ(RefusalOf(StoreAccess::kReadWrite), "");
  EXPECT_TRUE(IsLocked(store_, kReserved));
}

TEST_F(FilesBesideAStore, KeepTheLocksOfAChangeInALogWhileTheStoreIsOpenedAgain) {
  constexpr off_t kWriting = 120;
  RunSql(store_, "PRAGMA journal_mode = WAL");
  const auto changed = OpenStore(store_, StoreAccess::kReadWrite);
  const Transaction change(*changed);
  ASSERT_TRUE(IsLocked(store_ + "-shm", kWriting));
  EXPECT_EQ(RefusalOf(StoreAccess::kReadOnly), "");
  EXPECT_TRUE(IsLocked(store_ + "-shm", kWriting));
}

// ---- sole use

TEST_F(FilesBesideAStore, AreNoneThatAreNeededOnceTheStoreIsInSoleUse) {
  RunSql(store_, "PRAGMA journal_mode = WAL");
  BreakOffAChange(store_, "UPDATE ChartReportSubType SET Title = 'logged'; COMMIT; BEGIN");
  ASSERT_FALSE(FilesBeside(store_).empty());
  {
    const SoleUse use(store_);
    EXPECT_THAT(FilesBeside(store_), IsEmpty());
    EXPECT_TRUE(IsLocked(store_, 0x40000001));
  }
  EXPECT_FALSE(IsLocked(store_, 0x40000001));
  const auto store = OpenStore(store_, StoreAccess::kReadOnly);
  EXPECT_EQ(TextField(*store->OpenRecordset("SELECT * FROM ChartReportSubType"), "Title"),
            "logged");
}

// Another file may have the name by then, and files of its own beside it.
TEST_F(FilesBesideAStore, AreLeftAloneByAnEndOfSoleUse) {
  BreakOffAChange(store_, "UPDATE ChartReportSubType SET Title = 'torn'");
  std::optional<SoleUse> use(store_);
  for (const char* const ending : {"-journal", "-wal", "-shm"}) {
    WriteFile(store_ + ending, "another's");
  }
  use.reset();
  EXPECT_EQ(FilesBeside(store_).size(), 3U);
}

}  // namespace
}  // namespace vetlo::testing
