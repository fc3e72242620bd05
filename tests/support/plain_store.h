#pragma once

#include <string>

namespace vetlo::testing {

// Takes all indexes but those of the keys from a store file: so another tool would write it.
void DropIndexes(const std::string& path);

}  // namespace vetlo::testing
