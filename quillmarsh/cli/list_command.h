#pragma once

#include <iosfwd>
#include <string>

namespace quillmarsh {

// Prints the reports and charts that a store has settings for, by subject.
void ListCommand(const std::string& store, std::ostream& out);

}  // namespace quillmarsh
