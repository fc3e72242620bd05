#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <functional>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/failing_database.h"
#include "tests/support/raises.h"
#include "tests/support/small_store.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/forwarding.h"

namespace vetlo {
namespace {

using testing::Day;
using testing::SmallStore;

constexpr std::int32_t kMostFavorites = 100;
constexpr const char* kRows = "ChartReportSubType";

// The call that "Add to Favorites" makes.
SettingsChange Favorite(const std::string& name = "Favourite") {
  SettingsChange change;
  change.lngChartReportSubTypeAttr = 29;
  change.lngChartReportType = kFavoriteGroup;
  change.varChartReportSubTypeName = name;
  change.lngChartOrReportType = 0;
  change.lngChartType = 2;
  change.varLegend = true;
  change.varTitle = "A title";
  change.lngDateRangeType = 15;
  change.varDateRangeExtInfo = 6;
  change.varFromDate = Day(2026, 1, 1);
  change.varToDate = Day(2026, 2, 1);
  change.varParameter1 = 7;
  change.varParameter2 = "x";
  return change;
}

class SettingsRow : public ::testing::Test {
 protected:
  // Rows 3 and 10; row 10 has a value in every field.
  static SmallStore TwoRows() {
    SmallStore store;
    store.Row({.number = 3, .title = "three"})
        .Row({.number = 10,
              .report_number = 25,
              .output = ChartOrReport::kChart,
              .chart_type = 2,
              .legend = true,
              .title = "ten",
              .range = 13,
              .range_number = 90,
              .from = Day(2025, 1, 1),
              .to = Day(2025, 12, 31),
              .group = 5,
              .parameter1 = 11,
              .parameter2 = 12});
    return store;
  }

  void Add(const SettingsChange& change) {
    Services().SaveChartReportSubType(SaveMode::kAddRow, *store_, *rec_, number_, change);
  }
  void Change(std::int32_t number, const SettingsChange& change) {
    number_ = number;
    Services().SaveChartReportSubType(SaveMode::kChangeRow, *store_, *rec_, number_, change);
  }

  [[nodiscard]] std::int32_t CountOfRows() const {
    return store_->OpenRecordset(kRows)->RecordCount();
  }
  [[nodiscard]] Variant Field(std::int32_t number, std::string_view name) const {
    const auto rec = store_->OpenRecordset(kRows);
    rec->SetIndex(kPrimaryIndex);
    rec->Seek("=", number);
    return rec->Fields(name);
  }
  // All fields of a row but those named.
  [[nodiscard]] std::vector<Variant> FieldsBut(std::int32_t number,
                                               std::string_view name = "") const {
    std::vector<Variant> values;
    for (const Column& column : FindTable(kRows)->columns) {
      if (column.name != name) {
        values.push_back(Field(number, column.name));
      }
    }
    return values;
  }

  void Use(std::unique_ptr<Database> store) {
    rec_.reset();
    store_ = std::move(store);
    rec_ = store_->OpenRecordset(kRows);
  }

