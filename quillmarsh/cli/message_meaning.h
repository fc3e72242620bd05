#pragma once

#include <string>
#include <string_view>

namespace quillmarsh {

// A message of the component's favourites dialog with its meaning in English behind it, in
// parentheses; the name or the number that it speaks of stands in both. Any other message is in
// English already and stays as it is.
std::string WithMeaning(std::string_view message);

}  // namespace quillmarsh
