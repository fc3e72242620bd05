#include "quillmarsh/making/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

namespace quillmarsh {
namespace {

namespace fs = std::filesystem;

std::string Quoted(const std::string& name) { return "'" + name + "'"; }

std::string ReasonOf(int error, const std::string& folder) {
  switch (error) {
    case ENOENT:
      return "there is no folder " + Quoted(folder);
    case ENOTDIR:
      return Quoted(folder) + " is no folder";
    case EACCES:
    case EROFS:
      return "you may not write in the folder " + Quoted(folder);
    case ENOSPC:
    case EDQUOT:
      return "the disk is full; make room, then try again";
    default:
      return std::strerror(error);
  }
}

// ---- what an interrupted program takes away

// The files of this process that are in the making. More of them at once than there are places
// here are not looked after.
constexpr std::size_t kMostAtOnce = 16;
std::array<std::atomic<const char*>, kMostAtOnce> in_the_making;
std::atomic<pid_t> maker;

extern "C" void GiveUp(int signal) {
  if (maker == getpid()) {
    for (const auto& path : in_the_making) {
      if (path != nullptr) {
        unlink(path);
      }
    }
  }
  std::raise(signal);  // whose handler has gone with the call
}

void HandleInterruptions() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
      action.sa_handler = &GiveUp;
      action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
      sigaction(signal, &action, nullptr);
    }
  }
}

// A process that came of another by a fork has none of that one's files.
void ForgetThoseOfAParent() {
  if (maker.exchange(getpid()) != getpid()) {
    for (auto& path : in_the_making) {
      path = nullptr;
    }
  }
}

void LookAfter(const char* new_path) {
  ForgetThoseOfAParent();
  for (auto& path : in_the_making) {
    const char* none = nullptr;
    if (path.compare_exchange_strong(none, new_path)) {
      break;
    }
  }
  HandleInterruptions();
}

void LookAfterNoMore(const char* old_path) {
  for (auto& path : in_the_making) {
    const char* sought = old_path;
    path.compare_exchange_strong(sought, nullptr);
  }
}

// ---- the names of files in the making

constexpr std::string_view kPrefix = "quillmarsh-making-";

// How many this process has made.
std::atomic<int> made;

std::string NextName() {
  return std::string(kPrefix) + std::to_string(getpid()) + "-" + std::to_string(++made);
}

struct Maker {
  pid_t process = 0;
  int number = 0;
};

// Who made a file of such a name; nothing for any other name.
std::optional<Maker> MakerOf(std::string_view name) {
  Maker maker_of;
  if (!name.starts_with(kPrefix)) {
    return std::nullopt;
  }
  const char* const end = name.data() + name.size();
  const auto process = std::from_chars(name.data() + kPrefix.size(), end, maker_of.process);
  if (process.ec != std::errc() || process.ptr == end || *process.ptr != '-') {
    return std::nullopt;
  }
  const auto number = std::from_chars(process.ptr + 1, end, maker_of.number);
  const bool whole = number.ec == std::errc() && number.ptr == end;
  return whole && maker_of.process > 0 && maker_of.number > 0 ? std::optional(maker_of)
                                                              : std::nullopt;
}

// A process of this number may be another by now, or this one itself.
bool HasGone(const Maker& maker_of) {
  if (maker_of.process == getpid()) {
    return maker_of.number > made;
  }
  return kill(maker_of.process, 0) != 0 && errno == ESRCH;
}

bool IsOwnRegularFile(const fs::path& path) {
  struct stat facts = {};
  return lstat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_uid == geteuid();
}

// What cannot be taken away stays; it is in nobody's way.
void RemoveAbandoned(const std::string& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const auto maker_of = MakerOf(entry->path().filename().native());
    if (maker_of && HasGone(*maker_of) && IsOwnRegularFile(entry->path())) {
      unlink(entry->path().c_str());
    }
  }
}

// ---- taking the name

// Whether a file system, or what keeps watch over the program, does not know this way.
bool IsUnknownHere(int error) {
  return error == EINVAL || error == ENOSYS || error == EPERM || error == EOPNOTSUPP ||
         error == EMLINK;
}

// By moving over an empty file of one's own. In between that one is to be seen.
int MoveOverOwn(const char* from, const char* to) {
  const int file = open(to, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
  if (file < 0) {
    return errno;
  }
  close(file);
  if (std::rename(from, to) == 0) {
    return 0;
  }
  const int error = errno;
  unlink(to);
  return error;
}

// Renames unless there is something of that name. The answer is the error, 0 for none.
int MoveToFreeName(const char* from, const char* to) {
  if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) {
    return 0;
  }
  if (!IsUnknownHere(errno)) {
    return errno;
  }
  if (link(from, to) == 0) {
    unlink(from);
    return 0;
  }
  return IsUnknownHere(errno) ? MoveOverOwn(from, to) : errno;
}

// Writes to the disk what was written to a file or a folder; the error, 0 for none.
int Settle(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const int error = file < 0 || fsync(file) != 0 ? errno : 0;
  if (file >= 0) {
    close(file);
  }
  return error;
}

std::string FolderOf(const std::string& name) {
  const std::string folder = fs::path(name).parent_path();
  return folder.empty() ? "." : folder;
}

void RequireFolder(const std::string& folder) {
  struct stat facts = {};
  if (stat(folder.c_str(), &facts) != 0) {
    throw FileError(ReasonOf(errno, folder));
  }
  if (!S_ISDIR(facts.st_mode)) {
    throw FileError(ReasonOf(ENOTDIR, folder));
  }
}

void RequireNameOfAFile(const std::string& name) {
  struct stat facts = {};
  const int error = stat(name.c_str(), &facts) == 0 ? 0 : errno;
  if (error == 0 && S_ISDIR(facts.st_mode)) {
    throw FileError("it is a folder");
  }
  if (error == 0 && !S_ISREG(facts.st_mode)) {
    throw FileError("it is no regular file; name another");
  }
  if (error == ENAMETOOLONG || fs::path(name).filename().empty() ||
      name.find('\0') != std::string::npos) {
    throw FileError("this is no name of a file");
  }
}

}  // namespace

NewFile::NewFile(const std::string& name) : name_(name), folder_(FolderOf(name)) {
  RequireNameOfAFile(name_);
  RequireFolder(folder_);
  RemoveAbandoned(folder_);
  path_ = folder_ + "/" + NextName();
  LookAfter(path_.c_str());
}

NewFile::~NewFile() {
  unlink(path_.c_str());
  LookAfterNoMore(path_.c_str());
}

void NewFile::TakeFreeName() {
  MakeLast();
  const int error = MoveToFreeName(path_.c_str(), name_.c_str());
  if (error == EEXIST) {
    throw PlaceTaken(Quoted(name_) + " is there already");
  }
  if (error != 0) {
    throw FileError(ReasonOf(error, folder_));
  }
  Settle(folder_);
}

void NewFile::TakeName() {
  MakeLast();
  if (std::rename(path_.c_str(), name_.c_str()) != 0) {
    throw FileError(ReasonOf(errno, folder_));
  }
  Settle(folder_);
}

// A name must not last longer than what it names.
void NewFile::MakeLast() const {
  if (const int error = Settle(path_); error != 0) {
    throw FileError(ReasonOf(error, folder_));
  }
}

bool IsThere(const std::string& name) {
  struct stat facts = {};
  return lstat(name.c_str(), &facts) == 0;
}

}  // namespace quillmarsh
