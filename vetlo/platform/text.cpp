#include "vetlo/platform/text.h"

#include <cmath>

namespace vetlo {
namespace {

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

}  // namespace

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string Str(std::int32_t number) {
  return number < 0 ? std::to_string(number) : " " + std::to_string(number);
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    count += i == 0 || StartsCharacter(text[i]) ? 1U : 0U;
  }
  return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  while (at < text.size() && count > 0) {
    ++at;
    while (at < text.size() && !StartsCharacter(text[at])) {
      ++at;
    }
    --count;
  }
  return text.substr(0, at);
}

double RoundHalfEven(double value) {
  const double down = std::floor(value);
  const double rest = value - down;
  if (rest != 0.5) {
    return rest < 0.5 ? down : down + 1;
  }
  return std::fmod(down, 2) == 0 ? down : down + 1;
}

}  // namespace vetlo
