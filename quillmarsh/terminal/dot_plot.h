#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillmarsh {

// A drawing of dots, two by four in every cell, with single characters over it. Dots count from
// the upper left; what lies outside is not drawn.
class DotPlot {
 public:
  static constexpr std::size_t kDotsAcross = 2;  // in a cell
  static constexpr std::size_t kDotsDown = 4;

  struct Dot {
    double x = 0;
    double y = 0;
  };

  DotPlot(std::size_t columns, std::size_t lines)
      : columns_(columns), lines_(lines), cells_(columns * lines) {}

  // A straight line, both ends included.
  void Connect(Dot from, Dot to);
  // Puts a character of one cell over the dots of the cell in which the dot lies.
  void Mark(Dot at, std::string_view marker);

  // A line of cells, those with nothing in them filled with `blank`.
  [[nodiscard]] std::string Line(std::size_t line, std::string_view blank) const;

 private:
  struct Cell {
    std::uint8_t dots = 0;    // a bit for each, as the braille characters count them
    std::string_view marker;  // of the caller's
  };

  void Set(double x, double y);
  // Null outside.
  Cell* CellAt(double x, double y);

  std::size_t columns_;
  std::size_t lines_;
  std::vector<Cell> cells_;
};

}  // namespace quillmarsh
