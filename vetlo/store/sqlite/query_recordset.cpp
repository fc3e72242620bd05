#include "vetlo/store/sqlite/query_recordset.h"

#include "vetlo/platform/failure.h"

namespace vetlo {

void QueryRecordset::Close() {
  Rows();
  rows_.reset();
}

Variant QueryRecordset::Fields(std::string_view strName) {
  return Rows().Value(shape_.ColumnNamed(strName));
}

std::string QueryRecordset::PlaceOf(std::string_view strName) {
  return Rows().PlaceOf(shape_.ColumnNamed(strName));
}

std::int32_t QueryRecordset::RecordCount() { NotForTexts(); }
void QueryRecordset::SetIndex(std::string_view) { NotForTexts(); }
void QueryRecordset::SeekKey(std::string_view, std::span<const Variant>) { NotForTexts(); }
void QueryRecordset::FindFirst(std::string_view) { NotForTexts(); }
bool QueryRecordset::NoMatch() { NotForTexts(); }
void QueryRecordset::AddNew() { NotForTexts(); }
void QueryRecordset::Edit() { NotForTexts(); }
void QueryRecordset::SetField(std::string_view, const Variant&) { NotForTexts(); }
void QueryRecordset::Update() { NotForTexts(); }
void QueryRecordset::Delete() { NotForTexts(); }

void QueryRecordset::NotForTexts() {
  Rows();
  throw Failure(FailureNumber::kInvalidCall, "only a table opened by its name can do that");
}

Cursor& QueryRecordset::Rows() {
  if (!rows_) {
    throw Failure(FailureNumber::kObjectClosed);
  }
  return *rows_;
}

}  // namespace vetlo
