#include "tests/support/failing_database.h"

namespace vetlo::testing {
namespace {

class FailingRecordset : public Recordset {
 public:
  FailingRecordset(std::unique_ptr<Recordset> rows, FailurePlan& plan,
                   std::shared_ptr<std::int64_t> open)
      : rows_(std::move(rows)), plan_(plan), open_(std::move(open)) {
    ++*open_;
  }
  ~FailingRecordset() override {
    if (!closed_) {
      --*open_;
    }
  }
  FailingRecordset(const FailingRecordset&) = delete;
  FailingRecordset& operator=(const FailingRecordset&) = delete;

  void Close() override {
    plan_.Count();
    rows_->Close();
    closed_ = true;
    --*open_;
  }
  bool Bof() override { return Counted().Bof(); }
  bool Eof() override { return Counted().Eof(); }
  void MoveFirst() override { Counted().MoveFirst(); }
  void MoveNext() override { Counted().MoveNext(); }
  void MoveLast() override { Counted().MoveLast(); }
  std::int32_t RecordCount() override { return Counted().RecordCount(); }
  void SetIndex(std::string_view index) override { Counted().SetIndex(index); }
  void SeekKey(std::string_view comparison, std::span<const Variant> keys) override {
    Counted().SeekKey(comparison, keys);
  }
  void FindFirst(std::string_view criteria) override { Counted().FindFirst(criteria); }
  bool NoMatch() override { return Counted().NoMatch(); }
  Variant Fields(std::string_view name) override { return Counted().Fields(name); }
  void AddNew() override { Counted().AddNew(); }
  void Edit() override { Counted().Edit(); }
  void SetField(std::string_view name, const Variant& value) override {
    Counted().SetField(name, value);
  }
  void Update() override { Counted().Update(); }

 private:
  Recordset& Counted() {
    plan_.Count();
    return *rows_;
  }

  std::unique_ptr<Recordset> rows_;
  FailurePlan& plan_;
  std::shared_ptr<std::int64_t> open_;
  bool closed_ = false;
};

}  // namespace

void FailurePlan::FailAt(std::int64_t operation, Repeat repeat, FailureNumber number) {
  first_ = operation;
  repeat_ = repeat;
  number_ = number;
}

void FailurePlan::Count() {
  ++operations_;
  if (on_operation) {
    on_operation(operations_);
  }
  const bool now = operations_ == first_;
  const bool still = repeat_ == Repeat::kFromThenOn && operations_ > first_;
  if (first_ > 0 && (now || still)) {
    throw Failure(number_, "a failure that was asked for");
  }
}

std::unique_ptr<Recordset> FailingDatabase::OpenRecordset(std::string_view strSource,
                                                          RecordsetType type) {
  plan_.Count();
  return std::make_unique<FailingRecordset>(store_.OpenRecordset(strSource, type), plan_, open_);
}

}  // namespace vetlo::testing
