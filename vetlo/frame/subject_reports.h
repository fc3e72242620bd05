#pragma once

#include <optional>
#include <string>

#include "vetlo/frame/report_call.h"

namespace vetlo {

// The reports and charts about one subject that the row's parameters name: an account, an
// investment, a payee. All of them run in one frame; where the parameters do not convert a report
// stays empty and a chart has title and footnote alone.

// What a family does where it has its turn in the frame.
template <typename Subject, typename Figures>
struct SubjectFamily {
  // None where the parameters do not convert.
  std::optional<Subject> (*subject)(ReportCall& call);
  // Runs under the guard.
  void (*compute)(const ReportCall& call, const Subject& subject, Figures& figures);
  // The row's title with the subject's name, as the target words it.
  std::string (*title)(ReportCall& call, const Subject& subject);
  // Where computing failed the table is laid out and left out.
  void (*write_table)(ReportCall& call, ReportPage& page, const Figures& figures, bool computed);
  // Only where computing did not fail. Looks up what names it writes.
  void (*write_chart)(ReportCall& call, ChartWriter& writer, const Subject& subject,
                      const Figures& figures);
  // The subject whose name the title of a chart bears where the parameters do not convert; none:
  // that title is the row's alone.
  std::optional<Subject> titled_without_one = std::nullopt;
};

template <typename Subject, typename Figures>
void ReportSubject(ReportCall& call, const SubjectFamily<Subject, Figures>& family) {
  const std::optional<Subject> subject = family.subject(call);
  if (!subject) {
    return;
  }
  ReportPage page = call.Page();
  page.BeginHeading();
  page.WriteTitleLine(family.title(call, *subject));
  page.EndHeading(call.Caption());
  Figures figures;
  const std::int32_t lngComputeError = call.Guard([&] { family.compute(call, *subject, figures); });
  family.write_table(call, page, figures, lngComputeError == 0);
}

template <typename Subject, typename Figures>
void ChartSubject(ReportCall& call, const SubjectFamily<Subject, Figures>& family) {
  ChartWriter writer = call.Writer();
  const std::optional<Subject> subject = family.subject(call);
  if (subject) {
    Figures figures;
    const std::int32_t lngComputeError =
        call.Guard([&] { family.compute(call, *subject, figures); });
    if (lngComputeError == 0) {
      family.write_chart(call, writer, *subject, figures);
    }
  }
  const std::optional<Subject>& titled = subject ? subject : family.titled_without_one;
  writer.SetTitle(titled ? family.title(call, *titled) : call.row.strTitle);
  writer.SetFootnote(call.Caption());
}

// The number of a subject that the first parameter names alone.
std::optional<std::int32_t> NumberInFirstParameter(ReportCall& call);

// The row's title and the subject's name, or where it is not found the bare title.
std::string TitleWith(const ReportCall& call, const std::optional<std::string>& name);

// The account's name as the target labels it; none where there is no such account.
std::optional<std::string> NameOfAccount(ReportCall& call, std::int32_t lngAccountNumber);
std::string TitleWithAccount(ReportCall& call, const std::int32_t& lngAccountNumber);

}  // namespace vetlo
