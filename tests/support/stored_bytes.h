#pragma once

#include <cstdint>
#include <string>

namespace vetlo::testing {

// What a store file holds to the byte, read past the engine that is under test. It must be whole:
// reading one that a save was broken off in fails.
struct StoredBytes {
  std::string row;   // one settings row in all its fields
  std::string rest;  // every other row of every table

  friend bool operator==(const StoredBytes&, const StoredBytes&) = default;
};
StoredBytes ReadStoredBytes(const std::string& path, std::int32_t settings_row);

// Another program's statements on a store.
void RunSql(const std::string& path, const std::string& sql);

// A change by another process that is killed in its middle: some of it has reached the file, and
// the journal that undoes it lies beside. It takes statements that change some dozen pages.
void BreakOffAChange(const std::string& path, const std::string& sql);

// Another process that runs these statements and keeps what they lock for as long as this lives.
class OtherProcess {
 public:
  OtherProcess(const std::string& path, const std::string& sql);
  ~OtherProcess() { End(); }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  // Kills it, which frees its locks.
  void End();

 private:
  int process_ = 0;
};

// Becomes a user without rights of his own, where this process has any; for a forked child.
void BecomeNobody();

}  // namespace vetlo::testing
