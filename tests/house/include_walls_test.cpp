#include "tests/house/include_walls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace house {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const Rooms kRooms = ReadRooms(
    "vetlo/platform: \n"
    "vetlo/store: vetlo_platform\n"
    "vetlo/store/sqlite: vetlo_store vetlo_platform\n"
    "vetlo/output: vetlo_platform\n"
    "quillmarsh/cli: vetlo_store vetlo_platform\n");

std::vector<std::string> Crossed(const std::string& path, const std::string& include) {
  return CrossedWalls({path, "#include \"" + include + "\"\n"}, kRooms);
}

TEST(IncludeWalls, ARoomIsTheLongestFolderOfAPath) {
  EXPECT_EQ(RoomOf("vetlo/store/sqlite/cursor.cpp", kRooms), "vetlo/store/sqlite");
  EXPECT_EQ(RoomOf("vetlo/store/model.h", kRooms), "vetlo/store");
  EXPECT_EQ(RoomOf("vetlo/storehouse/model.h", kRooms), "");
}

TEST(IncludeWalls, ARoomSeesItselfAndWhatItLinks) {
  EXPECT_THAT(Crossed("vetlo/store/model.cpp", "vetlo/store/model.h"), IsEmpty());
  EXPECT_THAT(Crossed("vetlo/store/model.cpp", "vetlo/platform/date.h"), IsEmpty());
  EXPECT_THAT(Crossed("vetlo/store/sqlite/cursor.cpp", "vetlo/store/model.h"), IsEmpty());
}

TEST(IncludeWalls, ARoomDoesNotSeeWhatItDoesNotLink) {
  EXPECT_THAT(Crossed("vetlo/platform/date.cpp", "vetlo/store/model.h"),
              ElementsAre("vetlo/platform/date.cpp includes vetlo/store/model.h"));
  EXPECT_THAT(Crossed("vetlo/store/model.cpp", "vetlo/store/sqlite/cursor.h"), Not(IsEmpty()));
}

TEST(IncludeWalls, TheComponentDoesNotSeeItsHost) {
  EXPECT_THAT(Crossed("vetlo/output/page.cpp", "quillmarsh/cli/command.h"), Not(IsEmpty()));
}

TEST(IncludeWalls, AFolderThatIsNoRoomIsOpenToNobody) {
  EXPECT_THAT(Crossed("vetlo/store/model.cpp", "vetlo/elsewhere/model.h"), Not(IsEmpty()));
  EXPECT_THAT(Crossed("vetlo/elsewhere/model.cpp", "vetlo/store/model.h"), Not(IsEmpty()));
}

TEST(IncludeWalls, TheMainFileSeesWhatTheCommandLineSees) {
  EXPECT_THAT(Crossed("quillmarsh/main.cpp", "quillmarsh/cli/command.h"), IsEmpty());
  EXPECT_THAT(Crossed("quillmarsh/main.cpp", "vetlo/output/page.h"), Not(IsEmpty()));
}

TEST(IncludeWalls, TheHeaderForHostsSeesWhatAHostLinks) {
  const Rooms rooms = ReadRooms("vetlo/platform: \nvetlo/frame: \nvetlo/host: vetlo_platform\n");
  const auto crossed = [&](const std::string& include) {
    return CrossedWalls({"vetlo/vetlo.h", "#include \"" + include + "\"\n"}, rooms);
  };
  EXPECT_THAT(crossed("vetlo/host/tamo.h"), IsEmpty());
  EXPECT_THAT(crossed("vetlo/platform/platform.h"), IsEmpty());
  EXPECT_THAT(crossed("vetlo/frame/tamo.h"), Not(IsEmpty()));
}

TEST(IncludeWalls, RoomsBeneathAreThoseOfTheRoomsBeneathToo) {
  EXPECT_THAT(RoomsBeneath("vetlo/store/sqlite", kRooms),
              ElementsAre("vetlo/platform", "vetlo/store"));
  EXPECT_THAT(RoomsBeneath("vetlo/platform", kRooms), IsEmpty());
}

TEST(IncludeWalls, APathThatLeadsOutOfItsFolderIsRefused) {
  EXPECT_THAT(Crossed("vetlo/store/model.cpp", "../platform/date.h"), Not(IsEmpty()));
}

TEST(IncludeWalls, AnIncludeIsSeenHoweverItIsWritten) {
  EXPECT_THAT(CrossedWalls({"vetlo/platform/date.cpp",
                            "#include <vetlo/store/model.h>\n"
                            "  #  include \"vetlo/store/database.h\"  // why\n"},
                           kRooms),
              ElementsAre("vetlo/platform/date.cpp includes vetlo/store/model.h",
                          "vetlo/platform/date.cpp includes vetlo/store/database.h"));
}

