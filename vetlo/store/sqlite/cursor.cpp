#include "vetlo/store/sqlite/cursor.h"

#include <algorithm>

#include "vetlo/store/database.h"

namespace vetlo {
namespace {

// How many rows a reader is watched before the columns that it left alone are dropped.
constexpr std::int64_t kRowsToLearnFrom = 16;

// How many instructions of the engine those rows may have been for the walk to begin again with
// fewer columns. Rows that stand in an index in their order are a few dozen each. More than this
// is a sort, which has fetched the columns of all rows before it shows the first, or a search, in
// which the columns of the rows that it finds are the smaller part: neither is worth doing twice.
constexpr std::int64_t kMostWorkToRepeat = 10'000;

ColumnSet Bit(std::size_t column) { return ColumnSet{1} << column; }

[[noreturn]] void RaiseNoRow() { throw Failure(FailureNumber::kNoCurrentRecord); }

}  // namespace

std::string PlaceText(const Table& table, const Column& column, std::int64_t rowid) {
  return std::string(table.name) + "." + std::string(column.name) + ", row " +
         std::to_string(rowid);
}

PreparedSelect::PreparedSelect(sqlite3* handle, const SelectPlan& plan, ColumnSet wanted,
                               Direction wanted_direction, RowsFrom taken_from)
    : statement(handle, SelectSql(plan, wanted, wanted_direction, taken_from)),
      columns(wanted),
      direction(wanted_direction),
      from(taken_from) {
  int next = plan.IsPlain() ? static_cast<int>(plan.sources.size()) : 0;
  for (std::size_t i = 0; i < plan.columns.size(); ++i) {
    const bool selected = !plan.IsPlain() || (wanted & Bit(i)) != 0;
    positions.push_back(selected ? next++ : -1);
  }
}

Shape::Shape(sqlite3* handle, RowFinder* finder, std::string_view text)
    : plan_(PlanOf(text)), handle_(handle), finder_(finder) {
  if (finder_ != nullptr) {
    search_ = finder_->SearchFor(plan_);
  }
}

std::optional<FoundRows> Shape::Find(std::span<const StoredValue> values) {
  return search_ ? finder_->Find(*search_, values) : std::nullopt;
}

RowsFrom Shape::TakenFrom(const std::optional<FoundRows>& found) const {
  if (!found) {
    return RowsFrom::kTable;
  }
  return search_->in_order && found->unsure.empty() ? RowsFrom::kFoundRowsInOrder
                                                    : RowsFrom::kFoundRows;
}

std::size_t Shape::ColumnNamed(std::string_view name) const {
  const auto& columns = plan_.columns;
  const auto exact =
      std::ranges::find_if(columns, [&](const SelectColumn& c) { return c.name == name; });
  if (exact != columns.end()) {
    return static_cast<std::size_t>(exact - columns.begin());
  }
  const auto found = std::ranges::find_if(
      columns, [&](const SelectColumn& c) { return EqualsIgnoringCase(c.name, name); });
  if (found == columns.end()) {
    throw Failure(FailureNumber::kNoSuchColumn, "no column " + std::string(name));
  }
  return static_cast<std::size_t>(found - columns.begin());
}

std::unique_ptr<PreparedSelect> Shape::Take(ColumnSet wanted, Direction direction, RowsFrom from) {
  const ColumnSet columns = plan_.IsPlain() ? wanted : AllColumns(plan_);
  const auto found = std::ranges::find_if(idle_, [&](const auto& select) {
    return select->columns == columns && select->direction == direction && select->from == from;
  });
  if (found == idle_.end()) {
    return std::make_unique<PreparedSelect>(handle_, plan_, columns, direction, from);
  }
  std::unique_ptr<PreparedSelect> select = std::move(*found);
  idle_.erase(found);
  return select;
}

void Shape::GiveBack(std::unique_ptr<PreparedSelect> select) noexcept {
  select->statement.Reset();
  // Room is made ahead, so that this can't fail; a statement without room is let go.
  if (idle_.size() < idle_.capacity()) {
    idle_.push_back(std::move(select));
    return;
  }
  ResumeNext([&] { idle_.push_back(std::move(select)); });
}

Variant Shape::LookUp(std::size_t column, std::int64_t rowid) {
  const SelectColumn& wanted = plan_.columns[column];
  auto found = look_ups_.find(column);
  if (found == look_ups_.end()) {
    const SelectSource& source = plan_.sources[wanted.source];
    const std::string sql = "SELECT \"" + std::string(wanted.column->name) + "\" FROM \"" +
                            std::string(source.table->name) + "\" WHERE rowid = ?";
    found = look_ups_.emplace(column, Statement(handle_, sql)).first;
  }
  Statement& statement = found->second;
  statement.Bind(1, rowid);
  const auto reset = [](Statement* s) { s->Reset(); };
  const std::unique_ptr<Statement, decltype(reset)> guard(&statement, reset);
  if (!statement.Step()) {
    RaiseNoRow();
  }
  try {
    return statement.Value(0, wanted.type);
  } catch (const Failure& failure) {
    RaiseUnreadable(failure, column, rowid);
  }
}

void Shape::RaiseUnreadable(const Failure& failure, std::size_t column, std::int64_t rowid) const {
  throw Failure(static_cast<FailureNumber>(failure.number()),
                failure.what() + (": " + PlaceOf(column, rowid)) + std::string(kMendIt));
}

std::string Shape::PlaceOfRow(std::int64_t rowid) const {
  return plan_.IsPlain()
             ? std::string(plan_.sources[0].table->name) + ", row " + std::to_string(rowid)
             : "";
}

std::string Shape::PlaceOf(std::size_t column, std::int64_t rowid) const {
  const SelectColumn& place = plan_.columns[column];
  if (!plan_.IsPlain()) {
    return place.name;
  }
  return PlaceText(*plan_.sources[place.source].table, *place.column, rowid);
}

bool Cursor::OnRow() {
  if (state_ == State::kUnmoved) {
    // A shape that nobody has read yet is watched over its first rows.
    learning_ = shape_.plan().IsPlain() && shape_.learned() == 0;
    Start(learning_ ? AllColumns(shape_.plan()) : shape_.learned(), Direction::kForward);
    empty_ = state_ == State::kPastEnd;
  }
  if (state_ == State::kFailed) {
    throw Failure(FailureNumber::kStoreUnusable, "the store could not be read to the end");
  }
  return state_ == State::kOnRow;
}

bool Cursor::IsEmpty() {
  OnRow();
  return empty_;
}

void Cursor::MoveFirst() {
  if (IsEmpty()) {
    RaiseNoRow();
  }
  const bool there = ordinal_ == 1 && state_ == State::kOnRow;
  if (!there || select_->direction != Direction::kForward) {
    Stop();
    state_ = State::kUnmoved;
    OnRow();
  }
}

void Cursor::MoveNext() {
  if (!OnRow()) {
    RaiseNoRow();
  }
  if (learning_) {
    shown_.push_back(RowIds());
    if (ordinal_ == kRowsToLearnFrom && NarrowToLearned()) {
      return;
    }
  }
  Step();
  SkipShownRows();
}

void Cursor::MoveLast() {
  if (IsEmpty()) {
    RaiseNoRow();
  }
  Stop();
  if (shape_.plan().order.empty()) {
    WalkToLastRow(shape_.learned());
  } else {
    Start(shape_.learned(), Direction::kLastRowFirst);
  }
}

Variant Cursor::Value(std::size_t column) {
  if (!OnRow()) {
    RaiseNoRow();
  }
  read_ |= Bit(column);
  const int position = select_->positions[column];
  if (position < 0) {
    return shape_.LookUp(column, RowIdOfColumn(column));
  }
  try {
    return select_->statement.Value(position, shape_.plan().columns[column].type);
  } catch (const Failure& failure) {
    shape_.RaiseUnreadable(failure, column, RowIdOfColumn(column));
  }
}

std::string Cursor::PlaceOf(std::size_t column) {
  return shape_.PlaceOf(column, OnRow() ? RowIdOfColumn(column) : 0);
}

std::string Cursor::PlaceOfRow() {
  return shape_.PlaceOfRow(shape_.plan().IsPlain() && OnRow() ? RowId(0) : 0);
}

std::int64_t Cursor::RowIdOfColumn(std::size_t column) {
  return shape_.plan().IsPlain() ? RowId(shape_.plan().columns[column].source) : 0;
}

std::int64_t Cursor::RowId(std::size_t source) {
  if (select_ == nullptr) {
    RaiseNoRow();
  }
  return select_->statement.Integer(static_cast<int>(source));
}

void Cursor::Start(ColumnSet columns, Direction direction) {
  state_ = State::kFailed;  // unless a statement is there and its step comes back
  found_ = shape_.Find(values_);
  StartAgain(columns, direction);
}

void Cursor::StartAgain(ColumnSet columns, Direction direction) {
  state_ = State::kFailed;
  select_ = shape_.Take(columns, direction, shape_.TakenFrom(found_));
  ordinal_ = 0;
  int parameter = 0;
  if (found_) {
    select_->statement.Bind(++parameter, *found_);
  }
  for (const StoredValue& value : values_) {
    select_->statement.Bind(++parameter, value);
  }
  if (learning_) {
    select_->statement.TakeWork();
  }
  Step();
}

void Cursor::Stop() noexcept {
  shape_.Learn(read_);
  learning_ = false;
  shown_.clear();
  if (select_ != nullptr) {
    shape_.GiveBack(std::move(select_));
  }
}

void Cursor::Step() {
  state_ = State::kFailed;  // unless the step comes back
  const bool row = select_->statement.Step();
  state_ = row ? State::kOnRow : State::kPastEnd;
  ordinal_ += row ? 1 : 0;
}

// Where the order is free there is no other end to begin at.
void Cursor::WalkToLastRow(ColumnSet columns) {
  Start(columns, Direction::kForward);
  while (state_ == State::kOnRow) {
    Step();
  }
  const std::int64_t rows = ordinal_;
  shape_.GiveBack(std::move(select_));
  StartAgain(columns, Direction::kForward);
  while (ordinal_ < rows && state_ == State::kOnRow) {
    Step();
  }
}

bool Cursor::NarrowToLearned() {
  learning_ = false;
  if (read_ == select_->columns || select_->statement.TakeWork() > kMostWorkToRepeat) {
    shown_.clear();
    return false;
  }
  const std::int64_t ordinal = ordinal_;
  shape_.Learn(read_);
  shape_.GiveBack(std::move(select_));
  StartAgain(read_, Direction::kForward);
  SkipShownRows();
  ordinal_ = ordinal + 1;
  return true;
}

void Cursor::SkipShownRows() {
  while (!learning_ && !shown_.empty() && state_ == State::kOnRow &&
         std::erase(shown_, RowIds()) > 0) {
    Step();
  }
}

std::vector<std::int64_t> Cursor::RowIds() {
  std::vector<std::int64_t> row;
  for (std::size_t i = 0; i < shape_.plan().sources.size(); ++i) {
    row.push_back(RowId(i));
  }
  return row;
}

}  // namespace vetlo
