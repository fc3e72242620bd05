#include "vetlo/investment/yield.h"

#include <functional>

#include "vetlo/investment/selections.h"
#include "vetlo/investment/values.h"
#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

constexpr auto kCost = YieldFamily::kCost;
constexpr auto kReturn = YieldFamily::kReturn;

// ---- the sums

// The records that count and the types of a family, with the prefix that a join needs.
std::string TypeClauses(YieldFamily family, const std::string& prefix) {
  const std::string type = prefix + "TransactionType=";
  std::string clauses = " AND (" + prefix + "TransactionRecordType=" + Str(kOrdinaryRecord) +
                        " OR " + prefix + "TransactionRecordType=" + Str(kSplitLine) + ") AND (";
  if (family == kCost) {
    return clauses + type + Str(kBuy) + " OR " + type + Str(kHoldingCost) + ")";
  }
  return clauses + type + Str(kSell) + " OR " + type + Str(kDividend) + " OR " + type +
         Str(kHoldingInterest) + " OR " + type + Str(kCapitalGain) + ")";
}

Currency SumOf(Database& dbDov, const std::string& strSql) {
  Currency curTotal;
  ForEachRowOf(dbDov, strSql, [&](Recordset& rec) { curTotal += CurrencyField(rec, "Total"); });
  return curTotal;
}

// ---- a scope's amounts and texts

struct Amounts {
  Currency curValue;
  Currency curReturn;
  Currency curCost;

  [[nodiscard]] Currency GainLoss() const { return curValue + curReturn - curCost; }
  [[nodiscard]] bool HasCost() const { return curCost != Currency{}; }
  [[nodiscard]] bool IsNothing() const {
    return curValue == Currency{} && curReturn == Currency{} && curCost == Currency{};
  }
  [[nodiscard]] double Percent() const { return ToDouble(GainLoss()) / ToDouble(curCost) * 100; }

  // Through Currency; 0 where nothing went in, or where the yield is past all bounds.
  [[nodiscard]] Currency RoundedPercent(FailureListener& listener) const {
    Currency curYield;
    if (HasCost()) {
      ResumeNext(listener, [&] { curYield = CCur(Percent()); });
    }
    return curYield;
  }
};

YieldRow RowOf(const std::string& name, const Amounts& amounts, const NumberLocale& locale,
               FailureListener& listener) {
  YieldRow row{name, Format(amounts.GainLoss(), kAmountPicture, locale), ""};
  if (amounts.HasCost()) {
    ResumeNext(listener,
               [&] { row.strYield = Format(amounts.Percent(), kAmountPicture, locale) + "%"; });
  }
  return row;
}

// The rows of one account or type: its head before its first row, its total behind its last.
class Section {
 public:
  Section(Yields& yields, bool for_report, const NumberLocale& locale, FailureListener& listener)
      : yields_(yields), for_report_(for_report), locale_(locale), listener_(listener) {}

  // The head stands also where the item's value then fails.
  void AddItem(const std::string& head, const std::string& name, const Holding& holding,
               double dblPrice, Amounts& amounts) {
    AddHeadOnce(head);
    amounts.curValue = CCur(holding.dblQuantity * dblPrice);
    yields_.report.Add(RowOf(name, amounts, locale_, listener_));
  }

  void Finish(const std::string& head, const std::string& chart_label, const Amounts& amounts) {
    if (!for_report_) {
      const Currency curYield = amounts.RoundedPercent(listener_);
      if (curYield != Currency{}) {
        yields_.chart.Add(curYield, chart_label);
      }
      return;
    }
    if (amounts.IsNothing()) {
      return;
    }
    AddHeadOnce(head);
    yields_.report.Add({});
    yields_.report.Add(RowOf("Total " + head, amounts, locale_, listener_));
    yields_.report.Add({});
  }

 private:
  void AddHeadOnce(const std::string& head) {
    if (!open_) {
      yields_.report.Add({head, "", ""});
      open_ = true;
    }
  }

  Yields& yields_;
  bool for_report_;
  const NumberLocale& locale_;
  FailureListener& listener_;
  bool open_ = false;
};

Amounts AmountsOfAll(Database& dbDov) {
  Amounts all;
  all.curValue = TotalBalanceOfAttribute(dbDov, AccountAttrFund);
  all.curReturn = SumOfAllInvestments(dbDov, kReturn, AccountAttrFund);
  all.curCost = SumOfAllInvestments(dbDov, kCost, AccountAttrFund);
  return all;
}

// The gain or loss of all.
Currency StartWith(Yields& yields, const Amounts& all, FailureListener& listener) {
  const Currency curTotalGainLoss = all.GainLoss();
  yields.curTotalYield = all.RoundedPercent(listener);
  yields.Start();
  return curTotalGainLoss;
}

// A sum that fails leaves in its place what was there before.
void Keep(FailureListener& listener, Currency& curSum, const std::function<Currency()>& sum) {
  ResumeNext(listener, [&] { curSum = sum(); });
}

// True for an item that is not held and never was traded.
bool IsUntouched(const Holding& holding, const Amounts& amounts) {
  return !holding.blnHeld && amounts.curReturn == Currency{} && amounts.curCost == Currency{};
}

// The items of one account. The amounts go from item to item: what fails keeps the one before.
void ListItemsOfAccount(Database& dbDov, std::int32_t account, const std::string& account_name,
                        LatestPrices& prices, Amounts& amounts, bool for_report, Section& section) {
  ForEachRowOf(dbDov, InvestmentItemsText(), [&](Recordset& rec) {
    const std::int32_t item = LongField(rec, "AccountItemNumber");
    const Holding holding = HeldInAccount(dbDov, account, item);
    const double dblPrice = prices.Of(item);
    Keep(dbDov, amounts.curReturn,
         [&] { return SumOfItemInAccount(dbDov, kReturn, account, item); });
    Keep(dbDov, amounts.curCost, [&] { return SumOfItemInAccount(dbDov, kCost, account, item); });
    if (IsUntouched(holding, amounts) || !for_report) {
      return;
    }
    section.AddItem(account_name, TextField(rec, "AccountItemName"), holding, dblPrice, amounts);
  });
}

