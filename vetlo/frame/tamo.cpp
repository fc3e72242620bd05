#include "vetlo/frame/tamo.h"

#include <array>

#include "vetlo/balance/totals.h"
#include "vetlo/budget/budget_amounts.h"
#include "vetlo/cashflow/category_totals.h"
#include "vetlo/cashflow/period_totals.h"
#include "vetlo/dialogs/add_to_favorites.h"
#include "vetlo/dialogs/customize.h"
#include "vetlo/frame/busy_pointer.h"
#include "vetlo/frame/catalogue.h"
#include "vetlo/frame/report_call.h"
#include "vetlo/output/chart_writer.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/date_range.h"

namespace vetlo {
namespace {

// Every field is needed: one that is Null fails.
SettingsRow ReadRow(Recordset& rec) {
  SettingsRow row;
  row.blnLegend = BooleanField(rec, "Legend");
  row.ChartOrReportType = LongField(rec, "ChartOrReportType");
  row.ChartReportSubTypeAttr = LongField(rec, "ChartReportSubTypeAttr");
  row.ChartType = LongField(rec, "ChartType");
  row.DateRangeExtInfo = LongField(rec, "DateRangeExtInfo");
  row.DateRangeType = LongField(rec, "DateRangeType");
  row.strTitle = TextField(rec, "Title");
  return row;
}

// The object that the row asks for, or null where there is none to draw into.
DisplayObject* TargetOf(const SettingsRow& row, ChartObject* objChart, ReportObject* objReport) {
  switch (static_cast<ChartOrReport>(row.ChartOrReportType)) {
    case ChartOrReport::kChart:
      return objChart;
    case ChartOrReport::kReport:
      return objReport;
  }
  return nullptr;
}

// A Null differs from nothing.
bool Differs(const Variant& stored, const Variant& usual) {
  return !IsNull(stored) && stored != usual;
}

bool DiffersFrom(const ReportDefaults& usual, Recordset& rec) {
  const std::array<std::pair<std::string_view, Variant>, 5> fields = {{
      {"ChartOrReportType", static_cast<std::int32_t>(usual.output)},
      {"ChartType", usual.chart_type},
      {"Legend", usual.legend},
      {"DateRangeType", static_cast<std::int32_t>(usual.range)},
      {"Title", std::string(usual.title)},
  }};
  bool differs = false;
  for (const auto& [field, value] : fields) {
    differs = Differs(rec.Fields(field), value) || differs;
  }
  return differs;
}

// ---- the totals of categories

struct FlowOfAPeriod {
  Flow flow;
  Date dtmFromDate;
  Date dtmToDate;
};

struct CategorySubject {
  std::int32_t number;
  bool unassigned;
};

// Where the caller wants the two days, null where he does not.
struct DaysCounted {
  Date* first;
  Date* last;
};

using CategoryTotal = DatedTotal (*)(Database&, Flow, Date, Date, std::int32_t, bool);

Currency AskForTotal(CategoryTotal operation, Database& dbDov, const FlowOfAPeriod& period,
                     CategorySubject subject, DaysCounted days) {
  const auto put = [](Date* where, Date date) {
    if (where != nullptr) {
      *where = date;
    }
  };
  // What a caller has put there is gone at once, also where the total fails.
  put(days.first, Services().LatestDate());
  put(days.last, Services().EarliestDate());
  const Snapshot snapshot(dbDov);
  const DatedTotal total = operation(dbDov, period.flow, period.dtmFromDate, period.dtmToDate,
                                     subject.number, subject.unassigned);
  put(days.first, total.dtmFirstDate);
  put(days.last, total.dtmLastDate);
  return total.curTotal;
}

}  // namespace

bool clsTamo::AddToFavorites(Database& dbDov, Recordset& recChartReportSubType,
                             std::int32_t lngChartReportSubTypeNumber,
                             std::string_view strDefaultName, const Variant& varParameter1,
                             const Variant& varParameter2) {
  frmAddToFavorites form(platform_);
  form.lngChartReportSubTypeNumber = lngChartReportSubTypeNumber;
  form.recChartReportSubType = &recChartReportSubType;
  form.strDefaultName = strDefaultName;
  form.dbDov = &dbDov;
  form.varParameter1 = varParameter1;
  form.varParameter2 = varParameter2;
  form.ShowModal(platform_.GetScreen());
  return !form.blnCancelled();
}

bool clsTamo::ChartReportHasBeenCustomized(Recordset& recChartReportSubType,
                                           std::int32_t lngChartReportSubTypeNumber) {
  if (!SeekSettingsRow(recChartReportSubType, lngChartReportSubTypeNumber)) {
    return false;
  }
  const ReportDefaults* const usual =
      Services().ChartReportSetting(LongField(recChartReportSubType, "ChartReportSubTypeAttr"));
  if (usual == nullptr) {
    return false;
  }
  if (DiffersFrom(*usual, recChartReportSubType)) {
    return true;
  }
  const Variant type = recChartReportSubType.Fields("DateRangeType");
  const DateRangeFacts* const range =
      IsNull(type) ? nullptr : Services().DateRangeInfo(ToLong(type));
  return range != nullptr && range->takes_number &&
         Differs(recChartReportSubType.Fields("DateRangeExtInfo"), usual->RangeNumber());
}

bool clsTamo::CustomizeChartReport(Database& dbDov, Recordset& recChartReportSubType,
                                   std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                                   ReportObject* objReport, const Variant& varParameter1,
                                   const Variant& varParameter2) {
  frmCustomize form(platform_);
  form.lngChartReportSubTypeNumber = lngChartReportSubTypeNumber;
  form.recChartReportSubType = &recChartReportSubType;
  form.dbDov = &dbDov;
  form.ShowModal(platform_.GetScreen());
  if (form.blnSaved()) {
    ShowChartReport(dbDov, recChartReportSubType, lngChartReportSubTypeNumber, objChart, objReport,
                    varParameter1, varParameter2);
  }
  return form.blnSaved();
}

Variant clsTamo::LenByte(std::string_view str) {
  return static_cast<std::int32_t>(CharacterCount(str));
}

bool clsTamo::ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                              std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                              ReportObject* objReport, const Variant& varParameter1,
                              const Variant& varParameter2) {
  const Date dtmToday = DayOf(platform_.Now());
  const Snapshot snapshot(dbDov);
  if (!SeekSettingsRow(recChartReportSubType, lngChartReportSubTypeNumber)) {
    return false;
  }
  SettingsRow row = ReadRow(recChartReportSubType);
  const bool own_parameters =
      LongField(recChartReportSubType, "ChartReportType") != kCallerParametersGroup;
  row.varParameter1 = own_parameters ? recChartReportSubType.Fields("Parameter1") : varParameter1;
  row.varParameter2 = own_parameters ? recChartReportSubType.Fields("Parameter2") : varParameter2;
  DisplayObject* const target = TargetOf(row, objChart, objReport);
  if (target == nullptr) {
    return false;
  }
  const bool chart = target == objChart;
  BusyPointer pointer(*target, dbDov);
  pointer.Show();
  if (chart) {
    ResumeNext(dbDov, [this] { platform_.DoEvents(); });
  }

  LookUpTables tables;
  ReportCall call{dbDov, platform_, row, tables, form_};
  call.objChart = chart ? objChart : nullptr;
  call.objReport = chart ? nullptr : objReport;
  try {
    const auto [dtmFromDate, dtmToDate] =
        ResolveDateRange(row.DateRangeType, row.DateRangeExtInfo, dtmToday, recChartReportSubType);
    call.dtmFromDate = dtmFromDate;
    call.dtmToDate = dtmToDate;
    tables.Open(dbDov);
    Draw(call, chart ? static_cast<DisplayObject*>(objReport) : objChart);
  } catch (const std::exception&) {
    // Once a case has computed, nobody cleans up: the tables are left to go by themselves, and the
    // hourglass stays.
    if (!call.blnCleanUpArmed) {
      throw;
    }
    ResumeNext(dbDov, [] { throw; });
  }
  tables.Close();
  pointer.Restore();
  if (chart) {
    // Hidden and shown again, the control draws itself anew.
    ResumeNext(dbDov, [&] { target->SetVisible(false); });
    ResumeNext(dbDov, [&] { target->SetVisible(true); });
  }
  return false;
}

