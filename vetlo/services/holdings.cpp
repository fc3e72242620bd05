#include "vetlo/services/holdings.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/movements.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

// What is dated before it is dated on the day or before.
double EndOf(Date date) { return DayOf(date).days + 1; }

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

std::string PricesText(std::int32_t item, std::int32_t price_type, Date until) {
  return "SELECT * FROM PriceRecord WHERE AccountItemNumber=" + Str(item) +
         " AND PriceTypeNumber=" + Str(price_type) + UpToTheEndOf("PriceDate", until);
}

}  // namespace

// ---- UnitsCourse

bool UnitsCourse::GoTo(Date date) {
  if (by_date_.size() != entries_.size()) {
    Sort();
  }
  const double end = EndOf(date);
  bool in_order = true;
  for (; passed_ < by_date_.size() && entries_[by_date_[passed_]].date.days < end; ++passed_) {
    const std::size_t place = by_date_[passed_];
    in_order = in_order && place >= beyond_;
    beyond_ = std::max(beyond_, place + 1);
    units_ += entries_[place].units;
  }
  if (!in_order) {
    units_ = SumBefore(end);
  }
  return passed_ > 0;
}

void UnitsCourse::Sort() {
  by_date_.resize(entries_.size());
  std::iota(by_date_.begin(), by_date_.end(), std::size_t{0});
  std::ranges::stable_sort(by_date_, {},
                           [this](std::size_t place) { return entries_[place].date.days; });
}

double UnitsCourse::SumBefore(double end) const {
  double units = 0;
  for (const Entry& entry : entries_) {
    if (entry.date.days < end) {
      units += entry.units;
    }
  }
  return units;
}

// ---- PriceCourse

double PriceCourse::On(Database& store, Date date) {
  const bool first = !first_;
  first_ = first_.value_or(date);
  if (first || PassesAChange(store, date)) {
    price_ = Asked(store, date);
  }
  return price_;
}

bool PriceCourse::PassesAChange(Database& store, Date date) {
  if (!changes_) {
    changes_ = ChangesFrom(store, *first_);
  }
  const std::size_t passed_before = passed_;
  const double end = EndOf(date);
  while (passed_ < changes_->size() && (*changes_)[passed_].days < end) {
    ++passed_;
  }
  return passed_ > passed_before;
}

double PriceCourse::Asked(Database& store, Date date) const {
  const auto rec =
      store.OpenRecordset(PricesText(item_, price_type_, date) + " ORDER BY PriceDate");
  double price = 0;
  if (!(rec->Bof() && rec->Eof())) {
    rec->MoveLast();
    price = DoubleField(*rec, "Price");
  }
  rec->Close();
  return price;
}

std::vector<Date> PriceCourse::ChangesFrom(Database& store, Date date) const {
  std::vector<Date> changes;
  ForEachRowOf(store,
               PricesText(item_, price_type_, until_) + " AND PriceDate>=" +
                   Services().SqlDateLiteral(DayOf(date)) + " ORDER BY PriceDate",
               [&](Recordset& rec) { changes.push_back(DateField(rec, "PriceDate")); });
  return changes;
}

// ---- Holdings

Holdings::Holdings(Database& store, std::int32_t account, Date until)
    : store_(store), until_(until) {
  ForEachRowOf(store,
               MovementsText(account, AccountEnd::kOwn) + " AND (NOT ISNULL(AccountItemNumber))" +
                   UpToTheEndOf("TransactionDate", until) + std::string(kCounted) +
                   " ORDER BY TransactionRecordNumber",
               [&](Recordset& rec) {
                 const double units = UnitsChange(rec);
                 if (units != 0) {
                   const Date date = DateField(rec, "TransactionDate");
                   units_[LongField(rec, "AccountItemNumber")].Add(date, units);
                 }
               });
  price_type_ = DefaultPriceType(store);
}

// Each product is rounded before it is added.
Currency Holdings::WorthOn(Date date) {
  Currency worth;
  if (!price_type_) {
    return worth;
  }
  for (auto& [item, units] : units_) {
    if (units.GoTo(date)) {
      PriceCourse& price = prices_.try_emplace(item, item, *price_type_, until_).first->second;
      worth += CCur(units.Units() * price.On(store_, date));
    }
  }
  return worth;
}

}  // namespace vetlo
