#include "quillmarsh/terminal/safe_text.h"

#include <algorithm>
#include <iterator>

#include "quillmarsh/terminal/utf8.h"

namespace quillmarsh {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct CodeRange {
  char32_t first;
  char32_t last;
};

constexpr CodeRange kUnsafe[] = {
    {0x0000, 0x001F},  // controls, the escape among them
    {0x007F, 0x009F},  // delete and the second set of controls
    {0x061C, 0x061C},  // direction mark
    {0x200E, 0x200F},  // direction marks
    {0x2028, 0x2029},  // line and paragraph separator
    {0x202A, 0x202E},  // direction embeddings and overrides
    {0x2066, 0x2069},  // direction isolates
};

}  // namespace

bool IsShown(char32_t code) {
  return std::none_of(std::begin(kUnsafe), std::end(kUnsafe), [&](const CodeRange& range) {
    return code >= range.first && code <= range.last;
  });
}

std::string SafeText(std::string_view utf8) {
  std::string safe;
  safe.reserve(utf8.size());
  while (!utf8.empty()) {
    const Character character = FirstCharacter(utf8);
    const bool stands = character.valid && IsShown(character.code);
    safe += stands ? utf8.substr(0, character.bytes) : kReplacement;
    utf8.remove_prefix(character.bytes);
  }
  return safe;
}

}  // namespace quillmarsh