  std::unique_ptr<Database> store_ = TwoRows().Open();
  std::unique_ptr<Recordset> rec_ = store_->OpenRecordset(kRows);
  std::int32_t number_ = 77;
};

// ---- a new row

TEST_F(SettingsRow, ThatIsNewGetsTheNextNumberAndHandsItBack) {
  Add(Favorite());
  EXPECT_EQ(number_, 11);
  EXPECT_EQ(CountOfRows(), 3);
}

TEST_F(SettingsRow, ThatIsTheFirstGetsTheNumberOne) {
  Use(SmallStore().Open());
  Add(Favorite());
  EXPECT_EQ(number_, 1);
}

TEST_F(SettingsRow, ThatIsNewHoldsWhatWasGiven) {
  Add(Favorite());
  EXPECT_EQ(FieldsBut(number_),
            (std::vector<Variant>{11, "Favourite", kFavoriteGroup, 29, 0, 2, true, "A title", 15, 6,
                                  Day(2026, 1, 1), Day(2026, 2, 1), 7, "x"}));
}

TEST_F(SettingsRow, ThatIsNewHoldsNullForWhatWasLeftOut) {
  SettingsChange change;
  change.varLegend = false;
  Add(change);
  for (const char* field :
       {"ChartReportSubTypeName", "Title", "FromDate", "ToDate", "Parameter1", "Parameter2"}) {
    EXPECT_EQ(Field(number_, field), Variant(Null{})) << field;
  }
}

TEST_F(SettingsRow, ThatIsNewHoldsTheNumberThatStandsForNoChoice) {
  SettingsChange change;
  change.varLegend = false;
  Add(change);
  for (const char* field : {"ChartReportType", "ChartReportSubTypeAttr", "ChartOrReportType",
                            "ChartType", "DateRangeType"}) {
    EXPECT_EQ(Field(number_, field), Variant(kNothingChosen)) << field;
  }
}

TEST_F(SettingsRow, ThatIsNewLeavesTheOthersAlone) {
  const auto before = FieldsBut(10);
  Add(Favorite());
  EXPECT_EQ(FieldsBut(10), before);
}

TEST_F(SettingsRow, ThatCannotBeAddedLeavesTheNumberAsItWas) {
  SettingsChange change = Favorite();
  change.varLegend.reset();
  EXPECT_NE(ResumeNext([&] { Add(change); }), 0);
  EXPECT_EQ(number_, 77);
  EXPECT_EQ(CountOfRows(), 2);
}

TEST_F(SettingsRow, IsAddedAfterOneThatCouldNotBe) {
  SettingsChange change = Favorite();
  change.varLegend.reset();
  ResumeNext([&] { Add(change); });
  Add(Favorite());
  EXPECT_EQ(number_, 11);
}

TEST_F(SettingsRow, FindsANumberBehindTheHighest) {
  Use(SmallStore().Row({.number = std::numeric_limits<std::int32_t>::max()}).Open());
  const std::int32_t failure = ResumeNext([&] { Add(Favorite()); });
  EXPECT_TRUE(failure != 0 || number_ > 0);
  EXPECT_EQ(CountOfRows(), failure == 0 ? 2 : 1);
}

// ---- favourites

class FullFavorites : public SettingsRow {
 protected:
  static SmallStore Favorites(std::int32_t count) {
    SmallStore store = TwoRows();
    for (std::int32_t i = 0; i < count; ++i) {
      store.Row({.number = 100 + i, .group = kFavoriteGroup});
    }
    return store;
  }
};

TEST_F(FullFavorites, TakeTheHundredth) {
  Use(Favorites(kMostFavorites - 1).Open());
  Add(Favorite());
  EXPECT_EQ(CountOfRows(), 2 + kMostFavorites);
}

TEST_F(FullFavorites, TakeNoFurther) {
  Use(Favorites(kMostFavorites).Open());
  EXPECT_TRUE(Raises(FailureNumber::kTooManyFavorites, [&] { Add(Favorite()); }));
}

TEST_F(FullFavorites, HaveTheNumberThatTheirCallerLooksFor) {
  EXPECT_EQ(static_cast<std::uint32_t>(FailureNumber::kTooManyFavorites), 0x80040210U);
}

TEST_F(FullFavorites, LeaveTheStoreAsItWas) {
  Use(Favorites(kMostFavorites).Open());
  ResumeNext([&] { Add(Favorite()); });
  EXPECT_EQ(CountOfRows(), 2 + kMostFavorites);
  EXPECT_EQ(number_, 77);
}

TEST_F(FullFavorites, CanStillBeReplaced) {
  Use(Favorites(kMostFavorites).Open());
  Change(150, Favorite("Replaced"));
  EXPECT_EQ(Field(150, "ChartReportSubTypeName"), Variant("Replaced"));
}

// A store with a favourite "Mine" and a report "Worth".
class NamedFavorites : public SettingsRow {
 protected:
  NamedFavorites() {
    Use(SmallStore()
            .Row({.number = 5, .group = kFavoriteGroup})
            .Row({.number = 6, .group = 1})
            .Execute("UPDATE ChartReportSubType SET ChartReportSubTypeName = "
                     "iif(ChartReportSubTypeNumber = 5, 'Mine', 'Worth')")
            .Open());
  }
};

TEST_F(NamedFavorites, TakeNoSecondOfAName) {
  EXPECT_TRUE(Raises(FailureNumber::kDuplicateKey, [&] { Add(Favorite("Mine")); }));
  EXPECT_EQ(CountOfRows(), 2);
  EXPECT_EQ(number_, 77);
}

TEST_F(NamedFavorites, HaveTheNumberOfADuplicateKeyAndSayWhatToDo) {
  try {
    Add(Favorite("Mine"));
    FAIL() << "it was added";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), 3022);
    EXPECT_THAT(failure.what(), ::testing::HasSubstr("take another name"));
  }
}

