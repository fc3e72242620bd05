#include "vetlo/cashflow/category_section.h"

#include "vetlo/cashflow/category_totals.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/report_rows.h"

namespace vetlo {
namespace {

constexpr std::string_view kIndent = "    ";

}  // namespace

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
  ForEachRowOf(
      request_.dbDov,
      "SELECT * FROM Category WHERE CategoryType=" + Str(category_type) + " ORDER BY CategoryName",
      [&](Recordset& rec) {
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
          ListSubCategories(flow, category);
        }
      });
}

void CategorySection::ListSubCategories(Flow flow, std::int32_t category) {
  const auto total = [&](std::int32_t number, bool unassigned) {
    return TotalOfSubCategory(request_.dbDov, flow, request_.dtmFromDate, request_.dtmToDate,
                              number, unassigned)
        .curTotal;
  };
  ScopedRecordset rec(request_.dbDov, "SELECT * FROM SubCategory WHERE CategoryNumber=" +
                                          Str(category) + " ORDER BY SubCategoryName");
  if (!(rec->Bof() && rec->Eof())) {
    ForEachRow(*rec, [&](Recordset& row) {
      AddPart(total(LongField(row, "SubCategoryNumber"), false), TextField(row, "SubCategoryName"));
    });
    AddPart(total(category, true), "Unassigned Subcategory");
  }
  rec.Close();
}

void CategorySection::AddPart(Currency amount, const std::string& label) {
  if (amount != Currency{}) {
    AddRow(amount, std::string(kIndent) + label);
  }
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

void CategorySection::Once(bool& mark, const std::function<void()>& piece) {
  if (!mark) {
    piece();
    mark = true;
  }
}

}  // namespace vetlo
