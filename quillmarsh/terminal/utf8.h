#pragma once

#include <cstddef>
#include <string_view>

namespace quillmarsh {

// The character (code point) at the front of a text. A byte that starts no valid character is one
// by itself: U+FFFD, not valid, one byte long.
struct Character {
  char32_t code = 0;
  std::size_t bytes = 0;
  bool valid = false;
};

// The text is not empty.
Character FirstCharacter(std::string_view utf8);

}  // namespace quillmarsh
