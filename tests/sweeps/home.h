#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/program.h"

namespace sweeps {

// The home of a user with a store and another that lacks its indexes, perhaps with the component
// registered as an older one, and with all that a command could change. It lies in memory where
// there is a file system for that.
class Home {
 public:
  explicit Home(bool registered);

  // What lies in it: for each file below it what it says. For a store that is all its rows, read
  // once a save that was broken off is undone; a store that is not whole says what is wrong.
  using Contents = std::map<std::string, std::string>;
  Contents Look();

  // Puts it back as it was in the beginning.
  void Restore();

  // The words of a command with the names of its files, and the environment of its program.
  [[nodiscard]] std::vector<std::string> Words(const std::vector<std::string>& words) const;
  [[nodiscard]] std::vector<std::string> Settings() const;

 private:
  using Files = std::map<std::string, std::string>;  // their bytes

  [[nodiscard]] Files Read() const;
  void UndoBrokenSaves() const;
  const std::string& TextOfStore(const std::string& path, const std::string& bytes);

  vetlo::testing::TestFolder folder_;
  Files beginning_;
  Files texts_;  // of the bytes of stores, which are the same again and again
};

}  // namespace sweeps
