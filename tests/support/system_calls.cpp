#include "tests/support/system_calls.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

namespace vetlo::testing {
namespace {

constexpr std::initializer_list<long> kChanges = {
#ifdef SYS_open
    SYS_open,      SYS_creat,     SYS_unlink,   SYS_rename,    SYS_link,     SYS_symlink,
#endif
#ifdef SYS_renameat
    SYS_renameat,
#endif
    SYS_openat,    SYS_write,     SYS_pwrite64, SYS_writev,    SYS_sendfile, SYS_copy_file_range,
    SYS_ftruncate, SYS_fallocate, SYS_unlinkat, SYS_renameat2, SYS_linkat,   SYS_symlinkat,
    SYS_mkdirat};

// Answers these calls of this process in that way from here on, and lets all others through.
bool Filter(std::initializer_list<long> calls, std::uint32_t answer) {
  std::vector<sock_filter> program = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
  for (const long call : calls) {
    program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 0, 1));
    program.push_back(BPF_STMT(BPF_RET | BPF_K, answer));
  }
  program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

constexpr int kNotAllowed = 254;

// What the traced process does: it stops once before the piece, and then at every change.
int RunTraced(const std::function<int()>& piece) {
  if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0 || std::raise(SIGSTOP) != 0 ||
      !Filter(kChanges, SECCOMP_RET_TRACE)) {
    return kNotAllowed;
  }
  try {
    return piece();
  } catch (const std::exception&) {
    return 255;
  }
}

}  // namespace

bool RefuseCalls(std::initializer_list<long> calls, int error) {
  return Filter(calls, SECCOMP_RET_ERRNO | (static_cast<std::uint32_t>(error) & SECCOMP_RET_DATA));
}

int KilledAtChange(int n, const std::function<int()>& piece) {
  const pid_t child = fork();
  if (child == 0) {
    _exit(RunTraced(piece));
  }
  int status = 0;
  waitpid(child, &status, 0);
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESECCOMP | PTRACE_O_EXITKILL);
  for (int changes = 0; WIFSTOPPED(status); ++changes) {
    if (changes == n) {
      kill(child, SIGKILL);
    }
    ptrace(PTRACE_CONT, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  if (WIFSIGNALED(status)) {
    return 128 + WTERMSIG(status);
  }
  return WEXITSTATUS(status) == kNotAllowed ? -1 : WEXITSTATUS(status);
}

}  // namespace vetlo::testing
