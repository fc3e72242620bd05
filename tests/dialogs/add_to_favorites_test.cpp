#include "vetlo/dialogs/add_to_favorites.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>

#include "tests/support/failing_database.h"
#include "tests/support/played_screen.h"
#include "tests/support/small_store.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/model.h"

namespace vetlo {
namespace {

using namespace vetlo::testing;  // NOLINT: the tests speak in its words throughout
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Message = PlayedScreen::Message;

constexpr std::int32_t kSource = 10;
constexpr std::int32_t kTrips = 20;
constexpr std::int32_t kFood = 21;
constexpr std::int32_t kNewRow = 23;
constexpr const char* kRows = "ChartReportSubType";

Message Warning(const std::string& text) {
  return {text, MsgBoxButtons::kOkOnly, MsgBoxSymbol::kWarning};
}
Message Critical(const std::string& text) {
  return {text, MsgBoxButtons::kOkOnly, MsgBoxSymbol::kCritical};
}
Message Question(const std::string& text) {
  return {text, MsgBoxButtons::kYesNo, MsgBoxSymbol::kQuestion};
}

const Message kNameMissing = Warning("名称不能为空。请输入一个非空的名称。");
const Message kNameTooLong = Warning(
    "图形报表名称最多只能有50个字符（注：一个汉字视为2个字符）。请输入一个在此范围内的名称。");
const Message kReplaceTrips = Question("您真的要替换“Trips”吗？");
const Message kTooMany = Warning(
    "您已建立了很多的图形报表类型，因此已不能新建图形报表类型。您可以先删除其他图形报表类型，"
    "然后建立此图形报表类型。");
const Message kAddFailed = Critical(
    "不能建立图形报表类型，您可以用其他图形报表类型名称试一试。如果还有问题，请与程序开发商联系。");
const Message kReplaceFailed = Critical(
    "不能更改图形报表类型，您可以用其他图形报表类型名称试一试。如果还有问题，请与程序开发商联系。");

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) {
    all += text;
  }
  return all;
}

StoreBuilder::Values NamedRow(std::int32_t number, const Variant& name, std::int32_t group) {
  return {{"ChartReportSubTypeNumber", number},
          {"ChartReportSubTypeName", name},
          {"ChartReportType", group},
          {"ChartReportSubTypeAttr", 5},
          {"ChartOrReportType", 1},
          {"ChartType", 1},
          {"Legend", false},
          {"Title", "old"},
          {"DateRangeType", 0}};
}

// The dialog on a source row, with two favourites and a named row that is none.
class AddToFavorites : public ::testing::Test {
 protected:
  using User = std::function<void(frmAddToFavorites&)>;

  static SmallStore Household() {
    SmallStore store;
    store
        .Row({.number = kSource,
              .report_number = 29,
              .output = ChartOrReport::kChart,
              .chart_type = 2,
              .legend = true,
              .title = "A category",
              .range = 15,
              .range_number = 6,
              .from = Day(2026, 1, 1),
              .to = Day(2026, 2, 1),
              .group = 5})
        .Insert(kRows, NamedRow(kTrips, "Trips", kFavoriteGroup))
        .Insert(kRows, NamedRow(kFood, "Food", kFavoriteGroup))
        .Insert(kRows, NamedRow(22, "No favourite", 1));
    return store;
  }

  void Show(const User& user) {
    const auto rows = store_->OpenRecordset(kRows);
    Show(*store_, *rows, user);
  }
  void Show(Database& store, Recordset& rows, const User& user) {
    frmAddToFavorites form(platform_);
    form.lngChartReportSubTypeNumber = source_;
    form.recChartReportSubType = &rows;
    form.strDefaultName = default_name_;
    form.dbDov = &store;
    form.varParameter1 = 7;
    form.varParameter2 = "x";
    platform_.screen.user = [&](Form&) { user(form); };
    failure_ = ResumeNext([&] { form.ShowModal(platform_.screen); });
    cancelled_ = form.blnCancelled();
    EXPECT_FALSE(form.Visible());
  }
  // The dialog accepted under a name; whether it is still open then.
  bool AcceptAs(const std::string& name) {
    bool open = false;
    Show([&](frmAddToFavorites& form) {
      form.cboName.Type(name);
      form.cmdOK.Click();
      open = form.Visible();
      name_has_focus_ = form.cboName.HasFocus();
    });
    return open;
  }

