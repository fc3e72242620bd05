#include "vetlo/output/tamo_form.h"

namespace vetlo {

frmTamo::frmTamo(Platform& platform)
    : report_text_(platform.NewPictureBox()),
      report_title_(platform.NewPictureBox()),
      legend_(platform.NewPictureBox()) {
  constexpr float kTitleSize = 12;
  report_title_->SetFont({"MS Sans Serif", kTitleSize, true});
}

}  // namespace vetlo
