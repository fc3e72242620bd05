#pragma once

#include <string>
#include <vector>

#include "vetlo/platform/arrays.h"
#include "vetlo/store/database.h"

namespace vetlo {

// How the money of one subject moved month by month within a range: a bucket for each month that
// has transactions, none for any other.
//
//    -45.50  2026/03/15-2026/03/31      the first and the last are cut to the range
//    900.00  2026/04/01-2026/04/30
//
// Nothing selected, and a transaction without an account, fail with kNothingToShow; a transaction
// of an account that is not there fails with kNoCurrentRecord. The buckets filled until then stay.
struct MonthBuckets {
  std::vector<double> amounts;
  std::vector<std::string> labels;

  // The amounts as one series, undimensioned without a bucket.
  [[nodiscard]] AmountMatrix Amounts() const;
};

// What of the transactions a history is about.
struct HistorySubject {
  enum class Kind { kPayee, kCategory, kSubCategory, kClassificationItem, kClassificationSubItem };

  Kind kind = Kind::kPayee;
  std::int32_t number = 0;
};

void MonthHistory(Database& dbDov, const HistorySubject& subject, Date dtmFromDate, Date dtmToDate,
                  MonthBuckets& buckets);

// The days of a month that lie in the range, or "Unassigned Date" for a date that is a sentinel.
std::string MonthBucketLabel(Date dtmDate, Date dtmFromDate, Date dtmToDate);

}  // namespace vetlo
