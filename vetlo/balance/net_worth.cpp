#include "vetlo/balance/net_worth.h"

#include <array>
#include <functional>
#include <span>
#include <string>

#include "vetlo/balance/totals.h"
#include "vetlo/platform/text.h"
#include "vetlo/services/common_services.h"
#include "vetlo/services/report_rows.h"

namespace vetlo {
namespace {

// One side of the balance sheet.
struct Side {
  std::string_view heading;
  std::string_view rest_label;
  std::string_view total_label;
  bool owed = false;
  Currency (*total)(Database& dbDov, Recordset& recAccount, Date dtmToDate) = nullptr;
};

constexpr Side kAssets = {"Assets", "All Other Assets", "Total Assets", false, TotalAssets};
constexpr Side kLiabilities = {"Liabilities", "All Other Liabilities", "Total Liabilities", true,
                               TotalLiabilities};

Currency TotalOfSide(Database& dbDov, const Side& side, Date dtmToDate) {
  ScopedRecordset recAccount(dbDov, "Account");
  const Currency curGrand = side.total(dbDov, *recAccount, dtmToDate);
  recAccount.Close();
  return curGrand;
}

// The balance as a positive amount where it lies on this side, otherwise zero or less.
Currency BalanceOnSide(Database& dbDov, Recordset& recAccount, const Side& side, Date dtmToDate) {
  const Currency curBalance =
      Services().AccountBalanceOnDate(dbDov, LongField(recAccount, "AccountNumber"), dtmToDate);
  return side.owed ? -curBalance : curBalance;
}

// What the routines are asked for.
struct Request {
  Database& dbDov;
  Date dtmToDate;
  ChartOrReport lngChartOrReportType;

  [[nodiscard]] bool ForReport() const { return lngChartOrReportType == ChartOrReport::kReport; }
};

// Hands over each account of a side that is large enough to stand by itself, by name, and gives
// the sum of those.
Currency ListAccounts(const Request& request, const Side& side, Currency curGrand,
                      const std::function<void(Currency, std::string)>& list) {
  const double dblShare = LeastShareShown(request.lngChartOrReportType);
  Currency curListed;
  ForEachRowOf(
      request.dbDov, "SELECT * FROM Account ORDER BY AccountName,AccountType,AccountNumber",
      [&](Recordset& rec) {
        const Currency curBalance = BalanceOnSide(request.dbDov, rec, side, request.dtmToDate);
        if (curBalance > Currency{} && ExceedsShare(curBalance, curGrand, dblShare)) {
          list(curBalance, AccountLabel(rec, request.lngChartOrReportType));
          curListed += curBalance;
        }
      });
  return curListed;
}

// The rows of one side within a net worth: a heading before the first of them, where it is for a
// report. What is owed is set off by a blank line from what stands above it.
class SideRows {
 public:
  SideRows(AmountRows& rows, const Request& request, const Side& side)
      : rows_(rows), request_(request), side_(side) {}

  void AddHeadingOnce() {
    if (!heading_) {
      AddHeading();
      heading_ = true;
    }
  }

  void AddHeading() {
    if (request_.ForReport()) {
      if (side_.owed) {
        AddBlankLine();
      }
      AddHeadingRow();
    }
  }

  // In a report and in a chart alike, without a blank line before it.
  void AddHeadingRow() { rows_.AddHeading(side_.heading); }
  void AddBlankLine() { rows_.AddHeading(""); }

  // A chart draws what is owed below its axis.
  void Add(Currency curAmount, std::string label) {
    AddHeadingOnce();
    const bool below = side_.owed && !request_.ForReport();
    rows_.Add(below ? -curAmount : curAmount, std::move(label));
  }

  void AddTotal(Currency curGrand) {
    AddBlankLine();
    rows_.Add(curGrand, std::string(side_.total_label));
  }

  [[nodiscard]] bool HasHeading() const { return heading_; }

