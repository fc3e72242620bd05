#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "vetlo/store/database.h"
#include "vetlo/store/sqlite/cursor.h"

namespace vetlo {

// The rows of an SQL text, to be walked and read.
class QueryRecordset : public Recordset {
 public:
  QueryRecordset(Shape& shape, std::vector<StoredValue> values)
      : shape_(shape), rows_(std::in_place, shape, std::move(values)) {}

  void Close() override;
  bool Bof() override { return Rows().IsEmpty(); }
  bool Eof() override { return !Rows().OnRow(); }
  void MoveFirst() override { Rows().MoveFirst(); }
  void MoveNext() override { Rows().MoveNext(); }
  void MoveLast() override { Rows().MoveLast(); }
  Variant Fields(std::string_view strName) override;
  std::string PlaceOf(std::string_view strName) override;
  std::string PlaceOfRow() override { return Rows().PlaceOfRow(); }

  // A text has no key, no exact count and no rows to change: these fail with kInvalidCall.
  std::int32_t RecordCount() override;
  void SetIndex(std::string_view strIndex) override;
  void SeekKey(std::string_view strComparison, std::span<const Variant> keys) override;
  void FindFirst(std::string_view strCriteria) override;
  bool NoMatch() override;
  void AddNew() override;
  void Edit() override;
  void SetField(std::string_view strName, const Variant& value) override;
  void Update() override;
  void Delete() override;

 private:
  Cursor& Rows();
  [[noreturn]] void NotForTexts();

  Shape& shape_;
  std::optional<Cursor> rows_;  // none once closed
};

}  // namespace vetlo
