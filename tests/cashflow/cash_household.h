#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/shown_rows.h"
#include "tests/support/small_store.h"
#include "vetlo/cashflow/flow.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/forwarding.h"

namespace vetlo::testing {

// The month of these tests.
inline const Date kFrom = Day(2026, 1, 1);
inline const Date kTo = Day(2026, 1, 31);

inline constexpr std::int32_t kBank = 1;
inline constexpr std::int32_t kBroker = 5;
inline constexpr std::int32_t kHouse = 6;  // no account of cash flow

inline SmallStore Accounts() {
  SmallStore store;
  store.Account(kBank, "Bank", kCheckingAccount)
      .Account(kBroker, "Broker", kInvestmentAccount)
      .Account(kHouse, "House", kCommonAsset);
  return store;
}

inline void AddCategory(SmallStore& store, std::int32_t number, const std::string& name,
                        std::int32_t type, std::int32_t attr = 0) {
  store.Insert("Category", {{"CategoryNumber", number},
                            {"CategoryName", name},
                            {"CategoryType", type},
                            {"CategoryAttr", attr}});
}

inline void AddSubCategory(SmallStore& store, std::int32_t number, const std::string& name,
                           std::int32_t category) {
  store.Insert(
      "SubCategory",
      {{"SubCategoryNumber", number}, {"SubCategoryName", name}, {"CategoryNumber", category}});
}

// A record at the bank.
inline TestTransaction Booked(std::int32_t type, double total, const Variant& category = Null{},
                              const Variant& sub_category = Null{}) {
  return {.type = type,
          .total = total,
          .account = kBank,
          .category = category,
          .sub_category = sub_category};
}

// A record at the broker's that another account funds or receives.
inline TestTransaction Funded(std::int32_t type, double total, const Variant& category = Null{}) {
  return {.type = type,
          .total = total,
          .account = kBroker,
          .other_account = kBank,
          .category = category};
}

// The beginnings and ends of the texts, for the month of these tests.
inline const std::string kCountedInMonth =
    " AND TransactionDate>=#2026-01-01# AND TransactionDate<=#2026-01-31#"
    " AND (TransactionRecordType= 0 OR TransactionRecordType= 4) AND (NOT ISNULL(AccountNumber))";
inline const std::string kFunded = " AND (NOT ISNULL(ToOrFundAccountNumber))";

inline std::string OrdinaryIn(Flow flow) {
  return (flow == Flow::kIncoming ? "SELECT * FROM TransactionRecord WHERE TransactionType= 10"
                                  : "SELECT * FROM TransactionRecord WHERE TransactionType= 11") +
         kCountedInMonth;
}
inline std::string InvestmentIn(Flow flow) {
  return (flow == Flow::kIncoming ? "SELECT * FROM TransactionRecord WHERE (TransactionType= 8 OR "
                                    "TransactionType= 4 OR "
                                    "TransactionType= 6)"
                                  : "SELECT * FROM TransactionRecord WHERE TransactionType= 9") +
         kCountedInMonth + kFunded;
}

// What a period total opens and closes.
inline std::vector<std::string> EventsOfPeriodTotal(Flow flow) {
  const std::string ordinary = OrdinaryIn(flow);
  const std::string investment = InvestmentIn(flow);
  return {"open Account",  "open Category",  "open " + ordinary,   "close " + ordinary,
          "close Account", "close Category", "open " + investment, "close " + investment};
}

// What a total of a category or subcategory opens and closes; without a table where none is
// checked.
inline std::vector<std::string> EventsOfCategoryTotal(Flow flow, const std::string& conditions,
                                                      const std::string& checked) {
  const std::string ordinary = OrdinaryIn(flow) + conditions;
  const std::string investment = InvestmentIn(flow) + conditions;
  std::vector<std::string> events = {"open Account"};
  if (!checked.empty()) {
    events.push_back("open " + checked);
  }
  events.insert(events.end(), {"open " + ordinary, "close " + ordinary, "close Account"});
  if (!checked.empty()) {
    events.push_back("close " + checked);
  }
  events.insert(events.end(), {"open " + investment, "close " + investment});
  return events;
}

// The events without those of other texts than the ones that begin so.
inline std::vector<std::string> EventsAt(const std::vector<std::string>& events,
                                         std::string_view source) {
  std::vector<std::string> found;
  for (const std::string& event : events) {
    if (event.starts_with("open " + std::string(source)) ||
        event.starts_with("close " + std::string(source))) {
      found.push_back(event);
    }
  }
  return found;
}

// A store that cannot open what begins with a text.
class RefusingDatabase : public ForwardingDatabase {
 public:
  RefusingDatabase(Database& store, std::string refused)
      : ForwardingDatabase(store), refused_(std::move(refused)) {}

  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view strSource,
                                           RecordsetType type) override {
    if (strSource.starts_with(refused_)) {
      throw Failure(FailureNumber::kStoreUnusable);
    }
    return Store().OpenRecordset(strSource, type);
  }

 private:
  std::string refused_;
};

}  // namespace vetlo::testing
