#include "vetlo/dialogs/customize.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>

#include "tests/support/failing_database.h"
#include "tests/support/played_screen.h"
#include "tests/support/small_store.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Message = PlayedScreen::Message;

constexpr std::int32_t kRow = 1;
constexpr const char* kRows = "ChartReportSubType";

Message Warning(const std::string& text) {
  return {text, MsgBoxButtons::kOkOnly, MsgBoxSymbol::kWarning};
}

const Message kNumberRefused =
    Warning("Please enter a valid number which should be between 1 and 32767. Please enter again.");
const Message kDateRefused = Warning(
    "Please enter a valid date such as \"2000/10/01\" or \"1999/10/01\" etc. The year should be "
    "entered with four digits. The following situations have exception: From the year 1930 to "
    "1999, you can enter from 30 to 99; from the year 2000 to 2029, you can enter from 0 to 29.");
const Message kTitleRefused = Warning("The Report/Chart title can not be empty.");
const Message kOrderRefused =
    Warning("The \"To Date\" can not be earlier than the \"From Date\". Please enter again.");
const Message kSaveFailed = {"Can not modify the Report/Chart settings. Please contact with us.",
                             MsgBoxButtons::kOkOnly, MsgBoxSymbol::kCritical};

// The dialog on one settings row of a store.
class Customize : public ::testing::Test {
 protected:
  using User = std::function<void(frmCustomize&)>;

  void Open(const TestRow& row, const User& user) {
    store_ = SmallStore().Row(row).Open();
    rows_ = store_->OpenRecordset(kRows);
    Show(*store_, *rows_, user, row.number);
  }
  void Show(Database& store, Recordset& rows, const User& user, std::int32_t number = kRow) {
    frmCustomize form(platform_);
    form.lngChartReportSubTypeNumber = number;
    form.recChartReportSubType = &rows;
    form.dbDov = &store;
    platform_.screen.user = [&](Form&) { user(form); };
    failure_ = ResumeNext([&] { form.ShowModal(platform_.screen); });
    saved_ = form.blnSaved();
    EXPECT_FALSE(form.Visible());
  }
  // The dialog accepted with whatever the user does before.
  void Accept(
      const TestRow& row, const User& user = [](frmCustomize&) {}) {
    Open(row, [&](frmCustomize& form) {
      user(form);
      form.cmdOK.Click();
      open_after_ok_ = form.Visible();
    });
  }

  Variant Stored(std::string_view field) const {
    const auto rows = store_->OpenRecordset(kRows);
    rows->SetIndex(kPrimaryIndex);
    rows->Seek("=", kRow);
    return rows->Fields(field);
  }
  [[nodiscard]] std::vector<Variant> StoredFields() const {
    std::vector<Variant> values;
    for (const Column& column : FindTable(kRows)->columns) {
      values.push_back(Stored(column.name));
    }
    return values;
  }
  [[nodiscard]] const std::vector<Message>& Messages() const { return platform_.screen.messages; }

  PlayedPlatform platform_;
  std::unique_ptr<Database> store_;
  std::unique_ptr<Recordset> rows_;
  std::int32_t failure_ = 0;
  bool saved_ = false;
  bool open_after_ok_ = false;
};

void PickRange(frmCustomize& form, std::int32_t range) {
  form.cboRange.Pick(form.cboRange.IndexOfItemData(range));
}

// Goes to a box, types into it and goes on to the list of ranges.
void TypeAndLeave(frmCustomize& form, TextBox& box, std::string_view text) {
  box.Type(text);
  form.MoveFocus(form.cboRange);
}

// Where the focus goes while somebody watches the form.
class WatchedFocus : public FormView {
 public:
  explicit WatchedFocus(Form& form) : form_(form) { form_.SetView(this); }
  ~WatchedFocus() override { form_.SetView(nullptr); }
  WatchedFocus(const WatchedFocus&) = delete;
  WatchedFocus& operator=(const WatchedFocus&) = delete;

  void ControlChanged(Control&) override {}
  void FocusMoved() override { moves.push_back(form_.ActiveControl()->Name()); }
  void FormHidden() override {}

  std::vector<std::string> moves;

 private:
  Form& form_;
};

bool AllSelected(const TextBox& box) {
  return box.SelStart() == 0 && box.SelLength() == box.Text().size() && box.SelLength() > 0;
}

// ---- what the form holds

TEST(CustomizeForm, HasTheseControlsInThisOrder) {
  PlayedPlatform platform;
  const frmCustomize form(platform);
  EXPECT_EQ(form.Caption(), "Customize Report/Chart");
  const std::vector<std::array<std::string, 3>> expected = {
      {"lblTitle", "&Title:", ""},
      {"txtTitle", "", ""},
      {"fraChartOrReportType", "Show Report or Chart", ""},
      {"picChartOrReportType", "", "fraChartOrReportType"},
      {"optChartOrReportType(0)", "Show &chart", "picChartOrReportType"},
      {"optChartOrReportType(1)", "Show &report", "picChartOrReportType"},
      {"fraChartType", "Chart Type", ""},
      {"picChartType", "", "fraChartType"},
      {"optChartType(0)", "&Line", "picChartType"},
      {"optChartType(1)", "&Bar", "picChartType"},
      {"optChartType(2)", "&Pie", "picChartType"},
      {"chkLegend", "Show l&egend", ""},
      {"fraDateRange", "Date Range", ""},
      {"picDateRange", "", "fraDateRange"},
      {"lblRange", "R&ange:", "picDateRange"},
      {"cboRange", "", "picDateRange"},
      {"lblDateRangeExtInfo(0)", "Last", "picDateRange"},
      {"txtDateRangeExtInfo", "", "picDateRange"},
      {"lblDateRangeExtInfo(1)", "Months", "picDateRange"},
      {"lblFrom", "&From:", "picDateRange"},
      {"txtFrom", "", "picDateRange"},
      {"lblTo", "T&o:", "picDateRange"},
      {"txtTo", "", "picDateRange"},
      {"cmdOK", "OK", ""},
      {"cmdCancel", "Cancel", ""},
      {"cmdReset", "Reset ", ""},
  };
  std::vector<std::array<std::string, 3>> controls;
  for (const Control* control : form.Controls()) {
    const Container* const container = control->GetContainer();
    controls.push_back(
        {control->Name(), control->Caption(), container == nullptr ? "" : container->Name()});
  }
  EXPECT_EQ(controls, expected);
}

