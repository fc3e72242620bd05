#pragma once

#include "vetlo/store/database.h"

namespace vetlo {

// How much a household has and owes on a date. A balance is an asset or a debt by its sign on that
// date, whatever the type of its account.
//
//   Checking -100.00, Credit Card 50.00:
//   TotalAssets 50.00, TotalLiabilities 100.00, TotalCreditCardDebt 0.00
//
// All three give zero or more. An account whose balance cannot be had does not fail them: the
// balance of the account before it counts once more in its place.

// recAccount is the caller's table "Account"; it is left at its end.
Currency TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate);
Currency TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate);
Currency TotalCreditCardDebt(Database& dbDov, Date dtmToDate);

}  // namespace vetlo
