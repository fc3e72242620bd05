#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "vetlo/store/database.h"

namespace vetlo {

// The units of one item while dates go by. Sums of fractions depend on their order: units are
// added in the order in which they were entered, whatever their dates.
class UnitsCourse {
 public:
  // In the order of entry, and all of them before the first date is gone to.
  void Add(Date date, double units) { entries_.push_back({date, units}); }
  // Goes on to the end of a date. False where nothing has moved by then.
  bool GoTo(Date date);
  [[nodiscard]] double Units() const { return units_; }

 private:
  struct Entry {
    Date date;
    double units = 0;
  };

  void Sort();
  [[nodiscard]] double SumBefore(double end) const;

  std::vector<Entry> entries_;
  std::vector<std::size_t> by_date_;  // places of entries
  std::size_t passed_ = 0;            // so many of them have moved
  std::size_t beyond_ = 0;            // the place behind the last entered of those
  double units_ = 0;
};

// The price of one item while dates go by, that of a store's last record on or before each.
class PriceCourse {
 public:
  PriceCourse(std::int32_t item, std::int32_t price_type, Date until)
      : item_(item), price_type_(price_type), until_(until) {}
  // The dates come in their order.
  double On(Database& store, Date date);

 private:
  // Goes on to the end of a date.
  bool PassesAChange(Database& store, Date date);
  [[nodiscard]] double Asked(Database& store, Date date) const;
  [[nodiscard]] std::vector<Date> ChangesFrom(Database& store, Date date) const;

  std::int32_t item_;
  std::int32_t price_type_;
  Date until_;
  std::optional<Date> first_;
  std::optional<std::vector<Date>> changes_;  // from then on; looked up once a second date comes
  std::size_t passed_ = 0;
  double price_ = 0;
};

// What an account holds, and what that is worth while dates go by. Their cost is that of the dates
// and that of the movements, not the one times the other.
class Holdings {
 public:
  // The store must outlive them. No date to come is later than the last one.
  Holdings(Database& store, std::int32_t account, Date until);

  // The worth at the end of a date. The dates come in their order.
  Currency WorthOn(Date date);

 private:
  Database& store_;
  Date until_;
  std::map<std::int32_t, UnitsCourse> units_;  // by item
  std::map<std::int32_t, PriceCourse> prices_;
  std::optional<std::int32_t> price_type_;
};

}  // namespace vetlo
