#include "quillmarsh/cli/observed_database.h"

namespace quillmarsh {
namespace {

using vetlo::Recordset;
using vetlo::Variant;

class ObservedRecordset : public Recordset {
 public:
  ObservedRecordset(std::unique_ptr<Recordset> rows, std::string source,
                    const StoreObserver& observer)
      : rows_(std::move(rows)), source_(std::move(source)), observer_(observer) {}

  void Close() override {
    rows_->Close();
    if (observer_.closed) {
      observer_.closed(source_);
    }
  }
  bool Bof() override { return rows_->Bof(); }
  bool Eof() override { return rows_->Eof(); }
  void MoveFirst() override { rows_->MoveFirst(); }
  void MoveNext() override { rows_->MoveNext(); }
  void MoveLast() override { rows_->MoveLast(); }
  std::int32_t RecordCount() override { return rows_->RecordCount(); }
  void SetIndex(std::string_view index) override { rows_->SetIndex(index); }
  void SeekKey(std::string_view comparison, std::span<const Variant> keys) override {
    rows_->SeekKey(comparison, keys);
  }
  void FindFirst(std::string_view criteria) override { rows_->FindFirst(criteria); }
  bool NoMatch() override { return rows_->NoMatch(); }
  Variant Fields(std::string_view name) override { return rows_->Fields(name); }
  void AddNew() override { rows_->AddNew(); }
  void Edit() override { rows_->Edit(); }
  void SetField(std::string_view name, const Variant& value) override {
    rows_->SetField(name, value);
  }
  void Update() override { rows_->Update(); }

 private:
  std::unique_ptr<Recordset> rows_;
  std::string source_;
  const StoreObserver& observer_;
};

}  // namespace

std::unique_ptr<Recordset> ObservedDatabase::OpenRecordset(std::string_view strSource,
                                                           vetlo::RecordsetType type) {
  auto rows = store_.OpenRecordset(strSource, type);
  if (observer_.opened) {
    observer_.opened(strSource, type);
  }
  return std::make_unique<ObservedRecordset>(std::move(rows), std::string(strSource), observer_);
}

}  // namespace quillmarsh
