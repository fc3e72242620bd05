#include "quillmarsh/cli/settings_rows.h"

#include <algorithm>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/nearest.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/date_range_caption.h"
#include "vetlo/store/model.h"

namespace quillmarsh {
namespace {

using vetlo::Recordset;
using vetlo::Variant;

// Reads what it can of a settings row: one that somebody damaged keeps nobody from the others. The
// listener hears of what is damaged. A store that cannot be read is no damaged row, and fails.
class RowReader {
 public:
  RowReader(Recordset& rec, vetlo::FailureListener& listener) : rec_(rec), listener_(listener) {}

  Variant ValueOrNull(std::string_view field) {
    Variant value = vetlo::Null{};
    PassDamage([&] { value = rec_.Fields(field); });
    return value;
  }
  std::int32_t LongOr(std::string_view field, std::int32_t otherwise) {
    PassDamage([&] { otherwise = vetlo::LongField(rec_, field); });
    return otherwise;
  }
  std::string TextOrEmpty(std::string_view field) {
    std::string text;
    PassDamage([&] { text = vetlo::TextFieldOrEmpty(rec_, field); });
    return text;
  }

 private:
  template <typename Piece>
  void PassDamage(const Piece& piece) {
    try {
      piece();
    } catch (const vetlo::Failure& failure) {
      if (IsOfTheStore(failure.number())) {
        throw;
      }
      listener_.OnFailure(failure.number(), failure.what());
    }
  }

  Recordset& rec_;
  vetlo::FailureListener& listener_;
};

SettingsRowFacts ReadRow(Recordset& rec, vetlo::FailureListener& listener) {
  RowReader reader(rec, listener);
  SettingsRowFacts row;
  row.number = vetlo::LongField(rec, "ChartReportSubTypeNumber");
  row.name = reader.TextOrEmpty("ChartReportSubTypeName");
  if (row.name.empty()) {
    row.name = reader.TextOrEmpty("Title");
  }
  row.group = reader.LongOr("ChartReportType", 0);
  row.report_number = reader.LongOr("ChartReportSubTypeAttr", 0);
  row.output = reader.LongOr("ChartOrReportType", 1);
  row.chart_type = reader.LongOr("ChartType", vetlo::kNothingChosen);
  row.range = reader.LongOr("DateRangeType", 0);
  row.range_number = reader.LongOr("DateRangeExtInfo", 1);
  row.from = reader.ValueOrNull("FromDate");
  row.to = reader.ValueOrNull("ToDate");
  row.parameter1 = reader.ValueOrNull("Parameter1");
  row.parameter2 = reader.ValueOrNull("Parameter2");
  return row;
}

std::vector<std::string> NamesOf(const std::vector<SettingsRowFacts>& rows) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const SettingsRowFacts& row : rows) {
    names.push_back(row.name);
  }
  return names;
}

std::string NumbersOf(const std::vector<SettingsRowFacts>& rows) {
  std::string numbers;
  for (const SettingsRowFacts& row : rows) {
    numbers += (numbers.empty() ? "" : ", ") + std::to_string(row.number);
  }
  return numbers;
}

vetlo::Date DateOr(const Variant& value, vetlo::Date otherwise) {
  return vetlo::IsNull(value) ? otherwise : vetlo::ToDate(value);
}

}  // namespace

std::vector<SettingsRowFacts> ReadSettingsRows(vetlo::Database& store) {
  std::vector<SettingsRowFacts> rows;
  vetlo::ForEachRowOf(store, "ChartReportSubType",
                      [&](Recordset& rec) { rows.push_back(ReadRow(rec, store)); });
  return rows;
}

SettingsRowFacts FindSettingsRow(vetlo::Database& store, const std::string& row) {
  const auto rows = ReadSettingsRows(store);
  const auto number = WholeNumber(row);
  std::vector<SettingsRowFacts> found;
  std::ranges::copy_if(rows, std::back_inserter(found), [&](const SettingsRowFacts& facts) {
    return number ? facts.number == *number : facts.name == row;
  });
  if (found.empty()) {
    std::ranges::copy_if(rows, std::back_inserter(found), [&](const SettingsRowFacts& facts) {
      return vetlo::EqualsIgnoringCase(facts.name, row);
    });
  }
  const std::string asked = "'" + SafeText(row) + "'";
  if (found.empty()) {
    const std::string hint = DidYouMean(row, NamesOf(rows));
    throw UserError("the store has no report " + asked +
                    (hint.empty() ? "; 'quillmarsh list' shows those it has" : hint));
  }
  if (found.size() > 1) {
    throw UserError("more than one report is called " + asked +
                    "; name one by its number: " + NumbersOf(found));
  }
  return found.front();
}

std::string FormText(const SettingsRowFacts& row) {
  if (row.output == static_cast<std::int32_t>(vetlo::ChartOrReport::kReport)) {
    return "report";
  }
  if (row.output != static_cast<std::int32_t>(vetlo::ChartOrReport::kChart)) {
    return "nothing";
  }
  switch (row.chart_type) {
    case vetlo::kLineChart:
      return "line chart";
    case vetlo::kBarChart:
      return "bar chart";
    case vetlo::kPieChart:
      return "pie chart";
    default:
      return "chart";
  }
}

std::string RangeText(const SettingsRowFacts& row) {
  const vetlo::DateRangeFacts* const facts = vetlo::Services().DateRangeInfo(row.range);
  if (facts == nullptr) {
    return "All Dates";
  }
  if (facts->takes_number) {
    return std::string(facts->words_before) + " " + std::to_string(row.range_number) + " " +
           std::string(facts->words_behind);
  }
  if (facts->end_editable) {
    const vetlo::Date earliest = vetlo::Services().EarliestDate();
    std::string caption(facts->name);  // also where the dates are none of the calendar
    vetlo::ResumeNext([&] {
      const vetlo::Date from = facts->start_editable ? DateOr(row.from, earliest) : earliest;
      caption = vetlo::DateRangeCaption(from, DateOr(row.to, vetlo::Services().LatestDate()));
    });
    return caption.empty() ? "All Dates" : caption;
  }
  return std::string(facts->name);
}

}  // namespace quillmarsh
