#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <new>
#include <optional>
#include <stdexcept>

#include "tests/library/opened_library.h"
#include "tests/support/drawing.h"
#include "tests/support/household.h"
#include "tests/support/played_screen.h"
#include "vetlo/frame/tamo.h"
#include "vetlo/store/forwarding.h"
#include "vetlo/surface/result_codes.h"

namespace vetlo::testing {
namespace {

using ::testing::SizeIs;

constexpr Date kFrom = {46023};  // 2026-01-01
constexpr Date kTo = {46112};    // 2026-03-31
const std::array<Currency, 12> kBudget = {Currency::FromUnits(10000), Currency::FromUnits(20000),
                                          Currency::FromUnits(30000)};

// What an operation works on.
struct Household {
  std::unique_ptr<Database> own = HouseholdWithEveryRow();
  Database* store = own.get();
  std::unique_ptr<Recordset> rows = own->OpenRecordset("ChartReportSubType");
  std::unique_ptr<Recordset> accounts = own->OpenRecordset("Account");
};

// Where answers go.
struct Places {
  std::optional<bool> boolean = true;
  std::optional<Variant> variant = Variant("untouched");
  std::optional<Currency> currency = Currency::FromUnits(-1);

  friend bool operator==(const Places&, const Places&) = default;
};

template <typename Place>
Place* AddressOf(std::optional<Place>& place) {
  return place ? &*place : nullptr;
}

constexpr std::size_t kOperations = 15;

// The fifteen operations, each asked with something that it can answer.
struct Operation {
  const char* name;
  HRESULT (*ask)(_clsTamo& tamo, Household& home, Places& places);
};

constexpr std::array<Operation, kOperations> kAll = {{
    {"AddToFavorites",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.AddToFavorites(*home.store, *home.rows, 5, "Mine", Empty{}, Empty{},
                                  AddressOf(places.boolean));
     }},
    {"ChartReportHasBeenCustomized",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.ChartReportHasBeenCustomized(*home.rows, 5, AddressOf(places.boolean));
     }},
    {"CustomizeChartReport",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.CustomizeChartReport(*home.store, *home.rows, 5, nullptr, nullptr, Empty{},
                                        Empty{}, AddressOf(places.boolean));
     }},
    {"LenByte",
     [](_clsTamo& tamo, Household&, Places& places) {
       return tamo.LenByte("M\xC3\xBCnze", AddressOf(places.variant));
     }},
    {"ShowChartReport",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.ShowChartReport(*home.store, *home.rows, 5, nullptr, nullptr, Empty{}, Empty{},
                                   AddressOf(places.boolean));
     }},
    {"TotalAssets",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalAssets(*home.store, *home.accounts, kTo, AddressOf(places.currency));
     }},
    {"TotalExpenses",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalExpenses(*home.store, kFrom, kTo, AddressOf(places.currency));
     }},
    {"TotalExpensesOfCategory",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalExpensesOfCategory(*home.store, kFrom, kTo, 1, false, nullptr, nullptr,
                                           AddressOf(places.currency));
     }},
    {"TotalExpensesOfSubCategory",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalExpensesOfSubCategory(*home.store, kFrom, kTo, 1, false, nullptr, nullptr,
                                              AddressOf(places.currency));
     }},
    {"TotalIncome",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalIncome(*home.store, kFrom, kTo, AddressOf(places.currency));
     }},
    {"TotalIncomeOfCategory",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalIncomeOfCategory(*home.store, kFrom, kTo, 2, false, nullptr, nullptr,
                                         AddressOf(places.currency));
     }},
    {"TotalIncomeOfSubCategory",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalIncomeOfSubCategory(*home.store, kFrom, kTo, 2, true, nullptr, nullptr,
                                            AddressOf(places.currency));
     }},
    {"TotalLiabilities",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalLiabilities(*home.store, *home.accounts, kTo, AddressOf(places.currency));
     }},
    {"TotalBudgetOfDateRange",
     [](_clsTamo& tamo, Household&, Places& places) {
       return tamo.TotalBudgetOfDateRange(kBudget, kFrom, kTo, AddressOf(places.currency));
     }},
    {"TotalCreditCardDebt",
     [](_clsTamo& tamo, Household& home, Places& places) {
       return tamo.TotalCreditCardDebt(*home.store, kTo, AddressOf(places.currency));
     }},
}};

