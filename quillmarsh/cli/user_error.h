#pragma once

#include <stdexcept>
#include <string>

namespace quillmarsh {

// Something that the user asked for cannot be done. The text is one line for him: what was wrong,
// and what to do.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The exit statuses of the program.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitMisused = 2;

}  // namespace quillmarsh