  [[nodiscard]] std::int32_t CountOfRows() const {
    return store_->OpenRecordset(kRows)->RecordCount();
  }
  [[nodiscard]] std::vector<Variant> FieldsOf(std::int32_t number) const {
    const auto rows = store_->OpenRecordset(kRows);
    rows->SetIndex(kPrimaryIndex);
    rows->Seek("=", number);
    std::vector<Variant> values;
    for (const Column& column : FindTable(kRows)->columns) {
      values.push_back(rows->Fields(column.name));
    }
    return values;
  }
  // What a favourite of the source row holds.
  static std::vector<Variant> Favorite(std::int32_t number, const std::string& name) {
    return {number,
            name,
            kFavoriteGroup,
            29,
            0,
            2,
            true,
            "A category",
            15,
            6,
            Day(2026, 1, 1),
            Day(2026, 2, 1),
            7,
            "x"};
  }
  [[nodiscard]] const std::vector<Message>& Messages() const { return platform_.screen.messages; }

  PlayedPlatform platform_;
  std::unique_ptr<Database> store_ = Household().Open();
  std::int32_t source_ = kSource;
  std::string default_name_;
  std::int32_t failure_ = 0;
  bool cancelled_ = false;
  bool name_has_focus_ = false;
};

// ---- what the form holds

TEST(AddToFavoritesForm, HasTheseControlsInThisOrder) {
  PlayedPlatform platform;
  const frmAddToFavorites form(platform);
  EXPECT_EQ(form.Caption(), "Add to Favorites");
  const std::vector<std::array<std::string, 2>> expected = {
      {"lblDescription",
       "Type a name for the report or chart. Quillmarsh will remember your customization."},
      {"lblName", "&Name:"},
      {"cboName", ""},
      {"cmdOK", "OK"},
      {"cmdCancel", "Cancel"},
  };
  std::vector<std::array<std::string, 2>> controls;
  for (const Control* control : form.Controls()) {
    controls.push_back({control->Name(), control->Caption()});
    EXPECT_EQ(control->GetContainer(), nullptr) << control->Name();
  }
  EXPECT_EQ(controls, expected);
}

TEST(AddToFavoritesForm, HasControlsOfTheseKinds) {
  PlayedPlatform platform;
  const frmAddToFavorites form(platform);
  EXPECT_NE(form.Find<ComboBox>("cboName"), nullptr);
  EXPECT_NE(form.Find<Button>("cmdOK"), nullptr);
  EXPECT_NE(form.Find<Button>("cmdCancel"), nullptr);
}

TEST(AddToFavoritesForm, IsCancelledUntilSomethingIsSaved) {
  PlayedPlatform platform;
  EXPECT_TRUE(frmAddToFavorites(platform).blnCancelled());
}

// ---- setting it up

TEST_F(AddToFavorites, ListsTheFavoritesWithTheNumbersOfTheirRows) {
  Show([](frmAddToFavorites& form) {
    std::vector<std::string> listed;
    for (const ListControl::Entry& entry : form.cboName.Entries()) {
      listed.push_back(entry.text + " " + std::to_string(entry.item_data));
    }
    EXPECT_THAT(listed, ElementsAre("Trips 20", "Food 21"));
  });
}

TEST_F(AddToFavorites, ShowsAFavoriteWithoutANameAsEmpty) {
  store_ = Household().Insert(kRows, NamedRow(30, Null{}, kFavoriteGroup)).Open();
  Show([](frmAddToFavorites& form) { EXPECT_EQ(form.cboName.Entries().back().text, ""); });
}

TEST_F(AddToFavorites, StartsWithTheNameThatItIsGiven) {
  default_name_ = "My trips";
  Show([](frmAddToFavorites& form) {
    EXPECT_EQ(form.cboName.Text(), "My trips");
    EXPECT_TRUE(form.cboName.HasFocus());
    EXPECT_TRUE(form.cmdOK.Enabled());
  });
}

