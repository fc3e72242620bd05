#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// Tables of text without a total: the accounts, and the scheduled payments of a range, of which
// report number 9 shows the payments, 54 the deposits and 10 both. None has a chart.
void ReportAccountList(ReportCall& call);
void ReportPaymentCalendar(ReportCall& call);

}  // namespace vetlo
