#include "vetlo/services/date_range_caption.h"

#include "vetlo/services/common_services.h"

namespace vetlo {

std::string DateRangeCaption(Date dtmFromDate, Date dtmToDate) {
  const bool starts = dtmFromDate != Services().EarliestDate();
  const bool ends = dtmToDate != Services().LatestDate();
  if (starts && ends) {
    return Services().DateDisplayText(dtmFromDate) + " Through " +
           Services().DateDisplayText(dtmToDate);
  }
  if (ends) {
    return "Up to " + Services().DateDisplayText(dtmToDate);
  }
  return starts ? "From " + Services().DateDisplayText(dtmFromDate) : "";
}

}  // namespace vetlo
