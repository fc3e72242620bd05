#include "vetlo/dialogs/customize.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/played_screen.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using vetlo::testing::PlayedPlatform;
using vetlo::testing::SmallStore;
using vetlo::testing::TestRow;

// The dialog on one settings row of a store.
class Customize : public ::testing::Test {
 protected:
  void Open(const TestRow& row, const std::function<void(frmCustomize&)>& user) {
    store_ = SmallStore().Row(row).Open();
    rows_ = store_->OpenRecordset("ChartReportSubType");
    Show(row.number, user);
  }
  void Show(std::int32_t number, const std::function<void(frmCustomize&)>& user) {
    frmCustomize form(platform_);
    form.lngChartReportSubTypeNumber = number;
    form.recChartReportSubType = rows_.get();
    form.dbDov = store_.get();
    platform_.screen.user = [&](Form&) { user(form); };
    form.ShowModal(platform_.screen);
    saved_ = form.blnSaved();
  }
  Variant Stored(std::string_view field) {
    rows_->SetIndex(kPrimaryIndex);
    rows_->Seek("=", 1);
    return rows_->Fields(field);
  }

  PlayedPlatform platform_;
  std::unique_ptr<Database> store_;
  std::unique_ptr<Recordset> rows_;
  bool saved_ = false;
};

TEST_F(Customize, ShowsWhatTheRowStores) {
  Open({.report_number = 1,
        .output = ChartOrReport::kChart,
        .chart_type = 2,
        .legend = true,
        .title = "Where it goes",
        .range = 2},
       [](frmCustomize& form) {
         EXPECT_EQ(form.Caption(), "Customize Report/Chart");
         EXPECT_TRUE(form.optChartOrReportType[0].Value());
         EXPECT_TRUE(form.optChartType[2].Value());
         EXPECT_TRUE(form.chkLegend.Checked());
         EXPECT_EQ(form.txtTitle.Text(), "Where it goes");
         EXPECT_EQ(form.cboRange.SelectedItemData(), 2);
         EXPECT_EQ(form.txtFrom.Text(), "2026/03/01");
         EXPECT_EQ(form.txtTo.Text(), "2026/03/31");
         EXPECT_FALSE(form.txtDateRangeExtInfo.Visible());
       });
  EXPECT_FALSE(saved_);
}

TEST_F(Customize, SavesWhatTheUserChose) {
  Open({.report_number = 1}, [](frmCustomize& form) {
    form.optChartOrReportType[0].Choose();
    form.optChartType[1].Choose();
    form.chkLegend.Toggle();
    form.txtTitle.Type("Spent");
    form.cboRange.Pick(form.cboRange.IndexOfItemData(15));
    form.txtFrom.Type("26-1-2");
    form.txtTo.Type("2026.2.28");
    form.cmdOK.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_TRUE(saved_);
  EXPECT_THAT(platform_.screen.messages, IsEmpty());
  EXPECT_THAT(platform_.screen.pointers, ElementsAre(11, 0));
  EXPECT_EQ(Stored("ChartOrReportType"), Variant(0));
  EXPECT_EQ(Stored("ChartType"), Variant(1));
  EXPECT_EQ(Stored("Legend"), Variant(true));
  EXPECT_EQ(Stored("Title"), Variant("Spent"));
  EXPECT_EQ(Stored("DateRangeType"), Variant(15));
  EXPECT_EQ(Stored("FromDate"), Variant(vetlo::testing::Day(2026, 1, 2)));
  EXPECT_EQ(Stored("ToDate"), Variant(vetlo::testing::Day(2026, 2, 28)));
}

}  // namespace
}  // namespace vetlo
