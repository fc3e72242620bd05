#pragma once

#include "quillmarsh/sample/household.h"

namespace quillmarsh {

// The rows of ChartReportSubType: the catalogue's numbers as they are before anybody has touched
// them, and the household's favourites: charts, dates of its own, and some about an account, a
// payee or the like of people_and_places.h.
void WriteSettingsRows(vetlo::StoreBuilder& store, const HouseholdPlan& plan);

}  // namespace quillmarsh
