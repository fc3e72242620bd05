#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// What is held: sections of items with quantity, price and value.
void ReportInvestmentsByAccount(ReportCall& call);
void ReportInvestmentsByType(ReportCall& call);
// The same as amounts of a chart.
Currency ChartedInvestmentsByAccount(const ReportCall& call, AmountRows& rows);
Currency ChartedInvestmentsByType(const ReportCall& call, AmountRows& rows);

// Gain and yield, over all time whatever the range.
void ReportYieldByAccount(ReportCall& call);
void ReportYieldByType(ReportCall& call);
void ChartYieldByAccount(ReportCall& call);
void ChartYieldByType(ReportCall& call);

}  // namespace vetlo
