#pragma once

#include <initializer_list>
#include <string>

namespace vetlo::testing {

// A terminal for a program that is run; this process sits before it.
class ChildsTerminal {
 public:
  explicit ChildsTerminal(unsigned short columns);
  ~ChildsTerminal();
  ChildsTerminal(const ChildsTerminal&) = delete;
  ChildsTerminal& operator=(const ChildsTerminal&) = delete;

  // False where there are no pseudo terminals.
  [[nodiscard]] bool ready() const { return theirs_ >= 0; }

  // For the child: these of its standard streams are the terminal.
  void TakeFor(std::initializer_list<int> streams) const;

  void Type(const std::string& text) const;
  // What has come to stand on it since it was last asked, the echo of what was typed too; it takes
  // a few pages. Line ends are "\n".
  [[nodiscard]] std::string Shown() const;

 private:
  int ours_;
  int theirs_ = -1;
};

}  // namespace vetlo::testing
