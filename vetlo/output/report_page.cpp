#include "vetlo/output/report_page.h"

#include <algorithm>

#include "vetlo/platform/failure.h"
#include "vetlo/platform/text.h"
#include "vetlo/platform/variant.h"

namespace vetlo {
namespace {

constexpr float kTwipsPerCentimetre = 567;
constexpr float kPageWidthWithoutPrinter = 11920.0F;
constexpr float kMarginAllowance = 390.0F;

// How many of a character fill a width, the last one reaching over its end.
std::int32_t CountToFill(double sngWidth, double sngCharacter) {
  if (sngCharacter == 0) {
    throw Failure(FailureNumber::kDivisionByZero);
  }
  const double count = RoundHalfEven((sngCharacter + sngWidth - 1.0) / sngCharacter);
  return ToLong(count);
}

std::string Repeated(std::int32_t count, char c) {
  return std::string(static_cast<std::size_t>(std::max(count, 0)), c);
}

// The rows of an amount table, written by their rule.
class RowWriter {
 public:
  RowWriter(ReportPage& page, RowRule rule) : page_(page), rule_(rule) {}

  void Write(double amount, const std::string& label, const std::string& text) {
    if (IsData(amount, label)) {
      page_.WriteCells(std::vector<std::string>{label, text});
    } else if (rule_ == RowRule::kHeadingRows && !label.empty()) {
      page_.Write(label + "\r\n" + page_.RuleLine());
    }
  }

 private:
  [[nodiscard]] bool IsData(double amount, const std::string& label) const {
    switch (rule_) {
      case RowRule::kHeadingRows:
      case RowRule::kNonNegativeRows:
        return amount >= 0;
      case RowRule::kLabelledRows:
        return !label.empty();
      case RowRule::kAllRows:
        break;
    }
    return true;
  }

  ReportPage& page_;
  RowRule rule_;
};

}  // namespace

Matrix<std::string> FormatAmountMatrix(const AmountMatrix& amounts, const NumberLocale& locale) {
  Matrix<std::string> texts(amounts.Series(), amounts.Items());
  for (std::size_t series = 1; series <= amounts.Series(); ++series) {
    for (std::size_t item = 1; item <= amounts.Items(); ++item) {
      texts(series, item) = Format(amounts(series, item), kAmountPicture, locale);
    }
  }
  return texts;
}

float MaxColumnTextWidth(std::span<const std::string> texts, std::string_view strHeader,
                         std::string_view strExtra, const PictureBox& font) {
  float widest = 0;
  for (const std::string& text : texts) {
    widest = std::max(widest, font.TextWidth(text));
  }
  widest = std::max(widest, font.TextWidth(strHeader));
  return strExtra.empty() ? widest : std::max(widest, font.TextWidth(strExtra));
}

std::string RuleLineForWidth(float sngWidth, const PictureBox& font) {
  return Repeated(CountToFill(sngWidth, font.TextWidth("_")), '_');
}

std::string RightAlignToWidth(float sngWidth, std::string_view strText, const PictureBox& font) {
  const double lngText = RoundHalfEven(font.TextWidth(strText));
  const double lngSpace = RoundHalfEven(font.TextWidth(" "));
  return Repeated(CountToFill(sngWidth - lngText, lngSpace), ' ') + std::string(strText);
}

float SetUpReport(ReportObject& report, Platform& platform, FailureListener& listener) {
  float sngPageWidth = kPageWidthWithoutPrinter;
  ResumeNext(listener, [&] { sngPageWidth = platform.PrinterPageWidth(); });
  report.SetLocked(false);
  report.SetText("");
  report.SetSelIndent(0.5F * kTwipsPerCentimetre);
  report.SetSelRightIndent(0.5F * kTwipsPerCentimetre);
  return sngPageWidth + kMarginAllowance;
}

void ReportPage::LayOut(const std::vector<ReportColumn>& columns, FirstStop first_stop) {
  columns_ = columns;
  sngColumnWidths_.clear();
  float sngTableWidth = 0;
  for (ReportColumn& column : columns_) {
    const float sngWidth =
        MaxColumnTextWidth(column.texts, column.header, column.extra, form_.picReportTextFont());
    if (!sngColumnWidths_.empty()) {
      sngTableWidth += sngColumnGap;
    }
    sngTableWidth += sngWidth;
    sngColumnWidths_.push_back(sngWidth);
    column.texts = {};
  }
  strRuleLine_ = RuleLineForWidth(sngTableWidth, form_.picReportTextFont());
  report_.SetRightMargin(sngTableWidth + report_.SelIndent() + report_.SelRightIndent() +
                         kMarginAllowance);
  if (report_.RightMargin() < sngMinRightMargin_) {
    report_.SetRightMargin(sngMinRightMargin_);
  }
  SetStops(first_stop);
}

void ReportPage::SetStops(FirstStop first_stop) {
  const std::size_t left_out = first_stop == FirstStop::kOnIndent ? 0 : 1;
  report_.SetSelTabCount(static_cast<std::int32_t>(std::max(columns_.size(), left_out) - left_out));
  for (std::size_t column = left_out; column < columns_.size(); ++column) {
    const auto stop = static_cast<std::int32_t>(column - left_out);
    const float before = stop == 0 ? report_.SelIndent() : report_.SelTabs(stop - 1);
    report_.SetSelTabs(stop,
                       column == 0 ? before : before + sngColumnWidths_[column - 1] + sngColumnGap);
  }
}

void ReportPage::WriteHeading(std::string_view strTitle, std::string_view strDateCaption) {
  BeginHeading();
  WriteTitleLine(strTitle);
  EndHeading(strDateCaption);
}

void ReportPage::BeginHeading() {
  report_.SetSelAlignment(Alignment::kCenter);
  SetFontOf(form_.picReportTextFont());
  Write("\r\n");
  SetFontOf(form_.picReportTitleFont());
}

void ReportPage::WriteTitleLine(std::string_view strTitleLine) {
  Write(std::string(strTitleLine) + "\r\n");
}

void ReportPage::EndHeading(std::string_view strDateCaption) {
  SetFontOf(form_.picReportTextFont());
  if (strDateCaption.empty()) {
    Write("\r\n\r\n");
  } else {
    Write("\r\n" + std::string(strDateCaption) + "\r\n\r\n\r\n");
  }
  report_.SetSelAlignment(Alignment::kLeft);
}

void ReportPage::WriteSeriesTable(const std::string& strLabelHeader, const ItemLabels& labels,
                                  const std::string& strAmountHeader,
                                  const Matrix<std::string>& amounts, bool computed) {
  LayOut({{strLabelHeader, ColumnSide::kLeft, labels.elements(), ""},
          {strAmountHeader, ColumnSide::kRight, amounts.elements(), ""}});
  if (!computed) {
    return;
  }
  WriteHeaderLine();
  const std::size_t lngItemCount = labels.UpperBound();
  for (std::size_t i = 1; i <= lngItemCount; ++i) {
    WriteCells(std::vector<std::string>{labels(i), amounts.elements().at(i - 1)},
               i == lngItemCount ? "" : "\r\n");
  }
}

void ReportPage::WriteHeaderLine() {
  std::vector<std::string> headers;
  for (const ReportColumn& column : columns_) {
    headers.push_back(column.header);
  }
  WriteCells(headers, "\r\n");
  Write(strRuleLine_ + "\r\n\r\n");
}

void ReportPage::WriteCells(std::span<const std::string> texts, std::string_view line_end) {
  std::string line;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    line += (i == 0 ? "" : "\t");
    line += CellText(i, texts[i]);
  }
  Write(line.append(line_end));
}

