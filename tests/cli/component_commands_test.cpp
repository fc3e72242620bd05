#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>

#include "tests/support/child_process.h"
#include "tests/support/program.h"

namespace vetlo::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace fs = std::filesystem;

const std::string kSection = "[{A88191EF-1604-46AA-AB2F-10F71C9C165B}]\n";

std::string FolderOf(const std::string& file) { return fs::canonical(file).parent_path(); }

void ExpectOneLine(const ProgramRun& run) {
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
  EXPECT_THAT(run.err, StartsWith("quillmarsh: "));
}

class ComponentCommands : public ::testing::Test {
 protected:
  [[nodiscard]] ProgramRun Quill(const std::string& word,
                                 const std::string& program = PROGRAM) const {
    return RunProgram(program, {word}, {"XDG_DATA_HOME=" + data_.path()});
  }
  void WriteRegistry(const std::string& text) {
    fs::create_directories(data_ / "vetlo");
    WriteFile(file_, text);
  }
  [[nodiscard]] std::vector<std::string> NamesInRegistrysFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(data_ / "vetlo")) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  TestFolder data_;
  std::string file_ = data_ / "vetlo/components.ini";
  std::string library_ = FolderOf(PROGRAM) + "/libvetlo.so";
};

TEST_F(ComponentCommands, RegisterWritesTheLibraryBesideTheProgram) {
  const ProgramRun run = Quill("register");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Registered Vetlo V3.20, " + library_ + ", in " + file_ + "\n");
  EXPECT_EQ(ReadFile(file_), kSection +
                                 "ProgID=Vetlo.clsTamo\n"
                                 "InprocServer=" +
                                 library_ +
                                 "\n"
                                 "TypeLib=Vetlo\n"
                                 "Description=Vetlo V3.20\n"
                                 "Version=3.20\n");
}

TEST_F(ComponentCommands, RegisterDoesTheSameTheSecondTime) {
  const ProgramRun first = Quill("register");
  const std::string text = ReadFile(file_);
  const auto written = fs::last_write_time(file_);
  const ProgramRun second = Quill("register");
  EXPECT_EQ(second.status, 0);
  EXPECT_EQ(second.out, first.out);
  EXPECT_EQ(ReadFile(file_), text);
  EXPECT_EQ(fs::last_write_time(file_), written);
}

TEST_F(ComponentCommands, ComponentTellsOfTheLibraryBesideTheProgram) {
  const ProgramRun run = Quill("component");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Vetlo V3.20\n"
            "  type library  Vetlo\n"
            "  version       3.20\n"
            "  loaded from   " +
                library_ +
                "\n"
                "  found         beside this program; none is registered\n");
}

TEST_F(ComponentCommands, ComponentTellsOfTheRegisteredLibrary) {
  EXPECT_EQ(Quill("register").status, 0);
  EXPECT_THAT(Quill("component").out,
              AllOf(HasSubstr("loaded from   " + library_ + "\n"),
                    HasSubstr("found         in the registry " + file_ + "\n")));
}

TEST_F(ComponentCommands, UnregisterTakesTheRecordOut) {
  EXPECT_EQ(Quill("register").status, 0);
  const ProgramRun run = Quill("unregister");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Took the component out of " + file_ + "\n");
  EXPECT_THAT(NamesInRegistrysFolder(), IsEmpty());
  EXPECT_THAT(Quill("component").out, HasSubstr("none is registered"));
}

TEST_F(ComponentCommands, UnregisterWithoutARecordIsNoError) {
  const ProgramRun run = Quill("unregister");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "No component was registered\n");
  EXPECT_TRUE(fs::is_empty(data_.path()));
}

TEST_F(ComponentCommands, RecordsOfOtherComponentsStay) {
  const std::string others = "[{B-2}]\nInprocServer=/b.so\n";
  WriteRegistry(others);
  EXPECT_EQ(Quill("register").status, 0);
  EXPECT_THAT(ReadFile(file_), StartsWith(others + kSection));
  EXPECT_EQ(Quill("unregister").status, 0);
  EXPECT_EQ(ReadFile(file_), others);
}

// ---- a program and its library in a folder of their own

TEST_F(ComponentCommands, ARegisteredLibraryIsTakenBeforeTheOneBesideTheProgram) {
  const std::string folder = data_ / "a folder";
  fs::create_directory(folder);
  fs::copy(PROGRAM, folder + "/quillmarsh");
  fs::copy(library_, folder + "/libvetlo.so");
  EXPECT_EQ(Quill("register", folder + "/quillmarsh").status, 0);
  const ProgramRun run = Quill("component");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out,
              HasSubstr("loaded from   " + FolderOf(folder + "/libvetlo.so") + "/libvetlo.so\n"));
}

