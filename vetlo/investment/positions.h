#pragma once

#include <string>

#include "vetlo/investment/target_rows.h"
#include "vetlo/platform/arrays.h"
#include "vetlo/platform/format.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// What is held and what it is worth today. A report gets rows of text: a name without a value is
// the head of a section, a row of nothing a blank line. A chart gets amounts. The result is what
// the investment accounts and the cash accounts that serve them hold.
//
//   Broker
//   Alder              10   12.50     125.00
//   Everyday                          765.00    the cash account
//
//   Total Broker                      890.00
struct PositionRow {
  std::string strName;
  std::string strQuantity;
  std::string strPrice;
  std::string strValue;
};

using Positions = TargetRows<PositionRow>;

// Fails with kSubscriptOutOfRange where there is no row.
Currency InvestmentsByAccount(Database& dbDov, Positions& positions,
                              ChartOrReport lngChartOrReportType, const NumberLocale& locale);
Currency InvestmentsByType(Database& dbDov, Positions& positions,
                           ChartOrReport lngChartOrReportType, const NumberLocale& locale);

// The worth of each type, and the cash of the accounts that serve investments. Fails as the others.
Currency InvestmentValuesByType(Database& dbDov, AmountRows& rows,
                                ChartOrReport lngChartOrReportType);

}  // namespace vetlo
