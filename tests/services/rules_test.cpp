#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <set>
#include <string>

#include "quillmarsh/terminal/terminal_platform.h"
#include "tests/support/raises.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

constexpr auto kEnters = MoneyFlow::kEnters;
constexpr auto kLeaves = MoneyFlow::kLeaves;

TEST(Services, AreOneObject) { EXPECT_EQ(&Services(), &Services()); }

TEST(Sentinels, AreTheFirstDateAndTheLastDayOf9998) {
  EXPECT_EQ(Services().EarliestDate(), DateSerial(100, 1, 1));
  EXPECT_EQ(Services().LatestDate(), DateSerial(9998, 12, 31));
}

// ---- account types

struct AccountTypeCase {
  std::int32_t type;
  const char* name;
  std::int32_t flags;

  friend std::ostream& operator<<(std::ostream& out, const AccountTypeCase& test) {
    return out << test.type;
  }
};

class AccountTypeInfo : public ::testing::TestWithParam<AccountTypeCase> {};

TEST_P(AccountTypeInfo, NamesTheType) {
  EXPECT_EQ(Services().AccountTypeInfo(GetParam().type).name, GetParam().name);
}

TEST_P(AccountTypeInfo, GivesTheTypesFlags) {
  EXPECT_EQ(Services().AccountTypeInfo(GetParam().type).flags, GetParam().flags);
}

