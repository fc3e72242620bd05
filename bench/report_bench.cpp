// What a report costs beside the lean way of asking a store the same questions, over households of
// several sizes. The households are made once, in the folder that QUILLMARSH_BENCH_FOLDER names
// (default: the current one).

#include <benchmark/benchmark.h>
#include <sys/stat.h>

#include <cstdlib>
#include <iostream>

#include "bench/asked_store.h"
#include "bench/lean_loop.h"
#include "quillmarsh/cli/momentary_row.h"
#include "quillmarsh/cli/sample_command.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/frame/tamo.h"
#include "vetlo/output/chart_model.h"
#include "vetlo/output/document.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh::bench {
namespace {

const vetlo::Date kToday = vetlo::ParseIsoDate("2026-10-15");

struct Household {
  std::int64_t transactions;
  std::int64_t years;
};

constexpr Household kHouseholds[] = {{2'000, 3}, {10'000, 5}, {100'000, 40}, {1'000'000, 40}};

std::string FileOf(const Household& household) {
  const char* const folder = std::getenv("QUILLMARSH_BENCH_FOLDER");
  const std::string file = std::string(folder == nullptr ? "." : folder) + "/household-" +
                           std::to_string(household.transactions) + ".qm";
  struct stat facts = {};
  if (stat(file.c_str(), &facts) != 0) {
    SampleArguments arguments;
    arguments.file = file;
    arguments.years = household.years;
    arguments.transactions = household.transactions;
    arguments.until = "2026-10-15";
    SampleCommand(arguments, std::cerr, std::cerr);
  }
  return file;
}

// A settings row of a report number over a range.
MomentaryRow RowOf(std::int32_t report_number, vetlo::DateRange range) {
  return MomentaryRow({{"Legend", false},
                       {"ChartOrReportType", 1},
                       {"ChartReportSubTypeAttr", report_number},
                       {"ChartType", 1},
                       {"DateRangeExtInfo", 1},
                       {"DateRangeType", static_cast<std::int32_t>(range)},
                       {"Title", std::string("Title")},
                       {"ChartReportType", vetlo::kCallerParametersGroup}});
}

// A question that a host asks of the component.
struct Job {
  std::string name;
  std::function<void(vetlo::clsTamo& component, vetlo::Database& store)> run;
};

Job ReportJob(std::int32_t number, vetlo::DateRange range, const std::string& range_name) {
  return {"report " + std::to_string(number) + " " + range_name,
          [number, range](vetlo::clsTamo& component, vetlo::Database& store) {
            MomentaryRow row = RowOf(number, range);
            vetlo::Document document;
            component.ShowChartReport(store, row, MomentaryRow::kNumber, nullptr, &document, 1);
            benchmark::DoNotOptimize(document);
          }};
}

template <typename Figure>
Job FigureJob(const std::string& name, Figure figure) {
  return {name, [figure](vetlo::clsTamo& component, vetlo::Database& store) {
            benchmark::DoNotOptimize(figure(component, store));
          }};
}

std::vector<Job> Jobs() {
  std::vector<Job> jobs;
  for (const std::int32_t number : {5, 6, 18, 20, 21, 25, 1, 22, 4, 3, 19, 58, 59}) {
    jobs.push_back(ReportJob(number, vetlo::DateRange::kAllDates, "all dates"));
    jobs.push_back(ReportJob(number, vetlo::DateRange::kPreviousMonth, "last month"));
  }
  const vetlo::Date latest = vetlo::Services().LatestDate();
  jobs.push_back(FigureJob("TotalAssets", [=](vetlo::clsTamo& c, vetlo::Database& store) {
    const auto accounts = store.OpenRecordset("Account");
    return c.TotalAssets(store, *accounts, latest);
  }));
  jobs.push_back(FigureJob("TotalLiabilities", [=](vetlo::clsTamo& c, vetlo::Database& store) {
    const auto accounts = store.OpenRecordset("Account");
    return c.TotalLiabilities(store, *accounts, latest);
  }));
  jobs.push_back(FigureJob("TotalCreditCardDebt", [=](vetlo::clsTamo& c, vetlo::Database& store) {
    return c.TotalCreditCardDebt(store, latest);
  }));
  const vetlo::Date earliest = vetlo::Services().EarliestDate();
  jobs.push_back(FigureJob("TotalIncome", [=](vetlo::clsTamo& c, vetlo::Database& store) {
    return c.TotalIncome(store, earliest, latest);
  }));
  jobs.push_back(FigureJob("TotalExpenses", [=](vetlo::clsTamo& c, vetlo::Database& store) {
    return c.TotalExpenses(store, earliest, latest);
  }));
  return jobs;
}

void Component(benchmark::State& state, const Job& job, const std::string& file) {
  TerminalPlatform platform(vetlo::NumberLocale{}, kToday);
  const auto store = vetlo::OpenStore(file, vetlo::StoreAccess::kReadOnly);
  vetlo::clsTamo component(platform);
  for (auto _ : state) {
    job.run(component, *store);
  }
}

void Lean(benchmark::State& state, const Job& job, const std::string& file) {
  TerminalPlatform platform(vetlo::NumberLocale{}, kToday);
  const auto store = vetlo::OpenStore(file, vetlo::StoreAccess::kReadOnly);
  AskedStore asked(*store);
  vetlo::clsTamo component(platform);
  job.run(component, asked);
  LeanLoop loop(file);
  for (auto _ : state) {
    benchmark::DoNotOptimize(loop.Ask(asked.questions()));
  }
  state.counters["questions"] = static_cast<double>(asked.questions().size());
}

void Opening(benchmark::State& state, const std::string& file) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(vetlo::OpenStore(file, vetlo::StoreAccess::kReadOnly));
  }
}

void Register() {
  for (const Household& household : kHouseholds) {
    const std::string size = std::to_string(household.transactions);
    const std::string file = FileOf(household);
    benchmark::RegisterBenchmark(("opening/" + size).c_str(), Opening, file);
    for (const Job& job : Jobs()) {
      const std::string name = job.name + "/" + size;
      benchmark::RegisterBenchmark((name + "/component").c_str(), Component, job, file)
          ->Unit(benchmark::kMicrosecond);
      benchmark::RegisterBenchmark((name + "/lean").c_str(), Lean, job, file)
          ->Unit(benchmark::kMicrosecond);
    }
  }
}

}  // namespace
}  // namespace quillmarsh::bench

int main(int argc, char** argv) {
  quillmarsh::bench::Register();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
