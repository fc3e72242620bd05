#include "quillmarsh/terminal/locale.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>

#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

struct FreeLocale {
  void operator()(locale_t locale) const { freelocale(locale); }
};
using OwnedLocale = std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale>;

// Makes a locale the one of this thread for as long as the object lives.
class LocaleOfThread {
 public:
  explicit LocaleOfThread(locale_t locale) : before_(uselocale(locale)) {}
  ~LocaleOfThread() { uselocale(before_); }
  LocaleOfThread(const LocaleOfThread&) = delete;
  LocaleOfThread& operator=(const LocaleOfThread&) = delete;

 private:
  locale_t before_;
};

// What is not to be had for want of memory must not pass for what is not there.
void RequireMemory() {
  if (errno == ENOMEM) {
    throw std::bad_alloc();
  }
}

OwnedLocale Named(int categories, const std::string& name) {
  errno = 0;
  return OwnedLocale(newlocale(categories, name.c_str(), nullptr));
}

// A locale could not be had: that it is not installed is the one good reason. The error number does
// not tell, since the search goes on behind a file that there was no memory for; a category that
// has not been asked for yet does.
void RequireNotInstalled(const std::string& name) {
  RequireMemory();
  if (Named(LC_IDENTIFICATION_MASK, name)) {
    throw vetlo::Failure(vetlo::FailureNumber::kOutOfMemory,
                         "the locale '" + name +
                             "' is there but cannot be read; see whether there is memory enough, "
                             "or set LC_ALL=C to do without it");
  }
  RequireMemory();
}

// Nothing for a locale that is plain or not installed.
std::optional<LocaleFacts> FactsOf(const std::string& name) {
  if (IsPlainLocale(name)) {
    return std::nullopt;
  }
  const OwnedLocale named = Named(LC_CTYPE_MASK | LC_NUMERIC_MASK | LC_MONETARY_MASK, name);
  if (!named) {
    RequireNotInstalled(name);
    return std::nullopt;
  }
  const LocaleOfThread during_the_reading(named.get());
  const lconv& facts = *localeconv();
  return LocaleFacts{nl_langinfo_l(CODESET, named.get()), facts.decimal_point, facts.thousands_sep,
                     facts.currency_symbol, facts.p_cs_precedes};
}

// Nothing for a text that is not one of the codeset, or a codeset that is not known.
std::optional<std::string> ToUtf8(std::string text, const std::string& codeset) {
  constexpr std::size_t kMostBytesPerByte = 4;
  errno = 0;
  const iconv_t converter = iconv_open("UTF-8", codeset.c_str());
  if (reinterpret_cast<std::intptr_t>(converter) == -1) {
    RequireMemory();
    return std::nullopt;
  }
  std::string utf8(text.size() * kMostBytesPerByte, '\0');
  char* from = text.data();
  std::size_t from_left = text.size();
  char* to = utf8.data();
  std::size_t to_left = utf8.size();
  const std::size_t result = iconv(converter, &from, &from_left, &to, &to_left);
  iconv_close(converter);
  if (result == static_cast<std::size_t>(-1)) {
    return std::nullopt;
  }
  utf8.resize(utf8.size() - to_left);
  return utf8;
}

std::string LocaleNameOf(const char* category) {
  return LocaleName(std::getenv("LC_ALL"), std::getenv(category), std::getenv("LANG"));
}

}  // namespace

std::string LocaleName(const char* lc_all, const char* lc_category, const char* lang) {
  for (const char* name : {lc_all, lc_category, lang}) {
    if (name != nullptr && *name != '\0') {
      return name;
    }
  }
  return "C";
}

bool IsPlainLocale(const std::string& name) {
  return name == "C" || name == "POSIX" || name.starts_with("C.");
}

vetlo::NumberLocale NumberLocaleOf(const std::optional<LocaleFacts>& numeric,
                                   const std::optional<LocaleFacts>& monetary) {
  vetlo::NumberLocale locale;
  if (numeric) {
    locale.decimal_point =
        ToUtf8(numeric->decimal_point, numeric->codeset).value_or(locale.decimal_point);
    locale.thousands_separator =
        ToUtf8(numeric->thousands_separator, numeric->codeset).value_or(locale.thousands_separator);
  }
  if (monetary) {
    locale.currency_sign =
        ToUtf8(monetary->currency_sign, monetary->codeset).value_or(locale.currency_sign);
    locale.sign_in_front = monetary->sign_precedes != 0;
  }
  return locale;
}

vetlo::NumberLocale EnvironmentLocale() {
  return NumberLocaleOf(FactsOf(LocaleNameOf("LC_NUMERIC")), FactsOf(LocaleNameOf("LC_MONETARY")));
}

}  // namespace quillmarsh
