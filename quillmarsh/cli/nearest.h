#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillmarsh {

// The one of these words that a mistyped word was probably meant to be: that which the fewest
// letters put in, left out, changed or swapped with their neighbour lead to, whatever their case;
// the first of equals. None where that is more than a third of the letters of the longer word.
std::optional<std::string> Nearest(std::string_view mistyped, std::span<const std::string> words);

// "; did you mean 'list'?", or nothing where there is no nearest word.
std::string DidYouMean(std::string_view mistyped, std::span<const std::string> words);

}  // namespace quillmarsh
