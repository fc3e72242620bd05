#include "vetlo/cashflow/period_totals.h"

#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

// CategoryAttr of a category whose records no total counts.
constexpr std::int32_t kNotCounted = 9;

bool CategoryCounts(Recordset& recCategory, const Variant& varCategoryNumber) {
  if (IsNull(varCategoryNumber)) {
    return true;
  }
  recCategory.Seek("=", varCategoryNumber);
  return LongField(recCategory, "CategoryAttr") != kNotCounted;
}

Currency OrdinaryTotal(Database& dbDov, const std::string& strSql) {
  Currency curTotal;
  const auto recAccount = dbDov.OpenRecordset("Account");
  const auto recCategory = dbDov.OpenRecordset("Category");
  recAccount->SetIndex(kPrimaryIndex);
  recCategory->SetIndex(kPrimaryIndex);
  const auto recRecords = dbDov.OpenRecordset(strSql);
  ForEachRow(*recRecords, [&](Recordset& rec) {
    if (IsCashFlowAccount(*recAccount, rec.Fields("AccountNumber")) &&
        CategoryCounts(*recCategory, rec.Fields("CategoryNumber"))) {
      curTotal += CurrencyField(rec, "Total");
    }
  });
  recRecords->Close();
  recAccount->Close();
  recCategory->Close();
  return curTotal;
}

Currency InvestmentTotal(Database& dbDov, const std::string& strSql) {
  Currency curTotal;
  const auto recRecords = dbDov.OpenRecordset(strSql);
  ForEachRow(*recRecords, [&](Recordset& rec) { curTotal += CurrencyField(rec, "Total"); });
  recRecords->Close();
  return curTotal;
}

}  // namespace

bool IsCashFlowAccount(Recordset& recAccount, const Variant& varAccountNumber) {
  recAccount.Seek("=", varAccountNumber);
  return Services().AccountTypeInfo(LongField(recAccount, "AccountType")).Has(AccountAttrCashFlow);
}

Currency TotalOfFlow(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate) {
  const Currency curOrdinary = OrdinaryTotal(dbDov, OrdinaryText(flow, dtmFromDate, dtmToDate));
  return curOrdinary +
         InvestmentTotal(dbDov, InvestmentText(flow, dtmFromDate, dtmToDate) + kFundedByAnother);
}

Currency TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate) {
  return TotalOfFlow(dbDov, Flow::kIncoming, dtmFromDate, dtmToDate);
}

Currency TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate) {
  return TotalOfFlow(dbDov, Flow::kOutgoing, dtmFromDate, dtmToDate);
}

}  // namespace vetlo
