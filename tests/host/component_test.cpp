#include "vetlo/host/component.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

#include "tests/support/environment.h"
#include "tests/support/household.h"
#include "tests/support/played_screen.h"
#include "tests/support/program.h"
#include "vetlo/registry/component_registry.h"
#include "vetlo/store/forwarding.h"
#include "vetlo/surface/result_codes.h"

namespace vetlo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

std::string OwnFolder() { return fs::canonical("/proc/self/exe").parent_path(); }

bool IsLoaded(const std::string& file) {
  void* const handle = dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle != nullptr) {
    dlclose(handle);
  }
  return handle != nullptr;
}

// What a user is told where a piece fails with a ComponentError.
std::string ErrorOf(const std::function<void()>& piece) {
  try {
    piece();
    return "";
  } catch (const ComponentError& error) {
    return error.what();
  }
}

std::string LoadError(const std::string& file) {
  return ErrorOf([&] { const Component component(file); });
}

// ---- finding the library

class Finding : public ::testing::Test {
 protected:
  void Register(const std::string& library) {
    WriteComponent(file_, {GuidText(CLSID_clsTamo), "", library, "", "", ""});
  }
  static std::string FindingError() {
    return ErrorOf([] { FindComponentLibrary(); });
  }

  TestFolder data_;
  EnvironmentSetting setting_{"XDG_DATA_HOME", data_.path()};
  std::string file_ = data_ / "vetlo/components.ini";
};

TEST_F(Finding, WithoutARecordTheLibraryIsTheOneBesideTheProgram) {
  const ComponentPlace place = FindComponentLibrary();
  EXPECT_EQ(place.file, OwnFolder() + "/libvetlo.so");
  EXPECT_FALSE(place.registered);
}

TEST_F(Finding, WithoutARegistryTheLibraryIsTheOneBesideTheProgram) {
  const EnvironmentSetting data("XDG_DATA_HOME", std::nullopt);
  const EnvironmentSetting home("HOME", std::nullopt);
  EXPECT_EQ(FindComponentLibrary().file, LibraryBesideProgram());
}

TEST_F(Finding, ARecordTellsTheLibrary) {
  Register("/opt/a folder/libvetlo.so");
  const ComponentPlace place = FindComponentLibrary();
  EXPECT_EQ(place.file, "/opt/a folder/libvetlo.so");
  EXPECT_TRUE(place.registered);
}

TEST_F(Finding, ARecordOfAnotherClassTellsNothing) {
  WriteComponent(file_, {"{B-2}", "", "/opt/other.so", "", "", ""});
  EXPECT_FALSE(FindComponentLibrary().registered);
}

TEST_F(Finding, ARecordThatDoesNotTellAnAbsolutePathIsAnError) {
  for (const char* const library : {"", "libvetlo.so", "./libvetlo.so"}) {
    Register(library);
    EXPECT_THAT(FindingError(), AllOf(HasSubstr(file_), HasSubstr("Vetlo.clsTamo"))) << library;
  }
}

TEST_F(Finding, ARecordWithoutAPathIsAnError) {
  fs::create_directories(data_ / "vetlo");
  WriteFile(file_, "[" + GuidText(CLSID_clsTamo) + "]\nVersion=3.20\n");
  EXPECT_THAT(FindingError(), HasSubstr("absolute path"));
}

TEST_F(Finding, ARegistryThatCannotBeReadIsAnError) {
  fs::create_directories(file_);
  EXPECT_THAT(FindingError(), HasSubstr(file_));
}

TEST_F(Finding, ARegistryThatIsOpenToOthersIsAnErrorOfItsOwn) {
  Register("/opt/libvetlo.so");
  fs::permissions(file_, fs::perms::group_write, fs::perm_options::add);
  EXPECT_THROW(FindComponentLibrary(), RegistryError);
  EXPECT_THAT(FindingError(), AllOf(HasSubstr(file_ + " can be written by other users"),
                                    HasSubstr("chmod go-w"), HasSubstr("XDG_DATA_HOME")));
}

TEST_F(Finding, WithoutARegistryAFolderThatIsOpenToOthersIsNoError) {
  fs::permissions(data_.path(), fs::perms::all);
  EXPECT_FALSE(FindComponentLibrary().registered);
}

TEST_F(Finding, ARegisteredLibraryThatIsOpenToOthersIsAnError) {
  const TestFolder elsewhere;
  const std::string library = elsewhere / "libvetlo.so";
  fs::copy_file(LibraryBesideProgram(), library);
  fs::permissions(library, fs::perms::owner_all);
  Register(library);
  EXPECT_EQ(FindingError(), "");
  fs::permissions(library, fs::perms::all);
  EXPECT_THAT(FindingError(), AllOf(HasSubstr(library + " is not loaded"),
                                    HasSubstr(library + " can be written by other users")));
}

