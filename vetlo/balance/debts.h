#pragma once

#include "vetlo/platform/arrays.h"
#include "vetlo/store/database.h"
#include "vetlo/store/model.h"

namespace vetlo {

// Who owes what, by payee, on a date: the transactions on accounts of creditor's rights (money owed
// to the user) or of liabilities (money that the user owes). What no payee explains stands in one
// row of its own, with the opening balances; in a report a blank line of amount 0 stands before it.
//
//    60.00  Corner Shop
//     0.00
//    75.00  Unassigned Debtors
//
// A transaction between two accounts of the type is selected, and counts, twice. One without an
// account fails with kNothingToShow, no row at all with kSubscriptOutOfRange. The result is the
// total over all payees.
Currency DebtorsByPayee(Database& dbDov, Date dtmToDate, AmountRows& rows,
                        ChartOrReport lngChartOrReportType);
Currency CreditorsByPayee(Database& dbDov, Date dtmToDate, AmountRows& rows,
                          ChartOrReport lngChartOrReportType);

// What was paid to each payee less what came from it in a period; so a payee who received more
// than it gave shows a positive amount.
Currency NetByPayee(Database& dbDov, Date dtmFromDate, Date dtmToDate, AmountRows& rows,
                    ChartOrReport lngChartOrReportType);

// The overdrawn credit cards, in positive amounts. The result is TotalCreditCardDebt.
Currency OverdraftsByCreditCard(Database& dbDov, Date dtmToDate, AmountRows& rows,
                                ChartOrReport lngChartOrReportType);

}  // namespace vetlo
