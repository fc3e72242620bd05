#include "quillmarsh/terminal/utf8.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace quillmarsh {
namespace {

constexpr std::size_t kLongestCharacter = 4;
constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

Character FirstCharacter(std::string_view utf8) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
  const auto length = static_cast<std::int32_t>(std::min(utf8.size(), kLongestCharacter));
  std::int32_t at = 0;
  UChar32 code = 0;
  U8_NEXT(bytes, at, length, code);
  if (code < 0) {
    return {kReplacement, 1, false};
  }
  return {static_cast<char32_t>(code), static_cast<std::size_t>(at), true};
}

}  // namespace quillmarsh
