#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "quillmarsh/sample/dice.h"
#include "quillmarsh/sample/investor.h"
#include "quillmarsh/sample/ledger.h"
#include "quillmarsh/sample/pace.h"
#include "quillmarsh/sample/rhythms.h"

namespace quillmarsh {

// One thing that happens: an occurrence of a rhythm, or of everyday life.
struct Event {
  std::int32_t day = 0;
  std::int32_t entered = 0;  // the day on which it gets into the ledger, not before `day`
  bool everyday = false;
  std::size_t index = 0;  // in Rhythms() or in EverydayLife()
};

// Turns what happens into records of the ledger.
class Life {
 public:
  // All of them outlive this. There are so many further shops beside kPayees.
  Life(Ledger& ledger, const Market& market, const Pace& pace, std::int32_t further_shops,
       Dice& dice);

  // The accounts as they are found, and the first securities.
  void Begin();

  // Records what happened in that month. Some things leave nothing to record.
  void Happen(const Event& event, const Month& month);

 private:
  // What was lent or borrowed and not given back.
  struct OpenDebt {
    std::int32_t payee;
    std::int64_t cents;
  };

  void Rhythmic(const Rhythm& rhythm, const Month& month);
  void Ordinary(const Everyday& everyday, const Month& month);
  void Earn(const Rhythm& rhythm, const Month& month, std::int64_t scale);
  void Spend(const Rhythm& rhythm, const Month& month, std::int32_t record_type);
  void SplitIncome(const Rhythm& rhythm, const Month& month);
  void SplitShopping(const Everyday& everyday, std::int64_t cents);
  void EarnInterest(const Rhythm& rhythm);
  void PayInterest(const Rhythm& rhythm);
  void Repay(const Rhythm& rhythm, const Month& month);
  void RepayOrRenew(const Rhythm& rhythm, const Month& month);
  void ChangeValue(const Rhythm& rhythm, std::int32_t type);
  void Move(const Rhythm& rhythm, std::int64_t cents);
  void FillUp(const Rhythm& rhythm, const Month& month);
  void PayCard(const Rhythm& rhythm);
  void Sweep(const Rhythm& rhythm, const Month& month);
  void TakeTurnsOwing(const Rhythm& rhythm, const Month& month, std::int32_t there,
                      std::int32_t back);

  // The amount of a rhythm in the prices and the season of a month.
  [[nodiscard]] std::int64_t AmountOf(const Rhythm& rhythm, const Month& month);
  [[nodiscard]] Entry EntryOf(const Rhythm& rhythm, std::int32_t type, std::int64_t cents);
  // The account, or where it can't pay so much the next that can.
  [[nodiscard]] std::int32_t PayerOf(std::int32_t account, std::int64_t cents) const;
  [[nodiscard]] std::int32_t PayeeOf(const Trade& trade);
  void Classify(Entry& entry);
  // Nothing is recorded where no money moves.
  void Record(const Entry& entry);

  Ledger& ledger_;
  const Pace& pace_;
  Dice& dice_;
  Investor investor_;
  std::int32_t further_shops_;
  std::int32_t day_ = 0;
  std::array<std::vector<OpenDebt>, kAccountCount> open_debts_;  // by account
};

}  // namespace quillmarsh
