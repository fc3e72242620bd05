#pragma once

#include "vetlo/frame/report_call.h"

namespace vetlo {

// The months of one payee (28), of a category or subcategory (29), of a classification's item or
// sub-item (30). The second parameter names the narrower subject; where it does not convert the
// first one names the wider.
void ReportHistory(ReportCall& call);
void ChartHistory(ReportCall& call);

}  // namespace vetlo
