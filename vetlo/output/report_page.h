#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vetlo/output/tamo_form.h"
#include "vetlo/platform/arrays.h"
#include "vetlo/platform/display.h"
#include "vetlo/platform/format.h"

namespace vetlo {

// A report is flowing text laid out by tab stops. Every text is measured before the first line is
// written: a column is as wide as its widest text, numbers are padded on the left to end at their
// column's right edge, and rules are lines of underscores. Lengths are twips.

inline constexpr float sngColumnGap = 195.0F;

// The numbers of a matrix as they are shown, bounds as in the matrix.
Matrix<std::string> FormatAmountMatrix(const AmountMatrix& amounts, const NumberLocale& locale);

// The widest of the texts, the header, and the extra text unless it is empty.
float MaxColumnTextWidth(std::span<const std::string> texts, std::string_view strHeader,
                         std::string_view strExtra, const PictureBox& font);

// Both fail with kDivisionByZero where the font gives their character no width.

// The line of underscores that fills a width.
std::string RuleLineForWidth(float sngWidth, const PictureBox& font);

// The text behind as many blanks as make it end at the width.
std::string RightAlignToWidth(float sngWidth, std::string_view strText, const PictureBox& font);

enum class ColumnSide { kLeft, kRight };

// One column of a table: what stands in it, and at which side of it.
struct ReportColumn {
  std::string header;
  ColumnSide side = ColumnSide::kLeft;
  std::span<const std::string> texts;  // the caller's, looked at while it is laid out
  std::string extra;                   // a text outside the rows that must fit too, or empty
};

enum class FirstStop { kOnIndent, kOnSecondColumn };

// One report document while it is being written: the steps in which all reports are made.
class ReportPage {
 public:
  // All of them must outlive the page. The document is never narrower than the least margin.
  ReportPage(ReportObject& report, frmTamo& form, float sngMinRightMargin)
      : report_(report), form_(form), sngMinRightMargin_(sngMinRightMargin) {}

  // Measures the columns and sets the document's margin and tab stops for them: the first stop on
  // the indent, where column 1 begins, or on the left edge of column 2.
  void LayOut(const std::vector<ReportColumn>& columns,
              FirstStop first_stop = FirstStop::kOnIndent);

  // The title and the caption, centred, and below them the left side again.
  void WriteHeading(std::string_view strTitle, std::string_view strDateCaption);

  // The steps of a heading whose title line the caller writes between them.
  void BeginHeading();
  void WriteTitleLine(std::string_view strTitleLine);
  void EndHeading(std::string_view strDateCaption);

  // A table of labels and amounts without a total, its last line without an end. Where computing
  // failed it is laid out and left out.
  void WriteSeriesTable(const std::string& strLabelHeader, const ItemLabels& labels,
                        const std::string& strAmountHeader, const Matrix<std::string>& amounts,
                        bool computed);

  // The headers over a rule.
  void WriteHeaderLine();
  // One line of a table, a text for each column.
  void WriteCells(std::span<const std::string> texts, std::string_view line_end = {});
  // The last line of a table, under a double rule; an empty text leaves its column empty.
  void WriteTotal(std::span<const std::string> texts);
  void Write(std::string_view text) { report_.SetSelText(text); }

  [[nodiscard]] const std::string& RuleLine() const { return strRuleLine_; }

 private:
  void SetFontOf(const PictureBox& box);
  void SetStops(FirstStop first_stop);
  [[nodiscard]] std::string CellText(std::size_t column, const std::string& text) const;

  ReportObject& report_;
  frmTamo& form_;
  float sngMinRightMargin_;
  std::vector<ReportColumn> columns_;
  std::vector<float> sngColumnWidths_;
  std::string strRuleLine_;
};

// Prepares a document for a report: unlocked, empty, its indents set. The result is the least
// right margin, from the printer's page.
float SetUpReport(ReportObject& report, Platform& platform, FailureListener& listener);

// Which rows of a table are written as data.
enum class RowRule {
  kHeadingRows,      // a negative amount makes a heading, or without a label a blank line
  kNonNegativeRows,  // a negative amount makes a blank line
  kLabelledRows,     // an empty label makes a blank line
  kAllRows,
};

// A table of labels and amounts in one series.
struct AmountTable {
  std::string strLabelHeader;
  std::string strAmountHeader;
  std::string strTotalLabel;
  RowRule rule = RowRule::kAllRows;
};

// The heading of a report.
struct ReportTitle {
  std::string strTitle;
  std::string strDateCaption;
};

// The whole report of one amount series and its total. Where computing failed it is title and
// caption alone, measured with whatever the routine has left in the rows.
void WriteAmountReport(ReportPage& page, const AmountTable& table, const ReportTitle& title,
                       const AmountRows& rows, const std::string& strTotal, bool computed,
                       const NumberLocale& locale);

}  // namespace vetlo
