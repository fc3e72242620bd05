#include "quillmarsh/making/new_store.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "vetlo/store/sqlite/files_beside.h"
#include "vetlo/store/sqlite/sole_use.h"

namespace quillmarsh {
namespace {

using vetlo::SoleUse;

void RequireFreePlace(const std::string& name) {
  if (IsThere(name)) {
    throw PlaceTaken("'" + name + "' is there already");
  }
  if (const auto left = vetlo::FilesBeside(name); !left.empty()) {
    throw PlaceTaken("'" + left.front() + "' is left of another store and would damage this one");
  }
}

// A link is no store: what lies beside its name is nobody's.
bool IsFile(const std::string& name) {
  struct stat facts = {};
  return lstat(name.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
}

void RemoveFilesBeside(const std::string& name) {
  for (const std::string& file : vetlo::FilesBeside(name)) {
    if (unlink(file.c_str()) != 0 && errno != ENOENT) {
      throw FileError("'" + file + "' cannot be removed: " + std::strerror(errno));
    }
  }
}

// The old store, for oneself alone, where there is one.
std::optional<SoleUse> OldStore(const std::string& name) {
  std::optional<SoleUse> old;
  if (IsFile(name)) {
    old.emplace(name);
  }
  return old;
}

}  // namespace

NewStore::NewStore(const std::string& name, Old old) : name_(name), old_(old), file_(name) {
  if (old_ == Old::kStays) {
    RequireFreePlace(name_);
  } else {
    OldStore(name_);
  }
}

void NewStore::TakeName() {
  if (old_ == Old::kStays) {
    RequireFreePlace(name_);
    file_.TakeFreeName();
    return;
  }
  // Nobody writes the old store from here on, and nothing beside it is needed any more.
  const std::optional<SoleUse> old = OldStore(name_);
  RemoveFilesBeside(name_);
  if (IsThere(name_)) {
    file_.TakeName();
  } else {
    file_.TakeFreeName();
  }
}

}  // namespace quillmarsh
