#include "quillmarsh/cli/event_text.h"

#include <variant>

#include "quillmarsh/cli/json_text.h"

namespace quillmarsh {
namespace {

// A list of rows, each a list of columns.
Json RowsOf(const vetlo::AmountMatrix& matrix) {
  Json rows = Json::array();
  for (std::size_t row = 1; row <= matrix.Series(); ++row) {
    Json columns = Json::array();
    for (std::size_t column = 1; column <= matrix.Items(); ++column) {
      columns.push_back(matrix(row, column));
    }
    rows.push_back(std::move(columns));
  }
  return rows;
}

struct JsonOf {
  Json operator()(std::monostate) const { return nullptr; }
  Json operator()(bool value) const { return value; }
  Json operator()(std::int32_t value) const { return value; }
  Json operator()(float value) const { return JsonReal(value); }
  Json operator()(const std::string& value) const { return value; }
  Json operator()(const vetlo::AmountMatrix& value) const { return RowsOf(value); }
  Json operator()(const vetlo::Font& value) const {
    Json font = Json::object();
    font["name"] = value.name;
    font["size"] = JsonReal(value.size);
    return font;
  }
};

}  // namespace

std::string EventText(const vetlo::Event& event) {
  Json line = Json::object();
  line["on"] = event.on;
  line[std::string(event.action)] = event.member;
  if (event.at) {
    line["at"] = Json::array({*event.at});
  }
  if (!std::holds_alternative<std::monostate>(event.value)) {
    line["value"] = std::visit(JsonOf{}, event.value);
  }
  return JsonText(line);
}

}  // namespace quillmarsh
