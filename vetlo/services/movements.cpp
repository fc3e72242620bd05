#include "vetlo/services/movements.h"

#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

bool MovesUnitsAlone(std::int32_t type) {
  return type == kUnitsReceived || type == kUnitsGivenAway;
}

// A transaction on a holding moves the cash of one account alone: the one that funds it, or where
// none is named the account of the holding.
bool MovesOneCashAlone(std::int32_t type) {
  return type == kBuy || type == kSell || type == kDividend || type == kHoldingInterest ||
         type == kCapitalGain || type == kHoldingCost;
}

}  // namespace

std::string MovementsText(std::int32_t account, AccountEnd end) {
  return "SELECT * FROM TransactionRecord WHERE " +
         std::string(end == AccountEnd::kOwn ? "AccountNumber=" : "ToOrFundAccountNumber=") +
         Str(account);
}

// All of a day counts, whatever the time of day.
std::string UpToTheEndOf(std::string_view column, Date date) {
  const Date day = DayOf(date);
  static_cast<void>(CalendarDayOf(day));
  // There is no day after the last one.
  return " AND " + std::string(column) +
         (day < kLastRealDate ? "<" + Services().SqlDateLiteral(Date{day.days + 1})
                              : "<=#9999-12-31 23:59:59#");
}

Currency CashChange(Recordset& rec, AccountEnd end) {
  const std::int32_t type = LongField(rec, "TransactionType");
  if (MovesUnitsAlone(type)) {
    return {};
  }
  const bool leaves_own = Services().TransactionTypeInfo(type, 0) == MoneyFlow::kLeaves;
  if (MovesOneCashAlone(type)) {
    if (end == AccountEnd::kOwn && !IsNull(rec.Fields("ToOrFundAccountNumber"))) {
      return {};
    }
    const Currency total = CurrencyField(rec, "Total");
    return leaves_own ? -total : total;
  }
  const Currency total = CurrencyField(rec, "Total");
  return leaves_own == (end == AccountEnd::kOwn) ? -total : total;
}

double UnitsChange(Recordset& rec) {
  const std::int32_t type = LongField(rec, "TransactionType");
  const bool adds = type == kBuy || type == kUnitsReceived;
  const bool takes = type == kSell || type == kUnitsGivenAway;
  if (!adds && !takes) {
    return 0;
  }
  const Variant quantity = rec.Fields("Quantity");
  const double units = IsNull(quantity) ? 0 : ToDouble(quantity);
  return adds ? units : -units;
}

}  // namespace vetlo
