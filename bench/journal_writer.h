#pragma once

#include <iosfwd>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/platform/currency.h"
#include "vetlo/platform/date.h"

namespace quillmarsh::bench {

// The names of one level of a journal, each as its format can carry it and told apart from the
// others: two that come out the same get a number behind them.
class NameList {
 public:
  NameList(std::string (*clean)(std::string_view), char before_number)
      : clean_(clean), before_number_(before_number) {}

  std::string Claim(std::string_view name);

 private:
  std::string (*clean_)(std::string_view);
  char before_number_;
  std::set<std::string> taken_;
};

// One line of a transaction: an amount of money, or units of a commodity and what they cost.
struct Posting {
  std::string account;    // "Assets:Wallet"
  vetlo::Currency money;  // of units the whole cost, 0 where they have none; never negative there
  std::string commodity;  // empty for money
  double units = 0;
};

// Writes a double-entry journal in plain text. Accounts stand under Assets, Liabilities, Equity,
// Income and Expenses; the parts of their names, and the commodities, come from a NameList of the
// writer's own. All money is of one currency. The postings of a transaction add up to nothing,
// units at their cost.
class JournalWriter {
 public:
  virtual ~JournalWriter() = default;

  [[nodiscard]] virtual NameList AccountNames() const = 0;
  [[nodiscard]] virtual NameList CommodityNames() const = 0;

  virtual void Begin() = 0;
  virtual void WritePrice(vetlo::Date day, const std::string& commodity, double price) = 0;
  virtual void WriteTransaction(vetlo::Date day, std::string_view payee,
                                const std::vector<Posting>& postings) = 0;
  virtual void End() = 0;
};

enum class JournalFormat { kLedger, kBeancount };

std::unique_ptr<JournalWriter> MakeJournalWriter(JournalFormat format, std::ostream& out);

}  // namespace quillmarsh::bench
