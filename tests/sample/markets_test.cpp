#include "quillmarsh/sample/markets.h"

#include <gtest/gtest.h>

#include "tests/sample/sample_stores.h"

namespace quillmarsh {
namespace {

constexpr std::int32_t kFirstDay = 46000;

Market MarketOf(std::int32_t days) {
  Dice dice(5);
  return {kFirstDay, kFirstDay + days, dice};
}

TEST(Market, BeginsAtTheFirstPrice) {
  EXPECT_EQ(MarketOf(30).PriceCents(kGrowthFund, kFirstDay), ItemOf(kGrowthFund).first_price_cents);
}

TEST(Market, KeepsAPriceForAWeek) {
  const Market market = MarketOf(30);
  EXPECT_EQ(market.PriceCents(kArdenwickRail, kFirstDay + 6),
            market.PriceCents(kArdenwickRail, kFirstDay));
  EXPECT_NE(market.PriceCents(kArdenwickRail, kFirstDay + 7),
            market.PriceCents(kArdenwickRail, kFirstDay));
}

TEST(Market, HasTheLatestPriceOnTheLastDay) {
  const Market market = MarketOf(30);
  EXPECT_EQ(static_cast<double>(market.PriceCents(kDunmereBond, kFirstDay + 30)) / 100,
            market.LatestPrice(kDunmereBond));
}

TEST(Market, MovesSmoothly) {
  const Market market = MarketOf(20000);
  for (std::int32_t item = 1; item <= static_cast<std::int32_t>(kItemCount); ++item) {
    for (std::int32_t day = kFirstDay; day < kFirstDay + 20000; day += 7) {
      const auto before = static_cast<double>(market.PriceCents(item, day));
      const auto after = static_cast<double>(market.PriceCents(item, day + 7));
      EXPECT_NEAR(after / before, 1, 0.12) << ItemOf(item).name << " on " << day;
    }
  }
}

TEST(Market, WritesAPriceAWeekUpToTheLastDay) {
  vetlo::StoreBuilder builder;
  MarketOf(14).Write(builder);
  std::set<double> days;
  for (const Row& price : RowsOf(*builder.Open(), "PriceRecord")) {
    days.insert(price.Day("PriceDate").days);
  }
  EXPECT_EQ(days, (std::set<double>{kFirstDay, kFirstDay + 7, kFirstDay + 14}));
}

TEST(Market, HasATypeOfItemThatIsNoInvestment) {
  vetlo::StoreBuilder builder;
  MarketOf(14).Write(builder);
  EXPECT_EQ(NumbersOf(*builder.Open(), "AccountItemType", "BasicAccountType"),
            (std::set<std::int32_t>{vetlo::AccountAttrFund, vetlo::AccountAttrPositiveBalance}));
}

}  // namespace
}  // namespace quillmarsh
