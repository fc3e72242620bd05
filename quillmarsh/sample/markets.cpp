#include "quillmarsh/sample/markets.h"

#include <algorithm>

namespace quillmarsh {
namespace {

using vetlo::Date;
using vetlo::StoreBuilder;

constexpr std::int32_t kDaysAWeek = 7;
constexpr std::int64_t kWeeksAYear = 52;
constexpr std::int64_t kWhole = 10000;
// A price comes back by a tenth of its distance from the anchor every week.
constexpr std::int64_t kPull = 10;
constexpr std::int64_t kLowestCents = 100;

constexpr std::int32_t kClosingPrice = 1;
constexpr std::int32_t kBidPrice = 2;
// The bid is noted once in four weeks only.
constexpr std::size_t kWeeksBetweenBids = 4;

double PriceOf(std::int64_t cents) { return static_cast<double>(cents) / 100; }

std::vector<std::int64_t> WalkOf(const ItemRow& item, std::size_t weeks, Dice& dice) {
  std::vector<std::int64_t> prices = {item.first_price_cents};
  // The anchor in parts of a cent, or a year's growth would be lost week by week.
  std::int64_t anchor = item.first_price_cents * kWhole;
  while (prices.size() < weeks) {
    anchor += anchor / kWhole * item.yearly_growth / kWeeksAYear;
    const std::int64_t last = prices.back();
    const std::int64_t swing = last * dice.Roll(-item.weekly_swing, item.weekly_swing) / kWhole;
    prices.push_back(std::max(kLowestCents, last + swing + (anchor / kWhole - last) / kPull));
  }
  return prices;
}

}  // namespace

Market::Market(std::int32_t first_day, std::int32_t last_day, Dice& dice) : first_day_(first_day) {
  const auto weeks = static_cast<std::size_t>((last_day - first_day) / kDaysAWeek) + 1;
  for (const ItemRow& item : kItems) {
    weekly_cents_.push_back(WalkOf(item, weeks, dice));
  }
}

std::int64_t Market::PriceCents(std::int32_t item, std::int32_t day) const {
  const auto& prices = weekly_cents_[static_cast<std::size_t>(item) - 1];
  const auto week = static_cast<std::size_t>((day - first_day_) / kDaysAWeek);
  return prices[std::min(week, prices.size() - 1)];
}

double Market::LatestPrice(std::int32_t item) const {
  return PriceOf(weekly_cents_[static_cast<std::size_t>(item) - 1].back());
}

Date Market::DateOfWeek(std::size_t week) const {
  return Date{static_cast<double>(first_day_) + static_cast<double>(week * kDaysAWeek)};
}

void Market::Write(StoreBuilder& store) const {
  store.Insert("PriceType", {{"PriceTypeNumber", kClosingPrice},
                             {"PriceTypeName", "Close"},
                             {"PriceTypeAttr", vetlo::kDefaultPriceType}});
  store.Insert("PriceType", {{"PriceTypeNumber", kBidPrice}, {"PriceTypeName", "Bid"}});
  for (std::int32_t number = 0; const ItemTypeRow& type : kItemTypes) {
    store.Insert("AccountItemType", {{"AccountItemTypeNumber", ++number},
                                     {"AccountItemTypeName", std::string(type.name)},
                                     {"BasicAccountType", type.basic_account_type}});
  }
  for (std::int32_t number = 0; const ItemRow& item : kItems) {
    store.Insert("AccountItem", {{"AccountItemNumber", ++number},
                                 {"AccountItemName", std::string(item.name)},
                                 {"AccountItemTypeNumber", item.type}});
    WritePrices(store, number);
  }
}

void Market::WritePrices(StoreBuilder& store, std::int32_t item) const {
  const auto& prices = weekly_cents_[static_cast<std::size_t>(item) - 1];
  const auto write = [&](std::int32_t price_type, std::size_t week, double price) {
    store.Insert("PriceRecord", {{"AccountItemNumber", item},
                                 {"PriceTypeNumber", price_type},
                                 {"PriceDate", DateOfWeek(week)},
                                 {"Price", price}});
  };
  for (std::size_t week = 0; week < prices.size(); ++week) {
    write(kClosingPrice, week, PriceOf(prices[week]));
    if (week % kWeeksBetweenBids == 0) {
      write(kBidPrice, week, PriceOf(prices[week] - prices[week] / 100));
    }
  }
  store.Insert("LatestPriceInfo", {{"AccountItemNumber", item},
                                   {"PriceDate", DateOfWeek(prices.size() - 1)},
                                   {"Price", LatestPrice(item)}});
}

}  // namespace quillmarsh
