#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "vetlo/store/sqlite/listed_table.h"
#include "vetlo/store/sqlite/schema.h"
#include "vetlo/store/sqlite/select_text.h"

namespace vetlo {

// How the rows of a plan can be found: which of a text's values are held against which column.
struct RowSearch {
  ListedTable* table = nullptr;
  std::optional<std::size_t> column;  // of the listed ones, the one to be looked up
  std::size_t value = 0;              // that it equals
  std::vector<std::size_t> kinds;     // one of which is the row's; none where it may be any
  std::optional<std::size_t> from;    // of the table's date
  std::optional<std::size_t> to;
  bool in_order = false;  // whether the plan's order is that of the dates

  [[nodiscard]] bool IsOfAPeriod() const { return from && to; }
};

// Stands in for the indexes that a store lacks: it lists the rows of a table by the values that
// texts ask for, and keeps the lists for as long as the store does not change. What it finds are
// the rows that may be meant. A statement still holds each of them against all conditions, so that
// no answer depends on it.
//
// The first of these lists is made that serves a text:
//   - of one with a first and a last day the rows of that period, by all columns, where they are
//     few;
//   - of one that asks for some kinds of rows those of the kinds, in the same way;
//   - of one that asks for a value in a column in which few rows have any, those that have one;
//   - all rows of the table by a column, once that is worth it.
class RowFinder {
 public:
  // Of a store that lacks indexes; the columns are those of ColumnsOfMissingIndexes.
  RowFinder(sqlite3* handle, const std::vector<IndexedColumn>& columns);

  // Rows are found within a snapshot alone, in which nothing changes.
  void BeginSnapshot();
  void EndSnapshot() noexcept { in_snapshot_ = false; }

  // None where an index serves, or where rows cannot be found.
  [[nodiscard]] std::optional<RowSearch> SearchFor(const SelectPlan& plan) const;

  // None where the engine had better walk over the table. Fails as a statement does.
  std::optional<FoundRows> Find(const RowSearch& search, std::span<const StoredValue> values);

 private:
  void ForgetWhatHasChanged();
  // The lists to look it up in; null where there are none.
  const RowLists* ListsFor(const RowSearch& search, std::span<const StoredValue> values);

  sqlite3* handle_;
  std::vector<std::unique_ptr<ListedTable>> tables_;
  std::optional<Statement> version_;
  std::int64_t known_version_ = 0;
  std::int64_t known_changes_ = 0;
  bool in_snapshot_ = false;
  bool is_fresh_ = false;  // nothing is known that has changed before this snapshot
};

}  // namespace vetlo
