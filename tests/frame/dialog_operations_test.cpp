// What the component's host sees of the two dialogs and of the questions beside them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>

#include "quillmarsh/cli/event_text.h"
#include "tests/support/failing_database.h"
#include "tests/support/failing_objects.h"
#include "tests/support/household.h"
#include "tests/support/played_screen.h"
#include "tests/support/raises.h"
#include "vetlo/dialogs/add_to_favorites.h"
#include "vetlo/dialogs/customize.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kRow = 1;
constexpr const char* kRows = "ChartReportSubType";

// A component with a screen on which a test plays the user, and both display objects recording.
class Desk {
 public:
  // Plays the user of the customize dialog, and of the one that adds to the favourites.
  void Customizes(const std::function<void(frmCustomize&)>& user) {
    platform.screen.user = [user](Form& form) { user(dynamic_cast<frmCustomize&>(form)); };
  }
  void AddsToFavorites(const std::function<void(frmAddToFavorites&)>& user) {
    platform.screen.user = [user](Form& form) { user(dynamic_cast<frmAddToFavorites&>(form)); };
  }

  [[nodiscard]] std::vector<std::string> Events() const {
    std::vector<std::string> lines;
    for (const Event& event : log.events()) {
      lines.push_back(quillmarsh::EventText(event));
    }
    return lines;
  }

  PlayedPlatform platform;
  EventLog log;
  RecordingWindow window{log};
  PlainContainer frame{&window};
  RecordingChart chart{log, 12000, &frame};
  RecordingReport report{log, &frame};
  clsTamo component{platform};
};

// A row that holds the defaults of its report number.
TestRow DefaultRow(std::int32_t report_number) {
  const ReportDefaults& usual = *Services().ChartReportSetting(report_number);
  return {.number = kRow,
          .report_number = report_number,
          .output = usual.output,
          .chart_type = usual.chart_type,
          .legend = usual.legend,
          .title = std::string(usual.title),
          .range = static_cast<std::int32_t>(usual.range)};
}

std::unique_ptr<Database> StoreWith(const TestRow& row) {
  return SmallStore().Account(1, "Wallet", kCashAccount, 12.5).Row(row).Open();
}

Variant FieldOf(Database& store, std::int32_t number, std::string_view field) {
  const auto rows = store.OpenRecordset(kRows);
  rows->SetIndex(kPrimaryIndex);
  rows->Seek("=", number);
  return rows->Fields(field);
}

// ---- customizing

class CustomizeOperation : public ::testing::Test {
 protected:
  bool Customize() { return Customize(*store_); }
  bool Customize(Database& store) {
    const auto rows = store.OpenRecordset(kRows);
    return desk_.component.CustomizeChartReport(store, *rows, kRow, &desk_.chart, &desk_.report);
  }

  std::unique_ptr<Database> store_ = StoreWith(DefaultRow(5));
  Desk desk_;
};

TEST_F(CustomizeOperation, IsFalseAndDrawsNothingWhereTheUserCancels) {
  desk_.Customizes([](frmCustomize& form) { form.cmdCancel.Click(); });
  EXPECT_FALSE(Customize());
  EXPECT_EQ(desk_.platform.screen.forms_shown, 1);
  EXPECT_THAT(desk_.Events(), IsEmpty());
}

TEST_F(CustomizeOperation, IsFalseAndDrawsNothingWhereTheWindowIsClosed) {
  desk_.Customizes([](frmCustomize& form) { form.txtTitle.Type("Mine"); });
  EXPECT_FALSE(Customize());
  EXPECT_THAT(desk_.Events(), IsEmpty());
}

TEST_F(CustomizeOperation, IsFalseAndShowsNoDialogWhereThereIsNoSuchRow) {
  store_ = SmallStore().Row({.number = 2}).Open();
  EXPECT_FALSE(Customize());
  EXPECT_EQ(desk_.platform.screen.forms_shown, 0);
  EXPECT_THAT(desk_.Events(), IsEmpty());
}

TEST_F(CustomizeOperation, DrawsTheReportAnewWhereTheUserAccepts) {
  desk_.Customizes([](frmCustomize& form) {
    form.txtTitle.Type("Mine");
    form.cmdOK.Click();
  });
  EXPECT_TRUE(Customize());
  ASSERT_GE(desk_.report.Paragraphs().size(), 2U);
  EXPECT_EQ(desk_.report.Paragraphs()[1].Text(), "Mine");
  EXPECT_THAT(desk_.Events(), Contains(R"({"on":"chart","put":"Visible","value":false})"));
}

