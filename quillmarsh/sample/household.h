#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "vetlo/platform/date.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh {

// What a settings row of a report number holds before anybody has touched it.
struct SettingsDefaults {
  std::int32_t report_number = 0;
  vetlo::ChartOrReport output = vetlo::ChartOrReport::kReport;
  std::int32_t chart_type = vetlo::kNothingChosen;
  bool legend = false;
  std::int32_t date_range = 0;
  std::int32_t range_number = 1;
  std::string title;
};

inline constexpr std::int32_t kFewestYears = 1;
inline constexpr std::int32_t kMostYears = 60;
inline constexpr std::int64_t kFewestTransactions = 200;
inline constexpr std::int64_t kMostTransactions = 2'000'000;

struct HouseholdPlan {
  // Whole years of history; its last month is that of `today`, as far as it has gone.
  std::int32_t years = 3;
  // Rows of TransactionRecord, the scheduled patterns included.
  std::int64_t transactions = 5000;
  std::uint64_t seed = 1;
  vetlo::Date today;
  // The settings rows to write, in ascending order of their numbers.
  std::vector<SettingsDefaults> catalogue;
  // Told every now and then how many of all transactions are written; may be empty.
  std::function<void(std::int64_t done, std::int64_t all)> progress;
};

// Fills a store with the life of an invented household: accounts of every type, two salaries and
// what becomes of them, debts, securities, budgets, scheduled payments and settings rows. The same
// plan gives the same rows everywhere. The caller finishes the store.
// A plan outside the limits above, or a `today` that is no date, fails with kInvalidCall.
void WriteHousehold(vetlo::StoreBuilder& store, const HouseholdPlan& plan);

}  // namespace quillmarsh
