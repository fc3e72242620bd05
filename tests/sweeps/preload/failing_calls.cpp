// A library to be preloaded into a program, whose calls of the C library it counts and makes fail
// by a plan; see plan.h.

#include <dlfcn.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "tests/sweeps/preload/plan.h"

// The allocator beneath malloc, which can be had before anything is looked up.
extern "C" void* __libc_malloc(size_t size);
extern "C" void* __libc_calloc(size_t count, size_t size);
extern "C" void* __libc_realloc(void* memory, size_t size);
extern "C" void* __libc_memalign(size_t alignment, size_t size);

namespace sweeps {
namespace {

// Of the running child; none yet.
Outcome* outcome = nullptr;
Plan plan;

bool Fails(Call call) {
  if (outcome == nullptr) {
    return false;
  }
  const std::int64_t n = ++outcome->calls[static_cast<std::size_t>(call)];
  return call == plan.call && plan.n > 0 && (plan.from_then_on ? n >= plan.n : n == plan.n);
}

// The answer of a call that fails, with its errno.
template <typename Answer>
Answer Failed(Answer answer, int error = EIO) {
  errno = error;
  return answer;
}

// The function that this library stands before.
template <auto function>
auto Next(const char* name) {
  static const auto next = reinterpret_cast<decltype(function)>(dlsym(RTLD_NEXT, name));
  return next;
}

// Either a failure by the plan or what that function does.
template <auto function, typename Answer, typename... Arguments>
auto Does(Call call, const char* name, Answer failed, Arguments... arguments)
    -> decltype(function(arguments...)) {
  using Type = decltype(function(arguments...));
  return Fails(call) ? Failed(static_cast<Type>(failed)) : Next<function>(name)(arguments...);
}

// ---- the runs

bool ReadPlan() { return read(kPlans, &plan, sizeof plan) == static_cast<ssize_t>(sizeof plan); }

// Becomes a run by the plan, with its output where the test reads it.
void BecomeRun() {
  for (const int file : {kOutput, kErrors}) {
    if (ftruncate(file, 0) != 0 || lseek(file, 0, SEEK_SET) != 0) {
      _exit(127);
    }
  }
  dup2(kOutput, STDOUT_FILENO);
  dup2(kErrors, STDERR_FILENO);
  for (const int file : {kPlans, kOutcomes, kOutput, kErrors}) {
    close(file);
  }
  alarm(kLongestRunSeconds);
}

// Does one run after the other. It returns in each child that is to be a run, and otherwise never.
void ServeRuns() {
  void* const shared =
      mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) {
    _exit(127);
  }
  auto* const told = static_cast<Outcome*>(shared);
  while (ReadPlan()) {
    *told = {};
    const pid_t child = fork();
    if (child == 0) {
      BecomeRun();
      outcome = told;
      return;
    }
    if (child < 0 || waitpid(child, &told->wait_status, 0) != child ||
        write(kOutcomes, told, sizeof *told) != static_cast<ssize_t>(sizeof *told)) {
      _exit(127);
    }
  }
  _exit(0);
}

bool IsServing() { return fcntl(kPlans, F_GETFD) != -1; }

}  // namespace
}  // namespace sweeps

using sweeps::Call;
using sweeps::Does;
using sweeps::Failed;
using sweeps::Fails;
using sweeps::Next;

// ---- the functions of the C library, as its headers declare them

extern "C" {

int __libc_start_main(int (*main)(int, char**, char**), int argc, char** argv, void (*init)(),
                      void (*fini)(), void (*loader_fini)(), void* stack_end) {
  if (sweeps::IsServing()) {
    sweeps::ServeRuns();
  }
  return Next<&__libc_start_main>("__libc_start_main")(main, argc, argv, init, fini, loader_fini,
                                                       stack_end);
}

void* malloc(size_t size) noexcept {
  return Fails(Call::kAllocate) ? Failed(nullptr, ENOMEM) : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) noexcept {
  return Fails(Call::kAllocate) ? Failed(nullptr, ENOMEM) : __libc_calloc(count, size);
}
void* realloc(void* memory, size_t size) noexcept {
  return Fails(Call::kAllocate) ? Failed(nullptr, ENOMEM) : __libc_realloc(memory, size);
}
void* aligned_alloc(size_t alignment, size_t size) noexcept {
  return Fails(Call::kAllocate) ? Failed(nullptr, ENOMEM) : __libc_memalign(alignment, size);
}

// The mode is there where a file may be made, and is handed on unread otherwise.
int open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = va_arg(more, mode_t);
  va_end(more);
  return Does<&open>(Call::kOpen, "open", -1, path, flags, mode);
}
int open64(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = va_arg(more, mode_t);
  va_end(more);
  return Does<&open64>(Call::kOpen, "open64", -1, path, flags, mode);
}
FILE* fopen(const char* path, const char* mode) {
  return Does<&fopen>(Call::kOpen, "fopen", nullptr, path, mode);
}
FILE* fopen64(const char* path, const char* mode) {
  return Does<&fopen64>(Call::kOpen, "fopen64", nullptr, path, mode);
}