TEST_F(AddToFavorites, CannotBeAcceptedWhileItStartsWithoutAName) {
  default_name_ = "  ";
  Show([](frmAddToFavorites& form) { EXPECT_FALSE(form.cmdOK.Enabled()); });
}

TEST_F(AddToFavorites, IsCancelledUnshownWhereTheSourceRowIsGone) {
  source_ = 99;
  Show([](frmAddToFavorites&) { FAIL() << "it has shown"; });
  EXPECT_EQ(platform_.screen.forms_shown, 0);
  EXPECT_EQ(failure_, 0);
  EXPECT_TRUE(cancelled_);
}

TEST_F(AddToFavorites, ThatFailsWhileItIsSetUpFailsToTheCallerUnshown) {
  std::int64_t operation = 1;
  for (;; ++operation) {
    platform_.screen.forms_shown = 0;
    FailurePlan plan;
    FailingDatabase failing(*store_, plan);
    const auto rows = failing.OpenRecordset(kRows);
    plan.FailAt(operation, FailurePlan::Repeat::kFromThenOn, FailureNumber::kStoreUnusable);
    Show(failing, *rows, [](frmAddToFavorites&) {});
    if (!plan.HasFailed()) {
      break;
    }
    ASSERT_EQ(failure_, static_cast<std::int32_t>(FailureNumber::kStoreUnusable)) << operation;
    ASSERT_EQ(platform_.screen.forms_shown, 0) << operation;
    ASSERT_TRUE(cancelled_) << operation;
  }
  EXPECT_GT(operation, 8);
  EXPECT_EQ(failure_, 0);
}

// ---- the name

TEST_F(AddToFavorites, CanBeAcceptedExactlyWhileTheNameIsNotBlank) {
  Show([](frmAddToFavorites& form) {
    EXPECT_FALSE(form.cmdOK.Enabled());
    form.cboName.Type("a");
    EXPECT_TRUE(form.cmdOK.Enabled());
    form.cboName.Type("   ");
    EXPECT_FALSE(form.cmdOK.Enabled());
    form.cboName.Pick(1);
    EXPECT_TRUE(form.cmdOK.Enabled());
    form.cboName.Type("");
    EXPECT_FALSE(form.cmdOK.Enabled());
  });
}

TEST_F(AddToFavorites, TrimsTheNameThatIsLeft) {
  Show([](frmAddToFavorites& form) {
    form.cboName.Type("  My trips ");
    EXPECT_EQ(form.cboName.Text(), "  My trips ");
    form.Tab();
    EXPECT_EQ(form.cboName.Text(), "My trips");
  });
}

TEST_F(AddToFavorites, TrimsTheNameHoweverOKIsReached) {
  Show([](frmAddToFavorites& form) {
    form.cboName.Type("  Trips ");
    form.cmdOK.on_click();
  });
  EXPECT_THAT(Messages(), ElementsAre(kReplaceTrips));
}

TEST_F(AddToFavorites, CannotBeAcceptedUnderABlankName) {
  EXPECT_TRUE(AcceptAs("   "));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(CountOfRows(), 4);
  EXPECT_TRUE(cancelled_);
}

TEST_F(AddToFavorites, RefusesABlankNameHoweverOKIsReached) {
  Show([](frmAddToFavorites& form) {
    form.cboName.Type("   ");
    form.MoveFocus(form.cmdCancel);
    form.cmdOK.on_click();
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.cboName.HasFocus());
    EXPECT_EQ(form.cboName.Text(), "");
  });
  EXPECT_THAT(Messages(), ElementsAre(kNameMissing));
  EXPECT_TRUE(cancelled_);
}

TEST_F(AddToFavorites, TakesANameOfTheColumnsLengthInCharacters) {
  const std::string name = Repeated("图", 50);
  EXPECT_FALSE(AcceptAs(name));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(FieldsOf(kNewRow), Favorite(kNewRow, name));
}

TEST_F(AddToFavorites, RefusesANameBeyondTheColumnsLength) {
  for (const char* character : {"图", "x"}) {
    platform_.screen.messages.clear();
    EXPECT_TRUE(AcceptAs(Repeated(character, 51)));
    EXPECT_TRUE(name_has_focus_);
    EXPECT_THAT(Messages(), ElementsAre(kNameTooLong));
    EXPECT_EQ(CountOfRows(), 4);
    EXPECT_TRUE(cancelled_);
  }
}

