#pragma once

#include <string>

#include "vetlo/host/recording.h"

namespace quillmarsh {

// One event as a line of JSON without its end, written as JsonText writes: keys in the order "on",
// "put" or "call", "at", "value"; a length or an amount that is not finite is null.
std::string EventText(const vetlo::Event& event);

}  // namespace quillmarsh
