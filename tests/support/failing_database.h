#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "vetlo/platform/failure.h"
#include "vetlo/store/forwarding.h"

namespace vetlo::testing {

// When the operations on a store fail. The operations of the database and of all its recordsets
// are counted together, from 1.
class FailurePlan {
 public:
  enum class Repeat { kOnce, kFromThenOn };

  // The n-th operation from now on fails with this number, the 0th never.
  void FailAt(std::int64_t operation, Repeat repeat, FailureNumber number);
  void NeverFail() { first_ = 0; }
  // Does something that neither fails nor counts; the next operation is the first.
  template <typename Piece>
  auto Unfailing(const Piece& piece) {
    const std::int64_t first = std::exchange(first_, 0);
    const auto watcher = std::exchange(on_operation, nullptr);
    auto result = piece();
    first_ = first;
    on_operation = watcher;
    operations_ = 0;
    return result;
  }

  // Called by every operation.
  void Count();
  // Called by Close: a store that is broken from some operation on still lets go of things.
  void CountClosing();

  [[nodiscard]] std::int64_t Operations() const { return operations_; }
  [[nodiscard]] bool HasFailed() const { return first_ > 0 && operations_ >= first_; }

  // Told the running number of every operation before it is counted; may be empty.
  std::function<void(std::int64_t operation)> on_operation;

 private:
  [[noreturn]] void Fail() const;

  std::int64_t operations_ = 0;
  std::int64_t first_ = 0;
  Repeat repeat_ = Repeat::kOnce;
  FailureNumber number_ = FailureNumber::kStoreUnusable;
};

// A store whose operations fail by a plan. The store and the plan must outlive it.
class FailingDatabase : public ForwardingDatabase {
 public:
  FailingDatabase(Database& store, FailurePlan& plan) : ForwardingDatabase(store), plan_(plan) {}

  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource, RecordsetType type) override;
  void HoldSnapshot() override;
  void BeginTrans() override;
  void CommitTrans() override;

  // How many recordsets are neither closed nor gone.
  [[nodiscard]] std::int64_t OpenRecordsets() const { return *open_; }

 private:
  FailurePlan& plan_;
  std::shared_ptr<std::int64_t> open_ = std::make_shared<std::int64_t>(0);
};

}  // namespace vetlo::testing
