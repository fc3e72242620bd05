#include "vetlo/platform/arrays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kOutOfRange = FailureNumber::kSubscriptOutOfRange;

TEST(GrowingArray, HasNoElementsBeforeItIsStarted) {
  EXPECT_EQ(GrowingArray<int>().UpperBound(), 0U);
}

TEST(GrowingArray, StartsWithTheSpareSlotAlone) {
  GrowingArray<int> array;
  array.Start();
  EXPECT_THAT(array.elements(), ElementsAre(0));
}

TEST(GrowingArray, StartForgetsWhatItHeld) {
  GrowingArray<int> array({1, 2, 3});
  array.Start();
  EXPECT_THAT(array.elements(), ElementsAre(0));
}

TEST(GrowingArray, AddWritesTheSpareSlotAndGrowsByOne) {
  GrowingArray<int> array;
  array.Start();
  array.Add(7);
  EXPECT_THAT(array.elements(), ElementsAre(7, 0));
  array.Add(8);
  EXPECT_THAT(array.elements(), ElementsAre(7, 8, 0));
}

TEST(GrowingArray, WriteSpareDoesNotGrow) {
  GrowingArray<int> array;
  array.Start();
  array.Add(7);
  array.WriteSpare(8);
  EXPECT_THAT(array.elements(), ElementsAre(7, 8));
}

TEST(GrowingArray, CloseRemovesTheSpareSlot) {
  GrowingArray<int> array;
  array.Start();
  array.Add(7);
  array.Close();
  EXPECT_THAT(array.elements(), ElementsAre(7));
}

TEST(GrowingArray, ClosingWithTheSpareSlotAloneFailsAndLeavesIt) {
  GrowingArray<int> array;
  array.Start();
  EXPECT_TRUE(Raises(kOutOfRange, [&] { array.Close(); }));
  EXPECT_THAT(array.elements(), ElementsAre(0));
}

TEST(GrowingArray, ClosingWhatWasNeverStartedFails) {
  GrowingArray<int> array;
  EXPECT_TRUE(Raises(kOutOfRange, [&] { array.Close(); }));
  EXPECT_THAT(array.elements(), IsEmpty());
}

TEST(GrowingArray, WritingBeforeItIsStartedFails) {
  GrowingArray<int> array;
  EXPECT_TRUE(Raises(kOutOfRange, [&] { array.Add(7); }));
  EXPECT_TRUE(Raises(kOutOfRange, [&] { array.WriteSpare(7); }));
  EXPECT_THAT(array.elements(), IsEmpty());
}

TEST(GrowingArray, CountsItsElementsFromOne) {
  const GrowingArray<int> array({7, 8});
  EXPECT_EQ(array(1), 7);
  EXPECT_EQ(array(2), 8);
  EXPECT_EQ(array.UpperBound(), 2U);
}

TEST(GrowingArray, ReadingOutsideItsBoundsFails) {
  const GrowingArray<int> array({7, 8});
  EXPECT_TRUE(Raises(kOutOfRange, [&] { (void)array(0); }));
  EXPECT_TRUE(Raises(kOutOfRange, [&] { (void)array(3); }));
}

TEST(Matrix, HasNoBoundsWhereItWasNeverDimensioned) {
  const AmountMatrix matrix;
  EXPECT_EQ(matrix.Series(), 0U);
  EXPECT_EQ(matrix.Items(), 0U);
  EXPECT_TRUE(Raises(kOutOfRange, [&] { (void)matrix(1, 1); }));
}

TEST(Matrix, IsFilledWithZeros) {
  EXPECT_THAT(AmountMatrix(2, 2).elements(), ElementsAre(0, 0, 0, 0));
}

TEST(Matrix, KeepsSeriesAndItemsApart) {
  AmountMatrix matrix(2, 3);
  EXPECT_EQ(matrix.Series(), 2U);
  EXPECT_EQ(matrix.Items(), 3U);
  matrix(2, 3) = 23;
  matrix(1, 2) = 12;
  EXPECT_EQ(matrix(2, 3), 23);
  EXPECT_EQ(matrix(1, 2), 12);
}

TEST(Matrix, RunsThroughTheSeriesWithinEachItem) {
  AmountMatrix matrix(2, 2);
  matrix(1, 1) = 11;
  matrix(2, 1) = 21;
  matrix(1, 2) = 12;
  matrix(2, 2) = 22;
  EXPECT_THAT(matrix.elements(), ElementsAre(11, 21, 12, 22));
}

TEST(Matrix, FailsOutsideItsBounds) {
  AmountMatrix matrix(2, 3);
  const AmountMatrix& constant = matrix;
  constexpr std::size_t kOutside[][2] = {{0, 1}, {3, 1}, {1, 0}, {1, 4}, {3, 4}};
  for (const auto& [series, item] : kOutside) {
    EXPECT_TRUE(Raises(kOutOfRange, [&, s = series, i = item] { matrix(s, i) = 1; }));
    EXPECT_TRUE(Raises(kOutOfRange, [&, s = series, i = item] { (void)constant(s, i); }));
  }
}

TEST(Matrix, ComparesBoundsAsWellAsElements) {
  EXPECT_EQ(AmountMatrix(2, 3), AmountMatrix(2, 3));
  EXPECT_NE(AmountMatrix(2, 3), AmountMatrix(3, 2));
}

TEST(AmountRows, AreWithoutBoundsBeforeTheyAreStarted) {
  EXPECT_EQ(AmountRows().Amounts(), AmountMatrix());
  EXPECT_EQ(AmountRows().Labels().UpperBound(), 0U);
}

TEST(AmountRows, BecomeOneSeriesWithALabelForEachItem) {
  AmountRows rows;
  rows.Start();
  rows.Add(Currency::FromUnits(123400), "Cash");
  rows.Add(-0.5, "Loan");
  rows.Close();
  EXPECT_EQ(rows.Amounts().Series(), 1U);
  EXPECT_THAT(rows.Amounts().elements(), ElementsAre(12.34, -0.5));
  EXPECT_THAT(rows.Labels().elements(), ElementsAre("Cash", "Loan"));
}

TEST(AmountRows, ShowTheSpareRowUntilTheyAreClosed) {
  AmountRows rows;
  rows.Start();
  rows.Add(1.0, "Cash");
  EXPECT_THAT(rows.Amounts().elements(), ElementsAre(1, 0));
  EXPECT_THAT(rows.Labels().elements(), ElementsAre("Cash", ""));
}

TEST(AmountRows, WriteSpareFillsTheLastRow) {
  AmountRows rows;
  rows.Start();
  rows.Add(1.0, "Cash");
  rows.WriteSpare(Currency::FromUnits(20000), "Total");
  EXPECT_THAT(rows.Amounts().elements(), ElementsAre(1, 2));
  EXPECT_THAT(rows.Labels().elements(), ElementsAre("Cash", "Total"));
}

TEST(AmountRows, ClosingThemEmptyFailsAndLeavesTheSpareRow) {
  AmountRows rows;
  rows.Start();
  EXPECT_TRUE(Raises(kOutOfRange, [&] { rows.Close(); }));
  EXPECT_THAT(rows.Amounts().elements(), ElementsAre(0));
  EXPECT_THAT(rows.Labels().elements(), ElementsAre(""));
}

TEST(AmountRows, WritingBeforeTheyAreStartedFails) {
  AmountRows rows;
  EXPECT_TRUE(Raises(kOutOfRange, [&] { rows.Add(1.0, "Cash"); }));
  EXPECT_EQ(rows.Labels().UpperBound(), 0U);
}

}  // namespace
}  // namespace vetlo
