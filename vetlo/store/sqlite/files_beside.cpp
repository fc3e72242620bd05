#include "vetlo/store/sqlite/files_beside.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <iterator>
#include <span>
#include <string_view>

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

constexpr const char* kJournal = "-journal";
constexpr std::array kEndings = {kJournal, "-wal", "-shm"};

[[noreturn]] void RefuseIrregular(const std::string& path) {
  throw Failure(FailureNumber::kStoreUnusable,
                "'" + path + "' beside it is no regular file; move it away");
}

// None of them is opened for that: the index of a log has locks, which closing would give up.
void RequireRegular(const std::string& path) {
  struct stat facts = {};
  if (lstat(path.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode)) {
    RefuseIrregular(path);
  }
}

// A journal that is open to be read, unless there is none or the engine cannot read it either.
class Journal {
 public:
  explicit Journal(const std::string& path)
      : file_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC)) {
    if (file_ >= 0 && (fstat(file_, &facts_) != 0 || !S_ISREG(facts_.st_mode))) {
      close(file_);
      RefuseIrregular(path);  // it has just come up
    }
  }
  ~Journal() {
    if (file_ >= 0) {
      close(file_);
    }
  }
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  // False where it has fewer bytes, or none that can be read.
  [[nodiscard]] bool Read(std::span<char> bytes, off_t place) const {
    return pread(file_, bytes.data(), bytes.size(), place) == std::ssize(bytes);
  }
  [[nodiscard]] off_t Size() const { return facts_.st_size; }

 private:
  int file_;
  struct stat facts_ = {};
};

// Undoing a change of several files that was broken off takes away the file that such a journal
// names at its end, whatever that is. No save of a store leaves one.
void RefuseJournalOfSeveralFiles(const std::string& path) {
  constexpr std::string_view kEndOfName = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
  const Journal journal(path);
  std::array<char, 1> first = {};  // 0 in what is finished
  std::array<char, kEndOfName.size()> end = {};
  if (journal.Read(first, 0) && first.front() != '\0' &&
      journal.Read(end, journal.Size() - std::ssize(end)) &&
      std::string_view(end.data(), end.size()) == kEndOfName) {
    throw Failure(FailureNumber::kStoreUnusable,
                  "another program broke off a change of this and of other files; undo it with "
                  "that program first");
  }
}

}  // namespace

std::vector<std::string> FilesBeside(const std::string& store) {
  std::vector<std::string> found;
  for (const char* const ending : kEndings) {
    struct stat facts = {};
    if (lstat((store + ending).c_str(), &facts) == 0) {
      found.push_back(store + ending);
    }
  }
  return found;
}

void RequireSaneFilesBeside(const std::string& store) {
  for (const char* const ending : kEndings) {
    RequireRegular(store + ending);
  }
  RefuseJournalOfSeveralFiles(store + kJournal);
}

}  // namespace vetlo
