#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/forwarding.h"

namespace vetlo::testing {

inline constexpr std::int32_t kBank = 1;
inline constexpr std::int32_t kBroker = 5;
inline constexpr std::int32_t kSecondBroker = 6;

inline constexpr std::int32_t kStock = 1;
inline constexpr std::int32_t kBond = 2;
inline constexpr std::int32_t kStamp = 3;  // no investment

// The charted price type; another one is there to be ignored.
inline constexpr std::int32_t kCharted = 7;
inline constexpr std::int32_t kUncharted = 3;

// A broker, the types of what can be held and the types of prices.
inline SmallStore Market() {
  SmallStore store;
  store.Account(kBank, "Bank", kCheckingAccount).Account(kBroker, "Broker", kInvestmentAccount);
  const auto type = [&](std::int32_t number, const char* name, std::int32_t basic) {
    store.Insert("AccountItemType", {{"AccountItemTypeNumber", number},
                                     {"AccountItemTypeName", name},
                                     {"BasicAccountType", basic}});
  };
  type(kStock, "Stock", 2);
  type(kBond, "Bond", 2);
  type(kStamp, "Stamp", 1);
  store.Insert("PriceType", {{"PriceTypeNumber", kUncharted}, {"PriceTypeAttr", 0}});
  store.Insert("PriceType", {{"PriceTypeNumber", kCharted}, {"PriceTypeAttr", 1}});
  return store;
}

inline void AddItem(SmallStore& store, std::int32_t number, const std::string& name,
                    std::int32_t type = kStock) {
  store.Insert(
      "AccountItem",
      {{"AccountItemNumber", number}, {"AccountItemName", name}, {"AccountItemTypeNumber", type}});
}

// A price on a day of March 2026.
inline void AddPrice(SmallStore& store, std::int32_t item, double day, double price,
                     std::int32_t price_type = kCharted) {
  store.Insert("PriceRecord", {{"AccountItemNumber", item},
                               {"PriceTypeNumber", price_type},
                               {"PriceDate", Date{Day(2026, 3, 1).days + day - 1}},
                               {"Price", price}});
}

inline void AddLatestPrice(SmallStore& store, std::int32_t item, double price) {
  store.Insert("LatestPriceInfo", {{"AccountItemNumber", item}, {"Price", price}});
}

inline void Associate(SmallStore& store, std::int32_t account, std::int32_t cash_account) {
  store.Insert("AssociatedAccountInfo",
               {{"AccountNumber", account}, {"AssociatedAccountNumber", cash_account}});
}

inline TestTransaction Traded(std::int32_t type, std::int32_t item, double total,
                              const Variant& quantity = Null{}, std::int32_t account = kBroker) {
  return {.type = type, .total = total, .account = account, .item = item, .quantity = quantity};
}

// Units that came without money.
inline void Hold(SmallStore& store, std::int32_t item, double units,
                 std::int32_t account = kBroker) {
  store.Transaction(Traded(kUnitsReceived, item, 0, units, account));
}

inline void SetBalance(SmallStore& store, std::int32_t account, double balance) {
  store.Execute("UPDATE Account SET Balance = " + std::to_string(Money(balance).units()) +
                " WHERE AccountNumber = " + std::to_string(account));
}

// What was opened, in order.
inline std::vector<std::string> OpenedIn(const KeepingStore& keeping) {
  std::vector<std::string> opened;
  for (const std::string& event : keeping.events) {
    if (event.starts_with("open ")) {
      opened.push_back(event.substr(5));
    }
  }
  return opened;
}

// A store that cannot open some texts.
class DenyingDatabase : public ForwardingDatabase {
 public:
  using Denied = std::function<bool(std::string_view source)>;

  DenyingDatabase(Database& store, Denied denied)
      : ForwardingDatabase(store), denied_(std::move(denied)) {}

  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource,
                                           RecordsetType type) override {
    if (denied_(strSource)) {
      throw Failure(FailureNumber::kStoreUnusable);
    }
    return Store().OpenRecordset(strSource, type);
  }

 private:
  Denied denied_;
};

}  // namespace vetlo::testing
