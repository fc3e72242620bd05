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
#include "vetlo/store/sqlite/database_bytes.h"

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

struct stat FactsOf(const std::string& path) {
  struct stat facts = {};
  if (stat(path.c_str(), &facts) != 0) {
    RaiseUnreadable(std::strerror(errno));
  }
  return facts;
}

bool IsUnchanged(const struct stat& before, const struct stat& after) {
  return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
         before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

bool MayWrite(const std::string& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace

bool KeepsLog(const std::string& path) {
  const DatabaseBytes file(path);
  std::array<unsigned char, kEndOfHeader> header = {};
  return file.Read(header.data(), header.size(), 0) && header[kFormatVersions] == kWithLog &&
         header[kFormatVersions + 1] == kWithLog;
}

bool HasLog(const std::string& path) {
  struct stat facts = {};
  return stat((path + "-wal").c_str(), &facts) == 0 && facts.st_size > 0;
}

bool MayTakeLogIn(const std::string& path) {
  return MayWrite(path) && MayWrite(std::filesystem::path(path).parent_path());
}

DatabaseImage ReadWithoutLog(const std::string& path) {
  const DatabaseBytes file(path);
  const struct stat before = FactsOf(path);
  if (before.st_size > kMostBytes) {
    RaiseUnreadable("it is too large for a user who may not write the file and its folder");
  }
  DatabaseImage image;
  image.size = static_cast<std::size_t>(before.st_size);
  image.bytes.reset(static_cast<unsigned char*>(sqlite3_malloc64(image.size)));
  if (image.bytes == nullptr) {
    throw std::bad_alloc();
  }
  const bool whole = image.size >= kEndOfHeader && file.Read(image.bytes.get(), image.size, 0);
  if (!whole || !IsUnchanged(before, FactsOf(path)) || HasLog(path)) {
    throw Failure(FailureNumber::kStoreUnusable, "another program is using the store; try again");
  }
  image.bytes.get()[kFormatVersions] = kWithoutLog;
  image.bytes.get()[kFormatVersions + 1] = kWithoutLog;
  return image;
}

}  // namespace vetlo
