#include "vetlo/host/chart_model.h"

#include "vetlo/platform/failure.h"

namespace vetlo {
namespace {

std::string& LabelAt(std::vector<std::string>& labels, std::int32_t number) {
  if (number < 1 || static_cast<std::size_t>(number) > labels.size()) {
    throw Failure(FailureNumber::kSubscriptOutOfRange);
  }
  return labels[static_cast<std::size_t>(number) - 1];
}

}  // namespace

void ChartModel::SetRowCount(std::int32_t count) {
  if (count <= 0) {
    Clear();
  }
}

void ChartModel::SetColumnCount(std::int32_t count) {
  if (count <= 0) {
    Clear();
  }
}

void ChartModel::SetChartData(const AmountMatrix& data) {
  data_ = data;
  row_labels_.assign(data.Series(), {});
  column_labels_.assign(data.Items(), {});
}

void ChartModel::SetRowLabel(std::string_view label) { LabelAt(row_labels_, row_) = label; }

void ChartModel::SetColumnLabel(std::string_view label) {
  LabelAt(column_labels_, column_) = label;
}

void ChartModel::Clear() {
  data_ = {};
  row_labels_.clear();
  column_labels_.clear();
}

}  // namespace vetlo
