#include "vetlo/platform/variant.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/raises.h"

namespace vetlo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

Variant Text(const char* text) { return Variant(std::string(text)); }

constexpr const char* kNoNumbers[] = {"",     " ",    "abc",   "12x", "1 2", "1,000",     "+-1",
                                      "--1",  "++1",  "+",     "-",   "inf", "-inf",      "nan",
                                      "0x10", "True", "1.2.3", "1e",  "\t1", "2026-03-01"};

// What all the conversions to a number share, each a conversion of a type of its own.
struct Long {
  static auto Of(const Variant& value) { return ToLong(value); }
};
struct Boolean {
  static auto Of(const Variant& value) { return ToBoolean(value); }
};
struct Double {
  static auto Of(const Variant& value) { return ToDouble(value); }
};
struct Amount {
  static auto Of(const Variant& value) { return ToCurrency(value); }
};
struct Day {
  static auto Of(const Variant& value) { return ToDate(value); }
};

template <typename Conversion>
class ConversionToNumber : public testing::Test {};

using AllConversions = testing::Types<Long, Boolean, Double, Amount, Day>;
TYPED_TEST_SUITE(ConversionToNumber, AllConversions);

TYPED_TEST(ConversionToNumber, OfNullIsInvalid) {
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [] { TypeParam::Of(Null{}); }));
}

TYPED_TEST(ConversionToNumber, OfAnEmptyVariantMismatches) {
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [] { TypeParam::Of(Empty{}); }));
}

TYPED_TEST(ConversionToNumber, OfATextThatIsNoNumberMismatches) {
  for (const char* text : kNoNumbers) {
    EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] { TypeParam::Of(Text(text)); })) << text;
  }
}

TYPED_TEST(ConversionToNumber, OfATextPastADoubleOverflows) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { TypeParam::Of(Text("1e400")); }));
}

template <typename Conversion>
class ConversionToBoundedNumber : public testing::Test {};

using BoundedConversions = testing::Types<Long, Amount, Day>;
TYPED_TEST_SUITE(ConversionToBoundedNumber, BoundedConversions);

TYPED_TEST(ConversionToBoundedNumber, OverflowsPastTheRange) {
  for (const Variant& value : {Variant(1e15), Variant(-1e15), Text("1e15"), Text(" -1e15 "),
                               Variant(kInfinity), Variant(-kInfinity), Variant(kNotANumber)}) {
    EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { TypeParam::Of(value); }));
  }
}

TEST(Variant, IsEmptyAtFirst) {
  EXPECT_TRUE(IsEmpty(Variant()));
  EXPECT_FALSE(IsNull(Variant()));
}

TEST(Variant, NullIsNotEmpty) {
  EXPECT_TRUE(IsNull(Null{}));
  EXPECT_FALSE(IsEmpty(Null{}));
}

TEST(Variant, ZeroIsNeitherNullNorEmpty) {
  EXPECT_FALSE(IsNull(Variant(0)));
  EXPECT_FALSE(IsEmpty(Variant(0)));
}

TEST(ToLong, TakesEveryKindOfNumber) {
  EXPECT_EQ(ToLong(Variant(7)), 7);
  EXPECT_EQ(ToLong(Variant(7.0)), 7);
  EXPECT_EQ(ToLong(Currency::FromUnits(70000)), 7);
  EXPECT_EQ(ToLong(Date{7}), 7);
  EXPECT_EQ(ToLong(Variant(true)), -1);
  EXPECT_EQ(ToLong(Variant(false)), 0);
}

TEST(ToLong, ReadsANumberInAText) {
  struct {
    const char* text;
    std::int32_t number;
  } const kCases[] = {{"12", 12},    {"-12", -12}, {"+12", 12}, {" 12 ", 12}, {"007", 7},
                      {"1e3", 1000}, {".5", 0},    {"12.", 12}, {"-0.4", 0},  {"2.5", 2}};
  for (const auto& [text, number] : kCases) {
    EXPECT_EQ(ToLong(Text(text)), number) << text;
  }
}

TEST(ToLong, RoundsAHalfToTheEvenNeighbour) {
  EXPECT_EQ(ToLong(Variant(2.5)), 2);
  EXPECT_EQ(ToLong(Variant(3.5)), 4);
  EXPECT_EQ(ToLong(Variant(-2.5)), -2);
  EXPECT_EQ(ToLong(Variant(-3.5)), -4);
  EXPECT_EQ(ToLong(Currency::FromUnits(25000)), 2);
}

