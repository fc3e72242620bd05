#pragma once

#include "vetlo/store/database.h"

namespace vetlo {

// What holdings are worth today, by the latest prices, and what the stored balances say. Products
// are rounded to Currency before they are added.

// The units of an item, 0 where it is not held.
struct Holding {
  double dblQuantity = 0;
  bool blnHeld = false;
};

// In one account, and in all investment accounts. Where the units cannot be had, for whatever
// reason, the item counts as not held there.
Holding HeldInAccount(Database& dbDov, std::int32_t lngAccountNumber,
                      std::int32_t lngAccountItemNumber);
Holding HeldInAllAccounts(Database& dbDov, std::int32_t lngAccountItemNumber);

// The latest prices, from a table that is open as long as the object lives. An item without a
// price is taken at that of the item asked for before it, the first at 0.
class LatestPrices {
 public:
  explicit LatestPrices(Database& dbDov);

  double Of(std::int32_t lngAccountItemNumber);
  [[nodiscard]] bool AreThere() { return rec_->RecordCount() > 0; }

 private:
  Database& dbDov_;
  ScopedRecordset rec_;
  double dblPrice_ = 0;
};

// The worth of all items of a type in the accounts whose flags share a bit with the type's
// BasicAccountType; zero for a type that there is not and in a store without prices.
Currency TotalValueOfItemType(Database& dbDov, std::int32_t lngAccountItemTypeNumber);

// The stored balances of the accounts that have one of these flags.
Currency TotalBalanceOfAttribute(Database& dbDov, std::int32_t lngAttribute);

// The stored balances of the cash accounts that serve such accounts; one that serves two counts
// twice.
Currency TotalAssociatedCash(Database& dbDov, std::int32_t lngAttribute);

Currency TotalBalanceWithAssociatedCash(Database& dbDov, std::int32_t lngAttribute);

}  // namespace vetlo
