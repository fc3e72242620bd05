#include "vetlo/output/tamo_form.h"

#include <utility>

namespace vetlo {

const frmTamo::Boxes& frmTamo::Created() {
  if (!boxes_) {
    constexpr float kTitleSize = 12;
    Boxes boxes{platform_.NewPictureBox(), platform_.NewPictureBox(), platform_.NewPictureBox()};
    boxes.report_title->SetFont({"MS Sans Serif", kTitleSize, true});
    boxes_ = std::move(boxes);
  }
  return *boxes_;
}

}  // namespace vetlo
