#include "vetlo/cashflow/category_totals.h"

#include <memory>
#include <string>

#include "vetlo/cashflow/period_totals.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"

namespace vetlo {
namespace {

// What one total selects, and the row that must be there for it.
struct Selection {
  std::string strConditions;
  const char* table = nullptr;  // none: nothing is checked
  std::int32_t number = 0;
};

Selection OfCategory(std::int32_t number, bool unassigned) {
  if (unassigned) {
    return {" AND ISNULL(CategoryNumber)"};
  }
  return {" AND CategoryNumber=" + Str(number), "Category", number};
}

Selection OfSubCategory(std::int32_t number, bool unassigned) {
  if (unassigned) {
    return {" AND CategoryNumber=" + Str(number) + " AND ISNULL(SubCategoryNumber)", "Category",
            number};
  }
  return {" AND SubCategoryNumber=" + Str(number), "SubCategory", number};
}

// A subcategory only has to be there; a category must also be one of income or expenses.
bool IsThere(Recordset& recTable, const Selection& selection) {
  recTable.SetIndex(kPrimaryIndex);
  recTable.Seek("=", selection.number);
  if (recTable.NoMatch()) {
    return false;
  }
  return selection.table != std::string_view("Category") ||
         LongField(recTable, "CategoryType") != kNeitherCategory;
}

void Count(DatedTotal& total, Recordset& rec) {
  total.curTotal += CurrencyField(rec, "Total");
  const Date dtmDate = DateField(rec, "TransactionDate");
  if (dtmDate < total.dtmFirstDate) {
    total.dtmFirstDate = dtmDate;
  }
  if (dtmDate > total.dtmLastDate) {
    total.dtmLastDate = dtmDate;
  }
}

DatedTotal TotalOf(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate,
                   const Selection& selection) {
  DatedTotal total{{}, Services().LatestDate(), Services().EarliestDate()};
  const auto recAccount = dbDov.OpenRecordset("Account");
  std::unique_ptr<Recordset> recChecked;
  if (selection.table != nullptr) {
    recChecked = dbDov.OpenRecordset(selection.table);
    if (!IsThere(*recChecked, selection)) {
      recChecked->Close();
      recAccount->Close();
      return total;
    }
  }
  recAccount->SetIndex(kPrimaryIndex);
  const auto recOrdinary =
      dbDov.OpenRecordset(OrdinaryText(flow, dtmFromDate, dtmToDate) + selection.strConditions);
  ForEachRow(*recOrdinary, [&](Recordset& rec) {
    if (IsCashFlowAccount(*recAccount, rec.Fields("AccountNumber"))) {
      Count(total, rec);
    }
  });
  recOrdinary->Close();
  recAccount->Close();
  if (recChecked != nullptr) {
    recChecked->Close();
  }
  const auto recInvestment = dbDov.OpenRecordset(InvestmentText(flow, dtmFromDate, dtmToDate) +
                                                 kFundedByAnother + selection.strConditions);
  ForEachRow(*recInvestment, [&](Recordset& rec) { Count(total, rec); });
  recInvestment->Close();
  return total;
}

}  // namespace

DatedTotal TotalOfCategory(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate,
                           std::int32_t lngCategoryNumber, bool blnCalcAllUnassigned) {
  return TotalOf(dbDov, flow, dtmFromDate, dtmToDate,
                 OfCategory(lngCategoryNumber, blnCalcAllUnassigned));
}

DatedTotal TotalOfSubCategory(Database& dbDov, Flow flow, Date dtmFromDate, Date dtmToDate,
                              std::int32_t lngNumber, bool blnCalcAllUnassigned) {
  return TotalOf(dbDov, flow, dtmFromDate, dtmToDate,
                 OfSubCategory(lngNumber, blnCalcAllUnassigned));
}

}  // namespace vetlo
