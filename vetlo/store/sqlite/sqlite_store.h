#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vetlo/store/database.h"

namespace vetlo {

enum class StoreAccess { kReadOnly, kReadWrite };

// Opens a household's store, which may come from anywhere: the path is resolved and must name a
// regular file, links inside the file's own machinery (views, triggers, functions) are off, and
// the file must be one of ours with all its tables. Writing reaches the settings rows alone. A save
// that was broken off is undone first, also where only reading is asked for. A store that keeps a
// log of its changes, to be read by a user who may not write the file and its folder, shows what it
// held when it was opened.
// Fails with kStoreUnusable and a text for the user.
std::unique_ptr<Database> OpenStore(const std::string& path, StoreAccess access);

// Makes the indexes that a store lacks because another tool has written it, all of them or none,
// and hands back how many those were. Without them it shows the same, but not as fast. Fails with
// kStoreUnusable where the store cannot be opened or written.
std::size_t MakeMissingIndexes(const std::string& path);

// A condition passes by a row whose value is none of its column's type, such as a day written as a
// text, and nothing fails by that. This looks for such values in the columns that conditions ask
// for (numbers and dates; the settings rows aside) and tells the listener of each, a few dozen at
// most. It walks over the tables once. The store is one of OpenStore, or a wrapper's inner one; of
// any other nothing is known.
void TellOfPassedByValues(Database& store, FailureListener& listener);

// Fills a new store. Nothing is checked but the names of tables and columns: what is written is
// what the store then holds.
class StoreBuilder {
 public:
  using Values = std::vector<std::pair<std::string_view, Variant>>;

  // A store in memory, for tests.
  StoreBuilder();
  // A new file; fails with kStoreUnusable where there is one already, where something is left of
  // another store of that name (files_beside.h), or where none can be made. The file is only
  // complete after Finish.
  explicit StoreBuilder(const std::string& path);
  ~StoreBuilder();
  StoreBuilder(StoreBuilder&&) noexcept;
  StoreBuilder& operator=(StoreBuilder&&) noexcept;

  // Adds a row. Columns that are not named take their default.
  void Insert(std::string_view table, const Values& values);

  // Runs a statement as it stands, such as one that damages a row for a test.
  void Execute(const std::string& sql);

  // Writes the indexes and makes all that was added last.
  void Finish();

  // Finishes and opens a store in memory; the builder can't be used afterwards.
  std::unique_ptr<Database> Open();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace vetlo
