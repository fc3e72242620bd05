#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

// ---- what a transaction moves

// At which end of a transaction an account stands.
enum class End { kOwn, kOther };

bool MovesUnitsAlone(std::int32_t type) {
  return type == kUnitsReceived || type == kUnitsGivenAway;
}

// A transaction on a holding moves the cash of one account alone: the one that funds it, or where
// none is named the account of the holding.
bool MovesOneCashAlone(std::int32_t type) {
  return type == kBuy || type == kSell || type == kDividend || type == kHoldingInterest ||
         type == kCapitalGain || type == kHoldingCost;
}

// The change of an account's cash by the transaction under the cursor.
Currency CashChange(Recordset& rec, End end) {
  const std::int32_t type = LongField(rec, "TransactionType");
  if (MovesUnitsAlone(type)) {
    return {};
  }
  const bool leaves_own = Services().TransactionTypeInfo(type, 0) == MoneyFlow::kLeaves;
  if (MovesOneCashAlone(type)) {
    if (end == End::kOwn && !IsNull(rec.Fields("ToOrFundAccountNumber"))) {
      return {};
    }
    const Currency total = CurrencyField(rec, "Total");
    return leaves_own ? -total : total;
  }
  const Currency total = CurrencyField(rec, "Total");
  return leaves_own == (end == End::kOwn) ? -total : total;
}

// The change of a holding: units bought or received, less units sold or given away.
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

// ---- the texts

constexpr std::string_view kCounted = " AND (TransactionRecordType= 0 OR TransactionRecordType= 4)";

// All of a day counts, whatever the time of day.
std::string UpToTheEndOf(std::string_view column, Date date) {
  const Date day = DayOf(date);
  static_cast<void>(CalendarDayOf(day));
  // There is no day after the last one.
  return " AND " + std::string(column) +
         (day < kLastRealDate ? "<" + Services().SqlDateLiteral(Date{day.days + 1})
                              : "<=#9999-12-31 23:59:59#");
}

std::string MovementsText(std::int32_t account, End end) {
  return "SELECT * FROM TransactionRecord WHERE " +
         std::string(end == End::kOwn ? "AccountNumber=" : "ToOrFundAccountNumber=") + Str(account);
}

constexpr End kBothEnds[] = {End::kOwn, End::kOther};

// ---- the account

struct AccountFacts {
  Currency opening_balance;
  bool holds_items = false;
};

// Nothing where there is no such account.
std::optional<AccountFacts> FindAccount(Database& store, std::int32_t account) {
  const auto rec = store.OpenRecordset("Account");
  rec->SetIndex(kPrimaryIndex);
  rec->Seek("=", account);
  if (rec->NoMatch()) {
    return std::nullopt;
  }
  const auto type = Services().AccountTypeInfo(LongField(*rec, "AccountType"));
  const AccountFacts facts{CurrencyField(*rec, "OpeningBalance"), type.Has(AccountAttrFund)};
  rec->Close();
  return facts;
}

// ---- what is held, and what it is worth

struct UnitsMovement {
  Date date;
  std::int32_t item = 0;
  double units = 0;
};

// In the order of their entry, which is the order in which units are added.
std::vector<UnitsMovement> UnitsMovements(Database& store, std::int32_t account, Date until) {
  std::vector<UnitsMovement> movements;
  ForEachRowOf(store,
               MovementsText(account, End::kOwn) + " AND (NOT ISNULL(AccountItemNumber))" +
                   UpToTheEndOf("TransactionDate", until) + std::string(kCounted) +
                   " ORDER BY TransactionRecordNumber",
               [&](Recordset& rec) {
                 const double units = UnitsChange(rec);
                 if (units != 0) {
                   movements.push_back({DateField(rec, "TransactionDate"),
                                        LongField(rec, "AccountItemNumber"), units});
                 }
               });
  return movements;
}