TEST(CustomizeForm, HasControlsOfTheseKinds) {
  PlayedPlatform platform;
  const frmCustomize form(platform);
  for (const char* name : {"txtTitle", "txtDateRangeExtInfo", "txtFrom", "txtTo"}) {
    EXPECT_NE(form.Find<TextBox>(name), nullptr) << name;
  }
  for (const char* name : {"cmdOK", "cmdCancel", "cmdReset"}) {
    EXPECT_NE(form.Find<Button>(name), nullptr) << name;
  }
  EXPECT_NE(form.Find<CheckBox>("chkLegend"), nullptr);
  EXPECT_NE(form.Find<DropDownList>("cboRange"), nullptr);
}

// A Chinese character may take two places of the column, and so half of them are given out.
TEST(CustomizeForm, TakesATitleOfHalfTheColumnsLength) {
  PlayedPlatform platform;
  const frmCustomize form(platform);
  EXPECT_EQ(Services().FieldMaxLength(kRows, "Title"), 100);
  EXPECT_EQ(form.txtTitle.MaxLength(), 50U);
}

// ---- setting it up

TEST_F(Customize, ShowsWhatTheRowStores) {
  Open({.report_number = 1,
        .output = ChartOrReport::kChart,
        .chart_type = 2,
        .legend = true,
        .title = "Where it goes",
        .range = 2},
       [](frmCustomize& form) {
         EXPECT_TRUE(form.optChartOrReportType[0].Value());
         EXPECT_TRUE(form.optChartType[2].Value());
         EXPECT_TRUE(form.chkLegend.Checked());
         EXPECT_EQ(form.txtTitle.Text(), "Where it goes");
         EXPECT_TRUE(AllSelected(form.txtTitle));
         EXPECT_TRUE(form.txtTitle.HasFocus());
         EXPECT_EQ(form.cboRange.SelectedItemData(), 2);
         EXPECT_EQ(form.txtFrom.Text(), "2026/03/01");
         EXPECT_EQ(form.txtTo.Text(), "2026/03/31");
         EXPECT_FALSE(form.txtDateRangeExtInfo.Visible());
       });
  EXPECT_FALSE(saved_);
}

TEST_F(Customize, ShowsARowWithoutLegendAsAReport) {
  Open({.report_number = 1, .chart_type = 0}, [](frmCustomize& form) {
    EXPECT_TRUE(form.optChartOrReportType[1].Value());
    EXPECT_TRUE(form.optChartType[0].Value());
    EXPECT_FALSE(form.chkLegend.Checked());
  });
}

TEST_F(Customize, ChoosesNoKindOfChartWhereTheRowHasNone) {
  for (const std::int32_t none : {255, 3, 14, -1}) {
    Open({.report_number = 1, .chart_type = none}, [&](frmCustomize& form) {
      for (const OptionButton& kind : form.optChartType) {
        EXPECT_FALSE(kind.Value()) << kind.Name() << " for " << none;
      }
    });
  }
}

TEST_F(Customize, ShowsATitleThatIsNullAsEmpty) {
  Open({.report_number = 1, .title = Null{}},
       [](frmCustomize& form) { EXPECT_EQ(form.txtTitle.Text(), ""); });
}

TEST_F(Customize, SelectsTheFirstRangeWhereTheRowsIsNotOffered) {
  Open({.report_number = 59, .range = 0}, [](frmCustomize& form) {
    EXPECT_EQ(form.cboRange.ListIndex(), 0);
    EXPECT_EQ(form.cboRange.SelectedItemData(), 2);
    EXPECT_EQ(form.txtFrom.Text(), "2026/03/01");
  });
}

TEST_F(Customize, OffersNothingForANumberThatIsInNoCatalogue) {
  Open({.report_number = 77, .range = 2}, [](frmCustomize& form) {
    EXPECT_THAT(form.cboRange.Entries(), IsEmpty());
    for (const Control* control : form.Controls()) {
      const bool offered = control->GetContainer() == nullptr
                               ? control->Name() != "lblTitle" && control->Name() != "txtTitle" &&
                                     control->Name() != "chkLegend"
                               : control->GetContainer() != &form.picChartOrReportType &&
                                     control->GetContainer() != &form.picChartType &&
                                     control->Name() != "lblRange" && control->Name() != "cboRange";
      EXPECT_EQ(control->Enabled(), offered) << control->Name();
    }
  });
}

TEST_F(Customize, NeverShowsWhereTheRowIsGone) {
  store_ = SmallStore().Row({.number = 2}).Open();
  rows_ = store_->OpenRecordset(kRows);
  Show(*store_, *rows_, [](frmCustomize&) { FAIL() << "it has shown"; });
  EXPECT_EQ(platform_.screen.forms_shown, 0);
  EXPECT_EQ(failure_, 0);
  EXPECT_FALSE(saved_);
}

// What each report number offers.
class CustomizedNumber : public Customize, public ::testing::WithParamInterface<std::int32_t> {
 protected:
  [[nodiscard]] const ReportDefaults& Report() const {
    return *Services().ChartReportSetting(GetParam());
  }
};

TEST_P(CustomizedNumber, OffersTheOutputsThatItHas) {
  Open({.report_number = GetParam()}, [&](frmCustomize& form) {
    EXPECT_EQ(form.optChartOrReportType[0].Enabled(), Report().has_chart);
    EXPECT_EQ(form.optChartOrReportType[1].Enabled(), Report().has_report);
  });
}

