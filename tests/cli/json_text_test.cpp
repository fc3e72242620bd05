#include "quillmarsh/cli/json_text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "quillmarsh/cli/event_text.h"
#include "quillmarsh/terminal/safe_text.h"

namespace quillmarsh {
namespace {

using Reals = std::numeric_limits<double>;

// The text of one code point, written by the library itself.
std::string TextOf(char32_t code) {
  char escape[24];
  if (code < 0x10000) {
    std::snprintf(escape, sizeof escape, "\"\\u%04x\"", static_cast<unsigned>(code));
  } else {
    const auto pair = static_cast<unsigned>(code - 0x10000);
    std::snprintf(escape, sizeof escape, "\"\\u%04x\\u%04x\"", 0xD800 + (pair >> 10),
                  0xDC00 + (pair & 0x3FF));
  }
  return Json::parse(escape).get<std::string>();
}

// ---- texts

TEST(JsonText, EscapesWhatATerminalWouldNotShow) {
  EXPECT_EQ(JsonText("\x1B[31m\u007F\u009B\u061C\u200E\u2028\u2029\u202E\u2066"),
            R"("\u001b[31m\u007f\u009b\u061c\u200e\u2028\u2029\u202e\u2066")");
}

TEST(JsonText, LeavesAllElseReadable) {
  EXPECT_EQ(JsonText("Größe 漢字 \U0001F600 \u202F"), "\"Größe 漢字 \U0001F600 \u202F\"");
}

TEST(JsonText, OfEveryCharacterIsShownAndReadsBackToIt) {
  constexpr char32_t kPastTheSurrogates = 0xE000;
  constexpr char32_t kFirstSurrogate = 0xD800;
  int escaped = 0;
  constexpr char32_t kSomeOfThem = 0x101;  // of those of which none is escaped
  for (char32_t code = 0; code < 0x110000; code += code < 0x10000 ? 1 : kSomeOfThem) {
    code = code == kFirstSurrogate ? kPastTheSurrogates : code;
    const std::string text = TextOf(code);
    const std::string json = JsonText(text);
    ASSERT_EQ(SafeText(json), json) << static_cast<std::uint32_t>(code);
    ASSERT_EQ(Json::parse(json).get<std::string>(), text) << static_cast<std::uint32_t>(code);
    const bool stands = json == "\"" + text + "\"";
    const bool of_json = code == '"' || code == '\\';
    ASSERT_EQ(stands, IsShown(code) && !of_json) << static_cast<std::uint32_t>(code);
    escaped += stands ? 0 : 1;
  }
  EXPECT_EQ(escaped, 32 + 33 + 1 + 2 + 2 + 5 + 4 + 2);
}

TEST(JsonText, TakesTheReplacementForABadByte) { EXPECT_EQ(JsonText("a\xFFz"), "\"a\uFFFDz\""); }

TEST(JsonText, EscapesTheNamesOfMembersToo) {
  Json object;
  object["\u009B"] = true;
  EXPECT_EQ(JsonText(object), R"({"\u009b":true})");
}

// ---- numbers

TEST(JsonText, GivesARealAFractionOrAnExponent) {
  EXPECT_EQ(JsonText(1200.0), "1200.0");
  EXPECT_EQ(JsonText(-35.5), "-35.5");
  EXPECT_EQ(JsonText(1e20), "1e+20");
  EXPECT_EQ(JsonText(100000.0), "1e+05");
  EXPECT_EQ(JsonText(0.1), "0.1");
  EXPECT_EQ(JsonText(-0.0), "-0.0");
}

TEST(JsonText, GivesAWholeNumberNone) { EXPECT_EQ(JsonText(-35), "-35"); }

TEST(JsonText, HasNoWordForANumberThatIsNotFinite) {
  for (const double value : {Reals::quiet_NaN(), -Reals::quiet_NaN(), Reals::infinity()}) {
    EXPECT_EQ(JsonText(value), "null");
    EXPECT_EQ(JsonText(JsonReal(static_cast<float>(value))), "null");
  }
}

TEST(JsonText, TakesTheShortestFormOfThirtyTwoBits) {
  EXPECT_EQ(JsonText(JsonReal(0.1F)), "0.1");
  EXPECT_EQ(JsonText(JsonReal(283.5F)), "283.5");
  EXPECT_EQ(JsonText(JsonReal(2475)), "2475.0");
  EXPECT_EQ(JsonText(JsonReal(16777216)), "16777216.0");
  for (const float value : {1.0F / 3, 3.4028235e38F, 1e-45F, -123456790528.0F, 8.5e-5F}) {
    EXPECT_EQ(std::strtof(JsonText(JsonReal(value)).c_str(), nullptr), value);
    EXPECT_LE(JsonText(JsonReal(value)).size(), 15U) << JsonText(JsonReal(value));
  }
}

// ---- wholes

TEST(JsonText, KeepsTheOrderOfMembersAndStandsOnOneLine) {
  Json object;
  object["z"] = Json::array({1, Json::array(), "a\nb"});
  object["a"] = nullptr;
  object["m"] = Json::object();
  EXPECT_EQ(JsonText(object), R"({"z":[1,[],"a\nb"],"a":null,"m":{}})");
}

TEST(EventText, OfAnAmountThatIsNotFiniteIsNull) {
  vetlo::AmountMatrix matrix(1, 3);
  matrix(1, 1) = 1200;
  matrix(1, 2) = -Reals::quiet_NaN();
  matrix(1, 3) = -Reals::infinity();
  EXPECT_EQ(EventText({"chart", "put", "ChartData", std::nullopt, matrix}),
            R"({"on":"chart","put":"ChartData","value":[[1200.0,null,null]]})");
}

}  // namespace
}  // namespace quillmarsh
