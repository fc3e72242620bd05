#pragma once

#include <string>
#include <vector>

namespace house {

// What a shared library asks of its surroundings, from the text that `readelf -d` writes of it.
std::vector<std::string> NeededLibraries(const std::string& dynamic_section);

// The names without their versions, from the text that `nm` writes.
std::vector<std::string> SymbolNames(const std::string& symbol_list);

// Those that a component without surroundings of its own does not need.
std::vector<std::string> ForeignLibraries(const std::vector<std::string>& libraries);
std::vector<std::string> ForbiddenSymbols(const std::vector<std::string>& symbols);

}  // namespace house
