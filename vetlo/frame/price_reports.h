#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// Prices over time: of all investments, of those of the account and of the one investment that the
// first parameter names.
void ReportAllPrices(ReportCall& call);
void ChartAllPrices(ReportCall& call);
void ReportAccountPrices(ReportCall& call);
void ChartAccountPrices(ReportCall& call);
void ReportItemPrices(ReportCall& call);
void ChartItemPrices(ReportCall& call);

}  // namespace vetlo