TEST_P(CustomizedNumber, OffersEveryKindOfChartAndALegendWhereItHasAChart) {
  Open({.report_number = GetParam()}, [&](frmCustomize& form) {
    for (const OptionButton& kind : form.optChartType) {
      EXPECT_EQ(kind.Enabled(), Report().has_chart) << kind.Name();
    }
    EXPECT_EQ(form.chkLegend.Enabled(), Report().chart_type != kNothingChosen);
  });
}

TEST_P(CustomizedNumber, OffersItsTitle) {
  Open({.report_number = GetParam()}, [](frmCustomize& form) {
    EXPECT_TRUE(form.txtTitle.Enabled());
    EXPECT_TRUE(form.lblTitle.Enabled());
  });
}

TEST_P(CustomizedNumber, OffersItsRangesByNameInTheirOrder) {
  std::vector<std::string> expected;
  for (const DateRangeFacts& facts : Services().DateRanges()) {
    if (Offers(Report().ranges, facts.range)) {
      expected.push_back(std::to_string(static_cast<std::int32_t>(facts.range)) + " " +
                         std::string(facts.name));
    }
  }
  Open({.report_number = GetParam()}, [&](frmCustomize& form) {
    std::vector<std::string> offered;
    for (const ListControl::Entry& entry : form.cboRange.Entries()) {
      offered.push_back(std::to_string(entry.item_data) + " " + entry.text);
    }
    EXPECT_EQ(offered, expected);
    EXPECT_TRUE(form.cboRange.Enabled());
    EXPECT_TRUE(form.lblRange.Enabled());
  });
}

TEST_P(CustomizedNumber, IsResetToItsDefaults) {
  Open({.report_number = GetParam(),
        .output = Report().has_chart && Report().output == ChartOrReport::kReport
                      ? ChartOrReport::kChart
                      : ChartOrReport::kReport,
        .chart_type = 9,
        .legend = !Report().legend,
        .title = "Mine",
        .range = 12,
        .range_number = 44,
        .from = Day(2026, 1, 1),
        .to = Day(2026, 1, 2)},
       [](frmCustomize& form) { form.cmdReset.Click(); });
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("ChartOrReportType"), Variant(static_cast<std::int32_t>(Report().output)));
  // Where there is no kind to choose the stored one stays.
  EXPECT_EQ(Stored("ChartType"), Variant(Report().has_chart ? Report().chart_type : 9));
  EXPECT_EQ(Stored("Legend"), Variant(Report().legend));
  EXPECT_EQ(Stored("Title"), Variant(std::string(Report().title)));
  EXPECT_EQ(Stored("DateRangeType"), Variant(static_cast<std::int32_t>(Report().range)));
  EXPECT_EQ(Stored("DateRangeExtInfo"), Variant(1));
  EXPECT_EQ(Stored("FromDate"), Variant(Null{}));
  EXPECT_EQ(Stored("ToDate"), Variant(Null{}));
}

INSTANTIATE_TEST_SUITE_P(All, CustomizedNumber, ::testing::Range(1, 60));

// ---- the ranges

struct ShownRange {
  std::int32_t range;
  const char* from;
  const char* to;
  bool number = false;
  bool edits_from = false;
  bool edits_to = false;
  const char* words_behind = "";
};
void PrintTo(const ShownRange& test, std::ostream* out) { *out << "range " << test.range; }

// On 20 March 2026, with no number in the box and no date in the row.
class RangeInTheDialog : public Customize, public ::testing::WithParamInterface<ShownRange> {
 protected:
  static void ExpectShown(const frmCustomize& form) {
    const ShownRange& expected = GetParam();
    EXPECT_EQ(form.txtFrom.Text(), expected.from);
    EXPECT_EQ(form.txtTo.Text(), expected.to);
    EXPECT_EQ(form.lblFrom.Enabled(), expected.edits_from);
    EXPECT_EQ(form.txtFrom.Enabled(), expected.edits_from);
    EXPECT_EQ(form.lblTo.Enabled(), expected.edits_to);
    EXPECT_EQ(form.txtTo.Enabled(), expected.edits_to);
    for (const Control* control : std::initializer_list<const Control*>{
             &form.lblDateRangeExtInfo0, &form.txtDateRangeExtInfo, &form.lblDateRangeExtInfo1}) {
      EXPECT_EQ(control->Enabled(), expected.number) << control->Name();
      EXPECT_EQ(control->Visible(), expected.number) << control->Name();
    }
  }
};

TEST_P(RangeInTheDialog, ShowsItsDatesWhenItIsChosen) {
  Open({.report_number = 1, .range = 0}, [&](frmCustomize& form) {
    PickRange(form, GetParam().range);
    ExpectShown(form);
  });
}

TEST_P(RangeInTheDialog, ShowsItsDatesWhenItIsTheRowsOwn) {
  Open({.report_number = 1,
        .range = GetParam().range,
        .range_number = GetParam().range == 13 ? 30 : 3},
       [&](frmCustomize& form) { ExpectShown(form); });
}

TEST_P(RangeInTheDialog, HasItsWordsAroundTheNumber) {
  Open({.report_number = 1, .range = 0}, [&](frmCustomize& form) {
    PickRange(form, GetParam().range);
    if (GetParam().number) {
      EXPECT_EQ(form.lblDateRangeExtInfo0.Caption(), "Last");
      EXPECT_EQ(form.lblDateRangeExtInfo1.Caption(), GetParam().words_behind);
    } else {
      EXPECT_FALSE(form.lblDateRangeExtInfo0.Visible());
    }
  });
}

