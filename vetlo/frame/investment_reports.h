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

// Prices over time: of all investments, of those of the account and of the one investment that the
// first parameter names.
void ReportAllPrices(ReportCall& call);
void ChartAllPrices(ReportCall& call);
void ReportAccountPrices(ReportCall& call);
void ChartAccountPrices(ReportCall& call);
void ReportItemPrices(ReportCall& call);
void ChartItemPrices(ReportCall& call);

}  // namespace vetlo
