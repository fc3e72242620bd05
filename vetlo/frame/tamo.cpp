#include "vetlo/frame/tamo.h"

#include "vetlo/balance/totals.h"
#include "vetlo/frame/busy_pointer.h"
#include "vetlo/frame/catalogue.h"
#include "vetlo/frame/date_range.h"
#include "vetlo/frame/report_call.h"
#include "vetlo/output/chart_writer.h"

namespace vetlo {
namespace {

bool SeekRow(Recordset& recChartReportSubType, std::int32_t lngChartReportSubTypeNumber) {
  recChartReportSubType.SetIndex(kPrimaryIndex);
  recChartReportSubType.Seek("=", lngChartReportSubTypeNumber);
  return !recChartReportSubType.NoMatch();
}

// Every field is needed: one that is Null fails.
SettingsRow ReadRow(Recordset& rec) {
  SettingsRow row;
  row.blnLegend = ToBoolean(rec.Fields("Legend"));
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

}  // namespace

bool clsTamo::ShowChartReport(Database& dbDov, Recordset& recChartReportSubType,
                              std::int32_t lngChartReportSubTypeNumber, ChartObject* objChart,
                              ReportObject* objReport, const Variant& varParameter1,
                              const Variant& varParameter2) {
  const Date dtmToday = DayOf(platform_.Now());
  const Snapshot snapshot(dbDov);
  if (!SeekRow(recChartReportSubType, lngChartReportSubTypeNumber)) {
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
  BusyPointer pointer(*target);
  pointer.Show();
  if (chart) {
    ResumeNext([this] { platform_.DoEvents(); });
  }

  LookUpTables tables;
  ReportCall call{dbDov, platform_, Form(), row, tables};
  call.objChart = chart ? objChart : nullptr;
  call.objReport = chart ? nullptr : objReport;
  try {
    const auto [dtmFromDate, dtmToDate] =
        ResolveDateRange(row.DateRangeType, row.DateRangeExtInfo, dtmToday, recChartReportSubType);
    call.dtmFromDate = dtmFromDate;
    call.dtmToDate = dtmToDate;
    tables.Open(dbDov);
    Draw(call, chart ? static_cast<DisplayObject*>(objReport) : objChart);
  } catch (const Failure&) {
    // Once a case has computed, nobody cleans up: the tables are left to go by themselves, and the
    // hourglass stays.
    if (!call.blnCleanUpArmed) {
      throw;
    }
  }
  tables.Close();
  pointer.Restore();
  if (chart) {
    // Hidden and shown again, the control draws itself anew.
    ResumeNext([&] { target->SetVisible(false); });
    ResumeNext([&] { target->SetVisible(true); });
  }
  return false;
}

void clsTamo::Draw(ReportCall& call, DisplayObject* other) {
  if (call.objChart != nullptr) {
    SetUpChart(*call.objChart, call.row.blnLegend, call.row.ChartType, call.form);
    DrawChart(call);
    call.objChart->SetRepaint(true);
  } else {
    call.blnCleanUpArmed = false;
    call.sngMinRightMargin = SetUpReport(*call.objReport, platform_);
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

const frmTamo& clsTamo::Form() {
  if (!form_) {
    form_.emplace(platform_);
  }
  return *form_;
}

}  // namespace vetlo
