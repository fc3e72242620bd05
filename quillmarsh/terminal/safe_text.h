#pragma once

#include <string>
#include <string_view>

namespace quillmarsh {

// Text from a store, made harmless for a terminal: every control character, every character that
// turns the direction of writing, every line or paragraph separator and every invalid byte becomes
// U+FFFD. All else stays, and so does the number of cells.
std::string SafeText(std::string_view utf8);

// Whether SafeText lets this code point stand.
bool IsShown(char32_t code);

}  // namespace quillmarsh
