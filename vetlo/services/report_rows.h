#pragma once

#include <string>

#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// What the families' rows have in common.

// The share of its total that a row must exceed to stand by itself. A chart folds small rows
// together, a report lists every row.
double LeastShareShown(ChartOrReport lngChartOrReportType);

// The account under the cursor as a row is labelled: "Cash:Wallet" in a report, "Wallet" in a
// chart.
std::string AccountLabel(Recordset& recAccount, ChartOrReport lngChartOrReportType);

}  // namespace vetlo
