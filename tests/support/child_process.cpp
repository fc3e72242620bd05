#include "tests/support/child_process.h"

#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace vetlo::testing {
namespace {

constexpr int kThrown = 255;

int AnswerOf(const std::function<int()>& piece) {
  try {
    return piece();
  } catch (...) {
    return kThrown;
  }
}

}  // namespace

int InChild(const std::function<int()>& piece) {
  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("no child process");
  }
  if (child == 0) {
    _exit(AnswerOf(piece));
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void DropPrivileges() {
  constexpr gid_t kNoGroup = 65534;
  constexpr uid_t kNobody = 65534;
  if (geteuid() == 0 &&
      (setgroups(0, nullptr) != 0 || setgid(kNoGroup) != 0 || setuid(kNobody) != 0)) {
    throw std::runtime_error("cannot drop privileges");
  }
}

void FillDisk(std::uint64_t bytes_left) {
  const rlimit limit = {bytes_left, bytes_left};
  if (std::signal(SIGXFSZ, SIG_IGN) == SIG_ERR || setrlimit(RLIMIT_FSIZE, &limit) != 0) {
    throw std::runtime_error("cannot limit the size of files");
  }
}

}  // namespace vetlo::testing
