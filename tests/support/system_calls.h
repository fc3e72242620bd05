#pragma once

#include <functional>
#include <initializer_list>

namespace vetlo::testing {

// For a child: these system calls (SYS_...) do nothing from here on but fail with this error, as on
// a system that does not know them. False where this machine does not let a test do so.
bool RefuseCalls(std::initializer_list<long> calls, int error);

// Runs a piece in a process of its own, which is killed before the n-th of its system calls that
// can change a file or a folder, counted from 1: between two of them there is nothing to be seen.
// The answer is what InChild gives for a piece that ended before that, and 128 + SIGKILL where it
// was killed; below 0 where this machine does not let a test do so.
int KilledAtChange(int n, const std::function<int()>& piece);

}  // namespace vetlo::testing
