#pragma once

#include <string>

#include "vetlo/investment/target_rows.h"
#include "vetlo/platform/arrays.h"
#include "vetlo/platform/format.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// How investments have done, from the first transaction ever recorded to today's worth, whatever
// the range:
//
//   gain/loss = worth + what came back - what went in       yield = gain/loss / what went in
//
// Bought for 1000.00, with 50.00 of dividends, worth 1100.00 today: 150.00 and 15.00%.

// A row of a report; without a gain it is a head or a blank line.
struct YieldRow {
  std::string strName;
  std::string strGain;
  std::string strYield;
};

// The amounts of a chart are per cent.
struct Yields : TargetRows<YieldRow> {
  Currency curTotalYield;  // per cent, 0 where nothing went in
};

// Per account, or per type of item, each down to the item; the result is the gain or loss of all.
// Both fail with kSubscriptOutOfRange where there is no row.
Currency YieldByAccount(Database& dbDov, Yields& yields, ChartOrReport lngChartOrReportType,
                        const NumberLocale& locale);
Currency YieldByType(Database& dbDov, Yields& yields, ChartOrReport lngChartOrReportType,
                     const NumberLocale& locale);

// What went in (bought, or cost) and what came back (sold, or brought): the two families of sums,
// each over the five scopes.
enum class YieldFamily { kCost, kReturn };

Currency SumOfItemInAccount(Database& dbDov, YieldFamily family, std::int32_t lngAccountNumber,
                            std::int32_t lngAccountItemNumber);
Currency SumOfItem(Database& dbDov, YieldFamily family, std::int32_t lngAccountItemNumber);
Currency SumOfAccount(Database& dbDov, YieldFamily family, std::int32_t lngAccountNumber);
Currency SumOfItemType(Database& dbDov, YieldFamily family, std::int32_t lngAccountItemTypeNumber);
// Fails for any attribute but AccountAttrFund, as opening an empty text does.
Currency SumOfAllInvestments(Database& dbDov, YieldFamily family, std::int32_t lngAttribute);

}  // namespace vetlo
