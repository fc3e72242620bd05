#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>

#include "tests/library/opened_library.h"
#include "tests/support/child_process.h"
#include "tests/support/environment.h"
#include "tests/support/program.h"
#include "vetlo/registry/component_registry.h"
#include "vetlo/surface/result_codes.h"

namespace vetlo::testing {
namespace {

namespace fs = std::filesystem;

class Registration : public ::testing::Test {
 protected:
  [[nodiscard]] std::optional<ComponentRecord> Record() const {
    return FindComponent(file_, "{A88191EF-1604-46AA-AB2F-10F71C9C165B}");
  }
  // Whether an entry point that is called in a process of its own gives this result.
  static bool GivesInChild(HRESULT expected, const std::function<HRESULT()>& call) {
    return InChild([&] { return call() == expected ? 0 : 1; }) == 0;
  }

  TestFolder data_;
  EnvironmentSetting setting_{"XDG_DATA_HOME", data_.path()};
  std::string file_ = data_ / "vetlo/components.ini";
  OpenedLibrary library_;
};

TEST_F(Registration, WritesOneRecordOfTheClass) {
  EXPECT_EQ(library_.register_server(), S_OK);
  const std::string folder = fs::path(fs::canonical("/proc/self/exe")).parent_path();
  EXPECT_EQ(Record(), (ComponentRecord{"{A88191EF-1604-46AA-AB2F-10F71C9C165B}", "Vetlo.clsTamo",
                                       folder + "/libvetlo.so", "Vetlo", "Vetlo V3.20", "3.20"}));
}

TEST_F(Registration, IsTheSameAfterTheSecondTime) {
  EXPECT_EQ(library_.register_server(), S_OK);
  const std::string text = ReadFile(file_);
  const auto written = fs::last_write_time(file_);
  EXPECT_EQ(library_.register_server(), S_OK);
  EXPECT_EQ(ReadFile(file_), text);
  EXPECT_EQ(fs::last_write_time(file_), written);
}

TEST_F(Registration, IsTakenBack) {
  EXPECT_EQ(library_.register_server(), S_OK);
  EXPECT_EQ(library_.unregister_server(), S_OK);
  EXPECT_EQ(Record(), std::nullopt);
  EXPECT_EQ(library_.unregister_server(), S_OK) << "there is none any more";
}

TEST_F(Registration, LeavesNothingInUse) {
  EXPECT_EQ(library_.register_server(), S_OK);
  EXPECT_EQ(library_.can_unload_now(), S_OK);
}

TEST_F(Registration, TellsWhereTheLibrarysFileReallyLies) {
  const std::string folder = data_ / "a folder\nof [two] lines";
  fs::create_directory(folder);
  fs::copy(LibraryBesideProgram(), folder + "/libvetlo.so");
  fs::create_directory_symlink(folder, data_ / "link");
  const OpenedLibrary library(data_ / "link/../link/libvetlo.so");
  EXPECT_EQ(library.register_server(), S_OK);
  EXPECT_EQ(Record().value().library, fs::canonical(folder).string() + "/libvetlo.so");
}

TEST_F(Registration, TellsWhereALibraryOfARelativeNameWasLoadedFrom) {
  fs::create_directory(data_ / "sub");
  fs::copy(LibraryBesideProgram(), data_ / "sub/libvetlo.so");
  const fs::path before = fs::current_path();
  fs::current_path(data_.path());
  const OpenedLibrary library("./sub/libvetlo.so");
  fs::current_path(before);
  EXPECT_EQ(library.register_server(), S_OK);
  EXPECT_EQ(Record().value().library, fs::canonical(data_ / "sub").string() + "/libvetlo.so");
}

TEST_F(Registration, KeepsTheNameOfALinkToTheLibrary) {
  fs::copy(LibraryBesideProgram(), data_ / "libvetlo.so.3.20");
  fs::create_symlink("libvetlo.so.3.20", data_ / "libvetlo.so");
  const OpenedLibrary library(data_ / "libvetlo.so");
  EXPECT_EQ(library.register_server(), S_OK);
  EXPECT_EQ(Record().value().library, fs::canonical(data_.path()).string() + "/libvetlo.so");
}

TEST_F(Registration, FailsWhereThereIsNoPlaceForIt) {
  const EnvironmentSetting data("XDG_DATA_HOME", std::nullopt);
  const EnvironmentSetting home("HOME", std::nullopt);
  EXPECT_EQ(library_.register_server(), SELFREG_E_CLASS);
  EXPECT_EQ(library_.unregister_server(), SELFREG_E_CLASS);
}

TEST_F(Registration, FailsWhereTheFolderIsAFile) {
  WriteFile(data_ / "vetlo", "");
  EXPECT_EQ(library_.register_server(), SELFREG_E_CLASS);
  EXPECT_EQ(library_.unregister_server(), S_OK) << "nothing is registered there";
}

TEST_F(Registration, IsDeniedWhereTheUserMayNotWrite) {
  EXPECT_EQ(chmod(data_.path().c_str(), 0555), 0);
  EXPECT_TRUE(GivesInChild(E_ACCESSDENIED, [&] {
    DropPrivileges();
    return library_.register_server();
  }));
  EXPECT_TRUE(fs::is_empty(data_.path()));
  EXPECT_EQ(chmod(data_.path().c_str(), 0755), 0);
}

TEST_F(Registration, FailsOnAFullDiskAndLeavesNothing) {
  EXPECT_TRUE(GivesInChild(SELFREG_E_CLASS, [&] {
    FillDisk(10);
    return library_.register_server();
  }));
  EXPECT_TRUE(fs::is_empty(data_.path()));
}

}  // namespace
}  // namespace vetlo::testing
