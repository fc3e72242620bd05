#pragma once

#include "vetlo/cashflow/flow.h"
#include "vetlo/store/database.h"

namespace vetlo {

// An amount, and the first and the last day of what was counted. Where nothing was, the first lies
// after the last: they stay at LatestDate and EarliestDate.
struct DatedTotal {
  Currency curTotal;
  Date dtmFirstDate;
  Date dtmLastDate;
};

// What a category total asks for.
//
//                    assigned                      unassigned (blnCalcAllUnassigned)
//   of a category    the category's records        the records without any category
//   of a subcategory the subcategory's records     the category's records without a subcategory
//
// A number that there is not, and a category that is neither of income nor of expenses, give
// nothing. CategoryAttr is not looked at. Otherwise as the period totals.
DatedTotal TotalOfCategory(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate,
                           std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned);
DatedTotal TotalOfSubCategory(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate,
                              std::int32_t lngNumber, bool blnCalcAllUnassigned);

}  // namespace vetlo
