#include "vetlo/store/sqlite/input_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

[[noreturn]] void RaiseUnreadable() {
  throw Failure(FailureNumber::kStoreUnusable,
                std::string("the store cannot be read: ") + std::strerror(errno));
}

}  // namespace

InputFile::InputFile(const std::string& path)
    : file_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC)),
      error_(file_ < 0 ? errno : 0) {}

InputFile::~InputFile() {
  if (file_ >= 0) {
    close(file_);
  }
}

struct stat InputFile::Facts() const {
  struct stat facts = {};
  if (fstat(file_, &facts) != 0) {
    RaiseUnreadable();
  }
  return facts;
}

bool InputFile::Read(void* bytes, std::size_t size, off_t place) const {
  auto* to = static_cast<char*>(bytes);
  while (size > 0) {
    const ssize_t count = pread(file_, to, size, place);
    if (count < 0 && errno != EINTR) {
      RaiseUnreadable();
    }
    if (count == 0) {
      return false;
    }
    const std::size_t done = count > 0 ? static_cast<std::size_t>(count) : 0;
    to += done;
    place += static_cast<off_t>(done);
    size -= done;
  }
  return true;
}

}  // namespace vetlo
