#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vetlo/store/database.h"
#include "vetlo/store/sqlite/connection.h"
#include "vetlo/store/sqlite/cursor.h"

namespace vetlo {

class SqliteDatabase;

// What is kept of a table that is opened by its name. Most tables are opened without a row of them
// being read, so each shape is made when it is first asked for.
class TableShapes {
 public:
  TableShapes(SqliteDatabase& database, const Table& table)
      : database_(database), table_(table), by_keys_(static_cast<std::size_t>(table.key_columns)) {}

  // All rows, in the order of the table's key.
  Shape& Rows();
  // The rows of a key, of which the first so many columns are given.
  Shape& ByKey(std::size_t columns);

 private:
  SqliteDatabase& database_;
  const Table& table_;
  Shape* rows_ = nullptr;
  std::vector<Shape*> by_keys_;  // of the first one, two, ... columns
};

// A store in a SQLite database.
class SqliteDatabase : public Database {
 public:
  // The finder is null where the store has its indexes.
  explicit SqliteDatabase(Connection connection, std::unique_ptr<RowFinder> finder = nullptr)
      : connection_(std::move(connection)), finder_(std::move(finder)) {}

  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource, RecordsetType type) override;
  void HoldSnapshot() override;
  void ReleaseSnapshot() noexcept override;
  void BeginTrans() override;
  void CommitTrans() override;
  void Rollback() noexcept override;

  [[nodiscard]] Connection& connection() { return connection_; }
  // Which snapshot is held, 0 where none is: within one nothing changes.
  [[nodiscard]] std::int64_t SnapshotNumber() const {
    return snapshots_ > 0 ? snapshot_number_ : 0;
  }
  // What is kept for a shape of text, made when it is first asked for. A text from outside fails
  // then where the engine cannot read it; one of our own is known to be right.
  enum class TextFrom { kOutside, kThisRoom };
  Shape& ShapeFor(const std::string& shape, TextFrom from);
  TableShapes& ShapesOf(const Table& table);

 private:
  void RequireNoSnapshot() const;
  // Whether the engine has a transaction open: ours, or none where it has undone ours by itself.
  [[nodiscard]] bool InTransaction() const;

  Connection connection_;
  std::unique_ptr<RowFinder> finder_;
  // How a snapshot begins and ends; made for the first one and kept.
  std::optional<Statement> begin_;
  std::optional<Statement> commit_;
  std::unordered_map<std::string, std::unique_ptr<Shape>> shapes_;
  std::unordered_map<const Table*, TableShapes> table_shapes_;
  int snapshots_ = 0;
  bool snapshot_has_begun_ = false;  // else it takes part in a change
  int changes_ = 0;                  // that were begun, one within the other
  std::int64_t snapshot_number_ = 0;
};

}  // namespace vetlo
