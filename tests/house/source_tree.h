#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace house {

// A file by its path below the root of the sources, as "vetlo/store/model.h", and its text.
struct SourceFile {
  std::string path;
  std::string text;
};

// The *.h and *.cpp files below a folder of the sources.
std::vector<SourceFile> SourcesBelow(const std::string& folder);

// Every file of the sources; what is built and what belongs to the tools is not among them.
std::vector<SourceFile> AllFiles();

// Fails the test where the file cannot be read.
std::string ReadText(const std::filesystem::path& file);

std::vector<std::string> Lines(const std::string& text);

}  // namespace house
