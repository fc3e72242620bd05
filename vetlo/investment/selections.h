#pragma once

#include <cstdint>
#include <string>

namespace vetlo {

// The texts that the routines of investments open to find what there is. An item is a security or
// whatever else an account may hold units of; it is an investment by its type.

// The items that are investments, in no order of their own.
std::string InvestmentItemsText();
// The investment accounts, in no order of their own.
std::string InvestmentAccountsText();
// The types of investments by number, and the items of one of them by name.
std::string InvestmentTypesText();
std::string ItemsOfTypeText(std::int32_t lngAccountItemTypeNumber);

}  // namespace vetlo
