#include "vetlo/dialogs/dialog.h"

#include "vetlo/platform/display.h"
#include "vetlo/platform/failure.h"

namespace vetlo {

bool SeekSettingsRow(Recordset& recChartReportSubType, std::int32_t lngChartReportSubTypeNumber) {
  recChartReportSubType.SetIndex(kPrimaryIndex);
  recChartReportSubType.Seek("=", lngChartReportSubTypeNumber);
  return !recChartReportSubType.NoMatch();
}

void Refuse(Screen& screen, std::string_view message) {
  screen.MsgBox(message, MsgBoxButtons::kOkOnly, MsgBoxSymbol::kWarning);
}

std::int32_t SaveUnderHourglass(Screen& screen, Database& dbDov,
                                const std::function<void()>& save) {
  const std::int32_t pointer = screen.MousePointer();
  screen.SetMousePointer(kHourglassPointer);
  const std::int32_t failure = ResumeNext(dbDov, save);
  screen.SetMousePointer(pointer);
  return failure;
}

}  // namespace vetlo
