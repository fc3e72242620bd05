#include "vetlo/balance/account_list.h"

#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {

void AccountListRows(Database& dbDov, GrowingArray<AccountRow>& rows, const NumberLocale& locale) {
  rows.Start();
  ForEachRowOf(dbDov, "SELECT * FROM Account ORDER BY AccountName,AccountType,AccountNumber",
               [&](Recordset& rec) {
                 const auto type = Services().AccountTypeInfo(LongField(rec, "AccountType"));
                 const Currency curBalance = CurrencyField(rec, "Balance");
                 const bool positive = type.Has(AccountAttrPositiveBalance);
                 rows.Add({TextField(rec, "AccountName"), std::string(type.name),
                           TextFieldOrEmpty(rec, "BankName"), TextFieldOrEmpty(rec, "AccountNames"),
                           TextFieldOrEmpty(rec, "Accounts"),
                           Format(positive ? curBalance : -curBalance, kAmountPicture, locale)});
               });
  rows.Close();
}

}  // namespace vetlo
