#include "vetlo/store/sqlite/table_recordset.h"

#include <array>

#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/select_text.h"

namespace vetlo {
namespace {

// How many sought rows are kept at most.
constexpr std::size_t kMostKnownRows = 4096;

}  // namespace

TableRecordset::TableRecordset(SqliteDatabase& database, const Table& table, RecordsetType type)
    : database_(&database), table_(table), type_(type), shapes_(database.ShapesOf(table)) {}

void TableRecordset::Close() {
  RequireOpen();
  walk_.reset();
  database_ = nullptr;
}

bool TableRecordset::Bof() {
  RequireOpen();
  return position_ == Position::kWalking && Walk().IsEmpty();
}

bool TableRecordset::Eof() {
  RequireOpen();
  return position_ == Position::kWalking && !Walk().OnRow();
}

void TableRecordset::MoveFirst() {
  RequireOpen();
  position_ = Position::kWalking;
  Walk().MoveFirst();
}

void TableRecordset::MoveNext() {
  RequireOpen();
  if (position_ == Position::kNowhere) {
    RaiseNoRow();
  }
  if (position_ == Position::kOnSoughtRow) {
    WalkToSoughtRow();
  }
  Walk().MoveNext();
}

void TableRecordset::MoveLast() {
  RequireOpen();
  position_ = Position::kWalking;
  Walk().MoveLast();
}

std::int32_t TableRecordset::RecordCount() {
  RequireOpen();
  return static_cast<std::int32_t>(database_->connection().QueryInteger(
      "SELECT count(*) FROM \"" + std::string(table_.name) + "\""));
}

void TableRecordset::SetIndex(std::string_view strIndex) {
  RequireOpen();
  Require(type_ == RecordsetType::kByDefault && table_.key != KeyKind::kNone &&
          strIndex == kPrimaryIndex);
  indexed_ = true;
}

void TableRecordset::SeekKey(std::string_view strComparison, std::span<const Variant> keys) {
  RequireOpen();
  Require(indexed_ && strComparison == "=" && !keys.empty() &&
          keys.size() <= static_cast<std::size_t>(table_.key_columns));
  const auto* const number = std::get_if<std::int32_t>(&keys[0]);
  missed_ = number != nullptr ? std::optional(*number) : std::nullopt;
  const bool keeps = number != nullptr && keys.size() == 1 && database_->SnapshotNumber() != 0;
  if (keeps && StandOnKnown(*number)) {
    return;
  }
  std::vector<StoredValue> values;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    values.push_back(StoredForm(keys[i], table_.columns[i].type));
  }
  StandOn(shapes_.ByKey(keys.size()), values);
  if (keeps) {
    sought_ = &known_.insert_or_assign(*number, single_).first->second;
  }
}

void TableRecordset::FindFirst(std::string_view strCriteria) {
  RequireOpen();
  Require(type_ == RecordsetType::kDynaset);
  missed_.reset();
  const ShapedText text =
      ShapeOf("SELECT * FROM " + std::string(table_.name) + " WHERE " + std::string(strCriteria));
  StandOn(database_->ShapeFor(text.shape, SqliteDatabase::TextFrom::kOutside), text.values);
}

bool TableRecordset::NoMatch() {
  RequireOpen();
  return no_match_;
}

Variant TableRecordset::Fields(std::string_view strName) {
  RequireOpen();
  const std::size_t column = shapes_.Rows().ColumnNamed(strName);
  switch (position_) {
    case Position::kWalking:
      return Walk().Value(column);
    case Position::kOnSoughtRow:
      return SoughtValue(column);
    case Position::kNowhere:
      break;
  }
  RaiseNoRow();
}

std::string TableRecordset::PlaceOf(std::string_view strName) {
  const std::size_t column = shapes_.Rows().ColumnNamed(strName);
  return shapes_.Rows().PlaceOf(column, CurrentRowId());
}

void TableRecordset::AddNew() {
  RequireOpen();
  change_ = Change::kAdding;
  changes_.clear();
}

void TableRecordset::Edit() {
  static_cast<void>(CurrentRowId());  // there must be a row to change
  change_ = Change::kEditing;
  changes_.clear();
}

void TableRecordset::SetField(std::string_view strName, const Variant& value) {
  RequireOpen();
  Require(change_ != Change::kNone);
  const Column& column = table_.columns[shapes_.Rows().ColumnNamed(strName)];
  changes_.insert_or_assign(std::string(column.name), StoredForm(value, column.type));
}

void TableRecordset::Update() {
  RequireOpen();
  Require(change_ != Change::kNone && database_->SnapshotNumber() == 0);
  if (change_ == Change::kEditing && changes_.empty()) {
    change_ = Change::kNone;
    return;
  }
  Require(!changes_.empty());
  const bool adding = change_ == Change::kAdding;
  std::string names;
  std::string marks;
  std::string assignments;
  for (const auto& [name, value] : changes_) {
    const std::string_view comma = names.empty() ? "" : ", ";
    names.append(comma).append(name);
    marks.append(comma).append("?");
    assignments.append(comma).append(name).append(" = ?");
  }
  const std::string table(table_.name);
  Statement statement(database_->connection().handle(),
                      adding ? "INSERT INTO " + table + " (" + names + ") VALUES (" + marks + ")"
                             : "UPDATE " + table + " SET " + assignments + " WHERE rowid = ?");
  int parameter = 0;
  for (const auto& [name, value] : changes_) {
    statement.Bind(++parameter, value);
  }
  if (!adding) {
    statement.Bind(++parameter, CurrentRowId());
  }
  statement.Step();
  change_ = Change::kNone;
  if (!adding) {
    StandOnRow(CurrentRowId());
  }
}