TEST_F(NamedFavorites, ThatDifferInAnyLetterAreNotTheSame) {
  for (const char* const name : {"mine", "MINE", "Mine ", " Mine", "Mine2", "Min"}) {
    EXPECT_EQ(ResumeNext([&] { Add(Favorite(name)); }), 0) << name;
  }
}

TEST_F(NamedFavorites, MayBeCalledAsAReportIs) {
  EXPECT_EQ(ResumeNext([&] { Add(Favorite("Worth")); }), 0);
}

TEST_F(NamedFavorites, CanBeReplacedUnderTheirName) {
  EXPECT_EQ(ResumeNext([&] { Change(5, Favorite("Mine")); }), 0);
  EXPECT_EQ(CountOfRows(), 2);
}

TEST_F(NamedFavorites, WithoutANameAreNotOfOneName) {
  SettingsChange change = Favorite();
  change.varChartReportSubTypeName = Null{};
  Add(change);
  EXPECT_EQ(ResumeNext([&] { Add(change); }), 0);
}

TEST_F(NamedFavorites, AreNotCalledAsAReportThatIsAddedBesideThem) {
  SettingsChange report = Favorite("Mine");
  report.lngChartReportType = 1;
  EXPECT_EQ(ResumeNext([&] { Add(report); }), 0);
}

TEST_F(FullFavorites, SayThatTheyAreFullAlsoOfANameThatIsTaken) {
  Use(Favorites(kMostFavorites)
          .Execute("UPDATE ChartReportSubType SET ChartReportSubTypeName = 'Mine'")
          .Open());
  EXPECT_TRUE(Raises(FailureNumber::kTooManyFavorites, [&] { Add(Favorite("Mine")); }));
}

// ---- a row that changes

TEST_F(SettingsRow, ThatChangesHoldsWhatWasGiven) {
  Change(10, Favorite());
  EXPECT_EQ(number_, 10);
  EXPECT_EQ(FieldsBut(10),
            (std::vector<Variant>{10, "Favourite", kFavoriteGroup, 29, 0, 2, true, "A title", 15, 6,
                                  Day(2026, 1, 1), Day(2026, 2, 1), 7, "x"}));
}

TEST_F(SettingsRow, ThatChangesLeavesTheOthersAlone) {
  const auto before = FieldsBut(3);
  Change(10, Favorite());
  EXPECT_EQ(FieldsBut(3), before);
  EXPECT_EQ(CountOfRows(), 2);
}

struct OneChange {
  const char* field;
  std::function<void(SettingsChange&)> make;
  Variant expected;

  friend std::ostream& operator<<(std::ostream& out, const OneChange& change) {
    return out << change.field;
  }
};

class ChangedField : public SettingsRow, public ::testing::WithParamInterface<OneChange> {};

TEST_P(ChangedField, IsWritten) {
  SettingsChange change;
  GetParam().make(change);
  Change(10, change);
  EXPECT_EQ(Field(10, GetParam().field), GetParam().expected);
}

TEST_P(ChangedField, LeavesTheOtherFieldsAsTheyAre) {
  const auto before = FieldsBut(10, GetParam().field);
  SettingsChange change;
  GetParam().make(change);
  Change(10, change);
  EXPECT_EQ(FieldsBut(10, GetParam().field), before);
}

INSTANTIATE_TEST_SUITE_P(
    All, ChangedField,
    ::testing::Values(
        OneChange{"ChartReportSubTypeAttr",
                  [](SettingsChange& c) { c.lngChartReportSubTypeAttr = 1; }, 1},
        OneChange{"ChartReportType", [](SettingsChange& c) { c.lngChartReportType = 0; }, 0},
        OneChange{"ChartReportSubTypeName",
                  [](SettingsChange& c) { c.varChartReportSubTypeName = "n"; }, "n"},
        OneChange{"ChartOrReportType", [](SettingsChange& c) { c.lngChartOrReportType = 1; }, 1},
        OneChange{"ChartType", [](SettingsChange& c) { c.lngChartType = 0; }, 0},
        OneChange{"Legend", [](SettingsChange& c) { c.varLegend = false; }, false},
        OneChange{"Title", [](SettingsChange& c) { c.varTitle = ""; }, ""},
        OneChange{"DateRangeType", [](SettingsChange& c) { c.lngDateRangeType = 0; }, 0},
        OneChange{"DateRangeExtInfo", [](SettingsChange& c) { c.varDateRangeExtInfo = 1; }, 1},
        OneChange{"FromDate", [](SettingsChange& c) { c.varFromDate = Day(2026, 3, 1); },
                  Day(2026, 3, 1)},
        OneChange{"ToDate", [](SettingsChange& c) { c.varToDate = Day(2026, 3, 1); },
                  Day(2026, 3, 1)},
        OneChange{"Parameter1", [](SettingsChange& c) { c.varParameter1 = Null{}; }, Null{}},
        OneChange{"Parameter2", [](SettingsChange& c) { c.varParameter2 = 1.5; }, 1.5}),
    [](const auto& test) { return test.param.field; });

