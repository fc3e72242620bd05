// Writes a household as a double-entry journal in plain text, so that programs that keep one can
// be asked what quillmarsh is asked, and be held against it.
//
//   journal_export STORE [--format ledger|beancount] > household.journal
//
// Every account of the store stands under Assets or Liabilities, cash and holdings together. What
// came in and what was spent stands under Income and Expenses, then by what counts it:
//
//   Household    the period's total and the total of its category
//   Unlisted     the period's total alone
//   Reimbursed   the total of its category alone
//   Other        neither
//
// then by category and sub-category. Prices are those of the default price type; a holding that has
// no price yet stays in units, where quillmarsh counts nothing for it.

#include <iostream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/journal_writer.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh::bench {
namespace {

using vetlo::Currency;
using vetlo::Database;
using vetlo::Date;
using vetlo::Recordset;

// ---- the household's names

struct AccountEntry {
  std::string path;
  Currency opening_balance;
  bool has_cash_flow = false;
  bool holds_items = false;
};

struct CategoryEntry {
  std::string name;
  bool in_totals = true;
  bool is_listed = true;
  std::optional<NameList> sub_names;  // none where it has no sub-category
};

struct Household {
  std::map<std::int32_t, AccountEntry> accounts;
  std::map<std::int32_t, CategoryEntry> categories;
  std::map<std::int32_t, std::string> sub_categories;
  std::map<std::int32_t, std::string> payees;
  std::map<std::int32_t, std::string> items;
};

constexpr const char* kUnassigned = "Unassigned";
constexpr const char* kUnassignedSubCategory = "Unassigned Subcategory";

// Of a category that leaves its expenses out of the period's total, and of one of neither kind,
// which has no total of its own.
constexpr std::int32_t kReimbursedCategory = 9;
constexpr std::int32_t kTransferCategory = 2;

void ReadAccounts(Database& store, const JournalWriter& writer, Household& household) {
  NameList names = writer.AccountNames();
  vetlo::ForEachRowOf(store, "Account", [&](Recordset& rec) {
    const std::int32_t type = vetlo::LongField(rec, "AccountType");
    const auto facts = vetlo::Services().AccountTypeInfo(type);
    const bool owes = type == vetlo::kCreditCard || type == vetlo::kLiability;
    household.accounts[vetlo::LongField(rec, "AccountNumber")] = {
        (owes ? "Liabilities:" : "Assets:") + names.Claim(vetlo::TextField(rec, "AccountName")),
        vetlo::CurrencyField(rec, "OpeningBalance"), facts.Has(vetlo::AccountAttrCashFlow),
        facts.Has(vetlo::AccountAttrFund)};
  });
}

void ReadCategories(Database& store, const JournalWriter& writer, Household& household) {
  NameList names = writer.AccountNames();
  names.Claim(kUnassigned);
  vetlo::ForEachRowOf(store, "Category", [&](Recordset& rec) {
    household.categories[vetlo::LongField(rec, "CategoryNumber")] = {
        names.Claim(vetlo::TextField(rec, "CategoryName")),
        vetlo::LongField(rec, "CategoryAttr") != kReimbursedCategory,
        vetlo::LongField(rec, "CategoryType") != kTransferCategory, std::nullopt};
  });
  vetlo::ForEachRowOf(store, "SubCategory", [&](Recordset& rec) {
    const auto category = household.categories.find(vetlo::LongField(rec, "CategoryNumber"));
    if (category == household.categories.end()) {
      return;
    }
    std::optional<NameList>& sub_names = category->second.sub_names;
    if (!sub_names) {
      sub_names = writer.AccountNames();
      sub_names->Claim(kUnassignedSubCategory);
    }
    household.sub_categories[vetlo::LongField(rec, "SubCategoryNumber")] =
        sub_names->Claim(vetlo::TextField(rec, "SubCategoryName"));
  });
}

Household ReadHousehold(Database& store, const JournalWriter& writer) {
  Household household;
  ReadAccounts(store, writer, household);
  ReadCategories(store, writer, household);
  vetlo::ForEachRowOf(store, "Payee", [&](Recordset& rec) {
    household.payees[vetlo::LongField(rec, "PayeeNumber")] = vetlo::TextField(rec, "PayeeName");
  });
  NameList commodities = writer.CommodityNames();
  vetlo::ForEachRowOf(store, "AccountItem", [&](Recordset& rec) {
    household.items[vetlo::LongField(rec, "AccountItemNumber")] =
        commodities.Claim(vetlo::TextField(rec, "AccountItemName"));
  });
  return household;
}

// The entry of a number, null for none; a number that is nobody's fails.
template <typename Entry>
const Entry* EntryOf(const std::map<std::int32_t, Entry>& entries, std::optional<std::int32_t> key,
                     const char* kind) {
  if (!key) {
    return nullptr;
  }
  const auto found = entries.find(*key);
  if (found == entries.end()) {
    throw vetlo::Failure(vetlo::FailureNumber::kNoCurrentRecord,
                         std::string("there is no ") + kind + " " + std::to_string(*key));
  }
  return &found->second;
}

// ---- one transaction

struct Movement {
  std::int32_t type = 0;
  const AccountEntry* own = nullptr;
  const AccountEntry* other = nullptr;  // at the other end
  const CategoryEntry* category = nullptr;
  const std::string* sub_category = nullptr;
  const std::string* payee = nullptr;
  const std::string* item = nullptr;
  double quantity = 0;
  Currency total;

