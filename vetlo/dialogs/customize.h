#pragma once

#include <array>
#include <cstdint>

#include "vetlo/dialogs/dialog.h"
#include "vetlo/platform/platform.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/date_range.h"

namespace vetlo {

// The dialog that changes one settings row: report or chart, kind of chart, legend, title, range.
// It offers what the row's report number offers. The row is written when the user accepts, or
// resets it to the defaults; nothing is written otherwise.
class frmCustomize : public Form {
 public:
  // The platform must outlive the form.
  explicit frmCustomize(Platform& platform);

  // Handed over before the form is shown; they stay the caller's. A row that is gone ends the
  // dialog before it shows.
  std::int32_t lngChartReportSubTypeNumber = 0;
  Recordset* recChartReportSubType = nullptr;
  Database* dbDov = nullptr;

  // Whether the row was written.
  [[nodiscard]] bool blnSaved() const { return saved_; }

  Label lblTitle{*this, nullptr, "lblTitle", "&Title:"};
  TextBox txtTitle{*this, nullptr, "txtTitle"};

  // The index of an option is the number that the row stores.
  Container fraChartOrReportType{*this, nullptr, "fraChartOrReportType", "Show Report or Chart"};
  Container picChartOrReportType{*this, &fraChartOrReportType, "picChartOrReportType"};
  std::array<OptionButton, 2> optChartOrReportType{{
      {*this, &picChartOrReportType, "optChartOrReportType(0)", "Show &chart"},
      {*this, &picChartOrReportType, "optChartOrReportType(1)", "Show &report"},
  }};

  Container fraChartType{*this, nullptr, "fraChartType", "Chart Type"};
  Container picChartType{*this, &fraChartType, "picChartType"};
  std::array<OptionButton, 3> optChartType{{
      {*this, &picChartType, "optChartType(0)", "&Line"},
      {*this, &picChartType, "optChartType(1)", "&Bar"},
      {*this, &picChartType, "optChartType(2)", "&Pie"},
  }};
  CheckBox chkLegend{*this, nullptr, "chkLegend", "Show l&egend"};

  Container fraDateRange{*this, nullptr, "fraDateRange", "Date Range"};
  Container picDateRange{*this, &fraDateRange, "picDateRange"};
  Label lblRange{*this, &picDateRange, "lblRange", "R&ange:"};
  DropDownList cboRange{*this, &picDateRange, "cboRange"};
  Label lblDateRangeExtInfo0{*this, &picDateRange, "lblDateRangeExtInfo(0)", "Last"};
  TextBox txtDateRangeExtInfo{*this, &picDateRange, "txtDateRangeExtInfo"};
  Label lblDateRangeExtInfo1{*this, &picDateRange, "lblDateRangeExtInfo(1)", "Months"};
  Label lblFrom{*this, &picDateRange, "lblFrom", "&From:"};
  TextBox txtFrom{*this, &picDateRange, "txtFrom"};
  Label lblTo{*this, &picDateRange, "lblTo", "T&o:"};
  TextBox txtTo{*this, &picDateRange, "txtTo"};

  Button cmdOK{*this, nullptr, "cmdOK", "OK"};
  Button cmdCancel{*this, nullptr, "cmdCancel", "Cancel"};
  Button cmdReset{*this, nullptr, "cmdReset", "Reset "};

 protected:
  void Activate() override;

 private:
  // One end of the range: its box, and where the catalogue and a range keep what belongs to it.
  struct RangeEnd {
    Label& label;
    TextBox& box;
    const char* field;
    bool DateRangeFacts::*editable;
    Date ResolvedRange::*date;
    Date open_end;
    bool follows_number;  // that of the last N days or months
  };
  RangeEnd Start();
  RangeEnd End();

  void SetEvents();
  void ShowForms(const ReportDefaults* report);
  void ShowTitle(const ReportDefaults* report);
  void ShowRanges(const ReportDefaults* report);
  void ShowStoredRange();
  void ShowStoredDate(const RangeEnd& end);

  // Shows what belongs to the range that is selected, if any.
  void ShowSelectedRange();
  void ShowNumberBox(const DateRangeFacts& range);
  void ShowEnd(const RangeEnd& end, const DateRangeFacts& range);
  [[nodiscard]] std::string ComputedText(const RangeEnd& end, const DateRangeFacts& range);

  // The step that a box takes before it is left: false where it refuses. Then the user has been
  // told why, and the focus is in the box.
  bool ValidateNumber();
  bool ValidateDate(TextBox& box);
  void RefuseIn(TextBox& box, std::string_view message);
  bool ValidateDialog();
  [[nodiscard]] bool BoxesPass();
  [[nodiscard]] bool TitleIsThere();
  [[nodiscard]] bool DatesAreInOrder();
  [[nodiscard]] Date DateIn(const RangeEnd& end) const;

  void Accept();
  void Reset();
  void Save(const SettingsChange& change);
  void TellNotSaved();
  [[nodiscard]] Variant DateToStore(const RangeEnd& end) const;

  Platform& platform_;
  bool saved_ = false;
};

}  // namespace vetlo
