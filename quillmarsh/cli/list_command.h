#pragma once

#include <iosfwd>
#include <string>

namespace quillmarsh {

// Prints the reports and charts that a store has settings for, by subject, and says of a row whose
// settings are not the defaults of its report number that it is customized. A favourite is there to
// differ from them.
void ListCommand(const std::string& store, std::ostream& out);

}  // namespace quillmarsh
