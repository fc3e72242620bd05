#include "tests/house/include_walls.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace house {
namespace {

// The one room that sees the store's engine.
constexpr std::string_view kStoreEngine = "vetlo/store/sqlite";
constexpr std::string_view kStoreEngineHeader = "sqlite3.h";

// A file outside of all rooms goes in through the door of one.
constexpr struct {
  std::string_view file, room;
} kDoors[] = {{"quillmarsh/main.cpp", "quillmarsh/cli"}, {"vetlo/vetlo.h", "vetlo/host"}};

// Rooms below vetlo/ that have files and surroundings: what a host links, and the one place of the
// component that keeps its registry.
constexpr std::string_view kRoomsWithSurroundings[] = {kStoreEngine, "vetlo/host",
                                                       "vetlo/registry"};

// What the component's sources do not name: it has neither files nor a terminal, and the clock,
// the environment and the locale come to it from its host.
constexpr std::string_view kForbiddenHeaders[] = {"iostream", "fstream", "filesystem", "ctime",
                                                  "time.h",   "clocale", "locale",     "locale.h",
                                                  "cstdio",   "stdio.h", "unistd.h"};

bool IsBelow(std::string_view path, std::string_view folder) {
  return path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/';
}

bool NamesAHouse(std::string_view include) {
  return IsBelow(include, "vetlo") || IsBelow(include, "quillmarsh");
}

std::string HomeOf(std::string_view file, const Rooms& rooms) {
  for (const auto& door : kDoors) {
    if (file == door.file) {
      return std::string(door.room);
    }
  }
  return RoomOf(file, rooms);
}

// The name in the #include of a line, or nothing.
std::string IncludeIn(const std::string& line) {
  static const std::regex kInclude(R"(^\s*#\s*include\s*[<"]([^>"]+)[>"].*)");
  std::smatch match;
  return std::regex_match(line, match, kInclude) ? match[1].str() : "";
}

bool IsOpen(const std::string& home, const std::string& include, const Rooms& rooms) {
  const std::string asked = RoomOf(include, rooms);
  return !asked.empty() && !home.empty() && (asked == home || rooms.at(home).contains(asked));
}

bool IsForbiddenHeader(const std::string& include) {
  return std::find(std::begin(kForbiddenHeaders), std::end(kForbiddenHeaders), include) !=
         std::end(kForbiddenHeaders);
}

// The first forbidden word in the code of a line, or nothing.
std::string ForbiddenWordIn(const std::string& line) {
  static const std::regex kWord(
      R"(\b(getenv|secure_getenv|system_clock|steady_clock|high_resolution_clock)\b)");
  const std::string code = line.substr(0, line.find("//"));
  std::smatch word;
  return std::regex_search(code, word, kWord) ? word.str() : "";
}

}  // namespace

Rooms ReadRooms(const std::string& list) {
  std::map<std::string, std::string> folder_of_target;
  for (const std::string& line : Lines(list)) {
    const std::string folder = line.substr(0, line.find(':'));
    std::string target = folder;
    std::replace(target.begin(), target.end(), '/', '_');
    folder_of_target[target] = folder;
  }
  Rooms rooms;
  for (const std::string& line : Lines(list)) {
    const std::size_t colon = line.find(':');
    std::set<std::string>& links = rooms[line.substr(0, colon)];
    std::istringstream targets(line.substr(std::min(colon, line.size() - 1) + 1));
    for (std::string target; targets >> target;) {
      links.insert(folder_of_target[target]);
    }
  }
  return rooms;
}

std::string RoomOf(std::string_view path, const Rooms& rooms) {
  std::string longest;
  for (const auto& [folder, links] : rooms) {
    if (IsBelow(path, folder) && folder.size() > longest.size()) {
      longest = folder;
    }
  }
  return longest;
}

std::set<std::string> RoomsBeneath(const std::string& room, const Rooms& rooms) {
  std::set<std::string> beneath;
  for (const std::string& link : rooms.at(room)) {
    beneath.insert(link);
    beneath.merge(RoomsBeneath(link, rooms));
  }
  return beneath;
}

std::vector<std::string> CrossedWalls(const SourceFile& file, const Rooms& rooms) {
  const std::string home = HomeOf(file.path, rooms);
  std::vector<std::string> crossed;
  for (const std::string& line : Lines(file.text)) {
    const std::string include = IncludeIn(line);
    const bool sideways = include.starts_with("./") || include.find("../") != std::string::npos;
    if (sideways || (NamesAHouse(include) && !IsOpen(home, include, rooms))) {
      crossed.push_back(file.path + " includes " + include);
    }
  }
  return crossed;
}

std::vector<std::string> ForbiddenUses(const SourceFile& file) {
  std::vector<std::string> uses;
  const bool component =
      IsBelow(file.path, "vetlo") &&
      std::none_of(std::begin(kRoomsWithSurroundings), std::end(kRoomsWithSurroundings),
                   [&](std::string_view room) { return IsBelow(file.path, room); });
  for (const std::string& line : Lines(file.text)) {
    const std::string include = IncludeIn(line);
    const bool engine = include == kStoreEngineHeader && !IsBelow(file.path, kStoreEngine);
    if (engine || (component && IsForbiddenHeader(include))) {
      uses.push_back(file.path + " includes " + include);
    }
    const std::string word = ForbiddenWordIn(line);
    if (component && !word.empty()) {
      uses.push_back(file.path + " uses " + word);
    }
  }
  return uses;
}

}  // namespace house
