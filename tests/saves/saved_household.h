#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/household.h"
#include "tests/support/program.h"
#include "tests/support/stored_bytes.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace vetlo::testing {

// A save as the words of the command line that ask for it.
using Words = std::vector<std::string>;

inline Words Then(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

// A store file of a small household, and the ways in which its settings row 1 is changed here.
class SavedHousehold : public ::testing::Test {
 protected:
  static constexpr std::int32_t kRow = 1;

  SavedHousehold() : SavedHousehold(std::filesystem::temp_directory_path().string()) {}
  explicit SavedHousehold(const std::string& parent) : folder_(parent) {
    WriteHouseholdOfEveryKind(store_);
  }

  // A short row, and one that is as long as a row can be.
  static Words ShortRow(const std::string& store) {
    return {"customize", store,          "1",        "--as", "report", "--title", "Short",
            "--range",   "current-year", "--legend", "off"};
  }
  static Words LongRow(const std::string& store) {
    return {"customize",  store,      "1",          "--as",    "chart",        "--kind",
            "pie",        "--legend", "on",         "--range", "custom-dates", "--from",
            "2026-01-01", "--to",     "2026-03-31", "--title", LongTitle()};
  }
  static std::string LongTitle() {
    std::string title;
    for (int i = 0; i < 50; ++i) {
      title += "長";
    }
    return title;
  }

  static void ExpectOneLine(const std::string& text) {
    EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
    EXPECT_THAT(text, ::testing::StartsWith("quillmarsh: "));
    EXPECT_THAT(text, ::testing::EndsWith("\n"));
  }

  // What the store holds, after the engine has opened it to read it alone.
  static StoredBytes OpenedAndRead(const std::string& store, std::int32_t row = kRow) {
    OpenStore(store, StoreAccess::kReadOnly);
    return ReadStoredBytes(store, row);
  }

  // The same of this save, on a copy.
  StoredBytes Saved(Words (*words)(const std::string& store)) const {
    const TestFolder elsewhere;
    const std::string copy = elsewhere / "copy.qm";
    std::filesystem::copy_file(store_, copy);
    const ProgramRun run = RunProgram(PROGRAM, words(copy));
    EXPECT_EQ(run.status, 0) << run.err;
    return ReadStoredBytes(copy, kRow);
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "home.qm";
};

}  // namespace vetlo::testing
