#include "quillmarsh/sample/household.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "quillmarsh/sample/budgets.h"
#include "quillmarsh/sample/life.h"
#include "quillmarsh/sample/scheduled_payments.h"
#include "quillmarsh/sample/settings_rows.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

using vetlo::StoreBuilder;

// One further shop for so many in the square root of all transactions.
constexpr std::int64_t kFurtherShopsPerRoot = 4;
// One in so many everyday records gets into the ledger late.
constexpr std::int64_t kLateIsOneIn = 40;
constexpr std::int64_t kLatestEntryDays = 9;

void CheckPlan(const HouseholdPlan& plan) {
  constexpr double kLongestYear = 366;
  const double today = plan.today.days;
  // The first day of the history, and the last scheduled payment.
  const bool has_dates = vetlo::IsRealDate({today - kLongestYear * (plan.years + 1)}) &&
                         vetlo::IsRealDate({today + kLongestYear});
  if (!has_dates || plan.years < kFewestYears || plan.years > kMostYears ||
      plan.transactions < kFewestTransactions || plan.transactions > kMostTransactions) {
    throw vetlo::Failure(vetlo::FailureNumber::kInvalidCall, "no such household");
  }
}

std::int32_t FurtherShops(std::int64_t transactions) {
  const auto root = static_cast<std::int64_t>(std::sqrt(static_cast<double>(transactions)));
  return static_cast<std::int32_t>(std::min<std::int64_t>(
      root / kFurtherShopsPerRoot, static_cast<std::int64_t>(kMostFurtherShops)));
}

void WritePayees(StoreBuilder& store, std::int32_t further_shops) {
  std::int32_t number = 0;
  const auto write = [&](std::string name) {
    store.Insert("Payee", {{"PayeeNumber", ++number}, {"PayeeName", std::move(name)}});
  };
  for (const PayeeRow& payee : kPayees) {
    write(std::string(payee.name));
  }
  constexpr std::size_t kKinds = std::size(kFurtherShops);
  for (std::size_t i = 0; i < static_cast<std::size_t>(further_shops); ++i) {
    write(std::string(kShopkeepers[i / kKinds]).append(kFurtherShops[i % kKinds].suffix));
  }
}

void WriteCategories(StoreBuilder& store) {
  for (const CategoryRow& row : kCategories) {
    const CategoryKey key = CategoryOf(row.path);
    if (key.subcategory == 0) {
      store.Insert("Category", {{"CategoryNumber", key.category},
                                {"CategoryName", std::string(row.path)},
                                {"CategoryType", row.type},
                                {"CategoryAttr", row.attr}});
    } else {
      store.Insert("SubCategory",
                   {{"SubCategoryNumber", key.subcategory},
                    {"SubCategoryName", std::string(row.path.substr(row.path.find(':') + 1))},
                    {"CategoryNumber", key.category}});
    }
  }
}

void WriteClassifications(StoreBuilder& store) {
  for (std::int32_t number = 0; const std::string_view name : kClassifications) {
    store.Insert("Classification",
                 {{"ClassificationNumber", ++number}, {"ClassificationName", std::string(name)}});
  }
  for (std::int32_t item = 0; const ClassificationRow& row : kClassificationItems) {
    ++item;
    store.Insert("ClassificationItem", {{"ClassificationItemNumber", item},
                                        {"ClassificationItemName", std::string(row.name)},
                                        {"ClassificationNumber", row.classification}});
    for (std::int32_t i = 0; const std::string_view name : row.sub_items) {
      const std::int32_t sub_item = SubItemNumber(item, i++);
      if (!name.empty()) {
        store.Insert("ClassificationSubItem", {{"ClassificationSubItemNumber", sub_item},
                                               {"ClassificationSubItemName", std::string(name)},
                                               {"ClassificationItemNumber", item}});
      }
    }
  }
}

void WriteAssociatedAccounts(StoreBuilder& store) {
  for (const AssociatedPair& pair : kAssociatedPairs) {
    store.Insert("AssociatedAccountInfo",
                 {{"AccountNumber", pair.account}, {"AssociatedAccountNumber", pair.cash_account}});
  }
}

