#pragma once

namespace quillmarsh {

// The program's last net where memory runs out, set up before anything else of it runs. What
// nothing else has caught ends the program with one line on standard error and the status 1; a host
// that only links the rooms beneath has no such net.

// Whether an allocation of this program has failed, whoever caught it. A library that catches it
// goes on with less than it was asked for.
bool MemoryRanOut();

// Tells the user so on standard error. It needs no memory.
void TellMemoryRanOut();

}  // namespace quillmarsh
