#include "tests/support/childs_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

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
  // What was written just now may need a moment to come through.
  constexpr int kMoment = 200;  // milliseconds
  std::string shown;
  pollfd end = {ours_, POLLIN, 0};
  while (poll(&end, 1, kMoment) > 0) {
    char text[4096];
    const ssize_t count = read(ours_, text, sizeof text);
    if (count <= 0) {
      break;
    }
    shown.append(text, static_cast<std::size_t>(count));
  }
  return shown;
}

}  // namespace vetlo::testing
