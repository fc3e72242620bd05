#include "vetlo/services/signed_amounts.h"

#include <algorithm>
#include <array>

#include "vetlo/platform/failure.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

constexpr std::array kLiabilityAndRights = {kLiability, kCreditorsRights};
constexpr std::array kLiabilityAlone = {kLiability};

bool IsOwed(const SignRule& rule, std::int32_t account_type) {
  return std::ranges::find(rule.owed_types, account_type) != rule.owed_types.end();
}

std::int32_t TypeOfAccount(Recordset& recAccount, const Variant& varAccountNumber) {
  recAccount.Seek("=", varAccountNumber);
  return LongField(recAccount, "AccountType");
}

bool Negates(const SignRule& rule, bool owed, MoneyFlow flow) {
  return owed == (flow == rule.owed_negates);
}

// Whether the account at the other end is of an owed type; not asked where the rule has none.
bool OtherEndIsOwed(Recordset& rec, Recordset& recAccount, const SignRule& rule) {
  if (rule.owed_types.empty()) {
    return false;
  }
  const Variant other = rec.Fields("ToOrFundAccountNumber");
  return !IsNull(other) && IsOwed(rule, TypeOfAccount(recAccount, other));
}

}  // namespace

const SignRule kDebtRule = {kLiabilityAndRights, MoneyFlow::kLeaves};
const SignRule kCreditRule = {kLiabilityAlone, MoneyFlow::kEnters};
const SignRule kPayeeRule = {kLiabilityAndRights, MoneyFlow::kEnters};
const SignRule kCashRule = {{}, MoneyFlow::kEnters};

Currency SignedAmount(Recordset& rec, Recordset& recAccount, const SignRule& rule) {
  const Currency curAmount = CurrencyField(rec, "Total");
  const Variant account = rec.Fields("AccountNumber");
  if (IsNull(account)) {
    throw Failure(
        FailureNumber::kNothingToShow,
        "a record names no account: " + rec.PlaceOf("AccountNumber") + std::string(kMendIt));
  }
  const std::int32_t account_type = TypeOfAccount(recAccount, account);
  const AccountTypeFacts facts = Services().AccountTypeInfo(account_type);
  const std::int32_t transaction_type = LongField(rec, "TransactionType");
  bool negated = false;
  if (facts.Has(AccountAttrCashFlow)) {
    negated = Negates(rule, IsOwed(rule, account_type),
                      Services().TransactionTypeInfo(transaction_type, account_type));
  } else if (facts.Has(AccountAttrFund)) {
    negated = Negates(rule, OtherEndIsOwed(rec, recAccount, rule),
                      Services().InvestmentTransactionInfo(transaction_type, facts.flags));
  }
  return negated ? -curAmount : curAmount;
}

}  // namespace vetlo
