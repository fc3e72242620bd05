#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "vetlo/store/sqlite/connection.h"
#include "vetlo/store/sqlite/found_rows.h"

namespace vetlo {

// The days between which dates lie, both included; open where there is none.
struct DateBounds {
  std::optional<double> from;
  std::optional<double> to;
};

// The rows of a table by the values of some columns, those of one value in the order of their
// dates: what indexes would tell. A row whose value is no whole number, or whose date is no number,
// is told with every value, since it might be meant; one without a value with none.
class RowLists : public std::enable_shared_from_this<RowLists> {
 public:
  enum class Keep { kByValue, kByValueAndAll };

  // Columns count from 0; just those that are named are filled.
  RowLists(std::vector<std::size_t> columns, Keep keep);

  // Takes the row that a statement stands on: its number, its date, and the columns in their order.
  void Add(const Statement& row);
  // To be called behind the last row.
  void Finish();

  // The rows of a value, and all that were taken, within the bounds.
  [[nodiscard]] FoundRows OfValue(std::size_t column, std::int64_t value, DateBounds bounds) const;
  [[nodiscard]] FoundRows All(DateBounds bounds) const;

 private:
  using Rows = std::vector<DatedRow>;
  struct Column {
    std::unordered_map<std::int64_t, Rows> by_value;
    Rows unsure;
  };

  std::vector<std::size_t> columns_;
  std::vector<Column> lists_;  // by column
  bool keeps_all_;
  Rows all_;
  Rows all_unsure_;
};

}  // namespace vetlo
