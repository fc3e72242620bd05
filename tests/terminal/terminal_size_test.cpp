#include "quillmarsh/terminal/terminal_size.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace quillmarsh {
namespace {

constexpr int kNoTerminal = -1;

// A terminal of its own, as wide as it is told to be.
class PseudoTerminal {
 public:
  explicit PseudoTerminal(unsigned short columns) : descriptor_(posix_openpt(O_RDWR | O_NOCTTY)) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = columns;
    ready_ = descriptor_ >= 0 && ioctl(descriptor_, TIOCSWINSZ, &size) == 0;
  }
  ~PseudoTerminal() { close(descriptor_); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  [[nodiscard]] int descriptor() const { return descriptor_; }
  [[nodiscard]] bool ready() const { return ready_; }

 private:
  int descriptor_;
  bool ready_;
};

TEST(ColumnsOf, AsksTheTerminalFirst) {
  const PseudoTerminal terminal(132);
  if (!terminal.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  EXPECT_EQ(ColumnsOf(terminal.descriptor(), "100"), 132U);
}

TEST(ColumnsOf, PassesOverATerminalWithoutASize) {
  const PseudoTerminal terminal(0);
  if (!terminal.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  EXPECT_EQ(ColumnsOf(terminal.descriptor(), "100"), 100U);
}

TEST(ColumnsOf, ReadsTheTextWithoutATerminal) { EXPECT_EQ(ColumnsOf(kNoTerminal, "100"), 100U); }

TEST(ColumnsOf, IsTheUsualWithoutATerminalAndAText) {
  EXPECT_EQ(ColumnsOf(kNoTerminal, nullptr), 80U);
}

TEST(ColumnsOf, TakesBothEndsOfTheRange) {
  EXPECT_EQ(ColumnsOf(kNoTerminal, "20"), 20U);
  EXPECT_EQ(ColumnsOf(kNoTerminal, "1000"), 1000U);
}

TEST(ColumnsOf, RefusesATextThatIsNoSaneNumber) {
  for (const char* text :
       {"", "19", "1001", "0", "-40", "40x", " 40", "4e1", "99999999999999999999"}) {
    EXPECT_EQ(ColumnsOf(kNoTerminal, text), 80U) << text;
  }
}

}  // namespace
}  // namespace quillmarsh
