#include "vetlo/store/sqlite/sqlite_database.h"

#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/query_recordset.h"
#include "vetlo/store/sqlite/select_text.h"
#include "vetlo/store/sqlite/table_recordset.h"

namespace vetlo {
namespace {

bool IsSelect(std::string_view source) {
  constexpr std::string_view kSelect = "SELECT ";
  return EqualsIgnoringCase(source.substr(0, kSelect.size()), kSelect);
}

void Run(Statement& statement) {
  const auto reset = [](Statement* s) { s->Reset(); };
  const std::unique_ptr<Statement, decltype(reset)> guard(&statement, reset);
  statement.Step();
}

}  // namespace

std::unique_ptr<Recordset> SqliteDatabase::OpenRecordset(std::string_view strSource,
                                                         RecordsetType type) {
  if (IsSelect(strSource)) {
    ShapedText text = ShapeOf(strSource);
    return std::make_unique<QueryRecordset>(ShapeFor(text.shape, TextFrom::kOutside),
                                            std::move(text.values));
  }
  const Table* const table = FindTable(strSource);
  if (table == nullptr) {
    throw Failure(FailureNumber::kTableNotFound, "no table " + std::string(strSource));
  }
  return std::make_unique<TableRecordset>(*this, *table, type);
}

void SqliteDatabase::HoldSnapshot() {
  if (snapshots_ == 0) {
    if (!begin_) {
      // The end is made first: what has begun can then always end.
      commit_.emplace(connection_.handle(), "COMMIT");
      begin_.emplace(connection_.handle(), "BEGIN");
    }
    const bool begins = !InTransaction();
    if (begins) {
      Run(*begin_);
    }
    snapshot_has_begun_ = begins;
    if (begins && finder_ != nullptr) {
      finder_->BeginSnapshot();
    }
    ++snapshot_number_;
  }
  ++snapshots_;
}

void SqliteDatabase::ReleaseSnapshot() noexcept {
  --snapshots_;
  if (snapshots_ == 0 && snapshot_has_begun_) {
    if (finder_ != nullptr) {
      finder_->EndSnapshot();
    }
    ResumeNext([this] { Run(*commit_); });
  }
}

void SqliteDatabase::BeginTrans() {
  RequireNoSnapshot();
  if (changes_ > 0 && !InTransaction()) {
    throw Failure(FailureNumber::kStoreUnusable, "the change that this one belongs to was undone");
  }
  connection_.Execute(changes_ == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT inner");
  ++changes_;
}

void SqliteDatabase::CommitTrans() {
  RequireNoSnapshot();
  connection_.Execute(changes_ <= 1 ? "COMMIT" : "RELEASE inner");
  --changes_;
}

void SqliteDatabase::Rollback() noexcept {
  // Where the engine has rolled back by itself there is nothing left to do.
  sqlite3_exec(connection_.handle(),
               changes_ <= 1 ? "ROLLBACK" : "ROLLBACK TO inner; RELEASE inner", nullptr, nullptr,
               nullptr);
  changes_ -= changes_ > 0 ? 1 : 0;
}

void SqliteDatabase::RequireNoSnapshot() const {
  if (snapshots_ > 0) {
    throw Failure(FailureNumber::kInvalidCall, "a store cannot be changed while it is being read");
  }
}

bool SqliteDatabase::InTransaction() const {
  return sqlite3_get_autocommit(connection_.handle()) == 0;
}

TableShapes& SqliteDatabase::ShapesOf(const Table& table) {
  return table_shapes_.try_emplace(&table, *this, table).first->second;
}

Shape& SqliteDatabase::ShapeFor(const std::string& shape, TextFrom from) {
  const auto found = shapes_.find(shape);
  if (found != shapes_.end()) {
    return *found->second;
  }
  auto made = std::make_unique<Shape>(connection_.handle(), finder_.get(), shape);
  if (from == TextFrom::kOutside) {
    made->Check();
  }
  return *shapes_.emplace(shape, std::move(made)).first->second;
}

Shape& TableShapes::Rows() {
  if (rows_ == nullptr) {
    rows_ = &database_.ShapeFor("SELECT * FROM " + std::string(table_.name),
                                SqliteDatabase::TextFrom::kThisRoom);
  }
  return *rows_;
}

Shape& TableShapes::ByKey(std::size_t columns) {
  Shape*& shape = by_keys_[columns - 1];
  if (shape == nullptr) {
    std::string text = "SELECT * FROM " + std::string(table_.name);
    for (std::size_t i = 0; i < columns; ++i) {
      text += (i == 0 ? " WHERE " : " AND ") + std::string(table_.columns[i].name) + "=?";
    }
    shape = &database_.ShapeFor(text, SqliteDatabase::TextFrom::kThisRoom);
  }
  return *shape;
}

}  // namespace vetlo