TEST_P(AccountTypeInfo, HasTheFlagsThatItGives) {
  const AccountTypeFacts facts = Services().AccountTypeInfo(GetParam().type);
  EXPECT_EQ(facts.Has(AccountAttrCashFlow), (GetParam().flags & 1) != 0);
  EXPECT_EQ(facts.Has(AccountAttrFund), (GetParam().flags & 2) != 0);
  EXPECT_EQ(facts.Has(AccountAttrPositiveBalance), (GetParam().flags & 4) != 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, AccountTypeInfo,
    ::testing::Values(AccountTypeCase{0, "Checking Account", 5},
                      AccountTypeCase{1, "Savings Account", 5},
                      AccountTypeCase{2, "Time Deposit", 5}, AccountTypeCase{3, "Cash", 5},
                      AccountTypeCase{4, "Credit Card", 1}, AccountTypeCase{5, "Common Asset", 4},
                      AccountTypeCase{6, "Liability", 1},
                      AccountTypeCase{7, "Creditor's Rights", 5},
                      AccountTypeCase{8, "Investment", 6}, AccountTypeCase{9, "Other", 5},
                      AccountTypeCase{10, "Unknown", 0}, AccountTypeCase{-1, "Unknown", 0},
                      AccountTypeCase{255, "Unknown", 0},
                      AccountTypeCase{std::numeric_limits<std::int32_t>::max(), "Unknown", 0},
                      AccountTypeCase{std::numeric_limits<std::int32_t>::min(), "Unknown", 0}));

// ---- transaction types

struct TransactionTypeCase {
  std::int32_t type;
  MoneyFlow own_end;
  MoneyFlow other_end;

  friend std::ostream& operator<<(std::ostream& out, const TransactionTypeCase& test) {
    return out << test.type;
  }
};

class TransactionDirection : public ::testing::TestWithParam<TransactionTypeCase> {};

TEST_P(TransactionDirection, OfItsOwnEndIsTheSameForEveryAccountType) {
  for (std::int32_t account_type = -1; account_type <= 10; ++account_type) {
    EXPECT_EQ(Services().TransactionTypeInfo(GetParam().type, account_type), GetParam().own_end);
  }
}

TEST_P(TransactionDirection, OfItsOtherEndIsTheSameForAllFlags) {
  for (std::int32_t flags = 0; flags <= 7; ++flags) {
    EXPECT_EQ(Services().InvestmentTransactionInfo(GetParam().type, flags), GetParam().other_end);
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, TransactionDirection,
    ::testing::Values(
        TransactionTypeCase{0, kEnters, kEnters}, TransactionTypeCase{1, kLeaves, kLeaves},
        TransactionTypeCase{2, kLeaves, kLeaves}, TransactionTypeCase{3, kEnters, kEnters},
        TransactionTypeCase{4, kEnters, kEnters}, TransactionTypeCase{5, kEnters, kEnters},
        TransactionTypeCase{6, kEnters, kEnters}, TransactionTypeCase{7, kEnters, kEnters},
        TransactionTypeCase{8, kEnters, kEnters}, TransactionTypeCase{9, kLeaves, kLeaves},
        TransactionTypeCase{10, kEnters, kEnters}, TransactionTypeCase{11, kLeaves, kLeaves},
        TransactionTypeCase{12, kLeaves, kEnters}, TransactionTypeCase{13, kEnters, kLeaves},
        TransactionTypeCase{14, kEnters, kEnters}, TransactionTypeCase{-1, kEnters, kEnters},
        TransactionTypeCase{255, kEnters, kEnters},
        TransactionTypeCase{std::numeric_limits<std::int32_t>::max(), kEnters, kEnters},
        TransactionTypeCase{std::numeric_limits<std::int32_t>::min(), kEnters, kEnters}));

TEST(MoneyFlow, IsOneWhereMoneyLeaves) {
  EXPECT_EQ(static_cast<std::int32_t>(kEnters), 0);
  EXPECT_EQ(static_cast<std::int32_t>(kLeaves), 1);
}

// ---- lengths

TEST(FieldMaxLength, IsTheDeclaredLengthOfATextColumn) {
  EXPECT_EQ(Services().FieldMaxLength("ChartReportSubType", "Title"), 100);
  EXPECT_EQ(Services().FieldMaxLength("ChartReportSubType", "ChartReportSubTypeName"), 50);
}

TEST(FieldMaxLength, TakesNamesInAnyCase) {
  EXPECT_EQ(Services().FieldMaxLength("chartreportsubtype", "TITLE"), 100);
}

TEST(FieldMaxLength, FailsForATableOrColumnThatThereIsNot) {
  EXPECT_TRUE(Raises(FailureNumber::kTableNotFound,
                     [] { return Services().FieldMaxLength("Nothing", "Title"); }));
  EXPECT_TRUE(Raises(FailureNumber::kNoSuchColumn,
                     [] { return Services().FieldMaxLength("ChartReportSubType", "Nothing"); }));
}

// ---- labels

class FitLabelToWidth : public ::testing::Test {
 protected:
  // In cells of 120 twips.
  [[nodiscard]] std::string Fitted(std::string_view text, float cells) const {
    return Services().FitLabelToWidth(text, *box_, cells * 120);
  }

  std::unique_ptr<PictureBox> box_ = quillmarsh::TerminalPlatform({}, Date{0}).NewPictureBox();
};

TEST_F(FitLabelToWidth, LeavesATextThatFits) {
  EXPECT_EQ(Fitted("Wallet", 20), "Wallet");
  EXPECT_EQ(Fitted("Wallet", 6), "Wallet");
}

TEST_F(FitLabelToWidth, CutsATextThatIsATwipTooLong) {
  EXPECT_EQ(Services().FitLabelToWidth("Wallet", *box_, 719), "Wa...");
}

TEST_F(FitLabelToWidth, KeepsTheLongestBeginningThatFits) {
  EXPECT_EQ(Fitted("A long name", 10), "A long ...");
  EXPECT_EQ(Fitted("A long name", 4), "A...");
}

TEST_F(FitLabelToWidth, KeepsNothingOfATextWhereOnlyThePointsFit) {
  EXPECT_EQ(Fitted("Wallet", 3), "...");
  EXPECT_EQ(Fitted("Wallet", 3.9F), "...");
}

TEST_F(FitLabelToWidth, GivesThePointsAloneWhereNothingFits) {
  EXPECT_EQ(Fitted("Wallet", 2), "...");
  EXPECT_EQ(Fitted("Wallet", 0), "...");
  EXPECT_EQ(Fitted("Wallet", -5), "...");
}

TEST_F(FitLabelToWidth, LeavesAnEmptyText) { EXPECT_EQ(Fitted("", 0), ""); }

TEST_F(FitLabelToWidth, LeavesAShortTextThatIsNarrowerThanThePoints) {
  EXPECT_EQ(Fitted("ab", 2), "ab");
}

TEST_F(FitLabelToWidth, CutsBetweenCharacters) {
  EXPECT_EQ(Fitted("äöüäöü", 5), "äö...");
  EXPECT_EQ(Fitted("漢字漢字", 7), "漢字...");
  EXPECT_EQ(Fitted("漢字漢字", 6), "漢...");
}

TEST_F(FitLabelToWidth, KeepsTheMarksOfACharacterThatFits) {
  EXPECT_EQ(Fitted("e\u0301bcdef", 4), "e\u0301...");
}

TEST_F(FitLabelToWidth, AgreesWithATrialOfEveryLength) {
  const std::string text = "Groceries";
  for (int cells = 0; cells <= 12; ++cells) {
    std::string longest = "...";
    for (std::size_t length = 1; length < text.size(); ++length) {
      if (length + 3 <= static_cast<std::size_t>(cells)) {
        longest = text.substr(0, length) + "...";
      }
    }
    EXPECT_EQ(Fitted(text, static_cast<float>(cells)), cells >= 9 ? text : longest) << cells;
  }
}

}  // namespace
}  // namespace vetlo
