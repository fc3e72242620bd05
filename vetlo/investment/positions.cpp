#include "vetlo/investment/positions.h"

#include "vetlo/investment/selections.h"
#include "vetlo/investment/values.h"
#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

constexpr std::string_view kPricePicture = "#,##0.00####";

// What a routine is asked for, and the rows that it adds.
class Rows {
 public:
  Rows(Database& dbDov, Positions& positions, ChartOrReport lngChartOrReportType,
       const NumberLocale& locale)
      : dbDov_(dbDov),
        positions_(positions),
        lngChartOrReportType_(lngChartOrReportType),
        locale_(locale) {}

  void Start() { positions_.Start(); }
  void Close() { positions_.Close(lngChartOrReportType_); }

  [[nodiscard]] Database& Store() const { return dbDov_; }
  [[nodiscard]] bool ForReport() const { return lngChartOrReportType_ == ChartOrReport::kReport; }

  void AddHead(const std::string& name) { Add({name, "", "", ""}); }
  void AddBlank() { Add({}); }
  void AddItem(const std::string& name, double dblQuantity, double dblPrice) {
    Add({name, FormatTrimmedPrice(dblQuantity, locale_), Format(dblPrice, kPricePicture, locale_),
         Format(CCur(dblQuantity * dblPrice), kAmountPicture, locale_)});
  }
  void AddAmount(const std::string& name, Currency amount) {
    Add({name, "", "", Format(amount, kAmountPicture, locale_)});
  }
  // What is worth nothing has no place in a chart.
  void AddToChart(Currency amount, const std::string& label) {
    if (!ForReport() && amount != Currency{}) {
      positions_.chart.Add(amount, label);
    }
  }

 private:
  void Add(PositionRow row) {
    if (ForReport()) {
      positions_.report.Add(std::move(row));
    }
  }

  Database& dbDov_;
  Positions& positions_;
  ChartOrReport lngChartOrReportType_;
  const NumberLocale& locale_;
};

// ---- by account

void ListHoldings(Rows& rows, std::int32_t account, LatestPrices& prices) {
  ForEachRowOf(rows.Store(), InvestmentItemsText(), [&](Recordset& rec) {
    const std::int32_t item = LongField(rec, "AccountItemNumber");
    const Holding holding = HeldInAccount(rows.Store(), account, item);
    const double dblPrice = prices.Of(item);
    if (rows.ForReport() && holding.blnHeld) {
      rows.AddItem(TextField(rec, "AccountItemName"), holding.dblQuantity, dblPrice);
    }
  });
}

// Stands on the cash account that serves an account; false where none does.
bool FindCashAccount(Recordset& recAssociated, Recordset& recAccount, std::int32_t account) {
  recAssociated.Seek("=", account);
  if (recAssociated.NoMatch()) {
    return false;
  }
  recAccount.Seek("=", recAssociated.Fields("AssociatedAccountNumber"));
  return true;
}

void ListAccount(Rows& rows, Recordset& rec, Recordset& recAccount, Recordset& recAssociated,
                 LatestPrices& prices) {
  const std::int32_t account = LongField(rec, "AccountNumber");
  const std::string name = TextField(rec, "AccountName");
  rows.AddHead(name);
  ListHoldings(rows, account, prices);
  Currency curAccount = CurrencyField(rec, "Balance");
  if (FindCashAccount(recAssociated, recAccount, account)) {
    const Currency curCash = CurrencyField(recAccount, "Balance");
    rows.AddAmount(TextField(recAccount, "AccountName"), curCash);
    curAccount += curCash;
  }
  rows.AddBlank();
  rows.AddAmount("Total " + name, curAccount);
  rows.AddBlank();
  rows.AddToChart(curAccount, name);
}

// ---- by type

// The section of one type, where anything of it is held.
void ListType(Rows& rows, std::int32_t type, const std::string& plural, Currency curType,
              LatestPrices& prices) {
  bool blnSectionOpen = false;
  ForEachRowOf(rows.Store(), ItemsOfTypeText(type), [&](Recordset& rec) {
    const std::int32_t item = LongField(rec, "AccountItemNumber");
    const Holding holding = HeldInAllAccounts(rows.Store(), item);
    if (!holding.blnHeld) {
      return;
    }
    if (!blnSectionOpen) {
      rows.AddHead(plural);
      blnSectionOpen = true;
    }
    const double dblPrice = prices.Of(item);
    rows.AddItem(TextField(rec, "AccountItemName"), holding.dblQuantity, dblPrice);
  });
  if (blnSectionOpen) {
    rows.AddBlank();
    rows.AddAmount("Total " + plural, curType);
    rows.AddBlank();
  }
}