TEST_F(SettingsRow, StaysAsItIsWhereNothingChanges) {
  const auto before = FieldsBut(10);
  EXPECT_EQ(ResumeNext([&] { Change(10, SettingsChange{}); }), 0);
  EXPECT_EQ(FieldsBut(10), before);
}

TEST_F(SettingsRow, ThatIsGoneCannotChange) {
  EXPECT_TRUE(Raises(FailureNumber::kNoCurrentRecord, [&] { Change(4, Favorite()); }));
  EXPECT_EQ(CountOfRows(), 2);
  EXPECT_EQ(number_, 4);
}

TEST_F(SettingsRow, ChangesAfterOneThatWasGone) {
  ResumeNext([&] { Change(4, Favorite()); });
  Change(3, Favorite("again"));
  EXPECT_EQ(Field(3, "ChartReportSubTypeName"), Variant("again"));
}

// ---- dates

class SavedDate : public SettingsRow, public ::testing::WithParamInterface<Variant> {};

TEST_P(SavedDate, ThatIsNoBoundIsStoredAsNull) {
  SettingsChange change;
  change.varFromDate = GetParam();
  change.varToDate = GetParam();
  Change(10, change);
  EXPECT_EQ(Field(10, "FromDate"), Variant(Null{}));
  EXPECT_EQ(Field(10, "ToDate"), Variant(Null{}));
}

INSTANTIATE_TEST_SUITE_P(All, SavedDate,
                         ::testing::Values(Variant(Services().EarliestDate()),
                                           Variant(Services().LatestDate()), Variant(Null{})));

TEST_F(SettingsRow, KeepsADateBesideASentinel) {
  SettingsChange change;
  change.varFromDate = AddDays(Services().EarliestDate(), 1);
  change.varToDate = AddDays(Services().LatestDate(), -1);
  Change(10, change);
  EXPECT_EQ(Field(10, "FromDate"), *change.varFromDate);
  EXPECT_EQ(Field(10, "ToDate"), *change.varToDate);
}

// ---- whole or not at all

TEST_F(SettingsRow, IsLeftAsItWasByAValueThatCannotBeStored) {
  const auto before = FieldsBut(10);
  for (const auto& spoil : std::vector<std::function<void(SettingsChange&)>>{
           [](SettingsChange& c) { c.varDateRangeExtInfo = "many"; },
           [](SettingsChange& c) { c.varFromDate = "soon"; },
           [](SettingsChange& c) { c.varFromDate = 1e10; },
           [](SettingsChange& c) { c.varLegend = Null{}; },
           [](SettingsChange& c) { c.varLegend = "yes"; }}) {
    SettingsChange change = Favorite();
    spoil(change);
    EXPECT_NE(ResumeNext([&] { Change(10, change); }), 0);
    EXPECT_EQ(FieldsBut(10), before);
  }
}

