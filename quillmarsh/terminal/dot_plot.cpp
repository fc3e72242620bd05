#include "quillmarsh/terminal/dot_plot.h"

#include <algorithm>
#include <cmath>

namespace quillmarsh {
namespace {

// The bits of a braille character by the dot's place in the cell, line by line.
constexpr std::uint8_t kBits[DotPlot::kDotsDown][DotPlot::kDotsAcross] = {
    {0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};

// The braille characters are U+2800 to U+28FF.
std::string Braille(std::uint8_t dots) {
  std::string text = "\xE2";
  text += static_cast<char>(0xA0 + dots / 64);
  text += static_cast<char>(0x80 + dots % 64);
  return text;
}

}  // namespace

void DotPlot::Connect(Dot from, Dot to) {
  const double distance = std::max(std::fabs(to.x - from.x), std::fabs(to.y - from.y));
  const long steps = std::max(std::lround(distance), 1L);
  for (long step = 0; step <= steps; ++step) {
    const double part = static_cast<double>(step) / static_cast<double>(steps);
    Set(from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part);
  }
}

void DotPlot::Mark(Dot at, std::string_view marker) {
  if (Cell* cell = CellAt(std::round(at.x), std::round(at.y))) {
    cell->marker = marker;
  }
}

std::string DotPlot::Line(std::size_t line, std::string_view blank) const {
  std::string text;
  for (std::size_t column = 0; column < columns_; ++column) {
    const Cell& cell = cells_[line * columns_ + column];
    if (!cell.marker.empty()) {
      text += cell.marker;
    } else if (cell.dots != 0) {
      text += Braille(cell.dots);
    } else {
      text += blank;
    }
  }
  return text;
}

void DotPlot::Set(double x, double y) {
  const double across = std::round(x);
  const double down = std::round(y);
  if (Cell* cell = CellAt(across, down)) {
    cell->dots |= kBits[static_cast<std::size_t>(down) % kDotsDown]
                       [static_cast<std::size_t>(across) % kDotsAcross];
  }
}

DotPlot::Cell* DotPlot::CellAt(double x, double y) {
  const bool inside = x >= 0 && y >= 0 && x < static_cast<double>(columns_ * kDotsAcross) &&
                      y < static_cast<double>(lines_ * kDotsDown);
  return inside ? &cells_[static_cast<std::size_t>(y) / kDotsDown * columns_ +
                          static_cast<std::size_t>(x) / kDotsAcross]
                : nullptr;
}

}  // namespace quillmarsh