ssize_t read(int file, void* bytes, size_t size) {
  return Does<&read>(Call::kRead, "read", -1, file, bytes, size);
}
ssize_t pread64(int file, void* bytes, size_t size, off64_t at) {
  return Does<&pread64>(Call::kPread, "pread64", -1, file, bytes, size, at);
}
ssize_t write(int file, const void* bytes, size_t size) {
  return Does<&write>(Call::kWrite, "write", -1, file, bytes, size);
}
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at) {
  return Does<&pwrite64>(Call::kPwrite, "pwrite64", -1, file, bytes, size, at);
}
size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file) {
  return Does<&fwrite>(Call::kPrint, "fwrite", 0, bytes, size, count, file);
}
int fflush(FILE* file) { return Does<&fflush>(Call::kPrint, "fflush", EOF, file); }
int fsync(int file) { return Does<&fsync>(Call::kSync, "fsync", -1, file); }
int fdatasync(int file) { return Does<&fdatasync>(Call::kSync, "fdatasync", -1, file); }
int ftruncate64(int file, off64_t size) noexcept {
  return Does<&ftruncate64>(Call::kTruncate, "ftruncate64", -1, file, size);
}
void* mmap(void* at, size_t size, int protection, int flags, int file, off_t offset) noexcept {
  return Does<&mmap>(Call::kMap, "mmap", MAP_FAILED, at, size, protection, flags, file, offset);
}
void* mmap64(void* at, size_t size, int protection, int flags, int file, off64_t offset) noexcept {
  return Does<&mmap64>(Call::kMap, "mmap64", MAP_FAILED, at, size, protection, flags, file, offset);
}

int unlink(const char* path) noexcept { return Does<&unlink>(Call::kUnlink, "unlink", -1, path); }
int rename(const char* from, const char* to) noexcept {
  return Does<&rename>(Call::kRename, "rename", -1, from, to);
}
int link(const char* from, const char* to) noexcept {
  return Does<&link>(Call::kRename, "link", -1, from, to);
}
int mkdir(const char* path, mode_t mode) noexcept {
  return Does<&mkdir>(Call::kMakeFolder, "mkdir", -1, path, mode);
}

// Of all that it does, the locks of a store alone.
int fcntl64(int file, int command, ...) {
  va_list more;
  va_start(more, command);
  void* const argument = va_arg(more, void*);
  va_end(more);
  const bool locks = command == F_SETLK || command == F_SETLKW;
  return locks ? Does<&fcntl64>(Call::kLock, "fcntl64", -1, file, command, argument)
               : Next<&fcntl64>("fcntl64")(file, command, argument);
}
int flock(int file, int operation) noexcept {
  return Does<&flock>(Call::kLock, "flock", -1, file, operation);
}

time_t time(time_t* now) noexcept {
  const time_t answer = sweeps::outcome == nullptr ? Next<&time>("time")(nullptr) : sweeps::kNow;
  if (now != nullptr) {
    *now = answer;
  }
  return answer;
}

// What a program asks about files without opening them.
int stat(const char* path, struct stat* facts) noexcept {
  return Does<&stat>(Call::kLook, "stat", -1, path, facts);
}
int stat64(const char* path, struct stat64* facts) noexcept {
  return Does<&stat64>(Call::kLook, "stat64", -1, path, facts);
}
int lstat(const char* path, struct stat* facts) noexcept {
  return Does<&lstat>(Call::kLook, "lstat", -1, path, facts);
}
int lstat64(const char* path, struct stat64* facts) noexcept {
  return Does<&lstat64>(Call::kLook, "lstat64", -1, path, facts);
}
int fstat64(int file, struct stat64* facts) noexcept {
  return Does<&fstat64>(Call::kLook, "fstat64", -1, file, facts);
}
int access(const char* path, int mode) noexcept {
  return Does<&access>(Call::kLook, "access", -1, path, mode);
}
ssize_t readlink(const char* path, char* text, size_t size) noexcept {
  return Does<&readlink>(Call::kLook, "readlink", -1, path, text, size);
}
char* realpath(const char* path, char* real) noexcept {
  return Does<&realpath>(Call::kLook, "realpath", nullptr, path, real);
}
char* getcwd(char* path, size_t size) noexcept {
  return Does<&getcwd>(Call::kLook, "getcwd", nullptr, path, size);
}
}  // extern "C"