  // What the account named first has of it: its cash leaves, or a holding changes.
  [[nodiscard]] bool LeavesOwn() const {
    return vetlo::Services().TransactionTypeInfo(type, 0) == vetlo::MoneyFlow::kLeaves;
  }
  [[nodiscard]] bool IsIncomeOnHolding() const {
    return type == vetlo::kDividend || type == vetlo::kHoldingInterest ||
           type == vetlo::kCapitalGain;
  }
  [[nodiscard]] bool IsIncome() const { return type == vetlo::kIncome || IsIncomeOnHolding(); }
  [[nodiscard]] bool IsExpense() const {
    return type == vetlo::kExpense || type == vetlo::kHoldingCost;
  }
  [[nodiscard]] bool MovesUnitsAlone() const {
    return type == vetlo::kUnitsReceived || type == vetlo::kUnitsGivenAway;
  }
  [[nodiscard]] bool IsTrade() const { return type == vetlo::kBuy || type == vetlo::kSell; }
  [[nodiscard]] bool IsOnHolding() const {
    return IsTrade() || IsIncomeOnHolding() || type == vetlo::kHoldingCost;
  }
};

std::optional<std::int32_t> OptionalLong(Recordset& rec, std::string_view column) {
  const vetlo::Variant value = rec.Fields(column);
  return vetlo::IsNull(value) ? std::nullopt : std::optional(vetlo::ToLong(value));
}

Movement ReadMovement(Recordset& rec, const Household& household) {
  Movement movement;
  movement.type = vetlo::LongField(rec, "TransactionType");
  movement.own = EntryOf(household.accounts, OptionalLong(rec, "AccountNumber"), "account");
  movement.other =
      EntryOf(household.accounts, OptionalLong(rec, "ToOrFundAccountNumber"), "account");
  movement.category =
      EntryOf(household.categories, OptionalLong(rec, "CategoryNumber"), "category");
  movement.sub_category =
      EntryOf(household.sub_categories, OptionalLong(rec, "SubCategoryNumber"), "sub-category");
  movement.payee = EntryOf(household.payees, OptionalLong(rec, "PayeeNumber"), "payee");
  movement.item = EntryOf(household.items, OptionalLong(rec, "AccountItemNumber"), "item");
  const vetlo::Variant quantity = rec.Fields("Quantity");
  movement.quantity = vetlo::IsNull(quantity) ? 0 : vetlo::ToDouble(quantity);
  movement.total = vetlo::CurrencyField(rec, "Total");
  return movement;
}

// The name of the part of Income and Expenses that what counts it gives.
const char* PartOf(const Movement& movement) {
  const bool on_holding = movement.IsOnHolding();
  const bool is_counted = movement.own != nullptr &&
                          (on_holding ? movement.other != nullptr : movement.own->has_cash_flow);
  if (!is_counted) {
    return "Other";
  }
  const CategoryEntry* const category = movement.category;
  const bool in_total = on_holding || category == nullptr || category->in_totals;
  const bool is_listed = category == nullptr || category->is_listed;
  if (in_total) {
    return is_listed ? "Household" : "Unlisted";
  }
  return is_listed ? "Reimbursed" : "Other";
}

// Puts a transaction's postings together and keeps the sum of what they are worth.
class PostingList {
 public:
  void AddMoney(const std::string& account, Currency amount) {
    if (amount != Currency{}) {
      postings_.push_back({account, amount, {}, 0});
      sum_ += amount;
    }
  }
  void AddUnits(const std::string& account, const std::string& item, double units, Currency cost) {
    postings_.push_back({account, cost, item, units});
    sum_ += units < 0 ? -cost : cost;
  }

