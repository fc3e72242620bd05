#pragma once

#include <iosfwd>

namespace quillmarsh {

// For the person who installs the component.

// Registers the component beside this program for the user, and forgets the registered one.
void RegisterCommand(std::ostream& out);
void UnregisterCommand(std::ostream& out);

// Prints which component is loaded, from where, and in which version.
void ComponentCommand(std::ostream& out);

}  // namespace quillmarsh
