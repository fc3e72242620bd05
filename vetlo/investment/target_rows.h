#pragma once

#include "vetlo/platform/arrays.h"
#include "vetlo/store/model.h"

namespace vetlo {

// The rows that a routine of investments fills: texts for a report, amounts for a chart. It starts
// both and closes the one that it was asked for; the other keeps its spare row.
template <typename ReportRow>
struct TargetRows {
  GrowingArray<ReportRow> report;
  AmountRows chart;

  void Start() {
    report.Start();
    chart.Start();
  }
  // Fails with kSubscriptOutOfRange where there is no row.
  void Close(ChartOrReport lngChartOrReportType) {
    if (lngChartOrReportType == ChartOrReport::kReport) {
      report.Close();
    } else {
      chart.Close();
    }
  }
};

}  // namespace vetlo
