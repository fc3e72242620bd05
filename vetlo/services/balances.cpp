#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/holdings.h"
#include "vetlo/services/movements.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

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
  for (const AccountEnd end : kBothEnds) {
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
  for (const AccountEnd end : kBothEnds) {
    ForEachRowOf(store,
                 MovementsText(lngAccountNumber, end) + UpToTheEndOf("TransactionDate", dtmDate) +
                     std::string(kCounted),
                 [&](Recordset& rec) { balance += CashChange(rec, end); });
  }
  if (account->holds_items) {
    balance += Holdings(store, lngAccountNumber, dtmDate).WorthOn(dtmDate);
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
  std::optional<Holdings> holdings;
  if (account->holds_items) {
    holdings.emplace(store, lngAccountNumber, span.to);
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
    balances(1, texts.size()) = ToDouble(holdings ? balance + holdings->WorthOn(point) : balance);
  }
  matrix = std::move(balances);
  labels = ItemLabels(std::move(texts));
}

double CommonServices::QuantityHeld(Database& dbDov, std::int32_t lngAccountNumber,
                                    std::int32_t lngAccountItemNumber) const {
  constexpr double kLeastHolding = 0.0000005;
  double units = 0;
  ForEachRowOf(dbDov.Unobserved(),
               MovementsText(lngAccountNumber, AccountEnd::kOwn) +
                   " AND AccountItemNumber=" + Str(lngAccountItemNumber) + std::string(kCounted) +
                   " ORDER BY TransactionRecordNumber",
               [&](Recordset& rec) { units += UnitsChange(rec); });
  if (std::fabs(units) < kLeastHolding) {
    throw NothingThere(FailureNumber::kNoCurrentRecord);
  }
  return units;
}

}  // namespace vetlo
