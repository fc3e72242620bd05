// What a report costs beside the lean way of asking a store the same questions, over households of
// several sizes. The households are made once, in the folder that QUILLMARSH_BENCH_FOLDER names
// (default: the current one).

#include <benchmark/benchmark.h>
#include <sys/stat.h>

#include <cstdlib>
#include <iostream>
#include <map>

#include "bench/asked_store.h"
#include "bench/lean_loop.h"
#include "quillmarsh/cli/momentary_row.h"
#include "quillmarsh/cli/sample_command.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/frame/tamo.h"
#include "vetlo/host/chart_model.h"
#include "vetlo/host/document.h"
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

std::string FileNamed(const std::string& name) {
  const char* const folder = std::getenv("QUILLMARSH_BENCH_FOLDER");
  return std::string(folder == nullptr ? "." : folder) + "/" + name + ".qm";
}

bool IsThere(const std::string& file) {
  struct stat facts = {};
  return stat(file.c_str(), &facts) == 0;
}

std::string FileOf(const Household& household) {
  const std::string file = FileNamed("household-" + std::to_string(household.transactions));
  if (!IsThere(file)) {
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
std::map<std::string, vetlo::Variant> FieldsOf(std::int32_t report_number, vetlo::DateRange range) {
  return {{"Legend", false},
          {"ChartOrReportType", 1},
          {"ChartReportSubTypeAttr", report_number},
          {"ChartType", 1},
          {"DateRangeExtInfo", 1},
          {"DateRangeType", static_cast<std::int32_t>(range)},
          {"Title", std::string("Title")},
          {"ChartReportType", vetlo::kCallerParametersGroup}};
}

// A question that a host asks of the component.
struct Job {
  std::string name;
  std::function<void(vetlo::clsTamo& component, vetlo::Database& store)> run;
};

void Draw(vetlo::clsTamo& component, vetlo::Database& store,
          std::map<std::string, vetlo::Variant> fields) {
  MomentaryRow row(std::move(fields));
  vetlo::Document document;
  component.ShowChartReport(store, row, MomentaryRow::kNumber, nullptr, &document, 1);
  benchmark::DoNotOptimize(document);
}

Job ReportJob(std::int32_t number, vetlo::DateRange range, const std::string& range_name) {
  return {"report " + std::to_string(number) + " " + range_name,
          [number, range](vetlo::clsTamo& component, vetlo::Database& store) {
            Draw(component, store, FieldsOf(number, range));
          }};
}

// A price history of so many years up to today.
Job PriceJob(std::int32_t number, int years) {
  return {"", [number, years](vetlo::clsTamo& component, vetlo::Database& store) {
            auto fields = FieldsOf(number, vetlo::DateRange::kCustomDates);
            fields["FromDate"] = vetlo::Date{kToday.days - years * 365.0 + 1};
            fields["ToDate"] = kToday;
            Draw(component, store, std::move(fields));
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
  for (const std::int32_t number :
       {5, 6, 18, 20, 21, 25, 1, 22, 4, 3, 19, 58, 59, 13, 14, 15, 16, 24, 2, 8, 12, 28}) {
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

// ---- investments

// A store of accounts that hold items, each item in one account, with a price of every day.
struct Portfolio {
  const char* name;
  int accounts;
  int items;
  int years;
};

constexpr Portfolio kTenYears = {"prices-10-years", 1, 20, 10};
constexpr Portfolio kTwentyYears = {"prices-20-years", 1, 20, 20};
constexpr Portfolio kFortyYears = {"prices-40-years", 1, 20, 40};
constexpr Portfolio kManyHoldings = {"holdings", 50, 200, 1};

void WriteItem(vetlo::StoreBuilder& store, const Portfolio& portfolio, int item) {
  const int account = item % portfolio.accounts + 1;
  store.Insert("AccountItem", {{"AccountItemNumber", item},
                               {"AccountItemName", "Item " + std::to_string(item)},
                               {"AccountItemTypeNumber", item % 4 + 1}});
  store.Insert("LatestPriceInfo", {{"AccountItemNumber", item}, {"Price", 10.0 + item}});
  for (int i = 0; i < 10; ++i) {
    store.Insert("TransactionRecord", {{"TransactionRecordNumber", item * 10 + i},
                                       {"TransactionRecordType", 0},
                                       {"TransactionType", i % 3 == 2 ? 4 : 2},
                                       {"TransactionDate", vetlo::Date{kToday.days - 40 * i}},
                                       {"AccountNumber", account},
                                       {"AccountItemNumber", item},
                                       {"Quantity", 3.0},
                                       {"Total", vetlo::CCur(30.0 + i)}});
  }
  for (int day = 0; day < portfolio.years * 365; ++day) {
    store.Insert("PriceRecord", {{"AccountItemNumber", item},
                                 {"PriceTypeNumber", 1},
                                 {"PriceDate", vetlo::Date{kToday.days - day}},
                                 {"Price", 10.0 + (day * 7 + item) % 90}});
  }
}

std::string FileOf(const Portfolio& portfolio) {
  const std::string file = FileNamed(portfolio.name);
  if (IsThere(file)) {
    return file;
  }
  vetlo::StoreBuilder store(file);
  store.Insert("PriceType", {{"PriceTypeNumber", 1}, {"PriceTypeAttr", 1}});
  for (int type = 1; type <= 4; ++type) {
    store.Insert("AccountItemType", {{"AccountItemTypeNumber", type},
                                     {"AccountItemTypeName", "Type " + std::to_string(type)},
                                     {"BasicAccountType", 2}});
  }
  for (int account = 1; account <= portfolio.accounts; ++account) {
    store.Insert("Account", {{"AccountNumber", account},
                             {"AccountName", "Account " + std::to_string(account)},
                             {"AccountType", 8}});
  }
  for (int item = 1; item <= portfolio.items; ++item) {
    WriteItem(store, portfolio, item);
  }
  store.Finish();
  return file;
}

void RegisterBoth(const Job& job, const std::string& name, const std::string& file) {
  benchmark::RegisterBenchmark((name + "/component").c_str(), Component, job, file)
      ->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark((name + "/lean").c_str(), Lean, job, file)
      ->Unit(benchmark::kMicrosecond);
}

void RegisterInvestments() {
  for (const Portfolio& portfolio : {kTenYears, kTwentyYears, kFortyYears}) {
    const std::string file = FileOf(portfolio);
    for (const std::int32_t number : {17, 26}) {
      // The last ten years, however many are stored; and all of them.
      RegisterBoth(PriceJob(number, 10),
                   "report " + std::to_string(number) + " ten years/" + portfolio.name, file);
      if (portfolio.years == 40) {
        RegisterBoth(PriceJob(number, 40),
                     "report " + std::to_string(number) + " forty years/" + portfolio.name, file);
      }
    }
  }
  const std::string file = FileOf(kManyHoldings);
  for (const std::int32_t number : {13, 14, 15, 16}) {
    RegisterBoth(ReportJob(number, vetlo::DateRange::kAllDates, ""),
                 "report " + std::to_string(number) + "/50 accounts, 200 items", file);
  }
}

void Register() {
  for (const Household& household : kHouseholds) {
    const std::string size = std::to_string(household.transactions);
    const std::string file = FileOf(household);
    benchmark::RegisterBenchmark(("opening/" + size).c_str(), Opening, file);
    for (const Job& job : Jobs()) {
      RegisterBoth(job, job.name + "/" + size, file);
    }
  }
}

}  // namespace
}  // namespace quillmarsh::bench

int main(int argc, char** argv) {
  quillmarsh::bench::Register();
  quillmarsh::bench::RegisterInvestments();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
