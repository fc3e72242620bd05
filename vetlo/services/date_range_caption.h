#pragma once

#include <string>

#include "vetlo/platform/date.h"

namespace vetlo {

// The words under a title: "2026/01/01 Through 2026/01/31", "Up to 2026/01/31", "From 2026/01/01",
// and nothing for a range that is open at both ends. Fails with kInvalidCall for a date that there
// is not.
std::string DateRangeCaption(Date dtmFromDate, Date dtmToDate);

}  // namespace vetlo
