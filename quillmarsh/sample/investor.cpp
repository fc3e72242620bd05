#include "quillmarsh/sample/investor.h"

#include <array>

namespace quillmarsh {
namespace {

constexpr std::int64_t kWholeShare = 10000;
constexpr std::int64_t kHundredthsOfUnit = 100;

// Less than that is not worth a trade.
constexpr std::int64_t kSmallestTradeCents = 20000;
constexpr std::int64_t kSmallestTradeUnits = 400;

// What is bought and sold time and again.
constexpr std::array kTraded = {kArdenwickRail, kBluecairnFoods, kDunmereBond, kGrowthFund};

bool ComesInParts(std::int32_t item) { return ItemOf(item).type == kMutualFund; }

}  // namespace

std::int64_t Investor::UnitsFor(std::int64_t cents, std::int32_t item, std::int32_t day) const {
  const std::int64_t units = cents * kHundredthsOfUnit / market_.PriceCents(item, day);
  return ComesInParts(item) ? units : units / kHundredthsOfUnit * kHundredthsOfUnit;
}

void Investor::Deal(Entry entry, std::int64_t units_hundredths) {
  if (units_hundredths <= 0) {
    return;
  }
  entry.units_hundredths = units_hundredths;
  entry.cents = units_hundredths * market_.PriceCents(entry.item, entry.day) / kHundredthsOfUnit;
  ledger_.Write(entry);
}

void Investor::BuyFirst(const FirstPurchase& purchase, std::int32_t day) {
  const bool present = purchase.cash_account == kNoAccount;
  Deal({.type = present ? vetlo::kUnitsReceived : vetlo::kBuy,
        .day = day,
        .account = purchase.account,
        .other = purchase.cash_account,
        .item = purchase.item},
       purchase.units_hundredths);
}

void Investor::InvestCash(const Rhythm& rhythm, std::int32_t payee, std::int32_t day) {
  Deal({.type = vetlo::kBuy,
        .day = day,
        .account = rhythm.account,
        .other = rhythm.other,
        .payee = payee,
        .item = rhythm.item},
       UnitsFor(ledger_.CashCents(rhythm.other), rhythm.item, day));
}

void Investor::SellPart(const Rhythm& rhythm, std::int64_t parts, std::int32_t payee,
                        std::int32_t day) {
  Deal({.type = vetlo::kSell,
        .day = day,
        .account = rhythm.account,
        .other = rhythm.other,
        .payee = payee,
        .item = rhythm.item},
       ledger_.UnitsHundredths(rhythm.account, rhythm.item) / parts);
}

void Investor::Yield(const Rhythm& rhythm, std::int32_t type, std::int32_t payee,
                     std::int32_t day) {
  const std::int64_t value_cents = ledger_.UnitsHundredths(rhythm.account, rhythm.item) *
                                   market_.PriceCents(rhythm.item, day) / kHundredthsOfUnit;
  const std::int64_t cents = dice_.Around(value_cents * rhythm.amount / kWholeShare, rhythm.spread);
  if (cents > 0) {
    ledger_.Write({.type = type,
                   .day = day,
                   .account = rhythm.account,
                   .other = rhythm.other,
                   .category = rhythm.category,
                   .payee = payee,
                   .item = rhythm.item,
                   .cents = cents});
  }
}

void Investor::MoveUnits(const Rhythm& rhythm, std::int32_t type, std::int32_t payee,
                         std::int32_t day) {
  const bool gone = type == vetlo::kUnitsGivenAway;
  if (!gone || ledger_.UnitsHundredths(rhythm.account, rhythm.item) > rhythm.amount) {
    Deal({.type = type, .day = day, .account = rhythm.account, .payee = payee, .item = rhythm.item},
         rhythm.amount);
  }
}

void Investor::Trade(std::int32_t payee, std::int32_t day) {
  const std::int32_t item = kTraded[static_cast<std::size_t>(
      dice_.Roll(0, static_cast<std::int64_t>(kTraded.size()) - 1))];
  Entry entry = {.type = vetlo::kBuy,
                 .day = day,
                 .account = kBrokerage,
                 .other = kBrokerageCash,
                 .payee = payee,
                 .item = item};
  const std::int64_t spare = ledger_.CashCents(kBrokerageCash) / dice_.Roll(2, 5);
  if (spare >= kSmallestTradeCents) {
    Deal(entry, UnitsFor(spare, item, day));
    return;
  }
  entry.type = vetlo::kSell;
  const std::int64_t units = ledger_.UnitsHundredths(kBrokerage, item) / dice_.Roll(4, 8);
  if (units >= kSmallestTradeUnits) {
    Deal(entry, ComesInParts(item) ? units : units / kHundredthsOfUnit * kHundredthsOfUnit);
  }
}

}  // namespace quillmarsh
