#include "tests/house/library_needs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>

#include "tests/house/include_walls.h"

namespace house {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

#ifdef BUILT_WITH_SANITIZERS
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// What a command writes; fails the test where the command fails.
std::string OutputOf(const std::string& command) {
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    ADD_FAILURE() << "cannot run " << command;
    return "";
  }
  std::string output;
  std::array<char, 4096> piece;
  while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), pipe)) {
    output.append(piece.data(), size);
  }
  EXPECT_EQ(pclose(pipe), 0) << command;
  return output;
}

// What the sources of a room ask for, from the archive of their objects.
std::vector<std::string> SymbolsOfRoom(std::string room) {
  std::replace(room.begin(), room.end(), '/', '_');
  return SymbolNames(OutputOf("nm --undefined-only '" BUILD_DIR "/vetlo/lib" + room + ".a'"));
}

// The rooms whose objects make the library.
std::set<std::string> RoomsOfTheLibrary() {
  const Rooms rooms = ReadRooms(ReadText(BUILD_DIR "/rooms.txt"));
  std::set<std::string> made_of = RoomsBeneath("vetlo/library", rooms);
  made_of.insert("vetlo/library");
  return made_of;
}

bool CountsItsCoverage() {
  return OutputOf("nm '" BUILD_DIR "/bin/libvetlo.so'").find("__gcov_") != std::string::npos;
}

TEST(LibraryNeeds, LibrariesAreReadFromTheDynamicSection) {
  EXPECT_THAT(NeededLibraries("Dynamic section at offset 0x2d80 contains 3 entries:\n"
                              "  Tag                Type      Name/Value\n"
                              " 0x0000000000000001 (NEEDED)   Shared library: [libm.so.6]\n"
                              " 0x000000000000000e (SONAME)   Library soname: [libvetlo.so]\n"),
              ElementsAre("libm.so.6"));
}

TEST(LibraryNeeds, SymbolsAreReadWithoutTheirVersions) {
  EXPECT_THAT(SymbolNames("                 U memcpy@GLIBC_2.14\n"
                          "                 w __gmon_start__\n"
                          "                 U fopen@@GLIBC_2.2.5\n"),
              ElementsAre("memcpy", "__gmon_start__", "fopen"));
}

TEST(LibraryNeeds, OnlyTheStandardLibrariesAreNotForeign) {
  EXPECT_THAT(ForeignLibraries({"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1", "libc.so.6",
                                "ld-linux-x86-64.so.2"}),
              IsEmpty());
  EXPECT_THAT(ForeignLibraries({"libc.so.6", "libsqlite3.so.0", "libicuuc.so.72"}),
              ElementsAre("libsqlite3.so.0", "libicuuc.so.72"));
}

TEST(LibraryNeeds, TheClockIsForbidden) {
  EXPECT_THAT(ForbiddenSymbols(
                  {"time", "clock_gettime", "localtime_r", "_ZNSt6chrono3_V212system_clock3nowEv"}),
              testing::SizeIs(4));
}

TEST(LibraryNeeds, TheEnvironmentIsForbidden) {
  EXPECT_THAT(ForbiddenSymbols({"getenv", "secure_getenv", "environ"}), testing::SizeIs(3));
}

TEST(LibraryNeeds, TheLocaleIsForbidden) {
  EXPECT_THAT(
      ForbiddenSymbols({"setlocale", "localeconv", "nl_langinfo", "strtod", "snprintf",
                        "__snprintf_chk", "_ZNSt6localeC1Ev",
                        "_ZNSt7__cxx1119basic_ostringstreamIcSt11char_traitsIcESaIcEEC1Ev"}),
      testing::SizeIs(8));
}

TEST(LibraryNeeds, FilesAreForbidden) {
  EXPECT_THAT(ForbiddenSymbols({"open", "openat64", "fopen", "__open_2", "stat", "read", "unlink",
                                "_ZNSt14basic_ofstreamIcSt11char_traitsIcEEC1Ev",
                                "_ZNSt10filesystem6statusERKNS_7__cxx114pathE", "_ZSt4cout"}),
              testing::SizeIs(10));
}

TEST(LibraryNeeds, OtherProgramsAreForbidden) {
  EXPECT_THAT(ForbiddenSymbols({"system", "popen", "dlopen"}), testing::SizeIs(3));
}

TEST(LibraryNeeds, ComputingIsNotForbidden) {
  EXPECT_THAT(ForbiddenSymbols({"memcpy", "floor", "fmod", "strtol", "__cxa_throw", "_Znwm",
                                "_ZSt8to_charsPcS_d", "__stack_chk_fail", "__gmon_start__"}),
              IsEmpty());
}

TEST(Library, NeedsTheStandardLibrariesAlone) {
  if (kSanitized || CountsItsCoverage()) {
    GTEST_SKIP() << "an instrumented build brings libraries of its own";
  }
  const std::vector<std::string> libraries =
      NeededLibraries(OutputOf("readelf -d '" BUILD_DIR "/bin/libvetlo.so'"));
  ASSERT_THAT(libraries, Not(IsEmpty()));
  EXPECT_THAT(ForeignLibraries(libraries), IsEmpty());
}

TEST(Library, AsksForNoClockEnvironmentLocaleOrFileOutsideOfItsRegistry) {
  if (CountsItsCoverage()) {
    GTEST_SKIP() << "what counts the coverage writes files";
  }
  std::set<std::string> rooms = RoomsOfTheLibrary();
  ASSERT_EQ(rooms.erase("vetlo/registry"), 1U);
  ASSERT_TRUE(rooms.contains("vetlo/frame"));
  for (const std::string& room : rooms) {
    const std::vector<std::string> symbols = SymbolsOfRoom(room);
    ASSERT_THAT(symbols, Not(IsEmpty()));
    EXPECT_THAT(ForbiddenSymbols(symbols), IsEmpty()) << room;
  }
}

TEST(Library, HandlesFilesInOneRoom) {
  EXPECT_THAT(ForbiddenSymbols(SymbolsOfRoom("vetlo/registry")), testing::Contains("rename"));
}

TEST(Library, ExportsItsFourEntryPointsAndNothingElse) {
  EXPECT_THAT(SymbolNames(OutputOf("nm -D --defined-only '" BUILD_DIR "/bin/libvetlo.so'")),
              testing::UnorderedElementsAre("DllRegisterServer", "DllUnregisterServer",
                                            "DllGetClassObject", "DllCanUnloadNow"));
}

}  // namespace
}  // namespace house
