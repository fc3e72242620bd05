#include "vetlo/investment/prices.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <set>

#include "vetlo/investment/selections.h"
#include "vetlo/investment/values.h"
#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

[[noreturn]] void RaiseNothing() { throw NothingThere(FailureNumber::kNothingToShow); }

std::int32_t ChartedPriceType(Database& dbDov) {
  ScopedRecordset rec(dbDov, "PriceType", RecordsetType::kDynaset);
  rec->FindFirst("PriceTypeAttr=" + Str(kDefaultPriceType));
  if (rec->NoMatch()) {
    RaiseNothing();
  }
  const std::int32_t lngPriceTypeNumber = LongField(*rec, "PriceTypeNumber");
  rec.Close();
  return lngPriceTypeNumber;
}

std::string PricesOfItem(std::int32_t item) {
  return "SELECT * FROM PriceRecord WHERE AccountItemNumber=" + Str(item);
}

std::string OfPriceType(std::int32_t price_type) {
  return " AND PriceTypeNumber=" + Str(price_type);
}

std::string InRange(Date dtmFromDate, Date dtmToDate) {
  return " AND PriceDate>=" + Services().SqlDateLiteral(dtmFromDate) +
         " AND PriceDate<=" + Services().SqlDateLiteral(dtmToDate);
}

// The items that a history of several shows, and the days between their first and last prices in
// the range.
struct Listed {
  std::int32_t lngPriceTypeNumber = 0;
  Date dtmFromDate;
  Date dtmToDate;
  std::vector<std::int32_t> items;
  Date dtmFirst;
  Date dtmLast;
};

std::string PricesInRange(std::int32_t item, const Listed& listed) {
  return PricesOfItem(item) + OfPriceType(listed.lngPriceTypeNumber) +
         InRange(listed.dtmFromDate, listed.dtmToDate) + " ORDER BY PriceDate";
}

// Adds an item that has prices in the range, and widens the days by them.
void ListItem(Database& dbDov, std::int32_t item, Listed& listed) {
  ScopedRecordset rec(dbDov, PricesInRange(item, listed));
  if (!(rec->Bof() && rec->Eof())) {
    listed.items.push_back(item);
    rec->MoveFirst();
    listed.dtmFirst = std::min(listed.dtmFirst, DateField(*rec, "PriceDate"));
    rec->MoveLast();
    listed.dtmLast = std::max(listed.dtmLast, DateField(*rec, "PriceDate"));
  }
  rec.Close();
}

using IsHeld = std::function<bool(std::int32_t item)>;

// The days start crossed, so that any price replaces both.
Listed ListItems(Database& dbDov, std::int32_t lngPriceTypeNumber, Date dtmFromDate, Date dtmToDate,
                 const IsHeld& is_held) {
  Listed listed{lngPriceTypeNumber, dtmFromDate, dtmToDate, {}, dtmToDate, dtmFromDate};
  ScopedRecordset recItem(dbDov, InvestmentItemsText());
  if (recItem->Bof() && recItem->Eof()) {
    RaiseNothing();
  }
  ForEachRow(*recItem, [&](Recordset& rec) {
    const std::int32_t item = LongField(rec, "AccountItemNumber");
    if (is_held(item)) {
      ListItem(dbDov, item, listed);
    }
  });
  recItem.Close();
  if (listed.items.empty()) {
    RaiseNothing();
  }
  return listed;
}

// ---- the days that are looked at, as numbers counted from 0, the day of the first price

using Days = std::vector<std::int32_t>;

// A history of up to a century is walked day by day. In a longer one some prices lie far apart,
// and between them there are days without end on which nothing can change.
constexpr std::int32_t kMostDaysWalked = 36525;

Days AllDays(std::int32_t lngDays) {
  Days days(static_cast<std::size_t>(lngDays));
  std::iota(days.begin(), days.end(), 0);
  return days;
}

// A price shows from the day on that reaches it: the nearest one, or where that comes before the
// price the next.
Days DaysOfPrices(Database& dbDov, const Listed& listed, std::int32_t lngDays) {
  std::set<std::int32_t> days;
  for (const std::int32_t item : listed.items) {
    ForEachRowOf(dbDov, PricesInRange(item, listed), [&](Recordset& rec) {
      const double passed = DateField(rec, "PriceDate").days - listed.dtmFirst.days;
      const auto nearest = static_cast<std::int32_t>(std::lround(passed));
      days.insert({nearest, nearest + 1});
    });
  }
  return {days.begin(), days.lower_bound(lngDays)};
}

Days DaysToWalk(Database& dbDov, const Listed& listed) {
  const std::int32_t lngDays = ToLong(listed.dtmLast.days - listed.dtmFirst.days + 1);
  return lngDays <= kMostDaysWalked ? AllDays(lngDays) : DaysOfPrices(dbDov, listed, lngDays);
}

// ---- the walk

// What a day shows of all items.
struct DayColumn {
  std::vector<double> prices;
  std::vector<std::string> labels;  // the long ones: they tell a change
  std::vector<std::string> names;

  friend bool operator==(const DayColumn& a, const DayColumn& b) {
    return a.prices == b.prices && a.labels == b.labels;
  }
};

