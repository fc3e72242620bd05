#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "quillmarsh/sample/dice.h"
#include "vetlo/platform/date.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh {

// The securities of the household and their prices. Numbers count from 1, as in the store.

enum ItemNumber : std::int32_t {
  kNoItem,
  kArdenwickRail,
  kBluecairnFoods,
  kCorvaneSystems,
  kHaldenWorks,
  kQuarrystone,
  kDunmereBond,
  kGrowthFund,
  kBalancedFund,
  kSilverCoins,
};

enum ItemTypeNumber : std::int32_t { kStock = 1, kBond, kMutualFund, kCollectible };

struct ItemTypeRow {
  std::string_view name;
  std::int32_t basic_account_type;
};

inline constexpr ItemTypeRow kItemTypes[] = {{"Stock", vetlo::AccountAttrFund},
                                             {"Bond", vetlo::AccountAttrFund},
                                             {"Mutual Fund", vetlo::AccountAttrFund},
                                             {"Collectible", vetlo::AccountAttrPositiveBalance}};

// A price walks about an anchor that grows by some ten-thousandths a year.
struct ItemRow {
  std::string_view name;
  std::int32_t type;
  std::int64_t first_price_cents;
  std::int64_t yearly_growth;
  std::int64_t weekly_swing;  // ten-thousandths either way
};

inline constexpr ItemRow kItems[] = {
    {"Ardenwick Rail", kStock, 4820, 320, 260},
    {"Bluecairn Foods", kStock, 11540, 240, 180},
    {"Corvane Systems", kStock, 2735, -150, 420},
    {"Halden Works", kStock, 6310, 280, 240},
    {"Quarrystone Mining", kStock, 915, 50, 380},
    {"Dunmere Water 4%", kBond, 9860, 0, 35},
    {"Larkfield Growth Fund", kMutualFund, 3715, 420, 170},
    {"Larkfield Balanced Fund", kMutualFund, 2240, 300, 90},
    {"Silver Coin", kCollectible, 2480, 150, 190},
};
inline constexpr std::size_t kItemCount = std::size(kItems);

constexpr const ItemRow& ItemOf(std::int32_t number) {
  return kItems[static_cast<std::size_t>(number) - 1];
}

// The weekly closing prices of all items over a history.
class Market {
 public:
  // Days as whole days of a Date; first_day <= last_day.
  Market(std::int32_t first_day, std::int32_t last_day, Dice& dice);

  // The last price on or before a day not before the first one.
  [[nodiscard]] std::int64_t PriceCents(std::int32_t item, std::int32_t day) const;
  [[nodiscard]] double LatestPrice(std::int32_t item) const;

  // All rows of AccountItemType, AccountItem, PriceType, PriceRecord and LatestPriceInfo.
  void Write(vetlo::StoreBuilder& store) const;

 private:
  [[nodiscard]] vetlo::Date DateOfWeek(std::size_t week) const;
  void WritePrices(vetlo::StoreBuilder& store, std::int32_t item) const;

  std::int32_t first_day_;
  std::vector<std::vector<std::int64_t>> weekly_cents_;  // by item
};

}  // namespace quillmarsh
