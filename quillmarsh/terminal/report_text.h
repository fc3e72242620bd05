#pragma once

#include <cstddef>
#include <string>

#include "vetlo/host/document.h"

namespace quillmarsh {

// A report as lines of text, each ended by "\n" and without blanks at its end. Lines wider than
// the terminal are left to it. Centred lines are centred on the page of the report, but on no more
// than `columns`; 0 is no limit.
std::string RenderReport(const vetlo::Document& report, std::size_t columns);

}  // namespace quillmarsh