std::string ReportPage::CellText(std::size_t column, const std::string& text) const {
  return columns_[column].side == ColumnSide::kLeft
             ? text
             : RightAlignToWidth(sngColumnWidths_[column], text, form_.picReportTextFont());
}

void ReportPage::WriteTotal(std::span<const std::string> texts) {
  Write(strRuleLine_ + "\r\n");
  Write(strRuleLine_ + "\r\n");
  std::string line;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    line += (i == 0 ? "" : "\t");
    // A column without a total stays empty.
    line += texts[i].empty() ? "" : CellText(i, texts[i]);
  }
  Write(line);
}

void ReportPage::SetFontOf(const PictureBox& box) {
  report_.SetSelFontName(box.GetFont().name);
  report_.SetSelFontSize(box.GetFont().size);
}

void WriteAmountReport(ReportPage& page, const AmountTable& table, const ReportTitle& title,
                       const AmountRows& rows, const std::string& strTotal, bool computed,
                       const NumberLocale& locale) {
  const AmountMatrix amounts = rows.Amounts();
  const Matrix<std::string> texts = FormatAmountMatrix(amounts, locale);
  page.LayOut(
      {{table.strLabelHeader, ColumnSide::kLeft, rows.Labels().elements(), table.strTotalLabel},
       {table.strAmountHeader, ColumnSide::kRight, texts.elements(), strTotal}});
  page.WriteHeading(title.strTitle, title.strDateCaption);
  if (!computed) {
    return;
  }
  page.WriteHeaderLine();
  RowWriter writer(page, table.rule);
  const std::size_t lngItemCount = rows.Labels().UpperBound();
  for (std::size_t i = 1; i <= lngItemCount; ++i) {
    writer.Write(amounts(1, i), rows.Labels()(i), texts(1, i));
    page.Write(i == lngItemCount ? "\r\n\r\n" : "\r\n");
  }
  page.WriteTotal(std::vector<std::string>{table.strTotalLabel, strTotal});
}

}  // namespace vetlo
