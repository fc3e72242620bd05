#pragma once

#include <cstdint>

#include "quillmarsh/sample/ledger.h"

namespace quillmarsh {

// How many patterns WriteScheduledPayments adds to the ledger.
std::int64_t ScheduledPaymentCount();

// The patterns of what is due in the days and months around `today` (whole days of a Date), and
// their rows of PaymentCalendar: every frequency there is.
void WriteScheduledPayments(vetlo::StoreBuilder& store, Ledger& ledger, std::int32_t today);

}  // namespace quillmarsh
