#pragma once

#include <string>

#include "quillmarsh/terminal/terminal_size.h"
#include "vetlo/host/document.h"

namespace quillmarsh {

// A report as lines of text, each ended by "\n" and without blanks at its end. Centred lines are
// centred on the page of the report, but on no more than the screen's columns, where there are any.
// Where the columns are a limit, what is wider is brought into them: a centred line goes on in the
// next one, and of a table the names are cut, the widest column first, and end in an ellipsis.
// Amounts and dates are never cut, and no name to less than four cells; what is wider even so
// stays so.
std::string RenderReport(const vetlo::Document& report, const ScreenWidth& screen);

}  // namespace quillmarsh
