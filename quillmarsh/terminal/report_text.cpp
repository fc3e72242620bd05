#include "quillmarsh/terminal/report_text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

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

// ---- one line of a table

// Lays the cells of one line behind one another. Positions are kept in twips, as the tab stops
// are, so that rounding to cells does not add up along the line; they are those of the whole line,
// also where what is shown of it is cut and moved.
class LineLayout {
 public:
  LineLayout(double start, const std::vector<float>& tab_stops)
      : position_(start), tab_stops_(tab_stops) {}

  // Of the text no more than `most` cells are shown, and so many cells further left.
  void Write(std::string_view text, std::size_t most, std::size_t further_left) {
    if (text.empty()) {
      return;
    }
    const std::string shown = Shortened(text, most);
    // Two cells have a tab between them, so they never touch even where rounding would make them.
    const std::size_t least = cells_ == 0 ? 0 : cells_ + 1;
    const std::size_t whole_start = CellAt(position_);
    const std::size_t start = std::max(whole_start - std::min(whole_start, further_left), least);
    line_.append(start - cells_, ' ').append(shown);
    cells_ = start + CellsOf(shown);
    position_ += static_cast<double>(CellsOf(text)) * kTwipsPerCell;
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

// The texts of a line between its tabs.
std::vector<std::string> CellTexts(const vetlo::Paragraph& paragraph) {
  const std::string text = paragraph.Text();
  std::vector<std::string> cells;
  std::size_t begin = 0;
  for (std::size_t tab = text.find('\t'); tab != std::string::npos; tab = text.find('\t', begin)) {
    cells.push_back(SafeText(std::string_view(text).substr(begin, tab - begin)));
    begin = tab + 1;
  }
  cells.push_back(SafeText(std::string_view(text).substr(begin)));
  return cells;
}

// A line that is drawn as wide as the table is.
bool IsRule(const std::vector<std::string>& cells) {
  return cells.size() == 1 && !cells[0].empty() &&
         cells[0].find_first_not_of('_') == std::string::npos;
}

// ---- a table that is brought into the screen

struct Column {
  std::size_t cells = 0;  // of its widest text
  bool has_names = false;
  std::size_t least = 4;  // as many cells are always shown
  std::size_t cut = 0;    // so many are not
};

using Paragraphs = std::span<const vetlo::Paragraph>;

// "2026/03/31".
bool IsDate(std::string_view text) {
  constexpr std::string_view kPattern = "dddd/dd/dd";
  return std::ranges::equal(text, kPattern, [](char c, char pattern) {
    return pattern == 'd' ? c >= '0' && c <= '9' : c == pattern;
  });
}

// Amounts stand at the right of their column, behind blanks; a column where all texts do has no
// names. A date among names is shown as a whole.
std::vector<Column> ColumnsOf(Paragraphs table) {
  std::vector<Column> columns;
  for (const vetlo::Paragraph& paragraph : table) {
    const std::vector<std::string> texts = CellTexts(paragraph);
    if (IsRule(texts)) {
      continue;
    }
    columns.resize(std::max(columns.size(), texts.size()));
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const std::size_t cells = CellsOf(texts[i]);
      columns[i].cells = std::max(columns[i].cells, cells);
      columns[i].least = std::max(columns[i].least, IsDate(texts[i]) ? cells : 0);
      columns[i].has_names = columns[i].has_names || (!texts[i].empty() && texts[i].front() != ' ');
    }
  }
  return columns;
}

// Takes cells from the widest columns of names until so many are taken, or none has any to spare.
void CutNames(std::vector<Column>& columns, std::size_t cells) {
  const auto spare = [](const Column& column) {
    const std::size_t shown = column.cells - column.cut;
    return column.has_names && shown > column.least ? shown : 0;
  };
  for (; cells > 0; --cells) {
    const auto widest = std::ranges::max_element(columns, {}, spare);
    if (widest == columns.end() || spare(*widest) == 0) {
      return;
    }
    ++widest->cut;
  }
}

std::string TableLine(const vetlo::Paragraph& paragraph, const std::vector<Column>& columns) {
  LineLayout layout(paragraph.indent, paragraph.tab_stops);
  const std::vector<std::string> texts = CellTexts(paragraph);
  if (IsRule(texts)) {
    std::size_t cut = 0;
    for (const Column& column : columns) {
      cut += column.cut;
    }
    const std::size_t whole = CellsOf(texts[0]);
    layout.Write(ClipToCells(texts[0], whole - std::min(whole, cut)), whole, 0);
    return layout.Line();
  }
  std::size_t further_left = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) {
      layout.Tab();
    }
    layout.Write(texts[i], columns[i].cells - columns[i].cut, further_left);
    further_left += columns[i].cut;
  }
  return layout.Line();
}

