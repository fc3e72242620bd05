#pragma once

#include <memory>
#include <utility>

#include "vetlo/store/database.h"

namespace vetlo {

// A recordset and a store that pass everything on to another: for whoever looks on, or steps in
// at some operations.

class ForwardingRecordset : public Recordset {
 public:
  explicit ForwardingRecordset(std::unique_ptr<Recordset> rows) : rows_(std::move(rows)) {}

  void Close() override { Rows().Close(); }
  bool Bof() override { return Rows().Bof(); }
  bool Eof() override { return Rows().Eof(); }
  void MoveFirst() override { Rows().MoveFirst(); }
  void MoveNext() override { Rows().MoveNext(); }
  void MoveLast() override { Rows().MoveLast(); }
  std::int32_t RecordCount() override { return Rows().RecordCount(); }
  void SetIndex(std::string_view strIndex) override { Rows().SetIndex(strIndex); }
  void SeekKey(std::string_view strComparison, std::span<const Variant> keys) override {
    Rows().SeekKey(strComparison, keys);
  }
  void FindFirst(std::string_view strCriteria) override { Rows().FindFirst(strCriteria); }
  bool NoMatch() override { return Rows().NoMatch(); }
  Variant Fields(std::string_view strName) override { return Rows().Fields(strName); }
  std::string PlaceOf(std::string_view strName) override { return Rows().PlaceOf(strName); }
  std::string PlaceOfRow() override { return Rows().PlaceOfRow(); }
  void AddNew() override { Rows().AddNew(); }
  void Edit() override { Rows().Edit(); }
  void SetField(std::string_view strName, const Variant& value) override {
    Rows().SetField(strName, value);
  }
  void Update() override { Rows().Update(); }
  void Delete() override { Rows().Delete(); }

 protected:
  // Asked for by every operation but those that a class beneath has taken over.
  virtual Recordset& Rows() { return *rows_; }

 private:
  std::unique_ptr<Recordset> rows_;
};

// The store must outlive it.
class ForwardingDatabase : public Database {
 public:
  explicit ForwardingDatabase(Database& store) : store_(store) {}

  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource,
                                           RecordsetType type) override {
    return store_.OpenRecordset(strSource, type);
  }
  void HoldSnapshot() override { store_.HoldSnapshot(); }
  void ReleaseSnapshot() noexcept override { store_.ReleaseSnapshot(); }
  void BeginTrans() override { store_.BeginTrans(); }
  void CommitTrans() override { store_.CommitTrans(); }
  void Rollback() noexcept override { store_.Rollback(); }
  void OnFailure(std::int32_t number, const char* text) noexcept override {
    store_.OnFailure(number, text);
  }

 protected:
  [[nodiscard]] Database& Store() { return store_; }

 private:
  Database& store_;
};

}  // namespace vetlo
