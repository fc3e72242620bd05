#include "quillmarsh/terminal/locale.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace quillmarsh {
namespace {

// Sets a variable of the environment for as long as the object lives.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) {
      before_ = before;
    }
    setenv(name, value, 1);
  }
  ~Variable() {
    if (before_) {
      setenv(name_, before_->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

LocaleFacts German() { return {"UTF-8", ",", ".", "€", 0}; }

void ExpectDefaults(const vetlo::NumberLocale& locale) {
  EXPECT_EQ(locale.decimal_point, ".");
  EXPECT_EQ(locale.thousands_separator, ",");
  EXPECT_EQ(locale.currency_sign, "$");
  EXPECT_TRUE(locale.sign_in_front);
}

TEST(LocaleName, TheVariableForAllComesFirst) {
  EXPECT_EQ(LocaleName("de_DE", "fr_FR", "en_US"), "de_DE");
}

TEST(LocaleName, TheCategoryComesBeforeTheLanguage) {
  EXPECT_EQ(LocaleName(nullptr, "fr_FR", "en_US"), "fr_FR");
}

TEST(LocaleName, AnEmptyVariableIsNotSet) { EXPECT_EQ(LocaleName("", "", "en_US"), "en_US"); }

TEST(LocaleName, IsCWithoutAnyVariable) { EXPECT_EQ(LocaleName(nullptr, nullptr, nullptr), "C"); }

TEST(IsPlainLocale, KnowsItsNames) {
  for (const char* name : {"C", "POSIX", "C.UTF-8", "C.utf8"}) {
    EXPECT_TRUE(IsPlainLocale(name)) << name;
  }
}

TEST(IsPlainLocale, IsNoOtherLocale) {
  for (const char* name : {"", "Cx", "ca_ES.UTF-8", "POSIXLY"}) {
    EXPECT_FALSE(IsPlainLocale(name)) << name;
  }
}

TEST(NumberLocaleOf, HasTheDefaultsWithoutAnyFacts) {
  ExpectDefaults(NumberLocaleOf(std::nullopt, std::nullopt));
}

TEST(NumberLocaleOf, TakesSeparatorsFromTheNumericFactsAlone) {
  const vetlo::NumberLocale locale = NumberLocaleOf(German(), std::nullopt);
  EXPECT_EQ(locale.decimal_point, ",");
  EXPECT_EQ(locale.thousands_separator, ".");
  EXPECT_EQ(locale.currency_sign, "$");
  EXPECT_TRUE(locale.sign_in_front);
}

TEST(NumberLocaleOf, TakesTheSignFromTheMonetaryFactsAlone) {
  const vetlo::NumberLocale locale = NumberLocaleOf(std::nullopt, German());
  EXPECT_EQ(locale.decimal_point, ".");
  EXPECT_EQ(locale.thousands_separator, ",");
  EXPECT_EQ(locale.currency_sign, "€");
  EXPECT_FALSE(locale.sign_in_front);
}

TEST(NumberLocaleOf, KeepsASeparatorOfSeveralBytes) {
  const LocaleFacts french{"UTF-8", ",", "\u202F", "€", 0};
  EXPECT_EQ(NumberLocaleOf(french, french).thousands_separator, "\u202F");
}

TEST(NumberLocaleOf, KeepsAMissingSeparator) {
  const LocaleFacts facts{"UTF-8", ",", "", "€", 0};
  EXPECT_EQ(NumberLocaleOf(facts, facts).thousands_separator, "");
}

TEST(NumberLocaleOf, PutsTheSignInFrontWhereNothingIsSaid) {
  const LocaleFacts facts{"UTF-8", ",", ".", "€", CHAR_MAX};
  EXPECT_TRUE(NumberLocaleOf(facts, facts).sign_in_front);
}

TEST(NumberLocaleOf, ConvertsFromTheCodesetOfTheLocale) {
  const LocaleFacts facts{"ISO-8859-15", ",", "\xA0", "\xA4", 0};
  const vetlo::NumberLocale locale = NumberLocaleOf(facts, facts);
  EXPECT_EQ(locale.thousands_separator, "\u00A0");
  EXPECT_EQ(locale.currency_sign, "€");
}

TEST(NumberLocaleOf, HasTheDefaultForATextThatIsInvalid) {
  const LocaleFacts facts{"UTF-8", ",", ".", "\xFF", 1};
  EXPECT_EQ(NumberLocaleOf(facts, facts).currency_sign, "$");
}

TEST(NumberLocaleOf, HasTheDefaultsForAnUnknownCodeset) {
  const LocaleFacts facts{"no such codeset", ",", ".", "€", 1};
  ExpectDefaults(NumberLocaleOf(facts, facts));
}

TEST(EnvironmentLocale, HasTheDefaultsInThePlainLocale) {
  const Variable all("LC_ALL", "C.UTF-8");
  ExpectDefaults(EnvironmentLocale());
}

TEST(EnvironmentLocale, HasTheDefaultsInALocaleThatIsNotInstalled) {
  const Variable all("LC_ALL", "xx_NOWHERE.UTF-8");
  ExpectDefaults(EnvironmentLocale());
}

TEST(EnvironmentLocale, ReadsAnInstalledLocale) {
  constexpr const char* kName = "de_DE.UTF-8";
#ifndef __SANITIZE_ADDRESS__  // the C library keeps a little of what it reads from a path
  const char* const locales = std::getenv("QUILLMARSH_TEST_LOCALES");
  const Variable path("LOCPATH", locales == nullptr ? "" : locales);
#endif
  const locale_t installed = newlocale(LC_ALL_MASK, kName, nullptr);
  if (installed == nullptr) {
    GTEST_SKIP() << kName << " is not installed";
  }
  freelocale(installed);
  const Variable all("LC_ALL", kName);
  const vetlo::NumberLocale locale = EnvironmentLocale();
  EXPECT_EQ(locale.decimal_point, ",");
  EXPECT_EQ(locale.currency_sign, "€");
  EXPECT_FALSE(locale.sign_in_front);
}

TEST(EnvironmentLocale, LeavesTheLocaleOfTheProcess) {
  const std::string before = setlocale(LC_ALL, nullptr);
  const locale_t thread_before = uselocale(nullptr);
  const Variable all("LC_ALL", "de_DE.UTF-8");
  EnvironmentLocale();
  EXPECT_EQ(setlocale(LC_ALL, nullptr), before);
  EXPECT_EQ(uselocale(nullptr), thread_before);
}

}  // namespace
}  // namespace quillmarsh
