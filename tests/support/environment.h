#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace vetlo::testing {

// A setting of this process's environment for as long as it lives; unset where there is no value.
class EnvironmentSetting {
 public:
  EnvironmentSetting(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* const before = std::getenv(name)) {
      before_ = before;
    }
    Put(value);
  }
  ~EnvironmentSetting() { Put(before_); }
  EnvironmentSetting(const EnvironmentSetting&) = delete;
  EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

 private:
  void Put(const std::optional<std::string>& value) {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace vetlo::testing
