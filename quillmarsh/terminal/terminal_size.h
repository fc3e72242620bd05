#pragma once

#include <cstddef>

namespace quillmarsh {

// The columns of the terminal behind a descriptor; where it is none, or does not know its size,
// those that the text tells if it is a number from 20 to 1000, and 80 otherwise. The text may be
// null.
std::size_t ColumnsOf(int descriptor, const char* columns_text);

// The columns of standard output, or else of the variable COLUMNS.
std::size_t TerminalColumns();

}  // namespace quillmarsh
