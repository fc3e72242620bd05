#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/one_of.h"
#include "vetlo/platform/variant.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/found_rows.h"
#include "vetlo/store/sqlite/patience.h"
#include "vetlo/store/sqlite/sqlite_store.h"
#include "vetlo/store/sqlite/write_ahead_log.h"

namespace vetlo {

// A value as the engine stores it.
using StoredValue = OneOf<std::monostate, std::int64_t, double, std::string>;

// How a column of this type stores the value. Fails as the conversions of Variant do.
StoredValue StoredForm(const Variant& value, ColumnType type);

// A file that is no database, or a damaged one.
class NoSoundDatabase : public Failure {
 public:
  using Failure::Failure;
};

// Raises what the engine reports: kOverflow for a sum past 64 bits, else kStoreUnusable with a
// text for the user, as NoSoundDatabase where it is that.
[[noreturn]] void RaiseStoreFailure(sqlite3* handle, int result);

// A prepared statement. It must go before the connection that it was prepared on.
class Statement {
 public:
  // Fails with kBadSqlText for a text that the engine does not take.
  Statement(sqlite3* handle, const std::string& sql);

  // Parameters count from 1.
  void Bind(int parameter, const StoredValue& value);
  // The rows must outlive the run.
  void Bind(int parameter, const FoundRows& rows) {
    BindFoundRows(statement_.get(), parameter, rows);
  }
  // True on a row, false behind the last one. A step that fails raises.
  bool Step();
  // Back to before the first row; gives up whatever the statement holds of the store.
  void Reset() noexcept;
  // How many instructions of the engine the statement has run since it was asked the last time.
  std::int64_t TakeWork() noexcept;

  // Columns count from 0. Fails with kTypeMismatch for a value that is none of the type,
  // kOverflow for one outside its range.
  [[nodiscard]] Variant Value(int column, ColumnType type) const;
  [[nodiscard]] std::int64_t Integer(int column) const;
  // The value as it was stored; none where that is no whole number, or no number.
  [[nodiscard]] std::optional<std::int64_t> StoredInteger(int column) const;
  [[nodiscard]] std::optional<double> StoredNumber(int column) const;
  [[nodiscard]] bool IsNull(int column) const;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

// An open database file.
class Connection {
 public:
  // A new database in memory or in a new file.
  static Connection CreateInMemory();
  static Connection CreateFile(const std::string& path);
  // Opens a file that may come from anywhere, with all that runs by itself switched off. A save
  // that was broken off is undone first; fails with kStoreUnusable where the file or its folder
  // cannot be written for that. A reader leaves nothing beside the file: what stands in a log of
  // changes is taken in by the last to close it, where he may. The waiting for others has one
  // Patience, now and later.
  static Connection OpenFile(const std::string& path, StoreAccess access);

  [[nodiscard]] sqlite3* handle() const { return handle_.get(); }

  // Runs statements that give no rows.
  void Execute(const std::string& sql);
  // The first column of the first row.
  [[nodiscard]] std::int64_t QueryInteger(const std::string& sql);

  // From here on reading reaches the tables of the model alone, and writing, where the access
  // allows it at all, the settings rows alone.
  void RestrictToModel(StoreAccess access);

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  Connection(const std::string& path, int flags);
  // A connection with all its guards, to a file that is opened for this.
  static Connection OpenGuarded(const std::string& path, StoreAccess access,
                                const std::shared_ptr<Patience>& patience);
  // For readers: of any file, and of one that keeps a log of its changes.
  static Connection OpenToRead(const std::string& path, const std::shared_ptr<Patience>& patience);
  static Connection OpenLogged(const std::string& path, const std::shared_ptr<Patience>& patience);
  static Connection OpenImage(DatabaseImage image);
  void Guard();
  // The engine's answer to a first look at the store.
  [[nodiscard]] int LookAtIt();

  std::shared_ptr<Patience> patience_;  // none for a new file, which nobody else knows
  std::unique_ptr<sqlite3, Close> handle_;
};

}  // namespace vetlo
