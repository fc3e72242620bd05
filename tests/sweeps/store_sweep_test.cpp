// Fails every operation on the store, one after another, once and from then on, of every settings
// row and every command, and looks at what the user is told.

#include <gtest/gtest.h>

#include <ostream>

#include "tests/cli/quill.h"
#include "tests/support/household.h"
#include "tests/sweeps/failing_store_file.h"
#include "tests/sweeps/tally.h"
#include "vetlo/host/component.h"
#include "vetlo/store/model.h"

namespace sweeps {
namespace {

using vetlo::testing::FailurePlan;
using Words = std::vector<std::string>;

constexpr const char* kStore = "the store";  // its name does not matter
constexpr std::int32_t kFirstChartRow = 101;

// ---- the commands

// A command, and the settings rows that the store has for it.
struct Swept {
  Words words;
  std::string rows = "5, 159";
};

bool TakesSubject(std::int32_t row) {
  const std::int32_t number = row % (kFirstChartRow - 1);
  return number >= 25 && number <= 30;
}

// A command that draws a row, for every row.
std::vector<Swept> EachRow(const Words& command, bool charts) {
  std::vector<Swept> commands;
  for (const std::int32_t row : vetlo::testing::RowsOfEveryForm()) {
    if ((row >= kFirstChartRow) != charts) {
      continue;
    }
    Words words = {command.front(), kStore, std::to_string(row), "--today", "2026-03-20"};
    words.insert(words.end(), command.begin() + 1, command.end());
    if (TakesSubject(row)) {
      words.insert(words.end(), {"--parameter1", vetlo::ToText(vetlo::testing::SubjectOfRow(row))});
    }
    commands.push_back({words, std::to_string(row)});
  }
  return commands;
}

std::vector<Swept> EachFigure() {
  const std::vector<Words> figures = {
      {"TotalAssets"},
      {"TotalLiabilities"},
      {"TotalCreditCardDebt"},
      {"TotalIncome"},
      {"TotalExpenses"},
      {"TotalIncomeOfCategory", "--number", "1"},
      {"TotalIncomeOfCategory", "--unassigned"},
      {"TotalExpensesOfCategory", "--number", "1", "--format", "json"},
      {"TotalExpensesOfCategory", "--unassigned", "--format", "json"},
      {"TotalIncomeOfSubCategory", "--number", "1"},
      {"TotalIncomeOfSubCategory", "--number", "1", "--unassigned"},
      {"TotalExpensesOfSubCategory", "--number", "1", "--format", "json"},
      {"TotalExpensesOfSubCategory", "--number", "1", "--unassigned", "--format", "json"},
  };
  std::vector<Swept> commands;
  for (const Words& figure : figures) {
    Words words = {"figure", kStore};
    words.insert(words.end(), figure.begin(), figure.end());
    commands.push_back({words});
  }
  return commands;
}

struct SweptCommands {
  const char* name;
  std::vector<Swept> commands;

  friend std::ostream& operator<<(std::ostream& out, const SweptCommands& commands) {
    return out << commands.name;
  }
};

std::vector<SweptCommands> AllCommands() {
  return {
      {"List", {{{"list", kStore}}}},
      {"ShowReports", EachRow({"show"}, false)},
      {"ShowCharts", EachRow({"show"}, true)},
      {"TraceReports", EachRow({"trace", "--store"}, false)},
      {"TraceCharts", EachRow({"trace", "--store"}, true)},
      {"Report",
       {{{"report", kStore, "5"}},
        {{"report", kStore, "6", "--kind", "pie", "--range", "up-to-a-date", "--to",
          "2026-03-05"}}}},
      {"Figures", EachFigure()},
      {"Dialogs",
       {{{"customize", kStore, "5", "--as", "chart", "--title", "All that is ours"}},
        {{"reset", kStore, "5"}},
        {{"favorite", kStore, "5", "Ours"}},
        {{"favorite", kStore, "5", "The old one", "--replace"}},
        {{"unfavorite", kStore, "The old one"}}}},
  };
}

// ---- the sweep

// All settings rows in all their fields.
using Rows = std::vector<std::vector<vetlo::Variant>>;

Rows RowsOf(vetlo::Database& store) {
  Rows rows;
  ForEachRowOf(store, "ChartReportSubType", [&](vetlo::Recordset& rec) {
    rows.emplace_back();
    for (const vetlo::Column& column : vetlo::FindTable("ChartReportSubType")->columns) {
      rows.back().push_back(rec.Fields(column.name));
    }
  });
  return rows;
}

// What a command prints, and the settings rows that it leaves.
struct Result {
  ProgramRun run;
  Rows rows;
};

class StoreSweep : public testing::TestWithParam<SweptCommands> {
 protected:
  void Sweep(const Swept& swept) {
    const Words& words = swept.words;
    SCOPED_TRACE(testing::PrintToString(words));
    store_ = StoreWithRows(swept.rows);
    TheStoreFile().store = store_.get();
    const Rows old = RowsOf(*store_);
    Plan().FailAt(0, FailurePlan::Repeat::kOnce, vetlo::FailureNumber::kStoreUnusable);
    const Result sound = ResultOf(words);
    const std::int64_t operations = Plan().Operations();
    ASSERT_EQ(sound.run.status, 0) << sound.run.err;
    tally_.Announce(2 * operations);
    for (std::int64_t n = 1; n <= operations && !HasFailure(); ++n) {
      for (const auto repeat : {FailurePlan::Repeat::kOnce, FailurePlan::Repeat::kFromThenOn}) {
        SCOPED_TRACE("operation " + std::to_string(n));
        Plan().FailAt(n, repeat, vetlo::FailureNumber::kStoreUnusable);
        Check(ResultOf(words), sound, old);
      }
    }
  }

  Tally tally_;

 private:
  // The chart of number 59 is a favourite where it is left.
  static std::unique_ptr<vetlo::Database> StoreWithRows(const std::string& rows) {
    const std::string number = "ChartReportSubTypeNumber";
    return vetlo::testing::HouseholdOfEveryKind()
        .Execute("DELETE FROM ChartReportSubType WHERE " + number + " NOT IN (" + rows + ")")
        .Execute(
            "UPDATE ChartReportSubType SET ChartReportType = 4, ChartReportSubTypeName = 'The old "
            "one' WHERE " +
            number + " = 159")
        .Open();
  }

  static FailurePlan& Plan() { return TheStoreFile().plan; }

  // Runs a command; what it changes is undone.
  Result ResultOf(const Words& words) {
    const vetlo::Transaction undone(*store_);
    Result result;
    result.run = vetlo::testing::Quill(words);
    result.rows = RowsOf(*store_);
    return result;
  }

  void Check(const Result& result, const Result& sound, const Rows& old) {
    const Ending ending = EndingOf(result.run, sound.run);
    tally_.Count(ending);
    EXPECT_NE(ending, Ending::kWrong) << "status " << result.run.status << "\n"
                                      << result.run.out << result.run.err;
    EXPECT_TRUE(result.rows == sound.rows || (result.run.status != 0 && result.rows == old))
        << result.run.err;
  }

  // Kept, so that no run has to load it anew.
  const vetlo::Component component_{vetlo::LibraryBesideProgram()};
  std::unique_ptr<vetlo::Database> store_;
};

TEST_P(StoreSweep, OfEveryOperation) {
  for (const Swept& swept : GetParam().commands) {
    Sweep(swept);
  }
  tally_.Print(std::string(GetParam().name) + ", operations on the store");
}

INSTANTIATE_TEST_SUITE_P(Commands, StoreSweep, testing::ValuesIn(AllCommands()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace sweeps
