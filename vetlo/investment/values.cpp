#include "vetlo/investment/values.h"

#include "vetlo/investment/selections.h"
#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

bool HasFlag(Recordset& recAccount, std::int32_t lngAttribute) {
  return Services().AccountTypeInfo(LongField(recAccount, "AccountType")).Has(lngAttribute);
}

// The worth of one item in all accounts that hold such items.
void AddWorthOfItem(Database& dbDov, Recordset& recAccount, std::int32_t item, std::int32_t mask,
                    double dblPrice, Currency& curTotal) {
  ForEachRow(recAccount, [&](Recordset& rec) {
    if (!HasFlag(rec, mask)) {
      return;
    }
    const std::int32_t account = LongField(rec, "AccountNumber");
    // An account without the item fails here and adds nothing.
    ResumeNext(dbDov,
               [&] { curTotal += CCur(Services().QuantityHeld(dbDov, account, item) * dblPrice); });
  });
}

}  // namespace

Holding HeldInAccount(Database& dbDov, std::int32_t lngAccountNumber,
                      std::int32_t lngAccountItemNumber) {
  Holding holding;
  holding.blnHeld = ResumeNext(dbDov, [&] {
                      holding.dblQuantity =
                          Services().QuantityHeld(dbDov, lngAccountNumber, lngAccountItemNumber);
                    }) == 0;
  return holding;
}

Holding HeldInAllAccounts(Database& dbDov, std::int32_t lngAccountItemNumber) {
  Holding all;
  ForEachRowOf(dbDov, InvestmentAccountsText(), [&](Recordset& rec) {
    const Holding one = HeldInAccount(dbDov, LongField(rec, "AccountNumber"), lngAccountItemNumber);
    all.dblQuantity += one.dblQuantity;
    all.blnHeld = all.blnHeld || one.blnHeld;
  });
  return all;
}

LatestPrices::LatestPrices(Database& dbDov) : dbDov_(dbDov), rec_(dbDov, "LatestPriceInfo") {
  rec_->SetIndex(kPrimaryIndex);
}

double LatestPrices::Of(std::int32_t lngAccountItemNumber) {
  ResumeNext(dbDov_,
             [&] { dblPrice_ = Services().LatestPriceOfItem(*rec_, lngAccountItemNumber); });
  return dblPrice_;
}

Currency TotalValueOfItemType(Database& dbDov, std::int32_t lngAccountItemTypeNumber) {
  ScopedRecordset recType(dbDov, "AccountItemType");
  recType->SetIndex(kPrimaryIndex);
  recType->Seek("=", lngAccountItemTypeNumber);
  if (recType->NoMatch()) {
    return {};
  }
  const std::int32_t mask = LongField(*recType, "BasicAccountType");
  ScopedRecordset recAccount(dbDov, "Account");
  LatestPrices prices(dbDov);
  if (!prices.AreThere()) {
    return {};
  }
  Currency curTotal;
  ForEachRowOf(
      dbDov,
      "SELECT * FROM AccountItem WHERE AccountItemTypeNumber=" + Str(lngAccountItemTypeNumber),
      [&](Recordset& rec) {
        const std::int32_t item = LongField(rec, "AccountItemNumber");
        AddWorthOfItem(dbDov, *recAccount, item, mask, prices.Of(item), curTotal);
      });
  return curTotal;
}

Currency TotalBalanceOfAttribute(Database& dbDov, std::int32_t lngAttribute) {
  ScopedRecordset recAccount(dbDov, "Account");
  recAccount->SetIndex(kPrimaryIndex);
  Currency curTotal;
  if (recAccount->RecordCount() > 0) {
    ForEachRow(*recAccount, [&](Recordset& rec) {
      if (HasFlag(rec, lngAttribute)) {
        curTotal += CurrencyField(rec, "Balance");
      }
    });
  }
  recAccount.Close();
  return curTotal;
}

Currency TotalAssociatedCash(Database& dbDov, std::int32_t lngAttribute) {
  ScopedRecordset recAccount(dbDov, "Account");
  recAccount->SetIndex(kPrimaryIndex);
  Currency curTotal;
  ForEachRowOf(dbDov,
               "SELECT DISTINCT AssociatedAccountNumber,AccountNumber FROM "
               "AssociatedAccountInfo",
               [&](Recordset& rec) {
                 recAccount->Seek("=", rec.Fields("AccountNumber"));
                 if (HasFlag(*recAccount, lngAttribute)) {
                   recAccount->Seek("=", rec.Fields("AssociatedAccountNumber"));
                   curTotal += CurrencyField(*recAccount, "Balance");
                 }
               });
  recAccount.Close();
  return curTotal;
}

Currency TotalBalanceWithAssociatedCash(Database& dbDov, std::int32_t lngAttribute) {
  // One after the other: the operands of a sum come in no order.
  const Currency curBalances = TotalBalanceOfAttribute(dbDov, lngAttribute);
  return curBalances + TotalAssociatedCash(dbDov, lngAttribute);
}

}  // namespace vetlo
