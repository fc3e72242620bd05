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

// What is kept of a table that is opened by its name.
struct TableShapes {
  Shape* rows = nullptr;        // in the order of its key
  std::vector<Shape*> by_keys;  // of the first one, two, ... columns of its key
};

// A store in a SQLite database.
class SqliteDatabase : public Database {
 public:
  explicit SqliteDatabase(Connection connection) : connection_(std::move(connection)) {}

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
  // What is kept for a shape of text, made when it is first asked for.
  Shape& ShapeFor(const std::string& shape);
  // The shapes of a whole table, and of a row of it found by its key.
  TableShapes& ShapesOf(const Table& table);

 private:
  void RequireNoSnapshot() const;
  // Whether the engine has a transaction open: ours, or none where it has undone ours by itself.
  [[nodiscard]] bool InTransaction() const;

  Connection connection_;
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
