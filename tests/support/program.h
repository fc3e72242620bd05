#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vetlo::testing {

// What a run of the program gave.
struct ProgramRun {
  int status = 0;
  std::string out;
  std::string err;
};

// Runs a program as a user would, with these words and nothing but these settings ("NAME=value")
// in its environment. Both streams are pipes. What is to be done in the new process before the
// program starts, such as setting its limits, must not allocate.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& words,
                      const std::vector<std::string>& environment = {},
                      const std::function<void()>& before_start = {});

// A folder of its own for a test, removed with all that is in it.
class TestFolder {
 public:
  TestFolder();
  explicit TestFolder(const std::string& parent);
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  [[nodiscard]] std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& text);

}  // namespace vetlo::testing
