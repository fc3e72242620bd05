#include "quillmarsh/cli/subjects.h"

#include <algorithm>
#include <array>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace quillmarsh {
namespace {

using vetlo::Recordset;
using vetlo::Variant;

bool IsAny(Recordset&) { return true; }

bool IsInvestmentAccount(Recordset& rec) {
  return vetlo::Services()
      .AccountTypeInfo(vetlo::LongField(rec, "AccountType"))
      .Has(vetlo::AccountAttrFund);
}

// Where the rows of a subject are, and how a user calls one.
struct SubjectFacts {
  std::string_view what;
  std::string_view table;
  std::string_view number;
  std::string_view name;
  bool (*is_offered)(Recordset& rec) = IsAny;  // where there is no row of a number
};

// In the order of Subject.
constexpr std::array kSubjects = {
    SubjectFacts{"account", "Account", "AccountNumber", "AccountName"},
    SubjectFacts{"investment account", "Account", "AccountNumber", "AccountName",
                 IsInvestmentAccount},
    SubjectFacts{"investment", "AccountItem", "AccountItemNumber", "AccountItemName"},
    SubjectFacts{"payee", "Payee", "PayeeNumber", "PayeeName"},
    SubjectFacts{"category", "Category", "CategoryNumber", "CategoryName"},
    SubjectFacts{"subcategory", "SubCategory", "SubCategoryNumber", "SubCategoryName"},
    SubjectFacts{"classification item", "ClassificationItem", "ClassificationItemNumber",
                 "ClassificationItemName"},
    SubjectFacts{"classification sub-item", "ClassificationSubItem", "ClassificationSubItemNumber",
                 "ClassificationSubItemName"},
};

const SubjectFacts& FactsOf(Subject subject) {
  return kSubjects.at(static_cast<std::size_t>(subject));
}

bool IsThere(vetlo::Database& store, const SubjectFacts& subject, std::int32_t number) {
  vetlo::ScopedRecordset rec(store, subject.table);
  rec->SetIndex(vetlo::kPrimaryIndex);
  rec->Seek("=", number);
  return !rec->NoMatch();
}

// "; there are 1 Everyday, 2 Savings and 31 more".
std::string ThoseThereAre(vetlo::Database& store, const SubjectFacts& subject) {
  constexpr std::int32_t kMostNamed = 12;
  std::string list;
  std::int32_t count = 0;
  const auto add = [&](Recordset& rec) {
    if (!subject.is_offered(rec) || ++count > kMostNamed) {
      return;
    }
    list += (list.empty() ? "" : ", ") + std::to_string(vetlo::LongField(rec, subject.number)) +
            " " + SafeText(vetlo::TextFieldOrEmpty(rec, subject.name));
  };
  // A row that somebody damaged keeps nobody from the others.
  vetlo::ForEachRowOf(store, subject.table,
                      [&](Recordset& rec) { vetlo::ResumeNext(store, [&] { add(rec); }); });
  if (list.empty()) {
    return "; the store has none";
  }
  return "; there are " + list +
         (count > kMostNamed ? " and " + std::to_string(count - kMostNamed) + " more" : "");
}

// What a report number is the history of. Where there is a narrower subject, the second parameter
// names it, and the first one counts only where the second names nothing.
struct History {
  std::int32_t report_number;
  std::string_view what;
  std::string_view options;
  Subject wider;
  std::optional<Subject> narrower;
};

constexpr std::array kHistories = {
    History{25, "an account", "--parameter1 its AccountNumber", Subject::kAccount, {}},
    History{26,
            "an investment account",
            "--parameter1 its AccountNumber",
            Subject::kInvestmentAccount,
            {}},
    History{27, "an investment", "--parameter1 its AccountItemNumber", Subject::kInvestment, {}},
    History{28, "a payee", "--parameter1 its PayeeNumber", Subject::kPayee, {}},
    History{29, "a category",
            "--parameter1 its CategoryNumber, or --parameter2 a SubCategoryNumber",
            Subject::kCategory, Subject::kSubCategory},
    History{30, "a classification item", "--parameter1 its number, or --parameter2 a sub-item's",
            Subject::kClassificationItem, Subject::kClassificationSubItem},
};

const History* HistoryOf(std::int32_t report_number) {
  const auto* const found = std::ranges::find(kHistories, report_number, &History::report_number);
  return found == kHistories.end() ? nullptr : found;
}

// A row that the parameters name.
struct Named {
  Subject subject;
  std::int32_t number;
};

std::optional<std::int32_t> NumberIn(const Variant& parameter) {
  std::optional<std::int32_t> number;
  vetlo::ResumeNext([&] { number = vetlo::ToLong(parameter); });
  return number;
}

std::optional<Named> NamedBy(const Parameters& parameters, const History& history) {
  if (history.narrower) {
    if (const auto number = NumberIn(parameters.second)) {
      return Named{*history.narrower, *number};
    }
  }
  const auto number = NumberIn(parameters.first);
  return number ? std::optional(Named{history.wider, *number}) : std::nullopt;
}

}  // namespace

void RequireThereIs(vetlo::Database& store, Subject subject, std::int32_t number) {
  const SubjectFacts& facts = FactsOf(subject);
  if (IsThere(store, facts, number)) {
    return;
  }
  throw UserError("there is no " + std::string(facts.what) + " " + std::to_string(number) +
                  ThoseThereAre(store, facts));
}

Parameters GivenParameters(const std::optional<std::string>& first,
                           const std::optional<std::string>& second) {
  return {ParameterArgument(first), ParameterArgument(second)};
}

void RequireSubject(vetlo::Database& store, std::int32_t report_number,
                    const Parameters& parameters) {
  const History* const history = HistoryOf(report_number);
  if (history == nullptr) {
    return;
  }
  if (const auto named = NamedBy(parameters, *history)) {
    RequireThereIs(store, named->subject, named->number);
    return;
  }
  const bool given = !vetlo::IsEmpty(parameters.first) || !vetlo::IsEmpty(parameters.second);
  throw UserError("report number " + std::to_string(report_number) + " is the history of " +
                  std::string(history->what) + ": " + std::string(history->options) +
                  (given ? "; what was given is no such number" : "") +
                  ThoseThereAre(store, FactsOf(history->wider)));
}

void RequireStoredSubject(vetlo::Database& store, const SettingsRowFacts& row) {
  const History* const history = HistoryOf(row.report_number);
  if (history == nullptr) {
    return;
  }
  const std::string what =
      "'" + SafeText(row.name) + "' is the history of " + std::string(history->what);
  const auto named = NamedBy({row.parameter1, row.parameter2}, *history);
  if (!named) {
    throw UserError(what + ", but its settings name none");
  }
  try {
    RequireThereIs(store, named->subject, named->number);
  } catch (const UserError& error) {
    throw UserError(what + ", but " + error.what());
  }
}

}  // namespace quillmarsh