  [[nodiscard]] Currency Sum() const { return sum_; }
  [[nodiscard]] const std::vector<Posting>& Postings() const { return postings_; }

 private:
  std::vector<Posting> postings_;
  Currency sum_;
};

class HouseholdJournal {
 public:
  HouseholdJournal(Database& store, JournalWriter& writer)
      : store_(store), writer_(writer), household_(ReadHousehold(store, writer)) {
    NameList names = writer.AccountNames();
    opening_ = "Equity:" + names.Claim("Opening Balances");
    corrections_ = "Equity:" + names.Claim("Corrections");
    units_ = "Equity:" + names.Claim("Units");
    unassigned_ = writer.AccountNames().Claim(kUnassigned);
    unassigned_sub_category_ = writer.AccountNames().Claim(kUnassignedSubCategory);
  }

  void Write() {
    writer_.Begin();
    WritePrices();
    bool opened = false;
    vetlo::ForEachRowOf(store_,
                        "SELECT * FROM TransactionRecord WHERE TransactionRecordType= 0 OR "
                        "TransactionRecordType= 4 ORDER BY TransactionDate,TransactionRecordNumber",
                        [&](Recordset& rec) {
                          const Date day = vetlo::DayOf(vetlo::DateField(rec, "TransactionDate"));
                          if (!opened) {
                            WriteOpening(vetlo::AddDays(day, -1));
                            opened = true;
                          }
                          WriteTransaction(day, ReadMovement(rec, household_));
                        });
    if (!opened) {
      WriteOpening(kDayWithoutHistory);
    }
    writer_.End();
  }

 private:
  static constexpr Date kDayWithoutHistory{36526};  // 2000-01-01

  [[nodiscard]] std::optional<std::int32_t> DefaultPriceType() const {
    std::optional<std::int32_t> number;
    vetlo::ForEachRowOf(store_, "PriceType", [&](Recordset& rec) {
      if (!number && vetlo::LongField(rec, "PriceTypeAttr") == vetlo::kDefaultPriceType) {
        number = vetlo::LongField(rec, "PriceTypeNumber");
      }
    });
    return number;
  }

  // Of several prices on a day the last counts.
  void WritePrices() {
    const auto price_type = DefaultPriceType();
    if (!price_type) {
      return;
    }
    std::map<std::pair<std::int32_t, double>, double> prices;
    vetlo::ForEachRowOf(store_,
                        "SELECT * FROM PriceRecord WHERE PriceTypeNumber= " +
                            std::to_string(*price_type) + " ORDER BY PriceDate",
                        [&](Recordset& rec) {
                          const Date day = vetlo::DayOf(vetlo::DateField(rec, "PriceDate"));
                          prices[{vetlo::LongField(rec, "AccountItemNumber"), day.days}] =
                              vetlo::DoubleField(rec, "Price");
                        });
    for (const auto& [item_and_day, price] : prices) {
      writer_.WritePrice(Date{item_and_day.second},
                         *EntryOf(household_.items, item_and_day.first, "item"), price);
    }
  }

  void WriteOpening(Date day) {
    PostingList list;
    for (const auto& [number, account] : household_.accounts) {
      list.AddMoney(account.path, account.opening_balance);
    }
    list.AddMoney(opening_, -list.Sum());
    WritePostings(day, "Opening balances", list);
  }

