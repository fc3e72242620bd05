#include "quillmarsh/cli/out_of_memory.h"

#include <cxxabi.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>
#include <typeinfo>

#include "quillmarsh/cli/user_error.h"

namespace quillmarsh {
namespace {

bool ran_out = false;

[[noreturn]] void OnNoMemory() {
  ran_out = true;
  throw std::bad_alloc();
}

// An exception takes memory too: without any there is none that could be looked at.
bool EndsForMemory() {
  const std::type_info* const exception = abi::__cxa_current_exception_type();
  return exception == nullptr ? ran_out : *exception == typeid(std::bad_alloc);
}

[[noreturn]] void OnTerminate() {
  if (EndsForMemory()) {
    TellMemoryRanOut();
    _exit(kExitFailed);
  }
  std::abort();
}

// The static objects of other sources and libraries allocate, and come behind this.
constexpr int kBeforeStaticObjects = 101;

[[gnu::constructor(kBeforeStaticObjects)]] void SpreadTheNet() {
  std::set_new_handler(&OnNoMemory);
  std::set_terminate(&OnTerminate);
}

}  // namespace

bool MemoryRanOut() { return ran_out; }

void TellMemoryRanOut() {
  const ssize_t written = write(STDERR_FILENO, kNoMemoryLine.data(), kNoMemoryLine.size());
  static_cast<void>(written);  // there is nobody left to tell
}

}  // namespace quillmarsh
