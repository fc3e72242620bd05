#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "quillmarsh/cli/settings_rows.h"
#include "vetlo/store/database.h"

namespace quillmarsh {

// What a history or a figure can be about: a row of the store.
enum class Subject : std::uint8_t {
  kAccount,
  kInvestmentAccount,
  kInvestment,
  kPayee,
  kCategory,
  kSubCategory,
  kClassificationItem,
  kClassificationSubItem,
};

// Fails with a UserError that tells what there is where the store has no such row.
void RequireThereIs(vetlo::Database& store, Subject subject, std::int32_t number);

// What a caller hands to a row that takes its parameters from him.
struct Parameters {
  vetlo::Variant first;
  vetlo::Variant second;
};

Parameters GivenParameters(const std::optional<std::string>& first,
                           const std::optional<std::string>& second);

// A history needs the number of what it is the history of: fails with a UserError that names the
// option where none is given, and where there is no such row. Any other report needs nothing.
void RequireSubject(vetlo::Database& store, std::int32_t report_number,
                    const Parameters& parameters);

// The same for a row that has stored its parameters.
void RequireStoredSubject(vetlo::Database& store, const SettingsRowFacts& row);

}  // namespace quillmarsh
