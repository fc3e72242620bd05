#include <gtest/gtest.h>

#include "tests/support/raises.h"
#include "tests/support/small_store.h"

namespace vetlo {
namespace {

using testing::Money;

StoreBuilder::Values Payee(std::int32_t number) {
  return {{"PayeeNumber", number}, {"PayeeName", "Somebody"}};
}

TEST(StoreBuilder, GivesColumnsThatAreNotNamedTheirDefault) {
  StoreBuilder builder;
  builder.Insert("Account",
                 {{"AccountNumber", 1}, {"AccountName", "a"}, {"AccountType", kCashAccount}});
  const auto store = builder.Open();
  const auto rec = store->OpenRecordset("Account");
  EXPECT_EQ(rec->Fields("Balance"), Variant(Money(0)));
  EXPECT_EQ(rec->Fields("BankName"), Variant(Null{}));
}

TEST(StoreBuilder, TakesNamesInAnyCase) {
  StoreBuilder builder;
  builder.Insert("payee", {{"PAYEENUMBER", 3}, {"payeename", "Somebody"}});
  const auto store = builder.Open();
  EXPECT_EQ(store->OpenRecordset("Payee")->Fields("PayeeNumber"), Variant(3));
}

TEST(StoreBuilder, RefusesATableThatThereIsNot) {
  StoreBuilder builder;
  EXPECT_TRUE(Raises(FailureNumber::kTableNotFound, [&] { builder.Insert("Payees", Payee(1)); }));
}

TEST(StoreBuilder, RefusesAColumnThatThereIsNot) {
  StoreBuilder builder;
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn, [&] {
    builder.Insert("Payee", {{"PayeeNumber", 1}, {"Name", "x"}});
  }));
}

TEST(StoreBuilder, RefusesTheRowNumberForAColumn) {
  StoreBuilder builder;
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn, [&] {
    builder.Insert("Payee", {{"rowid", 1}, {"PayeeName", "x"}});
  }));
}

TEST(StoreBuilder, RefusesAKeyThatIsThereAlready) {
  StoreBuilder builder;
  builder.Insert("Payee", Payee(1));
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { builder.Insert("Payee", Payee(1)); }));
}

TEST(StoreBuilder, GoesOnAfterARowThatWasRefused) {
  StoreBuilder builder;
  builder.Insert("Payee", Payee(1));
  ResumeNext([&] { builder.Insert("Payee", Payee(1)); });
  builder.Insert("Payee", Payee(2));
  EXPECT_EQ(builder.Open()->OpenRecordset("Payee")->RecordCount(), 2);
}

TEST(StoreBuilder, RefusesAValueOfAnotherType) {
  StoreBuilder builder;
  EXPECT_TRUE(Raises(FailureNumber::kTypeMismatch, [&] {
    builder.Insert("Payee", {{"PayeeNumber", "one"}, {"PayeeName", "x"}});
  }));
}

TEST(StoreBuilder, SaysOfAStatementThatFailsThatItFails) {
  StoreBuilder builder;
  EXPECT_NE(ResumeNext([&] { builder.Execute("NONSENSE"); }), 0);
}

TEST(StoreBuilder, OpensAStoreOfItsOwnEachTime) {
  StoreBuilder a;
  StoreBuilder b;
  a.Insert("Payee", Payee(1));
  const auto store = b.Open();
  EXPECT_EQ(store->OpenRecordset("Payee")->RecordCount(), 0);
}

}  // namespace
}  // namespace vetlo
