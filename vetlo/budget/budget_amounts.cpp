#include "vetlo/budget/budget_amounts.h"

#include <string>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"

namespace vetlo {
namespace {

constexpr std::int32_t kInForce = 1;  // Budget.BudgetAttr

// The twelve columns of a row of a table of budgets, all 0 where there is no such row.
MonthAmounts StoredMonths(Database& dbDov, std::string_view table, std::int32_t lngBudgetNumber,
                          std::int32_t lngNumber) {
  MonthAmounts curMonth = {};
  const auto rec = dbDov.OpenRecordset(table);
  rec->SetIndex(kPrimaryIndex);
  rec->Seek("=", {lngBudgetNumber, lngNumber});
  if (!rec->NoMatch()) {
    for (std::size_t month = 0; month < curMonth.size(); ++month) {
      const Variant value = rec->Fields(kMonthNames.at(month));
      curMonth.at(month) = IsNull(value) ? Currency{} : ToCurrency(value);
    }
  }
  rec->Close();
  return curMonth;
}

std::string SumOfMonth(std::string_view month, std::int32_t lngBudgetNumber,
                       std::int32_t lngCategoryNumber) {
  const std::string name(month);
  return "SELECT SUM(T1." + name + ") AS Total" + name +
         " FROM SubCategoryBudgetInfo AS T1,SubCategory AS T2 WHERE "
         "T1.SubCategoryNumber=T2.SubCategoryNumber AND T2.CategoryNumber=" +
         Str(lngCategoryNumber) + " AND T1.BudgetNumber=" + Str(lngBudgetNumber);
}

}  // namespace

Currency TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate, Date dtmToDate) {
  constexpr std::int32_t kMonthsOfYear = 12;
  const CalendarDay from = CalendarDayOf(dtmFromDate);
  const CalendarDay to = CalendarDayOf(dtmToDate);
  // The range must end before the calendar does: the last day of its last month is looked for.
  static_cast<void>(FirstOfMonth(to.year, to.month + 1));
  Currency curTotal;
  const std::int32_t last = to.year * kMonthsOfYear + to.month - 1;
  for (std::int32_t month = from.year * kMonthsOfYear + from.month - 1; month <= last; ++month) {
    const auto index = static_cast<std::size_t>(month % kMonthsOfYear);
    if (index >= cur.size()) {
      throw Failure(FailureNumber::kSubscriptOutOfRange);
    }
    curTotal += cur[index];
  }
  return curTotal;
}

std::int32_t BudgetInForce(Database& dbDov) {
  ScopedRecordset rec(dbDov, "Budget", RecordsetType::kDynaset);
  rec->FindFirst("BudgetAttr=" + Str(kInForce));
  if (rec->NoMatch()) {
    throw NothingThere(FailureNumber::kNoCurrentRecord);
  }
  const std::int32_t lngBudgetNumber = LongField(*rec, "BudgetNumber");
  rec.Close();
  return lngBudgetNumber;
}

MonthAmounts CategoryBudgetByMonth(Database& dbDov, std::int32_t lngBudgetNumber,
                                   std::int32_t lngCategoryNumber, bool blnCategoryOnly) {
  MonthAmounts curMonth =
      StoredMonths(dbDov, "CategoryBudgetInfo", lngBudgetNumber, lngCategoryNumber);
  if (blnCategoryOnly) {
    return curMonth;
  }
  for (std::size_t month = 0; month < curMonth.size(); ++month) {
    const std::string_view name = kMonthNames.at(month);
    const auto rec = dbDov.OpenRecordset(SumOfMonth(name, lngBudgetNumber, lngCategoryNumber));
    if (!(rec->Bof() && rec->Eof())) {
      const Variant sum = rec->Fields("Total" + std::string(name));
      if (!IsNull(sum)) {
        curMonth.at(month) += ToCurrency(sum);
      }
    }
    rec->Close();
  }
  return curMonth;
}

MonthAmounts SubCategoryBudgetByMonth(Database& dbDov, std::int32_t lngBudgetNumber,
                                      std::int32_t lngSubCategoryNumber) {
  return StoredMonths(dbDov, "SubCategoryBudgetInfo", lngBudgetNumber, lngSubCategoryNumber);
}

}  // namespace vetlo