// The same asked of the class itself, in the same order.
constexpr std::array<void (*)(clsTamo& tamo, Household& home, Places& places), kOperations>
    kDirectly = {
        [](clsTamo& tamo, Household& home, Places& places) {
          places.boolean = tamo.AddToFavorites(*home.store, *home.rows, 5, "Mine");
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.boolean = tamo.ChartReportHasBeenCustomized(*home.rows, 5);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.boolean = tamo.CustomizeChartReport(*home.store, *home.rows, 5);
        },
        [](clsTamo& tamo, Household&, Places& places) {
          places.variant = tamo.LenByte("M\xC3\xBCnze");
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.boolean = tamo.ShowChartReport(*home.store, *home.rows, 5);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalAssets(*home.store, *home.accounts, kTo);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalExpenses(*home.store, kFrom, kTo);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalExpensesOfCategory(*home.store, kFrom, kTo, 1);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalExpensesOfSubCategory(*home.store, kFrom, kTo, 1);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalIncome(*home.store, kFrom, kTo);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalIncomeOfCategory(*home.store, kFrom, kTo, 2);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalIncomeOfSubCategory(*home.store, kFrom, kTo, 2, true);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalLiabilities(*home.store, *home.accounts, kTo);
        },
        [](clsTamo& tamo, Household&, Places& places) {
          places.currency = tamo.TotalBudgetOfDateRange(kBudget, kFrom, kTo);
        },
        [](clsTamo& tamo, Household& home, Places& places) {
          places.currency = tamo.TotalCreditCardDebt(*home.store, kTo);
        },
};

HRESULT Inform(_clsTamo& tamo, Platform* platform) {
  return Asked<IObjectWithPlatform>(tamo, IID_IObjectWithPlatform)->SetPlatform(platform);
}

// A user who confirms a dialog as he finds it.
void Confirm(Form& form) { form.Find<Button>("cmdOK")->Click(); }

class Operations : public ::testing::Test {
 protected:
  void Inform() { ASSERT_EQ(testing::Inform(*tamo_, &platform_), S_OK); }

  OpenedLibrary library_;
  PlayedPlatform platform_;
  Household home_;
  Held<_clsTamo> tamo_ = library_.NewTamo();
};

TEST_F(Operations, FailBeforeTheirSurroundingsAreKnown) {
  for (const Operation& operation : kAll) {
    Places places;
    EXPECT_EQ(operation.ask(*tamo_, home_, places), ResultCode(0x800A005B)) << operation.name;
    EXPECT_EQ(places, Places()) << operation.name;
  }
}

TEST_F(Operations, FailAfterTheirSurroundingsAreTakenAway) {
  Inform();
  Places places;
  EXPECT_EQ(tamo_->LenByte("", AddressOf(places.variant)), S_OK);
  EXPECT_EQ(testing::Inform(*tamo_, nullptr), S_OK);
  EXPECT_EQ(tamo_->LenByte("", AddressOf(places.variant)), ResultCode(0x800A005B));
}

TEST_F(Operations, NeedAPlaceForTheirAnswer) {
  Inform();
  for (const Operation& operation : kAll) {
    Places nowhere = {std::nullopt, std::nullopt, std::nullopt};
    EXPECT_EQ(operation.ask(*tamo_, home_, nowhere), E_POINTER) << operation.name;
  }
  EXPECT_EQ(platform_.screen.forms_shown, 0) << "they have not begun";
}

