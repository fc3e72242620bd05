#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "vetlo/output/chart_writer.h"
#include "vetlo/output/report_page.h"
#include "vetlo/output/tamo_form.h"
#include "vetlo/platform/failure.h"
#include "vetlo/platform/platform.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// The fields of a settings row that a call goes by.
struct SettingsRow {
  bool blnLegend = false;
  std::int32_t ChartOrReportType = 0;
  std::int32_t ChartReportSubTypeAttr = 0;  // the report number
  std::int32_t ChartType = 0;
  std::int32_t DateRangeExtInfo = 0;
  std::int32_t DateRangeType = 0;
  std::string strTitle;
  Variant varParameter1;
  Variant varParameter2;
};

// The tables in which names are looked up by their numbers, in the order in which they are opened
// and closed.
enum class LookUpTable {
  kAccount,
  kAccountItem,
  kAccountItemType,
  kCategory,
  kClassification,
  kClassificationItem,
  kClassificationSubItem,
  kPayee,
  kSubCategory,
};

class LookUpTables {
 public:
  void Open(Database& dbDov);
  // Closes those that are open.
  void Close();

  // Stands on the row of this number; false where there is none.
  bool Find(LookUpTable table, std::int32_t number);
  Recordset& operator[](LookUpTable table) { return *tables_.at(static_cast<std::size_t>(table)); }

 private:
  std::array<std::unique_ptr<Recordset>, 9> tables_;
};

// One call of ShowChartReport while it draws: what the families' cases read and write.
struct ReportCall {
  Database& dbDov;
  Platform& platform;
  const SettingsRow& row;
  LookUpTables& tables;
  frmTamo& form;
  ChartObject* objChart = nullptr;    // the target of a chart
  ReportObject* objReport = nullptr;  // the target of a report
  Date dtmFromDate = {};
  Date dtmToDate = {};
  float sngMinRightMargin = 0;

  // A failure goes to the clean-up while this holds, and to the caller from then on. The first
  // guarded piece of a case ends it.
  bool blnCleanUpArmed = true;

  [[nodiscard]] ChartOrReport Target() const {
    return objReport != nullptr ? ChartOrReport::kReport : ChartOrReport::kChart;
  }

  // Runs a computing piece of a case: its failure number is handed back, and none after it is
  // cleaned up after. The store hears of the failure.
  std::int32_t Guard(const std::function<void()>& compute) {
    const std::int32_t lngComputeError = ResumeNext(dbDov, compute);
    blnCleanUpArmed = false;
    return lngComputeError;
  }

  // The number that a parameter of a history is; none where it does not convert.
  std::optional<std::int32_t> NumberIn(const Variant& varParameter);

  [[nodiscard]] std::string Caption() const;
  [[nodiscard]] ReportTitle Title() const { return {row.strTitle, Caption()}; }
  [[nodiscard]] ReportPage Page() const { return {*objReport, form, sngMinRightMargin}; }
  [[nodiscard]] ChartWriter Writer() const {
    return {*objChart, row.ChartType, form, platform.Locale()};
  }
};

}  // namespace vetlo
