#pragma once

#include <string>
#include <vector>

#include "vetlo/platform/arrays.h"
#include "vetlo/platform/format.h"
#include "vetlo/store/database.h"

namespace vetlo {

// One account as a line of text: name, type, bank, holders, number at the bank, balance as it
// stands now. The balance of a type whose natural balance is not positive shows negated.
using AccountRow = std::vector<std::string>;

inline constexpr std::size_t kAccountListColumns = 6;

// All accounts by name; without any it fails with kSubscriptOutOfRange.
void AccountListRows(Database& dbDov, GrowingArray<AccountRow>& rows, const NumberLocale& locale);

}  // namespace vetlo
