#include "bench/journal_writer.h"

#include <array>
#include <charconv>
#include <map>
#include <ostream>
#include <stdexcept>

#include "vetlo/platform/text.h"

namespace quillmarsh::bench {
namespace {

using vetlo::Currency;
using vetlo::Date;

// ---- names

bool IsAsciiLetterOrDigit(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

char UpperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

// The text with every character that `is_unfit` names as a blank, and no two blanks in a row.
template <typename Test>
std::string WithBlanksFor(std::string_view text, Test is_unfit) {
  std::string cleaned;
  for (const char c : text) {
    const char shown = is_unfit(c) ? ' ' : c;
    if (shown != ' ' || (!cleaned.empty() && cleaned.back() != ' ')) {
      cleaned += shown;
    }
  }
  return std::string(vetlo::Trim(cleaned));
}

// What ends a name, opens a comment or quotes it.
bool MeansSomethingInLedger(char c) {
  return IsControl(c) || std::string_view(":;\"|").find(c) != std::string_view::npos;
}

// A name that starts or ends with a bracket would be read as another kind of posting.
std::string LedgerName(std::string_view name) {
  std::string cleaned = WithBlanksFor(name, [](char c) {
    return MeansSomethingInLedger(c) || std::string_view("()[]<>{}").find(c) != std::string::npos;
  });
  return cleaned.empty() ? "Unnamed" : cleaned;
}

// A payee must not start with the mark of a state or with a code in brackets.
std::string LedgerPayee(std::string_view name) {
  std::string cleaned = WithBlanksFor(name, MeansSomethingInLedger);
  const std::size_t start = cleaned.find_first_not_of("*!(= ");
  return start == std::string::npos ? std::string() : cleaned.substr(start);
}

// Letters, digits and dashes, the first a capital or a digit.
std::string BeancountName(std::string_view name) {
  std::string cleaned = WithBlanksFor(name, [](char c) {
    return !IsAsciiLetterOrDigit(c) && static_cast<unsigned char>(c) < 0x80;
  });
  for (char& c : cleaned) {
    c = c == ' ' ? '-' : c;
  }
  if (cleaned.empty() || !IsAsciiLetterOrDigit(cleaned.front())) {
    return "X" + cleaned;
  }
  cleaned.front() = UpperCase(cleaned.front());
  return cleaned;
}

// Two to 20 capitals and digits, the first a capital: there are 24 places, a number behind it
// takes some.
std::string BeancountCommodity(std::string_view name) {
  constexpr std::size_t kLongest = 20;
  std::string symbol = "IT";
  for (const char c : name) {
    if (IsAsciiLetterOrDigit(c) && symbol.size() < kLongest) {
      symbol += UpperCase(c);
    }
  }
  return symbol;
}

// ---- numbers

// "12.34"; the places behind the second only where they say something.
std::string MoneyText(Currency amount) {
  constexpr std::int64_t kUnitsPerCent = 100;
  constexpr std::size_t kPlaces = 4;
  const std::int64_t units = amount.units();
  std::string digits = std::to_string(units);
  const bool negative = digits.front() == '-';
  digits.erase(0, negative ? 1 : 0);
  if (digits.size() <= kPlaces) {
    digits.insert(0, kPlaces + 1 - digits.size(), '0');
  }
  digits.insert(digits.size() - kPlaces, 1, '.');
  if (units % kUnitsPerCent == 0) {
    digits.resize(digits.size() - 2);
  }
  return (negative ? "-" : "") + digits;
}

// The fewest digits that mean this very number, and no exponent.
std::string NumberText(double number) {
  constexpr std::size_t kRoomForAnyDouble = 400;
  std::array<char, kRoomForAnyDouble> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed);
  if (result.ec != std::errc{}) {
    throw std::runtime_error("a number in the store is too long to write");
  }
  return {buffer.data(), result.ptr};
}

// ---- the formats

// The one that most programs of this kind read.
class LedgerWriter : public JournalWriter {
 public:
  explicit LedgerWriter(std::ostream& out) : out_(out) {}

