#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "vetlo/store/sqlite/select_text.h"

// The plain conditions of a text, by which its rows can be found.

namespace vetlo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// "0.AccountNumber = 2,3": the source's number, the column, and the places of the values.
std::vector<std::string> ConditionsOf(const std::string& where) {
  const SelectPlan plan =
      PlanOf("SELECT T1.* FROM TransactionRecord AS T1,AccountItem AS T2 WHERE " + where);
  std::vector<std::string> texts;
  for (const Condition& condition : plan.conditions) {
    std::string text = std::to_string(condition.source) + "." +
                       std::string(condition.column->name) + " " + std::string(condition.op);
    for (const std::size_t value : condition.values) {
      text += " " + std::to_string(value);
    }
    texts.push_back(text);
  }
  return texts;
}

TEST(Conditions, AreThoseJoinedWithAnd) {
  EXPECT_THAT(ConditionsOf("AccountNumber=? AND Total>=? AND TransactionDate<?"),
              ElementsAre("0.AccountNumber = 0", "0.Total >= 1", "0.TransactionDate < 2"));
}

TEST(Conditions, KnowTheirTable) {
  EXPECT_THAT(ConditionsOf("T2.AccountItemNumber=? AND T1.AccountItemNumber=?"),
              ElementsAre("1.AccountItemNumber = 0", "0.AccountItemNumber = 1"));
}

TEST(Conditions, MayNameSeveralValues) {
  EXPECT_THAT(ConditionsOf("Total>? AND (TransactionType=? OR TransactionType=?) AND Total<?"),
              ElementsAre("0.Total > 0", "0.TransactionType = 1 2", "0.Total < 3"));
}

TEST(Conditions, MayStandInBrackets) {
  EXPECT_THAT(ConditionsOf("(AccountNumber=?) AND (Total<=?)"),
              ElementsAre("0.AccountNumber = 0", "0.Total <= 1"));
}

TEST(Conditions, CountTheValuesOfWhatStandsBetweenThem) {
  EXPECT_THAT(ConditionsOf("(Total=? OR AccountNumber=?) AND (NOT Total=?) AND PayeeNumber=?"),
              ElementsAre("0.PayeeNumber = 3"));
}

TEST(Conditions, AreNoneWhereAnOrJoinsThem) {
  EXPECT_THAT(ConditionsOf("AccountNumber=? AND Total=? OR PayeeNumber=?"), IsEmpty());
  EXPECT_THAT(ConditionsOf("AccountNumber=? OR PayeeNumber=? AND Total=?"), IsEmpty());
}

TEST(Conditions, LeaveOutAllOthers) {
  EXPECT_THAT(ConditionsOf("NOT AccountNumber=? AND ISNULL(PayeeNumber) AND AccountNumber<>? AND "
                           "Total=Quantity AND (AccountNumber<? OR AccountNumber=?) AND "
                           "((PayeeNumber=?) OR PayeeNumber=?) AND (Total=? AND Quantity=?)"),
              IsEmpty());
}

}  // namespace
}  // namespace vetlo
