#pragma once

#include <string>

#include "vetlo/host/recording.h"

namespace quillmarsh {

// One event as a line of JSON without its end: keys in the order "on", "put" or "call", "at",
// "value"; lengths and amounts in the shortest form that reads back to the same value, always with
// a fraction or an exponent.
std::string EventText(const vetlo::Event& event);

// A text as a JSON string, quotes included. What is no UTF-8 becomes U+FFFD.
std::string JsonText(std::string_view text);

}  // namespace quillmarsh
