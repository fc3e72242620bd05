#include "vetlo/surface/result_codes.h"

#include <gtest/gtest.h>

#include "vetlo/surface/tamo_interface.h"

namespace vetlo {
namespace {

std::int32_t NumberOf(FailureNumber number) { return static_cast<std::int32_t>(number); }

HRESULT ResultOf(FailureNumber number) { return ResultOfFailure(NumberOf(number)); }

TEST(ResultCodes, AFailuresNumberTravelsInTheFacilityOfRunTimeFailures) {
  EXPECT_EQ(ResultOf(FailureNumber::kNoCurrentRecord), ResultCode(0x800A0BCD));
  EXPECT_EQ(ResultOf(FailureNumber::kObjectNotSet), ResultCode(0x800A005B));
  EXPECT_EQ(ResultOfFailure(1), ResultCode(0x800A0001));
  EXPECT_EQ(ResultOfFailure(0xFFFF), ResultCode(0x800AFFFF));
}

TEST(ResultCodes, AFailuresNumberThatIsACodeTravelsAsItIs) {
  EXPECT_EQ(ResultOf(FailureNumber::kNothingToShow), ResultCode(0x80040201));
  EXPECT_EQ(ResultOf(FailureNumber::kTooManyFavorites), ResultCode(0x80040210));
}

TEST(ResultCodes, ANumberThatHasNoRoomIsUnexpected) {
  EXPECT_EQ(ResultOfFailure(0x10000), E_UNEXPECTED);
  EXPECT_EQ(ResultOfFailure(0), E_UNEXPECTED) << "a failure is never taken for a success";
}

TEST(ResultCodes, EveryFailuresResultIsAFailure) {
  for (const std::int32_t number : {0, 1, 91, 3021, 0xFFFF, 0x10000, 0x7FFFFFFF, -1}) {
    EXPECT_TRUE(Failed(ResultOfFailure(number))) << number;
  }
  EXPECT_FALSE(Failed(S_OK));
  EXPECT_FALSE(Failed(S_FALSE));
}

TEST(ResultCodes, TheNumberComesBackFromTheResult) {
  for (const FailureNumber number :
       {FailureNumber::kInvalidCall, FailureNumber::kOverflow, FailureNumber::kOutOfMemory,
        FailureNumber::kSubscriptOutOfRange, FailureNumber::kInternalError,
        FailureNumber::kObjectNotSet, FailureNumber::kNoCurrentRecord, FailureNumber::kObjectClosed,
        FailureNumber::kNothingToShow, FailureNumber::kTooManyFavorites}) {
    EXPECT_EQ(FailureOfResult(ResultOf(number)), NumberOf(number));
  }
}

TEST(ResultCodes, ACodeOfAnotherFacilityIsTheNumberItself) {
  EXPECT_EQ(FailureOfResult(E_POINTER), E_POINTER);
  EXPECT_EQ(FailureOfResult(E_UNEXPECTED), E_UNEXPECTED);
  EXPECT_EQ(FailureOfResult(E_ACCESSDENIED), E_ACCESSDENIED);
}

TEST(ResultCodes, AResultIsWrittenInEightDigits) {
  EXPECT_EQ(ResultText(CLASS_E_CLASSNOTAVAILABLE), "0x80040111");
  EXPECT_EQ(ResultText(E_UNEXPECTED), "0x8000FFFF");
  EXPECT_EQ(ResultText(S_FALSE), "0x00000001");
}

TEST(ResultCodes, AnIdentifierIsWrittenInBracesWithAllItsDigits) {
  EXPECT_EQ(GuidText(CLSID_clsTamo), "{A88191EF-1604-46AA-AB2F-10F71C9C165B}");
  EXPECT_EQ(GuidText(IID_IUnknown), "{00000000-0000-0000-C000-000000000046}");
  EXPECT_EQ(GuidText(IID_IClassFactory), "{00000001-0000-0000-C000-000000000046}");
  EXPECT_EQ(GuidText(GUID{}), "{00000000-0000-0000-0000-000000000000}");
}

}  // namespace
}  // namespace vetlo