TEST_F(CustomizeOperation, DrawsTheChartWhereTheUserHasTurnedTheReportIntoOne) {
  desk_.Customizes([](frmCustomize& form) {
    form.optChartOrReportType[0].Choose();
    form.txtTitle.Type("Mine");
    form.cmdOK.Click();
  });
  EXPECT_TRUE(Customize());
  EXPECT_EQ(desk_.chart.Title(), "Mine:12.50");
  EXPECT_THAT(desk_.report.Paragraphs(), IsEmpty());
  EXPECT_THAT(desk_.Events(), Contains(R"({"on":"report","put":"Visible","value":false})"));
}

TEST_F(CustomizeOperation, DrawsTheDefaultsAfterAReset) {
  TestRow row = DefaultRow(5);
  row.title = "Mine";
  store_ = StoreWith(row);
  desk_.Customizes([](frmCustomize& form) { form.cmdReset.Click(); });
  EXPECT_TRUE(Customize());
  ASSERT_GE(desk_.report.Paragraphs().size(), 2U);
  EXPECT_EQ(desk_.report.Paragraphs()[1].Text(), "Net Worth");
}

TEST_F(CustomizeOperation, DrawsOnlyOnceTheDialogIsHidden) {
  desk_.Customizes([&](frmCustomize& form) {
    form.cmdOK.Click();
    EXPECT_THAT(desk_.Events(), IsEmpty());
  });
  EXPECT_TRUE(Customize());
  EXPECT_FALSE(desk_.Events().empty());
}

TEST_F(CustomizeOperation, SavesWithoutAnObjectToDrawInto) {
  desk_.Customizes([](frmCustomize& form) {
    form.txtTitle.Type("Mine");
    form.cmdOK.Click();
  });
  const auto rows = store_->OpenRecordset(kRows);
  EXPECT_TRUE(desk_.component.CustomizeChartReport(*store_, *rows, kRow));
  EXPECT_EQ(FieldOf(*store_, kRow, "Title"), Variant("Mine"));
}

TEST_F(CustomizeOperation, IsFalseAndDrawsNothingWhereTheSavingFails) {
  FailurePlan plan;
  FailingDatabase failing(*store_, plan);
  desk_.Customizes([&](frmCustomize& form) {
    plan.FailAt(1, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    form.cmdOK.Click();
  });
  EXPECT_FALSE(Customize(failing));
  EXPECT_EQ(desk_.platform.screen.messages.size(), 1U);
  EXPECT_THAT(desk_.Events(), IsEmpty());
}

TEST_F(CustomizeOperation, FailsToTheCallerWhereTheDialogFails) {
  desk_.Customizes([&](frmCustomize& form) {
    const auto rows = store_->OpenRecordset(kRows);
    Services().DeleteChartReportSubType(*store_, *rows, kRow);
    form.cmdReset.Click();
  });
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { Customize(); }));
  EXPECT_THAT(desk_.Events(), IsEmpty());
}

TEST_F(CustomizeOperation, FailsToTheCallerWhereTheRecordsetIsClosed) {
  const auto rows = store_->OpenRecordset(kRows);
  rows->Close();
  EXPECT_TRUE(Raises(FailureNumber::kObjectClosed, [&] {
    desk_.component.CustomizeChartReport(*store_, *rows, kRow, &desk_.chart, &desk_.report);
  }));
}

// ---- every row of a household

class RowOfAHousehold : public ::testing::TestWithParam<std::int32_t> {
 protected:
  // What a desk has seen of the row being drawn.
  void Show(Desk& desk) {
    const auto rows = store_->OpenRecordset(kRows);
    desk.component.ShowChartReport(*store_, *rows, GetParam(), &desk.chart, &desk.report,
                                   SubjectOfRow(GetParam()), 1);
  }
  bool Customize(Desk& desk) {
    const auto rows = store_->OpenRecordset(kRows);
    return desk.component.CustomizeChartReport(*store_, *rows, GetParam(), &desk.chart,
                                               &desk.report, SubjectOfRow(GetParam()), 1);
  }
  bool HasBeenCustomized() {
    const auto rows = store_->OpenRecordset(kRows);
    return Desk().component.ChartReportHasBeenCustomized(*rows, GetParam());
  }
  // Puts a range into the row that its number offers.
  void TakeAnOfferedRange() {
    const std::int32_t number = LongOf("ChartReportSubTypeAttr");
    SettingsChange change;
    change.lngDateRangeType =
        static_cast<std::int32_t>(Services().ChartReportSetting(number)->range);
    std::int32_t row = GetParam();
    const auto rows = store_->OpenRecordset(kRows);
    Services().SaveChartReportSubType(SaveMode::kChangeRow, *store_, *rows, row, change);
  }
  std::int32_t LongOf(std::string_view field) {
    return ToLong(FieldOf(*store_, GetParam(), field));
  }