TEST_F(Operations, AnswerAsTheClassDoes) {
  Inform();
  for (const bool before : {true, false}) {
    for (std::size_t at = 0; at < kOperations; ++at) {
      Places answer;
      answer.boolean = before;
      Places expected = answer;
      PlayedPlatform platform;
      clsTamo tamo(platform);
      kDirectly.at(at)(tamo, home_, expected);
      EXPECT_EQ(kAll.at(at).ask(*tamo_, home_, answer), S_OK) << kAll.at(at).name;
      EXPECT_EQ(answer, expected) << kAll.at(at).name;
    }
  }
}

TEST_F(Operations, TellTheDaysOfWhatWasCountedWhereTheyAreWanted) {
  Inform();
  clsTamo direct(platform_);
  Currency total;
  Date first;
  Date last;
  Date first_directly;
  Date last_directly;
  direct.TotalExpensesOfCategory(*home_.store, kFrom, kTo, 1, false, &first_directly,
                                 &last_directly);
  EXPECT_EQ(
      tamo_->TotalExpensesOfCategory(*home_.store, kFrom, kTo, 1, false, &first, &last, &total),
      S_OK);
  EXPECT_EQ(first, first_directly);
  EXPECT_EQ(last, last_directly);
  EXPECT_EQ(first, Day(2026, 3, 3));
  last = Date{};
  EXPECT_EQ(
      tamo_->TotalExpensesOfSubCategory(*home_.store, kFrom, kTo, 1, false, nullptr, &last, &total),
      S_OK);
  EXPECT_EQ(last, Day(2026, 3, 3));
}

// What the library draws of a row.
std::vector<std::string> DrawnByTheLibrary(_clsTamo& tamo, Household& home, std::int32_t row) {
  Drawing drawing;
  EXPECT_EQ(Inform(tamo, &drawing.platform), S_OK);
  bool answer = true;
  EXPECT_EQ(tamo.ShowChartReport(*home.store, *home.rows, row, &drawing.chart, &drawing.report,
                                 SubjectOfRow(row), Empty{}, &answer),
            S_OK);
  EXPECT_FALSE(answer);
  EXPECT_EQ(Inform(tamo, nullptr), S_OK) << "the surroundings of the drawing go";
  return drawing.Events();
}

TEST_F(Operations, DrawEveryRowAsTheClassDoes) {
  const std::vector<std::int32_t> rows = RowsOfEveryForm();
  ASSERT_THAT(rows, SizeIs(118));
  for (const std::int32_t row : rows) {
    Drawing expected;
    expected.Show(*home_.store, row, SubjectOfRow(row));
    EXPECT_EQ(DrawnByTheLibrary(*tamo_, home_, row), expected.Events()) << row;
  }
}

TEST_F(Operations, ShowTheirDialogsOnTheHostsScreen) {
  Inform();
  platform_.screen.user = Confirm;
  Places places;
  places.boolean = false;
  for (const std::size_t dialog : {std::size_t{0}, std::size_t{2}}) {
    places.boolean = false;
    EXPECT_EQ(kAll.at(dialog).ask(*tamo_, home_, places), S_OK);
    EXPECT_EQ(places.boolean, true) << kAll.at(dialog).name;
  }
  EXPECT_EQ(platform_.screen.forms_shown, 2);
}

// ---- failures

// A store of which nothing can be opened, in one way or another.
class BrokenStore : public ForwardingDatabase {
 public:
  BrokenStore(Database& store, std::function<void()> breaking)
      : ForwardingDatabase(store), breaking_(std::move(breaking)) {}
  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type) override {
    breaking_();
    return ForwardingDatabase::OpenRecordset(source, type);
  }

 private:
  std::function<void()> breaking_;
};

class FailingOperations : public Operations {
 protected:
  // The result of a figure of a store that is broken in this way.
  HRESULT ResultOf(std::function<void()> breaking) {
    BrokenStore broken(*home_.store, std::move(breaking));
    return tamo_->TotalIncome(broken, kFrom, kTo, &total_);
  }

  Currency total_ = Currency::FromUnits(-1);
};

