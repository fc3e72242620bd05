#include "quillmarsh/cli/figure_command.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/json_text.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"

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

// Which options an operation takes beside --to.
enum Takes : unsigned { kToAlone = 0, kFrom = 1, kNumber = 2, kAmounts = 4 };

struct Operation {
  const char* name;
  unsigned takes;
  bool number_needed;  // unless --unassigned stands in its place
  Answer (*answer)(const Question& question);
};

constexpr std::array kOperations = {
    Operation{"TotalAssets", kToAlone, false, OnDate<&Tamo::TotalAssets>},
    Operation{"TotalLiabilities", kToAlone, false, OnDate<&Tamo::TotalLiabilities>},
    Operation{"TotalCreditCardDebt", kToAlone, false, CreditCardDebt},
    Operation{"TotalIncome", kFrom, false, Between<&Tamo::TotalIncome>},
    Operation{"TotalExpenses", kFrom, false, Between<&Tamo::TotalExpenses>},
    Operation{"TotalIncomeOfCategory", kFrom | kNumber, false,
              OfCategory<&Tamo::TotalIncomeOfCategory>},
    Operation{"TotalExpensesOfCategory", kFrom | kNumber, false,
              OfCategory<&Tamo::TotalExpensesOfCategory>},
    Operation{"TotalIncomeOfSubCategory", kFrom | kNumber, true,
              OfCategory<&Tamo::TotalIncomeOfSubCategory>},
    Operation{"TotalExpensesOfSubCategory", kFrom | kNumber, true,
              OfCategory<&Tamo::TotalExpensesOfSubCategory>},
    Operation{"TotalBudgetOfDateRange", kFrom | kAmounts, false, Budget},
};

std::string OperationNames() {
  std::string names;
  for (const std::string& name : FigureOperations()) {
    names += (names.empty() ? "" : ", ") + name;
  }
  return names;
}

const Operation& OperationNamed(const std::string& name) {
  const auto* const found = std::ranges::find_if(
      kOperations, [&](const Operation& operation) { return operation.name == name; });
  if (found == kOperations.end()) {
    throw UserError("there is no figure '" + name + "'; there are " + OperationNames());
  }
  return *found;
}

void Refuse(bool refused, const Operation& operation, const std::string& option) {
  if (refused) {
    throw UserError(std::string(operation.name) + " does not take " + option);
  }
}

void CheckOptions(const FigureArguments& arguments, const Operation& operation) {
  Refuse(!arguments.from.empty() && (operation.takes & kFrom) == 0, operation, "--from");
  Refuse(arguments.number && (operation.takes & kNumber) == 0, operation, "--number");
  Refuse(arguments.unassigned && (operation.takes & kNumber) == 0, operation, "--unassigned");
  Refuse(!arguments.cur.empty() && (operation.takes & kAmounts) == 0, operation, "--cur");
  if (operation.number_needed && !arguments.number) {
    throw UserError(std::string(operation.name) +
                    " takes --number, of a subcategory, or with "
                    "--unassigned of a category");
  }
  if (arguments.format != "text" && arguments.format != "json") {
    throw UserError("--format takes text or json, not '" + arguments.format + "'");
  }
}

std::int32_t NumberArgument(const std::optional<std::string>& text) {
  const auto number = text ? WholeNumber(*text) : 0;
  if (!number) {
    throw UserError("--number takes a whole number, not '" + *text + "'");
  }
  return *number;
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
  Json line;
  line["operation"] = operation.name;
  line["result"] = PlainAmount(answer.amount);
  if (answer.first && answer.last) {
    line["first"] = vetlo::IsoDateText(*answer.first);
    line["last"] = vetlo::IsoDateText(*answer.last);
  }
  return JsonText(line);
}

std::string JsonFailure(const Operation& operation, std::int32_t number) {
  Json line;
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
  TerminalPlatform platform(EnvironmentLocale());
  Tamo component = LoadComponent().NewTamo(platform);
  Question question{component};
  question.from = DateArgumentOr("--from", arguments.from, vetlo::Services().EarliestDate());
  question.to = DateArgumentOr("--to", arguments.to, vetlo::Services().LatestDate());
  question.number = NumberArgument(arguments.number);
  question.unassigned = arguments.unassigned;
  std::unique_ptr<Database> store;
  std::optional<vetlo::KeptStore> kept;
  if ((operation.takes & kAmounts) != 0) {
    question.cur = AmountsArgument(arguments.cur);
  } else {
    store = OpenStoreFile(arguments.store, vetlo::StoreAccess::kReadOnly);
    question.store = &kept.emplace(*store);
  }
  const bool json = arguments.format == "json";
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
    if (kept && IsOfTheStore(failure)) {
      kept->OnFailure(failure.number(), failure.what());
    }
  }
  if (kept) {
    RequireWhole(*kept);
  }
}

}  // namespace quillmarsh
