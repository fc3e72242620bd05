#include "tests/sweeps/home.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "tests/support/household.h"
#include "tests/support/plain_store.h"
#include "tests/support/stored_bytes.h"
#include "vetlo/registry/component_registry.h"
#include "vetlo/surface/result_codes.h"
#include "vetlo/surface/tamo_interface.h"

namespace sweeps {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStoreEnd = ".qm";
constexpr const char* kFolder = "(a folder)";  // what a folder says
constexpr std::string_view kJournalEnd = "-journal";

std::string QuickFolder() {
  const char* const memory = "/dev/shm";
  return access(memory, W_OK) == 0 ? memory : fs::temp_directory_path().string();
}

// Makes a favourite of a row that no command of the sweep asks for.
void NameFavorite(const std::string& store) {
  vetlo::testing::RunSql(store,
                         "UPDATE ChartReportSubType SET ChartReportType = 4, "
                         "ChartReportSubTypeName = 'The old one' "
                         "WHERE ChartReportSubTypeNumber = 159");
}

// The library beside the program, in the words of one before it.
void RegisterAnOlder(const std::string& registry) {
  vetlo::ComponentRecord record;
  record.class_id = vetlo::GuidText(vetlo::CLSID_clsTamo);
  record.library = (fs::path(PROGRAM).parent_path() / "libvetlo.so").string();
  record.version = "0";
  vetlo::WriteComponent(registry, record);
}

// A journal that a save had not filled yet undoes nothing, and the next save takes it over.
bool SaysNothing(const std::string& path, const std::string& bytes) {
  return path.ends_with(kJournalEnd) && (bytes.empty() || bytes.front() == '\0');
}

// Every complaint about the file as a database.
std::string Complaint(const std::string& path) {
  sqlite3* handle = nullptr;
  std::string complaint;
  const auto add = [](void* text, int, char** values, char**) {
    *static_cast<std::string*>(text) += values[0];
    return 0;
  };
  if (sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
      sqlite3_exec(handle, "PRAGMA integrity_check", add, &complaint, nullptr) != SQLITE_OK) {
    complaint = sqlite3_errmsg(handle);
  }
  sqlite3_close(handle);
  return complaint == "ok" ? "" : complaint;
}

std::string ContentsOf(const std::string& path) {
  if (std::string complaint = Complaint(path); !complaint.empty()) {
    return complaint;
  }
  const vetlo::testing::StoredBytes bytes = vetlo::testing::ReadStoredBytes(path, 1);
  return bytes.row + bytes.rest;
}

}  // namespace

Home::Home(bool registered) : folder_(QuickFolder()) {
  vetlo::testing::WriteHouseholdOfEveryKind(folder_ / "home.qm");
  NameFavorite(folder_ / "home.qm");
  fs::copy_file(folder_ / "home.qm", folder_ / "plain.qm");
  vetlo::testing::DropIndexes(folder_ / "plain.qm");
  if (registered) {
    RegisterAnOlder(folder_ / ".local/share/vetlo/components.ini");
  }
  beginning_ = Read();
}

std::vector<std::string> Home::Words(const std::vector<std::string>& words) const {
  static const std::map<std::string, std::string> kFiles = {
      {"STORE", "home.qm"}, {"PLAIN", "plain.qm"}, {"NEW", "new.qm"}};
  std::vector<std::string> named = words;
  for (std::string& word : named) {
    const auto file = kFiles.find(word);
    if (file != kFiles.end()) {
      word = folder_ / file->second;
    }
  }
  return named;
}

// Where the program's clock stands, it is tomorrow already in that zone.
std::vector<std::string> Home::Settings() const {
  std::vector<std::string> settings = {"HOME=" + folder_.path(), "LC_ALL=de_DE.UTF-8",
                                       "TZ=Pacific/Kiritimati"};
  if (const char* const locales = std::getenv("QUILLMARSH_TEST_LOCALES")) {
    settings.push_back(std::string("LOCPATH=") + locales);
  }
  return settings;
}

Home::Contents Home::Look() {
  UndoBrokenSaves();
  Contents contents;
  for (const auto& [path, bytes] : Read()) {
    if (!SaysNothing(path, bytes)) {
      contents[path] = path.ends_with(kStoreEnd) ? TextOfStore(path, bytes) : bytes;
    }
  }
  return contents;
}

void Home::Restore() {
  if (Read() == beginning_) {
    return;
  }
  for (const auto& entry : fs::directory_iterator(folder_.path())) {
    fs::remove_all(entry.path());
  }
  for (const auto& [path, bytes] : beginning_) {
    if (bytes == kFolder) {
      fs::create_directory(path);
    } else {
      vetlo::testing::WriteFile(path, bytes);
    }
  }
}

Home::Files Home::Read() const {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(folder_.path())) {
    const std::string path = entry.path().string();
    files[path] = entry.is_directory() ? kFolder : vetlo::testing::ReadFile(path);
  }
  return files;
}

void Home::UndoBrokenSaves() const {
  for (const auto& [path, bytes] : Read()) {
    if (path.ends_with(kJournalEnd)) {
      const std::string store = path.substr(0, path.size() - kJournalEnd.size());
      vetlo::testing::RunSql(store, "PRAGMA schema_version");
    }
  }
}

const std::string& Home::TextOfStore(const std::string& path, const std::string& bytes) {
  const auto known = texts_.find(bytes);
  return known != texts_.end() ? known->second : texts_[bytes] = ContentsOf(path);
}

}  // namespace sweeps
