#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace vetlo {

// The bytes of a database file as they are, whatever they say: no change that was broken off is
// undone and no log taken in. They are read through the engine, because a file that is opened past
// it gives up, when it is closed, all locks that this process has on it.
class DatabaseBytes {
 public:
  // A regular file. Fails with kStoreUnusable where it cannot be opened.
  explicit DatabaseBytes(const std::string& path);

  // Reads so many bytes from a place on; false where the file has fewer. Fails with kStoreUnusable.
  [[nodiscard]] bool Read(void* bytes, std::size_t size, std::int64_t place) const;

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
  sqlite3_file* file_ = nullptr;
};

}  // namespace vetlo
