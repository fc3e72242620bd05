#include "vetlo/registry/trusted_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <deque>
#include <filesystem>

namespace vetlo {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void RaiseErrno(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

struct stat FactsOf(const Descriptor& file, const fs::path& place) {
  struct stat facts = {};
  if (fstat(file.number(), &facts) != 0) {
    RaiseErrno("cannot look at " + place.string());
  }
  return facts;
}

// Why another user may have a hand in a file, a folder or a link; empty where nobody may.
std::string OthersHandIn(const struct stat& facts, const fs::path& place) {
  if (facts.st_uid != geteuid() && facts.st_uid != 0) {
    return place.string() + " belongs to another user (number " + std::to_string(facts.st_uid) +
           "); use one of your own";
  }
  const bool each_keeps_his = S_ISDIR(facts.st_mode) && (facts.st_mode & S_ISVTX) != 0;
  const bool others_write = (facts.st_mode & (S_IWGRP | S_IWOTH)) != 0;
  if (others_write && !S_ISLNK(facts.st_mode) && !each_keeps_his) {
    return place.string() + " can be written by other users; 'chmod go-w' takes that from them";
  }
  return {};
}

void RequireSaneFile(const struct stat& facts, const fs::path& place, std::int64_t most_bytes) {
  if (!S_ISREG(facts.st_mode)) {
    throw NotTrusted(S_ISDIR(facts.st_mode) ? EISDIR : EINVAL,
                     place.string() + " is no regular file; move it away");
  }
  if (facts.st_size > most_bytes) {
    throw NotTrusted(EFBIG, place.string() + " is larger than " + std::to_string(most_bytes) +
                                " bytes; move it away");
  }
}

// Follows a path from the root, name by name and link by link, and judges all that it meets. Each
// step starts from the open folder that was judged, so that no other comes into its place.
class Walk {
 public:
  explicit Walk(const fs::path& path) : asked_(path) { GoOnWith(path); }

  // The file at the end; none where nothing is there.
  Descriptor Follow(std::int64_t most_bytes) {
    while (!names_.empty()) {
      const fs::path name = names_.front();
      names_.pop_front();
      Descriptor next(openat(folder_.number(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
      if (!next.IsOpen() && (errno == ENOENT || errno == ENOTDIR)) {
        return next;
      }
      RequireOpen(next);
      const struct stat facts = Judged(next, place_ / name);
      if (S_ISLNK(facts.st_mode)) {
        FollowLink(next);
      } else if (names_.empty()) {
        return OpenEnd(name, facts, most_bytes);
      } else {
        Enter(std::move(next), name);
      }
    }
    return Descriptor();
  }

  // Fails with NotTrusted where another user may have a hand in anything that was met.
  void RequireNoOthers() const {
    if (!others_hand_.empty()) {
      throw NotTrusted(EPERM, others_hand_);
    }
  }

 private:
  static constexpr int kMostLinks = 40;

  void RequireOpen(const Descriptor& file) const {
    if (!file.IsOpen()) {
      RaiseErrno("cannot read " + asked_.string());
    }
  }

  // The first reason is kept, until it is known whether there is anything to be taken at all.
  struct stat Judged(const Descriptor& file, const fs::path& place) {
    const struct stat facts = FactsOf(file, place);
    if (others_hand_.empty()) {
      others_hand_ = OthersHandIn(facts, place);
    }
    return facts;
  }

  void Enter(Descriptor folder, const fs::path& name) {
    folder_ = std::move(folder);
    place_ = name == ".." ? place_.parent_path() : place_ / name;
  }

  // Puts the names of a path before those that are left.
  void GoOnWith(const fs::path& path) {
    if (path.is_absolute()) {
      folder_ = Descriptor(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
      RequireOpen(folder_);
      place_ = "/";
      Judged(folder_, place_);
    }
    const fs::path names = path.relative_path();
    names_.insert(names_.begin(), names.begin(), names.end());
    std::erase_if(names_, [](const fs::path& name) { return name.empty() || name == "."; });
  }

  void FollowLink(const Descriptor& link) {
    std::array<char, PATH_MAX> target;
    const ssize_t size = readlinkat(link.number(), "", target.data(), target.size());
    if (++links_ > kMostLinks) {
      errno = ELOOP;
    }
    if (size < 0 || links_ > kMostLinks) {
      RaiseErrno("cannot read " + asked_.string());
    }
    GoOnWith(std::string(target.data(), static_cast<std::size_t>(size)));
  }

  // What is no regular file is not even opened: that alone can do something to a device.
  Descriptor OpenEnd(const fs::path& name, const struct stat& facts, std::int64_t most_bytes) {
    RequireSaneFile(facts, place_ / name, most_bytes);
    RequireNoOthers();
    Descriptor file(
        openat(folder_.number(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    RequireOpen(file);
    RequireSaneFile(Judged(file, place_ / name), place_ / name, most_bytes);
    RequireNoOthers();
    return file;
  }

  fs::path asked_;
  std::deque<fs::path> names_;  // that are still to be followed
  Descriptor folder_;           // where the walk stands
  fs::path place_;
  int links_ = 0;
  std::string others_hand_;
};

}  // namespace

Descriptor OpenTrusted(const std::string& path, std::int64_t most_bytes) {
  return Walk(path).Follow(most_bytes);
}

void RequireTrustedPlace(const std::string& path, std::int64_t most_bytes) {
  Walk walk(path);
  walk.Follow(most_bytes);
  walk.RequireNoOthers();
}

}  // namespace vetlo
