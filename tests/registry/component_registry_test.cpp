#include "vetlo/registry/component_registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

#include "tests/support/child_process.h"
#include "tests/support/environment.h"
#include "tests/support/program.h"

namespace vetlo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

const ComponentRecord kRecord = {"{A-1}", "Vetlo.clsTamo", "/opt/vetlo/libvetlo.so",
                                 "Vetlo", "Vetlo V3.20",   "3.20"};
const std::string kRecordText =
    "[{A-1}]\n"
    "ProgID=Vetlo.clsTamo\n"
    "InprocServer=/opt/vetlo/libvetlo.so\n"
    "TypeLib=Vetlo\n"
    "Description=Vetlo V3.20\n"
    "Version=3.20\n";
const std::string kForeignText = "[{B-2}]\nInprocServer=/b.so\r\n  odd = line \\ \n\n";

// The number of the system's error that a piece fails with; 0 where it does not fail.
template <typename Piece>
int ErrorOf(const Piece& piece) {
  try {
    piece();
    return 0;
  } catch (const std::system_error& error) {
    return error.code().value();
  }
}

// What tells whether a file was written: where it lies on the disk, and when it was changed.
std::pair<ino_t, std::int64_t> StateOf(const std::string& file) {
  struct stat state = {};
  EXPECT_EQ(stat(file.c_str(), &state), 0);
  return {state.st_ino, state.st_mtim.tv_sec * 1'000'000'000 + state.st_mtim.tv_nsec};
}

unsigned ModeOf(const std::string& file) {
  struct stat state = {};
  EXPECT_EQ(stat(file.c_str(), &state), 0);
  return state.st_mode & 0777U;
}

class Registry : public ::testing::Test {
 protected:
  void WriteText(const std::string& text) {
    fs::create_directories(data_ / "vetlo");
    WriteFile(file_, text);
  }
  [[nodiscard]] std::string Text() const { return ReadFile(file_); }
  // The names in a folder below the test's.
  [[nodiscard]] std::vector<std::string> NamesIn(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(data_ / folder)) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  TestFolder data_;
  std::string file_ = data_ / "vetlo/components.ini";
};

// ---- the file that is there

TEST_F(Registry, KeepsTheModeOfItsFile) {
  WriteText(kForeignText);
  fs::permissions(file_, fs::perms(0644));
  WriteComponent(file_, kRecord);
  EXPECT_EQ(ModeOf(file_), 0644U);
}

TEST_F(Registry, StaysBehindTheLinkThatItIsKeptBehind) {
  WriteText(kForeignText);
  fs::rename(file_, data_ / "kept.ini");
  fs::create_symlink(data_ / "kept.ini", file_);
  WriteComponent(file_, kRecord);
  EXPECT_TRUE(fs::is_symlink(file_));
  EXPECT_THAT(ReadFile(data_ / "kept.ini"), HasSubstr(kRecordText));
  RemoveComponent(file_, kRecord.class_id);
  EXPECT_TRUE(fs::is_symlink(file_));
  EXPECT_EQ(ReadFile(data_ / "kept.ini"), kForeignText);
}

TEST_F(Registry, TakesAwayWhatAKilledProgramLeftBehind) {
  WriteText(kForeignText);
  WriteFile(file_ + ".new", "half");
  WriteComponent(file_, kRecord);
  EXPECT_THAT(NamesIn("vetlo"), ElementsAre("components.ini"));
}

// ---- where it lies

TEST(RegistryFile, LiesInTheFolderForTheUsersData) {
  const EnvironmentSetting data("XDG_DATA_HOME", "/data");
  EXPECT_EQ(RegistryFile(), "/data/vetlo/components.ini");
}

TEST(RegistryFile, LiesInTheHomeWhereThatFolderIsNotNamed) {
  const EnvironmentSetting home("HOME", "/home/ann");
  for (const std::optional<std::string>& useless :
       {std::optional<std::string>(), std::optional<std::string>(""),
        std::optional<std::string>("data")}) {
    const EnvironmentSetting data("XDG_DATA_HOME", useless);
    EXPECT_EQ(RegistryFile(), "/home/ann/.local/share/vetlo/components.ini");
  }
}

TEST(RegistryFile, LiesNowhereWithoutAnAbsoluteFolder) {
  const EnvironmentSetting data("XDG_DATA_HOME", std::nullopt);
  for (const std::optional<std::string>& useless :
       {std::optional<std::string>(), std::optional<std::string>("home")}) {
    const EnvironmentSetting home("HOME", useless);
    EXPECT_EQ(RegistryFile(), "");
  }
}

TEST(RegistryFile, WhereItLiesNowhereNothingIsFoundAndNothingCanBeWritten) {
  EXPECT_EQ(FindComponent("", kRecord.class_id), std::nullopt);
  EXPECT_EQ(ErrorOf([] { WriteComponent("", kRecord); }), ENOENT);
  EXPECT_EQ(ErrorOf([] { RemoveComponent("", kRecord.class_id); }), ENOENT);
}

// ---- what is written

TEST_F(Registry, ARecordIsASectionOfLines) {
  WriteComponent(file_, kRecord);
  EXPECT_EQ(Text(), kRecordText);
  EXPECT_EQ(FindComponent(file_, kRecord.class_id), kRecord);
}

TEST_F(Registry, ARecordOfOddCharactersIsFoundAgain) {
  ComponentRecord odd = kRecord;
  odd.library = "/a folder\n[{A-1}]\nInprocServer=/no.so\\n/\\";
  odd.text = "  =\r\t\x01\xC3\xA4 ";
  odd.version = "";
  WriteComponent(file_, odd);
  EXPECT_EQ(FindComponent(file_, odd.class_id), odd);
}

TEST_F(Registry, WithoutAFileOrARecordNothingIsFound) {
  EXPECT_EQ(FindComponent(file_, kRecord.class_id), std::nullopt);
  WriteText(kForeignText);
  EXPECT_EQ(FindComponent(file_, kRecord.class_id), std::nullopt);
}

TEST_F(Registry, FoldersThatAreMissingAreMadeForTheUserAlone) {
  const std::string file = data_ / "share/more/vetlo/components.ini";
  WriteComponent(file, kRecord);
  EXPECT_EQ(ReadFile(file), kRecordText);
  EXPECT_EQ(ModeOf(data_ / "share"), 0700U);
  EXPECT_EQ(ModeOf(data_ / "share/more/vetlo"), 0700U);
  EXPECT_EQ(ModeOf(file), 0600U);
}

TEST_F(Registry, AFolderMayBeALinkToAnother) {
  fs::create_directory(data_ / "elsewhere");
  fs::create_directory_symlink(data_ / "elsewhere", data_ / "vetlo");
  WriteComponent(file_, kRecord);
  EXPECT_EQ(ReadFile(data_ / "elsewhere/components.ini"), kRecordText);
}

TEST_F(Registry, WritingTheSameAgainLeavesTheFileAlone) {
  WriteText(kForeignText + kRecordText + "[{C-3}]\nwithout an end");
  const std::string text = Text();
  const auto state = StateOf(file_);
  WriteComponent(file_, kRecord);
  EXPECT_EQ(Text(), text);
  EXPECT_EQ(StateOf(file_), state);
}

TEST_F(Registry, AChangedRecordTakesThePlaceOfTheOldOne) {
  WriteText("; mine\n" + kForeignText + "[{A-1}]\nInprocServer=/old.so\n[{C-3}]\nno end");
  WriteComponent(file_, kRecord);
  EXPECT_EQ(Text(), "; mine\n" + kForeignText + kRecordText + "[{C-3}]\nno end");
}

TEST_F(Registry, ANewRecordStandsAfterThoseOfOthers) {
  WriteText(kForeignText + "no end");
  WriteComponent(file_, kRecord);
  EXPECT_EQ(Text(), kForeignText + "no end\n" + kRecordText);
}

TEST_F(Registry, OfTwoRecordsOfOneClassTheFirstCounts) {
  WriteText("[{A-1}]\nInprocServer=/first.so\n[{A-1}]\nInprocServer=/second.so\n");
  EXPECT_EQ(FindComponent(file_, "{A-1}")->library, "/first.so");
}

TEST_F(Registry, ALineThatIsNoSettingIsPassedOver) {
  WriteText("[{A-1}]\nnoise\nInprocServerX=/no.so\nInprocServer\nInprocServer=/yes.so\n=\n");
  EXPECT_EQ(FindComponent(file_, "{A-1}")->library, "/yes.so");
}

TEST_F(Registry, ASectionEndsWhereTheNextBeginsHoweverDamagedItsNameIs) {
  const std::string others = "[{B-2}]\r\nInprocServer=/b.so\r\n[{C-3}\nInprocServer=/c.so\n[\n";
  WriteText("[{A-1}]\nInprocServer=/a.so\n" + others);
  EXPECT_EQ(FindComponent(file_, "{A-1}")->library, "/a.so");
  WriteComponent(file_, kRecord);
  EXPECT_EQ(Text(), kRecordText + others);
  RemoveComponent(file_, "{A-1}");
  EXPECT_EQ(Text(), others);
}

// ---- what is removed

TEST_F(Registry, RemovingTakesARecordOutAndLeavesThoseOfOthers) {
  WriteText("; mine\n" + kRecordText + kForeignText + kRecordText + "[{C-3}]\nno end");
  RemoveComponent(file_, kRecord.class_id);
  EXPECT_EQ(Text(), "; mine\n" + kForeignText + "[{C-3}]\nno end");
  EXPECT_EQ(FindComponent(file_, kRecord.class_id), std::nullopt);
}

TEST_F(Registry, WithItsLastRecordTheFileGoes) {
  WriteComponent(file_, kRecord);
  RemoveComponent(file_, kRecord.class_id);
  EXPECT_THAT(NamesIn("vetlo"), IsEmpty());
}

TEST_F(Registry, RemovingWhatIsNotThereLeavesEverythingAlone) {
  RemoveComponent(file_, kRecord.class_id);
  EXPECT_THAT(NamesIn(""), IsEmpty());
  WriteText(kForeignText);
  const auto state = StateOf(file_);
  RemoveComponent(file_, kRecord.class_id);
  EXPECT_EQ(Text(), kForeignText);
  EXPECT_EQ(StateOf(file_), state);
}

// ---- what cannot be written

TEST_F(Registry, AFolderThatIsAFileHoldsNoRegistry) {
  WriteFile(data_ / "vetlo", "a file");
  EXPECT_EQ(ErrorOf([&] { WriteComponent(file_, kRecord); }), ENOTDIR);
  EXPECT_EQ(FindComponent(file_, kRecord.class_id), std::nullopt);
  EXPECT_EQ(ErrorOf([&] { RemoveComponent(file_, kRecord.class_id); }), 0);
  EXPECT_EQ(ReadFile(data_ / "vetlo"), "a file");
}

TEST_F(Registry, ARegistryThatIsAFolderCanBeNeitherReadNorWritten) {
  fs::create_directories(file_);
  EXPECT_EQ(ErrorOf([&] { FindComponent(file_, kRecord.class_id); }), EISDIR);
  EXPECT_EQ(ErrorOf([&] { WriteComponent(file_, kRecord); }), EISDIR);
  EXPECT_EQ(ErrorOf([&] { RemoveComponent(file_, kRecord.class_id); }), EISDIR);
  EXPECT_THAT(NamesIn("vetlo"), ElementsAre("components.ini"));
}

TEST_F(Registry, AFailureTellsTheFile) {
  fs::create_directories(file_);
  try {
    FindComponent(file_, kRecord.class_id);
    FAIL() << "it was read";
  } catch (const std::system_error& error) {
    EXPECT_THAT(error.what(), HasSubstr(file_));
  }
}

TEST_F(Registry, AFullDiskLeavesTheOldFileAndNothingBeside) {
  WriteText(kForeignText);
  EXPECT_EQ(InChild([&] {
              FillDisk(kRecordText.size());
              return ErrorOf([&] { WriteComponent(file_, kRecord); });
            }),
            EFBIG);
  EXPECT_EQ(Text(), kForeignText);
  EXPECT_THAT(NamesIn("vetlo"), ElementsAre("components.ini"));
}

TEST_F(Registry, AFullDiskLeavesNoFolderThatWasMadeForIt) {
  EXPECT_EQ(InChild([&] {
              FillDisk(1);
              return ErrorOf([&] { WriteComponent(file_, kRecord); });
            }),
            EFBIG);
  EXPECT_THAT(NamesIn(""), IsEmpty());
}

TEST_F(Registry, AFullDiskDoesNotKeepARecordFromBeingTakenOutWithItsFile) {
  WriteComponent(file_, kRecord);
  EXPECT_EQ(InChild([&] {
              FillDisk(0);
              return ErrorOf([&] { RemoveComponent(file_, kRecord.class_id); });
            }),
            0);
  EXPECT_THAT(NamesIn("vetlo"), IsEmpty());
}

// A registry in a folder that other users can look into but not write to.
class ProtectedRegistry : public Registry {
 protected:
  void Protect(const std::string& text, unsigned folder_mode) {
    WriteText(text);
    EXPECT_EQ(chmod(file_.c_str(), 0444), 0);
    EXPECT_EQ(chmod((data_ / "vetlo").c_str(), folder_mode), 0);
    EXPECT_EQ(chmod(data_.path().c_str(), 0755), 0);
  }
  ~ProtectedRegistry() override { chmod((data_ / "vetlo").c_str(), 0755); }

  // For whom the pieces below are done, where this user has the superuser's rights to give.
  static void GiveToNobody(const std::string& name) {
    constexpr uid_t kNobody = 65534;
    EXPECT_TRUE(geteuid() != 0 || chown(name.c_str(), kNobody, kNobody) == 0);
  }

  // The error of a piece that is done without the superuser's rights.
  template <typename Piece>
  int ErrorAsNobody(const Piece& piece) {
    return InChild([&] {
      DropPrivileges();
      return ErrorOf(piece);
    });
  }
};

TEST_F(ProtectedRegistry, AFolderThatIsReadOnlyCanBeReadAndIsLeftAsItIs) {
  Protect(kForeignText + kRecordText, 0555);
  ComponentRecord other = kRecord;
  other.version = "4.0";
  EXPECT_EQ(ErrorAsNobody([&] { WriteComponent(file_, other); }), EACCES);
  EXPECT_EQ(ErrorAsNobody([&] { RemoveComponent(file_, kRecord.class_id); }), EACCES);
  EXPECT_EQ(ErrorAsNobody([&] { FindComponent(file_, kRecord.class_id).value(); }), 0);
  EXPECT_EQ(Text(), kForeignText + kRecordText);
  EXPECT_THAT(NamesIn("vetlo"), ElementsAre("components.ini"));
}

TEST_F(ProtectedRegistry, InAReadOnlyFolderWhatIsWrittenAlreadyCanBeWrittenAgain) {
  Protect(kRecordText, 0555);
  EXPECT_EQ(ErrorAsNobody([&] { WriteComponent(file_, kRecord); }), 0);
}

TEST_F(ProtectedRegistry, NoFolderIsMadeInOneThatIsReadOnly) {
  Protect(kForeignText, 0555);
  const std::string file = data_ / "vetlo/deep/deeper/components.ini";
  EXPECT_EQ(ErrorAsNobody([&] { WriteComponent(file, kRecord); }), EACCES);
  EXPECT_THAT(NamesIn("vetlo"), ElementsAre("components.ini"));
}

TEST_F(ProtectedRegistry, ARecordThatCannotBeReachedIsNotTakenForRemoved) {
  Protect(kRecordText, 0);
  EXPECT_EQ(ErrorAsNobody([&] { RemoveComponent(file_, kRecord.class_id); }), EACCES);
  EXPECT_EQ(ErrorAsNobody([&] { FindComponent(file_, kRecord.class_id); }), EACCES);
}

TEST_F(ProtectedRegistry, AFileThatCannotBeReadIsNotWrittenOver) {
  Protect(kForeignText, 0755);
  GiveToNobody(data_ / "vetlo");
  EXPECT_EQ(chmod(file_.c_str(), 0), 0);
  EXPECT_EQ(ErrorAsNobody([&] { WriteComponent(file_, kRecord); }), EACCES);
  EXPECT_EQ(chmod(file_.c_str(), 0600), 0);
  EXPECT_EQ(Text(), kForeignText);
}

// ---- several at once

TEST_F(Registry, RecordsThatAreWrittenAtOnceAreAllThere) {
  constexpr int kPrograms = 8;
  constexpr int kRecordsOfEach = 10;
  const auto record_of = [](int program, int number) {
    ComponentRecord record = kRecord;
    record.class_id = "{" + std::to_string(program) + "-" + std::to_string(number) + "}";
    return record;
  };
  std::vector<pid_t> children;
  for (int program = 0; program < kPrograms; ++program) {
    children.push_back(fork());
    if (children.back() == 0) {
      _exit(ErrorOf([&] {
        for (int number = 0; number < kRecordsOfEach; ++number) {
          WriteComponent(file_, record_of(program, number));
        }
      }));
    }
  }
  for (const pid_t child : children) {
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  for (int program = 0; program < kPrograms; ++program) {
    for (int number = 0; number < kRecordsOfEach; ++number) {
      const ComponentRecord record = record_of(program, number);
      EXPECT_EQ(FindComponent(file_, record.class_id), record);
    }
  }
  EXPECT_THAT(NamesIn("vetlo"), ElementsAre("components.ini"));
}

// ---- the file of a library

TEST(LibraryFile, IsTheOneThatAnAddressLiesIn) {
  const std::string own = LibraryFileOf(reinterpret_cast<const void*>(&ErrorOf<void (*)()>));
  EXPECT_EQ(fs::canonical(own), fs::canonical("/proc/self/exe"));
}

TEST(LibraryFile, AnAddressOutsideOfAllFilesHasNone) {
  EXPECT_EQ(ErrorOf([] { LibraryFileOf(nullptr); }), ENOENT);
}

}  // namespace
}  // namespace vetlo::testing
