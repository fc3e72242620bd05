// A routine that goes on after a failure tells somebody. Where it does not, the failure itself is
// the answer, or is told elsewhere; those places are counted here, so that a new one is looked at.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "tests/house/source_tree.h"

namespace house {
namespace {

using ::testing::ContainerEq;

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(House, OnlyKnownPlacesGoOnAfterAFailureWithoutAWord) {
  const std::map<std::string, std::size_t> known = {
      // A text that is no number or no date is told to the user as that.
      {"vetlo/dialogs/customize.cpp", 3},
      {"vetlo/services/dates.cpp", 1},
      // A parameter that is no number names nothing.
      {"vetlo/frame/report_call.cpp", 1},
      // What made the recordset go is told; that it then cannot be closed, or that it does not know
      // where it stands, adds nothing.
      {"vetlo/store/database.cpp", 2},
      // What fails there is met again by the next step, which fails to its caller.
      {"vetlo/store/sqlite/connection.cpp", 1},
      {"vetlo/store/sqlite/cursor.cpp", 1},
      {"vetlo/store/sqlite/sqlite_database.cpp", 1},
      {"vetlo/store/sqlite/table_recordset.cpp", 1},
      // The number goes to the caller; only its text may be lost.
      {"vetlo/host/kept_store.cpp", 1},
      {"vetlo/library/tamo_object.cpp", 2},
  };
  std::map<std::string, std::size_t> found;
  for (const SourceFile& file : SourcesBelow("vetlo")) {
    const std::size_t count = CountOf(file.text, "ResumeNext([");
    if (count > 0) {
      found[file.path] = count;
    }
  }
  EXPECT_THAT(found, ContainerEq(known));
}

}  // namespace
}  // namespace house
