#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// The 59 report numbers, and what draws each of them. A number that the catalogue does not have,
// and the chart of one that is a report alone, draws nothing.
void DrawReport(ReportCall& call);
void DrawChart(ReportCall& call);

}  // namespace vetlo
