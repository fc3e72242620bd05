#include "quillmarsh/terminal/terminal_size.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace quillmarsh {
namespace {

constexpr std::size_t kUsualColumns = 80;
constexpr std::size_t kLeastColumns = 20;
constexpr std::size_t kMostColumns = 1000;

std::size_t ColumnsInText(std::string_view text) {
  std::size_t columns = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), columns);
  const bool sane = error == std::errc{} && end == text.data() + text.size() &&
                    columns >= kLeastColumns && columns <= kMostColumns;
  return sane ? columns : kUsualColumns;
}

}  // namespace

std::size_t ColumnsOf(int descriptor, const char* columns_text) {
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    return size.ws_col;
  }
  return columns_text == nullptr ? kUsualColumns : ColumnsInText(columns_text);
}

std::size_t TerminalColumns() { return ColumnsOf(STDOUT_FILENO, std::getenv("COLUMNS")); }

}  // namespace quillmarsh
