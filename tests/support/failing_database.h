#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "vetlo/platform/failure.h"
#include "vetlo/store/database.h"

namespace vetlo::testing {

// When the operations on a store fail. The operations of the database and of all its recordsets
// are counted together, from 1.
class FailurePlan {
 public:
  enum class Repeat { kOnce, kFromThenOn };

  // The n-th operation fails with this number.
  void FailAt(std::int64_t operation, Repeat repeat, FailureNumber number);
  void NeverFail() { first_ = 0; }
  // From 1 again.
  void StartCounting() { operations_ = 0; }

  // Called by every operation.
  void Count();

  [[nodiscard]] std::int64_t Operations() const { return operations_; }
  [[nodiscard]] bool HasFailed() const { return first_ > 0 && operations_ >= first_; }

  // Told the running number of every operation before it is counted; may be empty.
  std::function<void(std::int64_t operation)> on_operation;

 private:
  std::int64_t operations_ = 0;
  std::int64_t first_ = 0;
  Repeat repeat_ = Repeat::kOnce;
  FailureNumber number_ = FailureNumber::kStoreUnusable;
};

// A store whose operations fail by a plan. Letting go of things never fails. The store and the plan
// must outlive it.
class FailingDatabase : public Database {
 public:
  FailingDatabase(Database& store, FailurePlan& plan) : store_(store), plan_(plan) {}

  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource, RecordsetType type) override;
  void HoldSnapshot() override { store_.HoldSnapshot(); }
  void ReleaseSnapshot() noexcept override { store_.ReleaseSnapshot(); }
  void BeginTrans() override { store_.BeginTrans(); }
  void CommitTrans() override { store_.CommitTrans(); }
  void Rollback() noexcept override { store_.Rollback(); }

  // How many recordsets are neither closed nor gone.
  [[nodiscard]] std::int64_t OpenRecordsets() const { return *open_; }

 private:
  Database& store_;
  FailurePlan& plan_;
  std::shared_ptr<std::int64_t> open_ = std::make_shared<std::int64_t>(0);
};

}  // namespace vetlo::testing
