#include "vetlo/output/tamo_form.h"

#include <gtest/gtest.h>

#include "tests/output/measured_platform.h"
#include "tests/support/raises.h"

namespace vetlo {
namespace {

// Counts the boxes that are asked for, and can run out of them.
class CountingPlatform : public MeasuredPlatform {
 public:
  std::unique_ptr<PictureBox> NewPictureBox() override {
    if (asked == most) {
      throw Failure(FailureNumber::kInvalidCall);
    }
    ++asked;
    return MeasuredPlatform::NewPictureBox();
  }

  int asked = 0;
  int most = 100;
};

TEST(TamoForm, AsksForNoBoxBeforeItIsUsed) {
  CountingPlatform platform;
  const frmTamo form(platform);
  EXPECT_EQ(platform.asked, 0);
}

TEST(TamoForm, AsksForItsThreeBoxesOnFirstUseAndForNoneLater) {
  CountingPlatform platform;
  frmTamo form(platform);
  form.picLegendFont();
  EXPECT_EQ(platform.asked, 3);
  form.picLegendFont();
  form.picReportTextFont();
  form.picReportTitleFont();
  EXPECT_EQ(platform.asked, 3);
}

TEST(TamoForm, IsCreatedWholeOrNotAtAll) {
  CountingPlatform platform;
  platform.most = 2;
  frmTamo form(platform);
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { form.picReportTextFont(); }));
  platform.most = 5;
  EXPECT_EQ(form.picReportTitleFont().GetFont().name, "MS Sans Serif");
}

TEST(TamoForm, TitlesStandInABoldFaceOfTheirOwn) {
  MeasuredPlatform platform;
  EXPECT_EQ(frmTamo(platform).picReportTitleFont().GetFont(), (Font{"MS Sans Serif", 12, true}));
}

TEST(TamoForm, BodyAndLegendStandInTheDefaultFont) {
  MeasuredPlatform platform;
  frmTamo form(platform);
  EXPECT_EQ(form.picReportTextFont().GetFont(), (Font{"Serif", 9, false}));
  EXPECT_EQ(form.picLegendFont().GetFont(), (Font{"Serif", 9, false}));
}

}  // namespace
}  // namespace vetlo
