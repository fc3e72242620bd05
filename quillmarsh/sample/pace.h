#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "quillmarsh/sample/household.h"
#include "quillmarsh/sample/rhythms.h"

namespace quillmarsh {

// A month of the history; days are whole days of a Date, and the last month ends today.
struct Month {
  std::int32_t index = 0;  // from 0
  std::int32_t month = 1;  // of its calendar year
  std::int32_t first_day = 0;
  std::int32_t last_day = 0;
};

// How fast the household's life has to go for the plan's number of records. Where the plan leaves
// little room, every rhythm slows down, but each still happens once; where it leaves much, there is
// more everyday life in smaller amounts. Pay is what that life costs, and a little more.
class Pace {
 public:
  // `scheduled_patterns` of the plan's transactions are not history.
  Pace(const HouseholdPlan& plan, std::int64_t scheduled_patterns);

  [[nodiscard]] const std::vector<Month>& Months() const { return months_; }
  [[nodiscard]] std::int32_t FirstDay() const { return months_.front().first_day; }
  [[nodiscard]] std::int32_t LastDay() const { return months_.back().last_day; }

  // How often a rhythm happens in a month, and in all of them.
  [[nodiscard]] std::int64_t Occurrences(std::size_t rhythm, std::int32_t month) const;
  [[nodiscard]] std::int64_t Occurrences(std::size_t rhythm) const { return times_[rhythm]; }

  // How many records there should be at the end of a month, and of the history.
  [[nodiscard]] std::int64_t RecordsUpTo(const Month& month) const;
  [[nodiscard]] std::int64_t AllRecords() const { return records_; }

  // How many records everyday life has to write.
  [[nodiscard]] std::int64_t EverydayRecords() const { return everyday_records_; }

  // What the amounts of the tables are multiplied with, in thousandths: for everyday life, and for
  // pay.
  [[nodiscard]] std::int64_t EverydayScale() const { return everyday_scale_; }
  [[nodiscard]] std::int64_t PayScale() const { return pay_scale_; }

  // Money was worth more in former times: today's prices, in thousandths, in a month.
  [[nodiscard]] std::int64_t PriceLevel(std::int32_t month) const;

  // What a month costs, or what one pay brings where that is more; in today's prices.
  [[nodiscard]] std::int64_t ReserveCents() const { return reserve_cents_; }

 private:
  void CountMonths(const HouseholdPlan& plan);
  void CountOccurrences(std::int64_t first_records);
  void SetPay();
  [[nodiscard]] std::int64_t ShiftOf(std::size_t rhythm) const;

  std::vector<Month> months_;
  std::int64_t records_;
  std::vector<std::int64_t> times_;  // by rhythm
  std::int64_t everyday_records_ = 0;
  std::int64_t everyday_scale_ = 1000;
  std::int64_t pay_scale_ = 1000;
  std::int64_t reserve_cents_ = 0;
};

}  // namespace quillmarsh
