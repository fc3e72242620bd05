#include "quillmarsh/cli/nearest.h"

#include <algorithm>
#include <vector>

namespace quillmarsh {
namespace {

// A longer word is not looked at: one without end would take time without end.
constexpr std::size_t kMostLetters = 100;

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// How many steps turn one word into the other.
std::size_t Distance(std::string_view from, std::string_view to) {
  const auto same = [&](std::size_t at, std::size_t other) {
    return Lower(from[at - 1]) == Lower(to[other - 1]);
  };
  // Of the beginnings of both words, by their lengths.
  std::vector<std::vector<std::size_t>> steps(from.size() + 1,
                                              std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 || j == 0) {
        steps[i][j] = i + j;
        continue;
      }
      const std::size_t left_out_or_put_in = std::min(steps[i - 1][j], steps[i][j - 1]) + 1;
      const std::size_t changed = steps[i - 1][j - 1] + (same(i, j) ? 0 : 1);
      steps[i][j] = std::min(left_out_or_put_in, changed);
      if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j)) {
        steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
      }
    }
  }
  return steps[from.size()][to.size()];
}

}  // namespace

std::optional<std::string> Nearest(std::string_view mistyped, std::span<const std::string> words) {
  std::optional<std::string> nearest;
  std::size_t fewest = 0;
  for (const std::string& word : words) {
    if (std::max(mistyped.size(), word.size()) > kMostLetters) {
      continue;
    }
    const std::size_t steps = Distance(mistyped, word);
    const bool near = steps <= std::max(mistyped.size(), word.size()) / 3;
    if (near && (!nearest || steps < fewest)) {
      nearest = word;
      fewest = steps;
    }
  }
  return nearest;
}

std::string DidYouMean(std::string_view mistyped, std::span<const std::string> words) {
  const auto nearest = Nearest(mistyped, words);
  return nearest ? "; did you mean '" + *nearest + "'?" : "";
}

}  // namespace quillmarsh
