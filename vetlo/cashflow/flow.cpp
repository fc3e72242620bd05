#include "vetlo/cashflow/flow.h"

#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

std::string OfType(std::int32_t transaction_type) {
  return "TransactionType=" + Str(transaction_type);
}

// The records of these types that count, in a range.
std::string Counted(const std::string& types, Date dtmFromDate, Date dtmToDate) {
  return "SELECT * FROM TransactionRecord WHERE " + types +
         " AND TransactionDate>=" + Services().SqlDateLiteral(dtmFromDate) +
         " AND TransactionDate<=" + Services().SqlDateLiteral(dtmToDate) +
         " AND (TransactionRecordType=" + Str(kOrdinaryRecord) +
         " OR TransactionRecordType=" + Str(kSplitLine) + ") AND (NOT ISNULL(AccountNumber))";
}

}  // namespace

std::string OrdinaryText(Flow flow, Date dtmFromDate, Date dtmToDate) {
  return Counted(OfType(flow == Flow::kIncoming ? kIncome : kExpense), dtmFromDate, dtmToDate);
}

std::string InvestmentText(Flow flow, Date dtmFromDate, Date dtmToDate) {
  const std::string types = flow == Flow::kOutgoing
                                ? OfType(kHoldingCost)
                                : "(" + OfType(kCapitalGain) + " OR " + OfType(kDividend) + " OR " +
                                      OfType(kHoldingInterest) + ")";
  return Counted(types, dtmFromDate, dtmToDate);
}

}  // namespace vetlo