void clsTamo::Draw(ReportCall& call, DisplayObject* other) {
  // A report has nobody to clean up after it from its first put on.
  call.blnCleanUpArmed = call.objChart != nullptr;
  if (call.objChart != nullptr) {
    SetUpChart(*call.objChart, call.row.blnLegend, call.row.ChartType, form_);
    DrawChart(call);
    call.objChart->SetRepaint(true);
  } else {
    call.sngMinRightMargin = SetUpReport(*call.objReport, platform_, call.dbDov);
    DrawReport(call);
    call.objReport->SetLocked(true);
    call.objReport->SetVisible(true);
    call.objReport->SetSelStart(0);
  }
  if (other != nullptr) {
    other->SetVisible(false);
  }
}

Currency clsTamo::TotalAssets(Database& dbDov, Recordset& recAccount, Date dtmToDate) {
  const Snapshot snapshot(dbDov);
  return vetlo::TotalAssets(dbDov, recAccount, dtmToDate);
}

Currency clsTamo::TotalLiabilities(Database& dbDov, Recordset& recAccount, Date dtmToDate) {
  const Snapshot snapshot(dbDov);
  return vetlo::TotalLiabilities(dbDov, recAccount, dtmToDate);
}

Currency clsTamo::TotalCreditCardDebt(Database& dbDov, Date dtmToDate) {
  const Snapshot snapshot(dbDov);
  return vetlo::TotalCreditCardDebt(dbDov, dtmToDate);
}

