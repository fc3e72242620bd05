#include "tests/support/childs_terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace vetlo::testing {

ChildsTerminal::ChildsTerminal(unsigned short columns)
    : ours_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  if (grantpt(ours_) != 0 || unlockpt(ours_) != 0) {
    return;
  }
  theirs_ = open(ptsname(ours_), O_RDWR | O_NOCTTY | O_CLOEXEC);
  const winsize size = {24, columns, 0, 0};
  termios settings{};
  ioctl(theirs_, TIOCSWINSZ, &size);
  tcgetattr(theirs_, &settings);
  settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
  tcsetattr(theirs_, TCSANOW, &settings);
}

ChildsTerminal::~ChildsTerminal() {
  close(theirs_);
  close(ours_);
}

void ChildsTerminal::TakeFor(std::initializer_list<int> streams) const {
  for (const int stream : streams) {
    dup2(theirs_, stream);
  }
}

void ChildsTerminal::Type(const std::string& text) const {
  if (write(ours_, text.data(), text.size()) != std::ssize(text)) {
    throw std::runtime_error("nothing can be typed on the terminal");
  }
}

std::string ChildsTerminal::Shown() const {
  char text[4096];
  const ssize_t count = read(ours_, text, sizeof text);
  return {text, static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

}  // namespace vetlo::testing
