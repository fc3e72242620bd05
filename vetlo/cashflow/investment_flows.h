#pragma once

#include <string_view>

#include "vetlo/cashflow/flow.h"
#include "vetlo/store/database.h"

namespace vetlo {

// What the investment accounts brought to another account and took from it, sales and purchases
// included, whatever the type of the record.
Currency InvestmentIncomeIntoAccount(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                     std::int32_t lngAccountNumber);
Currency InvestmentExpensesFromAccount(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                       std::int32_t lngAccountNumber);

// One direction of that, and its words.
struct InvestmentFlow {
  Flow flow;
  Currency (*of_account)(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                         std::int32_t lngAccountNumber);
  std::string_view heading;
  std::string_view total_label;
};

inline constexpr InvestmentFlow kInvestmentIncome = {Flow::kIncoming, InvestmentIncomeIntoAccount,
                                                     "Income from Investment Accounts",
                                                     "Total Income from Investment Accounts"};
inline constexpr InvestmentFlow kInvestmentExpenses = {
    Flow::kOutgoing, InvestmentExpensesFromAccount, "Expenses on Investment Accounts",
    "Total Expenses on Investment Accounts"};

// The sum over all accounts that are no investment accounts.
Currency TotalOfInvestmentFlow(Database& dbDov, const InvestmentFlow& flow, Date dtmFromDate,
                               Date dtmToDate);

inline Currency TotalIncomeFromInvestmentAccounts(Database& dbDov, Date dtmFromDate,
                                                  Date dtmToDate) {
  return TotalOfInvestmentFlow(dbDov, kInvestmentIncome, dtmFromDate, dtmToDate);
}
inline Currency TotalExpensesOnInvestmentAccounts(Database& dbDov, Date dtmFromDate,
                                                  Date dtmToDate) {
  return TotalOfInvestmentFlow(dbDov, kInvestmentExpenses, dtmFromDate, dtmToDate);
}

}  // namespace vetlo
