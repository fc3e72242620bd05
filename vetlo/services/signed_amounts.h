#pragma once

#include <span>

#include "vetlo/services/common_services.h"
#include "vetlo/store/database.h"

namespace vetlo {

// How the amounts of a walk over transactions are signed. A transaction on an account of cash flow
// goes by that account and by what it does there, one on an account that holds items by the account
// at its other end and by what it does there; on any other account it stays as it is. Where the
// account that it goes by is one of the owed types the amount is negated for one direction of the
// money, for every other account, and where there is none, for the opposite one.
struct SignRule {
  std::span<const std::int32_t> owed_types;
  MoneyFlow owed_negates;
};

// What is owed to the user: money that leaves an ordinary account raises it.
//   owed types 6 and 7: negated where money leaves;  any other: where it enters
extern const SignRule kDebtRule;
// What the user owes.
//   owed type 6 alone: negated where money enters;   any other: where it leaves
extern const SignRule kCreditRule;
// What came from a payee less what went to it.
//   owed types 6 and 7: negated where money enters;  any other: where it leaves
extern const SignRule kPayeeRule;
// What came in less what went out.
//   no owed types: negated where money leaves
extern const SignRule kCashRule;

// The amount of the transaction under the cursor. One without an account fails with
// kNothingToShow, one whose account is not there with kNoCurrentRecord. The table "Account" has
// its index set.
Currency SignedAmount(Recordset& rec, Recordset& recAccount, const SignRule& rule);

}  // namespace vetlo
