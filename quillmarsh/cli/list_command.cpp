#include "quillmarsh/cli/list_command.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <ostream>
#include <string_view>
#include <vector>

#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/settings_rows.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "quillmarsh/terminal/text_layout.h"
#include "quillmarsh/terminal/text_width.h"
#include "vetlo/store/model.h"

namespace quillmarsh {
namespace {

// A heading of the list and the report numbers under it.
struct Subject {
  std::string_view heading;
  std::vector<std::int32_t> numbers;
};

const std::vector<Subject>& Subjects() {
  static const std::vector<Subject> subjects = {
      {"Net worth", {5, 6, 18, 31, 39, 20, 43, 21, 44}},
      {"Income and expenses", {19, 32, 33, 34, 40, 41, 42, 3, 4, 55, 56, 57}},
      {"Expenses", {1, 23, 36, 38, 46, 48, 50, 52}},
      {"Income", {22, 35, 37, 45, 47, 49, 51}},
      {"Budgets", {58, 59}},
      {"Investments", {13, 14, 24, 53, 15, 16, 17}},
      {"Accounts and debts", {7, 11, 8, 12, 2}},
      {"Scheduled payments", {9, 54, 10}},
      {"Histories (with --parameter1)", {25, 26, 27, 28, 29, 30}},
  };
  return subjects;
}

constexpr std::string_view kFavorites = "Favorites";
constexpr std::string_view kOthers = "Others";

std::string_view HeadingOf(const SettingsRowFacts& row) {
  if (row.group == vetlo::kFavoriteGroup) {
    return kFavorites;
  }
  for (const Subject& subject : Subjects()) {
    if (std::ranges::find(subject.numbers, row.report_number) != subject.numbers.end()) {
      return subject.heading;
    }
  }
  return kOthers;
}

std::vector<std::string_view> Headings() {
  std::vector<std::string_view> headings = {kFavorites};
  for (const Subject& subject : Subjects()) {
    headings.push_back(subject.heading);
  }
  headings.push_back(kOthers);
  return headings;
}

std::size_t WidestName(const std::vector<SettingsRowFacts>& rows) {
  std::size_t widest = 0;
  for (const SettingsRowFacts& row : rows) {
    widest = std::max(widest, CellsOf(SafeText(row.name)));
  }
  return widest;
}

std::string LineOf(const SettingsRowFacts& row, std::size_t name_width, bool customized) {
  constexpr std::size_t kNumberWidth = 5;
  constexpr std::size_t kFormWidth = 12;
  return PadLeft(std::to_string(row.number), kNumberWidth) + "  " +
         PadRight(SafeText(row.name), name_width) + "  " + PadRight(FormText(row), kFormWidth) +
         RangeText(row) + (customized ? "  (customized)" : "") + "\n";
}

// Whether a row is not as its report number has it by default. The listener hears of a row that
// cannot tell.
bool IsCustomized(vetlo::Tamo& component, vetlo::Recordset& rows, const SettingsRowFacts& row,
                  vetlo::FailureListener& listener) {
  bool customized = false;
  if (row.group != vetlo::kFavoriteGroup) {
    vetlo::ResumeNext(
        listener, [&] { customized = component.ChartReportHasBeenCustomized(rows, row.number); });
  }
  return customized;
}

}  // namespace

void ListCommand(const std::string& store_path, std::ostream& out) {
  const auto store = OpenStoreFile(store_path, vetlo::StoreAccess::kReadOnly);
  vetlo::KeptStore kept(*store);
  const vetlo::Snapshot one_state(kept);
  const auto rows = ReadSettingsRows(kept);
  TerminalPlatform platform(EnvironmentLocale());
  vetlo::Tamo component = LoadComponent().NewTamo(platform);
  vetlo::ScopedRecordset rec(kept, "ChartReportSubType");
  const std::size_t name_width = WidestName(rows);
  std::string text;
  for (const std::string_view heading : Headings()) {
    bool begun = false;
    for (const SettingsRowFacts& row : rows) {
      if (HeadingOf(row) != heading) {
        continue;
      }
      if (!begun) {
        text += (text.empty() ? "" : "\n") + std::string(heading) + "\n";
        begun = true;
      }
      text += LineOf(row, name_width, IsCustomized(component, *rec, row, kept));
    }
  }
  out << (text.empty() ? "The store has no report settings.\n" : text);
  RequireWhole(kept);
}

}  // namespace quillmarsh
