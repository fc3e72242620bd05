#include "quillmarsh/sample/ledger.h"

#include <string>
#include <utility>

namespace quillmarsh {
namespace {

using vetlo::Currency;
using vetlo::Date;
using vetlo::Null;
using vetlo::Variant;

constexpr std::int64_t kUnitsPerCent = 100;
constexpr std::int64_t kRecordsBetweenLooks = 1000;

Variant NumberOrNull(std::int32_t number) {
  return number == 0 ? Variant(Null{}) : Variant(number);
}

Variant TextOrNull(std::string_view text) {
  return text.empty() ? Variant(Null{}) : Variant(std::string(text));
}

double QuantityOf(std::int64_t hundredths) { return static_cast<double>(hundredths) / 100; }

bool Counts(const Entry& entry) {
  return entry.record_type == vetlo::kOrdinaryRecord || entry.record_type == vetlo::kSplitLine;
}

// Whether the money of these types moves on the account that funds them.
bool MovesFundingCash(std::int32_t type) {
  return type >= vetlo::kBuy && type <= vetlo::kHoldingCost && type != vetlo::kUnitsReceived &&
         type != vetlo::kUnitsGivenAway;
}

bool TakesCash(std::int32_t type) {
  return type == vetlo::kCorrectionDownwards || type == vetlo::kBuy ||
         type == vetlo::kHoldingCost || type == vetlo::kExpense || type == vetlo::kTransferOut;
}

}  // namespace

Currency FromCents(std::int64_t cents) { return Currency::FromUnits(cents * kUnitsPerCent); }

Ledger::Ledger(vetlo::StoreBuilder& store, Watch watch) : store_(store), watch_(std::move(watch)) {
  for (std::size_t i = 0; i < kAccountCount; ++i) {
    Open(static_cast<std::int32_t>(i) + 1, kAccounts[i].opening_cents);
  }
}

void Ledger::Open(std::int32_t account, std::int64_t opening_cents) {
  Of(account).opening_cents = opening_cents;
  Of(account).cents = opening_cents;
}

std::int64_t Ledger::CashCents(std::int32_t account) const { return Of(account).cents; }

std::int64_t Ledger::UnitsHundredths(std::int32_t account, std::int32_t item) const {
  return Of(account).units_hundredths[static_cast<std::size_t>(item) - 1];
}

std::int32_t Ledger::Write(const Entry& entry) {
  ++written_;
  InsertRow(entry);
  if (Counts(entry)) {
    MoveCash(entry);
    MoveUnits(entry);
  }
  if (watch_ && written_ % kRecordsBetweenLooks == 0) {
    watch_(written_);
  }
  return static_cast<std::int32_t>(written_);
}

void Ledger::WriteSplit(Entry head, std::span<Entry> lines) {
  head.record_type = vetlo::kSplitHead;
  head.category = {};
  head.cents = 0;
  for (const Entry& line : lines) {
    head.cents += line.cents;
  }
  Write(head);
  for (Entry& line : lines) {
    line.record_type = vetlo::kSplitLine;
    Write(line);
  }
}

void Ledger::MoveCash(const Entry& entry) {
  const std::int64_t change = TakesCash(entry.type) ? -entry.cents : entry.cents;
  if (entry.type >= vetlo::kBuy && entry.type <= vetlo::kHoldingCost) {
    if (MovesFundingCash(entry.type)) {
      Of(entry.other == kNoAccount ? entry.account : entry.other).cents += change;
    }
    return;
  }
  Of(entry.account).cents += change;
  if (entry.other != kNoAccount) {
    Of(entry.other).cents -= change;
  }
}

void Ledger::MoveUnits(const Entry& entry) {
  if (entry.item == kNoItem) {
    return;
  }
  std::int64_t& held = Of(entry.account).units_hundredths[static_cast<std::size_t>(entry.item) - 1];
  if (entry.type == vetlo::kBuy || entry.type == vetlo::kUnitsReceived) {
    held += entry.units_hundredths;
  } else if (entry.type == vetlo::kSell || entry.type == vetlo::kUnitsGivenAway) {
    held -= entry.units_hundredths;
  }
}

void Ledger::InsertRow(const Entry& entry) {
  // Columns that stay Null are named all the same, so that every row is the same statement.
  row_.clear();
  row_.emplace_back("TransactionRecordNumber", static_cast<std::int32_t>(written_));
  row_.emplace_back("TransactionRecordType", entry.record_type);
  row_.emplace_back("TransactionType", entry.type);
  row_.emplace_back("TransactionDate", Date{static_cast<double>(entry.day)});
  row_.emplace_back("AccountNumber", NumberOrNull(entry.account));
  row_.emplace_back("ToOrFundAccountNumber", NumberOrNull(entry.other));
  row_.emplace_back("CategoryNumber", NumberOrNull(entry.category.category));
  row_.emplace_back("SubCategoryNumber", NumberOrNull(entry.category.subcategory));
  row_.emplace_back("PayeeNumber", NumberOrNull(entry.payee));
  row_.emplace_back("AccountItemNumber", NumberOrNull(entry.item));
  row_.emplace_back("Classification1ItemNumber", NumberOrNull(entry.person.item));
  row_.emplace_back("Classification1SubItemNumber", NumberOrNull(entry.person.sub_item));
  row_.emplace_back("Classification2ItemNumber", NumberOrNull(entry.project.item));
  row_.emplace_back("Classification2SubItemNumber", NumberOrNull(entry.project.sub_item));
  row_.emplace_back("Quantity", entry.units_hundredths == 0
                                    ? Variant(Null{})
                                    : Variant(QuantityOf(entry.units_hundredths)));
  row_.emplace_back("Total", FromCents(entry.cents));
  row_.emplace_back("Memo", TextOrNull(entry.memo));
  store_.Insert("TransactionRecord", row_);
}

Currency Ledger::BalanceOf(std::int32_t account, const Market& market) const {
  Currency balance = FromCents(CashCents(account));
  if (AccountOf(account).type == vetlo::kInvestmentAccount) {
    for (std::int32_t item = 1; item <= static_cast<std::int32_t>(kItemCount); ++item) {
      balance += vetlo::CCur(QuantityOf(UnitsHundredths(account, item)) * market.LatestPrice(item));
    }
  }
  return balance;
}

void Ledger::WriteAccounts(const Market& market) {
  for (std::int32_t number = 0; const AccountRow& account : kAccounts) {
    ++number;
    store_.Insert("Account", {{"AccountNumber", number},
                              {"AccountName", std::string(account.name)},
                              {"AccountType", account.type},
                              {"BankName", TextOrNull(account.bank)},
                              {"AccountNames", TextOrNull(account.holders)},
                              {"Accounts", TextOrNull(account.number)},
                              {"Balance", BalanceOf(number, market)},
                              {"OpeningBalance", FromCents(Of(number).opening_cents)}});
  }
}

}  // namespace quillmarsh
