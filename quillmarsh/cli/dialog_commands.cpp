#include "quillmarsh/cli/dialog_commands.h"

#include <algorithm>
#include <ostream>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/dialog_user.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/read_back.h"
#include "quillmarsh/cli/settings_rows.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/cli/subjects.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/question.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace quillmarsh {
namespace {

using vetlo::DateRange;
using vetlo::Form;
using vetlo::Variant;

// ---- a store that is changed, and the component's dialogs on it

class OpenedForChange {
 public:
  explicit OpenedForChange(const std::string& file)
      : store_(OpenStoreFile(file, vetlo::StoreAccess::kReadWrite)),
        read_back_(*store_),
        kept_(read_back_),
        rows_(kept_.OpenRecordset("ChartReportSubType")) {}

  // The store for the component's dialogs, and as it is for what is looked up beside them: a row
  // that somebody damaged keeps nobody from another.
  vetlo::KeptStore& Store() { return kept_; }
  vetlo::Database& Unkept() { return *store_; }
  vetlo::Recordset& Rows() { return *rows_; }
  // All settings rows as the last change left them; fails with a UserError where they could not be
  // read.
  [[nodiscard]] const std::vector<SettingsRowFacts>& SavedRows() const { return read_back_.Rows(); }

  // Lets the user work in a dialog of the component. Fails with a UserError where the dialog did
  // not end in a saved row.
  template <typename Operation>
  void Work(DialogUser& user, const Operation& operation) {
    DialogPlatform platform(user);
    vetlo::Tamo component = LoadComponent().NewTamo(platform);
    const bool saved = IsSavedBy([&] { return operation(component); });
    if (!saved && !kept_.Failures().empty() && !user.Messages().empty()) {
      throw UserError(user.Messages().front() + " (" + kept_.Failures().front().Text() + ")");
    }
    user.ThrowRefusal();
    if (!saved) {
      throw UserError("nothing was saved");
    }
  }

 private:
  // What fails behind a save does not undo it: it is told beside what was saved.
  template <typename Operation>
  bool IsSavedBy(const Operation& operation) {
    try {
      return operation();
    } catch (const vetlo::Failure& failure) {
      if (!read_back_.HasChanged()) {
        throw;
      }
      const std::string text = "the change was saved, and then: " + std::string(failure.what());
      kept_.OnFailure(failure.number(), text.c_str());
      return true;
    }
  }