TEST(ToLong, ReachesTheEndsOf32Bits) {
  EXPECT_EQ(ToLong(Variant(2147483647.25)), 2147483647);
  EXPECT_EQ(ToLong(Variant(-2147483648.5)), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToLong(Text("-2147483648")), std::numeric_limits<std::int32_t>::min());
}

TEST(ToLong, OverflowsRightPast32Bits) {
  for (const double value : {2147483647.5, 2147483648.0, -2147483648.75, -2147483649.0}) {
    EXPECT_TRUE(Raises(FailureNumber::kOverflow, [&] { ToLong(Variant(value)); })) << value;
  }
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { ToLong(Text("2147483648")); }));
  EXPECT_TRUE(
      Raises(FailureNumber::kOverflow, [] { ToLong(Currency::FromUnits(21474836480000)); }));
}

TEST(ToBoolean, TakesAnyNumberButZeroForTrue) {
  for (const Variant& value : {Variant(true), Variant(-1), Variant(2), Variant(0.25),
                               Variant(Currency::FromUnits(1)), Variant(Date{1}), Text("-1")}) {
    EXPECT_TRUE(ToBoolean(value));
  }
}

TEST(ToBoolean, TakesZeroForFalse) {
  for (const Variant& value : {Variant(false), Variant(0), Variant(0.0), Variant(-0.0),
                               Variant(Currency()), Variant(Date{0}), Text("0")}) {
    EXPECT_FALSE(ToBoolean(value));
  }
}

TEST(ToDouble, TakesEveryKindOfNumber) {
  EXPECT_EQ(ToDouble(Variant(0.1)), 0.1);
  EXPECT_EQ(ToDouble(Variant(-7)), -7);
  EXPECT_EQ(ToDouble(Variant(Currency::FromUnits(123400))), 12.34);
  EXPECT_EQ(ToDouble(Variant(Date{46082.25})), 46082.25);
  EXPECT_EQ(ToDouble(Variant(true)), -1);
  EXPECT_EQ(ToDouble(Text(" 0.1 ")), 0.1);
}

TEST(ToCurrency, KeepsAnAmountAsItIs) {
  const Currency most = Currency::FromUnits(std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(ToCurrency(most), most);
}

TEST(ToCurrency, TakesEveryOtherKindOfNumber) {
  EXPECT_EQ(ToCurrency(Variant(7)).units(), 70000);
  EXPECT_EQ(ToCurrency(Variant(12.34)).units(), 123400);
  EXPECT_EQ(ToCurrency(Date{2}).units(), 20000);
  EXPECT_EQ(ToCurrency(Variant(true)).units(), -10000);
  EXPECT_EQ(ToCurrency(Text("12.34")).units(), 123400);
}

TEST(ToCurrency, RoundsAHalfToTheEvenNeighbour) {
  EXPECT_EQ(ToCurrency(Variant(1.0 / 32)).units(), 312);
  EXPECT_EQ(ToCurrency(Variant(3.0 / 32)).units(), 938);
}

TEST(ToDate, TakesANumberForDays) {
  EXPECT_EQ(ToDate(Variant(46082)), Date{46082});
  EXPECT_EQ(ToDate(Variant(46082.25)), Date{46082.25});
  EXPECT_EQ(ToDate(Currency::FromUnits(460822500)), Date{46082.25});
  EXPECT_EQ(ToDate(Text("46082")), Date{46082});
}

TEST(ToDate, KeepsADateAsItIs) { EXPECT_EQ(ToDate(kLastRealDate), kLastRealDate); }

TEST(ToDate, OverflowsForADateThatThereIsNot) {
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { ToDate(Variant(2958466)); }));
  EXPECT_TRUE(Raises(FailureNumber::kOverflow, [] { ToDate(Date{-657435}); }));
}

TEST(ToText, KeepsATextAsItIs) { EXPECT_EQ(ToText(Text(" \xC3\xA4 ")), " \xC3\xA4 "); }

TEST(ToText, WritesANumberAsShortAsItReadsBack) {
  EXPECT_EQ(ToText(Variant(-7)), "-7");
  EXPECT_EQ(ToText(Variant(0.1)), "0.1");
  EXPECT_EQ(ToText(Variant(12.0)), "12");
  EXPECT_EQ(ToText(Currency::FromUnits(125000)), "12.5");
}

TEST(ToText, OfNullIsInvalid) {
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull, [] { ToText(Null{}); }));
}

TEST(ToText, OfAnEmptyVariantMismatches) {
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [] { ToText(Empty{}); }));
}

}  // namespace
}  // namespace vetlo
