#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "vetlo/store/database.h"
#include "vetlo/store/sqlite/sqlite_database.h"

namespace vetlo {

// A row that was sought: its number and the values that were read of it.
struct SoughtRow {
  bool found = false;
  std::int64_t rowid = 0;
  std::vector<Variant> values;  // one for each column of the table, empty where not read
};

// A table opened by its name: as a table recordset, on which Seek works, or as a dynaset, on which
// FindFirst does.
class TableRecordset : public Recordset {
 public:
  TableRecordset(SqliteDatabase& database, const Table& table, RecordsetType type);

  void Close() override;
  bool Bof() override;
  bool Eof() override;
  void MoveFirst() override;
  void MoveNext() override;
  void MoveLast() override;
  std::int32_t RecordCount() override;
  void SetIndex(std::string_view strIndex) override;
  void SeekKey(std::string_view strComparison, std::span<const Variant> keys) override;
  void FindFirst(std::string_view strCriteria) override;
  bool NoMatch() override;
  Variant Fields(std::string_view strName) override;
  std::string PlaceOf(std::string_view strName) override;
  std::string PlaceOfRow() override { return shapes_.Rows().PlaceOfRow(CurrentRowId()); }
  void AddNew() override;
  void Edit() override;
  void SetField(std::string_view strName, const Variant& value) override;
  void Update() override;
  void Delete() override;

 private:
  enum class Position { kWalking, kOnSoughtRow, kNowhere };
  enum class Change { kNone, kAdding, kEditing };

  void RequireOpen() const;
  void Require(bool possible) const;
  Cursor& Walk();
  // Stands on the first row that the text finds, or nowhere.
  void StandOn(Shape& shape, const std::vector<StoredValue>& values);
  // The same of a row that was sought by this key before, while the store stands still; false
  // where there is none.
  bool StandOnKnown(std::int64_t key);
  void StandOnRow(std::int64_t rowid);
  void StandNowhere();
  // Takes up the walk at the sought row.
  void WalkToSoughtRow();
  Variant SoughtValue(std::size_t column);
  [[nodiscard]] std::int64_t CurrentRowId();
  [[noreturn]] void RaiseNoRow() const;

  SqliteDatabase* database_;  // null once closed
  const Table& table_;
  RecordsetType type_;
  TableShapes& shapes_;
  std::unique_ptr<Cursor> walk_;
  Position position_ = Position::kWalking;
  SoughtRow* sought_ = &single_;
  SoughtRow single_;
  // The rows sought within one snapshot, by a key of one whole number.
  std::unordered_map<std::int64_t, SoughtRow> known_;
  std::int64_t known_in_snapshot_ = 0;
  std::optional<std::int32_t> missed_;  // the whole number that was sought last, for its failure
  Shape* sought_by_ = nullptr;
  bool indexed_ = false;
  bool no_match_ = false;
  Change change_ = Change::kNone;
  std::map<std::string, StoredValue> changes_;  // by column
};

}  // namespace vetlo
