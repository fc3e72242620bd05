#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// The course of the balance of one account, whose number is the first parameter.
void ReportBalanceHistory(ReportCall& call);
void ChartBalanceHistory(ReportCall& call);

}  // namespace vetlo
