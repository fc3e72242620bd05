#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/variant.h"

namespace vetlo {

// The rows of a table or of an SQL text, with a cursor on one of them. It stands on the first row
// when it is opened. Any operation may fail with kStoreUnusable; after Close every other one fails
// with kObjectClosed. A recordset that is destroyed unclosed lets go of what it holds.
class Recordset {
 public:
  virtual ~Recordset() = default;

  virtual void Close() = 0;

  // Both are true where there is no row at all.
  virtual bool Bof() = 0;
  virtual bool Eof() = 0;

  // Each fails with kNoCurrentRecord where there is no row to leave or to stand on.
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  virtual void MoveLast() = 0;

  // How many rows a table has; only for a table recordset.
  virtual std::int32_t RecordCount() = 0;

  // "PrimaryIndex", to be set on a table recordset before Seek.
  virtual void SetIndex(std::string_view strIndex) = 0;

  // Stands on the first row whose key equals these values, "=" being the one comparison. Where
  // there is none, NoMatch is true and there is no current row.
  virtual void SeekKey(std::string_view strComparison, std::span<const Variant> keys) = 0;

  // Stands on the first row that meets criteria of the form "Column= 1"; as SeekKey otherwise.
  // Only for a dynaset.
  virtual void FindFirst(std::string_view strCriteria) = 0;

  virtual bool NoMatch() = 0;

  // The value of a column of the current row. Fails with kNoCurrentRecord where there is none,
  // with kNoSuchColumn for a name that the rows do not have, and with kTypeMismatch or kOverflow
  // where the store holds a value that is none of the column's type.
  virtual Variant Fields(std::string_view strName) = 0;

  // Where a column of the current row stands, for a user to find it: "Account.Balance, row 3", or
  // as much of that as is known; and the same of the row alone, "Account, row 3", empty where
  // nothing is known.
  virtual std::string PlaceOf(std::string_view strName) { return std::string(strName); }
  virtual std::string PlaceOfRow() { return {}; }

  // Changing a table, one row at a time: AddNew or Edit, SetField for each value, Update. Nothing
  // reaches the store before Update. Only on a table recordset of a store open for writing.
  virtual void AddNew() = 0;
  virtual void Edit() = 0;
  virtual void SetField(std::string_view strName, const Variant& value) = 0;
  virtual void Update() = 0;
  // Takes the current row out of the table at once; there is no current row then. Where Update may.
  virtual void Delete() = 0;

  void Seek(std::string_view strComparison, const Variant& key) {
    SeekKey(strComparison, std::span(&key, 1));
  }
  void Seek(std::string_view strComparison, std::initializer_list<Variant> keys) {
    SeekKey(strComparison, std::span(keys.begin(), keys.size()));
  }
};

enum class RecordsetType : std::int32_t { kByDefault = 0, kDynaset = 2 };

// An open store. The host owns it and keeps it alive while any of its recordsets is.
//
// It hears of each failure that a routine working on it goes on after, because such a failure
// leaves out of a figure what cannot be had. A store keeps quiet about that; a host that wants to
// know wraps it (vetlo/host/kept_store.h).
class Database : public FailureListener {
 public:
  Database() = default;
  virtual ~Database() = default;
  // A wrapper around a wrapper is no copy of it.
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void OnFailure(std::int32_t, const char*) noexcept override {}

  // Opens a table by its name, in the order of its key, or an SQL text of the dialect: SELECT with
  // `*`, `T1.*`, columns, DISTINCT, SUM(x) AS y; several tables with aliases, joined in WHERE;
  // AND, OR, NOT, parentheses, comparisons, ISNULL(column), dates as #YYYY-MM-DD#; ORDER BY.
  // Fails with kTableNotFound or kBadSqlText.
  virtual std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource,
                                                   RecordsetType type) = 0;

  // While a snapshot is held all recordsets show one state of the store. Snapshots nest. One within
  // a change shows what the change has done so far, and is released before the change ends.
  virtual void HoldSnapshot() = 0;
  virtual void ReleaseSnapshot() noexcept = 0;

  // One change of the store, whole or not at all; neither begun nor committed while a snapshot is
  // held. Changes nest: an inner one can be undone by itself, and one that is committed lasts if
  // the outer one does.
  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void Rollback() noexcept = 0;

  // The same store for the host's own services, whose reading is nobody's business: an observer
  // that wraps a store hands out what it wraps.
  virtual Database& Unobserved() { return *this; }

  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource) {
    return OpenRecordset(strSource, RecordsetType::kByDefault);
  }
};

// Holds a snapshot for as long as it lives.
class Snapshot {
 public:
  explicit Snapshot(Database& database) : database_(database) { database_.HoldSnapshot(); }
  ~Snapshot() { database_.ReleaseSnapshot(); }
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;

 private:
  Database& database_;
};

// A change that is undone unless it is committed.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(&database) { database.BeginTrans(); }
  ~Transaction() {
    if (database_ != nullptr) {
      database_->Rollback();
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    database_->CommitTrans();
    database_ = nullptr;
  }

 private:
  Database* database_;
};

// The value of a column as the type that the column has. Null fails with kInvalidUseOfNull. What
// does not convert fails with a text that tells where it stands.
std::int32_t LongField(Recordset& rec, std::string_view strName);
bool BooleanField(Recordset& rec, std::string_view strName);
Currency CurrencyField(Recordset& rec, std::string_view strName);
Date DateField(Recordset& rec, std::string_view strName);
double DoubleField(Recordset& rec, std::string_view strName);
std::string TextField(Recordset& rec, std::string_view strName);
// A Null is an empty text.
std::string TextFieldOrEmpty(Recordset& rec, std::string_view strName);

// Walks from the first row to the last. What fails on the way without a text, such as a sum that
// grows too large, gets one that tells the row at which it did.
void ForEachRow(Recordset& rec, const std::function<void(Recordset&)>& visit);

// A recordset that is closed when it goes, also where a failure makes it go. Where the closing
// fails then, nobody hears of it.
class ScopedRecordset {
 public:
  ScopedRecordset(Database& dbDov, std::string_view strSource,
                  RecordsetType type = RecordsetType::kByDefault)
      : rec_(dbDov.OpenRecordset(strSource, type)) {}
  ~ScopedRecordset();
  ScopedRecordset(const ScopedRecordset&) = delete;
  ScopedRecordset& operator=(const ScopedRecordset&) = delete;

  Recordset& operator*() { return *rec_; }
  Recordset* operator->() { return rec_.get(); }
  // Closes it ahead of its end.
  void Close();

 private:
  std::unique_ptr<Recordset> rec_;
};

// Opens a text, walks its rows and closes it, also where a visit fails.
void ForEachRowOf(Database& dbDov, std::string_view strSource,
                  const std::function<void(Recordset&)>& visit);

inline constexpr std::string_view kPrimaryIndex = "PrimaryIndex";

// What a user can do about a value that is not as it should be.
inline constexpr std::string_view kMendIt = "; mend it or restore the store from a copy";

}  // namespace vetlo