TEST_F(Finding, ARegisteredLibraryInAFolderThatIsOpenToOthersIsAnError) {
  const TestFolder elsewhere;
  WriteFile(elsewhere / "libvetlo.so", "");
  fs::permissions(elsewhere.path(), fs::perms::all);
  Register(elsewhere / "libvetlo.so");
  EXPECT_THAT(FindingError(), HasSubstr(elsewhere.path() + " can be written by other users"));
}

TEST_F(Finding, ARegisteredLibraryThatIsNoFileIsAnErrorAtOnce) {
  const std::string fifo = data_ / "libvetlo.so";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  Register(fifo);
  EXPECT_THAT(FindingError(), HasSubstr(fifo + " is no regular file"));
}

TEST_F(Finding, ARegisteredLibraryOfAnAbsurdSizeIsAnError) {
  WriteFile(data_ / "libvetlo.so", "");
  fs::resize_file(data_ / "libvetlo.so", 20'000'000'000);
  Register(data_ / "libvetlo.so");
  EXPECT_THAT(FindingError(), HasSubstr("is larger than 1073741824 bytes"));
}

// Who can change it can change the program.
TEST_F(Finding, ARegisteredLibraryBesideTheProgramNeedsNoJudging) {
  Register(LibraryBesideProgram());
  const auto before = fs::status(LibraryBesideProgram()).permissions();
  fs::permissions(LibraryBesideProgram(), fs::perms::group_write, fs::perm_options::add);
  EXPECT_EQ(FindingError(), "");
  fs::permissions(LibraryBesideProgram(), before);
}

// ---- loading it

TEST(Component, TellsWhatItIs) {
  const Component component(LibraryBesideProgram());
  EXPECT_EQ(component.TypeLibrary(), "Vetlo");
  EXPECT_EQ(component.Text(), "Vetlo V3.20");
  EXPECT_EQ(component.Version(), "3.20");
}

TEST(Component, OfAFileThatIsNotThereIsAnError) {
  const TestFolder folder;
  EXPECT_THAT(LoadError(folder / "libvetlo.so"),
              AllOf(HasSubstr(folder / "libvetlo.so"), HasSubstr("cannot be loaded")));
}

TEST(Component, OfAFileThatIsNoLibraryIsAnError) {
  const TestFolder folder;
  WriteFile(folder / "libvetlo.so", "not a library");
  EXPECT_THAT(LoadError(folder / "libvetlo.so"),
              AllOf(HasSubstr(folder / "libvetlo.so"), HasSubstr("cannot be loaded")));
}

TEST(Component, OfALibraryThatIsNoComponentIsAnError) {
  const std::string other = LibraryFileOf(dlsym(RTLD_DEFAULT, "cbrt"));
  ASSERT_THAT(other, HasSubstr("libm"));
  EXPECT_EQ(LoadError(other), other + " is no component: it has no DllRegisterServer");
}

TEST(Component, OfAnotherVersionIsAnError) {
  EXPECT_THAT(LoadError(OLDER_LIBRARY),
              AllOf(HasSubstr(OLDER_LIBRARY), HasSubstr("is of version 3.19"),
                    HasSubstr("works with version 3.20")));
}

TEST(Component, OfNoFileIsAnErrorAndNotTheProgramItself) {
  EXPECT_THAT(LoadError(""), StartsWith("the component '' cannot be loaded"));
}

// A folder that is the present one for as long as it lives.
class PresentFolder {
 public:
  explicit PresentFolder(const std::string& folder) { fs::current_path(folder); }
  ~PresentFolder() { fs::current_path(before_); }
  PresentFolder(const PresentFolder&) = delete;
  PresentFolder& operator=(const PresentFolder&) = delete;

 private:
  fs::path before_ = fs::current_path();
};

TEST(Component, OfABareNameIsThatInThePresentFolder) {
  const TestFolder empty;
  const PresentFolder present(empty.path());
  EXPECT_THAT(LoadError("libm.so.6"), HasSubstr("cannot be loaded"));
}

TEST_F(Finding, ALibraryThatWasLoadedFromThePresentFolderIsRegisteredWithItsOwn) {
  std::optional<Component> component;
  {
    const PresentFolder present(OwnFolder());
    component.emplace("libvetlo.so");
  }
  const PresentFolder elsewhere(data_.path());
  EXPECT_EQ(component->Register(), S_OK);
  EXPECT_EQ(FindComponentLibrary().file, OwnFolder() + "/libvetlo.so");
}

TEST_F(Finding, AComponentRegistersItselfAndTakesThatBack) {
  const Component component(LibraryBesideProgram());
  EXPECT_EQ(component.Register(), S_OK);
  EXPECT_TRUE(FindComponentLibrary().registered);
  EXPECT_EQ(component.Unregister(), S_OK);
  EXPECT_FALSE(FindComponentLibrary().registered);
}

TEST(Component, IsLetGoWithItsLastUser) {
  const std::string file = LibraryBesideProgram();
  PlayedPlatform platform;
  ASSERT_FALSE(IsLoaded(file));
  std::optional<Component> component(file);
  {
    Tamo one = component->NewTamo(platform);
    const Tamo other = component->NewTamo(platform);
    component.reset();
    EXPECT_TRUE(IsLoaded(file));
    EXPECT_EQ(one.LenByte("four"), Variant(4)) << "it works without the Component";
  }
  EXPECT_FALSE(IsLoaded(file));
}

TEST(Component, ThatFailedToLoadIsLetGo) {
  const TestFolder folder;
  fs::copy(LibraryFileOf(dlsym(RTLD_DEFAULT, "cbrt")), folder / "other.so");
  EXPECT_NE(LoadError(folder / "other.so"), "");
  EXPECT_FALSE(IsLoaded(folder / "other.so"));
}

// ---- its class

class TamoOfAComponent : public ::testing::Test {
 protected:
  PlayedPlatform platform_;
  std::unique_ptr<Database> store_ = HouseholdWithEveryRow();
  Tamo tamo_ = Component(LibraryBesideProgram()).NewTamo(platform_);
};

// A store of which nothing can be opened.
class LostStore : public ForwardingDatabase {
 public:
  LostStore(Database& store, std::string text)
      : ForwardingDatabase(store), text_(std::move(text)) {}
  using Database::OpenRecordset;
  std::unique_ptr<Recordset> OpenRecordset(std::string_view, RecordsetType) override {
    throw Failure(FailureNumber::kStoreUnusable, text_);
  }

 private:
  std::string text_;
};

TEST_F(TamoOfAComponent, StaysWhatItWasWhereItIsMoved) {
  Tamo moved = std::move(tamo_);
  EXPECT_EQ(moved.LenByte("M\xC3\xBCnze"), Variant(5));
}

TEST_F(TamoOfAComponent, ThrowsFailuresWithNumberAndText) {
  const std::string lost_disk = "the disk is gone";
  for (const std::string& text : {lost_disk, std::string()}) {
    LostStore lost(*store_, text);
    try {
      tamo_.TotalIncome(lost, Day(2026, 1, 1), Day(2026, 3, 31));
      FAIL() << "it did not fail";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), static_cast<std::int32_t>(FailureNumber::kStoreUnusable));
      EXPECT_EQ(failure.what(), text.empty() ? MeaningOf(failure.number()) : text);
    }
  }
}