  std::unique_ptr<Database> store_ = HouseholdWithEveryRow();
};

TEST_P(RowOfAHousehold, DrawsTheSameAfterOKWithoutAChange) {
  TakeAnOfferedRange();
  Desk before;
  Show(before);
  Desk after;
  after.Customizes([](frmCustomize& form) { form.cmdOK.Click(); });
  EXPECT_TRUE(Customize(after));
  EXPECT_THAT(after.platform.screen.messages, IsEmpty());
  EXPECT_EQ(after.Events(), before.Events());
}

TEST_P(RowOfAHousehold, IsUnchangedByOKWithoutAChange) {
  TakeAnOfferedRange();
  const auto fields = [&] {
    std::vector<Variant> values;
    for (const Column& column : FindTable(kRows)->columns) {
      values.push_back(FieldOf(*store_, GetParam(), column.name));
    }
    return values;
  };
  const auto before = fields();
  Desk desk;
  desk.Customizes([](frmCustomize& form) { form.cmdOK.Click(); });
  EXPECT_TRUE(Customize(desk));
  EXPECT_EQ(fields(), before);
}

TEST_P(RowOfAHousehold, HasNotBeenCustomizedOnceItIsReset) {
  Desk desk;
  desk.Customizes([](frmCustomize& form) {
    form.txtTitle.Type("Mine");
    form.cboRange.Pick(form.cboRange.ListIndex() == 0 ? 1 : 0);
    form.cmdOK.Click();
  });
  EXPECT_TRUE(Customize(desk));
  EXPECT_TRUE(HasBeenCustomized());
  desk.Customizes([](frmCustomize& form) { form.cmdReset.Click(); });
  EXPECT_TRUE(Customize(desk));
  EXPECT_FALSE(HasBeenCustomized());
}

TEST_P(RowOfAHousehold, DrawsTheSameAsAFavorite) {
  Desk before;
  Show(before);
  Desk after;
  after.AddsToFavorites([](frmAddToFavorites& form) { form.cmdOK.Click(); });
  const auto rows = store_->OpenRecordset(kRows);
  ASSERT_TRUE(after.component.AddToFavorites(*store_, *rows, GetParam(), "Favourite",
                                             SubjectOfRow(GetParam()), 1));
  const auto numbers = RowsOfEveryForm();
  const std::int32_t favorite = *std::ranges::max_element(numbers) + 1;
  after.component.ShowChartReport(*store_, *rows, favorite, &after.chart, &after.report);
  EXPECT_EQ(after.Events(), before.Events());
}

INSTANTIATE_TEST_SUITE_P(All, RowOfAHousehold, ::testing::ValuesIn(RowsOfEveryForm()));

// ---- adding to the favourites

class FavoritesOperation : public ::testing::Test {
 protected:
  std::unique_ptr<Database> store_ = StoreWith(DefaultRow(5));
  std::unique_ptr<Recordset> rows_ = store_->OpenRecordset(kRows);
  Desk desk_;
};

TEST_F(FavoritesOperation, IsTrueWhereAFavoriteWasSavedAndKeepsTheParameters) {
  desk_.AddsToFavorites([](frmAddToFavorites& form) {
    EXPECT_EQ(form.cboName.Text(), "Wealth");
    form.cmdOK.Click();
  });
  EXPECT_TRUE(desk_.component.AddToFavorites(*store_, *rows_, kRow, "Wealth", 7, "x"));
  EXPECT_EQ(FieldOf(*store_, kRow + 1, "ChartReportSubTypeName"), Variant("Wealth"));
  EXPECT_EQ(FieldOf(*store_, kRow + 1, "Parameter1"), Variant(7));
  EXPECT_EQ(FieldOf(*store_, kRow + 1, "Parameter2"), Variant("x"));
  EXPECT_THAT(desk_.Events(), IsEmpty());
}

TEST_F(FavoritesOperation, StartsWithoutANameAndStoresNullWhereTheCallerGivesNothing) {
  desk_.AddsToFavorites([](frmAddToFavorites& form) {
    EXPECT_EQ(form.cboName.Text(), "");
    form.cboName.Type("Wealth");
    form.cmdOK.Click();
  });
  EXPECT_TRUE(desk_.component.AddToFavorites(*store_, *rows_, kRow));
  EXPECT_EQ(FieldOf(*store_, kRow + 1, "Parameter1"), Variant(Null{}));
  EXPECT_EQ(FieldOf(*store_, kRow + 1, "Parameter2"), Variant(Null{}));
}

