#include "quillmarsh/cli/event_text.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace quillmarsh {
namespace {

template <typename Real>
std::string RealText(Real value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string text(buffer, result.ptr);
  if (text.find_first_of(".en") == std::string::npos) {  // n: what is not finite stays as it is
    text += ".0";
  }
  return text;
}

// A list of rows, each a list of columns.
std::string MatrixText(const vetlo::AmountMatrix& matrix) {
  std::string text = "[";
  for (std::size_t row = 1; row <= matrix.Series(); ++row) {
    text += row == 1 ? "[" : ",[";
    for (std::size_t column = 1; column <= matrix.Items(); ++column) {
      text += (column == 1 ? "" : ",") + RealText(matrix(row, column));
    }
    text += "]";
  }
  return text + "]";
}

struct ValueText {
  std::string operator()(std::monostate) const { return "null"; }
  std::string operator()(bool value) const { return value ? "true" : "false"; }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(float value) const { return RealText(value); }
  std::string operator()(const std::string& value) const { return JsonText(value); }
  std::string operator()(const vetlo::AmountMatrix& value) const { return MatrixText(value); }
  std::string operator()(const vetlo::Font& value) const {
    return "{\"name\":" + JsonText(value.name) + ",\"size\":" + RealText(value.size) + "}";
  }
};

}  // namespace

std::string JsonText(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string EventText(const vetlo::Event& event) {
  std::string text =
      "{\"on\":" + JsonText(event.on) + "," + JsonText(event.action) + ":" + JsonText(event.member);
  if (event.at) {
    text += ",\"at\":[" + std::to_string(*event.at) + "]";
  }
  if (!std::holds_alternative<std::monostate>(event.value)) {
    text += ",\"value\":" + std::visit(ValueText{}, event.value);
  }
  return text + "}";
}

}  // namespace quillmarsh
