#include "vetlo/dialogs/add_to_favorites.h"

#include <utility>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

constexpr std::string_view kEmptyMessage = "名称不能为空。请输入一个非空的名称。";
constexpr std::string_view kFullMessage =
    "您已建立了很多的图形报表类型，因此已不能新建图形报表类型。"
    "您可以先删除其他图形报表类型，然后建立此图形报表类型。";

std::string ReplaceQuestion(const std::string& name) { return "您真的要替换“" + name + "”吗？"; }

std::string LengthMessage(std::int32_t lngMaxLength) {
  return "图形报表名称最多只能有" + std::to_string(lngMaxLength) +
         "个字符（注：一个汉字视为2个字符）。请输入一个在此范围内的名称。";
}

std::string FailureMessage(SaveMode lngMode) {
  return std::string(lngMode == SaveMode::kAddRow ? "不能建立" : "不能更改") +
         "图形报表类型，您可以用其他图形报表类型名称试一试。如果还有问题，"
         "请与程序开发商联系。";
}

}  // namespace

frmAddToFavorites::frmAddToFavorites(Platform& platform)
    : Form("Add to Favorites"), platform_(platform) {
  cboName.on_change = [this] { OfferOK(); };
  cboName.on_click = [this] { OfferOK(); };
  cboName.on_validate = [this](const Control&) {
    cboName.SetText(std::string(Trim(cboName.Text())));
    return true;
  };
  cmdOK.on_click = [this] { Accept(); };
  cmdCancel.on_click = [this] { Hide(); };
}

void frmAddToFavorites::Activate() {
  if (!SeekSettingsRow(*recChartReportSubType, lngChartReportSubTypeNumber)) {
    Hide();
    return;
  }
  ListFavorites();
  cboName.SetText(strDefaultName);
  OfferOK();
}

void frmAddToFavorites::ListFavorites() {
  ForEachRowOf(*dbDov, "SELECT * FROM ChartReportSubType WHERE ChartReportType= 4",
               [this](Recordset& rec) {
                 cboName.AddItem(TextFieldOrEmpty(rec, "ChartReportSubTypeName"),
                                 LongField(rec, "ChartReportSubTypeNumber"));
               });
}

void frmAddToFavorites::OfferOK() { cmdOK.SetEnabled(!Trim(cboName.Text()).empty()); }

void frmAddToFavorites::Accept() {
  cboName.SetText(std::string(Trim(cboName.Text())));
  if (!NameIsThere()) {
    return;
  }
  const std::int32_t known = cboName.IndexOfText(cboName.Text());
  if (known == kNoEntry) {
    if (NameIsShortEnough()) {
      Save(SaveMode::kAddRow, lngChartReportSubTypeNumber);
    }
    return;
  }
  cboName.SetListIndex(known);
  if (MayReplace()) {
    Save(SaveMode::kChangeRow, cboName.SelectedItemData());
  }
}

bool frmAddToFavorites::NameIsThere() {
  const bool missing = cboName.Text().empty();
  if (missing) {
    Refuse(platform_.GetScreen(), kEmptyMessage);
    cboName.SetFocus();
  }
  return !missing;
}

bool frmAddToFavorites::MayReplace() {
  const MsgBoxAnswer answer = platform_.GetScreen().MsgBox(
      ReplaceQuestion(cboName.Text()), MsgBoxButtons::kYesNo, MsgBoxSymbol::kQuestion);
  if (answer != MsgBoxAnswer::kYes) {
    cboName.SetFocus();
  }
  return answer == MsgBoxAnswer::kYes;
}

// A name that is there already is not asked: the table holds it.
bool frmAddToFavorites::NameIsShortEnough() {
  const std::int32_t lngMaxLength =
      Services().FieldMaxLength("ChartReportSubType", "ChartReportSubTypeName");
  const bool too_long = std::cmp_greater(CharacterCount(cboName.Text()), lngMaxLength);
  if (too_long) {
    Refuse(platform_.GetScreen(), LengthMessage(lngMaxLength));
    cboName.SetFocus();
  }
  return !too_long;
}

// The row as it stands, under the new name.
SettingsChange frmAddToFavorites::Favorite() const {
  Recordset& rec = *recChartReportSubType;
  SeekSettingsRow(rec, lngChartReportSubTypeNumber);
  SettingsChange change;
  change.lngChartReportSubTypeAttr = LongField(rec, "ChartReportSubTypeAttr");
  change.lngChartReportType = kFavoriteGroup;
  change.varChartReportSubTypeName = cboName.Text();
  change.lngChartOrReportType = LongField(rec, "ChartOrReportType");
  change.lngChartType = LongField(rec, "ChartType");
  change.varLegend = rec.Fields("Legend");
  change.varTitle = rec.Fields("Title");
  change.lngDateRangeType = LongField(rec, "DateRangeType");
  change.varDateRangeExtInfo = rec.Fields("DateRangeExtInfo");
  change.varFromDate = rec.Fields("FromDate");
  change.varToDate = rec.Fields("ToDate");
  change.varParameter1 = varParameter1;
  change.varParameter2 = varParameter2;
  return change;
}

void frmAddToFavorites::Save(SaveMode lngMode, std::int32_t number) {
  const SettingsChange change = Favorite();
  const std::int32_t failure = SaveUnderHourglass(platform_.GetScreen(), *dbDov, [&] {
    Services().SaveChartReportSubType(lngMode, *dbDov, *recChartReportSubType, number, change);
  });
  cancelled_ = failure != 0;
  if (cancelled_) {
    TellFailure(lngMode, failure);
  }
  Hide();
}

void frmAddToFavorites::TellFailure(SaveMode lngMode, std::int32_t failure) {
  if (failure == static_cast<std::int32_t>(FailureNumber::kTooManyFavorites)) {
    Refuse(platform_.GetScreen(), kFullMessage);
  } else {
    platform_.GetScreen().MsgBox(FailureMessage(lngMode), MsgBoxButtons::kOkOnly,
                                 MsgBoxSymbol::kCritical);
  }
}

}  // namespace vetlo
