#include "vetlo/cashflow/category_section.h"

#include "vetlo/cashflow/category_totals.h"
#include "vetlo/cashflow/category_walk.h"
#include "vetlo/services/report_rows.h"

namespace vetlo {

bool CategorySection::Passes(Currency amount) const {
  return ExceedsShare(amount, total_, LeastShareShown(request_.lngChartOrReportType));
}

void CategorySection::AddHeading(std::string_view label) {
  if (request_.ForReport()) {
    request_.rows.AddHeading(label);
  }
}

void CategorySection::AddSpacer() { AddHeading(""); }

void CategorySection::AddRow(Currency amount, std::string label) {
  const bool negated = stored_ == Stored::kNegatedInCharts && !request_.ForReport();
  request_.rows.Add(negated ? -amount : amount, std::move(label));
}

void CategorySection::AddTotal(std::string_view label) {
  if (request_.ForReport()) {
    AddSpacer();
    AddRow(total_, std::string(label));
  }
}

void CategorySection::ListCategories(Flow flow, std::int32_t category_type,
                                     const std::function<void()>& prepare) {
  ForEachCategory(request_.dbDov, category_type, [&](Recordset& rec) {
    const std::int32_t category = LongField(rec, "CategoryNumber");
    const Currency amount = TotalOfCategory(request_.dbDov, flow, request_.dtmFromDate,
                                            request_.dtmToDate, category, false)
                                .curTotal;
    if (!Passes(amount)) {
      return;
    }
    prepare();
    AddRow(amount, TextField(rec, "CategoryName"));
    sum_ += amount;
    if (request_.ForReport()) {
      ListParts(flow, category);
    }
  });
}

void CategorySection::ListParts(Flow flow, std::int32_t category) {
  ForEachPart(request_.dbDov, category, [&](const CategoryPart& part) {
    const Currency amount = TotalOfSubCategory(request_.dbDov, flow, request_.dtmFromDate,
                                               request_.dtmToDate, part.number, part.unassigned)
                                .curTotal;
    if (amount != Currency{}) {
      AddRow(amount, part.label);
    }
  });
}

void CategorySection::ListUnassigned(const FlowWords& words, const std::function<void()>& prepare) {
  const Currency amount =
      TotalOfCategory(request_.dbDov, words.flow, request_.dtmFromDate, request_.dtmToDate, 0, true)
          .curTotal;
  if (Passes(amount)) {
    prepare();
    AddRow(amount, std::string(words.unassigned_label));
    sum_ += amount;
  }
}

void CategorySection::ListRest(std::string_view label, const std::function<void()>& prepare) {
  if (!IsComplete()) {
    prepare();
    AddRow(total_ - sum_, std::string(label));
  }
}

}  // namespace vetlo
