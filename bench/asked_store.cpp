#include "bench/asked_store.h"

#include "vetlo/store/model.h"

namespace quillmarsh::bench {
namespace {

// Notes a table's walk when it begins, and each row that is sought in it.
class AskedRecordset : public vetlo::ForwardingRecordset {
 public:
  AskedRecordset(std::unique_ptr<vetlo::Recordset> rows, std::string source,
                 std::vector<Question>& questions)
      : ForwardingRecordset(std::move(rows)), source_(std::move(source)), questions_(questions) {}

  void MoveFirst() override {
    if (vetlo::FindTable(source_) != nullptr) {
      questions_.push_back({"SELECT * FROM " + source_, {}});
    }
    ForwardingRecordset::MoveFirst();
  }

  void SeekKey(std::string_view comparison, std::span<const vetlo::Variant> keys) override {
    const vetlo::Table& table = *vetlo::FindTable(source_);
    questions_.push_back(
        {"SELECT * FROM " + source_ + " WHERE " + std::string(table.columns[0].name) + "=?",
         keys[0]});
    ForwardingRecordset::SeekKey(comparison, keys);
  }

 private:
  std::string source_;
  std::vector<Question>& questions_;
};

}  // namespace

std::unique_ptr<vetlo::Recordset> AskedStore::OpenRecordset(std::string_view strSource,
                                                            vetlo::RecordsetType type) {
  if (vetlo::FindTable(strSource) == nullptr) {
    questions_.push_back({std::string(strSource), {}});
  }
  return std::make_unique<AskedRecordset>(Store().OpenRecordset(strSource, type),
                                          std::string(strSource), questions_);
}

}  // namespace quillmarsh::bench
