// plain_copy STORE COPY: copies a store without its indexes, as another tool would have written it.

#include <sqlite3.h>

#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

struct Close {
  void operator()(sqlite3* handle) const { sqlite3_close(handle); }
};

int AddText(void* to, int, char** values, char**) {
  *static_cast<std::string*>(to) += values[0];
  return 0;
}

// The texts that a statement gives, one after the other.
std::string Run(sqlite3* handle, const std::string& sql) {
  std::string texts;
  if (sqlite3_exec(handle, sql.c_str(), AddText, &texts, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle));
  }
  return texts;
}

void MakePlain(const std::string& store, const std::string& copy) {
  std::filesystem::copy_file(store, copy, std::filesystem::copy_options::overwrite_existing);
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(copy.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, Close> handle(opened);
  if (result != SQLITE_OK) {
    throw std::runtime_error("cannot open " + copy);
  }
  // Those of the keys have no text and cannot be dropped.
  Run(opened, Run(opened,
                  "SELECT 'DROP INDEX ' || name || ';' FROM sqlite_schema "
                  "WHERE type = 'index' AND sql IS NOT NULL"));
  Run(opened, "VACUUM");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: plain_copy STORE COPY\n";
    return 2;
  }
  try {
    MakePlain(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::cerr << "plain_copy: " << error.what() << "\n";
    return 1;
  }
  return 0;
}
