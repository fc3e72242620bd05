#include "quillmarsh/cli/sample_command.h"

#include <unistd.h>

#include <charconv>
#include <limits>
#include <ostream>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/making/new_store.h"
#include "quillmarsh/sample/household.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"

namespace quillmarsh {
namespace {

std::vector<SettingsDefaults> CatalogueRows() {
  std::vector<SettingsDefaults> rows;
  for (const vetlo::ReportDefaults& entry : vetlo::AllReportDefaults()) {
    rows.push_back({entry.number, entry.output, entry.chart_type, entry.legend,
                    static_cast<std::int32_t>(entry.range), entry.RangeNumber(),
                    std::string(entry.title)});
  }
  return rows;
}

template <typename Number>
void RequireWithin(const std::string& option, std::int64_t value, Number least, Number most) {
  if (value < least || value > most) {
    throw UserError(option + " takes a number from " + std::to_string(least) + " to " +
                    std::to_string(most));
  }
}

// Progress is for a person who waits.
std::function<void(std::int64_t, std::int64_t)> ProgressOn(std::ostream& err,
                                                           std::int64_t transactions) {
  constexpr std::int64_t kWorthWaitingFor = 50'000;
  if (isatty(STDERR_FILENO) == 0 || transactions < kWorthWaitingFor) {
    return {};
  }
  return [&err](std::int64_t done, std::int64_t all) {
    err << "\r" << done * 100 / (all > 0 ? all : 1) << "% of " << all << " transactions"
        << (done >= all ? "\n" : "") << std::flush;
  };
}

void WriteStore(const std::string& path, const HouseholdPlan& plan) {
  vetlo::StoreBuilder store(path);
  WriteHousehold(store, plan);
  store.Finish();
}

void MakeStore(const SampleArguments& arguments, const HouseholdPlan& plan) {
  const std::string what = "cannot write '" + SafeText(arguments.file) + "': ";
  try {
    NewStore file(arguments.file,
                  arguments.force ? NewStore::Old::kIsReplaced : NewStore::Old::kStays);
    WriteStore(file.path(), plan);
    file.TakeName();
  } catch (const PlaceTaken& taken) {
    const bool is_store = IsThere(arguments.file);
    throw UserError(std::string(taken.what()) + "; --force " + (is_store ? "replaces" : "removes") +
                    " it");
  } catch (const FileError& error) {
    throw UserError(what + error.what());
  } catch (const vetlo::Failure& failure) {
    throw UserError(what + failure.what());
  }
}

vetlo::Date LastDay(const std::optional<std::string>& until) {
  return until ? DateArgument("--until", *until)
               : vetlo::DayOf(TerminalPlatform(vetlo::NumberLocale{}).Now());
}

std::uint64_t SeedArgument(const std::string& text) {
  std::uint64_t seed = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, seed);
  if (error != std::errc{} || end != last) {
    throw UserError("--seed takes a whole number from 0 to " +
                    std::to_string(std::numeric_limits<std::uint64_t>::max()) + ", not '" + text +
                    "'");
  }
  return seed;
}

}  // namespace

void SampleCommand(const SampleArguments& arguments, std::ostream& out, std::ostream& err) {
  RequireWithin("--years", arguments.years, kFewestYears, kMostYears);
  RequireWithin("--transactions", arguments.transactions, kFewestTransactions, kMostTransactions);
  HouseholdPlan plan;
  plan.years = static_cast<std::int32_t>(arguments.years);
  plan.transactions = arguments.transactions;
  plan.seed = SeedArgument(arguments.seed);
  plan.today = LastDay(arguments.until);
  plan.catalogue = CatalogueRows();
  plan.progress = ProgressOn(err, arguments.transactions);
  MakeStore(arguments, plan);
  out << "Wrote '" << SafeText(arguments.file) << "': " << plan.years
      << (plan.years == 1 ? " year" : " years") << " up to " << vetlo::IsoDateText(plan.today)
      << ".\n";
}

}  // namespace quillmarsh