TEST_P(RangeInTheDialog, IsStoredWithNullForTheDatesThatCannotBeEdited) {
  Accept({.report_number = 1, .range = 0, .from = Day(2020, 1, 1), .to = Day(2020, 1, 2)},
         [&](frmCustomize& form) { PickRange(form, GetParam().range); });
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("DateRangeType"), Variant(GetParam().range));
  EXPECT_EQ(Stored("FromDate"), Variant(Null{}));
  EXPECT_EQ(Stored("ToDate"), Variant(Null{}));
}

INSTANTIATE_TEST_SUITE_P(
    All, RangeInTheDialog,
    ::testing::Values(
        ShownRange{0, "", ""}, ShownRange{1, "", "2026/03/20"},
        ShownRange{2, "2026/03/01", "2026/03/31"}, ShownRange{3, "2026/01/01", "2026/12/31"},
        ShownRange{4, "2026/03/01", "2026/03/20"}, ShownRange{5, "2026/01/01", "2026/03/20"},
        ShownRange{6, "2026/02/01", "2026/02/28"}, ShownRange{7, "2025/01/01", "2025/12/31"},
        ShownRange{8, "2026/02/19", "2026/03/20"}, ShownRange{9, "2026/01/01", "2026/03/20"},
        ShownRange{10, "2025/10/01", "2026/03/20"}, ShownRange{11, "2025/04/01", "2026/03/20"},
        ShownRange{12, "", "", false, false, true},
        ShownRange{13, "2026/02/19", "2026/03/20", true, false, false, "Days"},
        ShownRange{14, "2026/01/01", "2026/03/20", true, false, false, "Months"},
        ShownRange{15, "", "", false, true, true}));

struct ProposedNumber {
  std::int32_t range;
  const char* number;
  const char* from;
};
void PrintTo(const ProposedNumber& test, std::ostream* out) { *out << "range " << test.range; }

class EmptyNumberBox : public Customize, public ::testing::WithParamInterface<ProposedNumber> {};

TEST_P(EmptyNumberBox, IsGivenTheUsualNumberOfItsRange) {
  Open({.report_number = 1, .range = 2}, [](frmCustomize& form) {
    PickRange(form, GetParam().range);
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), GetParam().number);
    EXPECT_TRUE(AllSelected(form.txtDateRangeExtInfo));
    EXPECT_EQ(form.txtFrom.Text(), GetParam().from);
  });
}

INSTANTIATE_TEST_SUITE_P(All, EmptyNumberBox,
                         ::testing::Values(ProposedNumber{13, "30", "2026/02/19"},
                                           ProposedNumber{14, "3", "2026/01/01"}));

TEST_F(Customize, ShowsTheNumberOfTheRowAndTheDateThatGoesWithIt) {
  Open({.report_number = 1, .range = 13, .range_number = 7}, [](frmCustomize& form) {
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), "7");
    EXPECT_TRUE(AllSelected(form.txtDateRangeExtInfo));
    EXPECT_EQ(form.txtFrom.Text(), "2026/03/14");
  });
}

TEST_F(Customize, KeepsTheNumberFromOneRangeToTheNext) {
  Open({.report_number = 1, .range = 13, .range_number = 7}, [](frmCustomize& form) {
    PickRange(form, 2);
    PickRange(form, 14);
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), "7");
    EXPECT_EQ(form.txtFrom.Text(), "2025/09/01");
  });
}

TEST_F(Customize, LeavesTheDatesInTheBoxesWhereTheyCanBeEdited) {
  Open({.report_number = 1, .range = 2}, [](frmCustomize& form) {
    PickRange(form, 15);
    EXPECT_EQ(form.txtFrom.Text(), "2026/03/01");
    EXPECT_EQ(form.txtTo.Text(), "2026/03/31");
    PickRange(form, 12);
    EXPECT_EQ(form.txtFrom.Text(), "");
    EXPECT_EQ(form.txtTo.Text(), "2026/03/31");
  });
}

TEST_F(Customize, ShowsTheStoredDatesOfTheEndsThatCanBeEdited) {
  const TestRow row{.report_number = 1, .from = Day(2026, 1, 5), .to = Day(2026, 2, 6)};
  TestRow custom = row;
  custom.range = 15;
  Open(custom, [](frmCustomize& form) {
    EXPECT_EQ(form.txtFrom.Text(), "2026/01/05");
    EXPECT_EQ(form.txtTo.Text(), "2026/02/06");
  });
  TestRow up_to = row;
  up_to.range = 12;
  Open(up_to, [](frmCustomize& form) {
    EXPECT_EQ(form.txtFrom.Text(), "");
    EXPECT_EQ(form.txtTo.Text(), "2026/02/06");
  });
}

TEST_F(Customize, ShowsNoStartThatTheNumberLeadsOutOfTheCalendar) {
  Open({.report_number = 1, .range = 14, .range_number = 32767}, [](frmCustomize& form) {
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), "32767");
    EXPECT_EQ(form.txtFrom.Text(), "");
    EXPECT_EQ(form.txtTo.Text(), "2026/03/20");
  });
}

TEST_F(Customize, TakesTodayWithoutItsTime) {
  const Date afternoon{Day(2026, 3, 20).days + 0.75};
  PlayedPlatform late(afternoon);
  store_ = SmallStore().Row({.report_number = 1, .range = 13, .range_number = 1}).Open();
  rows_ = store_->OpenRecordset(kRows);
  frmCustomize form(late);
  form.lngChartReportSubTypeNumber = kRow;
  form.recChartReportSubType = rows_.get();
  form.dbDov = store_.get();
  late.screen.user = [&](Form&) {
    EXPECT_EQ(form.txtFrom.Text(), "2026/03/20");
    EXPECT_EQ(form.txtTo.Text(), "2026/03/20");
  };
  form.ShowModal(late.screen);
  EXPECT_EQ(late.screen.forms_shown, 1);
}

// ---- leaving the number

struct TypedNumber {
  std::int32_t range;
  const char* typed;
  const char* text;
  const char* from;
};
void PrintTo(const TypedNumber& test, std::ostream* out) {
  *out << "range " << test.range << " \"" << test.typed << "\"";
}

