#include "vetlo/frame/history_reports.h"

#include <vector>

#include "vetlo/schedule/histories.h"

namespace vetlo {
namespace {

using Kind = HistorySubject::Kind;

constexpr std::int32_t kPayeeHistory = 28;
constexpr std::int32_t kCategoryHistory = 29;

// What the parameters name; none where they do not convert.
std::optional<HistorySubject> SubjectOf(ReportCall& call) {
  const std::int32_t report_number = call.row.ChartReportSubTypeAttr;
  if (report_number != kPayeeHistory) {
    if (const auto narrower = call.NumberIn(call.row.varParameter2)) {
      return HistorySubject{
          report_number == kCategoryHistory ? Kind::kSubCategory : Kind::kClassificationSubItem,
          *narrower};
    }
  }
  const auto number = call.NumberIn(call.row.varParameter1);
  if (!number) {
    return std::nullopt;
  }
  if (report_number == kPayeeHistory) {
    return HistorySubject{Kind::kPayee, *number};
  }
  return HistorySubject{
      report_number == kCategoryHistory ? Kind::kCategory : Kind::kClassificationItem, *number};
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
  const bool income = LongField(rec, "CategoryType") == 0;
  return (income ? " :Income Category: " : " :Expense Category: ") + TextField(rec, "CategoryName");
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
  return Joined(CategoryName(call, LongField(rec, "CategoryNumber")),
                TextField(rec, "SubCategoryName"));
}

std::string ItemName(ReportCall& call, std::int32_t number) {
  if (!call.tables.Find(LookUpTable::kClassificationItem, number)) {
    return "";
  }
  Recordset& rec = call.tables[LookUpTable::kClassificationItem];
  return call.tables.Find(LookUpTable::kClassification, LongField(rec, "ClassificationNumber"))
             ? Joined(
                   ":" + TextField(call.tables[LookUpTable::kClassification], "ClassificationName"),
                   TextField(rec, "ClassificationItemName"))
             : "";
}

std::string SubItemName(ReportCall& call, std::int32_t number) {
  if (!call.tables.Find(LookUpTable::kClassificationSubItem, number)) {
    return "";
  }
  Recordset& rec = call.tables[LookUpTable::kClassificationSubItem];
  return Joined(ItemName(call, LongField(rec, "ClassificationItemNumber")),
                TextField(rec, "ClassificationSubItemName"));
}

std::string TitleLine(ReportCall& call, const HistorySubject& subject) {
  constexpr auto kNames = std::to_array<std::string (*)(ReportCall&, std::int32_t)>(
      {PayeeName, CategoryName, SubCategoryName, ItemName, SubItemName});
  return call.row.strTitle +
         kNames.at(static_cast<std::size_t>(subject.kind))(call, subject.number);
}

std::int32_t Compute(ReportCall& call, const HistorySubject& subject, MonthBuckets& buckets) {
  return call.Guard(
      [&] { MonthHistory(call.dbDov, subject, call.dtmFromDate, call.dtmToDate, buckets); });
}

}  // namespace

void ReportHistory(ReportCall& call) {
  const auto subject = SubjectOf(call);
  if (!subject) {
    return;
  }
  ReportPage page = call.Page();
  page.BeginHeading();
  page.WriteTitleLine(TitleLine(call, *subject));
  page.EndHeading(call.Caption());
  MonthBuckets buckets;
  const std::int32_t lngComputeError = Compute(call, *subject, buckets);
  page.WriteSeriesTable("Date Range", ItemLabels(buckets.labels), "Total",
                        FormatAmountMatrix(buckets.Amounts(), call.platform.Locale()),
                        lngComputeError == 0);
}

void ChartHistory(ReportCall& call) {
  ChartWriter writer = call.Writer();
  std::string strTitle = call.row.strTitle;
  if (const auto subject = SubjectOf(call)) {
    MonthBuckets buckets;
    if (Compute(call, *subject, buckets) == 0) {
      WriteSeries(writer, buckets.Amounts(), buckets.labels, ChartUnit::kMoney,
                  call.platform.Locale());
    }
    strTitle = TitleLine(call, *subject);
  }
  writer.SetTitle(strTitle);
  writer.SetFootnote(call.Caption());
}

}  // namespace vetlo
