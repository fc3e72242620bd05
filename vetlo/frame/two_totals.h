#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// What there is and what is owed on a date, as two figures without a guard: a failure goes to the
// caller.
void ReportAssetsAndLiabilities(ReportCall& call);
void ChartAssetsAndLiabilities(ReportCall& call);

// The same of what came in and what went out in a period.
void ReportIncomeAndExpenses(ReportCall& call);
void ChartIncomeAndExpenses(ReportCall& call);

}  // namespace vetlo
