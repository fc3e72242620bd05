#include "tests/sweeps/served_program.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace sweeps {
namespace {

std::vector<char*> PointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

void Require(bool success, const char* what) {
  if (!success) {
    throw std::runtime_error(what);
  }
}

std::string TextIn(int file) {
  const off_t size = lseek(file, 0, SEEK_END);
  std::string text(static_cast<std::size_t>(size), '\0');
  Require(pread(file, text.data(), text.size(), 0) == size, "the output cannot be read");
  return text;
}

int StatusOf(int wait_status) {
  return WIFEXITED(wait_status) ? WEXITSTATUS(wait_status) : 128 + WTERMSIG(wait_status);
}

}  // namespace

ServedProgram::ServedProgram(const std::string& program, const std::vector<std::string>& words,
                             const std::vector<std::string>& settings)
    : output_(memfd_create("output", MFD_CLOEXEC)), errors_(memfd_create("errors", MFD_CLOEXEC)) {
  std::vector<std::string> arguments = {program};
  arguments.insert(arguments.end(), words.begin(), words.end());
  std::vector<std::string> environment = settings;
  environment.emplace_back("LD_PRELOAD=" FAILING_CALLS);
  const auto argv = PointersTo(arguments);
  const auto envp = PointersTo(environment);
  int plans[2] = {};
  int outcomes[2] = {};
  Require(output_ >= 0 && errors_ >= 0 && pipe2(plans, O_CLOEXEC) == 0 &&
              pipe2(outcomes, O_CLOEXEC) == 0,
          "there is nothing to talk to a program by");
  process_ = fork();
  if (process_ == 0) {
    dup2(plans[0], kPlans);
    dup2(outcomes[1], kOutcomes);
    dup2(output_, kOutput);
    dup2(errors_, kErrors);
    execve(program.c_str(), argv.data(), envp.data());
    _exit(127);
  }
  close(plans[0]);
  close(outcomes[1]);
  plans_ = plans[1];
  outcomes_ = outcomes[0];
}

ServedProgram::~ServedProgram() {
  for (const int file : {plans_, outcomes_, output_, errors_}) {
    close(file);
  }
  waitpid(process_, nullptr, 0);
}

ServedRun ServedProgram::Follow(const Plan& plan) {
  Outcome outcome;
  Require(write(plans_, &plan, sizeof plan) == static_cast<ssize_t>(sizeof plan) &&
              read(outcomes_, &outcome, sizeof outcome) == static_cast<ssize_t>(sizeof outcome),
          "the program cannot be served");
  return {{StatusOf(outcome.wait_status), TextIn(output_), TextIn(errors_)}, outcome.calls};
}

}  // namespace sweeps
