#pragma once

#include <sqlite3.h>

#include <compare>
#include <cstdint>
#include <memory>
#include <span>

namespace vetlo {

// The number of a row that may be meant, with the date by which it is ordered among others.
struct DatedRow {
  double date = 0;
  std::int64_t number = 0;

  friend auto operator<=>(const DatedRow&, const DatedRow&) = default;
};

// The rows among which a statement is to look for those that it asks for.
struct FoundRows {
  std::span<const DatedRow> dated;    // in their order
  std::span<const DatedRow> unsure;   // behind them, in any order
  std::shared_ptr<const void> owner;  // of what the spans look at

  [[nodiscard]] std::size_t Size() const { return dated.size() + unsure.size(); }
};

// The function that gives a statement such rows as a table of two columns:
//
//   SELECT ... FROM sqlite_found_rows(?) AS f CROSS JOIN Account WHERE Account.rowid = f.number
//
// `place` rises from one to the next, and a statement that is ordered by it alone, up or down,
// needs no sorting.
inline constexpr const char* kFoundRowsFunction = "sqlite_found_rows";

// Makes the function known to a connection, before anything is forbidden to it.
void OfferFoundRows(sqlite3* handle);

// The rows must outlive the statement's run.
void BindFoundRows(sqlite3_stmt* statement, int parameter, const FoundRows& rows);

}  // namespace vetlo
