#include "vetlo/output/tamo_form.h"

#include <gtest/gtest.h>

#include "tests/output/measured_platform.h"

namespace vetlo {
namespace {

TEST(TamoForm, TitlesStandInABoldFaceOfTheirOwn) {
  MeasuredPlatform platform;
  EXPECT_EQ(frmTamo(platform).picReportTitleFont().GetFont(), (Font{"MS Sans Serif", 12, true}));
}

TEST(TamoForm, BodyAndLegendStandInTheDefaultFont) {
  MeasuredPlatform platform;
  const frmTamo form(platform);
  EXPECT_EQ(form.picReportTextFont().GetFont(), (Font{"Serif", 9, false}));
  EXPECT_EQ(form.picLegendFont().GetFont(), (Font{"Serif", 9, false}));
}

}  // namespace
}  // namespace vetlo