TEST_F(AddToFavorites, DoesNotMeasureANameThatIsThereAlready) {
  const std::string name = Repeated("图", 51);
  store_ = Household().Insert(kRows, NamedRow(30, name, kFavoriteGroup)).Open();
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  EXPECT_FALSE(AcceptAs(name));
  EXPECT_THAT(Messages(), ElementsAre(Question("您真的要替换“" + name + "”吗？")));
}

TEST_F(AddToFavorites, MeasuresTheNameWithoutItsOuterBlanks) {
  EXPECT_FALSE(AcceptAs("  " + Repeated("x", 50) + "  "));
  EXPECT_FALSE(cancelled_);
}

// ---- a new favourite

TEST_F(AddToFavorites, AddsAFavoriteWithTheSettingsOfTheRowAndTheParametersOfTheCaller) {
  EXPECT_FALSE(AcceptAs(" My trips "));
  EXPECT_FALSE(cancelled_);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(CountOfRows(), 5);
  EXPECT_EQ(FieldsOf(kNewRow), Favorite(kNewRow, "My trips"));
}

TEST_F(AddToFavorites, LeavesTheSourceRowAsItIs) {
  const auto before = FieldsOf(kSource);
  AcceptAs("My trips");
  EXPECT_EQ(FieldsOf(kSource), before);
}

TEST_F(AddToFavorites, TakesANameThatDiffersInCaseForANewOne) {
  const auto trips = FieldsOf(kTrips);
  EXPECT_FALSE(AcceptAs("trips"));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(FieldsOf(kNewRow), Favorite(kNewRow, "trips"));
  EXPECT_EQ(FieldsOf(kTrips), trips);
}

TEST_F(AddToFavorites, TakesTheNameOfARowThatIsNoFavoriteForANewOne) {
  EXPECT_FALSE(AcceptAs("No favourite"));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(CountOfRows(), 5);
}

TEST_F(AddToFavorites, KeepsTheReportNumberFromFavoriteToFavorite) {
  AcceptAs("First");
  source_ = kNewRow;
  AcceptAs("Second");
  EXPECT_EQ(FieldsOf(kNewRow + 1), Favorite(kNewRow + 1, "Second"));
}

TEST_F(AddToFavorites, CopiesNullsAsTheyStand) {
  store_ = SmallStore().Row({.number = kSource, .title = Null{}}).Open();
  AcceptAs("Untitled");
  EXPECT_FALSE(cancelled_);
  EXPECT_EQ(FieldsOf(kSource + 1),
            (std::vector<Variant>{kSource + 1, "Untitled", kFavoriteGroup, 5, 1, 1, false, Null{},
                                  0, 1, Null{}, Null{}, 7, "x"}));
}

TEST_F(AddToFavorites, SavesUnderTheHourglassAndBringsThePointerBack) {
  platform_.screen.SetMousePointer(5);
  AcceptAs("My trips");
  EXPECT_THAT(platform_.screen.pointers, ElementsAre(5, 11, 5));
}

