#include "tests/support/plain_store.h"

#include <sqlite3.h>

#include <stdexcept>

#include "tests/support/stored_bytes.h"

namespace vetlo::testing {

void DropIndexes(const std::string& path) {
  sqlite3* handle = nullptr;
  std::string drops;
  const auto add = [](void* to, int, char** values, char**) {
    static_cast<std::string*>(to)->append("DROP INDEX ").append(values[0]).append(";");
    return 0;
  };
  const bool read = sqlite3_open(path.c_str(), &handle) == SQLITE_OK &&
                    sqlite3_exec(handle,
                                 "SELECT name FROM sqlite_schema WHERE type = 'index' AND sql IS "
                                 "NOT NULL",
                                 add, &drops, nullptr) == SQLITE_OK;
  sqlite3_close(handle);
  if (!read || drops.empty()) {
    throw std::runtime_error("no indexes to be dropped in " + path);
  }
  RunSql(path, drops);
}

}  // namespace vetlo::testing
