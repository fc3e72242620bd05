#pragma once

#include <map>
#include <string>

#include "vetlo/store/database.h"

namespace quillmarsh {

// One settings row that is in no store: what the component reads of a recordset on
// ChartReportSubType, for settings of the moment. Its number is kNumber.
class MomentaryRow : public vetlo::Recordset {
 public:
  static constexpr std::int32_t kNumber = 1;

  explicit MomentaryRow(std::map<std::string, vetlo::Variant> fields)
      : fields_(std::move(fields)) {}

  void Close() override {}
  bool Bof() override { return false; }
  bool Eof() override { return !found_; }
  void MoveFirst() override { found_ = true; }
  void MoveNext() override;
  void MoveLast() override { found_ = true; }
  std::int32_t RecordCount() override { return 1; }
  void SetIndex(std::string_view) override {}
  void SeekKey(std::string_view strComparison, std::span<const vetlo::Variant> keys) override;
  void FindFirst(std::string_view strCriteria) override;
  bool NoMatch() override { return !found_; }
  // A field that was not given is Null.
  vetlo::Variant Fields(std::string_view strName) override;

  // There is nothing to change: these fail with kInvalidCall.
  void AddNew() override;
  void Edit() override;
  void SetField(std::string_view strName, const vetlo::Variant& value) override;
  void Update() override;
  void Delete() override;

 private:
  std::map<std::string, vetlo::Variant> fields_;
  bool found_ = true;
};

}  // namespace quillmarsh
