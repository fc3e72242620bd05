#include "quillmarsh/terminal/text_width.h"

#include <unicode/uchar.h>

#include "quillmarsh/terminal/utf8.h"

namespace quillmarsh {
namespace {

bool IsAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80U; }

std::size_t CellsOfCharacter(const Character& character) {
  const auto code = static_cast<UChar32>(character.code);
  // A mark joins the character before it, even where its own width is wide.
  if ((U_GET_GC_MASK(code) & U_GC_M_MASK) != 0) {
    return 0;
  }
  const int width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

std::size_t CellsOf(std::string_view utf8) {
  std::size_t cells = 0;
  std::size_t at = 0;
  while (at < utf8.size()) {
    // Nearly all text is ASCII and needs no table.
    if (IsAscii(utf8[at])) {
      ++cells;
      ++at;
      continue;
    }
    const Character character = FirstCharacter(utf8.substr(at));
    cells += CellsOfCharacter(character);
    at += character.bytes;
  }
  return cells;
}

std::string ClipToCells(std::string_view utf8, std::size_t cells) {
  std::size_t at = 0;
  while (at < utf8.size()) {
    const Character character = FirstCharacter(utf8.substr(at));
    const std::size_t width = CellsOfCharacter(character);
    if (width > cells) {
      break;
    }
    cells -= width;
    at += character.bytes;
  }
  return std::string(utf8.substr(0, at));
}

}  // namespace quillmarsh