TEST(ForbiddenUses, TheStoresEngineAloneIncludesItsLibrary) {
  const std::string text = "#include <sqlite3.h>\n";
  EXPECT_THAT(ForbiddenUses({"vetlo/store/sqlite/cursor.h", text}), IsEmpty());
  EXPECT_THAT(ForbiddenUses({"vetlo/store/model.h", text}),
              ElementsAre("vetlo/store/model.h includes sqlite3.h"));
  EXPECT_THAT(ForbiddenUses({"quillmarsh/cli/store_file.cpp", text}), Not(IsEmpty()));
}

TEST(ForbiddenUses, TheComponentIncludesNoHeaderOfFilesOrTheLocale) {
  EXPECT_THAT(ForbiddenUses({"vetlo/output/page.cpp", "#include <fstream>\n#include <locale>\n"}),
              ElementsAre("vetlo/output/page.cpp includes fstream",
                          "vetlo/output/page.cpp includes locale"));
}

TEST(ForbiddenUses, TheComponentNamesNoClockAndNoEnvironment) {
  EXPECT_THAT(
      ForbiddenUses({"vetlo/frame/now.cpp",
                     "auto now = std::chrono::system_clock::now();\n"
                     "auto zone = std::getenv(\"TZ\");\n"}),
      ElementsAre("vetlo/frame/now.cpp uses system_clock", "vetlo/frame/now.cpp uses getenv"));
}

TEST(ForbiddenUses, TheRegistryAndWhatAHostLinksHaveSurroundings) {
  const std::string text = "#include <filesystem>\nstd::getenv(\"HOME\");\n";
  EXPECT_THAT(ForbiddenUses({"vetlo/registry/files.cpp", text}), IsEmpty());
  EXPECT_THAT(ForbiddenUses({"vetlo/host/files.cpp", text}), IsEmpty());
  EXPECT_THAT(ForbiddenUses({"vetlo/library/files.cpp", text}), testing::SizeIs(2));
  EXPECT_THAT(ForbiddenUses({"vetlo/host/files.cpp", "#include <sqlite3.h>\n"}), Not(IsEmpty()));
}

TEST(ForbiddenUses, ACommentMaySpeakOfThem) {
  EXPECT_THAT(ForbiddenUses({"vetlo/frame/now.cpp", "int x;  // no getenv here\n"}), IsEmpty());
}

TEST(ForbiddenUses, TheHostMayDoAllThat) {
  EXPECT_THAT(ForbiddenUses({"quillmarsh/cli/now.cpp", "#include <ctime>\nstd::getenv(\"TZ\");\n"}),
              IsEmpty());
}

std::vector<SourceFile> SourcesOfTheHouse() {
  std::vector<SourceFile> files = SourcesBelow("vetlo");
  for (SourceFile& file : SourcesBelow("quillmarsh")) {
    files.push_back(std::move(file));
  }
  return files;
}

TEST(House, NoIncludeCrossesAWall) {
  const Rooms rooms = ReadRooms(ReadText(BUILD_DIR "/rooms.txt"));
  ASSERT_TRUE(rooms.contains("vetlo/platform"));
  for (const SourceFile& file : SourcesOfTheHouse()) {
    EXPECT_THAT(CrossedWalls(file, rooms), IsEmpty());
  }
}

TEST(House, EveryRoomLinksRoomsAlone) {
  for (const auto& [folder, links] : ReadRooms(ReadText(BUILD_DIR "/rooms.txt"))) {
    EXPECT_FALSE(links.contains("")) << folder << " links a target that is no room";
  }
}

// The component's own rooms: those of its library that nobody else stands on.
TEST(House, NoHostLinksTheComponent) {
  const Rooms rooms = ReadRooms(ReadText(BUILD_DIR "/rooms.txt"));
  std::set<std::string> shared = RoomsBeneath("vetlo/host", rooms);
  shared.merge(std::set<std::string>{"vetlo/host", "vetlo/services"});
  for (const auto& [folder, links] : rooms) {
    if (!folder.starts_with("quillmarsh/")) {
      continue;
    }
    for (const std::string& beneath : RoomsBeneath(folder, rooms)) {
      EXPECT_TRUE(beneath.starts_with("quillmarsh/") || shared.contains(beneath))
          << folder << " stands on " << beneath;
    }
  }
  EXPECT_FALSE(shared.contains("vetlo/frame"));
}

TEST(House, TheComponentReachesForNothingOutside) {
  for (const SourceFile& file : SourcesOfTheHouse()) {
    EXPECT_THAT(ForbiddenUses(file), IsEmpty());
  }
}

}  // namespace
}  // namespace house
