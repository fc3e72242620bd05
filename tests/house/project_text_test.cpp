#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/house/source_tree.h"

namespace house {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// One line for each line of the file with a path that only one machine has. The names are put
// together here so that this file does not have them either.
std::vector<std::string> MachinePaths(const SourceFile& file) {
  static const std::regex kPath(std::string("(^|[^A-Za-z0-9_./-])/(work") + "|root|home)/");
  std::vector<std::string> found;
  for (const std::string& line : Lines(file.text)) {
    if (std::regex_search(line, kPath)) {
      found.push_back(file.path + ": " + line);
    }
  }
  return found;
}

TEST(MachinePaths, AreFoundWhereverAPathBegins) {
  const std::string root = std::string("/") + "root/";
  EXPECT_THAT(MachinePaths({"run", "ls\ncd " + root + "x\n"}),
              ElementsAre("run: cd " + root + "x"));
  EXPECT_THAT(MachinePaths({"run", root + "x"}), ElementsAre("run: " + root + "x"));
}

TEST(MachinePaths, AreNotPartsOfOtherPaths) {
  EXPECT_THAT(MachinePaths({"run", "cd tests/root/x ./work/y"}), IsEmpty());
}

TEST(House, NoFileNamesAPathOfOneMachine) {
  const std::vector<SourceFile> files = AllFiles();
  ASSERT_FALSE(files.empty());
  for (const SourceFile& file : files) {
    EXPECT_THAT(MachinePaths(file), IsEmpty());
  }
}

}  // namespace
}  // namespace house