// The occurrences of all rhythms in a month. What falls behind the end of the last month has not
// happened yet, unless it is the only time that it does.
std::vector<Event> RhythmicEvents(const Pace& pace, const Month& month) {
  std::vector<Event> events;
  for (std::size_t i = 0; i < Rhythms().size(); ++i) {
    const std::int64_t times = pace.Occurrences(i, month.index);
    for (std::int64_t k = 0; k < times; ++k) {
      const std::int32_t last_of_month = std::max(month.last_day, month.first_day + 27);
      const auto step = static_cast<std::int32_t>(k * 28 / times);
      std::int32_t day = month.first_day + (Rhythms()[i].day - 1 + step) % 31;
      day = std::min(day, last_of_month);
      if (day <= month.last_day || pace.Occurrences(i) == 1) {
        day = std::min(day, month.last_day);
        events.push_back({day, day, false, i});
      }
    }
  }
  return events;
}

// Draws what happens on no fixed day.
class EverydayDraw {
 public:
  explicit EverydayDraw(Dice& dice) : dice_(dice) {
    for (const Everyday& everyday : EverydayLife()) {
      all_weights_ += everyday.weight;
      up_to_.push_back(all_weights_);
    }
  }

  Event Draw(const Month& month) {
    const auto found = std::ranges::lower_bound(up_to_, dice_.Roll(1, all_weights_));
    const auto day = static_cast<std::int32_t>(dice_.Roll(month.first_day, month.last_day));
    const std::int64_t late = dice_.OneIn(kLateIsOneIn) ? dice_.Roll(1, kLatestEntryDays) : 0;
    return {day, std::min(month.last_day, day + static_cast<std::int32_t>(late)), true,
            static_cast<std::size_t>(found - up_to_.begin())};
  }

 private:
  Dice& dice_;
  std::vector<std::int64_t> up_to_;
  std::int64_t all_weights_ = 0;
};

std::int64_t RecordsOf(const Event& event) {
  return event.everyday ? RecordsOf(EverydayLife()[event.index].kind)
                        : RecordsOf(Rhythms()[event.index].action);
}

// All that happens in a month in the order in which it is entered, up to so many records.
std::vector<Event> EventsOf(const Pace& pace, const Month& month, std::int64_t records,
                            EverydayDraw& everyday) {
  std::vector<Event> events = RhythmicEvents(pace, month);
  for (const Event& event : events) {
    records -= RecordsOf(event);
  }
  while (records > 0) {
    const Event event = everyday.Draw(month);
    if (RecordsOf(event) <= records) {
      records -= RecordsOf(event);
      events.push_back(event);
    }
  }
  std::ranges::stable_sort(events, {}, &Event::entered);
  return events;
}

void Live(Life& life, Ledger& ledger, const Pace& pace, Dice& dice) {
  EverydayDraw everyday(dice);
  life.Begin();
  // What left nothing to record is made up for in the next month, after the last one on its spot.
  for (const Month& month : pace.Months()) {
    const std::int64_t missing = pace.RecordsUpTo(month) - ledger.Written();
    for (const Event& event : EventsOf(pace, month, missing, everyday)) {
      life.Happen(event, month);
    }
  }
  const Month& last = pace.Months().back();
  while (ledger.Written() < pace.AllRecords()) {
    const Event event = everyday.Draw(last);
    if (ledger.Written() + RecordsOf(event) <= pace.AllRecords()) {
      life.Happen(event, last);
    }
  }
}

}  // namespace

void WriteHousehold(StoreBuilder& store, const HouseholdPlan& plan) {
  CheckPlan(plan);
  Dice dice(plan.seed);
  const Pace pace(plan, ScheduledPaymentCount());
  const Market market(pace.FirstDay(), pace.LastDay(), dice);
  Ledger ledger(store, [&plan](std::int64_t written) {
    if (plan.progress) {
      plan.progress(written, plan.transactions);
    }
  });

  const std::int32_t further_shops = FurtherShops(plan.transactions);
  WriteCategories(store);
  WritePayees(store, further_shops);
  WriteClassifications(store);
  WriteAssociatedAccounts(store);
  market.Write(store);
  Life life(ledger, market, pace, further_shops, dice);
  Live(life, ledger, pace, dice);
  WriteScheduledPayments(store, ledger, pace.LastDay());
  ledger.WriteAccounts(market);
  WriteBudgets(store, pace);
  WriteSettingsRows(store, plan);
  if (plan.progress) {
    plan.progress(plan.transactions, plan.transactions);
  }
}

}  // namespace quillmarsh
