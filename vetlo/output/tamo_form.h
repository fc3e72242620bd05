#pragma once

#include <memory>
#include <optional>

#include "vetlo/platform/platform.h"

namespace vetlo {

// The hidden form whose picture boxes carry the fonts of reports and charts and measure with them.
// It is created on first use: the platform is asked for all three boxes when one of them is first
// asked for, and for none before. Where that fails the asking fails, and the next one tries again.
class frmTamo {
 public:
  // The platform must outlive the form.
  explicit frmTamo(Platform& platform) : platform_(platform) {}

  // The body of every report, and all measuring of reports.
  const PictureBox& picReportTextFont() { return *Created().report_text; }
  // The title line; of this font only name and size reach the document.
  const PictureBox& picReportTitleFont() { return *Created().report_title; }
  // The legend and the labels of charts.
  const PictureBox& picLegendFont() { return *Created().legend; }

 private:
  struct Boxes {
    std::unique_ptr<PictureBox> report_text;
    std::unique_ptr<PictureBox> report_title;
    std::unique_ptr<PictureBox> legend;
  };

  const Boxes& Created();

  Platform& platform_;
  std::optional<Boxes> boxes_;
};

}  // namespace vetlo