 private:
  AmountRows& rows_;
  const Request& request_;
  const Side& side_;
  bool heading_ = false;
};

// One side of NetWorthByAccount.
void AddAccountsOfSide(const Request& request, const Side& side, Currency curGrand,
                       AmountRows& rows) {
  SideRows section(rows, request, side);
  const Currency curListed = ListAccounts(
      request, side, curGrand,
      [&](Currency curBalance, std::string label) { section.Add(curBalance, std::move(label)); });
  if (curListed < curGrand) {
    // Debts get their heading here in any case, and their rest stays positive in a chart too.
    if (side.owed) {
      section.AddHeading();
    } else {
      section.AddHeadingOnce();
    }
    rows.Add(curGrand - curListed, std::string(side.rest_label));
  }
  if (curGrand != Currency{} && request.ForReport()) {
    section.AddHeadingOnce();
    section.AddTotal(curGrand);
  }
}

// A group of accounts by type.
struct Group {
  std::string strSql;
  std::string_view caption;
};

std::string OfTypes(std::initializer_list<std::int32_t> types) {
  std::string strSql = "SELECT * FROM Account WHERE ";
  std::string_view between;
  for (const std::int32_t type : types) {
    strSql.append(between).append("AccountType=").append(Str(type));
    between = " OR ";
  }
  return strSql;
}

std::vector<Group> AssetGroups() {
  return {{OfTypes({kCheckingAccount, kSavingsAccount, kTimeDeposit}), "Bank Accounts"},
          {OfTypes({kCashAccount}), "Cash Accounts"},
          {OfTypes({kCommonAsset}), "Common Asset Accounts"},
          {OfTypes({kCreditorsRights}), "Creditor's Rights Accounts"},
          {OfTypes({kInvestmentAccount}), "Investment Accounts"},
          {OfTypes({kCreditCard, kLiability, kOtherAccount}), "Other Assets"}};
}

std::vector<Group> LiabilityGroups() {
  return {{OfTypes({kCreditCard}), "Credit Card Accounts"},
          {OfTypes({kLiability}), "Liability Accounts"},
          {"SELECT * FROM Account WHERE AccountType<>" + Str(kCreditCard) + " AND AccountType<>" +
               Str(kLiability),
           "Other Liabilities"}};
}

// The rows of a side's groups, each group that has anything on this side.
void AddGroups(const Request& request, const Side& side, const std::vector<Group>& groups,
               SideRows& section) {
  for (const Group& group : groups) {
    Currency curGroup;
    ForEachRowOf(request.dbDov, group.strSql, [&](Recordset& rec) {
      const Currency curBalance = BalanceOnSide(request.dbDov, rec, side, request.dtmToDate);
      if (curBalance > Currency{}) {
        curGroup += curBalance;
      }
    });
    if (curGroup != Currency{}) {
      section.Add(curGroup, std::string(group.caption));
    }
  }
}

// One side of NetWorthByGroup. Its blank line and total stand in a chart too.
void AddGroupsOfSide(const Request& request, const Side& side, Currency curGrand,
                     const std::vector<Group>& groups, AmountRows& rows) {
  SideRows section(rows, request, side);
  AddGroups(request, side, groups, section);
  if (curGrand != Currency{}) {
    if (!section.HasHeading() && request.ForReport()) {
      section.AddHeadingRow();
    }
    section.AddTotal(curGrand);
  }
}

Currency AccountsOfOneSide(const Request& request, const Side& side, AmountRows& rows) {
  const Currency curGrand = TotalOfSide(request.dbDov, side, request.dtmToDate);
  rows.Start();
  const Currency curListed = ListAccounts(
      request, side, curGrand,
      [&](Currency curBalance, std::string label) { rows.Add(curBalance, std::move(label)); });
  if (curListed < curGrand) {
    rows.WriteSpare(curGrand - curListed, std::string(side.rest_label));
  } else {
    rows.Close();
  }
  return curGrand;
}

}  // namespace

Currency NetWorthByGroup(Database& dbDov, Date dtmToDate, AmountRows& rows,
                         ChartOrReport lngChartOrReportType) {
  const Request request{dbDov, dtmToDate, lngChartOrReportType};
  const Currency curAssets = TotalOfSide(dbDov, kAssets, dtmToDate);
  rows.Start();
  AddGroupsOfSide(request, kAssets, curAssets, AssetGroups(), rows);
  const Currency curLiabilities = TotalOfSide(dbDov, kLiabilities, dtmToDate);
  AddGroupsOfSide(request, kLiabilities, curLiabilities, LiabilityGroups(), rows);
  rows.Close();
  return curAssets - curLiabilities;
}

Currency NetWorthByAccount(Database& dbDov, Date dtmToDate, AmountRows& rows,
                           ChartOrReport lngChartOrReportType) {
  const Request request{dbDov, dtmToDate, lngChartOrReportType};
  const Currency curAssets = TotalOfSide(dbDov, kAssets, dtmToDate);
  rows.Start();
  AddAccountsOfSide(request, kAssets, curAssets, rows);
  const Currency curLiabilities = TotalOfSide(dbDov, kLiabilities, dtmToDate);
  AddAccountsOfSide(request, kLiabilities, curLiabilities, rows);
  rows.Close();
  return curAssets - curLiabilities;
}

Currency AssetsByAccount(Database& dbDov, Date dtmToDate, AmountRows& rows,
                         ChartOrReport lngChartOrReportType) {
  return AccountsOfOneSide({dbDov, dtmToDate, lngChartOrReportType}, kAssets, rows);
}

Currency LiabilitiesByAccount(Database& dbDov, Date dtmToDate, AmountRows& rows,
                              ChartOrReport lngChartOrReportType) {
  return AccountsOfOneSide({dbDov, dtmToDate, lngChartOrReportType}, kLiabilities, rows);
}

}  // namespace vetlo