TEST_F(FavoritesOperation, IsFalseWhereTheUserCancels) {
  desk_.AddsToFavorites([](frmAddToFavorites& form) { form.cmdCancel.Click(); });
  EXPECT_FALSE(desk_.component.AddToFavorites(*store_, *rows_, kRow, "Wealth"));
  EXPECT_EQ(desk_.platform.screen.forms_shown, 1);
  EXPECT_EQ(rows_->RecordCount(), 1);
}

TEST_F(FavoritesOperation, IsFalseAndShowsNoDialogWhereThereIsNoSuchRow) {
  EXPECT_FALSE(desk_.component.AddToFavorites(*store_, *rows_, 99, "Wealth"));
  EXPECT_EQ(desk_.platform.screen.forms_shown, 0);
}

TEST_F(FavoritesOperation, IsFalseWhereTheSavingFails) {
  FailurePlan plan;
  FailingDatabase failing(*store_, plan);
  const auto rows = failing.OpenRecordset(kRows);
  desk_.AddsToFavorites([&](frmAddToFavorites& form) {
    constexpr std::int64_t kReadingTheSource = 12;
    plan.FailAt(kReadingTheSource + 1, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    form.cmdOK.Click();
  });
  EXPECT_FALSE(desk_.component.AddToFavorites(failing, *rows, kRow, "Wealth"));
  EXPECT_EQ(desk_.platform.screen.messages.size(), 1U);
  EXPECT_EQ(rows_->RecordCount(), 1);
}

TEST_F(FavoritesOperation, FailsToTheCallerWhereTheRecordsetIsClosed) {
  rows_->Close();
  EXPECT_TRUE(Raises(FailureNumber::kObjectClosed,
                     [&] { desk_.component.AddToFavorites(*store_, *rows_, kRow, "Wealth"); }));
}

// A favourite copies its source whole: a field that can't be had is a failure.
class FieldOfTheSource : public FavoritesOperation,
                         public ::testing::WithParamInterface<const char*> {};

TEST_P(FieldOfTheSource, ThatIsNullWhereANumberIsNeededFailsToTheCaller) {
  WatchedRows watched(*store_);
  desk_.AddsToFavorites([&](frmAddToFavorites& form) {
    watched.instead[GetParam()] = Null{};
    form.cmdOK.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_TRUE(Raises(FailureNumber::kInvalidUseOfNull,
                     [&] { desk_.component.AddToFavorites(*store_, watched, kRow, "Wealth"); }));
  EXPECT_EQ(rows_->RecordCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(All, FieldOfTheSource,
                         ::testing::Values("ChartReportSubTypeAttr", "ChartOrReportType",
                                           "ChartType", "DateRangeType"));

TEST(DialogOperations, FailWhereTheHostHasNoScreen) {
  const auto store = StoreWith(DefaultRow(5));
  const auto rows = store->OpenRecordset(kRows);
  Drawing without_screen;
  EXPECT_TRUE(Raises(FailureNumber::kObjectNotSet, [&] {
    without_screen.component.AddToFavorites(*store, *rows, kRow, "Wealth");
  }));
  EXPECT_TRUE(Raises(FailureNumber::kObjectNotSet,
                     [&] { without_screen.component.CustomizeChartReport(*store, *rows, kRow); }));
}

// ---- whether a row has been customized

struct CustomizedCase {
  const char* name;
  std::int32_t report_number;
  std::function<void(TestRow&)> change;
  bool customized;
};
void PrintTo(const CustomizedCase& test, std::ostream* out) { *out << test.name; }

class HasBeenCustomized : public ::testing::TestWithParam<CustomizedCase> {};

TEST_P(HasBeenCustomized, TellsWhetherTheRowDiffersFromTheDefaults) {
  TestRow row = DefaultRow(GetParam().report_number);
  GetParam().change(row);
  const auto store = StoreWith(row);
  const auto rows = store->OpenRecordset(kRows);
  EXPECT_EQ(Desk().component.ChartReportHasBeenCustomized(*rows, kRow), GetParam().customized);
}

INSTANTIATE_TEST_SUITE_P(
    All, HasBeenCustomized,
    ::testing::Values(
        CustomizedCase{"Nothing", 1, [](TestRow&) {}, false},
        CustomizedCase{"Output", 1, [](TestRow& row) { row.output = ChartOrReport::kChart; }, true},
        CustomizedCase{"ChartType", 1, [](TestRow& row) { row.chart_type = 0; }, true},
        CustomizedCase{"Legend", 1, [](TestRow& row) { row.legend = false; }, true},
        CustomizedCase{"Range", 1, [](TestRow& row) { row.range = 3; }, true},
        CustomizedCase{"Title", 1, [](TestRow& row) { row.title = "Mine"; }, true},
        CustomizedCase{"CaseOfTheTitle", 1,
                       [](TestRow& row) { row.title = "expenses by category"; }, true},
        CustomizedCase{"EmptyTitle", 1, [](TestRow& row) { row.title = ""; }, true},
        CustomizedCase{"NullTitle", 1, [](TestRow& row) { row.title = Null{}; }, false},
        CustomizedCase{"NullTitleAndAnotherLegend", 1,
                       [](TestRow& row) {
                         row.title = Null{};
                         row.legend = false;
                       },
                       true},
        CustomizedCase{"NumberThatIsNotUsed", 1, [](TestRow& row) { row.range_number = 9; }, false},
        CustomizedCase{"LastDays", 1,
                       [](TestRow& row) {
                         row.range = 13;
                         row.range_number = 9;
                       },
                       true},
        CustomizedCase{"Dates", 1,
                       [](TestRow& row) {
                         row.from = Day(2026, 1, 1);
                         row.to = Day(2026, 1, 2);
                       },
                       false},
        CustomizedCase{"Group", 1, [](TestRow& row) { row.group = 4; }, false},
        CustomizedCase{"Parameters", 29,
                       [](TestRow& row) {
                         row.group = 5;
                         row.parameter1 = 7;
                       },
                       false},
        CustomizedCase{"NumberWithoutChart", 7, [](TestRow&) {}, false},
        CustomizedCase{"ChartTypeWithoutChart", 7, [](TestRow& row) { row.chart_type = 1; }, true}),
    [](const auto& test) { return test.param.name; });

TEST(HasBeenCustomizedOperation, IsFalseForANumberThatThereIsNot) {
  const auto store = StoreWith(DefaultRow(1));
  const auto rows = store->OpenRecordset(kRows);
  EXPECT_FALSE(Desk().component.ChartReportHasBeenCustomized(*rows, 99));
}

TEST(HasBeenCustomizedOperation, IsFalseForEveryNumberAtItsDefaults) {
  for (const ReportDefaults& report : AllReportDefaults()) {
    const auto store = StoreWith(DefaultRow(report.number));
    const auto rows = store->OpenRecordset(kRows);
    EXPECT_FALSE(Desk().component.ChartReportHasBeenCustomized(*rows, kRow)) << report.number;
  }
}

TEST(HasBeenCustomizedOperation, ComparesNoNumberWhereTheKindOfRangeIsNull) {
  const auto store = StoreWith(DefaultRow(1));
  WatchedRows watched(*store);
  watched.instead["DateRangeType"] = Null{};
  watched.instead["DateRangeExtInfo"] = 9;
  EXPECT_FALSE(Desk().component.ChartReportHasBeenCustomized(watched, kRow));
}

TEST(HasBeenCustomizedOperation, FailsToTheCallerWhereverTheStoreFails) {
  const auto store = StoreWith(DefaultRow(1));
  std::int64_t operation = 1;
  for (;; ++operation) {
    FailurePlan plan;
    FailingDatabase failing(*store, plan);
    const auto rows = failing.OpenRecordset(kRows);
    plan.FailAt(operation, FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    const std::int32_t failure =
        ResumeNext([&] { Desk().component.ChartReportHasBeenCustomized(*rows, kRow); });
    if (!plan.HasFailed()) {
      EXPECT_EQ(failure, 0);
      break;
    }
    ASSERT_EQ(failure, static_cast<std::int32_t>(FailureNumber::kStoreUnusable)) << operation;
  }
  EXPECT_GT(operation, 9);
}

// ---- the length of a text

TEST(LenByte, CountsCharactersAndNoBytes) {
  Desk desk;
  EXPECT_EQ(desk.component.LenByte(""), Variant(0));
  EXPECT_EQ(desk.component.LenByte("abc"), Variant(3));
  EXPECT_EQ(desk.component.LenByte("图形报表"), Variant(4));
  EXPECT_EQ(desk.component.LenByte("a图 é"), Variant(4));
}

}  // namespace
}  // namespace vetlo