Currency clsTamo::TotalIncome(Database& dbDov, Date dtmFromDate, Date dtmToDate) {
  const Snapshot snapshot(dbDov);
  return vetlo::TotalIncome(dbDov, dtmFromDate, dtmToDate);
}

Currency clsTamo::TotalExpenses(Database& dbDov, Date dtmFromDate, Date dtmToDate) {
  const Snapshot snapshot(dbDov);
  return vetlo::TotalExpenses(dbDov, dtmFromDate, dtmToDate);
}

Currency clsTamo::TotalIncomeOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                        std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                        Date* dtmFirstDate, Date* dtmLastDate) {
  return AskForTotal(TotalOfCategory, dbDov, {Flow::kIncoming, dtmFromDate, dtmToDate},
                     {lngCategoryNumber, blnCalcAllUnassigned}, {dtmFirstDate, dtmLastDate});
}

Currency clsTamo::TotalExpensesOfCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                          std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned,
                                          Date* dtmFirstDate, Date* dtmLastDate) {
  return AskForTotal(TotalOfCategory, dbDov, {Flow::kOutgoing, dtmFromDate, dtmToDate},
                     {lngCategoryNumber, blnCalcAllUnassigned}, {dtmFirstDate, dtmLastDate});
}

Currency clsTamo::TotalIncomeOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                           std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                           Date* dtmFirstDate, Date* dtmLastDate) {
  return AskForTotal(TotalOfSubCategory, dbDov, {Flow::kIncoming, dtmFromDate, dtmToDate},
                     {lngNumber, blnCalcAllUnassigned}, {dtmFirstDate, dtmLastDate});
}

Currency clsTamo::TotalExpensesOfSubCategory(Database& dbDov, Date dtmFromDate, Date dtmToDate,
                                             std::int32_t lngNumber, bool blnCalcAllUnassigned,
                                             Date* dtmFirstDate, Date* dtmLastDate) {
  return AskForTotal(TotalOfSubCategory, dbDov, {Flow::kOutgoing, dtmFromDate, dtmToDate},
                     {lngNumber, blnCalcAllUnassigned}, {dtmFirstDate, dtmLastDate});
}

Currency clsTamo::TotalBudgetOfDateRange(std::span<const Currency> cur, Date dtmFromDate,
                                         Date dtmToDate) {
  return vetlo::TotalBudgetOfDateRange(cur, dtmFromDate, dtmToDate);
}

}  // namespace vetlo
