#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vetlo {

// The text without its outer blanks.
std::string_view Trim(std::string_view text);

// A number as it is joined to an SQL text: one blank in front of a number that is not negative.
std::string Str(std::int32_t number);

// How many characters (code points) a UTF-8 text has. Stray bytes count with what stands before
// them.
std::size_t CharacterCount(std::string_view text);

// The first `count` characters of a UTF-8 text.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

// The whole number nearest to the value, an exact half going to the even neighbour.
double RoundHalfEven(double value);

}  // namespace vetlo
