#include "quillmarsh/cli/json_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/utf8.h"

namespace quillmarsh {
namespace {

// The shortest digits that read back to a finite value.
template <typename Real>
std::string Digits(Real value) {
  std::array<char, 32> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return {digits.data(), end};
}

std::string RealText(double value) {
  if (!std::isfinite(value)) {
    return "null";
  }
  const std::string digits = Digits(value);
  return digits.find_first_of(".e") == std::string::npos ? digits + ".0" : digits;
}

// "\u202e"; all that is not shown lies below U+10000.
std::string Escape(char32_t code) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string text = "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) {
    text += kHex[(code >> shift) & 0xF];
  }
  return text;
}

// The library escapes quotes and the first controls, and leaves the rest as it is.
std::string StringText(const Json& value) {
  const std::string quoted = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  std::string text;
  for (std::string_view rest = quoted; !rest.empty();) {
    const Character character = FirstCharacter(rest);
    text += IsShown(character.code) ? std::string(rest.substr(0, character.bytes))
                                    : Escape(character.code);
    rest.remove_prefix(character.bytes);
  }
  return text;
}

std::string ArrayText(const Json& array) {
  std::string text;
  for (const Json& item : array) {
    text += (text.empty() ? "" : ",") + JsonText(item);
  }
  return "[" + text + "]";
}

std::string ObjectText(const Json& object) {
  std::string text;
  for (const auto& [name, value] : object.items()) {
    text += (text.empty() ? "" : ",") + StringText(name) + ":" + JsonText(value);
  }
  return "{" + text + "}";
}

}  // namespace

std::string JsonText(const Json& value) {
  switch (value.type()) {
    case Json::value_t::object:
      return ObjectText(value);
    case Json::value_t::array:
      return ArrayText(value);
    case Json::value_t::string:
      return StringText(value);
    case Json::value_t::number_float:
      return RealText(value.get<double>());
    default:
      return value.dump();
  }
}

Json JsonReal(float value) {
  double same_digits = value;
  if (std::isfinite(value)) {
    const std::string digits = Digits(value);
    std::from_chars(digits.data(), digits.data() + digits.size(), same_digits);
  }
  return same_digits;
}

}  // namespace quillmarsh