void TableRecordset::Delete() {
  const std::int64_t row = CurrentRowId();
  Require(database_->SnapshotNumber() == 0);
  Statement statement(database_->connection().handle(),
                      "DELETE FROM " + std::string(table_.name) + " WHERE rowid = ?");
  statement.Bind(1, row);
  statement.Step();
  change_ = Change::kNone;
  StandNowhere();
}

void TableRecordset::StandNowhere() {
  known_.clear();
  sought_ = &single_;
  single_ = SoughtRow{};
  walk_.reset();
  position_ = Position::kNowhere;
}

// On a row whose values are all to be read anew.
void TableRecordset::StandOnRow(std::int64_t rowid) {
  known_.clear();
  sought_ = &single_;
  single_ = SoughtRow{true, rowid, std::vector<Variant>(table_.columns.size())};
  sought_by_ = &shapes_.Rows();
  position_ = Position::kOnSoughtRow;
}

void TableRecordset::RequireOpen() const {
  if (database_ == nullptr) {
    throw Failure(FailureNumber::kObjectClosed);
  }
}

void TableRecordset::Require(bool possible) const {
  if (!possible) {
    throw Failure(FailureNumber::kInvalidCall,
                  "not possible on the table " + std::string(table_.name) + " as it was opened");
  }
}

Cursor& TableRecordset::Walk() {
  if (walk_ == nullptr) {
    walk_ = std::make_unique<Cursor>(shapes_.Rows(), std::vector<StoredValue>{});
  }
  return *walk_;
}

void TableRecordset::StandOn(Shape& shape, const std::vector<StoredValue>& values) {
  position_ = Position::kNowhere;
  no_match_ = true;
  sought_ = &single_;
  sought_->found = false;
  sought_by_ = &shape;
  // The row's values are taken at once, so that a recordset that is kept holds nothing of the
  // store: all of them, or once it is known which are read, those.
  const ColumnSet known = shape.learned();
  std::unique_ptr<PreparedSelect> select =
      shape.Take(known == 0 ? AllColumns(shape.plan()) : known, Direction::kForward);
  int parameter = 0;
  for (const StoredValue& value : values) {
    select->statement.Bind(++parameter, value);
  }
  if (select->statement.Step()) {
    sought_->rowid = select->statement.Integer(0);
    sought_->values.assign(table_.columns.size(), Empty{});
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      if (select->positions[i] >= 0) {
        // What cannot be read is left for whoever asks for it.
        ResumeNext([&] {
          sought_->values[i] =
              select->statement.Value(select->positions[i], table_.columns[i].type);
        });
      }
    }
    sought_->found = true;
    position_ = Position::kOnSoughtRow;
    no_match_ = false;
  }
  sought_by_->GiveBack(std::move(select));
}

bool TableRecordset::StandOnKnown(std::int64_t key) {
  if (known_in_snapshot_ != database_->SnapshotNumber() || known_.size() >= kMostKnownRows) {
    sought_ = &single_;
    known_.clear();
    known_in_snapshot_ = database_->SnapshotNumber();
  }
  const auto known = known_.find(key);
  if (known == known_.end()) {
    return false;
  }
  sought_ = &known->second;
  no_match_ = !sought_->found;
  position_ = sought_->found ? Position::kOnSoughtRow : Position::kNowhere;
  return true;
}

void TableRecordset::WalkToSoughtRow() {
  position_ = Position::kWalking;
  Walk().MoveFirst();
  while (Walk().OnRow() && Walk().RowId(0) != sought_->rowid) {
    Walk().MoveNext();
  }
}

Variant TableRecordset::SoughtValue(std::size_t column) {
  Variant& value = sought_->values[column];
  sought_by_->Learn(ColumnSet{1} << column);
  if (IsEmpty(value)) {
    value = sought_by_->LookUp(column, sought_->rowid);
  }
  return value;
}

std::int64_t TableRecordset::CurrentRowId() {
  RequireOpen();
  if (position_ == Position::kOnSoughtRow) {
    return sought_->rowid;
  }
  if (position_ == Position::kNowhere || !Walk().OnRow()) {
    RaiseNoRow();
  }
  return Walk().RowId(0);
}

void TableRecordset::RaiseNoRow() const {
  const std::string row = missed_ ? "row " + std::to_string(*missed_) : "such row";
  throw Failure(FailureNumber::kNoCurrentRecord,
                "the table " + std::string(table_.name) + " has no " + row + std::string(kMendIt));
}

}  // namespace vetlo