  std::unique_ptr<vetlo::Database> store_;
  ReadBackDatabase read_back_;
  vetlo::KeptStore kept_;
  std::unique_ptr<vetlo::Recordset> rows_;
};

std::string LineOf(const SettingsRowFacts& row) {
  return std::to_string(row.number) + "  " + SafeText(row.name) + ": " + FormText(row) + ", " +
         RangeText(row) + "\n";
}

const SettingsRowFacts& RowNumbered(const std::vector<SettingsRowFacts>& rows,
                                    std::int32_t number) {
  const auto row = std::ranges::find(rows, number, &SettingsRowFacts::number);
  if (row == rows.end()) {
    throw UserError("the row is no longer there");
  }
  return *row;
}

// Opens the customize dialog on a row and lets the user work in it.
void CustomizeRow(OpenedForChange& opened, const SettingsRowFacts& row,
                  const DialogUser::Deeds& deeds, std::ostream& out) {
  DialogUser user(deeds);
  opened.Work(user, [&](vetlo::Tamo& component) {
    return component.CustomizeChartReport(opened.Store(), opened.Rows(), row.number);
  });
  out << "Changed " + LineOf(RowNumbered(opened.SavedRows(), row.number));
  RequireWhole(opened.Store());
}

// ---- deeds in the customize dialog

// A control that the dialog has.
template <typename Kind>
Kind& The(const Form& form, const std::string& name) {
  return *form.Find<Kind>(name);
}

void Press(const Form& form, const char* name) { The<vetlo::Button>(form, name).Click(); }

// Chooses an option; one that is disabled is not offered.
void Choose(const Form& form, const std::string& name, const char* otherwise) {
  auto& option = The<vetlo::OptionButton>(form, name);
  if (!option.InUse()) {
    throw UserError(otherwise);
  }
  option.Choose();
}

std::string Indexed(const char* name, std::int32_t index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

void ChooseForm(const Form& form, const std::optional<std::string>& as) {
  if (!as) {
    return;
  }
  constexpr std::array<std::string_view, 2> kForms = {"report", "chart"};
  const bool chart = ChoiceArgument("--as", kForms, *as) == 1;
  const auto index = static_cast<std::int32_t>(chart ? vetlo::ChartOrReport::kChart
                                                     : vetlo::ChartOrReport::kReport);
  Choose(form, Indexed("optChartOrReportType", index),
         chart ? "this report has no chart" : "this row's report number has no report");
}

void ChooseKind(const Form& form, const std::optional<std::string>& kind) {
  if (kind) {
    Choose(form, Indexed("optChartType", ChartKindArgument(*kind)), "this report has no chart");
  }
}

void SwitchLegend(const Form& form, const std::optional<std::string>& legend) {
  if (!legend) {
    return;
  }
  constexpr std::array<std::string_view, 2> kStates = {"on", "off"};
  const bool on = ChoiceArgument("--legend", kStates, *legend) == 0;
  auto& box = The<vetlo::CheckBox>(form, "chkLegend");
  if (!box.InUse()) {
    throw UserError("this report has no chart, and so no legend");
  }
  if (box.Checked() != on) {
    box.Toggle();
  }
}

// A text that nobody could type does not come into the store.
void RequireTypeable(const char* what, const std::string& text) {
  if (SafeText(text) != text) {
    throw UserError(std::string(what) +
                    " holds what cannot be shown; leave out line breaks, control characters and "
                    "bytes that are no UTF-8");
  }
}

void TypeTitle(const Form& form, const std::optional<std::string>& title) {
  if (!title) {
    return;
  }
  RequireTypeable("--title", *title);
  auto& box = The<vetlo::TextBox>(form, "txtTitle");
  if (!box.InUse()) {
    throw UserError("the title of this report cannot be changed");
  }
  // The box would cut the text off, and nobody would see it.
  if (vetlo::CharacterCount(*title) > box.MaxLength()) {
    throw UserError("--title takes at most " + std::to_string(box.MaxLength()) + " characters");
  }
  box.Type(*title);
}

std::string OfferedRanges(const vetlo::DropDownList& list) {
  std::string names;
  for (const auto& entry : list.Entries()) {
    names += (names.empty() ? "'" : ", '") + entry.text + "'";
  }
  return names;
}

void PickRange(const Form& form, DateRange range) {
  auto& list = The<vetlo::DropDownList>(form, "cboRange");
  const std::int32_t index = list.IndexOfItemData(static_cast<std::int32_t>(range));
  if (index == vetlo::kNoEntry) {
    const auto& facts = *vetlo::Services().DateRangeInfo(static_cast<std::int32_t>(range));
    throw UserError("this report does not offer '" + std::string(facts.name) +
                    "'; it offers: " + OfferedRanges(list));
  }
  list.Pick(index);
}

bool IsOffered(const Form& form, DateRange range) {
  return The<vetlo::DropDownList>(form, "cboRange")
             .IndexOfItemData(static_cast<std::int32_t>(range)) != vetlo::kNoEntry;
}

// Dates without a range ask for one that takes them.
void PickRangeFor(const Form& form, const CustomizeArguments& arguments) {
  if (arguments.range) {
    PickRange(form, RangeArgument(*arguments.range));
    return;
  }
  const bool fits = (!arguments.from || The<vetlo::TextBox>(form, "txtFrom").InUse()) &&
                    (!arguments.to || The<vetlo::TextBox>(form, "txtTo").InUse());
  if (!fits) {
    const bool end_alone = !arguments.from && !IsOffered(form, DateRange::kCustomDates);
    PickRange(form, end_alone ? DateRange::kUpToADate : DateRange::kCustomDates);
  }
}

void TypeInto(const Form& form, const char* name, const std::optional<std::string>& text,
              const char* otherwise) {
  if (!text) {
    return;
  }
  auto& box = The<vetlo::TextBox>(form, name);
  if (!box.InUse()) {
    throw UserError(otherwise);
  }
  box.Type(*text);
}

void Customize(const Form& form, const CustomizeArguments& arguments) {
  ChooseForm(form, arguments.as);
  ChooseKind(form, arguments.kind);
  SwitchLegend(form, arguments.legend);
  TypeTitle(form, arguments.title);
  PickRangeFor(form, arguments);
  TypeInto(form, "txtDateRangeExtInfo", arguments.n,
           "--n goes with --range last-n-days or last-n-months");
  TypeInto(form, "txtFrom", arguments.from, "--from goes with --range custom-dates");
  TypeInto(form, "txtTo", arguments.to, "--to goes with --range custom-dates or up-to-a-date");
  Press(form, "cmdOK");
}

void RequireAChange(const CustomizeArguments& arguments) {
  const bool any = arguments.as || arguments.kind || arguments.legend || arguments.title ||
                   arguments.range || arguments.n || arguments.from || arguments.to;
  if (!any) {
    throw UserError(
        "say what to change: --as, --kind, --legend, --title, --range, --n, --from or --to");
  }
}

// ---- reset

// Fails with a UserError unless the user wants a favourite to lose what he gave it.
void RequireYes(const SettingsRowFacts& row) {
  const std::string what = "'" + SafeText(row.name) +
                           "' is a favorite; its title, its form and its dates would become the "
                           "defaults of report number " +
                           std::to_string(row.report_number);
  const auto wanted = AskOnTerminal(what + ". Reset it?");
  if (!wanted) {
    throw UserError(what + "; give --yes to reset it");
  }
  if (!*wanted) {
    throw UserError("nothing was reset");
  }
}

// ---- favourites

// What the favourite shows: a row's own parameters, or of a row that has none those given here.
Parameters ParametersOf(const FavoriteArguments& arguments, vetlo::Database& store,
                        const SettingsRowFacts& row) {
  if (row.group == vetlo::kCallerParametersGroup) {
    Parameters given = GivenParameters(arguments.parameter1, arguments.parameter2);
    RequireSubject(store, row.report_number, given);
    return given;
  }
  if (arguments.parameter1 || arguments.parameter2) {
    throw UserError(
        "this row takes no parameters from the command line; --parameter1 and --parameter2 go "
        "with the histories that do");
  }
  return {row.parameter1, row.parameter2};
}

void NameFavorite(const Form& form, const std::string& name) {
  RequireTypeable("NAME", name);
  The<vetlo::ComboBox>(form, "cboName").Type(name);
  auto& ok = The<vetlo::Button>(form, "cmdOK");
  if (ok.InUse()) {
    ok.Click();
  } else {
    // Without a name there is no pressing it; it can say why.
    ok.on_click();
  }
}

SettingsRowFacts FindFavorite(const std::vector<SettingsRowFacts>& rows, const std::string& name) {
  const SettingsRowFacts* found = nullptr;
  std::string names;
  for (const SettingsRowFacts& row : rows) {
    if (row.group == vetlo::kFavoriteGroup) {
      names += (names.empty() ? "'" : ", '") + SafeText(row.name) + "'";
      found = found == nullptr && row.name == name ? &row : found;
    }
  }
  if (found == nullptr) {
    throw UserError("there is no favorite '" + SafeText(name) + "'" +
                    (names.empty() ? "; the store has none" : "; there are " + names));
  }
  return *found;
}

}  // namespace

void CustomizeCommand(const CustomizeArguments& arguments, std::ostream& out) {
  RequireAChange(arguments);
  OpenedForChange opened(arguments.store);
  CustomizeRow(
      opened, FindSettingsRow(opened.Unkept(), arguments.row),
      [&](const Form& form) { Customize(form, arguments); }, out);
}

void ResetCommand(const ResetArguments& arguments, std::ostream& out) {
  OpenedForChange opened(arguments.store);
  const SettingsRowFacts row = FindSettingsRow(opened.Unkept(), arguments.row);
  if (row.group == vetlo::kFavoriteGroup && !arguments.yes) {
    RequireYes(row);
  }
  CustomizeRow(
      opened, row, [](const Form& form) { Press(form, "cmdReset"); }, out);
}

void FavoriteCommand(const FavoriteArguments& arguments, std::ostream& out) {
  OpenedForChange opened(arguments.store);
  const SettingsRowFacts row = FindSettingsRow(opened.Unkept(), arguments.row);
  const Parameters parameters = ParametersOf(arguments, opened.Unkept(), row);
  DialogUser user([&](const Form& form) { NameFavorite(form, arguments.name); });
  user.AnswerYesFor("--replace", arguments.replace);
  opened.Work(user, [&](vetlo::Tamo& component) {
    return component.AddToFavorites(opened.Store(), opened.Rows(), row.number, row.name,
                                    parameters.first, parameters.second);
  });
  const std::string name(vetlo::Trim(arguments.name));
  out << "Saved " + LineOf(FindFavorite(opened.SavedRows(), name));
  RequireWhole(opened.Store());
}

void UnfavoriteCommand(const UnfavoriteArguments& arguments, std::ostream& out) {
  OpenedForChange opened(arguments.store);
  // Nobody waits for one that is not there.
  FindFavorite(ReadSettingsRows(opened.Unkept()), arguments.name);
  // It is looked up within the change: by now its number may be another's.
  vetlo::Transaction change(opened.Store());
  const SettingsRowFacts favorite = FindFavorite(ReadSettingsRows(opened.Unkept()), arguments.name);
  vetlo::Services().DeleteChartReportSubType(opened.Store(), opened.Rows(), favorite.number);
  change.Commit();
  out << "Removed " + LineOf(favorite);
}

}  // namespace quillmarsh
