#pragma once

#include <memory>

#include "vetlo/platform/platform.h"

namespace vetlo {

// The hidden form whose picture boxes carry the fonts of reports and charts and measure with them.
class frmTamo {
 public:
  explicit frmTamo(Platform& platform);

  // The body of every report, and all measuring of reports.
  [[nodiscard]] const PictureBox& picReportTextFont() const { return *report_text_; }
  // The title line; of this font only name and size reach the document.
  [[nodiscard]] const PictureBox& picReportTitleFont() const { return *report_title_; }
  // The legend and the labels of charts.
  [[nodiscard]] const PictureBox& picLegendFont() const { return *legend_; }

 private:
  std::unique_ptr<PictureBox> report_text_;
  std::unique_ptr<PictureBox> report_title_;
  std::unique_ptr<PictureBox> legend_;
};

}  // namespace vetlo
