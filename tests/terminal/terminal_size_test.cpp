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

TEST(WidthOf, AsksTheTerminalFirst) {
  const PseudoTerminal terminal(132);
  if (!terminal.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  EXPECT_EQ(WidthOf(terminal.descriptor(), "100").columns, 132U);
}

TEST(WidthOf, PassesOverATerminalWithoutASize) {
  const PseudoTerminal terminal(0);
  if (!terminal.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  EXPECT_EQ(WidthOf(terminal.descriptor(), "100").columns, 100U);
}

TEST(WidthOf, IsALimitOnATerminalThatKnowsIt) {
  const PseudoTerminal known(132);
  const PseudoTerminal unknown(0);
  if (!known.ready() || !unknown.ready()) {
    GTEST_SKIP() << "there are no pseudo terminals here";
  }
  EXPECT_TRUE(WidthOf(known.descriptor(), nullptr).is_limit);
  EXPECT_TRUE(WidthOf(unknown.descriptor(), "100").is_limit);
  EXPECT_FALSE(WidthOf(unknown.descriptor(), nullptr).is_limit);
}

TEST(WidthOf, IsNoLimitWithoutATerminal) {
  EXPECT_FALSE(WidthOf(kNoTerminal, "100").is_limit);
  EXPECT_FALSE(WidthOf(kNoTerminal, nullptr).is_limit);
}

TEST(WidthOf, ReadsTheTextWithoutATerminal) {
  EXPECT_EQ(WidthOf(kNoTerminal, "100").columns, 100U);
}

TEST(WidthOf, IsTheUsualWithoutATerminalAndAText) {
  EXPECT_EQ(WidthOf(kNoTerminal, nullptr).columns, 80U);
}

TEST(WidthOf, TakesBothEndsOfTheRange) {
  EXPECT_EQ(WidthOf(kNoTerminal, "20").columns, 20U);
  EXPECT_EQ(WidthOf(kNoTerminal, "1000").columns, 1000U);
}

TEST(WidthOf, RefusesATextThatIsNoSaneNumber) {
  for (const char* text :
       {"", "19", "1001", "0", "-40", "40x", " 40", "4e1", "99999999999999999999"}) {
    EXPECT_EQ(WidthOf(kNoTerminal, text).columns, 80U) << text;
  }
}

}  // namespace
}  // namespace quillmarsh
