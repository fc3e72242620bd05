#include "vetlo/cashflow/investment_flows.h"

#include <initializer_list>
#include <string>

#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

std::string AnyOf(std::initializer_list<std::int32_t> types) {
  std::string strTypes;
  for (const std::int32_t type : types) {
    strTypes += (strTypes.empty() ? "(" : " OR ") + ("T1.TransactionType=" + Str(type));
  }
  return strTypes + ")";
}

Currency MovedAtAccount(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                        std::int32_t lngAccountNumber, const std::string& strTypes) {
  Currency curTotal;
  const auto recRecords = dbDov.OpenRecordset(
      "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
      "T1.AccountNumber=T2.AccountNumber AND T2.AccountType=" +
      Str(kInvestmentAccount) + " AND T1.ToOrFundAccountNumber=" + Str(lngAccountNumber) + " AND " +
      strTypes + "  AND T1.TransactionDate>=" + Services().SqlDateLiteral(dtmFromDate) +
      " AND T1.TransactionDate<=" + Services().SqlDateLiteral(dtmToDate));
  ForEachRow(*recRecords, [&](Recordset& rec) { curTotal += CurrencyField(rec, "Total"); });
  recRecords->Close();
  return curTotal;
}

}  // namespace

Currency InvestmentIncomeIntoAccount(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                     std::int32_t lngAccountNumber) {
  return MovedAtAccount(dbDov, dtmFromDate, dtmToDate, lngAccountNumber,
                        AnyOf({kSell, kDividend, kHoldingInterest, kCapitalGain}));
}

Currency InvestmentExpensesFromAccount(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                       std::int32_t lngAccountNumber) {
  return MovedAtAccount(dbDov, dtmFromDate, dtmToDate, lngAccountNumber,
                        AnyOf({kBuy, kHoldingCost}));
}

Currency TotalOfInvestmentFlow(Database& dbDov, const InvestmentFlow& flow, Date dtmFromDate,
                               Date dtmToDate) {
  Currency curTotal;
  const auto recAccount =
      dbDov.OpenRecordset("SELECT * FROM Account WHERE AccountType<>" + Str(kInvestmentAccount));
  ForEachRow(*recAccount, [&](Recordset& rec) {
    curTotal += flow.of_account(dbDov, dtmFromDate, dtmToDate, LongField(rec, "AccountNumber"));
  });
  recAccount->Close();
  return curTotal;
}

}  // namespace vetlo