std::map<std::int32_t, double> UnitsOn(const std::vector<UnitsMovement>& movements, Date date) {
  std::map<std::int32_t, double> units;
  const double end = DayOf(date).days + 1;
  for (const UnitsMovement& movement : movements) {
    if (movement.date.days < end) {
      units[movement.item] += movement.units;
    }
  }
  return units;
}

// The number of the price type that values are taken from, or none.
std::optional<std::int32_t> DefaultPriceType(Database& store) {
  const auto rec = store.OpenRecordset("PriceType", RecordsetType::kDynaset);
  rec->FindFirst("PriceTypeAttr=" + Str(kDefaultPriceType));
  std::optional<std::int32_t> number;
  if (!rec->NoMatch()) {
    number = LongField(*rec, "PriceTypeNumber");
  }
  rec->Close();
  return number;
}

double PriceOn(Database& store, std::int32_t item, std::int32_t price_type, Date date) {
  const auto rec =
      store.OpenRecordset("SELECT * FROM PriceRecord WHERE AccountItemNumber=" + Str(item) +
                          " AND PriceTypeNumber=" + Str(price_type) +
                          UpToTheEndOf("PriceDate", date) + " ORDER BY PriceDate");
  double price = 0;
  if (!(rec->Bof() && rec->Eof())) {
    rec->MoveLast();
    price = DoubleField(*rec, "Price");
  }
  rec->Close();
  return price;
}

// Each product is rounded before it is added.
Currency ValueOn(Database& store, const std::vector<UnitsMovement>& movements,
                 std::optional<std::int32_t> price_type, Date date) {
  Currency value;
  if (!price_type) {
    return value;
  }
  for (const auto& [item, units] : UnitsOn(movements, date)) {
    value += CCur(units * PriceOn(store, item, *price_type, date));
  }
  return value;
}

// ---- the points of a history

constexpr double kMostDaysShownDaily = 62;
constexpr double kMostDaysShownWeekly = 731;

// Counted back from the end.
std::vector<Date> EverySoManyDays(Date from, Date to, std::int32_t step) {
  std::vector<Date> points;
  const auto days = static_cast<std::int32_t>(to.days - from.days);
  for (std::int32_t back = 0; back <= days; back += step) {
    points.push_back(Date{to.days - back});
  }
  std::ranges::reverse(points);
  return points;
}

// The end of each month, and the end of the span.
std::vector<Date> EndsOfMonths(Date from, Date to) {
  std::vector<Date> points;
  const CalendarDay last = CalendarDayOf(to);
  CalendarDay month = CalendarDayOf(from);
  while (month.year != last.year || month.month != last.month) {
    points.push_back(Date{FirstOfMonth(month.year, month.month + 1).days - 1});
    month = month.month == 12 ? CalendarDay{month.year + 1, 1, 1}
                              : CalendarDay{month.year, month.month + 1, 1};
  }
  points.push_back(to);
  return points;
}

std::vector<Date> PointsBetween(Date from, Date to) {
  const double days = to.days - from.days + 1;
  if (days <= kMostDaysShownDaily) {
    return EverySoManyDays(from, to, 1);
  }
  return days <= kMostDaysShownWeekly ? EverySoManyDays(from, to, 7) : EndsOfMonths(from, to);
}

// ---- the cash of a history

struct CashMovement {
  Date date;
  Currency change;
};

std::vector<CashMovement> CashMovements(Database& store, std::int32_t account) {
  std::vector<CashMovement> movements;
  for (const End end : kBothEnds) {
    ForEachRowOf(store, MovementsText(account, end) + std::string(kCounted), [&](Recordset& rec) {
      movements.push_back({DateField(rec, "TransactionDate"), CashChange(rec, end)});
    });
  }
  std::ranges::stable_sort(movements, {}, [](const CashMovement& m) { return m.date.days; });
  return movements;
}

struct DateSpan {
  Date from;
  Date to;
};

