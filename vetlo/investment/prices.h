#pragma once

#include <string>
#include <vector>

#include "vetlo/platform/arrays.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// How prices moved. A history is a table of dates by items; all prices are of the charted price
// type, the one with PriceTypeAttr 1.
//
//   2026/03/05   10.00   0.00      the second item has no price yet
//   2026/03/09   10.00  99.50      a row for each day on which any price changed
struct PriceHistory {
  AmountMatrix dblPrices;  // (1 To dates, 1 To items)
  ItemLabels strDates;
  std::vector<std::string> strItems;  // one for each item; of one item's own history none
};

// The price of the last record dated on or before the day, 0 where there is none.
double PriceOnOrBefore(Database& dbDov, std::int32_t lngAccountItemNumber, Date dtmDate,
                       std::int32_t lngPriceTypeNumber);

// Each of them fails with kNothingToShow where there is no charted price type or no price in the
// range; that of an account also where the account is not there or holds no items. What one that
// failed has left in the history stays readable, its parts then of different lengths.

// Every price record of one item.
void ItemPriceHistory(Database& dbDov, std::int32_t lngAccountItemNumber, Date dtmFromDate,
                      Date dtmToDate, PriceHistory& history);
// The items that an account holds, and those that any investment account holds. In a report an
// item is labelled by its type and name, in a chart by its name. Between the first and the last
// price the store is asked for every day, or where they lie more than a century apart for the days
// of the prices.
void AccountPriceHistory(Database& dbDov, std::int32_t lngAccountNumber, Date dtmFromDate,
                         Date dtmToDate, PriceHistory& history, ChartOrReport lngChartOrReportType);
void AllInvestmentsPriceHistory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                PriceHistory& history, ChartOrReport lngChartOrReportType);

}  // namespace vetlo
