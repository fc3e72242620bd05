#include "vetlo/store/sqlite/query_recordset.h"

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

[[noreturn]] void RaiseNotForTexts() {
  throw Failure(FailureNumber::kInvalidCall, "only a table opened by its name can do that");
}

}  // namespace

void QueryRecordset::Close() {
  Rows();
  rows_.reset();
}

Variant QueryRecordset::Fields(std::string_view strName) {
  return Rows().Value(shape_.ColumnNamed(strName));
}

std::int32_t QueryRecordset::RecordCount() { RaiseNotForTexts(); }
void QueryRecordset::SetIndex(std::string_view) { RaiseNotForTexts(); }
void QueryRecordset::SeekKey(std::string_view, std::span<const Variant>) { RaiseNotForTexts(); }
void QueryRecordset::FindFirst(std::string_view) { RaiseNotForTexts(); }
bool QueryRecordset::NoMatch() { RaiseNotForTexts(); }
void QueryRecordset::AddNew() { RaiseNotForTexts(); }
void QueryRecordset::Edit() { RaiseNotForTexts(); }
void QueryRecordset::SetField(std::string_view, const Variant&) { RaiseNotForTexts(); }
void QueryRecordset::Update() { RaiseNotForTexts(); }

Cursor& QueryRecordset::Rows() {
  if (!rows_) {
    throw Failure(FailureNumber::kObjectClosed);
  }
  return *rows_;
}

}  // namespace vetlo
