#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "vetlo/store/forwarding.h"

namespace quillmarsh {

// Who wants to know what the component does to a store. Each may be left empty.
struct StoreObserver {
  std::function<void(std::string_view source, vetlo::RecordsetType type)> opened;
  std::function<void(std::string_view source)> closed;
};

// A store that tells an observer which recordsets were opened and closed.
// The store must outlive it.
class ObservedDatabase : public vetlo::ForwardingDatabase {
 public:
  ObservedDatabase(vetlo::Database& store, StoreObserver observer)
      : ForwardingDatabase(store), observer_(std::move(observer)) {}

  using Database::OpenRecordset;
  std::unique_ptr<vetlo::Recordset> OpenRecordset(std::string_view strSource,
                                                  vetlo::RecordsetType type) override;
  vetlo::Database& Unobserved() override { return Store(); }

 private:
  StoreObserver observer_;
};

}  // namespace quillmarsh
