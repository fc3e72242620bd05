#include "quillmarsh/terminal/terminal_size.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <system_error>

namespace quillmarsh {
namespace {

constexpr std::size_t kUsualColumns = 80;
constexpr std::size_t kLeastColumns = 20;
constexpr std::size_t kMostColumns = 1000;

std::optional<std::size_t> ColumnsIn(std::string_view text) {
  std::size_t columns = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), columns);
  const bool sane = error == std::errc{} && end == text.data() + text.size() &&
                    columns >= kLeastColumns && columns <= kMostColumns;
  return sane ? std::optional(columns) : std::nullopt;
}

}  // namespace

ScreenWidth WidthOf(int descriptor, const char* columns_text) {
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    return {size.ws_col, true};
  }
  const auto told = ColumnsIn(columns_text == nullptr ? "" : columns_text);
  return {told.value_or(kUsualColumns), told && isatty(descriptor) != 0};
}

ScreenWidth OutputWidth() { return WidthOf(STDOUT_FILENO, std::getenv("COLUMNS")); }

}  // namespace quillmarsh
