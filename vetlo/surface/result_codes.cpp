#include "vetlo/surface/result_codes.h"

#include <string_view>

namespace vetlo {
namespace {

constexpr std::uint32_t kRunTimeFacility = 0x800A0000;
constexpr std::uint32_t kFacilityBits = 0xFFFF0000;
constexpr std::uint32_t kNumberBits = 0x0000FFFF;

std::string HexText(std::uint64_t value, int digits) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (int place = digits - 1; place >= 0; --place) {
    text += kDigits[(value >> (4 * place)) & 0xF];
  }
  return text;
}

}  // namespace

HRESULT ResultOfFailure(std::int32_t number) {
  if (number < 0) {
    return number;
  }
  const auto bits = static_cast<std::uint32_t>(number);
  return bits == 0 || bits > kNumberBits ? E_UNEXPECTED : ResultCode(kRunTimeFacility | bits);
}

std::int32_t FailureOfResult(HRESULT result) {
  const auto bits = static_cast<std::uint32_t>(result);
  return (bits & kFacilityBits) == kRunTimeFacility ? static_cast<std::int32_t>(bits & kNumberBits)
                                                    : result;
}

std::string ResultText(HRESULT result) {
  return "0x" + HexText(static_cast<std::uint32_t>(result), 8);
}

std::string GuidText(const GUID& guid) {
  std::string text = "{" + HexText(guid.data1, 8) + "-" + HexText(guid.data2, 4) + "-" +
                     HexText(guid.data3, 4) + "-";
  for (std::size_t at = 0; at < guid.data4.size(); ++at) {
    text += (at == 2 ? "-" : "") + HexText(guid.data4.at(at), 2);
  }
  return text + "}";
}

}  // namespace vetlo
