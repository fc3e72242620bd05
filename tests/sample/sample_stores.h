#pragma once

#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quillmarsh/sample/household.h"
#include "vetlo/store/database.h"

namespace quillmarsh {

// A row as the store hands it out, by column.
class Row {
 public:
  explicit Row(vetlo::Recordset& rec, const vetlo::Table& table) : table_(&table) {
    for (const vetlo::Column& column : table.columns) {
      values_.push_back(rec.Fields(column.name));
    }
  }

  [[nodiscard]] const vetlo::Variant& operator[](std::string_view column) const {
    return values_[static_cast<std::size_t>(vetlo::FindColumn(*table_, column) -
                                            table_->columns.data())];
  }
  [[nodiscard]] bool IsNull(std::string_view column) const {
    return vetlo::IsNull((*this)[column]);
  }
  [[nodiscard]] std::int32_t Long(std::string_view column) const {
    return vetlo::ToLong((*this)[column]);
  }
  // 0 for Null.
  [[nodiscard]] std::int32_t Number(std::string_view column) const {
    return IsNull(column) ? 0 : Long(column);
  }
  [[nodiscard]] vetlo::Currency Money(std::string_view column) const {
    return vetlo::ToCurrency((*this)[column]);
  }
  [[nodiscard]] double Double(std::string_view column) const {
    return vetlo::ToDouble((*this)[column]);
  }
  [[nodiscard]] vetlo::Date Day(std::string_view column) const {
    return vetlo::ToDate((*this)[column]);
  }
  [[nodiscard]] std::string Text(std::string_view column) const {
    return vetlo::ToText((*this)[column]);
  }

  friend bool operator==(const Row& a, const Row& b) { return a.values_ == b.values_; }

 private:
  const vetlo::Table* table_;
  std::vector<vetlo::Variant> values_;
};

using Rows = std::vector<Row>;

// All rows of a table in their order.
inline Rows RowsOf(vetlo::Database& store, std::string_view table) {
  Rows rows;
  vetlo::ForEachRowOf(store, table, [&](vetlo::Recordset& rec) {
    rows.emplace_back(rec, *vetlo::FindTable(table));
  });
  return rows;
}

// The values of a column of whole numbers that is not Null.
inline std::set<std::int32_t> NumbersOf(vetlo::Database& store, std::string_view table,
                                        std::string_view column) {
  std::set<std::int32_t> numbers;
  for (const Row& row : RowsOf(store, table)) {
    if (!row.IsNull(column)) {
      numbers.insert(row.Long(column));
    }
  }
  return numbers;
}

inline std::set<std::int32_t> NumbersUpTo(std::int32_t last) {
  std::set<std::int32_t> numbers;
  for (std::int32_t i = 0; i <= last; ++i) {
    numbers.insert(i);
  }
  return numbers;
}

// The middle of a month, so that the last month of the history is half over.
inline HouseholdPlan PlanOf(std::int32_t years, std::int64_t transactions, std::uint64_t seed = 1) {
  HouseholdPlan plan;
  plan.years = years;
  plan.transactions = transactions;
  plan.seed = seed;
  plan.today = vetlo::DateSerial(2026, 3, 14);
  return plan;
}

inline std::unique_ptr<vetlo::Database> StoreOf(const HouseholdPlan& plan) {
  vetlo::StoreBuilder builder;
  WriteHousehold(builder, plan);
  return builder.Open();
}

// The usual household, written once.
inline vetlo::Database& UsualStore() {
  static const std::unique_ptr<vetlo::Database> store = StoreOf(PlanOf(3, 5000));
  return *store;
}

// Sizes at the edges of what a plan may ask for, and between.
struct Size {
  std::int32_t years;
  std::int64_t transactions;

  friend std::ostream& operator<<(std::ostream& out, const Size& size) {
    return out << size.years << " years, " << size.transactions << " transactions";
  }
};

inline constexpr Size kSizes[] = {{1, 200},   {60, 200},   {3, 1000}, {3, 5000},
                                  {60, 5000}, {20, 12000}, {1, 12000}};

}  // namespace quillmarsh
