#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "quillmarsh/sample/markets.h"
#include "quillmarsh/sample/people_and_places.h"
#include "vetlo/platform/currency.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh {

// An item and, where it is not 0, a sub-item of a classification.
struct ClassificationKey {
  std::int32_t item = 0;
  std::int32_t sub_item = 0;
};

// One row of TransactionRecord to be. A number of 0 is none and becomes Null.
struct Entry {
  std::int32_t record_type = vetlo::kOrdinaryRecord;
  std::int32_t type = vetlo::kExpense;
  std::int32_t day = 0;  // whole days of a Date
  std::int32_t account = kNoAccount;
  std::int32_t other = kNoAccount;  // the other end of a transfer, or what funds a trade
  CategoryKey category = {};
  std::int32_t payee = 0;
  std::int32_t item = kNoItem;
  ClassificationKey person = {};
  ClassificationKey project = {};
  std::int64_t units_hundredths = 0;
  std::int64_t cents = 0;
  std::string_view memo = {};
};

// Writes transactions under ascending numbers and keeps what every account then holds.
class Ledger {
 public:
  using Watch = std::function<void(std::int64_t written)>;

  // `watch` is called now and then.
  Ledger(vetlo::StoreBuilder& store, Watch watch);

  // The accounts' cash starts at their opening balances; this one's is set anew. Only before
  // anything is written.
  void Open(std::int32_t account, std::int64_t opening_cents);

  // The number of the new record.
  std::int32_t Write(const Entry& entry);

  // A head and its lines: the head's amount is the sum of theirs, and where it goes is the lines'
  // business alone.
  void WriteSplit(Entry head, std::span<Entry> lines);

  [[nodiscard]] std::int64_t Written() const { return written_; }
  [[nodiscard]] std::int64_t CashCents(std::int32_t account) const;
  [[nodiscard]] std::int64_t UnitsHundredths(std::int32_t account, std::int32_t item) const;

  // The rows of Account as they stand after all that was written.
  void WriteAccounts(const Market& market);

 private:
  using Positions = std::array<std::int64_t, kItemCount>;

  struct Standing {
    std::int64_t opening_cents = 0;
    std::int64_t cents = 0;
    Positions units_hundredths = {};
  };

  Standing& Of(std::int32_t account) { return accounts_[static_cast<std::size_t>(account) - 1]; }
  [[nodiscard]] const Standing& Of(std::int32_t account) const {
    return accounts_[static_cast<std::size_t>(account) - 1];
  }
  void MoveCash(const Entry& entry);
  void MoveUnits(const Entry& entry);
  void InsertRow(const Entry& entry);
  [[nodiscard]] vetlo::Currency BalanceOf(std::int32_t account, const Market& market) const;

  vetlo::StoreBuilder& store_;
  Watch watch_;
  vetlo::StoreBuilder::Values row_;  // reused from row to row
  std::array<Standing, kAccountCount> accounts_;
  std::int64_t written_ = 0;
};

// An amount of cents as money.
vetlo::Currency FromCents(std::int64_t cents);

}  // namespace quillmarsh
