// What a report leaves out because it cannot be had is told to the store's keeper, and nothing
// else.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "tests/support/drawing.h"
#include "tests/support/household.h"
#include "vetlo/host/kept_store.h"
#include "vetlo/services/catalogue_of_defaults.h"

namespace vetlo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<std::string> TextsOf(const KeptStore& kept) {
  std::vector<std::string> texts;
  for (const KeptFailure& failure : kept.Failures()) {
    texts.emplace_back(failure.Text());
  }
  return texts;
}

// ---- nothing is told where nothing went wrong

class SoundRow : public ::testing::TestWithParam<std::int32_t> {
 protected:
  static std::vector<std::string> LeftOutOf(Database& store, const Variant& subject) {
    KeptStore kept(store);
    Drawing drawing;
    EXPECT_EQ(drawing.TryToShow(kept, GetParam(), subject), 0);
    return TextsOf(kept);
  }
};

TEST_P(SoundRow, OfAHouseholdLeavesNothingOut) {
  const auto store = HouseholdWithEveryRow();
  EXPECT_THAT(LeftOutOf(*store, SubjectOfRow(GetParam())), IsEmpty());
}

TEST_P(SoundRow, OfAnEmptyStoreLeavesNothingOut) {
  SmallStore empty;
  empty.Row({.number = GetParam(),
             .report_number = GetParam() % 100,
             .output = GetParam() < 100 ? ChartOrReport::kReport : ChartOrReport::kChart,
             .group = kCallerParametersGroup});
  const auto store = empty.Open();
  EXPECT_THAT(LeftOutOf(*store, 1), IsEmpty());
  EXPECT_THAT(LeftOutOf(*store, Empty{}), IsEmpty()) << "that no subject was named is no failure";
}

INSTANTIATE_TEST_SUITE_P(Rows, SoundRow, ::testing::ValuesIn(RowsOfEveryForm()),
                         [](const auto& row) { return "Row" + std::to_string(row.param); });

// ---- what is told

struct Case {
  const char* name;
  std::int32_t report_number;
  ChartOrReport output;
  const char* damage;  // as SQL
  const char* told;

  friend std::ostream& operator<<(std::ostream& out, const Case& of) { return out << of.name; }
};

// An account with a security that was bought, sold and has a price; a debt; a payee.
SmallStore DamagedHousehold(const Case& of) {
  SmallStore store;
  store.Account(1, "Wallet", kCashAccount, 100)
      .Account(2, "Depot", kInvestmentAccount)
      .Account(3, "Friend", kCreditorsRights)
      .Insert("Payee", {{"PayeeNumber", 1}, {"PayeeName", "Friend"}})
      .Insert("AccountItemType", {{"AccountItemTypeNumber", 1},
                                  {"AccountItemTypeName", "Shares"},
                                  {"BasicAccountType", 2}})
      .Insert("AccountItem",
              {{"AccountItemNumber", 7}, {"AccountItemName", "Acme"}, {"AccountItemTypeNumber", 1}})
      .Insert("LatestPriceInfo", {{"AccountItemNumber", 7}, {"Price", 2.5}})
      .Transaction({.type = kBuy, .total = 10, .account = 2, .item = 7, .quantity = 4.0})
      .Transaction({.type = kSell, .total = 3, .account = 2, .item = 7, .quantity = 1.0})
      .Transaction({.type = kExpense, .total = 5, .account = 3, .payee = 1})
      .Row({.number = 1, .report_number = of.report_number, .output = of.output})
      .Execute(of.damage);
  return store;
}

class LeftOutFigure : public ::testing::TestWithParam<Case> {};

TEST_P(LeftOutFigure, IsTold) {
  const auto store = DamagedHousehold(GetParam()).Open();
  KeptStore kept(*store);
  Drawing drawing;
  EXPECT_EQ(drawing.TryToShow(kept, 1), 0) << "the call goes on";
  EXPECT_THAT(TextsOf(kept), ElementsAre(HasSubstr(GetParam().told)));
}

constexpr auto kReport = ChartOrReport::kReport;
constexpr auto kChart = ChartOrReport::kChart;