  [[nodiscard]] NameList AccountNames() const override { return NameList(LedgerName, ' '); }
  [[nodiscard]] NameList CommodityNames() const override { return NameList(LedgerName, ' '); }

  // With all places of an amount, so that what is worked out comes back unrounded.
  void Begin() override { out_ << "commodity $\n    format $1000.0000\n\n"; }

  void WritePrice(Date day, const std::string& commodity, double price) override {
    out_ << "P " << vetlo::IsoDateText(day) << " \"" << commodity << "\" $" << NumberText(price)
         << "\n";
  }

  void WriteTransaction(Date day, std::string_view payee,
                        const std::vector<Posting>& postings) override {
    out_ << "\n" << vetlo::IsoDateText(day) << " " << LedgerPayee(payee) << "\n";
    for (const Posting& posting : postings) {
      out_ << "    " << posting.account << "  ";
      if (posting.commodity.empty()) {
        out_ << "$" << MoneyText(posting.money) << "\n";
      } else {
        out_ << NumberText(posting.units) << " \"" << posting.commodity << "\"";
        // In brackets: what was paid is no price of the day.
        if (posting.money != Currency{}) {
          out_ << " (@@) $" << MoneyText(posting.money);
        }
        out_ << "\n";
      }
    }
  }

  void End() override {}

 private:
  std::ostream& out_;
};

constexpr std::string_view kBeancountMoney = "USD";

class BeancountWriter : public JournalWriter {
 public:
  explicit BeancountWriter(std::ostream& out) : out_(out) {}

  [[nodiscard]] NameList AccountNames() const override { return NameList(BeancountName, '-'); }
  [[nodiscard]] NameList CommodityNames() const override {
    return NameList(BeancountCommodity, '-');
  }

  void Begin() override { out_ << "option \"operating_currency\" \"" << kBeancountMoney << "\"\n"; }

  void WritePrice(Date day, const std::string& commodity, double price) override {
    out_ << vetlo::IsoDateText(day) << " price " << commodity << " " << NumberText(price) << " "
         << kBeancountMoney << "\n";
  }

  void WriteTransaction(Date day, std::string_view payee,
                        const std::vector<Posting>& postings) override {
    out_ << "\n" << vetlo::IsoDateText(day) << " * \"" << PayeeText(payee) << "\"\n";
    for (const Posting& posting : postings) {
      opened_.try_emplace(posting.account, day);
      out_ << "  " << posting.account << "  ";
      if (posting.commodity.empty()) {
        out_ << MoneyText(posting.money) << " " << kBeancountMoney << "\n";
      } else {
        out_ << NumberText(posting.units) << " " << posting.commodity;
        if (posting.money != Currency{}) {
          out_ << " @@ " << MoneyText(posting.money) << " " << kBeancountMoney;
        }
        out_ << "\n";
      }
    }
  }

  // An account must be open on the day of its first posting; the place in the file is free.
  void End() override {
    out_ << "\n";
    for (const auto& [account, day] : opened_) {
      out_ << vetlo::IsoDateText(day) << " open " << account << "\n";
    }
  }

 private:
  static std::string PayeeText(std::string_view payee) {
    return WithBlanksFor(payee, [](char c) { return IsControl(c) || c == '"' || c == '\\'; });
  }

  std::ostream& out_;
  std::map<std::string, Date> opened_;  // the transactions come by date
};

}  // namespace

std::string NameList::Claim(std::string_view name) {
  const std::string cleaned = clean_(name);
  std::string claimed = cleaned;
  for (int number = 2; !taken_.insert(claimed).second; ++number) {
    claimed = cleaned + before_number_ + std::to_string(number);
  }
  return claimed;
}

std::unique_ptr<JournalWriter> MakeJournalWriter(JournalFormat format, std::ostream& out) {
  if (format == JournalFormat::kBeancount) {
    return std::make_unique<BeancountWriter>(out);
  }
  return std::make_unique<LedgerWriter>(out);
}

}  // namespace quillmarsh::bench
