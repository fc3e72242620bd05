#include "quillmarsh/cli/show_command.h"

#include <map>
#include <ostream>
#include <vector>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/momentary_row.h"
#include "quillmarsh/cli/settings_rows.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/cli/subjects.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/chart_text.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/report_text.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "quillmarsh/terminal/terminal_size.h"
#include "quillmarsh/terminal/text_width.h"
#include "vetlo/host/chart_model.h"
#include "vetlo/host/document.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"

namespace quillmarsh {
namespace {

using vetlo::DateRange;
using vetlo::ReportDefaults;
using vetlo::Variant;

// What the component drew, as text; nothing where it drew neither. A chart whose figures failed has
// its title and no figures, one whose dates failed nothing at all.
std::string Drawn(const vetlo::ChartModel& chart, const vetlo::Document& report, bool failed,
                  const ScreenWidth& screen, const vetlo::NumberLocale& locale) {
  if (chart.Visible()) {
    const bool untouched = failed && chart.Title().empty() && chart.Data().elements().empty();
    return untouched ? "" : RenderChart(chart, screen.columns, locale, failed);
  }
  return report.Visible() ? RenderReport(report, screen) : "";
}

// Draws one row in the terminal.
void Draw(vetlo::Database& store, vetlo::Recordset& rows, std::int32_t row,
          const Parameters& parameters, const std::optional<std::string>& today,
          std::ostream& out) {
  TerminalPlatform platform(EnvironmentLocale(), GivenDate("--today", today));
  const ScreenWidth screen = OutputWidth();
  // The labels are cut for the width on which they are drawn.
  vetlo::ChartModel chart(static_cast<float>(ChartColumns(screen.columns)) * kTwipsPerCell);
  vetlo::Document report;
  vetlo::Tamo component = LoadComponent().NewTamo(platform);
  vetlo::KeptStore kept(store);
  try {
    component.ShowChartReport(kept, rows, row, &chart, &report, parameters.first,
                              parameters.second);
  } catch (const vetlo::Failure& failure) {
    std::vector<std::string> lines = LinesOf(kept);
    lines.push_back("the report could not be drawn: " +
                    FailureLine(failure.number(), failure.what()));
    throw LeftOut(std::move(lines));
  }
  vetlo::TellOfPassedByValues(store, kept);
  const bool failed = !kept.Failures().empty();
  if (!failed && !chart.Visible() && !report.Visible()) {
    throw UserError("the row asks for neither a report nor a chart");
  }
  out << Drawn(chart, report, failed, screen, platform.Locale());
  RequireWhole(kept);
}

// ---- settings of the moment

const ReportDefaults& DefaultsOf(const std::string& number) {
  const auto asked = WholeNumber(number);
  const ReportDefaults* const defaults =
      asked ? vetlo::Services().ChartReportSetting(*asked) : nullptr;
  if (defaults == nullptr) {
    throw UserError("NUMBER is a report number from 1 to 59, not '" + number + "'");
  }
  return *defaults;
}

struct ChosenRange {
  DateRange range;
  std::int32_t number = 1;
  Variant from = vetlo::Null{};
  Variant to = vetlo::Null{};
};

Variant DateOrNull(const std::optional<vetlo::Date>& date) {
  return date ? Variant(*date) : Variant(vetlo::Null{});
}

// Dates without a range mean custom dates.
ChosenRange RangeOf(const ReportArguments& arguments, const ReportDefaults& defaults) {
  const bool dated = arguments.from || arguments.to;
  const DateRange unnamed = dated ? DateRange::kCustomDates : defaults.range;
  ChosenRange chosen{arguments.range ? RangeArgument(*arguments.range) : unnamed};
  const auto& facts = *vetlo::Services().DateRangeInfo(static_cast<std::int32_t>(chosen.range));
  if (arguments.n && !facts.takes_number) {
    throw UserError("--n goes with --range last-n-days or last-n-months");
  }
  if (arguments.from && !facts.start_editable) {
    throw UserError("--from goes with --range custom-dates");
  }
  if (arguments.to && !facts.end_editable) {
    throw UserError("--to goes with --range custom-dates or up-to-a-date");
  }
  ReportDefaults usual = defaults;
  usual.range = chosen.range;
  chosen.number = arguments.n ? RangeNumberArgument(*arguments.n) : usual.RangeNumber();
  const auto from = PeriodEnd("--from", arguments.from);
  const auto to = PeriodEnd("--to", arguments.to);
  RequireOrder(from.value_or(vetlo::Services().EarliestDate()),
               to.value_or(vetlo::Services().LatestDate()));
  chosen.from = DateOrNull(from);
  chosen.to = DateOrNull(to);
  return chosen;
}

std::map<std::string, Variant> FieldsOf(const ReportArguments& arguments,
                                        const ReportDefaults& defaults) {
  const bool chart = arguments.chart || arguments.kind;
  if (chart && !defaults.has_chart) {
    throw UserError("report number " + std::to_string(defaults.number) + " has no chart");
  }
  const ChosenRange range = RangeOf(arguments, defaults);
  const auto output = chart ? vetlo::ChartOrReport::kChart : vetlo::ChartOrReport::kReport;
  return {
      {"Legend", defaults.legend},
      {"ChartOrReportType", static_cast<std::int32_t>(output)},
      {"ChartReportSubTypeAttr", defaults.number},
      {"ChartType", arguments.kind ? ChartKindArgument(*arguments.kind) : defaults.chart_type},
      {"DateRangeExtInfo", range.number},
      {"DateRangeType", static_cast<std::int32_t>(range.range)},
      {"Title", arguments.title.value_or(std::string(defaults.title))},
      {"ChartReportType", vetlo::kCallerParametersGroup},
      {"FromDate", range.from},
      {"ToDate", range.to},
  };
}

}  // namespace

void ShowCommand(const ShowArguments& arguments, std::ostream& out) {
  const Parameters parameters = GivenParameters(arguments.parameter1, arguments.parameter2);
  const auto store = OpenStoreFile(arguments.store, vetlo::StoreAccess::kReadOnly);
  const SettingsRowFacts row = FindSettingsRow(*store, arguments.row);
  if (row.group == vetlo::kCallerParametersGroup) {
    RequireSubject(*store, row.report_number, parameters);
  } else {
    RequireStoredSubject(*store, row);
  }
  const auto rows = store->OpenRecordset("ChartReportSubType");
  Draw(*store, *rows, row.number, parameters, arguments.today, out);
}

void ReportCommand(const ReportArguments& arguments, std::ostream& out) {
  const ReportDefaults& defaults = DefaultsOf(arguments.number);
  const Parameters parameters = GivenParameters(arguments.parameter1, arguments.parameter2);
  MomentaryRow row(FieldsOf(arguments, defaults));
  const auto store = OpenStoreFile(arguments.store, vetlo::StoreAccess::kReadOnly);
  RequireSubject(*store, defaults.number, parameters);
  Draw(*store, row, MomentaryRow::kNumber, parameters, arguments.today, out);
}

}  // namespace quillmarsh