DayColumn ColumnOn(Database& dbDov, const Listed& listed, Date dtmDay, Recordset& recItem,
                   Recordset& recType) {
  DayColumn column;
  for (const std::int32_t item : listed.items) {
    recItem.Seek("=", item);
    recType.Seek("=", recItem.Fields("AccountItemTypeNumber"));
    const std::string name = TextField(recItem, "AccountItemName");
    column.labels.push_back(TextField(recType, "AccountItemTypeName") + ":" + name);
    column.names.push_back(name);
    column.prices.push_back(PriceOnOrBefore(dbDov, item, dtmDay, listed.lngPriceTypeNumber));
  }
  return column;
}

// A row for the first day and for each later one that shows anything else than the day before.
void WalkDays(Database& dbDov, const Listed& listed, PriceHistory& history,
              ChartOrReport lngChartOrReportType) {
  ScopedRecordset recItem(dbDov, "AccountItem");
  ScopedRecordset recType(dbDov, "AccountItemType");
  recItem->SetIndex(kPrimaryIndex);
  recType->SetIndex(kPrimaryIndex);
  std::vector<double> prices;
  DayColumn previous;
  history.strDates.Start();
  for (const std::int32_t day : DaysToWalk(dbDov, listed)) {
    const Date dtmDay{listed.dtmFirst.days + day};
    DayColumn column = ColumnOn(dbDov, listed, dtmDay, *recItem, *recType);
    if (column == previous) {
      continue;
    }
    prices.insert(prices.end(), column.prices.begin(), column.prices.end());
    history.strItems =
        lngChartOrReportType == ChartOrReport::kReport ? column.labels : column.names;
    history.strDates.Add(Services().DateDisplayText(dtmDay));
    previous = std::move(column);
  }
  recItem.Close();
  recType.Close();
  history.strDates.Close();
  AmountMatrix table(history.strDates.UpperBound(), listed.items.size());
  for (std::size_t row = 1; row <= table.Series(); ++row) {
    for (std::size_t item = 1; item <= table.Items(); ++item) {
      table(row, item) = prices[(row - 1) * table.Items() + (item - 1)];
    }
  }
  history.dblPrices = std::move(table);
}

void RequireFundAccount(Database& dbDov, std::int32_t lngAccountNumber) {
  ScopedRecordset recAccount(dbDov, "Account");
  recAccount->SetIndex(kPrimaryIndex);
  recAccount->Seek("=", lngAccountNumber);
  if (recAccount->NoMatch() ||
      !Services().AccountTypeInfo(LongField(*recAccount, "AccountType")).Has(AccountAttrFund)) {
    RaiseNothing();
  }
  recAccount.Close();
}

}  // namespace

double PriceOnOrBefore(Database& dbDov, std::int32_t lngAccountItemNumber, Date dtmDate,
                       std::int32_t lngPriceTypeNumber) {
  ScopedRecordset rec(dbDov, PricesOfItem(lngAccountItemNumber) +
                                 " AND PriceDate<=" + Services().SqlDateLiteral(dtmDate) +
                                 OfPriceType(lngPriceTypeNumber) + " ORDER BY PriceDate");
  double price = 0;
  if (!(rec->Bof() && rec->Eof())) {
    rec->MoveLast();
    price = DoubleField(*rec, "Price");
  }
  rec.Close();
  return price;
}

void ItemPriceHistory(Database& dbDov, std::int32_t lngAccountItemNumber, Date dtmFromDate,
                      Date dtmToDate, PriceHistory& history) {
  const std::int32_t lngPriceTypeNumber = ChartedPriceType(dbDov);
  ScopedRecordset rec(dbDov, PricesOfItem(lngAccountItemNumber) + InRange(dtmFromDate, dtmToDate) +
                                 OfPriceType(lngPriceTypeNumber) + " ORDER BY PriceDate");
  if (rec->Bof() && rec->Eof()) {
    RaiseNothing();
  }
  std::vector<double> prices;
  history.strDates.Start();
  ForEachRow(*rec, [&](Recordset& row) {
    prices.push_back(DoubleField(row, "Price"));
    history.strDates.Add(Services().DateDisplayText(DateField(row, "PriceDate")));
  });
  rec.Close();
  history.strDates.Close();
  AmountMatrix table(prices.size(), 1);
  for (std::size_t i = 0; i < prices.size(); ++i) {
    table(i + 1, 1) = prices[i];
  }
  history.dblPrices = std::move(table);
}

void AccountPriceHistory(Database& dbDov, std::int32_t lngAccountNumber, Date dtmFromDate,
                         Date dtmToDate, PriceHistory& history,
                         ChartOrReport lngChartOrReportType) {
  const std::int32_t lngPriceTypeNumber = ChartedPriceType(dbDov);
  RequireFundAccount(dbDov, lngAccountNumber);
  const Listed listed = ListItems(
      dbDov, lngPriceTypeNumber, dtmFromDate, dtmToDate,
      [&](std::int32_t item) { return HeldInAccount(dbDov, lngAccountNumber, item).blnHeld; });
  WalkDays(dbDov, listed, history, lngChartOrReportType);
}

void AllInvestmentsPriceHistory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                PriceHistory& history, ChartOrReport lngChartOrReportType) {
  const Listed listed =
      ListItems(dbDov, ChartedPriceType(dbDov), dtmFromDate, dtmToDate,
                [&](std::int32_t item) { return HeldInAllAccounts(dbDov, item).blnHeld; });
  WalkDays(dbDov, listed, history, lngChartOrReportType);
}

}  // namespace vetlo
