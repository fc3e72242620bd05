#include "quillmarsh/terminal/dot_plot.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillmarsh {
namespace {

TEST(DotPlot, StartsBlank) { EXPECT_EQ(DotPlot(3, 1).Line(0, "."), "..."); }

TEST(DotPlot, DrawsASingleDot) {
  DotPlot plot(1, 1);
  plot.Connect({0, 0}, {0, 0});
  EXPECT_EQ(plot.Line(0, " "), "⠁");
}

TEST(DotPlot, DrawsTheLowestDotOfACell) {
  DotPlot plot(1, 1);
  plot.Connect({1, 3}, {1, 3});
  EXPECT_EQ(plot.Line(0, " "), "⢀");
}

TEST(DotPlot, ConnectsAcrossCells) {
  DotPlot plot(2, 1);
  plot.Connect({0, 1}, {3, 1});
  EXPECT_EQ(plot.Line(0, " "), "⠒⠒");
}

TEST(DotPlot, ConnectsAcrossLines) {
  DotPlot plot(1, 2);
  plot.Connect({0, 0}, {0, 7});
  EXPECT_EQ(plot.Line(0, " ") + plot.Line(1, " "), "⡇⡇");
}

TEST(DotPlot, ConnectsADiagonal) {
  DotPlot plot(2, 1);
  plot.Connect({0, 3}, {3, 0});
  EXPECT_EQ(plot.Line(0, " "), "⡠⠊");
}

TEST(DotPlot, FillsACellWithDots) {
  DotPlot plot(1, 1);
  plot.Connect({0, 0}, {0, 3});
  plot.Connect({1, 0}, {1, 3});
  EXPECT_EQ(plot.Line(0, " "), "⣿");
}

TEST(DotPlot, AMarkerStandsOverTheDots) {
  DotPlot plot(2, 1);
  plot.Connect({0, 1}, {3, 1});
  plot.Mark({2, 1}, "●");
  EXPECT_EQ(plot.Line(0, " "), "⠒●");
}

TEST(DotPlot, DoesNotDrawOutside) {
  DotPlot plot(1, 1);
  plot.Connect({-4, -4}, {-1, -1});
  plot.Connect({2, 0}, {2, 3});
  plot.Connect({0, 4}, {1, 4});
  EXPECT_EQ(plot.Line(0, " "), " ");
}

TEST(DotPlot, DoesNotMarkOutside) {
  DotPlot plot(1, 1);
  plot.Mark({0, 4}, "●");
  plot.Mark({-1, 0}, "●");
  plot.Mark({std::numeric_limits<double>::quiet_NaN(), 0}, "●");
  EXPECT_EQ(plot.Line(0, " "), " ");
}

}  // namespace
}  // namespace quillmarsh
