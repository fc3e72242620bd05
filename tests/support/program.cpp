#include "tests/support/program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

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

// Other programs that are started meanwhile do not inherit it.
struct Pipe {
  Pipe() {
    if (pipe2(ends, O_CLOEXEC) != 0) {
      throw std::runtime_error("no pipe");
    }
  }
  ~Pipe() {
    close(ends[0]);
    close(ends[1]);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  int ends[2] = {};
};

// Reads two pipes, either of which may fill up while nobody reads it, until nobody writes them.
void ReadToTheEnd(Pipe& first, std::string& first_text, Pipe& second, std::string& second_text) {
  pollfd ends[] = {{first.ends[0], POLLIN, 0}, {second.ends[0], POLLIN, 0}};
  std::string* const texts[] = {&first_text, &second_text};
  for (Pipe* const pipe : {&first, &second}) {
    close(std::exchange(pipe->ends[1], -1));
  }
  while (ends[0].fd >= 0 || ends[1].fd >= 0) {
    poll(ends, 2, -1);
    for (std::size_t i = 0; i < 2; ++i) {
      char bytes[4096];
      const ssize_t count = ends[i].revents == 0 ? 0 : read(ends[i].fd, bytes, sizeof bytes);
      if (count > 0) {
        texts[i]->append(bytes, static_cast<std::size_t>(count));
      } else if (ends[i].revents != 0) {
        ends[i].fd = -1;
      }
    }
  }
}

}  // namespace

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& words,
                      const std::vector<std::string>& environment,
                      const std::function<void()>& before_start) {
  std::vector<std::string> arguments = {program};
  arguments.insert(arguments.end(), words.begin(), words.end());
  std::vector<std::string> settings = environment;
  const auto argv = PointersTo(arguments);
  const auto envp = PointersTo(settings);
  Pipe out;
  Pipe err;
  const pid_t child = fork();
  if (child == 0) {
    dup2(out.ends[1], STDOUT_FILENO);
    dup2(err.ends[1], STDERR_FILENO);
    if (before_start) {
      before_start();
    }
    execve(program.c_str(), argv.data(), envp.data());
    _exit(127);
  }
  ProgramRun run;
  ReadToTheEnd(out, run.out, err, run.err);
  int status = 0;
  waitpid(child, &status, 0);
  run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return run;
}

TestFolder::TestFolder() : TestFolder(std::filesystem::temp_directory_path().string()) {}

TestFolder::TestFolder(const std::string& parent) {
  std::string name = parent + "/quillmarsh-XXXXXX";
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
