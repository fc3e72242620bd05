#pragma once

#include "vetlo/platform/arrays.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// What a household has and owes on a date, as rows of a report or a chart. Each routine fills the
// rows and gives their total; with no row at all it fails with kSubscriptOutOfRange. In a report a
// row of amount -1 is a heading, or without a label a blank line; of the accounts of a chart those
// of no more than a twentieth of their side are folded into one row.
//
//   NetWorthByAccount for a report        AssetsByAccount for a report
//     -1.00  Assets                         1200.00  Cash:Wallet
//   1200.00  Cash:Wallet
//     -1.00                               NetWorthByAccount for a chart
//   1200.00  Total Assets                   1200.00  Wallet
//     -1.00                                  -35.50  Visa
//     -1.00  Liabilities
//     35.50  Credit Card:Visa
//     -1.00
//     35.50  Total Liabilities

// The total is what there is less what is owed.
Currency NetWorthByGroup(Database& dbDov, Date dtmToDate, AmountRows& rows,
                         ChartOrReport lngChartOrReportType);
Currency NetWorthByAccount(Database& dbDov, Date dtmToDate, AmountRows& rows,
                           ChartOrReport lngChartOrReportType);

// One side alone, in positive amounts.
Currency AssetsByAccount(Database& dbDov, Date dtmToDate, AmountRows& rows,
                         ChartOrReport lngChartOrReportType);
Currency LiabilitiesByAccount(Database& dbDov, Date dtmToDate, AmountRows& rows,
                              ChartOrReport lngChartOrReportType);

}  // namespace vetlo
