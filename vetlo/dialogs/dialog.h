#pragma once

#include <functional>
#include <string_view>

#include "vetlo/platform/form.h"
#include "vetlo/platform/screen.h"
#include "vetlo/store/database.h"

namespace vetlo {

// What the dialogs on a settings row share.

// Stands on the row of this number; false where there is none.
bool SeekSettingsRow(Recordset& recChartReportSubType, std::int32_t lngChartReportSubTypeNumber);

// Tells the user why something is refused.
void Refuse(Screen& screen, std::string_view message);

// Saves while the hourglass shows. The answer is the failure's number, 0 for success; the store
// hears of the failure.
std::int32_t SaveUnderHourglass(Screen& screen, Database& dbDov, const std::function<void()>& save);

}  // namespace vetlo
