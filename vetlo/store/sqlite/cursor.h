#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/connection.h"
#include "vetlo/store/sqlite/row_finder.h"
#include "vetlo/store/sqlite/select_text.h"

namespace vetlo {

// "Account.Balance, row 3".
std::string PlaceText(const Table& table, const Column& column, std::int64_t rowid);

// A statement for one set of columns of a plan.
struct PreparedSelect {
  PreparedSelect(sqlite3* handle, const SelectPlan& plan, ColumnSet columns, Direction direction,
                 RowsFrom from);

  Statement statement;
  ColumnSet columns;
  Direction direction;
  RowsFrom from;
  std::vector<int> positions;  // of each of the plan's columns in the result, -1 where left out
};

// All that is kept for the texts of one shape: what they ask for, which of their columns somebody
// has ever read, and the statements that are ready to run.
class Shape {
 public:
  // Fails as PlanOf does. The finder is null where the store has its indexes.
  Shape(sqlite3* handle, RowFinder* finder, std::string_view text);

  // Fails with kBadSqlText for a condition that the engine cannot read.
  void Check() { GiveBack(Take(AllColumns(plan_), Direction::kForward)); }

  [[nodiscard]] const SelectPlan& plan() const { return plan_; }
  [[nodiscard]] sqlite3* handle() const { return handle_; }

  // The columns read so far. A text that nobody has read a row of has learned nothing.
  [[nodiscard]] ColumnSet learned() const { return learned_; }
  void Learn(ColumnSet columns) { learned_ |= columns; }

  // The index of a result column; fails with kNoSuchColumn.
  [[nodiscard]] std::size_t ColumnNamed(std::string_view name) const;

  // A statement that nobody else is using, and its return.
  std::unique_ptr<PreparedSelect> Take(ColumnSet wanted, Direction direction,
                                       RowsFrom from = RowsFrom::kTable);
  void GiveBack(std::unique_ptr<PreparedSelect> select) noexcept;

  // The rows of the first source that may be meant with these values, where they have been found,
  // and how they are taken from there.
  [[nodiscard]] std::optional<FoundRows> Find(std::span<const StoredValue> values);
  [[nodiscard]] RowsFrom TakenFrom(const std::optional<FoundRows>& found) const;

  // One column of a row of a source, found by its rowid.
  Variant LookUp(std::size_t column, std::int64_t rowid);

  // Raises the failure of a column that could not be read, with where it stands in its text.
  [[noreturn]] void RaiseUnreadable(const Failure& failure, std::size_t column,
                                    std::int64_t rowid) const;
  // "Account, row 3" of a row of the first source; empty where a row is of no table.
  [[nodiscard]] std::string PlaceOfRow(std::int64_t rowid) const;
  // "Account.Balance, row 3"; of a sum, which has no row, its name.
  [[nodiscard]] std::string PlaceOf(std::size_t column, std::int64_t rowid) const;

 private:
  SelectPlan plan_;
  sqlite3* handle_;
  RowFinder* finder_;
  std::optional<RowSearch> search_;  // none where no rows can be found
  ColumnSet learned_ = 0;
  std::vector<std::unique_ptr<PreparedSelect>> idle_;
  std::map<std::size_t, Statement> look_ups_;  // by column
};

// Walks the rows of a shape with its values filled in. It selects the columns that readers of the
// shape are known to read, learns which those are while nothing is known yet, and fetches any
// other by the row's own number.
class Cursor {
 public:
  Cursor(Shape& shape, std::vector<StoredValue> values)
      : shape_(shape), values_(std::move(values)) {}
  ~Cursor() { Stop(); }
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  // Stands on the first row where it has not moved yet.
  bool OnRow();
  bool IsEmpty();

  // Each fails with kNoCurrentRecord where there is no row.
  void MoveFirst();
  void MoveNext();
  void MoveLast();
  Variant Value(std::size_t column);
  [[nodiscard]] std::string PlaceOf(std::size_t column);
  [[nodiscard]] std::string PlaceOfRow();
  // The number of the current row in a source; only in a plain plan.
  std::int64_t RowId(std::size_t source);

 private:
  enum class State { kUnmoved, kOnRow, kPastEnd, kFailed };

  // Begins a walk, or begins it again over the same rows.
  void Start(ColumnSet columns, Direction direction);
  void StartAgain(ColumnSet columns, Direction direction);
  void Stop() noexcept;
  void Step();
  // Walks to the end to count the rows, and once more to the last of them.
  void WalkToLastRow(ColumnSet columns);
  // Goes on with the learned columns alone, at the first row not shown yet; false where there is
  // nothing to drop, or where coming back to that row costs more than dropping it saves.
  bool NarrowToLearned();
  void SkipShownRows();
  [[nodiscard]] std::vector<std::int64_t> RowIds();
  // That of the row which a column comes from; 0 for a column of several rows together.
  std::int64_t RowIdOfColumn(std::size_t column);

  Shape& shape_;
  std::vector<StoredValue> values_;
  std::optional<FoundRows> found_;  // what the statement looks at, and therefore behind it
  std::unique_ptr<PreparedSelect> select_;
  State state_ = State::kUnmoved;
  std::int64_t ordinal_ = 0;  // of the current row, the first or the only one shown being 1
  bool empty_ = false;
  ColumnSet read_ = 0;
  bool learning_ = false;
  // The rows shown while learning, which the narrower statement brings once more.
  std::vector<std::vector<std::int64_t>> shown_;
};

}  // namespace vetlo