TEST_F(AddToFavorites, WritesNothingWhereItIsCancelled) {
  Show([](frmAddToFavorites& form) {
    form.cboName.Type("My trips");
    form.cmdCancel.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_TRUE(cancelled_);
  EXPECT_EQ(CountOfRows(), 4);
  EXPECT_THAT(platform_.screen.pointers, IsEmpty());
}

// ---- in the place of another

TEST_F(AddToFavorites, ReplacesTheFavoriteOfThatNameWhereTheUserSaysYes) {
  const auto food = FieldsOf(kFood);
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  EXPECT_FALSE(AcceptAs(" Trips "));
  EXPECT_FALSE(cancelled_);
  EXPECT_THAT(Messages(), ElementsAre(kReplaceTrips));
  EXPECT_EQ(CountOfRows(), 4);
  EXPECT_EQ(FieldsOf(kTrips), Favorite(kTrips, "Trips"));
  EXPECT_EQ(FieldsOf(kFood), food);
}

TEST_F(AddToFavorites, ReplacesAFavoriteThatIsPicked) {
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  Show([](frmAddToFavorites& form) {
    form.cboName.Pick(1);
    form.cmdOK.Click();
  });
  EXPECT_THAT(Messages(), ElementsAre(Question("您真的要替换“Food”吗？")));
  EXPECT_EQ(FieldsOf(kFood), Favorite(kFood, "Food"));
}

TEST_F(AddToFavorites, StaysOpenWithTheFocusInTheNameWhereTheUserSaysNo) {
  const auto before = FieldsOf(kTrips);
  platform_.screen.answers = {MsgBoxAnswer::kNo};
  EXPECT_TRUE(AcceptAs("Trips"));
  EXPECT_TRUE(name_has_focus_);
  EXPECT_THAT(Messages(), ElementsAre(kReplaceTrips));
  EXPECT_EQ(FieldsOf(kTrips), before);
  EXPECT_TRUE(cancelled_);
  EXPECT_THAT(platform_.screen.pointers, IsEmpty());
}

TEST_F(AddToFavorites, TakesAnotherNameAfterANo) {
  Show([](frmAddToFavorites& form) {
    form.cboName.Type("Trips");
    form.cmdOK.Click();
    form.cboName.Type("Trips 2");
    form.cmdOK.Click();
  });
  EXPECT_FALSE(cancelled_);
  EXPECT_EQ(FieldsOf(kNewRow), Favorite(kNewRow, "Trips 2"));
}

TEST_F(AddToFavorites, ReplacesTheFirstOfTwoOfTheSameName) {
  store_ = Household().Insert(kRows, NamedRow(30, "Trips", kFavoriteGroup)).Open();
  const auto second = FieldsOf(30);
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  Show([](frmAddToFavorites& form) {
    form.cboName.Pick(2);
    form.cmdOK.Click();
  });
  EXPECT_EQ(FieldsOf(kTrips), Favorite(kTrips, "Trips"));
  EXPECT_EQ(FieldsOf(30), second);
}

TEST_F(AddToFavorites, CanReplaceTheFavoriteThatIsItsOwnSource) {
  source_ = kTrips;
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  EXPECT_FALSE(AcceptAs("Trips"));
  EXPECT_FALSE(cancelled_);
  EXPECT_EQ(FieldsOf(kTrips), (std::vector<Variant>{kTrips, "Trips", kFavoriteGroup, 5, 1, 1, false,
                                                    "old", 0, 1, Null{}, Null{}, 7, "x"}));
}

// ---- failures

class FullFavorites : public AddToFavorites {
 protected:
  FullFavorites() {
    SmallStore store = Household();
    for (std::int32_t i = 0; i < 98; ++i) {
      store.Insert(kRows, NamedRow(100 + i, "Favourite " + std::to_string(i), kFavoriteGroup));
    }
    store_ = store.Open();
  }
};

TEST_F(FullFavorites, TakeNoFurtherAndEndTheDialog) {
  EXPECT_FALSE(AcceptAs("One more"));
  EXPECT_THAT(Messages(), ElementsAre(kTooMany));
  EXPECT_TRUE(cancelled_);
  EXPECT_EQ(failure_, 0);
  EXPECT_EQ(CountOfRows(), 102);
  EXPECT_THAT(platform_.screen.pointers, ElementsAre(11, 0));
}

TEST_F(FullFavorites, CanStillBeReplaced) {
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  EXPECT_FALSE(AcceptAs("Trips"));
  EXPECT_FALSE(cancelled_);
  EXPECT_THAT(Messages(), ElementsAre(kReplaceTrips));
}

TEST_F(AddToFavorites, TellsThatAFavoriteThatIsGoneCannotBeReplaced) {
  platform_.screen.answers = {MsgBoxAnswer::kYes};
  const auto rows = store_->OpenRecordset(kRows);
  Show([&](frmAddToFavorites& form) {
    Services().DeleteChartReportSubType(*store_, *rows, kTrips);
    form.cboName.Type("Trips");
    form.cmdOK.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_THAT(Messages(), ElementsAre(kReplaceTrips, kReplaceFailed));
  EXPECT_TRUE(cancelled_);
  EXPECT_EQ(failure_, 0);
}

TEST_F(AddToFavorites, TellsThatANameCannotBeTakenThatAnotherTookWhileItShowed) {
  const auto rows = store_->OpenRecordset(kRows);
  Show([&](frmAddToFavorites& form) {
    SettingsChange other;
    other.lngChartReportType = kFavoriteGroup;
    other.varChartReportSubTypeName = "My trips";
    other.varLegend = false;
    std::int32_t number = 0;
    Services().SaveChartReportSubType(SaveMode::kAddRow, *store_, *rows, number, other);
    form.cboName.Type("My trips");
    form.cmdOK.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_THAT(Messages(), ElementsAre(kAddFailed));
  EXPECT_TRUE(cancelled_);
  EXPECT_EQ(failure_, 0);
  EXPECT_EQ(CountOfRows(), 5);
}

TEST_F(AddToFavorites, FailsToTheCallerWhereTheSourceRowGoesWhileItShows) {
  const auto rows = store_->OpenRecordset(kRows);
  Show([&](frmAddToFavorites& form) {
    Services().DeleteChartReportSubType(*store_, *rows, kSource);
    form.cboName.Type("My trips");
    form.cmdOK.Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(failure_, static_cast<std::int32_t>(FailureNumber::kNoCurrentRecord));
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_TRUE(cancelled_);
}

struct FailingName {
  const char* name;
  FailurePlan::Repeat repeat;
  std::vector<Message> messages;
};
void PrintTo(const FailingName& test, std::ostream* out) { *out << test.name; }

// Accepts under a name while the store fails at its n-th operation, or from then on.
class FailingFavorite : public AddToFavorites, public ::testing::WithParamInterface<FailingName> {
 protected:
  // False once the operation lies beyond all that were made.
  bool Accept(std::int64_t operation) {
    platform_.screen.messages.clear();
    platform_.screen.pointers.clear();
    platform_.screen.answers = {MsgBoxAnswer::kYes};
    plan_.NeverFail();
    const auto rows = failing_.OpenRecordset(kRows);
    Show(failing_, *rows, [&](frmAddToFavorites& form) {
      form.cboName.Type(GetParam().name);
      plan_.FailAt(operation, GetParam().repeat, FailureNumber::kStoreUnusable);
      form.cmdOK.Click();
      EXPECT_FALSE(form.Visible());
    });
    const bool failed = plan_.HasFailed();
    plan_.NeverFail();
    return failed;
  }

  FailurePlan plan_;
  FailingDatabase failing_{*store_, plan_};
};

// Until the source row is read a failure is none of the saving, and reaches the caller.
TEST_P(FailingFavorite, LeavesTheStoreTellsTheUserAndEndsTheDialog) {
  constexpr std::int64_t kReadingTheSource = 3 + 9;
  const auto trips = FieldsOf(kTrips);
  std::int64_t operation = 1;
  for (; Accept(operation); ++operation) {
    ASSERT_EQ(CountOfRows(), 4) << operation;
    ASSERT_EQ(FieldsOf(kTrips), trips) << operation;
    ASSERT_TRUE(cancelled_) << operation;
    const bool reading = platform_.screen.pointers.empty();
    ASSERT_EQ(reading, operation <= kReadingTheSource) << operation;
    if (reading) {
      ASSERT_EQ(failure_, static_cast<std::int32_t>(FailureNumber::kStoreUnusable)) << operation;
    } else {
      ASSERT_EQ(failure_, 0) << operation;
      ASSERT_THAT(platform_.screen.pointers, ElementsAre(11, 0)) << operation;
      ASSERT_EQ(Messages(), GetParam().messages) << operation;
    }
  }
  EXPECT_GT(operation, kReadingTheSource + 10);
  EXPECT_FALSE(cancelled_);
}

INSTANTIATE_TEST_SUITE_P(
    All, FailingFavorite,
    ::testing::Values(
        FailingName{"My trips", FailurePlan::Repeat::kOnce, {kAddFailed}},
        FailingName{"My trips", FailurePlan::Repeat::kFromThenOn, {kAddFailed}},
        FailingName{"Trips", FailurePlan::Repeat::kOnce, {kReplaceTrips, kReplaceFailed}},
        FailingName{"Trips", FailurePlan::Repeat::kFromThenOn, {kReplaceTrips, kReplaceFailed}}));

}  // namespace
}  // namespace vetlo
