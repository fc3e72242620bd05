#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vetlo/store/database.h"

namespace vetlo {

// The transactions that move an account, and what each of them moves.

// At which end of a transaction an account stands.
enum class AccountEnd { kOwn, kOther };

inline constexpr AccountEnd kBothEnds[] = {AccountEnd::kOwn, AccountEnd::kOther};

// All transactions of an account at one end.
std::string MovementsText(std::int32_t account, AccountEnd end);
// Conditions to stand behind it: the records that count, and the dates up to the end of a day.
inline constexpr std::string_view kCounted =
    " AND (TransactionRecordType= 0 OR TransactionRecordType= 4)";
std::string UpToTheEndOf(std::string_view column, Date date);

// The change of an account's cash by the transaction under the cursor.
Currency CashChange(Recordset& rec, AccountEnd end);
// The change of a holding: units bought or received, less units sold or given away.
double UnitsChange(Recordset& rec);

}  // namespace vetlo
