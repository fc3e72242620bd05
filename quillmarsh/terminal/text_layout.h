#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmarsh {

// All widths are cells. A text that is already as wide as asked for stays as it is.
std::string PadLeft(std::string_view text, std::size_t cells);
std::string PadRight(std::string_view text, std::size_t cells);
// Blanks in front alone; where they do not divide evenly the text stands further left.
std::string Centred(std::string_view text, std::size_t cells);

std::string Repeated(std::string_view piece, std::size_t count);

// The text itself where it fits, else its beginning with an ellipsis behind it.
std::string Shortened(std::string_view text, std::size_t cells);

// The text in lines of at most so many cells (at least two), broken at blanks where there are any.
// An empty text has no lines.
std::vector<std::string> Wrapped(std::string_view text, std::size_t cells);

std::string_view WithoutTrailingBlanks(std::string_view text);

// Adds a line, without its trailing blanks, and ends it.
void AppendLine(std::string& text, std::string_view line);

}  // namespace quillmarsh