TEST_F(FailingOperations, ReachTheCallerWithNumberAndText) {
  Inform();
  EXPECT_EQ(ResultOf([] { throw Failure(FailureNumber::kStoreUnusable, "the disk is gone"); }),
            ResultCode(0x800A0BE3));
  EXPECT_EQ(platform_.ErrorInfo(), "the disk is gone");
  EXPECT_EQ(total_, Currency::FromUnits(-1)) << "the answer is left alone";
}

TEST_F(FailingOperations, ThatWereGivenNoTextSayWhatTheirNumberMeans) {
  Inform();
  platform_.SetErrorInfo("earlier");
  EXPECT_EQ(ResultOf([] { throw Failure(FailureNumber::kNothingToShow); }), ResultCode(0x80040201));
  EXPECT_EQ(platform_.ErrorInfo(), "there is nothing to show");
}

TEST_F(FailingOperations, OfTheHostsOwnKindsHaveANumberToo) {
  Inform();
  EXPECT_EQ(ResultOf([] { throw std::bad_alloc(); }), ResultCode(0x800A0007));
  EXPECT_EQ(ResultOf([] { throw std::runtime_error("odd"); }), ResultCode(0x800A0033));
  EXPECT_EQ(platform_.ErrorInfo(), "odd");
  EXPECT_EQ(ResultOf([] { throw 5; }), ResultCode(0x800A0033));
}

TEST_F(FailingOperations, OfEveryKindReachTheCaller) {
  Inform();
  BrokenStore broken(*home_.store, [] { throw Failure(FailureNumber::kTableNotFound, "none"); });
  home_.store = &broken;
  home_.rows->Close();
  home_.accounts->Close();
  platform_.screen.user = Confirm;
  for (const Operation& operation : kAll) {
    const std::string name = operation.name;
    if (name == "LenByte" || name == "TotalBudgetOfDateRange") {
      continue;  // they look at no store
    }
    Places places;
    const HRESULT result = operation.ask(*tamo_, home_, places);
    EXPECT_TRUE(result == ResultCode(0x800A0BC3) || result == ResultCode(0x800A0D5C))
        << name << " " << ResultText(result);
    EXPECT_EQ(places, Places()) << name;
    EXPECT_EQ(platform_.ErrorInfo(),
              result == ResultCode(0x800A0BC3) ? "none" : "what was closed is used")
        << name;
  }
}

TEST_F(FailingOperations, OfAMonthThatIsNotThereAreOutOfRange) {
  Inform();
  EXPECT_EQ(tamo_->TotalBudgetOfDateRange({}, kFrom, kTo, &total_), ResultCode(0x800A0009));
}

TEST_F(FailingOperations, OfAHostWithoutAScreenReachTheCaller) {
  quillmarsh::TerminalPlatform platform(NumberLocale{}, Day(2026, 3, 20));
  ASSERT_EQ(testing::Inform(*tamo_, &platform), S_OK);
  Places places;
  EXPECT_EQ(kAll.front().ask(*tamo_, home_, places), ResultCode(0x800A005B));
  EXPECT_EQ(platform.ErrorInfo(), "there is no screen");
}

TEST(WorkedLibrary, IsGoneFromTheProcessAfterReportsDialogsAndFailures) {
  const std::string file = LibraryBesideProgram();
  {
    const OpenedLibrary library(file);
    Household home;
    PlayedPlatform platform;
    platform.screen.user = Confirm;
    const auto tamo = library.NewTamo();
    for (const std::int32_t row : {1, 101}) {
      DrawnByTheLibrary(*tamo, home, row);
    }
    ASSERT_EQ(Inform(*tamo, &platform), S_OK);
    for (const Operation& operation : kAll) {
      Places places;
      EXPECT_EQ(operation.ask(*tamo, home, places), S_OK);
    }
    Currency total;
    EXPECT_TRUE(Failed(tamo->TotalBudgetOfDateRange({}, kFrom, kTo, &total)));
  }
  EXPECT_FALSE(IsLoaded(file));
}

}  // namespace
}  // namespace vetlo::testing
