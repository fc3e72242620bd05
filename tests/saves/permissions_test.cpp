// Saves by a user who may not write the file or its folder.

#include <filesystem>
#include <ostream>

#include "tests/saves/saved_household.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;

namespace fs = std::filesystem;

constexpr auto kReading = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr auto kEntering =
    kReading | fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;

class Permissions : public SavedHousehold {
 protected:
  // The program lies where anybody may run it.
  Permissions() {
    fs::permissions(programs_.path(), kEntering | fs::perms::owner_write);
    const fs::path program(PROGRAM);
    for (const fs::path& file : {program, program.parent_path() / "libvetlo.so"}) {
      fs::copy_file(file, fs::path(programs_.path()) / file.filename());
      fs::permissions(fs::path(programs_.path()) / file.filename(), kEntering);
    }
  }
  ~Permissions() override { fs::permissions(folder_.path(), fs::perms::owner_all); }

  ProgramRun RunAsNobody(const Words& words) const {
    return RunProgram(programs_ / "quillmarsh", words, {}, &BecomeNobody);
  }

  void ExpectRefused(const Words& words, const char* told) const {
    const ProgramRun run = RunAsNobody(words);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    ExpectOneLine(run.err);
    EXPECT_THAT(run.err, HasSubstr(told));
  }

  TestFolder programs_;
};

struct PermissionCase {
  const char* name;
  fs::perms file;
  fs::perms folder;
  const char* told;

  friend std::ostream& operator<<(std::ostream& out, const PermissionCase& test) {
    return out << test.name;
  }
};

class NoPermission : public Permissions, public ::testing::WithParamInterface<PermissionCase> {};

TEST_P(NoPermission, RefusesASaveAndLeavesTheFileAlone) {
  const std::string bytes = ReadFile(store_);
  fs::permissions(store_, GetParam().file);
  fs::permissions(folder_.path(), GetParam().folder);
  for (const Words& words :
       {ShortRow(store_), {"reset", store_, "1"}, {"favorite", store_, "1", "Mine"}}) {
    SCOPED_TRACE(words.front());
    ExpectRefused(words, GetParam().told);
  }
  EXPECT_EQ(RunAsNobody({"show", store_, "1"}).status, 0);
  fs::permissions(folder_.path(), fs::perms::owner_all);
  EXPECT_TRUE(ReadFile(store_) == bytes) << "something was written";
  EXPECT_FALSE(fs::exists(store_ + "-journal"));
}

INSTANTIATE_TEST_SUITE_P(
    Places, NoPermission,
    ::testing::Values(PermissionCase{"ReadOnlyFile", kReading, fs::perms::all,
                                     "the file may not be written"},
                      PermissionCase{"ReadOnlyFolder", fs::perms::all, kEntering,
                                     "its folder may not be written"},
                      PermissionCase{"Both", kReading, kEntering, "may not be written"}),
    [](const auto& test) { return test.param.name; });

TEST_F(Permissions, AStoreThatMayNotBeReadSaysSo) {
  fs::permissions(folder_.path(), kEntering);
  fs::permissions(store_, fs::perms::none);
  ExpectRefused({"list", store_}, "permissions");
  ExpectRefused(ShortRow(store_), "permissions");
}

// Its folder would let him put another file in its place.
TEST_F(Permissions, AStoreThatMayNotBeWrittenIsNotReplacedEither) {
  const std::string bytes = ReadFile(store_);
  fs::permissions(store_, kReading);
  fs::permissions(folder_.path(), fs::perms::all);
  ExpectRefused({"sample", store_, "--force"}, "the file may not be written");
  EXPECT_TRUE(ReadFile(store_) == bytes);
}

TEST_F(Permissions, AFolderThatMayNotBeWrittenTakesNoSample) {
  fs::permissions(folder_.path(), kEntering);
  ExpectRefused({"sample", folder_ / "new.qm"}, "new.qm': ");
}

// The program too undoes a save that was broken off, whatever it was asked for.
TEST_F(Permissions, WhoMayWriteUndoesASaveThatWasBrokenOff) {
  RunSql(store_,
         "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
         "INSERT INTO Payee (PayeeNumber, PayeeName) SELECT i, 'A payee' FROM n");
  const StoredBytes before = ReadStoredBytes(store_, kRow);
  BreakOffAChange(store_, "UPDATE Payee SET PayeeName = 'torn'");
  fs::permissions(store_, kReading);
  fs::permissions(folder_.path(), kEntering);
  ExpectRefused({"show", store_, "1"}, "may write the file and its folder");
  ExpectRefused(ShortRow(store_), "may write the file and its folder");
  fs::permissions(folder_.path(), fs::perms::all);
  fs::permissions(store_, fs::perms::all);
  fs::permissions(store_ + "-journal", fs::perms::all);
  EXPECT_EQ(RunAsNobody({"show", store_, "1"}).status, 0);
  EXPECT_FALSE(fs::exists(store_ + "-journal"));
  EXPECT_EQ(ReadStoredBytes(store_, kRow), before);
}

}  // namespace
}  // namespace vetlo::testing
