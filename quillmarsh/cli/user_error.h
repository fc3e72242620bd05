#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace quillmarsh {

// Something that the user asked for cannot be done. The text is one line for him: what was wrong,
// and what to do.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What is said where not even the memory for it can be had.
inline constexpr std::string_view kNoMemoryLine = "quillmarsh: there is not enough memory\n";

// The exit statuses of the program.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitMisused = 2;

}  // namespace quillmarsh
