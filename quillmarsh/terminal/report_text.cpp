#include "quillmarsh/terminal/report_text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "quillmarsh/terminal/safe_text.h"
#include "quillmarsh/terminal/text_layout.h"
#include "quillmarsh/terminal/text_width.h"

namespace quillmarsh {
namespace {

// Far wider than any report; what lies beyond is no position but a mistake.
constexpr double kMostCells = 10000;

std::size_t CellAt(double twips) {
  const double cells = twips / kTwipsPerCell;
  return cells > 0 ? static_cast<std::size_t>(std::lround(std::min(cells, kMostCells))) : 0;
}

// Lays the pieces of one line behind one another. Positions are kept in twips, as the tab stops
// are, so that rounding to cells does not add up along the line.
class LineLayout {
 public:
  LineLayout(double start, const std::vector<float>& tab_stops)
      : position_(start), tab_stops_(tab_stops) {}

  void Write(std::string_view piece) {
    const std::string text = SafeText(piece);
    if (text.empty()) {
      return;
    }
    // Two pieces have a tab between them, so they never touch even where their cells would.
    const std::size_t least = cells_ == 0 ? 0 : cells_ + 1;
    const std::size_t start = std::max(CellAt(position_), least);
    const std::size_t width = CellsOf(text);
    line_.append(start - cells_, ' ').append(text);
    cells_ = start + width;
    position_ += static_cast<double>(width) * kTwipsPerCell;
  }

  // To the next stop; behind the last one a tab is a blank.
  void Tab() { position_ = NextStop().value_or(position_ + kTwipsPerCell); }

  [[nodiscard]] const std::string& Line() const { return line_; }

 private:
  [[nodiscard]] std::optional<double> NextStop() const {
    std::optional<double> next;
    for (const double stop : tab_stops_) {
      if (stop > position_ && stop < next.value_or(stop + 1)) {
        next = stop;
      }
    }
    return next;
  }

  double position_;  // twips
  const std::vector<float>& tab_stops_;
  std::string line_;
  std::size_t cells_ = 0;  // of the line so far
};

std::string LeftLine(const vetlo::Paragraph& paragraph) {
  const std::string text = paragraph.Text();
  LineLayout layout(paragraph.indent, paragraph.tab_stops);
  std::string_view rest = text;
  for (std::size_t tab = rest.find('\t'); tab != std::string_view::npos; tab = rest.find('\t')) {
    layout.Write(rest.substr(0, tab));
    layout.Tab();
    rest.remove_prefix(tab + 1);
  }
  layout.Write(rest);
  return layout.Line();
}

// The page's right edge in twips; a report without a margin reaches as far as the terminal does.
double RightEdge(const vetlo::Document& report, std::size_t columns) {
  const double margin = report.RightMargin();
  const double limit = static_cast<double>(columns) * kTwipsPerCell;
  if (columns == 0) {
    return margin;
  }
  return margin > 0 ? std::min(margin, limit) : limit;
}

std::string CentredLine(const vetlo::Paragraph& paragraph, double right_edge) {
  std::string text = paragraph.Text();
  std::replace(text.begin(), text.end(), '\t', ' ');
  text = SafeText(text);
  const double width = static_cast<double>(CellsOf(text)) * kTwipsPerCell;
  const double room = right_edge - paragraph.right_indent - paragraph.indent - width;
  const double start = paragraph.indent + std::max(room, 0.0) / 2;
  return std::string(CellAt(start), ' ') + text;
}

}  // namespace

std::string RenderReport(const vetlo::Document& report, std::size_t columns) {
  const double right_edge = RightEdge(report, columns);
  std::string text;
  for (const vetlo::Paragraph& paragraph : report.Paragraphs()) {
    // The empty line at the end is only where writing would go on.
    if (&paragraph == &report.Paragraphs().back() && paragraph.runs.empty()) {
      break;
    }
    AppendLine(text, paragraph.alignment == vetlo::Alignment::kCenter
                         ? CentredLine(paragraph, right_edge)
                         : LeftLine(paragraph));
  }
  return text;
}

}  // namespace quillmarsh
