#include "vetlo/schedule/histories.h"

#include <algorithm>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/signed_amounts.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

using Kind = HistorySubject::Kind;

std::string InRange(Date dtmFromDate, Date dtmToDate) {
  return "TransactionDate>=" + Services().SqlDateLiteral(dtmFromDate) +
         " AND TransactionDate<=" + Services().SqlDateLiteral(dtmToDate);
}

// A record carries its classification under either of two.
std::string EitherClassification(const std::string& column, std::int32_t number) {
  return " AND (Classification1" + column + "=" + Str(number) + " OR Classification2" + column +
         "=" + Str(number) + ")";
}

std::string ConditionOf(const HistorySubject& subject) {
  switch (subject.kind) {
    case Kind::kPayee:
      return " AND PayeeNumber=" + Str(subject.number);
    case Kind::kCategory:
      return " AND CategoryNumber=" + Str(subject.number);
    case Kind::kSubCategory:
      return " AND SubCategoryNumber=" + Str(subject.number);
    case Kind::kClassificationItem:
      return EitherClassification("ItemNumber", subject.number);
    case Kind::kClassificationSubItem:
      return EitherClassification("SubItemNumber", subject.number);
  }
  return "";
}

// A payee's history leaves out the lines of splits.
std::string TextOf(const HistorySubject& subject, Date dtmFromDate, Date dtmToDate) {
  const std::string ordinary = "TransactionRecordType=" + Str(kOrdinaryRecord);
  const std::string records =
      subject.kind == Kind::kPayee
          ? ordinary
          : "(" + ordinary + " OR TransactionRecordType=" + Str(kSplitLine) + ")";
  return "SELECT * FROM TransactionRecord WHERE " + records + " AND " +
         InRange(dtmFromDate, dtmToDate) + ConditionOf(subject) + " ORDER BY TransactionDate";
}

}  // namespace

std::string MonthBucketLabel(Date dtmDate, Date dtmFromDate, Date dtmToDate) {
  if (dtmDate == Services().EarliestDate() || dtmDate == Services().LatestDate()) {
    return "Unassigned Date";
  }
  const CalendarDay day = CalendarDayOf(dtmDate);
  const Date dtmStart = std::max(FirstOfMonth(day.year, day.month), dtmFromDate);
  const Date dtmEnd = std::min(Date{FirstOfMonth(day.year, day.month + 1).days - 1}, dtmToDate);
  return Services().DateDisplayText(dtmStart) + "-" + Services().DateDisplayText(dtmEnd);
}

AmountMatrix MonthBuckets::Amounts() const {
  AmountMatrix matrix(amounts.empty() ? 0 : 1, amounts.size());
  for (std::size_t i = 0; i < amounts.size(); ++i) {
    matrix(1, i + 1) = amounts[i];
  }
  return matrix;
}

void MonthHistory(Database& dbDov, const HistorySubject& subject, Date dtmFromDate, Date dtmToDate,
                  MonthBuckets& buckets) {
  ScopedRecordset recAccount(dbDov, "Account");
  recAccount->SetIndex(kPrimaryIndex);
  ScopedRecordset recRecords(dbDov, TextOf(subject, dtmFromDate, dtmToDate));
  if (recRecords->Bof() && recRecords->Eof()) {
    throw NothingThere(FailureNumber::kNothingToShow);
  }
  const SignRule& rule = subject.kind == Kind::kPayee ? kPayeeRule : kCashRule;
  CalendarDay month;
  const auto open_bucket = [&](Date date) {
    month = CalendarDayOf(date);
    buckets.amounts.push_back(0);
    buckets.labels.push_back(MonthBucketLabel(date, dtmFromDate, dtmToDate));
  };
  ForEachRow(*recRecords, [&](Recordset& rec) {
    // The first month is open before its first amount is known, every later one only after.
    if (buckets.labels.empty()) {
      open_bucket(DateField(rec, "TransactionDate"));
    }
    const Currency curAmount = SignedAmount(rec, *recAccount, rule);
    const Date date = DateField(rec, "TransactionDate");
    const CalendarDay day = CalendarDayOf(date);
    if (day.year != month.year || day.month != month.month) {
      open_bucket(date);
    }
    double& bucket = buckets.amounts.back();
    bucket = ToDouble(CCur(bucket) + curAmount);
  });
  recRecords.Close();
  recAccount.Close();
}

}  // namespace vetlo
