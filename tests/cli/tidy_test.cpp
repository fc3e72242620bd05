// `tidy` puts the indexes into a store that lacks them.

#include <sqlite3.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>

#include "tests/cli/quill.h"
#include "tests/support/household.h"
#include "tests/support/plain_store.h"
#include "tests/support/stored_bytes.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;

namespace fs = std::filesystem;

constexpr std::int32_t kAnyRow = 5;

class Tidy : public ::testing::Test {
 protected:
  Tidy() {
    WriteHouseholdOfEveryKind(store_);
    DropIndexes(store_);
  }
  ~Tidy() override { fs::permissions(folder_.path(), fs::perms::owner_all); }

  static std::string IndexesOf(const std::string& path) {
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &handle), SQLITE_OK);
    std::string indexes;
    const auto add = [](void* to, int, char** values, char**) {
      static_cast<std::string*>(to)->append(values[0]).append("\n");
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(handle,
                           "SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL "
                           "ORDER BY name",
                           add, &indexes, nullptr),
              SQLITE_OK);
    sqlite3_close(handle);
    return indexes;
  }

  void ExpectRefused(const ProgramRun& run, const char* told) const {
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    ExpectOneLine(run.err);
    EXPECT_THAT(run.err, HasSubstr(told));
    EXPECT_EQ(IndexesOf(store_), "");
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "home.qm";
};

TEST_F(Tidy, MakesTheIndexesThatANewStoreHas) {
  const std::string whole = folder_ / "whole.qm";
  WriteHouseholdOfEveryKind(whole);
  const ProgramRun run = Quill({"tidy", store_});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("Made 12 indexes in '" + store_ + "'"));
  EXPECT_EQ(IndexesOf(store_), IndexesOf(whole));
}

TEST_F(Tidy, LeavesWhatTheStoreHoldsAsItWas) {
  const StoredBytes before = ReadStoredBytes(store_, kAnyRow);
  Quill({"tidy", store_});
  EXPECT_EQ(ReadStoredBytes(store_, kAnyRow), before);
}

TEST_F(Tidy, HasNothingToDoTheSecondTime) {
  Quill({"tidy", store_});
  const std::string bytes = ReadFile(store_);
  const ProgramRun run = Quill({"tidy", store_});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("nothing to do"));
  EXPECT_TRUE(ReadFile(store_) == bytes) << "something was written";
}

TEST_F(Tidy, MakesJustTheOneThatIsMissing) {
  Quill({"tidy", store_});
  const std::string indexes = IndexesOf(store_);
  RunSql(store_, "DROP INDEX TransactionsOfPayee");
  EXPECT_THAT(Quill({"tidy", store_}).out, HasSubstr("Made 1 index in"));
  EXPECT_EQ(IndexesOf(store_), indexes);
}

TEST_F(Tidy, MakesAllOrNone) {
  // A table that goes by the name of one of the last.
  RunSql(store_, "CREATE TABLE PricesOfItem (a)");
  ExpectRefused(Quill({"tidy", store_}), "PricesOfItem");
}

TEST_F(Tidy, MakesNoneOnAFullDisk) {
  RunSql(store_, "VACUUM");
  const rlim_t size = fs::file_size(store_) + 2 * 4096;
  ExpectRefused(RunProgram(PROGRAM, {"tidy", store_}, {},
                           [size] {
                             const rlimit limits = {size, size};
                             setrlimit(RLIMIT_FSIZE, &limits);
                           }),
                "see whether the disk is full");
}

TEST_F(Tidy, RefusesAStoreThatMayNotBeWritten) {
  const auto reading = fs::perms::owner_read | fs::perms::others_read;
  fs::permissions(store_, reading);
  fs::permissions(folder_.path(), reading | fs::perms::owner_exec | fs::perms::others_exec);
  const TestFolder programs;
  const std::string program = programs / "quillmarsh";
  fs::permissions(programs.path(), fs::perms::all);
  fs::copy_file(PROGRAM, program);
  fs::permissions(program, fs::perms::all);
  ExpectRefused(RunProgram(program, {"tidy", store_}, {}, &BecomeNobody), "may not be written");
}

TEST_F(Tidy, RefusesAStoreThatIsInUse) {
  OtherProcess other(store_, "BEGIN IMMEDIATE");
  const ProgramRun run = Quill({"tidy", store_});
  other.End();
  ExpectRefused(run, "another program is using the store; try again");
}

TEST_F(Tidy, RefusesWhatIsNoStore) {
  const std::string text = folder_ / "text";
  WriteFile(text, std::string(5000, 'x'));
  for (const std::string& file : {text, folder_ / "nothing"}) {
    const ProgramRun run = Quill({"tidy", file});
    EXPECT_EQ(run.status, 1);
    ExpectOneLine(run.err);
    EXPECT_THAT(run.err, HasSubstr("cannot tidy the store '" + file + "'"));
  }
}

}  // namespace
}  // namespace vetlo::testing