TEST_F(ComponentCommands, AProgramWithoutALibrarySaysWhereItLooked) {
  fs::copy(PROGRAM, data_ / "quillmarsh");
  for (const char* const word : {"component", "register", "unregister"}) {
    const ProgramRun run = Quill(word, data_ / "quillmarsh");
    ExpectOneLine(run);
    EXPECT_THAT(run.err,
                AllOf(HasSubstr("/libvetlo.so cannot be loaded"), Not(HasSubstr("unregister"))))
        << word;
  }
}

TEST_F(ComponentCommands, AProgramWithoutALibraryUsesTheRegisteredOne) {
  const TestFolder programs;
  fs::copy(PROGRAM, programs / "quillmarsh");
  fs::copy(library_, data_ / "libvetlo.so");
  WriteRegistry(kSection + "InprocServer=" + data_ / "libvetlo.so" + "\n");
  const ProgramRun run = Quill("component", programs / "quillmarsh");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("loaded from   " + data_ / "libvetlo.so"));
}

// ---- records that are of no use

TEST_F(ComponentCommands, ALibraryThatIsGoneIsAnErrorThatTellsWhatToDo) {
  WriteRegistry(kSection + "InprocServer=/gone/libvetlo.so\n");
  const ProgramRun run = Quill("component");
  ExpectOneLine(run);
  EXPECT_THAT(run.err,
              AllOf(HasSubstr("/gone/libvetlo.so cannot be loaded"),
                    HasSubstr("'quillmarsh register'"), HasSubstr("'quillmarsh unregister'")));
}

TEST_F(ComponentCommands, RegisterReplacesARecordThatIsOfNoUse) {
  for (const char* const line : {"InprocServer=/gone/libvetlo.so\n", "InprocServer=lib.so\n", ""}) {
    WriteRegistry(kSection + line);
    EXPECT_EQ(Quill("component").status, 1) << line;
    EXPECT_EQ(Quill("register").status, 0) << line;
    EXPECT_EQ(Quill("component").status, 0) << line;
  }
}

TEST_F(ComponentCommands, UnregisterForgetsARecordThatIsOfNoUse) {
  for (const char* const line : {"InprocServer=/gone/libvetlo.so\n", "InprocServer=lib.so\n", ""}) {
    WriteRegistry(kSection + line);
    const ProgramRun run = Quill("unregister");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, StartsWith("Took the component out of ")) << line;
    EXPECT_THAT(NamesInRegistrysFolder(), IsEmpty()) << line;
  }
}

TEST_F(ComponentCommands, TextsOfTheRegistryCarryNoControlCharactersIntoTheTerminal) {
  WriteRegistry(kSection + "InprocServer=/gone\\n\x1b[31m/libvetlo.so\n");
  const ProgramRun run = Quill("component");
  ExpectOneLine(run);
  EXPECT_THAT(run.err, AllOf(HasSubstr("'quillmarsh register'"), Not(HasSubstr("\x1b"))));
}

// ---- a registry that cannot be used

TEST_F(ComponentCommands, ARegistryThatCannotBeWrittenIsAnErrorWithItsCode) {
  WriteFile(data_ / "vetlo", "a file");
  const ProgramRun run = Quill("register");
  ExpectOneLine(run);
  EXPECT_THAT(run.err, AllOf(HasSubstr(file_), HasSubstr("(0x80040201)")));
  EXPECT_EQ(ReadFile(data_ / "vetlo"), "a file");
  EXPECT_EQ(Quill("component").status, 0) << "the one beside the program is there";
}

TEST_F(ComponentCommands, ARegistryThatCannotBeReadIsAnError) {
  fs::create_directories(file_);
  for (const char* const word : {"component", "unregister", "register"}) {
    const ProgramRun run = Quill(word);
    ExpectOneLine(run);
    EXPECT_THAT(run.err, HasSubstr(file_)) << word;
  }
  EXPECT_THAT(NamesInRegistrysFolder(), ElementsAre("components.ini"));
}

TEST_F(ComponentCommands, ARegistryThatIsOpenToOthersIsAnErrorThatTellsWhatMendsIt) {
  WriteRegistry(kSection + "InprocServer=" + library_ + "\n");
  fs::permissions(data_ / "vetlo", fs::perms::all);
  for (const char* const word : {"component", "unregister", "register"}) {
    const ProgramRun run = Quill(word);
    ExpectOneLine(run);
    EXPECT_THAT(run.err, AllOf(HasSubstr(data_ / "vetlo can be written by other users"),
                               HasSubstr("chmod go-w"), Not(HasSubstr("'quillmarsh register'"))))
        << word;
  }
  fs::permissions(data_ / "vetlo", fs::perms::owner_all);
  EXPECT_EQ(Quill("component").status, 0);
}

