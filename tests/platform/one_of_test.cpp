#include "vetlo/platform/one_of.h"

#include <gtest/gtest.h>

#include <map>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/platform/failing_memory.h"

namespace vetlo {
namespace {

using Numbers = std::vector<double>;
using Value = OneOf<std::monostate, bool, double, std::string, Numbers>;

// Too long to lie within the string itself.
const std::string kLongText(60, 'x');
const std::string kOtherText(70, 'y');

std::vector<Value> OneOfEach() { return {{}, true, 2.5, kLongText, Numbers{1, 2, 3}}; }

// Does the work with its first allocation failing, with its second one and so on, until it needs no
// more of them. Each failure must reach the caller, and nothing be left that cannot be destroyed.
// Gives how many failed.
template <typename Work>
int FailuresOf(Work work) {
  for (int n = 1;; ++n) {
    const FailingMemory failing(n);
    try {
      work();
    } catch (const std::bad_alloc&) {
      continue;
    }
    EXPECT_FALSE(failing.Failed());
    return n - 1;
  }
}

// Where the compiler does not see what becomes of the copy.
[[gnu::noinline]] Value CopyOf(const Value& value) { return value; }

TEST(OneOf, IsCopiedWithEachOfItsAlternatives) {
  for (const Value& value : OneOfEach()) {
    const Value copy(value);
    EXPECT_TRUE(copy == value);
  }
}

TEST(OneOf, IsMovedWithoutAnAllocation) {
  static_assert(std::is_nothrow_move_constructible_v<Value>);
  static_assert(std::is_nothrow_move_assignable_v<Value>);
  Value value(kLongText);
  const char* text = std::get<std::string>(value).data();
  const Value moved(std::move(value));
  EXPECT_EQ(std::get<std::string>(moved).data(), text);
}

TEST(OneOf, IsTakenByWhateverTakesAVariant) {
  Value value(kLongText);
  EXPECT_TRUE(std::holds_alternative<std::string>(value));
  EXPECT_EQ(std::get<std::string>(value), kLongText);
  EXPECT_EQ(*std::get_if<std::string>(&value), kLongText);
  EXPECT_EQ(std::get_if<bool>(&value), nullptr);
  EXPECT_EQ(std::visit([](const auto& held) { return sizeof held; }, value), sizeof(std::string));
}

TEST(OneOf, WhoseCopyFailsLeavesNothingBehind) {
  const Value text(kLongText);
  EXPECT_EQ(FailuresOf([&] { CopyOf(text); }), 1);
  const Value numbers(Numbers{1, 2, 3});
  EXPECT_EQ(FailuresOf([&] { CopyOf(numbers); }), 1);
  EXPECT_EQ(FailuresOf([] { CopyOf(2.5); }), 0);
}

TEST(OneOf, WhoseAssignmentFailsKeepsItsValue) {
  for (const Value& old : OneOfEach()) {
    Value value(old);
    const Value text(kOtherText);
    EXPECT_EQ(FailuresOf([&] {
                EXPECT_TRUE(value == old);
                value = text;
              }),
              1);
    EXPECT_TRUE(value == text);
  }
}

TEST(OneOf, WhoseAssignmentOfAnAlternativeFailsKeepsItsValue) {
  for (const Value& old : OneOfEach()) {
    Value value(old);
    EXPECT_EQ(FailuresOf([&] {
                EXPECT_TRUE(value == old);
                value = kOtherText;
              }),
              1);
    EXPECT_EQ(std::get<std::string>(value), kOtherText);
  }
}

TEST(OneOf, IsCopiedInVectorsAsFarAsMemoryGoes) {
  const std::vector<Value> values(5, kLongText);
  EXPECT_EQ(FailuresOf([&] { const std::vector<Value> copy(values); }), 6);
}

TEST(OneOf, IsAddedToAVectorOrTheVectorStaysAsItIs) {
  const Value text(kOtherText);
  for (std::size_t size = 0; size < 5; ++size) {
    const std::vector<Value> old(size, kLongText);
    std::vector<Value> values(old);
    EXPECT_EQ(FailuresOf([&] {
                EXPECT_TRUE(values == old);
                values.push_back(text);
              }),
              2);
    EXPECT_TRUE(values.back() == text);
  }
}

TEST(OneOf, IsCopiedInMapsAsFarAsMemoryGoes) {
  const std::map<int, Value> values = {{1, kLongText}, {2, kOtherText}, {3, true}};
  EXPECT_EQ(FailuresOf([&] { const std::map<int, Value> copy(values); }), 5);
}

}  // namespace
}  // namespace vetlo
