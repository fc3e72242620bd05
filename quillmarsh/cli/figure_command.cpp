#include "quillmarsh/cli/figure_command.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/event_text.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/frame/tamo.h"
#include "vetlo/platform/failure.h"
#include "vetlo/services/common_services.h"

namespace quillmarsh {
namespace {

using vetlo::Currency;

struct Question {
  vetlo::clsTamo& component;
  vetlo::Database& store;
  vetlo::Date to;
};

using OnAccounts = Currency (vetlo::clsTamo::*)(vetlo::Database&, vetlo::Recordset&, vetlo::Date);

template <OnAccounts figure>
Currency OfAccounts(const Question& question) {
  const auto accounts = question.store.OpenRecordset("Account");
  return (question.component.*figure)(question.store, *accounts, question.to);
}

Currency CreditCardDebt(const Question& question) {
  return question.component.TotalCreditCardDebt(question.store, question.to);
}

struct Operation {
  const char* name;
  Currency (*answer)(const Question& question);
};

constexpr std::array kOperations = {
    Operation{"TotalAssets", OfAccounts<&vetlo::clsTamo::TotalAssets>},
    Operation{"TotalLiabilities", OfAccounts<&vetlo::clsTamo::TotalLiabilities>},
    Operation{"TotalCreditCardDebt", CreditCardDebt},
};

const Operation& OperationNamed(const std::string& name) {
  const auto* const found = std::ranges::find_if(
      kOperations, [&](const Operation& operation) { return operation.name == name; });
  if (found == kOperations.end()) {
    std::string names;
    for (const std::string& known : FigureOperations()) {
      names += (names.empty() ? "" : ", ") + known;
    }
    throw UserError("there is no figure '" + name + "'; there are " + names);
  }
  return *found;
}

// "1234.5000".
std::string PlainAmount(Currency amount) {
  const vetlo::NumberLocale plain{".", "", "", true};
  return vetlo::Format(amount, "0.0000", plain);
}

}  // namespace

std::vector<std::string> FigureOperations() {
  std::vector<std::string> names;
  for (const Operation& operation : kOperations) {
    names.emplace_back(operation.name);
  }
  return names;
}

void FigureCommand(const FigureArguments& arguments, std::ostream& out) {
  const Operation& operation = OperationNamed(arguments.operation);
  if (!arguments.from.empty()) {
    throw UserError(std::string(operation.name) + " holds on one date: it takes --to alone");
  }
  if (arguments.format != "text" && arguments.format != "json") {
    throw UserError("--format takes text or json, not '" + arguments.format + "'");
  }
  const bool json = arguments.format == "json";
  const vetlo::Date to = DateArgumentOr("--to", arguments.to, vetlo::Services().LatestDate());
  TerminalPlatform platform(EnvironmentLocale());
  vetlo::clsTamo component(platform);
  const auto store = OpenStoreFile(arguments.store, vetlo::StoreAccess::kReadOnly);
  const std::string head = "{\"operation\":" + JsonText(operation.name);
  try {
    const Currency amount = operation.answer({component, *store, to});
    if (json) {
      out << head << ",\"result\":\"" << PlainAmount(amount) << "\"}\n";
    } else {
      out << vetlo::Format(amount, vetlo::kAmountPicture, platform.Locale()) << "\n";
    }
  } catch (const vetlo::Failure& failure) {
    if (!json) {
      throw UserError(std::string(operation.name) + " failed with number " +
                      std::to_string(failure.number()) + ": " + failure.what());
    }
    out << head << ",\"failure\":" << failure.number() << "}\n";
  }
}

}  // namespace quillmarsh
