#pragma once

#include <iosfwd>

namespace quillmarsh {

// The program as a function: reads the arguments, does what they ask for and gives the exit
// status. What was asked for goes to `out`, everything else to `err`; an error is one line there
// and leaves nothing behind.
int RunCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace quillmarsh