class NumberThatIsTaken : public Customize, public ::testing::WithParamInterface<TypedNumber> {};

TEST_P(NumberThatIsTaken, MovesTheStartAndIsSelected) {
  Open({.report_number = 1, .range = GetParam().range, .range_number = 2}, [](frmCustomize& form) {
    TypeAndLeave(form, form.txtDateRangeExtInfo, GetParam().typed);
    EXPECT_TRUE(form.cboRange.HasFocus());
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), GetParam().text);
    EXPECT_TRUE(AllSelected(form.txtDateRangeExtInfo));
    EXPECT_EQ(form.txtFrom.Text(), GetParam().from);
    EXPECT_EQ(form.txtTo.Text(), "2026/03/20");
  });
  EXPECT_THAT(Messages(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, NumberThatIsTaken,
                         ::testing::Values(TypedNumber{13, "1", "1", "2026/03/20"},
                                           TypedNumber{13, "", "1", "2026/03/20"},
                                           TypedNumber{13, "   ", "1", "2026/03/20"},
                                           TypedNumber{13, " 10 ", "10", "2026/03/11"},
                                           TypedNumber{13, "32767", "32767", "1936/07/04"},
                                           TypedNumber{14, "1", "1", "2026/03/01"},
                                           TypedNumber{14, "4", "4", "2025/12/01"},
                                           TypedNumber{14, "", "1", "2026/03/01"}));

class NumberThatIsRefused : public Customize, public ::testing::WithParamInterface<const char*> {};

TEST_P(NumberThatIsRefused, KeepsTheFocusSelectedAndTellsWhy) {
  Open({.report_number = 1, .range = 13, .range_number = 2}, [](frmCustomize& form) {
    TypeAndLeave(form, form.txtDateRangeExtInfo, GetParam());
    EXPECT_TRUE(form.txtDateRangeExtInfo.HasFocus());
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), GetParam());
    EXPECT_TRUE(AllSelected(form.txtDateRangeExtInfo));
    EXPECT_EQ(form.txtFrom.Text(), "2026/03/19");
  });
  EXPECT_THAT(Messages(), ElementsAre(kNumberRefused));
}

INSTANTIATE_TEST_SUITE_P(All, NumberThatIsRefused,
                         ::testing::Values("0", "-1", "32768", "abc", "1 2", "3000000000", "12x"));

// ---- leaving a date

struct TypedDate {
  const char* typed;
  const char* text;
};
void PrintTo(const TypedDate& test, std::ostream* out) { *out << '"' << test.typed << '"'; }

class DateThatIsTaken : public Customize, public ::testing::WithParamInterface<TypedDate> {};