// An open end is taken from the movements, and without any from the other end.
DateSpan ClosedSpan(DateSpan asked, const std::vector<CashMovement>& movements) {
  const bool open_start = asked.from == Services().EarliestDate();
  const bool open_end = asked.to == Services().LatestDate();
  if (movements.empty() && open_start && open_end) {
    throw NothingThere(FailureNumber::kNothingToShow);
  }
  DateSpan span{DayOf(asked.from), DayOf(asked.to)};
  if (open_start) {
    span.from = movements.empty() ? span.to : DayOf(movements.front().date);
  }
  if (open_end) {
    span.to = movements.empty() ? span.from : DayOf(movements.back().date);
  }
  if (span.from > span.to) {
    throw NothingThere(FailureNumber::kNothingToShow);
  }
  return span;
}

}  // namespace

Currency CommonServices::AccountBalanceOnDate(Database& dbDov, std::int32_t lngAccountNumber,
                                              Date dtmDate) const {
  Database& store = dbDov.Unobserved();
  const std::optional<AccountFacts> account = FindAccount(store, lngAccountNumber);
  if (!account) {
    throw Failure(FailureNumber::kNoCurrentRecord,
                  "there is no account " + std::to_string(lngAccountNumber) + std::string(kMendIt));
  }
  Currency balance = account->opening_balance;
  for (const End end : kBothEnds) {
    ForEachRowOf(store,
                 MovementsText(lngAccountNumber, end) + UpToTheEndOf("TransactionDate", dtmDate) +
                     std::string(kCounted),
                 [&](Recordset& rec) { balance += CashChange(rec, end); });
  }
  if (account->holds_items) {
    balance += ValueOn(store, UnitsMovements(store, lngAccountNumber, dtmDate),
                       DefaultPriceType(store), dtmDate);
  }
  return balance;
}

void CommonServices::BalanceHistory(Database& dbDov, std::int32_t lngAccountNumber,
                                    Date dtmFromDate, Date dtmToDate, AmountMatrix& matrix,
                                    ItemLabels& labels) const {
  Database& store = dbDov.Unobserved();
  const std::optional<AccountFacts> account = FindAccount(store, lngAccountNumber);
  if (!account) {
    throw NothingThere(FailureNumber::kNothingToShow);
  }
  const std::vector<CashMovement> cash = CashMovements(store, lngAccountNumber);
  const DateSpan span = ClosedSpan({dtmFromDate, dtmToDate}, cash);
  const std::vector<Date> points = PointsBetween(span.from, span.to);
  std::vector<UnitsMovement> units;
  std::optional<std::int32_t> price_type;
  if (account->holds_items) {
    units = UnitsMovements(store, lngAccountNumber, span.to);
    price_type = DefaultPriceType(store);
  }
  AmountMatrix balances(1, points.size());
  std::vector<std::string> texts;
  Currency balance = account->opening_balance;
  auto next = cash.begin();
  for (const Date point : points) {
    for (; next != cash.end() && next->date.days < point.days + 1; ++next) {
      balance += next->change;
    }
    texts.push_back(DateDisplayText(point));
    balances(1, texts.size()) = ToDouble(balance + ValueOn(store, units, price_type, point));
  }
  matrix = std::move(balances);
  labels = ItemLabels(std::move(texts));
}

double CommonServices::QuantityHeld(Database& dbDov, std::int32_t lngAccountNumber,
                                    std::int32_t lngAccountItemNumber) const {
  constexpr double kLeastHolding = 0.0000005;
  double units = 0;
  ForEachRowOf(dbDov.Unobserved(),
               MovementsText(lngAccountNumber, End::kOwn) +
                   " AND AccountItemNumber=" + Str(lngAccountItemNumber) + std::string(kCounted) +
                   " ORDER BY TransactionRecordNumber",
               [&](Recordset& rec) { units += UnitsChange(rec); });
  if (std::fabs(units) < kLeastHolding) {
    throw NothingThere(FailureNumber::kNoCurrentRecord);
  }
  return units;
}

}  // namespace vetlo
