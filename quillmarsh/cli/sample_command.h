#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace quillmarsh {

struct SampleArguments {
  std::string file;
  std::int64_t years = 3;
  std::int64_t transactions = 5000;
  std::string seed = "1";
  std::optional<std::string> until;
  bool force = false;
};

// Writes an invented household. The file appears under its name when it is whole, and a file that
// is there already stays as it is unless `force` is set.
void SampleCommand(const SampleArguments& arguments, std::ostream& out, std::ostream& err);

}  // namespace quillmarsh
