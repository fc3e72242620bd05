#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmarsh {

// The width of one cell of the terminal in the unit of reports.
inline constexpr int kTwipsPerCell = 120;

// How many cells a text takes up: two for a wide character, none for a combining mark, one for
// anything else, controls and invalid bytes included.
std::size_t CellsOf(std::string_view utf8);

// The longest beginning of a text that fits into so many cells, with the marks that belong to its
// last character.
std::string ClipToCells(std::string_view utf8, std::size_t cells);

}  // namespace quillmarsh