TEST_F(TamoOfAComponent, ForgetsTheTextOfAnEarlierFailure) {
  LostStore lost(*store_, "the disk is gone");
  EXPECT_THROW(tamo_.TotalCreditCardDebt(lost, Day(2026, 3, 31)), Failure);
  EXPECT_EQ(platform_.ErrorInfo(), "the disk is gone");
  EXPECT_EQ(tamo_.LenByte(""), Variant(0));
  EXPECT_EQ(platform_.ErrorInfo(), "");
}

TEST_F(TamoOfAComponent, AnswersWithTheUsualArgumentsWhereOthersAreLeftOut) {
  const Date from = Day(2026, 1, 1);
  const Date to = Day(2026, 3, 31);
  const auto rows = store_->OpenRecordset("ChartReportSubType");
  EXPECT_FALSE(tamo_.ShowChartReport(*store_, *rows, 5));
  EXPECT_FALSE(tamo_.AddToFavorites(*store_, *rows, 5)) << "the user closed the dialog";
  EXPECT_FALSE(tamo_.CustomizeChartReport(*store_, *rows, 5));
  EXPECT_EQ(platform_.screen.forms_shown, 2);
  EXPECT_EQ(tamo_.TotalExpensesOfSubCategory(*store_, from, to, 1), Money(45.5));
  EXPECT_EQ(tamo_.TotalExpensesOfCategory(*store_, from, to),
            tamo_.TotalExpensesOfCategory(*store_, from, to, 0, false));
}

TEST_F(TamoOfAComponent, TellsTheDaysThatWereCounted) {
  Date first;
  Date last;
  EXPECT_EQ(tamo_.TotalIncomeOfCategory(*store_, Day(2026, 1, 1), Day(2026, 3, 31), 2, false,
                                        &first, &last),
            Money(900));
  EXPECT_EQ(first, Day(2026, 2, 27));
  EXPECT_EQ(last, Day(2026, 2, 27));
}

}  // namespace
}  // namespace vetlo::testing
