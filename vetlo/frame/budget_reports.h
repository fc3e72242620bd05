#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// The budget of the year, and the budget of a range beside what happened. Both are tables of text
// whose totals are rows; neither has a chart.
void ShowAnnualBudgetReport(ReportCall& call);
void ShowBudgetAgainstActualReport(ReportCall& call);

}  // namespace vetlo