std::vector<std::string> TableLines(Paragraphs table, const std::vector<Column>& columns) {
  std::vector<std::string> lines;
  for (const vetlo::Paragraph& paragraph : table) {
    lines.push_back(TableLine(paragraph, columns));
  }
  return lines;
}

std::vector<std::string> LinesOfTable(Paragraphs table, const ScreenWidth& screen) {
  std::vector<Column> columns = ColumnsOf(table);
  std::vector<std::string> lines = TableLines(table, columns);
  std::size_t widest = 0;
  for (const std::string& line : lines) {
    widest = std::max(widest, CellsOf(line));
  }
  if (screen.is_limit && widest > screen.columns) {
    CutNames(columns, widest - screen.columns);
    lines = TableLines(table, columns);
  }
  return lines;
}

// ---- centred lines

// The page's right edge in twips; a report without a margin reaches as far as the terminal does.
double RightEdge(const vetlo::Document& report, std::size_t columns) {
  const double margin = report.RightMargin();
  const double limit = static_cast<double>(columns) * kTwipsPerCell;
  if (columns == 0) {
    return margin;
  }
  return margin > 0 ? std::min(margin, limit) : limit;
}

std::string CentredLine(const std::string& text, const vetlo::Paragraph& paragraph,
                        double right_edge) {
  const double width = static_cast<double>(CellsOf(text)) * kTwipsPerCell;
  const double room = right_edge - paragraph.right_indent - paragraph.indent - width;
  const double start = paragraph.indent + std::max(room, 0.0) / 2;
  return std::string(CellAt(start), ' ') + text;
}

std::vector<std::string> CentredLines(const vetlo::Paragraph& paragraph, double right_edge,
                                      const ScreenWidth& screen) {
  constexpr std::size_t kLeastRoom = 2;
  std::string text = paragraph.Text();
  std::ranges::replace(text, '\t', ' ');
  text = SafeText(text);
  std::vector<std::string> pieces = {text};
  if (screen.is_limit && CellAt(paragraph.indent) + CellsOf(text) > screen.columns) {
    const std::size_t room = CellAt(right_edge - paragraph.right_indent - paragraph.indent);
    pieces = Wrapped(text, std::max(room, kLeastRoom));
  }
  for (std::string& piece : pieces) {
    piece = CentredLine(piece, paragraph, right_edge);
  }
  return pieces;
}

bool IsCentred(const vetlo::Paragraph& paragraph) {
  return paragraph.alignment == vetlo::Alignment::kCenter;
}

// How many paragraphs, from the first, are lines of one table: they have the same tab stops.
std::size_t LengthOfTable(Paragraphs paragraphs) {
  const vetlo::Paragraph& first = paragraphs.front();
  const Paragraphs others = paragraphs.subspan(1);
  const auto end = std::ranges::find_if(others, [&](const vetlo::Paragraph& paragraph) {
    return IsCentred(paragraph) || paragraph.indent != first.indent ||
           paragraph.tab_stops != first.tab_stops;
  });
  return 1 + static_cast<std::size_t>(end - others.begin());
}

}  // namespace

std::string RenderReport(const vetlo::Document& report, const ScreenWidth& screen) {
  const double right_edge = RightEdge(report, screen.columns);
  Paragraphs rest = report.Paragraphs();
  // The empty line at the end is only where writing would go on.
  if (!rest.empty() && rest.back().runs.empty()) {
    rest = rest.first(rest.size() - 1);
  }
  std::string text;
  while (!rest.empty()) {
    const bool centred = IsCentred(rest.front());
    const std::size_t count = centred ? 1 : LengthOfTable(rest);
    for (const std::string& line : centred ? CentredLines(rest.front(), right_edge, screen)
                                           : LinesOfTable(rest.first(count), screen)) {
      AppendLine(text, line);
    }
    rest = rest.subspan(count);
  }
  return text;
}

}  // namespace quillmarsh