TEST_P(DateThatIsTaken, IsRewrittenAndSelected) {
  for (TextBox frmCustomize::*const end : {&frmCustomize::txtFrom, &frmCustomize::txtTo}) {
    Open({.report_number = 1, .range = 15}, [&](frmCustomize& form) {
      TypeAndLeave(form, form.*end, GetParam().typed);
      EXPECT_TRUE(form.cboRange.HasFocus());
      EXPECT_EQ((form.*end).Text(), GetParam().text);
      EXPECT_TRUE(AllSelected(form.*end));
    });
  }
  EXPECT_THAT(Messages(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, DateThatIsTaken,
    ::testing::Values(TypedDate{"2026/3/1", "2026/03/01"}, TypedDate{" 2026-12-31 ", "2026/12/31"},
                      TypedDate{"29/1/2", "2029/01/02"}, TypedDate{"30/1/2", "1930/01/02"},
                      TypedDate{"99.12.31", "1999/12/31"}, TypedDate{"0-2-29", "2000/02/29"},
                      TypedDate{"00/1/1", "2000/01/01"}));

class DateThatIsRefused : public Customize, public ::testing::WithParamInterface<const char*> {};

TEST_P(DateThatIsRefused, KeepsTheFocusSelectedAndTellsWhy) {
  for (TextBox frmCustomize::*const end : {&frmCustomize::txtFrom, &frmCustomize::txtTo}) {
    platform_.screen.messages.clear();
    Open({.report_number = 1, .range = 15}, [&](frmCustomize& form) {
      TypeAndLeave(form, form.*end, GetParam());
      EXPECT_TRUE((form.*end).HasFocus());
      EXPECT_EQ((form.*end).Text(), GetParam());
      EXPECT_TRUE(AllSelected(form.*end));
    });
    EXPECT_THAT(Messages(), ElementsAre(kDateRefused));
  }
}

INSTANTIATE_TEST_SUITE_P(All, DateThatIsRefused,
                         ::testing::Values("2026/2/29", "tomorrow", "2026", "20260301", "2026/13/1",
                                           "1/2/3/4"));

TEST_F(Customize, TakesAnEmptyDateForAnOpenEnd) {
  Open({.report_number = 1, .range = 15, .from = Day(2026, 1, 1)}, [](frmCustomize& form) {
    TypeAndLeave(form, form.txtFrom, "   ");
    EXPECT_TRUE(form.cboRange.HasFocus());
    EXPECT_EQ(form.txtFrom.Text(), "");
  });
  EXPECT_THAT(Messages(), IsEmpty());
}

// ---- leaving any box

TEST_F(Customize, AsksNoBoxThatIsLeftForCancel) {
  for (TextBox frmCustomize::*const box : {&frmCustomize::txtFrom, &frmCustomize::txtTo}) {
    Open({.report_number = 1, .range = 15}, [&](frmCustomize& form) {
      (form.*box).Type("nonsense");
      form.cmdCancel.Click();
      EXPECT_FALSE(form.Visible());
    });
  }
  Open({.report_number = 1, .range = 13}, [](frmCustomize& form) {
    form.txtDateRangeExtInfo.Type("nonsense");
    form.cmdCancel.Click();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(form.txtDateRangeExtInfo.Text(), "nonsense");
  });
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_FALSE(saved_);
}

TEST_F(Customize, AsksTheBoxThatIsLeftForReset) {
  Open({.report_number = 1, .title = "Mine", .range = 15}, [](frmCustomize& form) {
    form.txtFrom.Type("nonsense");
    form.cmdReset.Click();
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.txtFrom.HasFocus());
  });
  EXPECT_THAT(Messages(), ElementsAre(kDateRefused));
  EXPECT_EQ(Stored("Title"), Variant("Mine"));
}

TEST_F(Customize, MovesNoFocusThereAndBackWhereABoxRefuses) {
  Open({.report_number = 1, .range = 13}, [](frmCustomize& form) {
    form.txtDateRangeExtInfo.Type("0");
    const WatchedFocus watched(form);
    form.MoveFocus(form.cboRange);
    form.cmdOK.Click();
    EXPECT_THAT(watched.moves, IsEmpty());
  });
  EXPECT_THAT(Messages(), ElementsAre(kNumberRefused, kNumberRefused));
}

// The user has read the message before anything moves.
TEST_F(Customize, TellsOfARefusalWhileTheFocusIsStillInTheBox) {
  std::string focus_when_told;
  frmCustomize* shown = nullptr;
  platform_.screen.on_message = [&] { focus_when_told = shown->ActiveControl()->Name(); };
  Open({.report_number = 1, .range = 15}, [&](frmCustomize& form) {
    shown = &form;
    TypeAndLeave(form, form.txtTo, "nonsense");
  });
  EXPECT_EQ(focus_when_told, "txtTo");
}

TEST_F(Customize, SelectsTheTitleOnEntryAndLetsItBeLeftEmpty) {
  Open({.report_number = 1, .title = "Mine"}, [](frmCustomize& form) {
    form.txtTitle.Type("Other");
    form.MoveFocus(form.cboRange);
    form.MoveFocus(form.txtTitle);
    EXPECT_TRUE(AllSelected(form.txtTitle));
    TypeAndLeave(form, form.txtTitle, "");
    EXPECT_TRUE(form.cboRange.HasFocus());
  });
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(Customize, TakesATitleUpToHalfTheColumnsLength) {
  std::string title;
  for (int i = 0; i < 50; ++i) {
    title += "题";
  }
  Accept({.report_number = 1}, [&](frmCustomize& form) { form.txtTitle.Type(title + "x"); });
  EXPECT_EQ(Stored("Title"), Variant(title));
}

// ---- OK

TEST_F(Customize, SavesWhatTheUserChose) {
  Accept({.report_number = 1}, [](frmCustomize& form) {
    form.optChartOrReportType[0].Choose();
    form.optChartType[2].Choose();
    form.chkLegend.Toggle();
    form.txtTitle.Type("Spent");
    PickRange(form, 15);
    form.txtFrom.Type("26-1-2");
    form.txtTo.Type("2026.2.28");
  });
  EXPECT_TRUE(saved_);
  EXPECT_FALSE(open_after_ok_);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(Stored("ChartOrReportType"), Variant(0));
  EXPECT_EQ(Stored("ChartType"), Variant(2));
  EXPECT_EQ(Stored("Legend"), Variant(true));
  EXPECT_EQ(Stored("Title"), Variant("Spent"));
  EXPECT_EQ(Stored("DateRangeType"), Variant(15));
  EXPECT_EQ(Stored("DateRangeExtInfo"), Variant(1));
  EXPECT_EQ(Stored("FromDate"), Variant(Day(2026, 1, 2)));
  EXPECT_EQ(Stored("ToDate"), Variant(Day(2026, 2, 28)));
}

TEST_F(Customize, LeavesAloneWhatItDoesNotShow) {
  Accept({.report_number = 29, .group = 4, .parameter1 = 7, .parameter2 = "x"},
         [](frmCustomize& form) { form.txtTitle.Type("Spent"); });
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("ChartReportSubTypeAttr"), Variant(29));
  EXPECT_EQ(Stored("ChartReportType"), Variant(4));
  EXPECT_EQ(Stored("ChartReportSubTypeName"), Variant(Null{}));
  EXPECT_EQ(Stored("Parameter1"), Variant(7));
  EXPECT_EQ(Stored("Parameter2"), Variant("x"));
}

TEST_F(Customize, SavesUnderTheHourglassAndBringsThePointerBack) {
  platform_.screen.SetMousePointer(5);
  Accept({.report_number = 1});
  EXPECT_THAT(platform_.screen.pointers, ElementsAre(5, 11, 5));
}

TEST_F(Customize, SavesTheNumberOfTheBoxAsALong) {
  Accept({.report_number = 1, .range = 13, .range_number = 2},
         [](frmCustomize& form) { form.txtDateRangeExtInfo.Type(" 32767 "); });
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("DateRangeExtInfo"), Variant(32767));
}

TEST_F(Customize, SavesOneForANumberBoxThatIsNotInUse) {
  Accept({.report_number = 1, .range = 13, .range_number = 7},
         [](frmCustomize& form) { PickRange(form, 2); });
  EXPECT_EQ(Stored("DateRangeExtInfo"), Variant(1));
}

TEST_F(Customize, KeepsTheKindOfChartWhereNoneCanBeChosen) {
  Accept({.report_number = 7, .chart_type = 255});
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("ChartType"), Variant(255));
}

TEST_F(Customize, SavesOpenEndsAsNull) {
  Accept({.report_number = 1, .range = 15, .from = Day(2026, 1, 1), .to = Day(2026, 1, 2)},
         [](frmCustomize& form) {
           form.txtFrom.Type("");
           form.txtTo.Type("");
         });
  EXPECT_TRUE(saved_);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(Stored("FromDate"), Variant(Null{}));
  EXPECT_EQ(Stored("ToDate"), Variant(Null{}));
}

