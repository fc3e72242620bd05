#include "tests/support/kill_at_change.h"

#include <signal.h>
#include <sqlite3.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstddef>

namespace vetlo::testing {
namespace {

int changes_to_come = 0;

void Count() {
  if (--changes_to_come == 0) {
    kill(getpid(), SIGKILL);
  }
}

enum class Change { kWrite, kWriteAt, kWriteAt64, kCut, kRemoval };

// Stands in for one of the engine's system calls.
template <Change kChange, typename Call>
struct Counted;

template <Change kChange, typename Result, typename... Arguments>
struct Counted<kChange, Result(Arguments...)> {
  static Result Call(Arguments... arguments) {
    Count();
    return reinterpret_cast<Result (*)(Arguments...)>(original)(arguments...);
  }
  static void Install(const char* name) {
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    original = system->xGetSystemCall(system, name);
    if (original != nullptr) {
      system->xSetSystemCall(system, name, reinterpret_cast<sqlite3_syscall_ptr>(&Call));
    }
  }
  static inline sqlite3_syscall_ptr original = nullptr;
};

}  // namespace

void KillAtChange(int change) {
  changes_to_come = change;
  Counted<Change::kWrite, ssize_t(int, const void*, std::size_t)>::Install("write");
  Counted<Change::kWriteAt, ssize_t(int, const void*, std::size_t, off_t)>::Install("pwrite");
  Counted<Change::kWriteAt64, ssize_t(int, const void*, std::size_t, off_t)>::Install("pwrite64");
  Counted<Change::kCut, int(int, off_t)>::Install("ftruncate");
  Counted<Change::kRemoval, int(const char*)>::Install("unlink");
}

}  // namespace vetlo::testing
