#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <system_error>

#include "vetlo/registry/descriptor.h"

namespace vetlo {

// What decides which code runs is taken only where nobody but this user and root can have made it:
// a regular file of a sane size that belongs to one of the two and that nobody else may write,
// below folders and behind links of which the same is true, up to the root. Everybody may write a
// folder in which each keeps what is his (a sticky one, such as /tmp).

// Something is not taken. The text names the file, the folder or the link that is the reason, and
// what would mend it.
class NotTrusted : public std::system_error {
 public:
  NotTrusted(int error, const std::string& text)
      : system_error(error, std::generic_category()), text_(text) {}
  [[nodiscard]] const char* what() const noexcept override { return text_.what(); }

 private:
  std::runtime_error text_;  // a text that is copied without allocating
};

// The file, open for reading; none where nothing of that name is there, whoever owns its folders.
// What was judged is what is open, whatever becomes of its name. Fails with NotTrusted, or with
// std::system_error where the file cannot be reached. The path is absolute.
Descriptor OpenTrusted(const std::string& path, std::int64_t most_bytes);

// For who wants to write a file: fails with NotTrusted also where it is not there and would not be
// taken if it were.
void RequireTrustedPlace(const std::string& path, std::int64_t most_bytes);

}  // namespace vetlo
