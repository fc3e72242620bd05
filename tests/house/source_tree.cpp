#include "tests/house/source_tree.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace house {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = SOURCE_DIR;

SourceFile Read(const fs::path& file) {
  return {file.lexically_relative(kRoot).generic_string(), ReadText(file)};
}

}  // namespace

std::string ReadText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in) << "cannot read " << file;
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<SourceFile> SourcesBelow(const std::string& folder) {
  const std::set<fs::path> kinds = {".h", ".cpp"};
  std::vector<SourceFile> files;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
    if (entry.is_regular_file() && kinds.contains(entry.path().extension())) {
      files.push_back(Read(entry.path()));
    }
  }
  return files;
}

std::vector<SourceFile> AllFiles() {
  const std::set<fs::path> foreign = {kRoot / "build", kRoot / ".git", kRoot / ".cache"};
  std::vector<SourceFile> files;
  for (auto at = fs::recursive_directory_iterator(kRoot); at != fs::end(at); ++at) {
    if (foreign.contains(at->path())) {
      at.disable_recursion_pending();
    } else if (at->is_regular_file()) {
      files.push_back(Read(at->path()));
    }
  }
  return files;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

}  // namespace house
