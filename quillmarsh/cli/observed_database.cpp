#include "quillmarsh/cli/observed_database.h"

namespace quillmarsh {
namespace {

class ObservedRecordset : public vetlo::ForwardingRecordset {
 public:
  ObservedRecordset(std::unique_ptr<vetlo::Recordset> rows, std::string source,
                    const StoreObserver& observer)
      : ForwardingRecordset(std::move(rows)), source_(std::move(source)), observer_(observer) {}

  // That it was closed counts, whether or not the closing succeeds.
  void Close() override {
    if (observer_.closed) {
      observer_.closed(source_);
    }
    ForwardingRecordset::Close();
  }

 private:
  std::string source_;
  const StoreObserver& observer_;
};

}  // namespace

std::unique_ptr<vetlo::Recordset> ObservedDatabase::OpenRecordset(std::string_view strSource,
                                                                  vetlo::RecordsetType type) {
  auto rows = Store().OpenRecordset(strSource, type);
  if (observer_.opened) {
    observer_.opened(strSource, type);
  }
  return std::make_unique<ObservedRecordset>(std::move(rows), std::string(strSource), observer_);
}

}  // namespace quillmarsh
