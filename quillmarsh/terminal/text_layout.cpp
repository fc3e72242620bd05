#include "quillmarsh/terminal/text_layout.h"

#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

constexpr std::string_view kEllipsis = "…";

std::size_t Missing(std::string_view text, std::size_t cells) {
  const std::size_t width = CellsOf(text);
  return width < cells ? cells - width : 0;
}

// The part of a text that becomes its first line.
std::string FirstLine(std::string_view text, std::size_t cells) {
  std::string line = ClipToCells(text, cells);
  if (line.size() == text.size() || text[line.size()] == ' ') {
    return line;
  }
  const std::size_t blank = line.rfind(' ');
  if (blank != std::string::npos && blank > 0) {
    line.resize(blank);
  }
  return line;
}

}  // namespace

std::string PadLeft(std::string_view text, std::size_t cells) {
  return std::string(Missing(text, cells), ' ').append(text);
}

std::string PadRight(std::string_view text, std::size_t cells) {
  return std::string(text).append(Missing(text, cells), ' ');
}

std::string Centred(std::string_view text, std::size_t cells) {
  return std::string(Missing(text, cells) / 2, ' ').append(text);
}

std::string Repeated(std::string_view piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (std::size_t i = 0; i < count; ++i) {
    text += piece;
  }
  return text;
}

std::string Shortened(std::string_view text, std::size_t cells) {
  if (CellsOf(text) <= cells) {
    return std::string(text);
  }
  return cells == 0 ? std::string() : ClipToCells(text, cells - 1).append(kEllipsis);
}

std::vector<std::string> Wrapped(std::string_view text, std::size_t cells) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::string line = FirstLine(text, cells);
    text.remove_prefix(line.size());
    lines.emplace_back(WithoutTrailingBlanks(line));
    while (text.starts_with(' ')) {
      text.remove_prefix(1);
    }
  }
  return lines;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

void AppendLine(std::string& text, std::string_view line) {
  text += WithoutTrailingBlanks(line);
  text += '\n';
}

}  // namespace quillmarsh
