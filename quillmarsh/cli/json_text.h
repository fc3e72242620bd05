#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace quillmarsh {

// A JSON value whose members keep the order in which they were added. An object starts as
// Json::object(), an array as Json::array(): a null that becomes one by its first member is
// destroyed half-made where memory runs out.
using Json = nlohmann::ordered_json;

// The value on one line, without blanks.
// - A text is readable UTF-8. A character that a terminal would not show stands as \uXXXX or as one
//   of the short escapes (\n); a byte that is no UTF-8 becomes U+FFFD.
// - A number with a fraction has the shortest form that reads back to the same value, always with
//   a fraction or an exponent. One that is not finite is null: JSON has no word for it.
std::string JsonText(const Json& value);

// A value of 32 bits as a number that takes the shortest form that reads back to the same 32 bits.
Json JsonReal(float value);

}  // namespace quillmarsh
