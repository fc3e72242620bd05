#pragma once

#include <memory>
#include <string>
#include <utility>

#include "vetlo/platform/failure.h"
#include "vetlo/store/forwarding.h"

namespace quillmarsh {

// Keeps the text of the last failure to write, for a user who is otherwise told only that there
// was one.
class FailureKeeper {
 public:
  [[nodiscard]] const std::string& Text() const { return text_; }

  template <typename Piece>
  void Run(const Piece& piece) {
    try {
      piece();
    } catch (const vetlo::Failure& failure) {
      text_ = failure.what();
      throw;
    }
  }

 private:
  std::string text_;
};

class KeptRecordset : public vetlo::ForwardingRecordset {
 public:
  KeptRecordset(std::unique_ptr<vetlo::Recordset> rows, FailureKeeper& keeper)
      : ForwardingRecordset(std::move(rows)), keeper_(keeper) {}
  void Update() override {
    keeper_.Run([this] { ForwardingRecordset::Update(); });
  }

 private:
  FailureKeeper& keeper_;
};

// The store and the keeper must outlive it.
class KeptDatabase : public vetlo::ForwardingDatabase {
 public:
  KeptDatabase(vetlo::Database& store, FailureKeeper& keeper)
      : ForwardingDatabase(store), keeper_(keeper) {}

  using Database::OpenRecordset;
  std::unique_ptr<vetlo::Recordset> OpenRecordset(std::string_view strSource,
                                                  vetlo::RecordsetType type) override {
    return std::make_unique<KeptRecordset>(ForwardingDatabase::OpenRecordset(strSource, type),
                                           keeper_);
  }
  void BeginTrans() override {
    keeper_.Run([this] { ForwardingDatabase::BeginTrans(); });
  }
  void CommitTrans() override {
    keeper_.Run([this] { ForwardingDatabase::CommitTrans(); });
  }

 private:
  FailureKeeper& keeper_;
};

}  // namespace quillmarsh
