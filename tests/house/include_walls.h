#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/house/source_tree.h"

namespace house {

// The rooms that each room's target links, by their folders.
using Rooms = std::map<std::string, std::set<std::string>>;

// Reads lines of the kind "vetlo/store/sqlite: vetlo_store vetlo_platform".
Rooms ReadRooms(const std::string& list);

// The longest folder of a room that the path lies in; empty for a path outside of all rooms.
std::string RoomOf(std::string_view path, const Rooms& rooms);

// The rooms that a room stands on, those beneath them included.
std::set<std::string> RoomsBeneath(const std::string& room, const Rooms& rooms);

// One line for each #include that crosses a wall, and for each thing in a room's sources that the
// room has no business with; empty for a file that keeps to its room.
std::vector<std::string> CrossedWalls(const SourceFile& file, const Rooms& rooms);
std::vector<std::string> ForbiddenUses(const SourceFile& file);

}  // namespace house