TEST_F(SettingsRow, IsLeftAsItWasWhereverTheStoreFails) {
  const auto before = FieldsBut(10);
  for (std::int64_t operation = 1;; ++operation) {
    testing::FailurePlan plan;
    plan.FailAt(operation, testing::FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    testing::FailingDatabase failing(*store_, plan);
    std::int32_t number = 10;
    const std::int32_t failure = ResumeNext([&] {
      const auto rec = failing.OpenRecordset(kRows);
      Services().SaveChartReportSubType(SaveMode::kChangeRow, failing, *rec, number, Favorite());
    });
    if (failure == 0) {
      break;
    }
    ASSERT_EQ(FieldsBut(10), before) << operation;
  }
  EXPECT_NE(FieldsBut(10), before);
}

TEST_F(SettingsRow, IsNotAddedWhereverTheStoreFails) {
  for (std::int64_t operation = 1;; ++operation) {
    testing::FailurePlan plan;
    plan.FailAt(operation, testing::FailurePlan::Repeat::kOnce, FailureNumber::kStoreUnusable);
    testing::FailingDatabase failing(*store_, plan);
    const std::int32_t failure = ResumeNext([&] {
      const auto rec = failing.OpenRecordset(kRows);
      Services().SaveChartReportSubType(SaveMode::kAddRow, failing, *rec, number_, Favorite());
    });
    if (failure == 0) {
      break;
    }
    ASSERT_EQ(CountOfRows(), 2) << operation;
    ASSERT_EQ(number_, 77) << operation;
  }
  EXPECT_EQ(CountOfRows(), 3);
}

TEST_F(SettingsRow, CannotChangeWhileTheStoreIsBeingRead) {
  const Snapshot snapshot(*store_);
  EXPECT_TRUE(Raises(FailureNumber::kInvalidCall, [&] { Change(10, Favorite()); }));
}

TEST_F(SettingsRow, CannotChangeThroughARecordsetThatIsClosed) {
  rec_->Close();
  EXPECT_TRUE(Raises(FailureNumber::kObjectClosed, [&] { Change(10, Favorite()); }));
}

// ---- files

class SettingsRowOfAFile : public ::testing::TestWithParam<SaveMode> {
 protected:
  SettingsRowOfAFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "rows_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("no folder for the test");
    }
    folder_ = pattern;
    StoreBuilder builder(Path());
    builder.Insert(kRows, {{"ChartReportSubTypeNumber", 1},
                           {"ChartReportType", 1},
                           {"ChartReportSubTypeAttr", 1},
                           {"ChartOrReportType", 1},
                           {"ChartType", 1},
                           {"Legend", false},
                           {"Title", "old"},
                           {"DateRangeType", 0}});
    builder.Finish();
  }
  ~SettingsRowOfAFile() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  [[nodiscard]] std::string Path() const { return (folder_ / "store").string(); }

  void Save(StoreAccess access) const {
    const auto store = OpenStore(Path(), access);
    const auto rec = store->OpenRecordset(kRows);
    std::int32_t number = 1;
    Services().SaveChartReportSubType(GetParam(), *store, *rec, number, Favorite());
  }

  // The titles of all rows.
  [[nodiscard]] std::string Titles() const {
    std::string titles;
    const auto store = OpenStore(Path(), StoreAccess::kReadOnly);
    ForEachRowOf(*store, kRows, [&](Recordset& rec) { titles += TextField(rec, "Title") + ";"; });
    return titles;
  }

  std::filesystem::path folder_;
};

INSTANTIATE_TEST_SUITE_P(Modes, SettingsRowOfAFile,
                         ::testing::Values(SaveMode::kAddRow, SaveMode::kChangeRow));

TEST_P(SettingsRowOfAFile, IsThereForTheNextReader) {
  Save(StoreAccess::kReadWrite);
  EXPECT_EQ(Titles(), GetParam() == SaveMode::kAddRow ? "old;A title;" : "A title;");
}

// A store that takes every change and then cannot make it last.
class UncommittingDatabase : public ForwardingDatabase {
 public:
  using ForwardingDatabase::ForwardingDatabase;
  void CommitTrans() override { throw Failure(FailureNumber::kStoreUnusable); }
};

TEST_P(SettingsRowOfAFile, IsAsItWasWhereTheChangeCannotBeMadeToLast) {
  const auto store = OpenStore(Path(), StoreAccess::kReadWrite);
  UncommittingDatabase uncommitting(*store);
  const auto rec = uncommitting.OpenRecordset(kRows);
  std::int32_t number = 1;
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] {
    Services().SaveChartReportSubType(GetParam(), uncommitting, *rec, number, Favorite());
  }));
  EXPECT_EQ(number, 1);
  EXPECT_EQ(Titles(), "old;");
}

TEST_P(SettingsRowOfAFile, CannotBeWrittenToAStoreOpenForReading) {
  EXPECT_TRUE(Raises(FailureNumber::kStoreUnusable, [&] { Save(StoreAccess::kReadOnly); }));
  EXPECT_EQ(Titles(), "old;");
}

}  // namespace
}  // namespace vetlo
