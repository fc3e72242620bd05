// Every report of the sample household on screens of many widths.

#include <gtest/gtest.h>
#include <unistd.h>

#include <regex>

#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/terminal/report_text.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "quillmarsh/terminal/text_width.h"
#include "tests/cli/quill.h"
#include "tests/support/childs_terminal.h"

namespace vetlo::testing {
namespace {

using quillmarsh::RenderReport;
using quillmarsh::ScreenWidth;

constexpr std::int32_t kReportNumbers = 59;
constexpr std::int32_t kFavorites = 18;
constexpr std::size_t kWidths[] = {20, 25, 32, 40, 51, 60, 72, 80, 100, 132};

class NarrowScreen : public ::testing::Test {
 protected:
  NarrowScreen() {
    EXPECT_EQ(Quill({"sample", store_, "--until", "2026-03-20", "--transactions", "1500"}).status,
              0);
  }

  // The reports among the rows; a history has a subject in the favourites alone.
  std::vector<Document> Reports() const {
    quillmarsh::TerminalPlatform platform({".", ",", "$", true}, DateSerial(2026, 3, 20));
    const auto store = quillmarsh::OpenStoreFile(store_, StoreAccess::kReadOnly);
    const auto rows = store->OpenRecordset("ChartReportSubType");
    Tamo component = quillmarsh::LoadComponent().NewTamo(platform);
    std::vector<Document> reports;
    for (std::int32_t row = 1; row <= kReportNumbers + kFavorites; ++row) {
      Document report;
      component.ShowChartReport(*store, *rows, row, nullptr, &report);
      if (report.Visible()) {
        reports.push_back(std::move(report));
      }
    }
    return reports;
  }

  TestFolder folder_;
  const std::string store_ = folder_ / "home.qm";
};

// The amounts and the dates in the table of a report, in their order.
std::vector<std::string> AmountsIn(const std::string& report) {
  const std::string table = report.substr(std::min(report.find("__"), report.size()));
  static const std::regex amount_or_date(
      "  (-?[0-9]{1,3}(,[0-9]{3})*(\\.[0-9]+)?|[0-9]{4}/[0-9]{2}/[0-9]{2})(?=  |\\n)");
  std::vector<std::string> amounts;
  for (std::sregex_iterator found(table.begin(), table.end(), amount_or_date), end; found != end;
       ++found) {
    amounts.push_back(found->str(1));
  }
  return amounts;
}

std::size_t WidestIn(const std::string& text) {
  std::istringstream lines(text);
  std::size_t widest = 0;
  for (std::string line; std::getline(lines, line);) {
    widest = std::max(widest, quillmarsh::CellsOf(line));
  }
  return widest;
}

TEST_F(NarrowScreen, ShowsEveryAmountAndFitsWhereItCan) {
  const std::vector<Document> reports = Reports();
  EXPECT_GT(reports.size(), 60U);
  std::size_t too_wide = 0;
  for (const Document& report : reports) {
    const std::string whole = RenderReport(report, ScreenWidth{});
    const std::size_t least = WidestIn(RenderReport(report, {1, true}));
    for (const std::size_t columns : kWidths) {
      const std::string shown = RenderReport(report, {columns, true});
      ASSERT_EQ(AmountsIn(shown), AmountsIn(whole)) << "on " << columns << " columns:\n" << shown;
      ASSERT_LE(WidestIn(shown), std::max(columns, least)) << shown;
      too_wide += least > columns ? 1 : 0;
    }
  }
  // Many columns of amounts need their room.
  EXPECT_GT(too_wide, 0U);
}

TEST_F(NarrowScreen, IsATerminalAlone) {
  const ChildsTerminal terminal(40);
  if (!terminal.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  const std::vector<std::string> words = {"report", store_, "43", "--today", "2026-03-20"};
  const ProgramRun on_terminal =
      RunProgram(PROGRAM, words, {}, [&] { terminal.TakeFor({STDOUT_FILENO}); });
  EXPECT_EQ(on_terminal.status, 0);
  const std::string shown = terminal.Shown();
  EXPECT_EQ(WidestIn(shown), 40U) << shown;
  EXPECT_NE(shown.find("…"), std::string::npos) << shown;

  const std::string piped = RunProgram(PROGRAM, words, {"COLUMNS=40"}).out;
  EXPECT_EQ(piped.find("…"), std::string::npos) << piped;
  EXPECT_GT(WidestIn(piped), 40U);
}

TEST_F(NarrowScreen, CutsTheLabelsOfAChartForTheWidthOnWhichItIsDrawn) {
  const auto drawn_on = [&](const char* columns) {
    return RunProgram(PROGRAM, {"report", store_, "6", "--chart", "--today", "2026-03-20"},
                      {columns})
        .out;
  };
  EXPECT_EQ(drawn_on("COLUMNS=20"), drawn_on("COLUMNS=40"));
  EXPECT_NE(drawn_on("COLUMNS=40"), drawn_on("COLUMNS=60"));
}

}  // namespace
}  // namespace vetlo::testing
