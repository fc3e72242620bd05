#pragma once

#include "vetlo/cashflow/flow.h"
#include "vetlo/store/database.h"

namespace vetlo {

// Everything that came in, or went out, between two dates, both included. A record counts where
// its account is one of cash flow and its category does not keep it out (CategoryAttr 9); what an
// investment brought or cost another account counts without a look at either.
//
// Nothing is trapped: a record whose account or category is not there fails with kNoCurrentRecord.
Currency TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate);
Currency TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate);

// Whichever of the two the direction asks for.
Currency TotalOfFlow(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate);

// True where the records of an account count as cash flow. The table "Account" has its index set.
bool IsCashFlowAccount(Recordset& recAccount, const Variant& varAccountNumber);

}  // namespace vetlo