void ListCashAccounts(Rows& rows, Currency curCash) {
  constexpr std::string_view kTotal = "Total Associated Cash Accounts";
  rows.AddToChart(curCash, std::string(kTotal));
  if (!rows.ForReport()) {
    return;
  }
  bool blnSectionOpen = false;
  ForEachRowOf(rows.Store(),
               "SELECT DISTINCT T1.AccountNumber,T1.AccountName,T1.Balance FROM Account AS "
               "T1,AssociatedAccountInfo AS T2 WHERE T1.AccountNumber=T2.AssociatedAccountNumber "
               "ORDER BY T1.AccountName",
               [&](Recordset& rec) {
                 const Currency curBalance = CurrencyField(rec, "Balance");
                 if (curBalance == Currency{}) {
                   return;
                 }
                 if (!blnSectionOpen) {
                   rows.AddHead("Associated Cash Account");
                   blnSectionOpen = true;
                 }
                 rows.AddAmount(TextField(rec, "AccountName"), curBalance);
               });
  if (blnSectionOpen) {
    rows.AddBlank();
    rows.AddAmount(std::string(kTotal), curCash);
  }
}

}  // namespace

Currency InvestmentsByAccount(Database& dbDov, Positions& positions,
                              ChartOrReport lngChartOrReportType, const NumberLocale& locale) {
  Rows rows(dbDov, positions, lngChartOrReportType, locale);
  ScopedRecordset recAccount(dbDov, "Account");
  ScopedRecordset recAssociated(dbDov, "AssociatedAccountInfo");
  LatestPrices prices(dbDov);
  recAccount->SetIndex(kPrimaryIndex);
  recAssociated->SetIndex(kPrimaryIndex);
  const Currency curTotal = TotalBalanceWithAssociatedCash(dbDov, AccountAttrFund);
  rows.Start();
  ForEachRowOf(dbDov, InvestmentAccountsText(), [&](Recordset& rec) {
    ListAccount(rows, rec, *recAccount, *recAssociated, prices);
  });
  rows.Close();
  return curTotal;
}

Currency InvestmentsByType(Database& dbDov, Positions& positions,
                           ChartOrReport lngChartOrReportType, const NumberLocale& locale) {
  Rows rows(dbDov, positions, lngChartOrReportType, locale);
  LatestPrices prices(dbDov);
  const Currency curTotal = TotalBalanceWithAssociatedCash(dbDov, AccountAttrFund);
  rows.Start();
  ForEachRowOf(dbDov, InvestmentTypesText(), [&](Recordset& rec) {
    const std::int32_t type = LongField(rec, "AccountItemTypeNumber");
    const std::string plural = TextField(rec, "AccountItemTypeName") + "s";
    const Currency curType = TotalValueOfItemType(dbDov, type);
    if (rows.ForReport()) {
      ListType(rows, type, plural, curType, prices);
    }
    rows.AddToChart(curType, plural);
  });
  ListCashAccounts(rows, TotalAssociatedCash(dbDov, AccountAttrFund));
  rows.Close();
  return curTotal;
}

Currency InvestmentValuesByType(Database& dbDov, AmountRows& rows,
                                ChartOrReport lngChartOrReportType) {
  const Currency curTotal = TotalBalanceWithAssociatedCash(dbDov, AccountAttrFund);
  rows.Start();
  ForEachRowOf(dbDov, InvestmentTypesText(), [&](Recordset& rec) {
    const Currency curType = TotalValueOfItemType(dbDov, LongField(rec, "AccountItemTypeNumber"));
    if (curType != Currency{}) {
      rows.Add(curType, TextField(rec, "AccountItemTypeName") + "s");
    }
  });
  const Currency curCash = TotalAssociatedCash(dbDov, AccountAttrFund);
  if (curCash != Currency{}) {
    if (lngChartOrReportType == ChartOrReport::kReport) {
      rows.AddHeading("");
    }
    rows.Add(curCash, "Associated Cash Accounts");
  }
  rows.Close();
  return curTotal;
}

}  // namespace vetlo
