#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "quillmarsh/sample/markets.h"
#include "quillmarsh/sample/people_and_places.h"

namespace quillmarsh {

// What the household does again and again, and how often.

enum class Action {
  kIncome,         // `amount` into `account`
  kExpense,        // `amount` from `account`
  kSalary,         // as kIncome, but scaled so that the household lives on it
  kSplitIncome,    // one receipt of two categories
  kVoidedExpense,  // an expense that was cancelled
  kEarnInterest,   // a share of what lies on `account`
  kPayInterest,    // a share of what is owed on `other`, from `account`
  kRepay,          // `amount` from `account` until nothing is owed on `other`
  kRepayOrRenew,   // the same for the car loan: once paid off, the next car is bought
  kGainValue,      // a share of the value of `account`
  kLoseValue,      // the same downwards
  kTransfer,       // `amount` from `account` to `other`
  kFillUp,         // from `other` to `account`, up to `amount`
  kPayCard,        // a share of what is owed on `other`, rounded up, from `account`
  kSweep,          // what `account` can spare, into savings and securities
  kLend,           // lends, or takes back what was lent on `other`
  kBorrow,         // borrows, or pays back what was borrowed on `other`
  kInvestCash,     // buys `item` for what lies on `other`
  kTrade,          // buys a security, or sells one where cash is short
  kSellHalf,       // sells half of what is held of `item`
  kSellOut,        // sells all that is held of `item`
  kDividend,       // a share of the value held of `item`
  kHoldingInterest,
  kCapitalGain,
  kHoldingCost,
  kReceiveUnits,  // `amount` hundredths of a unit of `item`, no money
  kGiveUnitsAway,
};

// Over the months of a year, in percent of the typical amount.
enum class Season { kNone, kHeating, kCooling, kFestive, kGarden };

std::int64_t SeasonPercent(Season season, std::int32_t month);

// `yearly` times a year, on this day of the month. A rhythm of up to once a month counts its
// months from `anchor` (1 to 12); with `yearly` 0 it happens once in the whole history, when
// `anchor` percent of it are over.
struct Rhythm {
  Action action;
  std::int32_t yearly;
  std::int32_t day;
  std::int32_t anchor;
  std::int32_t account;
  std::int32_t other = kNoAccount;
  CategoryKey category = {};
  Trade trade = {};
  std::int32_t amount = 0;  // cents; a share in ten-thousandths
  std::int32_t spread = 0;  // percent either way
  Season season = Season::kNone;
  std::int32_t item = kNoItem;
};

std::span<const Rhythm> Rhythms();

// How many records one occurrence writes at most.
std::int64_t RecordsOf(Action action);

// Where the money of an everyday expense comes from: one of these accounts.
using Purse = std::array<std::int32_t, 4>;

enum class EverydayKind { kExpense, kIncome, kSplit, kTrade };

// What happens on no fixed day. `weight` says how often, against the others.
struct Everyday {
  EverydayKind kind;
  std::int32_t weight;
  Purse purse;
  CategoryKey category = {};
  Trade trade = {};
  std::int32_t amount = 0;  // cents
  Season season = Season::kNone;
};

std::span<const Everyday> EverydayLife();

inline constexpr std::int64_t kLinesOfSplit = 2;

std::int64_t RecordsOf(EverydayKind kind);

// What is bought first, before anything else happens.
struct FirstPurchase {
  std::int32_t account;
  std::int32_t cash_account;  // none where the units were a present
  std::int32_t item;
  std::int64_t units_hundredths;
};

std::span<const FirstPurchase> FirstPurchases();

}  // namespace quillmarsh
