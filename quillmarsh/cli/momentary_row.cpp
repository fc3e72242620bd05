#include "quillmarsh/cli/momentary_row.h"

#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

[[noreturn]] void RaiseNotHere() {
  throw vetlo::Failure(vetlo::FailureNumber::kInvalidCall, "settings of the moment are not stored");
}

}  // namespace

void MomentaryRow::MoveNext() { found_ = false; }

void MomentaryRow::SeekKey(std::string_view, std::span<const vetlo::Variant> keys) {
  found_ = keys.size() == 1 && vetlo::ToLong(keys[0]) == kNumber;
}

vetlo::Variant MomentaryRow::Fields(std::string_view strName) {
  if (!found_) {
    throw vetlo::Failure(vetlo::FailureNumber::kNoCurrentRecord);
  }
  const auto field = fields_.find(std::string(strName));
  return field == fields_.end() ? vetlo::Variant(vetlo::Null{}) : field->second;
}

void MomentaryRow::FindFirst(std::string_view) { RaiseNotHere(); }
void MomentaryRow::AddNew() { RaiseNotHere(); }
void MomentaryRow::Edit() { RaiseNotHere(); }
void MomentaryRow::SetField(std::string_view, const vetlo::Variant&) { RaiseNotHere(); }
void MomentaryRow::Update() { RaiseNotHere(); }
void MomentaryRow::Delete() { RaiseNotHere(); }

}  // namespace quillmarsh
