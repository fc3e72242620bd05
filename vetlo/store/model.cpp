#include "vetlo/store/model.h"

#include <algorithm>

namespace vetlo {
namespace {

// Name, type, required, compares as a name, length, default.
constexpr Column kAccount[] = {
    {"AccountNumber", ColumnType::kLong, true},
    {"AccountName", ColumnType::kText, true, true, 50},
    {"AccountType", ColumnType::kLong, true},
    {"BankName", ColumnType::kText, false, false, 50},
    {"AccountNames", ColumnType::kText, false, false, 50},
    {"Accounts", ColumnType::kText, false, false, 50},
    {"Balance", ColumnType::kCurrency, true, false, 0, "0"},
    {"OpeningBalance", ColumnType::kCurrency, true, false, 0, "0"},
};

constexpr Column kCategory[] = {
    {"CategoryNumber", ColumnType::kLong, true},
    {"CategoryName", ColumnType::kText, true, true, 50},
    {"CategoryType", ColumnType::kLong, true},
    {"CategoryAttr", ColumnType::kLong, true, false, 0, "0"},
};

constexpr Column kSubCategory[] = {
    {"SubCategoryNumber", ColumnType::kLong, true},
    {"SubCategoryName", ColumnType::kText, true, true, 50},
    {"CategoryNumber", ColumnType::kLong, true},
};

constexpr Column kPayee[] = {
    {"PayeeNumber", ColumnType::kLong, true},
    {"PayeeName", ColumnType::kText, true, true, 50},
};

constexpr Column kClassification[] = {
    {"ClassificationNumber", ColumnType::kLong, true},
    {"ClassificationName", ColumnType::kText, true, true, 50},
};

constexpr Column kClassificationItem[] = {
    {"ClassificationItemNumber", ColumnType::kLong, true},
    {"ClassificationItemName", ColumnType::kText, true, true, 50},
    {"ClassificationNumber", ColumnType::kLong, true},
};

constexpr Column kClassificationSubItem[] = {
    {"ClassificationSubItemNumber", ColumnType::kLong, true},
    {"ClassificationSubItemName", ColumnType::kText, true, true, 50},
    {"ClassificationItemNumber", ColumnType::kLong, true},
};

constexpr Column kAccountItemType[] = {
    {"AccountItemTypeNumber", ColumnType::kLong, true},
    {"AccountItemTypeName", ColumnType::kText, true, true, 50},
    {"BasicAccountType", ColumnType::kLong, true},
};

constexpr Column kAccountItem[] = {
    {"AccountItemNumber", ColumnType::kLong, true},
    {"AccountItemName", ColumnType::kText, true, true, 50},
    {"AccountItemTypeNumber", ColumnType::kLong, true},
};

constexpr Column kTransactionRecord[] = {
    {"TransactionRecordNumber", ColumnType::kLong, true},
    {"TransactionRecordType", ColumnType::kLong, true},
    {"TransactionType", ColumnType::kLong, true},
    {"TransactionDate", ColumnType::kDate, true},
    {"AccountNumber", ColumnType::kLong},
    {"ToOrFundAccountNumber", ColumnType::kLong},
    {"CategoryNumber", ColumnType::kLong},
    {"SubCategoryNumber", ColumnType::kLong},
    {"PayeeNumber", ColumnType::kLong},
    {"AccountItemNumber", ColumnType::kLong},
    {"Classification1ItemNumber", ColumnType::kLong},
    {"Classification1SubItemNumber", ColumnType::kLong},
    {"Classification2ItemNumber", ColumnType::kLong},
    {"Classification2SubItemNumber", ColumnType::kLong},
    {"Quantity", ColumnType::kDouble},
    {"Total", ColumnType::kCurrency, true},
    {"Memo", ColumnType::kText, false, false, 255},
};

constexpr Column kBudget[] = {
    {"BudgetNumber", ColumnType::kLong, true},
    {"BudgetName", ColumnType::kText, false, false, 50},
    {"BudgetAttr", ColumnType::kLong, true, false, 0, "0"},
};

constexpr Column kCategoryBudgetInfo[] = {
    {"BudgetNumber", ColumnType::kLong, true},
    {"CategoryNumber", ColumnType::kLong, true},
    {"Jan", ColumnType::kCurrency},
    {"Feb", ColumnType::kCurrency},
    {"Mar", ColumnType::kCurrency},
    {"Apr", ColumnType::kCurrency},
    {"May", ColumnType::kCurrency},
    {"Jun", ColumnType::kCurrency},
    {"Jul", ColumnType::kCurrency},
    {"Aug", ColumnType::kCurrency},
    {"Sep", ColumnType::kCurrency},
    {"Oct", ColumnType::kCurrency},
    {"Nov", ColumnType::kCurrency},
    {"Dec", ColumnType::kCurrency},
};

constexpr Column kSubCategoryBudgetInfo[] = {
    {"BudgetNumber", ColumnType::kLong, true},
    {"SubCategoryNumber", ColumnType::kLong, true},
    {"Jan", ColumnType::kCurrency},
    {"Feb", ColumnType::kCurrency},
    {"Mar", ColumnType::kCurrency},
    {"Apr", ColumnType::kCurrency},
    {"May", ColumnType::kCurrency},
    {"Jun", ColumnType::kCurrency},
    {"Jul", ColumnType::kCurrency},
    {"Aug", ColumnType::kCurrency},
    {"Sep", ColumnType::kCurrency},
    {"Oct", ColumnType::kCurrency},
    {"Nov", ColumnType::kCurrency},
    {"Dec", ColumnType::kCurrency},
};

constexpr Column kPriceType[] = {
    {"PriceTypeNumber", ColumnType::kLong, true},
    {"PriceTypeName", ColumnType::kText, false, false, 50},
    {"PriceTypeAttr", ColumnType::kLong, true, false, 0, "0"},
};

constexpr Column kPriceRecord[] = {
    {"AccountItemNumber", ColumnType::kLong, true},
    {"PriceTypeNumber", ColumnType::kLong, true},
    {"PriceDate", ColumnType::kDate, true},
    {"Price", ColumnType::kDouble, true},
};

constexpr Column kLatestPriceInfo[] = {
    {"AccountItemNumber", ColumnType::kLong, true},
    {"PriceDate", ColumnType::kDate},
    {"Price", ColumnType::kDouble, true},
};

constexpr Column kAssociatedAccountInfo[] = {
    {"AccountNumber", ColumnType::kLong, true},
    {"AssociatedAccountNumber", ColumnType::kLong, true},
};

constexpr Column kPaymentCalendar[] = {
    {"TransactionRecordNumber", ColumnType::kLong, true},
    {"FrequencyType", ColumnType::kLong, true},
    {"FrequencyExtInfo", ColumnType::kLong, true, false, 0, "1"},
};

constexpr Column kChartReportSubType[] = {
    {"ChartReportSubTypeNumber", ColumnType::kLong, true},
    {"ChartReportSubTypeName", ColumnType::kText, false, true, 50},
    {"ChartReportType", ColumnType::kLong, true},
    {"ChartReportSubTypeAttr", ColumnType::kLong, true},
    {"ChartOrReportType", ColumnType::kLong, true},
    {"ChartType", ColumnType::kLong, true},
    {"Legend", ColumnType::kBoolean, true},
    {"Title", ColumnType::kText, false, false, 100},
    {"DateRangeType", ColumnType::kLong, true},
    {"DateRangeExtInfo", ColumnType::kLong, true, false, 0, "1"},
    {"FromDate", ColumnType::kDate},
    {"ToDate", ColumnType::kDate},
    {"Parameter1", ColumnType::kVariant},
    {"Parameter2", ColumnType::kVariant},
};

constexpr Table kTables[] = {
    {"Account", KeyKind::kUnique, 1, kAccount},
    {"Category", KeyKind::kUnique, 1, kCategory},
    {"SubCategory", KeyKind::kUnique, 1, kSubCategory},
    {"Payee", KeyKind::kUnique, 1, kPayee},
    {"Classification", KeyKind::kUnique, 1, kClassification},
    {"ClassificationItem", KeyKind::kUnique, 1, kClassificationItem},
    {"ClassificationSubItem", KeyKind::kUnique, 1, kClassificationSubItem},
    {"AccountItemType", KeyKind::kUnique, 1, kAccountItemType},
    {"AccountItem", KeyKind::kUnique, 1, kAccountItem},
    {"TransactionRecord", KeyKind::kUnique, 1, kTransactionRecord},
    {"Budget", KeyKind::kUnique, 1, kBudget},
    {"CategoryBudgetInfo", KeyKind::kUnique, 2, kCategoryBudgetInfo},
    {"SubCategoryBudgetInfo", KeyKind::kUnique, 2, kSubCategoryBudgetInfo},
    {"PriceType", KeyKind::kUnique, 1, kPriceType},
    {"PriceRecord", KeyKind::kNone, 0, kPriceRecord},
    {"LatestPriceInfo", KeyKind::kUnique, 1, kLatestPriceInfo},
    {"AssociatedAccountInfo", KeyKind::kRepeatable, 1, kAssociatedAccountInfo},
    {"PaymentCalendar", KeyKind::kNone, 0, kPaymentCalendar},
    {"ChartReportSubType", KeyKind::kUnique, 1, kChartReportSubType},
};

char Folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::span<const Table> StoreTables() { return kTables; }

const Table* FindTable(std::string_view name) {
  const auto* const found = std::ranges::find_if(
      kTables, [&](const Table& table) { return EqualsIgnoringCase(table.name, name); });
  return found == std::end(kTables) ? nullptr : found;
}

const Column* FindColumn(const Table& table, std::string_view name) {
  const auto found = std::ranges::find_if(
      table.columns, [&](const Column& column) { return EqualsIgnoringCase(column.name, name); });
  return found == table.columns.end() ? nullptr : &*found;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return Folded(x) == Folded(y); });
}

}  // namespace vetlo
