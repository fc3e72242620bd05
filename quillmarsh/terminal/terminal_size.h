#pragma once

#include <cstddef>

namespace quillmarsh {

// How much room there is in a line.
struct ScreenWidth {
  std::size_t columns = 0;
  // A terminal has no more room than that. What goes into a file or to another program, and what
  // goes to a terminal of unknown size, is laid out for so many columns but may be wider.
  bool is_limit = false;
};

// The width of the terminal behind a descriptor; where it is none, or does not know its size, as
// many columns as the text tells if it is a number from 20 to 1000, and 80 otherwise. The text may
// be null.
ScreenWidth WidthOf(int descriptor, const char* columns_text);

// The width of standard output, with the variable COLUMNS as the text.
ScreenWidth OutputWidth();

}  // namespace quillmarsh
