#include "vetlo/store/sqlite/files_beside.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/input_file.h"

namespace vetlo {
namespace {

constexpr const char* kJournal = "-journal";
constexpr std::array kEndings = {kJournal, "-wal", "-shm"};

// What cannot be opened at all the engine cannot open either, and says so.
void RequireRegular(const std::string& path) {
  const InputFile file(path);
  const bool link_or_socket = file.Error() == ELOOP || file.Error() == ENXIO;
  if (link_or_socket || (file.IsOpen() && !S_ISREG(file.Facts().st_mode))) {
    throw Failure(FailureNumber::kStoreUnusable,
                  "'" + path + "' beside it is no regular file; move it away");
  }
}

// Undoing a change of several files that was broken off takes away the file that such a journal
// names at its end, whatever that is. No save of a store leaves one.
void RefuseJournalOfSeveralFiles(const std::string& path) {
  constexpr std::string_view kEndOfName = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
  const InputFile journal(path);
  if (!journal.IsOpen()) {
    return;
  }
  char first = 0;  // of what is finished
  std::array<char, kEndOfName.size()> end = {};
  const off_t at = journal.Facts().st_size - static_cast<off_t>(end.size());
  const bool waits = at >= 0 && journal.Read(&first, 1, 0) && first != 0;
  if (waits && journal.Read(end.data(), end.size(), at) &&
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