TEST_F(ComponentCommands, NothingIsRegisteredWhereOthersCouldChangeIt) {
  fs::permissions(data_.path(), fs::perms::all);
  const ProgramRun run = Quill("register");
  ExpectOneLine(run);
  EXPECT_THAT(run.err, AllOf(HasSubstr(data_.path() + " can be written"), HasSubstr("0x80070005")));
  EXPECT_TRUE(fs::is_empty(data_.path()));
  EXPECT_EQ(Quill("component").status, 0) << "the one beside the program is there";
}

TEST_F(ComponentCommands, ALibraryThatIsOpenToOthersIsAnErrorThatTellsWhatToDo) {
  const std::string library = data_ / "libvetlo.so";
  fs::copy(library_, library);
  WriteRegistry(kSection + "InprocServer=" + library + "\n");
  fs::permissions(library, fs::perms::all);
  const ProgramRun run = Quill("component");
  ExpectOneLine(run);
  EXPECT_THAT(run.err, AllOf(HasSubstr(library + " can be written by other users"),
                             HasSubstr("'quillmarsh register'")));
  EXPECT_EQ(Quill("register").status, 0);
  EXPECT_EQ(Quill("component").status, 0);
}

TEST_F(ComponentCommands, AProgramInAFolderThatIsOpenToOthersUsesWhatItRegisters) {
  const std::string folder = data_ / "shared";
  fs::create_directory(folder);
  fs::copy(PROGRAM, folder + "/quillmarsh");
  fs::copy(library_, folder + "/libvetlo.so");
  fs::permissions(folder, fs::perms::all);
  EXPECT_EQ(Quill("register", folder + "/quillmarsh").status, 0);
  const ProgramRun own = Quill("component", folder + "/quillmarsh");
  EXPECT_EQ(own.status, 0) << own.err;
  EXPECT_THAT(own.out, HasSubstr("in the registry"));
  ExpectOneLine(Quill("component"));
}

TEST_F(ComponentCommands, ARegistryThatNeverEndsIsAnErrorAtOnce) {
  fs::create_directories(data_ / "vetlo");
  for (const char* const endless : {"/dev/zero", "/dev/tty", "/proc/kmsg"}) {
    fs::create_symlink(endless, file_);
    EXPECT_EQ(Quill("component").status, 1) << endless;
    fs::remove(file_);
  }
  WriteRegistry("");
  fs::resize_file(file_, 20'000'000'000);
  const ProgramRun run = Quill("component");
  ExpectOneLine(run);
  EXPECT_THAT(run.err, HasSubstr("is larger than"));
}

TEST_F(ComponentCommands, AFullDiskIsAnErrorThatLeavesTheRegistryAsItWas) {
  constexpr std::uint64_t kRoomForAMessage = 2000;
  const std::string others = "[{B-2}]\nText=" + std::string(kRoomForAMessage, 'x') + "\n";
  WriteRegistry(others);
  const int answer = InChild([&] {
    FillDisk(kRoomForAMessage);
    const ProgramRun run = Quill("register");
    return run.status == 1 && run.err.find("(0x80040201)") != std::string::npos ? 0 : 1;
  });
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(ReadFile(file_), others);
  EXPECT_THAT(NamesInRegistrysFolder(), ElementsAre("components.ini"));
}

TEST(ComponentCommandsWithoutAHome, RegisterTellsWhatToSet) {
  const ProgramRun run = RunProgram(PROGRAM, {"register"}, {"XDG_DATA_HOME=relative"});
  ExpectOneLine(run);
  EXPECT_THAT(run.err, HasSubstr("set HOME or XDG_DATA_HOME"));
}

TEST(ComponentCommandsWithoutAHome, ComponentIsTheOneBesideTheProgram) {
  const ProgramRun run = RunProgram(PROGRAM, {"component"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("beside this program"));
}

TEST(ComponentCommandsInAHome, RegisterWritesBelowIt) {
  const TestFolder home;
  EXPECT_EQ(RunProgram(PROGRAM, {"register"}, {"HOME=" + home.path()}).status, 0);
  EXPECT_THAT(ReadFile(home / ".local/share/vetlo/components.ini"), StartsWith(kSection));
}

}  // namespace
}  // namespace vetlo::testing
