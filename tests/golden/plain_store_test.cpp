// A store without indexes, as another tool would write it, shows all reports and charts as one with
// them does: every settings row of a household is traced on both, to the byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "quillmarsh/cli/command_line.h"
#include "quillmarsh/cli/settings_rows.h"
#include "tests/support/plain_store.h"
#include "tests/support/program.h"
#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace vetlo::testing {
namespace {

// What the program prints for these words.
std::string Printed(const std::vector<std::string>& words) {
  std::vector<const char*> arguments = {"quillmarsh"};
  for (const std::string& word : words) {
    arguments.push_back(word.c_str());
  }
  std::ostringstream out;
  std::ostringstream err;
  const int status =
      quillmarsh::RunCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, err);
  EXPECT_EQ(status, 0) << err.str();
  return out.str();
}

std::string Trace(const std::string& store, const quillmarsh::SettingsRowFacts& row) {
  std::vector<std::string> words = {"trace",   store,     std::to_string(row.number),
                                    "--store", "--today", "2026-10-15"};
  if (row.group == kCallerParametersGroup) {
    words.insert(words.end(), {"--parameter1", "3", "--parameter2", "2"});
  }
  return Printed(words);
}

TEST(PlainStore, IsTracedAsOneWithIndexesIs) {
  const TestFolder folder;
  const std::string indexed = folder / "indexed.qm";
  const std::string plain = folder / "plain.qm";
  Printed({"sample", indexed, "--transactions", "3000", "--years", "4", "--until", "2026-10-15"});
  std::filesystem::copy_file(indexed, plain);
  DropIndexes(plain);
  const auto rows = quillmarsh::ReadSettingsRows(*OpenStore(indexed, StoreAccess::kReadOnly));
  std::set<std::int32_t> numbers;
  for (const quillmarsh::SettingsRowFacts& row : rows) {
    numbers.insert(row.report_number);
    // No EXPECT_EQ: what it would print of two long traces helps nobody.
    EXPECT_TRUE(Trace(plain, row) == Trace(indexed, row)) << "row " << row.number;
  }
  EXPECT_EQ(numbers.size(), 59U);
}

}  // namespace
}  // namespace vetlo::testing
