#pragma once

#include "vetlo/host/component.h"

namespace quillmarsh {

// The component that this program works with: the one that the user has registered, or else the
// one beside the program. Fails with a UserError that says what to do.
vetlo::Component LoadComponent();

}  // namespace quillmarsh
