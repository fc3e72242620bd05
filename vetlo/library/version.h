#pragma once

#include "vetlo/surface/tamo_interface.h"

namespace vetlo {

// VETLO_VERSION is the version of the project, which the library's file carries too.
inline constexpr LibraryFacts kLibraryFacts = {"Vetlo", "Vetlo V" VETLO_VERSION, VETLO_VERSION};

}  // namespace vetlo
