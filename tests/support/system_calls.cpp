#include "tests/support/system_calls.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vetlo::testing {

bool RefuseCalls(std::initializer_list<long> calls, int error) {
  const auto refusal = static_cast<std::uint32_t>(SECCOMP_RET_ERRNO) |
                       (static_cast<std::uint32_t>(error) & SECCOMP_RET_DATA);
  std::vector<sock_filter> program = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const long call : calls) {
    program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 0, 1));
    program.push_back(BPF_STMT(BPF_RET | BPF_K, refusal));
  }
  program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

int KilledAtCall(int n, const std::function<int()>& piece) {
  constexpr int kNotAllowed = 254;
  const pid_t child = fork();
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
      _exit(kNotAllowed);
    }
    std::raise(SIGSTOP);
    try {
      _exit(piece());
    } catch (const std::exception&) {
      _exit(255);
    }
  }
  int status = 0;
  waitpid(child, &status, 0);
  for (int stops = 0; WIFSTOPPED(status); ++stops) {
    if (stops == n) {
      kill(child, SIGKILL);
    }
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  if (WIFSIGNALED(status)) {
    return 128 + WTERMSIG(status);
  }
  return WEXITSTATUS(status) == kNotAllowed ? -1 : WEXITSTATUS(status);
}

}  // namespace vetlo::testing
