#pragma once

#include <cstdint>
#include <functional>

namespace vetlo::testing {

// Runs a piece in a process of its own. Its answer, 0 to 255, is handed back; a signal that ended
// the process as 128 and more, an exception as 255.
int InChild(const std::function<int()>& piece);

// For a child: what follows is done without the rights of the superuser.
void DropPrivileges();

// For a child: no file can be written past this size, as on a disk that is full.
void FillDisk(std::uint64_t bytes_left);

}  // namespace vetlo::testing