void ListItemsOfType(Database& dbDov, std::int32_t type, const std::string& head,
                     LatestPrices& prices, Amounts& amounts, Section& section) {
  ForEachRowOf(dbDov, ItemsOfTypeText(type), [&](Recordset& rec) {
    const std::int32_t item = LongField(rec, "AccountItemNumber");
    const Holding holding = HeldInAllAccounts(dbDov, item);
    const double dblPrice = prices.Of(item);
    Keep(dbDov, amounts.curReturn, [&] { return SumOfItem(dbDov, kReturn, item); });
    Keep(dbDov, amounts.curCost, [&] { return SumOfItem(dbDov, kCost, item); });
    if (IsUntouched(holding, amounts)) {
      return;
    }
    section.AddItem(head, TextField(rec, "AccountItemName"), holding, dblPrice, amounts);
  });
}

}  // namespace

Currency SumOfItemInAccount(Database& dbDov, YieldFamily family, std::int32_t lngAccountNumber,
                            std::int32_t lngAccountItemNumber) {
  return SumOf(dbDov,
               "SELECT * FROM TransactionRecord WHERE AccountNumber=" + Str(lngAccountNumber) +
                   " AND AccountItemNumber=" + Str(lngAccountItemNumber) + TypeClauses(family, ""));
}

Currency SumOfItem(Database& dbDov, YieldFamily family, std::int32_t lngAccountItemNumber) {
  return SumOf(dbDov, "SELECT * FROM TransactionRecord WHERE AccountItemNumber=" +
                          Str(lngAccountItemNumber) + TypeClauses(family, ""));
}

Currency SumOfAccount(Database& dbDov, YieldFamily family, std::int32_t lngAccountNumber) {
  return SumOf(dbDov, "SELECT * FROM TransactionRecord WHERE AccountNumber=" +
                          Str(lngAccountNumber) + TypeClauses(family, ""));
}

Currency SumOfItemType(Database& dbDov, YieldFamily family, std::int32_t lngAccountItemTypeNumber) {
  return SumOf(dbDov,
               "SELECT T1.* FROM TransactionRecord AS T1,AccountItem AS T2 WHERE "
               "T1.AccountItemNumber=T2.AccountItemNumber AND T2.AccountItemTypeNumber=" +
                   Str(lngAccountItemTypeNumber) + TypeClauses(family, "T1."));
}

Currency SumOfAllInvestments(Database& dbDov, YieldFamily family, std::int32_t lngAttribute) {
  // There is no text for any other attribute, and nothing cannot be opened.
  return SumOf(dbDov, lngAttribute != AccountAttrFund
                          ? ""
                          : "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
                            "T1.AccountNumber=T2.AccountNumber AND (T2.AccountType=" +
                                Str(kInvestmentAccount) + ")" + TypeClauses(family, "T1."));
}

Currency YieldByAccount(Database& dbDov, Yields& yields, ChartOrReport lngChartOrReportType,
                        const NumberLocale& locale) {
  const bool for_report = lngChartOrReportType == ChartOrReport::kReport;
  ScopedRecordset recAccount(dbDov, "Account");
  LatestPrices prices(dbDov);
  recAccount->SetIndex(kPrimaryIndex);
  Amounts amounts = AmountsOfAll(dbDov);
  const Currency curTotalGainLoss = StartWith(yields, amounts, dbDov);
  ForEachRowOf(dbDov, InvestmentAccountsText(), [&](Recordset& rec) {
    const std::int32_t account = LongField(rec, "AccountNumber");
    const std::string name = TextField(rec, "AccountName");
    Section section(yields, for_report, locale, dbDov);
    ListItemsOfAccount(dbDov, account, name, prices, amounts, for_report, section);
    recAccount->Seek("=", account);
    amounts.curValue = CurrencyField(*recAccount, "Balance");
    amounts.curReturn = SumOfAccount(dbDov, kReturn, account);
    amounts.curCost = SumOfAccount(dbDov, kCost, account);
    section.Finish(name, name + " Yield", amounts);
  });
  yields.Close(lngChartOrReportType);
  return curTotalGainLoss;
}

Currency YieldByType(Database& dbDov, Yields& yields, ChartOrReport lngChartOrReportType,
                     const NumberLocale& locale) {
  const bool for_report = lngChartOrReportType == ChartOrReport::kReport;
  LatestPrices prices(dbDov);
  const Currency curTotalGainLoss = StartWith(yields, AmountsOfAll(dbDov), dbDov);
  Amounts item_amounts;
  ForEachRowOf(dbDov, InvestmentTypesText(), [&](Recordset& rec) {
    const std::int32_t type = LongField(rec, "AccountItemTypeNumber");
    const std::string head = TextField(rec, "AccountItemTypeName") + " Investment";
    Amounts amounts;
    amounts.curValue = TotalValueOfItemType(dbDov, type);
    amounts.curReturn = SumOfItemType(dbDov, kReturn, type);
    amounts.curCost = SumOfItemType(dbDov, kCost, type);
    Section section(yields, for_report, locale, dbDov);
    if (for_report) {
      ListItemsOfType(dbDov, type, head, prices, item_amounts, section);
    }
    section.Finish(head, head + " Yield", amounts);
  });
  yields.Close(lngChartOrReportType);
  return curTotalGainLoss;
}

}  // namespace vetlo
