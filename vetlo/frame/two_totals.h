#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// What there is and what is owed on a date, as two figures without a guard: a failure goes to the
// caller.
void ReportAssetsAndLiabilities(ReportCall& call);
void ChartAssetsAndLiabilities(ReportCall& call);

}  // namespace vetlo
