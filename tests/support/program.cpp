#include "tests/support/program.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace vetlo::testing {
namespace {

std::vector<char*> PointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& words,
                      const std::vector<std::string>& environment) {
  const TestFolder folder;
  const std::string out = folder / "out";
  const std::string err = folder / "err";
  std::vector<std::string> arguments = {program};
  arguments.insert(arguments.end(), words.begin(), words.end());
  std::vector<std::string> settings = environment;
  const auto argv = PointersTo(arguments);
  const auto envp = PointersTo(settings);
  const pid_t child = fork();
  if (child == 0) {
    if (std::freopen(out.c_str(), "w", stdout) == nullptr ||
        std::freopen(err.c_str(), "w", stderr) == nullptr) {
      _exit(126);
    }
    execve(program.c_str(), argv.data(), envp.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), ReadFile(out),
          ReadFile(err)};
}

TestFolder::TestFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "quillmarsh-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
  path_ = name;
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << text;
}

}  // namespace vetlo::testing
