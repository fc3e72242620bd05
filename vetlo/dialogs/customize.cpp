#include "vetlo/dialogs/customize.h"

#include <initializer_list>
#include <string>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"

namespace vetlo {
namespace {

constexpr std::int32_t kMostDaysOrMonths = 32767;

// What an empty number box is given when its range is chosen.
constexpr std::string_view kUsualDays = "30";
constexpr std::string_view kUsualMonths = "3";

constexpr std::string_view kNumberMessage =
    "Please enter a valid number which should be between 1 and 32767. Please enter again.";
constexpr std::string_view kTitleMessage = "The Report/Chart title can not be empty.";
constexpr std::string_view kOrderMessage =
    "The \"To Date\" can not be earlier than the \"From Date\". Please enter again.";
constexpr std::string_view kSaveMessage =
    "Can not modify the Report/Chart settings. Please contact with us.";

std::string DateMessage() {
  const auto sample = [](std::int64_t year) {
    return "\"" + Services().DateDisplayText(DateSerial(year, 10, 1)) + "\"";
  };
  return "Please enter a valid date such as " + sample(2000) + " or " + sample(1999) +
         " etc. "
         "The year should be entered with four digits. The following situations have exception: "
         "From the year 1930 to 1999, you can enter from 30 to 99; from the year 2000 to 2029, "
         "you can enter from 0 to 29.";
}

// What a report number offers; one that is in no catalogue offers nothing.
bool OffersForm(const ReportDefaults* report, ChartOrReport form) {
  return report != nullptr &&
         (form == ChartOrReport::kChart ? report->has_chart : report->has_report);
}

bool OffersCharts(const ReportDefaults* report) {
  return OffersForm(report, ChartOrReport::kChart);
}

bool OffersRange(const ReportDefaults* report, DateRange range) {
  return report != nullptr && Offers(report->ranges, range);
}

// Chooses the option of a stored number, none where it is no option's.
void ChooseOption(std::span<OptionButton> options, std::int32_t stored) {
  if (stored >= 0 && stored < std::ssize(options)) {
    options[static_cast<std::size_t>(stored)].SetValue(true);
  }
}

std::int32_t ChosenOption(std::span<const OptionButton> options) {
  for (std::size_t at = 0; at < options.size(); ++at) {
    if (options[at].Value()) {
      return static_cast<std::int32_t>(at);
    }
  }
  return kNothingChosen;
}

void Use(std::initializer_list<Control*> controls, bool enabled) {
  for (Control* const control : controls) {
    control->SetEnabled(enabled);
  }
}

}  // namespace

frmCustomize::frmCustomize(Platform& platform)
    : Form("Customize Report/Chart"), platform_(platform) {
  // A character may take two places of the column.
  txtTitle.SetMaxLength(
      static_cast<std::size_t>(Services().FieldMaxLength("ChartReportSubType", "Title") / 2));
  SetEvents();
}

void frmCustomize::SetEvents() {
  // A box may be left for Cancel whatever it holds.
  const auto leaving = [this](TextBox& box, auto validate) {
    box.on_validate = [this, &box, validate](const Control& taking_focus) {
      return &taking_focus == &cmdCancel || !box.InUse() || validate();
    };
  };
  txtTitle.on_got_focus = [this] { txtTitle.SelectAll(); };
  leaving(txtDateRangeExtInfo, [this] { return ValidateNumber(); });
  leaving(txtFrom, [this] { return ValidateDate(txtFrom); });
  leaving(txtTo, [this] { return ValidateDate(txtTo); });
  cboRange.on_click = [this] { ShowSelectedRange(); };
  cmdOK.on_click = [this] { Accept(); };
  cmdCancel.on_click = [this] { Hide(); };
  cmdReset.on_click = [this] { Reset(); };
}

frmCustomize::RangeEnd frmCustomize::Start() {
  return {lblFrom,
          txtFrom,
          "FromDate",
          &DateRangeFacts::start_editable,
          &ResolvedRange::dtmFromDate,
          Services().EarliestDate(),
          true};
}

frmCustomize::RangeEnd frmCustomize::End() {
  return {lblTo,
          txtTo,
          "ToDate",
          &DateRangeFacts::end_editable,
          &ResolvedRange::dtmToDate,
          Services().LatestDate(),
          false};
}

// ---- what the row stores

void frmCustomize::Activate() {
  if (!SeekSettingsRow(*recChartReportSubType, lngChartReportSubTypeNumber)) {
    Hide();
    return;
  }
  const ReportDefaults* const report =
      Services().ChartReportSetting(LongField(*recChartReportSubType, "ChartReportSubTypeAttr"));
  ShowForms(report);
  ShowTitle(report);
  ShowRanges(report);
  ShowSelectedRange();
  ShowStoredRange();
}

void frmCustomize::ShowForms(const ReportDefaults* report) {
  for (std::size_t form = 0; form < optChartOrReportType.size(); ++form) {
    optChartOrReportType.at(form).SetEnabled(OffersForm(report, static_cast<ChartOrReport>(form)));
  }
  ChooseOption(optChartOrReportType, LongField(*recChartReportSubType, "ChartOrReportType"));
  for (OptionButton& kind : optChartType) {
    kind.SetEnabled(OffersCharts(report));
  }
  ChooseOption(optChartType, LongField(*recChartReportSubType, "ChartType"));
  chkLegend.SetEnabled(report != nullptr && report->chart_type != kNothingChosen);
  chkLegend.SetChecked(ToBoolean(recChartReportSubType->Fields("Legend")));
}

void frmCustomize::ShowTitle(const ReportDefaults* report) {
  txtTitle.SetText(TextFieldOrEmpty(*recChartReportSubType, "Title"));
  Use({&lblTitle, &txtTitle}, report != nullptr);
  if (report != nullptr) {
    txtTitle.SelectAll();
  }
}

void frmCustomize::ShowRanges(const ReportDefaults* report) {
  for (const DateRangeFacts& facts : Services().DateRanges()) {
    if (OffersRange(report, facts.range)) {
      cboRange.AddItem(std::string(facts.name), static_cast<std::int32_t>(facts.range));
    }
  }
  if (cboRange.Entries().empty()) {
    Use({&lblRange, &cboRange}, false);
    return;
  }
  const std::int32_t stored =
      cboRange.IndexOfItemData(LongField(*recChartReportSubType, "DateRangeType"));
  cboRange.SetListIndex(stored == kNoEntry ? 0 : stored);
}

void frmCustomize::ShowStoredRange() {
  if (txtDateRangeExtInfo.InUse()) {
    const std::string number = Str(LongField(*recChartReportSubType, "DateRangeExtInfo"));
    txtDateRangeExtInfo.SetText(std::string(Trim(number)));
    // The dates that show are those of the row's own number.
    ShowSelectedRange();
  }
  ShowStoredDate(Start());
  ShowStoredDate(End());
}

void frmCustomize::ShowStoredDate(const RangeEnd& end) {
  if (!end.box.Enabled()) {
    return;
  }
  const Variant date = recChartReportSubType->Fields(end.field);
  if (!IsNull(date)) {
    end.box.SetText(Services().DateDisplayText(ToDate(date)));
  }
}

// ---- the range that is selected

void frmCustomize::ShowSelectedRange() {
  if (cboRange.ListIndex() == kNoEntry) {
    return;
  }
  const DateRangeFacts& range = *Services().DateRangeInfo(cboRange.SelectedItemData());
  ShowNumberBox(range);
  ShowEnd(Start(), range);
  ShowEnd(End(), range);
}

void frmCustomize::ShowNumberBox(const DateRangeFacts& range) {
  for (Control* const control : std::initializer_list<Control*>{
           &lblDateRangeExtInfo0, &txtDateRangeExtInfo, &lblDateRangeExtInfo1}) {
    control->SetEnabled(range.takes_number);
    control->SetVisible(range.takes_number);
  }
  if (!range.takes_number) {
    return;
  }
  lblDateRangeExtInfo0.SetCaption(std::string(range.words_before));
  lblDateRangeExtInfo1.SetCaption(std::string(range.words_behind));
  if (txtDateRangeExtInfo.Text().empty()) {
    txtDateRangeExtInfo.SetText(
        std::string(range.range == DateRange::kLastNDays ? kUsualDays : kUsualMonths));
  }
  txtDateRangeExtInfo.SelectAll();
}

void frmCustomize::ShowEnd(const RangeEnd& end, const DateRangeFacts& range) {
  const bool editable = range.*end.editable;
  Use({&end.label, &end.box}, editable);
  if (!editable) {
    end.box.SetText(ComputedText(end, range));
  }
}

// An open end shows nothing, and neither does one that a number leads out of the calendar.
std::string frmCustomize::ComputedText(const RangeEnd& end, const DateRangeFacts& range) {
  std::string text;
  ResumeNext([&] {
    const std::int32_t number =
        range.takes_number && end.follows_number ? ToLong(Variant(txtDateRangeExtInfo.Text())) : 1;
    const Date date =
        ComputedDateRange(static_cast<std::int32_t>(range.range), number, DayOf(platform_.Now())).*
        end.date;
    if (date != end.open_end) {
      text = Services().DateDisplayText(date);
    }
  });
  return text;
}

// ---- leaving a box

void frmCustomize::RefuseIn(TextBox& box, std::string_view message) {
  Refuse(platform_.GetScreen(), message);
  box.SelectAll();
  box.SetFocus();
}

bool frmCustomize::ValidateNumber() {
  const std::string_view typed = Trim(txtDateRangeExtInfo.Text());
  txtDateRangeExtInfo.SetText(std::string(typed.empty() ? "1" : typed));
  std::int32_t number = 0;
  ResumeNext([&] { number = ToLong(Variant(txtDateRangeExtInfo.Text())); });
  if (number < 1 || number > kMostDaysOrMonths) {
    RefuseIn(txtDateRangeExtInfo, kNumberMessage);
    return false;
  }
  ShowSelectedRange();
  return true;
}

bool frmCustomize::ValidateDate(TextBox& box) {
  box.SetText(std::string(Trim(box.Text())));
  if (box.Text().empty()) {
    return true;
  }
  Date date;
  if (ResumeNext([&] { date = Services().ParseDateText(box.Text()); }) != 0) {
    RefuseIn(box, DateMessage());
    return false;
  }
  box.SetText(Services().DateDisplayText(DayOf(date)));
  box.SelectAll();
  return true;
}

// ---- the buttons

bool frmCustomize::ValidateDialog() {
  Control* const active = ActiveControl();
  cmdOK.SetFocus();
  if (!BoxesPass() || !TitleIsThere() || !DatesAreInOrder()) {
    return false;
  }
  if (active != nullptr) {
    active->SetFocus();
  }
  return true;
}

bool frmCustomize::BoxesPass() {
  for (TextBox* const box : {&txtTitle, &txtDateRangeExtInfo, &txtFrom, &txtTo}) {
    if (box->InUse() && box->on_validate) {
      box->on_validate(cmdOK);
    }
  }
  return cmdOK.HasFocus();
}

bool frmCustomize::TitleIsThere() {
  const bool missing = txtTitle.InUse() && txtTitle.Text().empty();
  if (missing) {
    RefuseIn(txtTitle, kTitleMessage);
  }
  return !missing;
}

bool frmCustomize::DatesAreInOrder() {
  const bool both = txtFrom.InUse() && txtTo.InUse();
  const bool crossed = both && DateIn(End()) < DateIn(Start());
  if (crossed) {
    RefuseIn(txtTo, kOrderMessage);
  }
  return !crossed;
}

Date frmCustomize::DateIn(const RangeEnd& end) const {
  return end.box.InUse() && !end.box.Text().empty() ? Services().ParseDateText(end.box.Text())
                                                    : end.open_end;
}

Variant frmCustomize::DateToStore(const RangeEnd& end) const {
  return end.box.Enabled() ? Variant(DateIn(end)) : Variant(Null{});
}

void frmCustomize::Accept() {
  if (!ValidateDialog()) {
    return;
  }
  SettingsChange change;
  change.lngChartOrReportType = ChosenOption(optChartOrReportType);
  change.lngChartType = ChosenOption(optChartType);
  change.varLegend = chkLegend.Checked();
  change.varTitle = txtTitle.Text();
  change.lngDateRangeType =
      cboRange.ListIndex() == kNoEntry ? kNothingChosen : cboRange.SelectedItemData();
  change.varDateRangeExtInfo =
      txtDateRangeExtInfo.Enabled() ? ToLong(Variant(txtDateRangeExtInfo.Text())) : 1;
  change.varFromDate = DateToStore(Start());
  change.varToDate = DateToStore(End());
  Save(change);
}

void frmCustomize::Reset() {
  SeekSettingsRow(*recChartReportSubType, lngChartReportSubTypeNumber);
  const ReportDefaults* const report =
      Services().ChartReportSetting(LongField(*recChartReportSubType, "ChartReportSubTypeAttr"));
  if (report == nullptr) {
    // A number that is in no catalogue has no defaults to go back to.
    TellNotSaved();
    Hide();
    return;
  }
  SettingsChange change;
  change.lngChartOrReportType = static_cast<std::int32_t>(report->output);
  change.lngChartType = report->chart_type;
  change.varLegend = report->legend;
  change.varTitle = std::string(report->title);
  change.lngDateRangeType = static_cast<std::int32_t>(report->range);
  change.varDateRangeExtInfo = 1;
  change.varFromDate = Null{};
  change.varToDate = Null{};
  Save(change);
}

void frmCustomize::TellNotSaved() {
  platform_.GetScreen().MsgBox(kSaveMessage, MsgBoxButtons::kOkOnly, MsgBoxSymbol::kCritical);
}

void frmCustomize::Save(const SettingsChange& change) {
  const std::int32_t failure = SaveUnderHourglass(platform_.GetScreen(), *dbDov, [&] {
    Services().SaveChartReportSubType(SaveMode::kChangeRow, *dbDov, *recChartReportSubType,
                                      lngChartReportSubTypeNumber, change);
  });
  if (failure != 0) {
    TellNotSaved();
  }
  saved_ = failure == 0;
  Hide();
}

}  // namespace vetlo
