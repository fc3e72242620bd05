// Saves into a file that may not grow, or may not even be as long as it is.

#include <signal.h>
#include <sys/resource.h>

#include <ostream>

#include "tests/saves/saved_household.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;

struct FullDiskCase {
  const char* name;
  Words words;  // STORE stands for the file
  std::int32_t row;

  friend std::ostream& operator<<(std::ostream& out, const FullDiskCase& test) {
    return out << test.name;
  }
};

class FullDisk : public SavedHousehold, public ::testing::WithParamInterface<FullDiskCase> {
 protected:
  // Runs the save on a fresh store, with no file to grow past the limit.
  ProgramRun SaveWithin(rlim_t limit) {
    std::filesystem::remove(store_ + "-journal");
    std::filesystem::copy_file(whole_, store_, std::filesystem::copy_options::overwrite_existing);
    Words words = GetParam().words;
    std::ranges::replace(words, "STORE", store_);
    return RunProgram(PROGRAM, words, {}, [limit] {
      const rlimit limits = {limit, limit};
      setrlimit(RLIMIT_FSIZE, &limits);
    });
  }

  void KeepWhole() { std::filesystem::copy_file(store_, whole_); }

  const std::string whole_ = folder_ / "whole.qm";
};

TEST_P(FullDisk, LeavesTheOldRowOrTheNewOne) {
  KeepWhole();
  const auto size = std::filesystem::file_size(store_);
  const StoredBytes before = ReadStoredBytes(store_, GetParam().row);
  ASSERT_EQ(SaveWithin(RLIM_INFINITY).status, 0);
  const StoredBytes saved = ReadStoredBytes(store_, GetParam().row);
  ASSERT_NE(saved.row, before.row);
  ASSERT_EQ(saved.rest, before.rest);
  int refused = 0;
  int half_undone = 0;
  for (rlim_t limit = 0; limit <= size + 3 * 4096; limit += limit < 3 * 4096 ? 512 : 6 * 1024) {
    SCOPED_TRACE("at most " + std::to_string(limit) + " of " + std::to_string(size) + " bytes");
    const ProgramRun run = SaveWithin(limit);
    if (run.status == 0) {
      EXPECT_EQ(OpenedAndRead(store_, GetParam().row), saved);
    } else {
      ++refused;
      half_undone += std::filesystem::exists(store_ + "-journal") ? 1 : 0;
      EXPECT_EQ(run.status, 1);
      EXPECT_EQ(run.out, "");
      ExpectOneLine(run.err);
      EXPECT_THAT(run.err, HasSubstr("the store cannot be written; see whether the disk is full"));
      EXPECT_EQ(OpenedAndRead(store_, GetParam().row), before);
    }
    EXPECT_FALSE(std::filesystem::exists(store_ + "-journal"));
  }
  EXPECT_GE(refused, 5);
  // Where the limit lies inside the file, not even the old pages can be written back.
  EXPECT_GE(half_undone, 5);
}

INSTANTIATE_TEST_SUITE_P(Saves, FullDisk,
                         ::testing::Values(
                             FullDiskCase{
                                 "Customize", {"customize", "STORE", "1", "--title", "Another"}, 1},
                             FullDiskCase{"Reset", {"reset", "STORE", "103"}, 103},
                             FullDiskCase{"Favorite", {"favorite", "STORE", "1", "Mine"}, 160}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vetlo::testing
