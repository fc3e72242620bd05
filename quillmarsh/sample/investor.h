#pragma once

#include <cstdint>

#include "quillmarsh/sample/dice.h"
#include "quillmarsh/sample/ledger.h"
#include "quillmarsh/sample/markets.h"
#include "quillmarsh/sample/rhythms.h"

namespace quillmarsh {

// What becomes of the money in securities. Every operation records at most one transaction, and
// none where there is nothing to buy with, to sell or to earn on.
class Investor {
 public:
  Investor(Ledger& ledger, const Market& market, Dice& dice)
      : ledger_(ledger), market_(market), dice_(dice) {}

  void BuyFirst(const FirstPurchase& purchase, std::int32_t day);

  // The rhythm gives the investment account, the account that funds it and the item.
  void InvestCash(const Rhythm& rhythm, std::int32_t payee, std::int32_t day);
  // Sells one part in `parts` of the holding.
  void SellPart(const Rhythm& rhythm, std::int64_t parts, std::int32_t payee, std::int32_t day);
  // A share of the holding's value, as a transaction of this type.
  void Yield(const Rhythm& rhythm, std::int32_t type, std::int32_t payee, std::int32_t day);
  // Units that come or go without money.
  void MoveUnits(const Rhythm& rhythm, std::int32_t type, std::int32_t payee, std::int32_t day);

  // Something is bought for a part of the brokerage's cash, or sold where that has run low.
  void Trade(std::int32_t payee, std::int32_t day);

 private:
  // A trade of so many units at the day's price.
  void Deal(Entry entry, std::int64_t units_hundredths);
  [[nodiscard]] std::int64_t UnitsFor(std::int64_t cents, std::int32_t item,
                                      std::int32_t day) const;

  Ledger& ledger_;
  const Market& market_;
  Dice& dice_;
};

}  // namespace quillmarsh
