#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

#include "tests/house/source_tree.h"

namespace house {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Folders at the root of one machine or another. Their names are put together here so that this
// file does not have them either.
const std::string kMachineFolders[] = {std::string("/") + "work/", std::string("/") + "root/"};

bool BeginsAPath(const std::string& line, std::size_t at) {
  const auto before = at == 0 ? ' ' : line[at - 1];
  return std::isalnum(static_cast<unsigned char>(before)) == 0 &&
         std::string("_.-/}*").find(before) == std::string::npos;
}

// One line for each path of a machine's own that the file names.
std::vector<std::string> MachinePaths(const SourceFile& file) {
  std::vector<std::string> found;
  for (const std::string& line : Lines(file.text)) {
    for (const std::string& folder : kMachineFolders) {
      const std::size_t at = line.find(folder);
      if (at != std::string::npos && BeginsAPath(line, at)) {
        found.push_back(file.path + ": " + line);
      }
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
