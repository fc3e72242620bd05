#include "vetlo/store/sqlite/sole_use.h"

#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/database_bytes.h"
#include "vetlo/store/sqlite/files_beside.h"

namespace vetlo {
namespace {

constexpr std::string_view kFirstBytes("SQLite format 3\0", 16);

// Whether the engine would take it for a database, though perhaps a damaged one. An empty file is
// one.
bool BeginsAsADatabase(const std::string& path) {
  const DatabaseBytes file(path);
  std::array<char, kFirstBytes.size()> bytes = {};
  const bool any = file.Read(bytes.data(), 1, 0);
  return !any || (file.Read(bytes.data(), bytes.size(), 0) &&
                  std::string_view(bytes.data(), bytes.size()) == kFirstBytes);
}

// Whatever it is, it may be nothing without them.
void RequireNothingBeside(const std::string& path) {
  const auto beside = FilesBeside(path);
  if (!beside.empty()) {
    throw Failure(FailureNumber::kStoreUnusable,
                  "it cannot be read as a database, and '" + beside.front() +
                      "' beside it may be what it lacks; move both away");
  }
}

// The engine opens a file that may not be written to be read, and lets that be enough. Somebody
// could set up a log between the next two steps; the last tells.
void TakeAlone(Connection& connection) {
  if (sqlite3_db_readonly(connection.handle(), "main") != 0) {
    RaiseStoreFailure(connection.handle(), SQLITE_READONLY);
  }
  connection.Execute("PRAGMA journal_mode = DELETE");
  connection.Execute("BEGIN EXCLUSIVE");
  if (connection.QueryInteger("SELECT journal_mode = 'delete' FROM pragma_journal_mode") != 1) {
    RaiseStoreFailure(connection.handle(), SQLITE_BUSY);
  }
}

std::string ResolvedPath(const std::string& path) {
  std::error_code error;
  std::string file = std::filesystem::canonical(path, error);
  if (error) {
    throw Failure(FailureNumber::kStoreUnusable, error.message());
  }
  return file;
}

}  // namespace

SoleUse::SoleUse(const std::string& path) {
  const std::string file = ResolvedPath(path);
  RequireSaneFilesBeside(file);
  if (!BeginsAsADatabase(file)) {
    RequireNothingBeside(file);
    return;
  }
  try {
    connection_.emplace(Connection::OpenFile(file, StoreAccess::kReadWrite));
    TakeAlone(*connection_);
  } catch (const NoSoundDatabase&) {
    connection_.reset();
    RequireNothingBeside(file);
  }
}

}  // namespace vetlo
