#include "vetlo/store/sqlite/write_ahead_log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

// Where a database's header tells how it may be written and read, and what stands there.
constexpr std::size_t kFormatVersions = 18;
constexpr std::size_t kEndOfHeader = 100;
constexpr unsigned char kWithLog = 2;
constexpr unsigned char kWithoutLog = 1;

// The largest file that is read into memory: far more than a household fills in a lifetime.
constexpr off_t kMostBytes = off_t{1} << 30;

[[noreturn]] void RaiseUnreadable(const std::string& why) {
  throw Failure(FailureNumber::kStoreUnusable, "the store cannot be read: " + why);
}

// A regular file, open to be read.
class InputFile {
 public:
  explicit InputFile(const std::string& path)
      : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK)) {}
  ~InputFile() {
    if (file_ >= 0) {
      close(file_);
    }
  }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  [[nodiscard]] bool IsOpen() const { return file_ >= 0; }

  [[nodiscard]] struct stat Facts() const {
    struct stat facts = {};
    if (fstat(file_, &facts) != 0 || !S_ISREG(facts.st_mode)) {
      RaiseUnreadable("it is no regular file");
    }
    return facts;
  }

  // False where the file has fewer bytes than that.
  [[nodiscard]] bool Read(unsigned char* bytes, std::size_t size) const {
    std::size_t done = 0;
    while (done < size) {
      const ssize_t count = pread(file_, bytes + done, size - done, static_cast<off_t>(done));
      if (count < 0 && errno != EINTR) {
        RaiseUnreadable(std::strerror(errno));
      }
      if (count == 0) {
        return false;
      }
      done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
  }

 private:
  int file_;
};

bool IsUnchanged(const struct stat& before, const struct stat& after) {
  return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
         before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

bool MayWrite(const std::string& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace

bool KeepsLog(const std::string& path) {
  const InputFile file(path);
  std::array<unsigned char, kEndOfHeader> header = {};
  return file.IsOpen() && file.Read(header.data(), header.size()) &&
         header[kFormatVersions] == kWithLog && header[kFormatVersions + 1] == kWithLog;
}

bool HasLog(const std::string& path) {
  struct stat facts = {};
  return stat((path + "-wal").c_str(), &facts) == 0 && facts.st_size > 0;
}

bool MayTakeLogIn(const std::string& path) {
  return MayWrite(path) && MayWrite(std::filesystem::path(path).parent_path());
}

DatabaseImage ReadWithoutLog(const std::string& path) {
  const InputFile file(path);
  if (!file.IsOpen()) {
    RaiseUnreadable(std::strerror(errno));
  }
  const struct stat before = file.Facts();
  if (before.st_size > kMostBytes) {
    RaiseUnreadable("it is too large for a user who may not write the file and its folder");
  }
  DatabaseImage image;
  image.size = static_cast<std::size_t>(before.st_size);
  image.bytes.reset(static_cast<unsigned char*>(sqlite3_malloc64(image.size)));
  if (image.bytes == nullptr) {
    throw std::bad_alloc();
  }
  const bool whole = image.size >= kEndOfHeader && file.Read(image.bytes.get(), image.size);
  if (!whole || !IsUnchanged(before, file.Facts()) || HasLog(path)) {
    throw Failure(FailureNumber::kStoreUnusable, "another program is using the store; try again");
  }
  image.bytes.get()[kFormatVersions] = kWithoutLog;
  image.bytes.get()[kFormatVersions + 1] = kWithoutLog;
  return image;
}

}  // namespace vetlo