INSTANTIATE_TEST_SUITE_P(
    Of, LeftOutFigure,
    ::testing::Values(
        Case{"AnAmount", 5, kReport,
             "UPDATE TransactionRecord SET Total = 'x' WHERE TransactionRecordNumber = 3",
             "no amount: TransactionRecord.Total, row 3; mend it"},
        Case{"AnAmountInAChart", 5, kChart,
             "UPDATE TransactionRecord SET Total = 'x' WHERE TransactionRecordNumber = 3",
             "TransactionRecord.Total, row 3"},
        Case{"ABalanceOfATotal", 18, kReport,
             "UPDATE Account SET OpeningBalance = 'x' WHERE AccountNumber = 1",
             "no amount: Account.OpeningBalance, row 1"},
        Case{"ABalancePastAllBounds", 18, kReport,
             "UPDATE Account SET OpeningBalance = 9223372036854775807 WHERE AccountNumber = 3;"
             "UPDATE TransactionRecord SET TransactionType = 10 WHERE TransactionRecordNumber = 3",
             "too large to be counted; look for one in the store that cannot be right (met at "
             "TransactionRecord, row 3)"},
        Case{"ATypeOfAccount", 7, kReport,
             "UPDATE Account SET AccountType = 'x' WHERE AccountNumber = 2",
             "no whole number: Account.AccountType, row 2"},
        Case{"ARecordOfNoAccount", 2, kReport,
             "UPDATE TransactionRecord SET AccountNumber = NULL WHERE PayeeNumber = 1",
             "names no account: TransactionRecord.AccountNumber, row 3"},
        Case{"ARecordOfAnAccountThatIsNotThere", 2, kReport,
             "UPDATE TransactionRecord SET AccountNumber = 77 WHERE PayeeNumber = 1",
             "the table Account has no row 77"},
        Case{"ANumberThatIsEmpty", 10, kReport,
             "INSERT INTO PaymentCalendar VALUES (3, 1, 1);"
             "UPDATE TransactionRecord SET AccountNumber = NULL WHERE PayeeNumber = 1",
             "empty that is needed: TransactionRecord.AccountNumber, row 3"},
        Case{"UnitsOfAPosition", 13, kReport,
             "UPDATE TransactionRecord SET Quantity = 'x' WHERE TransactionRecordNumber = 2",
             "no number: TransactionRecord.Quantity, row 2"},
        Case{"UnitsOfATypesValue", 24, kReport,
             "UPDATE TransactionRecord SET Quantity = 'x' WHERE TransactionRecordNumber = 2",
             "no number: TransactionRecord.Quantity, row 2"},
        Case{"AWorthPastAllBounds", 24, kReport, "UPDATE LatestPriceInfo SET Price = 1e300",
             "too large to be counted"},
        Case{"ALatestPrice", 13, kReport, "UPDATE LatestPriceInfo SET Price = 'x'",
             "no number: LatestPriceInfo.Price, row 7"},
        Case{"AYieldPastAllBounds", 15, kChart,
             "UPDATE TransactionRecord SET Total = 1 WHERE TransactionRecordNumber = 1;"
             "UPDATE TransactionRecord SET Total = 9000000000000000000 "
             "WHERE TransactionRecordNumber = 2",
             "too large to be counted"},
        Case{"AYieldByTypeInAChart", 16, kChart,
             "UPDATE TransactionRecord SET Total = 'x' WHERE TransactionRecordNumber = 1",
             "TransactionRecord.Total, row 1"},
        Case{"AFlowInAChart", 3, kChart,
             "UPDATE TransactionRecord SET Total = 'x' WHERE TransactionRecordNumber = 3",
             "TransactionRecord.Total, row 3"},
        Case{"APriceInAChart", 17, kChart,
             "INSERT INTO PriceType VALUES (1, 'Close', 1);"
             "INSERT INTO PriceRecord VALUES (7, 1, 46000, 'x')",
             "no number: PriceRecord.Price, row 1"},
        Case{"ARangeOutOfTheCalendar", 5, kReport,
             "UPDATE ChartReportSubType SET DateRangeType = 14, DateRangeExtInfo = 25000",
             "the date range leaves the calendar"},
        Case{"ARangeOutOfTheCalendarInAChart", 5, kChart,
             "UPDATE ChartReportSubType SET DateRangeType = 14, DateRangeExtInfo = 40000",
             "the date range leaves the calendar"},
        Case{"ADateOfTheRange", 1, kReport,
             "UPDATE ChartReportSubType SET DateRangeType = 15, FromDate = 'abc'",
             "no date: ChartReportSubType.FromDate, row 1"}),
    [](const auto& of) { return of.param.name; });

}  // namespace
}  // namespace vetlo::testing
