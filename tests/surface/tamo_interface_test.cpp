#include "vetlo/surface/tamo_interface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "vetlo/surface/result_codes.h"

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

// The place that an operation has in the table of its interface, counted from 0: a pointer to a
// virtual member holds its distance from the table's beginning, and one to mark it as virtual.
template <typename Member>
std::ptrdiff_t SlotOf(Member member) {
  std::ptrdiff_t distance = 0;
  std::memcpy(&distance, &member, sizeof distance);
  return (distance - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

// The places of operations that are named in their order.
template <typename... Members>
std::vector<std::ptrdiff_t> SlotsOf(Members... members) {
  return {SlotOf(members)...};
}

TEST(TamoInterface, EveryInterfaceBeginsWithTheOperationsOfTheRoot) {
  EXPECT_THAT(SlotsOf(&IUnknown::QueryInterface, &IUnknown::AddRef, &IUnknown::Release),
              ElementsAre(0, 1, 2));
}

TEST(TamoInterface, TheFifteenOperationsFollowInTheirOrder) {
  EXPECT_THAT(SlotsOf(&_clsTamo::AddToFavorites, &_clsTamo::ChartReportHasBeenCustomized,
                      &_clsTamo::CustomizeChartReport, &_clsTamo::LenByte,
                      &_clsTamo::ShowChartReport, &_clsTamo::TotalAssets, &_clsTamo::TotalExpenses,
                      &_clsTamo::TotalExpensesOfCategory, &_clsTamo::TotalExpensesOfSubCategory,
                      &_clsTamo::TotalIncome, &_clsTamo::TotalIncomeOfCategory,
                      &_clsTamo::TotalIncomeOfSubCategory, &_clsTamo::TotalLiabilities,
                      &_clsTamo::TotalBudgetOfDateRange, &_clsTamo::TotalCreditCardDebt),
              ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17));
}

TEST(TamoInterface, TheOtherInterfacesAddTheirOwnInTheirOrder) {
  EXPECT_THAT(SlotsOf(&IClassFactory::CreateInstance, &IClassFactory::LockServer),
              ElementsAre(3, 4));
  EXPECT_THAT(SlotsOf(&IObjectWithPlatform::SetPlatform), ElementsAre(3));
  EXPECT_THAT(SlotsOf(&ILibraryInfo::GetFacts), ElementsAre(3));
}

TEST(TamoInterface, IdentifiersAreDifferent) {
  std::set<std::string> texts;
  for (const GUID& guid : {CLSID_clsTamo, IID__clsTamo, IID_IUnknown, IID_IClassFactory,
                           IID_IObjectWithPlatform, IID_ILibraryInfo}) {
    texts.insert(GuidText(guid));
  }
  EXPECT_THAT(texts, SizeIs(6));
}

TEST(TamoInterface, IdentifiersAreEqualInAllTheirParts) {
  GUID other = IID__clsTamo;
  EXPECT_EQ(other, IID__clsTamo);
  other.data4.back() ^= 1;
  EXPECT_FALSE(other == IID__clsTamo);
}

}  // namespace
}  // namespace vetlo
