#pragma once

#include "quillmarsh/sample/household.h"

namespace quillmarsh {

// The rows of ChartReportSubType: the catalogue's reports, its charts, and the household's
// favourites, some of them about an account, a payee or the like of people_and_places.h.
void WriteSettingsRows(vetlo::StoreBuilder& store, const HouseholdPlan& plan);

}  // namespace quillmarsh
