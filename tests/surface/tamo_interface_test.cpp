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

constexpr std::ptrdiff_t kNoSlot = -1;

// The place that an operation has in the table of its interface, counted from 0: a pointer to a
// virtual member holds its distance from the table's beginning, and one to mark it as virtual. A
// member that is not has an address, which is even, and no place.
template <typename Member>
std::ptrdiff_t SlotOf(Member member) {
  constexpr auto kSlotSize = static_cast<std::ptrdiff_t>(sizeof(void*));
  std::ptrdiff_t distance = 0;
  std::memcpy(&distance, &member, sizeof distance);
  return distance % kSlotSize == 1 ? distance / kSlotSize : kNoSlot;
}

// The places of operations that are named in their order.
template <typename... Members>
std::vector<std::ptrdiff_t> SlotsOf(Members... members) {
  return {SlotOf(members)...};
}

// An interface with one operation more.
template <typename Interface>
class Lengthened : public Interface {
 public:
  virtual void Next() = 0;

 protected:
  ~Lengthened() = default;
};

// How many operations an interface has.
template <typename Interface>
std::ptrdiff_t LengthOf() {
  return SlotOf(&Lengthened<Interface>::Next);
}

TEST(Slots, AreThoseOfVirtualMembersAlone) {
  struct Mixed {
    virtual ~Mixed() = default;  // takes two places
    void Plain() {}
    virtual void Virtual() {}
  };
  EXPECT_EQ(SlotOf(&Mixed::Plain), kNoSlot);
  EXPECT_EQ(SlotOf(&Mixed::Virtual), 2);
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

TEST(TamoInterface, NoInterfaceHasAnOperationMore) {
  EXPECT_EQ(LengthOf<IUnknown>(), 3);
  EXPECT_EQ(LengthOf<_clsTamo>(), 18);
  EXPECT_EQ(LengthOf<IClassFactory>(), 5);
  EXPECT_EQ(LengthOf<IObjectWithPlatform>(), 4);
  EXPECT_EQ(LengthOf<ILibraryInfo>(), 4);
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
