#include <algorithm>
#include <limits>
#include <string>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

constexpr std::int32_t kMostFavorites = 100;

// Whether a favourite may be added. This is asked within the change that adds it, so that of
// several programs that add one at the same time each sees those of the others.
void RequirePlaceForFavorite(Database& dbDov, const SettingsChange& change) {
  const Variant name = change.varChartReportSubTypeName.value_or(Null{});
  std::int32_t count = 0;
  bool taken = false;
  ForEachRowOf(dbDov,
               "SELECT * FROM ChartReportSubType WHERE ChartReportType=" + Str(kFavoriteGroup),
               [&](Recordset& rec) {
                 ++count;
                 taken = taken || rec.Fields("ChartReportSubTypeName") == name;
               });
  if (count >= kMostFavorites) {
    throw Failure(FailureNumber::kTooManyFavorites);
  }
  if (taken && !IsNull(name)) {
    throw Failure(FailureNumber::kDuplicateKey,
                  "there is a favorite of this name by now; take another name or replace it");
  }
}

std::int32_t NextFreeNumber(Database& dbDov) {
  std::int32_t highest = 0;
  ForEachRowOf(dbDov, "SELECT * FROM ChartReportSubType", [&](Recordset& rec) {
    highest = std::max(highest, LongField(rec, "ChartReportSubTypeNumber"));
  });
  if (highest == std::numeric_limits<std::int32_t>::max()) {
    throw Failure(FailureNumber::kOverflow);
  }
  return highest + 1;
}

// An open end is stored as Null.
Variant StoredDate(const Variant& value) {
  if (IsNull(value) || IsEmpty(value)) {
    return Null{};
  }
  const Date date = ToDate(value);
  const bool open = date == Services().EarliestDate() || date == Services().LatestDate();
  return open ? Variant(Null{}) : Variant(date);
}

// Writes one row field by field, each only where the change names it.
class RowWriter {
 public:
  RowWriter(Recordset& rec, SaveMode mode) : rec_(rec), mode_(mode) {}

  // A new row takes every number as it is; in a row that is there kNothingChosen changes nothing.
  void Number(std::string_view field, std::int32_t value) {
    if (mode_ == SaveMode::kAddRow || value != kNothingChosen) {
      rec_.SetField(field, value);
    }
  }

  void Value(std::string_view field, const std::optional<Variant>& value) {
    if (value) {
      rec_.SetField(field, *value);
    }
  }

  void OpenEnd(std::string_view field, const std::optional<Variant>& value) {
    if (value) {
      rec_.SetField(field, StoredDate(*value));
    }
  }

 private:
  Recordset& rec_;
  SaveMode mode_;
};

void WriteChange(RowWriter writer, const SettingsChange& change) {
  writer.Number("ChartReportSubTypeAttr", change.lngChartReportSubTypeAttr);
  writer.Number("ChartReportType", change.lngChartReportType);
  writer.Value("ChartReportSubTypeName", change.varChartReportSubTypeName);
  writer.Number("ChartOrReportType", change.lngChartOrReportType);
  writer.Number("ChartType", change.lngChartType);
  writer.Value("Legend", change.varLegend);
  writer.Value("Title", change.varTitle);
  writer.Number("DateRangeType", change.lngDateRangeType);
  writer.Value("DateRangeExtInfo", change.varDateRangeExtInfo);
  writer.OpenEnd("FromDate", change.varFromDate);
  writer.OpenEnd("ToDate", change.varToDate);
  writer.Value("Parameter1", change.varParameter1);
  writer.Value("Parameter2", change.varParameter2);
}

}  // namespace

void CommonServices::SaveChartReportSubType(SaveMode lngMode, Database& dbDov,
                                            Recordset& recChartReportSubType,
                                            std::int32_t& lngChartReportSubTypeNumber,
                                            const SettingsChange& change) const {
  Transaction transaction(dbDov);
  std::int32_t number = lngChartReportSubTypeNumber;
  if (lngMode == SaveMode::kAddRow) {
    if (change.lngChartReportType == kFavoriteGroup) {
      RequirePlaceForFavorite(dbDov, change);
    }
    number = NextFreeNumber(dbDov);
    recChartReportSubType.AddNew();
    recChartReportSubType.SetField("ChartReportSubTypeNumber", number);
  } else {
    recChartReportSubType.SetIndex(kPrimaryIndex);
    recChartReportSubType.Seek("=", number);
    recChartReportSubType.Edit();
  }
  WriteChange(RowWriter(recChartReportSubType, lngMode), change);
  recChartReportSubType.Update();
  transaction.Commit();
  lngChartReportSubTypeNumber = number;
}

void CommonServices::DeleteChartReportSubType(Database& dbDov, Recordset& recChartReportSubType,
                                              std::int32_t lngChartReportSubTypeNumber) const {
  Transaction transaction(dbDov);
  recChartReportSubType.SetIndex(kPrimaryIndex);
  recChartReportSubType.Seek("=", lngChartReportSubTypeNumber);
  recChartReportSubType.Delete();
  transaction.Commit();
}

}  // namespace vetlo
