#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <memory>
#include <string>

namespace vetlo {

// A database may keep what was changed last in a log beside its file ("-wal"), found through an
// index of it in shared memory ("-shm"). Whoever reads it makes both files, and only who may write
// the file and its folder takes them away again.

// Whether a file keeps such a log. Fails with kStoreUnusable where it cannot be read.
bool KeepsLog(const std::string& path);

// Whether there is anything in its log.
bool HasLog(const std::string& path);

// Whether this user may write the file and its folder, so that the last to close it takes its log
// in.
bool MayTakeLogIn(const std::string& path);

// The bytes of a whole database, in memory of the engine.
struct DatabaseImage {
  struct Free {
    void operator()(unsigned char* bytes) const { sqlite3_free(bytes); }
  };
  std::unique_ptr<unsigned char, Free> bytes;
  std::size_t size = 0;
};

// Reads a file whose log is empty, as a database that keeps none. Fails with kStoreUnusable where
// somebody changes the file meanwhile, or where it is too large to be held.
DatabaseImage ReadWithoutLog(const std::string& path);

}  // namespace vetlo
