#include "vetlo/frame/history_reports.h"

#include <algorithm>

#include "vetlo/cashflow/category_walk.h"
#include "vetlo/frame/subject_reports.h"
#include "vetlo/schedule/histories.h"

namespace vetlo {
namespace {

using Kind = HistorySubject::Kind;

// What the parameters name under a report number: the first one the wider subject, the second one,
// where there is such, the narrower.
struct Naming {
  std::int32_t report_number;
  Kind wider;
  std::optional<Kind> narrower;
};

constexpr Naming kNamings[] = {{28, Kind::kPayee, std::nullopt},
                               {29, Kind::kCategory, Kind::kSubCategory},
                               {30, Kind::kClassificationItem, Kind::kClassificationSubItem}};

std::optional<HistorySubject> SubjectOf(ReportCall& call) {
  // The catalogue sends no other number here.
  const Naming& naming =
      *std::ranges::find(kNamings, call.row.ChartReportSubTypeAttr, &Naming::report_number);
  if (naming.narrower) {
    if (const auto number = call.NumberIn(call.row.varParameter2)) {
      return HistorySubject{*naming.narrower, *number};
    }
  }
  if (const auto number = NumberInFirstParameter(call)) {
    return HistorySubject{naming.wider, *number};
  }
  return std::nullopt;
}

// ---- names; nothing where one of those that belong together is not found

std::string PayeeName(ReportCall& call, std::int32_t number) {
  return call.tables.Find(LookUpTable::kPayee, number)
             ? ":" + TextField(call.tables[LookUpTable::kPayee], "PayeeName")
             : "";
}

std::string CategoryName(ReportCall& call, std::int32_t number) {
  if (!call.tables.Find(LookUpTable::kCategory, number)) {
    return "";
  }
  Recordset& rec = call.tables[LookUpTable::kCategory];
  const std::string_view kind = HeadingOfCategories(LongField(rec, "CategoryType"));
  return " :" + std::string(kind) + ": " + TextField(rec, "CategoryName");
}

// A wider subject's name and behind it the narrower one's.
std::string Joined(const std::string& wider, const std::string& narrower) {
  return wider.empty() ? "" : wider + ":" + narrower;
}

std::string SubCategoryName(ReportCall& call, std::int32_t number) {
  if (!call.tables.Find(LookUpTable::kSubCategory, number)) {
    return "";
  }
  Recordset& rec = call.tables[LookUpTable::kSubCategory];
  const std::string name = TextField(rec, "SubCategoryName");
  return Joined(CategoryName(call, LongField(rec, "CategoryNumber")), name);
}

std::string ItemName(ReportCall& call, std::int32_t number) {
  if (!call.tables.Find(LookUpTable::kClassificationItem, number)) {
    return "";
  }
  Recordset& rec = call.tables[LookUpTable::kClassificationItem];
  if (!call.tables.Find(LookUpTable::kClassification, LongField(rec, "ClassificationNumber"))) {
    return "";
  }
  const std::string name = TextField(rec, "ClassificationItemName");
  const std::string classification =
      TextField(call.tables[LookUpTable::kClassification], "ClassificationName");
  return Joined(":" + classification, name);
}

std::string SubItemName(ReportCall& call, std::int32_t number) {
  if (!call.tables.Find(LookUpTable::kClassificationSubItem, number)) {
    return "";
  }
  Recordset& rec = call.tables[LookUpTable::kClassificationSubItem];
  const std::string name = TextField(rec, "ClassificationSubItemName");
  return Joined(ItemName(call, LongField(rec, "ClassificationItemNumber")), name);
}

std::string Title(ReportCall& call, const HistorySubject& subject) {
  constexpr auto kNames = std::to_array<std::string (*)(ReportCall&, std::int32_t)>(
      {PayeeName, CategoryName, SubCategoryName, ItemName, SubItemName});
  return call.row.strTitle +
         kNames.at(static_cast<std::size_t>(subject.kind))(call, subject.number);
}

void Compute(const ReportCall& call, const HistorySubject& subject, MonthBuckets& buckets) {
  MonthHistory(call.dbDov, subject, call.dtmFromDate, call.dtmToDate, buckets);
}

void WriteTable(ReportCall& call, ReportPage& page, const MonthBuckets& buckets, bool computed) {
  page.WriteSeriesTable("Date Range", ItemLabels(buckets.labels), "Total",
                        FormatAmountMatrix(buckets.Amounts(), call.platform.Locale()), computed);
}

void WriteChart(ReportCall& call, ChartWriter& writer, const HistorySubject&,
                const MonthBuckets& buckets) {
  WriteSeries(writer, buckets.Amounts(), buckets.labels, ChartUnit::kMoney, call.platform.Locale());
}

constexpr SubjectFamily<HistorySubject, MonthBuckets> kHistory = {SubjectOf, Compute, Title,
                                                                  WriteTable, WriteChart};

}  // namespace

void ReportHistory(ReportCall& call) { ReportSubject(call, kHistory); }
void ChartHistory(ReportCall& call) { ChartSubject(call, kHistory); }

}  // namespace vetlo