TEST_F(Customize, TakesARangeOfOneDay) {
  Accept({.report_number = 1, .range = 15}, [](frmCustomize& form) {
    form.txtFrom.Type("2026/1/2");
    form.txtTo.Type("2026/1/2");
  });
  EXPECT_TRUE(saved_);
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(Customize, RefusesAnEndBeforeTheStart) {
  Open({.report_number = 1, .range = 15}, [](frmCustomize& form) {
    form.txtFrom.Type("2026/1/3");
    form.txtTo.Type("2026/1/2");
    form.cmdOK.Click();
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.txtTo.HasFocus());
    EXPECT_TRUE(AllSelected(form.txtTo));
  });
  EXPECT_THAT(Messages(), ElementsAre(kOrderRefused));
  EXPECT_FALSE(saved_);
  EXPECT_EQ(Stored("FromDate"), Variant(Null{}));
}

TEST_F(Customize, RefusesAnEmptyTitle) {
  Open({.report_number = 1, .title = "Mine"}, [](frmCustomize& form) {
    form.txtTitle.Type("");
    form.cmdOK.Click();
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.txtTitle.HasFocus());
  });
  EXPECT_THAT(Messages(), ElementsAre(kTitleRefused));
  EXPECT_FALSE(saved_);
  EXPECT_EQ(Stored("Title"), Variant("Mine"));
}

TEST_F(Customize, TakesATitleOfBlanks) {
  Accept({.report_number = 1}, [](frmCustomize& form) { form.txtTitle.Type("  "); });
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("Title"), Variant("  "));
}

// A box can be left for Cancel, and from there for anything.
TEST_F(Customize, AsksEveryBoxAgainAndKeepsTheFocusInTheLastThatRefuses) {
  Open({.report_number = 1, .range = 15}, [](frmCustomize& form) {
    form.txtFrom.Type("nonsense");
    form.MoveFocus(form.cmdCancel);
    form.txtTo.Type("more of it");
    form.MoveFocus(form.cmdCancel);
    form.cmdOK.Click();
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.txtTo.HasFocus());
  });
  EXPECT_THAT(Messages(), ElementsAre(kDateRefused, kDateRefused));
  EXPECT_FALSE(saved_);
}

// OK has the focus by then; a box that refuses takes it.
TEST_F(Customize, MovesTheFocusFromOKToEachBoxThatRefuses) {
  Open({.report_number = 1, .range = 15}, [](frmCustomize& form) {
    form.txtFrom.Type("nonsense");
    form.MoveFocus(form.cmdCancel);
    form.txtTo.Type("more of it");
    form.MoveFocus(form.cmdCancel);
    const WatchedFocus watched(form);
    form.cmdOK.Click();
    EXPECT_THAT(watched.moves, ElementsAre("cmdOK", "txtFrom", "txtTo"));
  });
}

TEST_F(Customize, AsksABoxThatWasLeftForCancelBeforeTheTitle) {
  Open({.report_number = 1, .range = 13}, [](frmCustomize& form) {
    form.txtTitle.Type("");
    form.txtDateRangeExtInfo.Type("0");
    form.MoveFocus(form.cmdCancel);
    form.cmdOK.Click();
    EXPECT_TRUE(form.txtDateRangeExtInfo.HasFocus());
  });
  EXPECT_THAT(Messages(), ElementsAre(kNumberRefused));
}

TEST_F(Customize, AsksNoBoxThatIsNotInUse) {
  Accept({.report_number = 1, .range = 15}, [](frmCustomize& form) {
    form.txtFrom.Type("nonsense");
    form.MoveFocus(form.cmdCancel);
    PickRange(form, 12);
  });
  EXPECT_TRUE(saved_);
  EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(Customize, GivesTheFocusBackOnceAllBoxesHavePassed) {
  Open({.report_number = 1}, [](frmCustomize& form) {
    form.MoveFocus(form.chkLegend);
    form.cmdOK.on_click();
    EXPECT_TRUE(form.chkLegend.HasFocus());
  });
  EXPECT_TRUE(saved_);
}

TEST_F(Customize, AsksTheBoxThatStillHasTheFocusHoweverOKIsReached) {
  Open({.report_number = 1, .range = 15}, [](frmCustomize& form) {
    form.txtTo.Type("nonsense");
    form.cmdOK.on_click();
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.txtTo.HasFocus());
  });
  EXPECT_THAT(Messages(), ElementsAre(kDateRefused));
  EXPECT_FALSE(saved_);
}

TEST_F(Customize, CanBeAcceptedAfterARefusal) {
  Open({.report_number = 1}, [](frmCustomize& form) {
    form.txtTitle.Type("");
    form.cmdOK.Click();
    form.txtTitle.Type("Better");
    form.cmdOK.Click();
  });
  EXPECT_TRUE(saved_);
  EXPECT_EQ(Stored("Title"), Variant("Better"));
}

// ---- Cancel and Reset

