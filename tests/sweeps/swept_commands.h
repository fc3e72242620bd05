#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace sweeps {

// A command whose calls fail one after another.
struct SweptCommand {
  const char* name;                // for the test
  std::vector<std::string> words;  // STORE, PLAIN and NEW stand for files of the home
  bool every_allocation = false;   // or so many as there is time for
  bool registered = true;          // whether the user has registered a component before

  friend std::ostream& operator<<(std::ostream& out, const SweptCommand& command);
};

const std::vector<SweptCommand>& SweptCommands();

}  // namespace sweeps