  void WriteTransaction(Date day, const Movement& movement) {
    PostingList list;
    AddUnits(movement, list);
    AddCash(movement, list);
    if (movement.IsIncome()) {
      list.AddMoney("Income:" + CategoryPath(movement), -movement.total);
    } else if (movement.IsExpense()) {
      list.AddMoney("Expenses:" + CategoryPath(movement), movement.total);
    }
    list.AddMoney(corrections_, -list.Sum());
    WritePostings(day, movement.payee == nullptr ? kWithoutPayee : *movement.payee, list);
  }

  void WritePostings(Date day, std::string_view payee, const PostingList& list) {
    if (!list.Postings().empty()) {
      writer_.WriteTransaction(day, payee, list.Postings());
    }
  }

  // Units that were paid for stand at their cost; others come from nowhere.
  void AddUnits(const Movement& movement, PostingList& list) const {
    const bool moves_units = movement.IsTrade() || movement.MovesUnitsAlone();
    if (!moves_units || movement.own == nullptr || !movement.own->holds_items ||
        movement.item == nullptr || movement.quantity == 0) {
      return;
    }
    const bool adds = movement.type == vetlo::kBuy || movement.type == vetlo::kUnitsReceived;
    const double units = adds ? movement.quantity : -movement.quantity;
    if (movement.IsTrade() && movement.quantity > 0 && movement.total > Currency{}) {
      list.AddUnits(movement.own->path, *movement.item, units, movement.total);
    } else {
      list.AddUnits(movement.own->path, *movement.item, units, Currency{});
      list.AddUnits(units_, *movement.item, -units, Currency{});
    }
  }

  static void AddCash(const Movement& movement, PostingList& list) {
    if (movement.MovesUnitsAlone()) {
      return;
    }
    const Currency change = movement.LeavesOwn() ? -movement.total : movement.total;
    const bool one_moves_alone = movement.IsOnHolding();
    const bool other_moves = movement.other != nullptr;
    if (movement.own != nullptr && !(one_moves_alone && other_moves)) {
      list.AddMoney(movement.own->path, change);
    }
    if (other_moves) {
      list.AddMoney(movement.other->path, one_moves_alone ? change : -change);
    }
  }

  [[nodiscard]] std::string CategoryPath(const Movement& movement) const {
    std::string path = std::string(PartOf(movement)) + ":";
    const CategoryEntry* const category = movement.category;
    if (category == nullptr) {
      return path + unassigned_;
    }
    path += category->name;
    if (movement.sub_category != nullptr) {
      return path + ":" + *movement.sub_category;
    }
    return category->sub_names ? path + ":" + unassigned_sub_category_ : path;
  }

  static constexpr std::string_view kWithoutPayee = "No payee";

  Database& store_;
  JournalWriter& writer_;
  Household household_;
  std::string opening_;
  std::string corrections_;
  std::string units_;
  std::string unassigned_;
  std::string unassigned_sub_category_;
};

struct Arguments {
  std::string store;
  JournalFormat format = JournalFormat::kLedger;
};

std::optional<Arguments> ReadArguments(const std::vector<std::string>& words) {
  if (words.size() != 1 && !(words.size() == 3 && words[1] == "--format")) {
    return std::nullopt;
  }
  Arguments arguments{words[0]};
  if (words.size() == 3 && words[2] == "beancount") {
    arguments.format = JournalFormat::kBeancount;
  } else if (words.size() == 3 && words[2] != "ledger") {
    return std::nullopt;
  }
  return arguments;
}

void Export(const Arguments& arguments) {
  const auto store = vetlo::OpenStore(arguments.store, vetlo::StoreAccess::kReadOnly);
  const vetlo::Snapshot snapshot(*store);
  const auto writer = MakeJournalWriter(arguments.format, std::cout);
  HouseholdJournal(*store, *writer).Write();
  std::cout.flush();
  if (!std::cout) {
    throw std::runtime_error("the journal could not be written");
  }
}

}  // namespace
}  // namespace quillmarsh::bench

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const auto arguments = quillmarsh::bench::ReadArguments({argv + 1, argv + argc});
  if (!arguments) {
    std::cerr << "usage: journal_export STORE [--format ledger|beancount] > household.journal\n";
    return 2;
  }
  try {
    quillmarsh::bench::Export(*arguments);
  } catch (const std::exception& failure) {
    std::cerr << "journal_export: " << failure.what() << "\n";
    return 1;
  }
  return 0;
}
