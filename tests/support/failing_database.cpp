#include "tests/support/failing_database.h"

namespace vetlo::testing {
namespace {

class FailingRecordset : public ForwardingRecordset {
 public:
  FailingRecordset(std::unique_ptr<Recordset> rows, FailurePlan& plan,
                   std::shared_ptr<std::int64_t> open)
      : ForwardingRecordset(std::move(rows)), plan_(plan), open_(std::move(open)) {
    ++*open_;
  }
  ~FailingRecordset() override {
    if (!closed_) {
      --*open_;
    }
  }
  FailingRecordset(const FailingRecordset&) = delete;
  FailingRecordset& operator=(const FailingRecordset&) = delete;

  // To be asked where something stands is no operation on the store.
  std::string PlaceOf(std::string_view strName) override {
    return ForwardingRecordset::Rows().PlaceOf(strName);
  }
  std::string PlaceOfRow() override { return ForwardingRecordset::Rows().PlaceOfRow(); }

  void Close() override {
    plan_.CountClosing();
    ForwardingRecordset::Rows().Close();
    closed_ = true;
    --*open_;
  }

 protected:
  Recordset& Rows() override {
    plan_.Count();
    return ForwardingRecordset::Rows();
  }

 private:
  FailurePlan& plan_;
  std::shared_ptr<std::int64_t> open_;
  bool closed_ = false;
};

}  // namespace

void FailurePlan::FailAt(std::int64_t operation, Repeat repeat, FailureNumber number) {
  operations_ = 0;
  first_ = operation;
  repeat_ = repeat;
  number_ = number;
}

void FailurePlan::Count() {
  CountClosing();
  if (repeat_ == Repeat::kFromThenOn && HasFailed()) {
    Fail();
  }
}

void FailurePlan::CountClosing() {
  ++operations_;
  if (on_operation) {
    on_operation(operations_);
  }
  if (operations_ == first_) {
    Fail();
  }
}

void FailurePlan::Fail() const { throw Failure(number_, "a failure that was asked for"); }

std::unique_ptr<Recordset> FailingDatabase::OpenRecordset(std::string_view strSource,
                                                          RecordsetType type) {
  plan_.Count();
  return std::make_unique<FailingRecordset>(Store().OpenRecordset(strSource, type), plan_, open_);
}

void FailingDatabase::HoldSnapshot() {
  plan_.Count();
  Store().HoldSnapshot();
}

void FailingDatabase::BeginTrans() {
  plan_.Count();
  Store().BeginTrans();
}

void FailingDatabase::CommitTrans() {
  plan_.Count();
  Store().CommitTrans();
}

}  // namespace vetlo::testing
