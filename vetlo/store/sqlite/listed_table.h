#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/connection.h"
#include "vetlo/store/sqlite/row_lists.h"

namespace vetlo {

// What is known of a table whose rows are found by lists.
struct ListedColumns {
  const Column* date = nullptr;  // by which rows are ordered
  const Column* kind = nullptr;  // of which there are but a few
  const Column* rare = nullptr;  // in which few rows have a value; null where there is none
  // By which rows are listed; first those whose values fewest rows share.
  std::vector<const Column*> listed;
  std::vector<const Column*> indexed;  // by which the engine finds them itself
};

// Some of a table's rows: those that meet conditions with these values.
struct Part {
  std::string conditions;
  std::vector<StoredValue> values;
};

// The lists of one table. Making lists takes one walk over the table, the time of some three
// questions, and 16 bytes a row and column. They are forgotten where the store changes.
class ListedTable {
 public:
  ListedTable(const Table& table, ListedColumns columns)
      : table_(table), columns_(std::move(columns)), whole_(columns_.listed.size() + 1) {}

  [[nodiscard]] const Table& table() const { return table_; }
  [[nodiscard]] const ListedColumns& columns() const { return columns_; }

  void Forget();

  [[nodiscard]] std::int64_t RowCount(sqlite3* handle);
  // Going to a row by its number takes as long as walking over several: up to so many it is quicker
  // to go to each than to walk over the table.
  [[nodiscard]] std::int64_t FewRows(sqlite3* handle);

  // The rows of a part by all columns, listed now where they are not known; null where they are
  // not few.
  const RowLists* FewOf(sqlite3* handle, const Part& part);
  [[nodiscard]] bool IsKnown(const Part& part) const { return Find(part) != nullptr; }
  // All rows by a column, or without one by their date alone, where that is known.
  [[nodiscard]] const RowLists* Whole(std::optional<std::size_t> column) const;
  // The same, listed once that was worth it: walks over the table have cost as much as the lists
  // by all columns that they could have used. Null as long as the engine had better walk.
  const RowLists* WholeIfWorthIt(sqlite3* handle, std::optional<std::size_t> column);
  // The rows of a period, listed now as a part, unless so many periods are asked for that the
  // whole table is worth it.
  const RowLists* FewOfPeriod(sqlite3* handle, const Part& period);

 private:
  struct KnownPart {
    Part part;
    std::shared_ptr<const RowLists> rows;  // null where they are too many
  };
  struct WholeList {
    bool asked = false;
    std::shared_ptr<const RowLists> rows;  // null where there are none yet
  };

  [[nodiscard]] std::size_t Place(std::optional<std::size_t> column) const {
    return column.value_or(columns_.listed.size());
  }
  [[nodiscard]] const KnownPart* Find(const Part& part) const;
  [[nodiscard]] std::shared_ptr<const RowLists> List(sqlite3* handle, const Part& part,
                                                     const std::vector<std::size_t>& by_columns,
                                                     RowLists::Keep keep, std::int64_t most) const;

  const Table& table_;
  ListedColumns columns_;
  std::optional<std::int64_t> row_count_;
  std::vector<KnownPart> parts_;
  std::vector<WholeList> whole_;  // by column, and last by the date alone
  int walks_ = 0;                 // since the last lists of the whole table
};

}  // namespace vetlo