TEST_F(Customize, WritesNothingWhereItIsCancelled) {
  std::vector<Variant> before;
  Open({.report_number = 1}, [&](frmCustomize& form) {
    before = StoredFields();
    form.txtTitle.Type("Other");
    form.optChartType[2].Choose();
    form.cmdCancel.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(StoredFields(), before);
  EXPECT_FALSE(saved_);
  EXPECT_THAT(platform_.screen.pointers, IsEmpty());
}

TEST_F(Customize, WritesNothingWhereItsWindowIsClosed) {
  std::vector<Variant> before;
  Open({.report_number = 1}, [&](frmCustomize& form) {
    before = StoredFields();
    form.txtTitle.Type("Other");
  });
  EXPECT_EQ(StoredFields(), before);
  EXPECT_FALSE(saved_);
}

TEST_F(Customize, ResetsAtOnceWithoutAsking) {
  Open({.report_number = 1, .title = "Mine"}, [](frmCustomize& form) {
    form.cmdReset.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_TRUE(saved_);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_THAT(platform_.screen.pointers, ElementsAre(11, 0));
  EXPECT_EQ(Stored("Title"), Variant("Expenses by Category"));
}

// ---- failures

TEST_F(Customize, TellsThatANumberThatIsInNoCatalogueCannotBeReset) {
  Open({.report_number = 77, .title = "Mine"}, [](frmCustomize& form) {
    form.cmdReset.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_FALSE(saved_);
  EXPECT_THAT(Messages(), ElementsAre(kSaveFailed));
  EXPECT_EQ(Stored("Title"), Variant("Mine"));
}

TEST_F(Customize, TellsThatARowThatIsGoneCannotBeSaved) {
  Open({.report_number = 1}, [&](frmCustomize& form) {
    Services().DeleteChartReportSubType(*store_, *rows_, kRow);
    form.cmdOK.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_THAT(Messages(), ElementsAre(kSaveFailed));
  EXPECT_THAT(platform_.screen.pointers, ElementsAre(11, 0));
  EXPECT_EQ(failure_, 0);
  EXPECT_FALSE(saved_);
}

TEST_F(Customize, FailsToResetARowThatIsGone) {
  Open({.report_number = 1}, [&](frmCustomize& form) {
    Services().DeleteChartReportSubType(*store_, *rows_, kRow);
    form.cmdReset.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(failure_, static_cast<std::int32_t>(FailureNumber::kNoCurrentRecord));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_FALSE(saved_);
}

// Presses a button while the store fails at its n-th operation from then on, or at that one alone.
class FailingSave : public Customize, public ::testing::WithParamInterface<FailurePlan::Repeat> {
 protected:
  FailingSave() : failing_((store_ = SmallStore().Row(kStoredRow).Open(), *store_), plan_) {}

  // False once the operation lies beyond all that were made.
  bool Press(Button frmCustomize::*button, std::int64_t operation) {
    platform_.screen.messages.clear();
    platform_.screen.pointers.clear();
    plan_.NeverFail();
    const auto rows = failing_.OpenRecordset(kRows);
    Show(failing_, *rows, [&](frmCustomize& form) {
      plan_.FailAt(operation, GetParam(), FailureNumber::kStoreUnusable);
      (form.*button).Click();
      EXPECT_FALSE(form.Visible());
    });
    const bool failed = plan_.HasFailed();
    plan_.NeverFail();
    return failed;
  }

  static inline const TestRow kStoredRow{.report_number = 23,
                                         .chart_type = 0,
                                         .legend = true,
                                         .title = "Mine",
                                         .range = 15,
                                         .from = Day(2026, 1, 1)};
  FailurePlan plan_;
  FailingDatabase failing_;
};

INSTANTIATE_TEST_SUITE_P(Repeats, FailingSave,
                         ::testing::Values(FailurePlan::Repeat::kOnce,
                                           FailurePlan::Repeat::kFromThenOn));

TEST_P(FailingSave, OfOKLeavesTheRowTellsTheUserAndEndsTheDialog) {
  const auto before = StoredFields();
  std::int64_t operation = 1;
  for (; Press(&frmCustomize::cmdOK, operation); ++operation) {
    ASSERT_EQ(StoredFields(), before) << operation;
    ASSERT_EQ(failure_, 0) << operation;
    ASSERT_FALSE(saved_) << operation;
    ASSERT_THAT(Messages(), ElementsAre(kSaveFailed)) << operation;
    ASSERT_THAT(platform_.screen.pointers, ElementsAre(11, 0)) << operation;
  }
  EXPECT_GT(operation, 10);
  EXPECT_TRUE(saved_);
}

// Until the row is read a failure is none of the saving, and reaches the caller.
TEST_P(FailingSave, OfResetLeavesTheRowTellsTheUserAndEndsTheDialog) {
  constexpr std::int64_t kReadingTheRow = 4;
  const auto before = StoredFields();
  std::int64_t operation = 1;
  for (; Press(&frmCustomize::cmdReset, operation); ++operation) {
    ASSERT_EQ(StoredFields(), before) << operation;
    ASSERT_FALSE(saved_) << operation;
    if (operation <= kReadingTheRow) {
      ASSERT_EQ(failure_, static_cast<std::int32_t>(FailureNumber::kStoreUnusable)) << operation;
      ASSERT_THAT(Messages(), IsEmpty()) << operation;
      ASSERT_THAT(platform_.screen.pointers, IsEmpty()) << operation;
    } else {
      ASSERT_EQ(failure_, 0) << operation;
      ASSERT_THAT(Messages(), ElementsAre(kSaveFailed)) << operation;
      ASSERT_THAT(platform_.screen.pointers, ElementsAre(11, 0)) << operation;
    }
  }
  EXPECT_GT(operation, kReadingTheRow + 10);
  EXPECT_TRUE(saved_);
}

TEST_F(Customize, ThatFailsWhileItIsSetUpFailsToTheCallerUnshown) {
  store_ = SmallStore().Row({.report_number = 1, .range = 15}).Open();
  std::int64_t operation = 1;
  for (;; ++operation) {
    platform_.screen.forms_shown = 0;
    FailurePlan plan;
    FailingDatabase failing(*store_, plan);
    const auto rows = failing.OpenRecordset(kRows);
    plan.FailAt(operation, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    Show(failing, *rows, [](frmCustomize&) {});
    if (!plan.HasFailed()) {
      break;
    }
    ASSERT_EQ(failure_, static_cast<std::int32_t>(FailureNumber::kStoreUnusable)) << operation;
    ASSERT_EQ(platform_.screen.forms_shown, 0) << operation;
    ASSERT_FALSE(saved_);
  }
  EXPECT_GT(operation, 8);
  EXPECT_EQ(failure_, 0);
}

}  // namespace
}  // namespace vetlo
