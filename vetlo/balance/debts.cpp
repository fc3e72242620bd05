#include "vetlo/balance/debts.h"

#include <functional>
#include <string>

#include "vetlo/balance/totals.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/report_rows.h"
#include "vetlo/services/signed_amounts.h"

namespace vetlo {
namespace {

// Whose transactions are asked for.
enum class Whose { kPayee, kUnassigned, kAll };

struct Payee {
  Whose whose = Whose::kAll;
  std::int32_t lngPayeeNumber = 0;
};

// One side of the debts.
struct DebtSide {
  std::int32_t lngAccountType;
  const SignRule& rule;
  bool opening_balance_adds;  // an opening balance of a liability is negative where it is owed
  std::string_view unassigned_label;
};

const DebtSide kDebtors = {kCreditorsRights, kDebtRule, true, "Unassigned Debtors"};
const DebtSide kCreditors = {kLiability, kCreditRule, false, "Unassigned Creditors"};

std::string PayeeCondition(const Payee& payee, const std::string& column) {
  switch (payee.whose) {
    case Whose::kPayee:
      return " AND " + column + "=" + Str(payee.lngPayeeNumber);
    case Whose::kUnassigned:
      return " AND ISNULL(" + column + ")";
    case Whose::kAll:
      break;
  }
  return "";
}

std::string DebtText(const DebtSide& side, Date dtmToDate, const Payee& payee) {
  return "SELECT T1.* FROM TransactionRecord AS T1,Account AS T2 WHERE "
         "T1.TransactionRecordType=" +
         Str(kOrdinaryRecord) +
         " AND (T1.AccountNumber=T2.AccountNumber OR T1.ToOrFundAccountNumber=T2.AccountNumber) "
         "AND  T2.AccountType=" +
         Str(side.lngAccountType) + PayeeCondition(payee, "T1.PayeeNumber") +
         " AND TransactionDate<=" + Services().SqlDateLiteral(dtmToDate) +
         " ORDER BY T1.TransactionDate";
}

Currency SumOfSigned(Database& dbDov, Recordset& recAccount, const std::string& strSql,
                     const SignRule& rule) {
  Currency curTotal;
  ForEachRowOf(dbDov, strSql,
               [&](Recordset& rec) { curTotal += SignedAmount(rec, recAccount, rule); });
  return curTotal;
}

void AddOpeningBalances(Database& dbDov, const DebtSide& side, Currency& curTotal) {
  ForEachRowOf(dbDov, "SELECT * FROM Account WHERE AccountType=" + Str(side.lngAccountType),
               [&](Recordset& rec) {
                 const Currency curOpening = CurrencyField(rec, "OpeningBalance");
                 curTotal =
                     side.opening_balance_adds ? curTotal + curOpening : curTotal - curOpening;
               });
}

// What one payee owes or is owed, or what stands with no payee, or all of it.
Currency DebtOf(Database& dbDov, const DebtSide& side, Date dtmToDate, const Payee& payee) {
  ScopedRecordset recAccount(dbDov, "Account");
  recAccount->SetIndex(kPrimaryIndex);
  Currency curTotal = SumOfSigned(dbDov, *recAccount, DebtText(side, dtmToDate, payee), side.rule);
  if (payee.whose != Whose::kPayee) {
    AddOpeningBalances(dbDov, side, curTotal);
  }
  recAccount.Close();
  return curTotal;
}

Currency PayeeNetAmount(Database& dbDov, Date dtmFromDate, Date dtmToDate, const Payee& payee) {
  ScopedRecordset recAccount(dbDov, "Account");
  recAccount->SetIndex(kPrimaryIndex);
  const Currency curTotal = SumOfSigned(
      dbDov, *recAccount,
      "SELECT * FROM TransactionRecord WHERE TransactionRecordType=" + Str(kOrdinaryRecord) +
          " AND TransactionDate>=" + Services().SqlDateLiteral(dtmFromDate) +
          " AND TransactionDate<=" + Services().SqlDateLiteral(dtmToDate) +
          PayeeCondition(payee, "PayeeNumber") + " ORDER BY TransactionDate",
      kPayeeRule);
  recAccount.Close();
  return curTotal;
}

// A row for each payee with an amount, by name, and the last one for those without a payee.
void ListPayees(Database& dbDov, AmountRows& rows, ChartOrReport lngChartOrReportType,
                std::string_view unassigned_label,
                const std::function<Currency(const Payee&)>& amount_of) {
  rows.Start();
  ForEachRowOf(dbDov, "SELECT * FROM Payee ORDER BY PayeeName", [&](Recordset& rec) {
    const Currency curAmount = amount_of({Whose::kPayee, LongField(rec, "PayeeNumber")});
    if (curAmount != Currency{}) {
      rows.Add(curAmount, TextField(rec, "PayeeName"));
    }
  });
  const Currency curUnassigned = amount_of({Whose::kUnassigned, 0});
  if (curUnassigned == Currency{}) {
    rows.Close();
    return;
  }
  if (lngChartOrReportType == ChartOrReport::kReport) {
    rows.Add(0.0, "");
  }
  rows.WriteSpare(curUnassigned, std::string(unassigned_label));
}

Currency DebtsByPayee(Database& dbDov, const DebtSide& side, Date dtmToDate, AmountRows& rows,
                      ChartOrReport lngChartOrReportType) {
  const Currency curGrand = DebtOf(dbDov, side, dtmToDate, {Whose::kAll, 0});
  ListPayees(dbDov, rows, lngChartOrReportType, side.unassigned_label,
             [&](const Payee& payee) { return DebtOf(dbDov, side, dtmToDate, payee); });
  return curGrand;
}

}  // namespace

Currency DebtorsByPayee(Database& dbDov, Date dtmToDate, AmountRows& rows,
                        ChartOrReport lngChartOrReportType) {
  return DebtsByPayee(dbDov, kDebtors, dtmToDate, rows, lngChartOrReportType);
}

Currency CreditorsByPayee(Database& dbDov, Date dtmToDate, AmountRows& rows,
                          ChartOrReport lngChartOrReportType) {
  return DebtsByPayee(dbDov, kCreditors, dtmToDate, rows, lngChartOrReportType);
}

Currency NetByPayee(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                    ChartOrReport lngChartOrReportType) {
  Currency curNet;
  ListPayees(dbDov, rows, lngChartOrReportType, "Unassigned Payee", [&](const Payee& payee) {
    const Currency curAmount = PayeeNetAmount(dbDov, dtmFromDate, dtmToDate, payee);
    curNet += curAmount;
    return -curAmount;
  });
  return -curNet;
}

Currency OverdraftsByCreditCard(Database& dbDov, Date dtmToDate, AmountRows& rows,
                                ChartOrReport lngChartOrReportType) {
  const double dblShare = LeastShareShown(lngChartOrReportType);
  const Currency curGrand = TotalCreditCardDebt(dbDov, dtmToDate);
  rows.Start();
  Currency curListed;
  ForEachRowOf(dbDov,
               "SELECT * FROM Account WHERE AccountType=" + Str(kCreditCard) +
                   " ORDER BY AccountName,AccountType,AccountNumber",
               [&](Recordset& rec) {
                 const Currency curOwed = -Services().AccountBalanceOnDate(
                     dbDov, LongField(rec, "AccountNumber"), dtmToDate);
                 if (curOwed > Currency{} && ExceedsShare(curOwed, curGrand, dblShare)) {
                   rows.Add(curOwed, TextField(rec, "AccountName"));
                   curListed += curOwed;
                 }
               });
  if (curListed < curGrand) {
    rows.WriteSpare(curGrand - curListed, "All Other Credit Cards");
  } else {
    rows.Close();
  }
  return curGrand;
}

}  // namespace vetlo
