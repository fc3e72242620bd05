#include "quillmarsh/cli/figure_command.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/json_text.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/nearest.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/cli/subjects.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"
#include "vetlo/store/model.h"

namespace quillmarsh {
namespace {

using vetlo::Currency;
using vetlo::Database;
using vetlo::Date;
using vetlo::Tamo;

// What an operation is asked with.
struct Question {
  Tamo& component;
  Database* store = nullptr;  // null for the operation that reads none
  Date from = {};
  Date to = {};
  std::int32_t number = 0;
  bool unassigned = false;
  std::vector<Currency> cur = {};
};

// What it answers; the days are those of what was counted, where the operation tells them.
struct Answer {
  Currency amount;
  std::optional<Date> first;
  std::optional<Date> last;
};

// ---- the shapes of the operations

using OnAccounts = Currency (Tamo::*)(Database&, vetlo::Recordset&, Date);
using OfPeriod = Currency (Tamo::*)(Database&, Date, Date);
using OfPart = Currency (Tamo::*)(Database&, Date, Date, std::int32_t, bool, Date*, Date*);

template <OnAccounts figure>
Answer OnDate(const Question& question) {
  const auto accounts = question.store->OpenRecordset("Account");
  return {(question.component.*figure)(*question.store, *accounts, question.to), {}, {}};
}

Answer CreditCardDebt(const Question& question) {
  return {question.component.TotalCreditCardDebt(*question.store, question.to), {}, {}};
}

template <OfPeriod figure>
Answer Between(const Question& question) {
  return {(question.component.*figure)(*question.store, question.from, question.to), {}, {}};
}

template <OfPart figure>
Answer OfCategory(const Question& question) {
  Date first;
  Date last;
  Answer answer;
  answer.amount = (question.component.*figure)(*question.store, question.from, question.to,
                                               question.number, question.unassigned, &first, &last);
  if (first <= last) {
    answer.first = first;
    answer.last = last;
  }
  return answer;
}

Answer Budget(const Question& question) {
  return {
      question.component.TotalBudgetOfDateRange(question.cur, question.from, question.to), {}, {}};
}

// What an operation is asked about, and so which options it takes beside --to.
enum class About : std::uint8_t {
  kOneDay,
  kPeriod,       // --from
  kCategory,     // --from, and --number or --unassigned
  kSubCategory,  // --from, and --number, with --unassigned that of a category
  kBudget,       // --from and --cur
};

struct Operation {
  const char* name;
  About about;
  Answer (*answer)(const Question& question);
};

constexpr std::array kOperations = {
    Operation{"TotalAssets", About::kOneDay, OnDate<&Tamo::TotalAssets>},
    Operation{"TotalLiabilities", About::kOneDay, OnDate<&Tamo::TotalLiabilities>},
    Operation{"TotalCreditCardDebt", About::kOneDay, CreditCardDebt},
    Operation{"TotalIncome", About::kPeriod, Between<&Tamo::TotalIncome>},
    Operation{"TotalExpenses", About::kPeriod, Between<&Tamo::TotalExpenses>},
    Operation{"TotalIncomeOfCategory", About::kCategory, OfCategory<&Tamo::TotalIncomeOfCategory>},
    Operation{"TotalExpensesOfCategory", About::kCategory,
              OfCategory<&Tamo::TotalExpensesOfCategory>},
    Operation{"TotalIncomeOfSubCategory", About::kSubCategory,
              OfCategory<&Tamo::TotalIncomeOfSubCategory>},
    Operation{"TotalExpensesOfSubCategory", About::kSubCategory,
              OfCategory<&Tamo::TotalExpensesOfSubCategory>},
    Operation{"TotalBudgetOfDateRange", About::kBudget, Budget},
};

const Operation& OperationNamed(const std::string& name) {
  const auto* const found = std::ranges::find_if(kOperations, [&](const Operation& operation) {
    return vetlo::EqualsIgnoringCase(operation.name, name);
  });
  if (found == kOperations.end()) {
    const std::vector<std::string> names = FigureOperations();
    std::string list;
    for (const std::string& known : names) {
      list += (list.empty() ? "" : ", ") + known;
    }
    const std::string hint = DidYouMean(name, names);
    throw UserError("there is no figure '" + name + "'" +
                    (hint.empty() ? "; there are " + list : hint));
  }
  return *found;
}

void Refuse(bool refused, const Operation& operation, const std::string& option) {
  if (refused) {
    throw UserError(std::string(operation.name) + " does not take " + option);
  }
}

void CheckNumber(const FigureArguments& arguments, const Operation& operation) {
  const std::string name = operation.name;
  const bool of_category = operation.about == About::kCategory;
  const bool of_part = of_category || operation.about == About::kSubCategory;
  Refuse(arguments.number && !of_part, operation, "--number");
  Refuse(arguments.unassigned && !of_part, operation, "--unassigned");
  if (of_category && arguments.number && arguments.unassigned) {
    throw UserError(name + " takes --number or --unassigned, not both");
  }
  if (of_category && !arguments.number && !arguments.unassigned) {
    throw UserError(name + " takes --number, of a category, or --unassigned");
  }
  if (operation.about == About::kSubCategory && !arguments.number) {
    throw UserError(name + " takes --number, of a subcategory, or with --unassigned of a category");
  }
}

void CheckOptions(const FigureArguments& arguments, const Operation& operation) {
  const bool reads_store = operation.about != About::kBudget;
  Refuse(arguments.from && operation.about == About::kOneDay, operation, "--from");
  Refuse(arguments.cur && reads_store, operation, "--cur");
  CheckNumber(arguments, operation);
  if (reads_store && arguments.store == "-") {
    throw UserError(std::string(operation.name) + " reads a store: give its file instead of -");
  }
  if (!reads_store && arguments.store != "-") {
    throw UserError(std::string(operation.name) + " reads no store: give - instead of '" +
                    arguments.store + "'");
  }
}

std::int32_t NumberArgument(const std::optional<std::string>& text) {
  const auto number = text ? WholeNumber(*text) : 0;
  if (!number) {
    throw UserError("--number takes a whole number, not '" + *text + "'");
  }
  return *number;
}

// What --number is the number of must be there.
void RequirePart(const Operation& operation, const Question& question, Database& store) {
  const bool of_category = operation.about == About::kCategory;
  if (operation.about == About::kSubCategory || (of_category && !question.unassigned)) {
    const bool category = of_category || question.unassigned;
    RequireThereIs(store, category ? Subject::kCategory : Subject::kSubCategory, question.number);
  }
}

std::vector<Currency> AmountsArgument(const std::string& text) {
  constexpr std::size_t kMonths = 12;
  std::vector<Currency> amounts;
  std::size_t at = 0;
  while (at <= text.size()) {
    const std::size_t end = std::min(text.find(',', at), text.size());
    try {
      amounts.push_back(vetlo::ToCurrency(vetlo::Variant(text.substr(at, end - at))));
    } catch (const vetlo::Failure&) {
      amounts.clear();
      break;
    }
    at = end + 1;
  }
  if (amounts.size() != kMonths) {
    throw UserError("--cur takes twelve amounts joined by commas, January first, not '" + text +
                    "'");
  }
  return amounts;
}

// "1234.5000".
std::string PlainAmount(Currency amount) {
  const vetlo::NumberLocale plain{".", "", "", true};
  return vetlo::Format(amount, "0.0000", plain);
}

std::string JsonAnswer(const Operation& operation, const Answer& answer) {
  Json line = Json::object();
  line["operation"] = operation.name;
  line["result"] = PlainAmount(answer.amount);
  if (answer.first && answer.last) {
    line["first"] = vetlo::IsoDateText(*answer.first);
    line["last"] = vetlo::IsoDateText(*answer.last);
  }
  return JsonText(line);
}

std::string JsonFailure(const Operation& operation, std::int32_t number) {
  Json line = Json::object();
  line["operation"] = operation.name;
  line["failure"] = number;
  return JsonText(line);
}

}  // namespace

std::vector<std::string> FigureOperations() {
  std::vector<std::string> names;
  names.reserve(kOperations.size());
  for (const Operation& operation : kOperations) {
    names.emplace_back(operation.name);
  }
  return names;
}

void FigureCommand(const FigureArguments& arguments, std::ostream& out) {
  const Operation& operation = OperationNamed(arguments.operation);
  CheckOptions(arguments, operation);
  constexpr std::array<std::string_view, 2> kFormats = {"text", "json"};
  const bool json = ChoiceArgument("--format", kFormats, arguments.format) == 1;
  TerminalPlatform platform(EnvironmentLocale());
  Tamo component = LoadComponent().NewTamo(platform);
  Question question{component};
  question.from = PeriodEnd("--from", arguments.from).value_or(vetlo::Services().EarliestDate());
  question.to = PeriodEnd("--to", arguments.to).value_or(vetlo::Services().LatestDate());
  RequireOrder(question.from, question.to);
  question.number = NumberArgument(arguments.number);
  question.unassigned = arguments.unassigned;
  std::unique_ptr<Database> store;
  std::optional<vetlo::KeptStore> kept;
  if (operation.about == About::kBudget) {
    question.cur = AmountsArgument(arguments.cur.value_or(""));
  } else {
    store = OpenStoreFile(arguments.store, vetlo::StoreAccess::kReadOnly);
    RequirePart(operation, question, *store);
    question.store = &kept.emplace(*store);
  }
  try {
    const Answer answer = operation.answer(question);
    out << (json ? JsonAnswer(operation, answer)
                 : vetlo::Format(answer.amount, vetlo::kAmountPicture, platform.Locale()))
        << "\n";
  } catch (const vetlo::Failure& failure) {
    if (!json) {
      throw UserError(std::string(operation.name) + " failed with number " +
                      std::to_string(failure.number()) + ": " + failure.what());
    }
    out << JsonFailure(operation, failure.number()) << "\n";
    if (kept && IsOfTheStore(failure.number())) {
      kept->OnFailure(failure.number(), failure.what());
    }
  }
  if (kept) {
    vetlo::TellOfPassedByValues(*store, *kept);
    RequireWhole(*kept);
  }
}

}  // namespace quillmarsh
