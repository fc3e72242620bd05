#pragma once

#include <iosfwd>
#include <string>

namespace quillmarsh {

struct TidyArguments {
  std::string store;
};

// Puts the indexes into a store file that lacks them, and tells what was done.
void TidyCommand(const TidyArguments& arguments, std::ostream& out);

}  // namespace quillmarsh
