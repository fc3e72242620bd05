#include "quillmarsh/cli/trace_command.h"

#include <ostream>

#include "quillmarsh/cli/arguments.h"
#include "quillmarsh/cli/event_text.h"
#include "quillmarsh/cli/json_text.h"
#include "quillmarsh/cli/left_out.h"
#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/observed_database.h"
#include "quillmarsh/cli/store_file.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/locale.h"
#include "quillmarsh/terminal/terminal_platform.h"
#include "vetlo/host/recording.h"
#include "vetlo/platform/failure.h"

namespace quillmarsh {
namespace {

constexpr float kChartWidth = 12000;  // twips

class TracedPlatform : public TerminalPlatform {
 public:
  TracedPlatform(std::optional<vetlo::Date> today, vetlo::EventLog& log)
      : TerminalPlatform(EnvironmentLocale(), today), log_(log) {}

  void DoEvents() override { log_.Call("host", "DoEvents"); }

 private:
  vetlo::EventLog& log_;
};

std::string StoreEventText(const char* call, std::string_view source,
                           vetlo::RecordsetType type = vetlo::RecordsetType::kByDefault) {
  Json line = Json::object();
  line["on"] = "store";
  line["call"] = call;
  line["source"] = source;
  if (type != vetlo::RecordsetType::kByDefault) {
    line["type"] = type;
  }
  return JsonText(line);
}

// What the host gets in the end: a return or a failure.
template <typename Value>
std::string LastLine(const char* what, Value value) {
  Json line = Json::object();
  line["on"] = "host";
  line[what] = value;
  return JsonText(line);
}

// The lines of a call, made as the events come in.
class Trace {
 public:
  void TakeEvents(const vetlo::EventLog& log) {
    for (; taken_ < log.events().size(); ++taken_) {
      text_ += EventText(log.events()[taken_]) + "\n";
    }
  }
  void Add(const std::string& line) { text_ += line + "\n"; }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::size_t taken_ = 0;
  std::string text_;
};

}  // namespace

void TraceCommand(const TraceArguments& arguments, std::ostream& out) {
  const auto row = WholeNumber(arguments.row);
  if (!row) {
    throw UserError("ROW is the number of a settings row, not '" + arguments.row + "'");
  }
  vetlo::EventLog log;
  TracedPlatform platform(GivenDate("--today", arguments.today), log);
  const auto store = OpenStoreFile(arguments.store, vetlo::StoreAccess::kReadOnly);
  Trace trace;
  StoreObserver observer;
  if (arguments.store_events) {
    observer.opened = [&](std::string_view source, vetlo::RecordsetType type) {
      trace.TakeEvents(log);
      trace.Add(StoreEventText("OpenRecordset", source, type));
    };
    observer.closed = [&](std::string_view source) {
      trace.TakeEvents(log);
      trace.Add(StoreEventText("Close", source));
    };
  }
  vetlo::KeptStore kept(*store);
  ObservedDatabase observed(kept, observer);
  vetlo::RecordingWindow window(log);
  vetlo::PlainContainer frame(&window);
  vetlo::RecordingChart chart(log, kChartWidth, &frame);
  vetlo::RecordingReport report(log, &frame);
  const auto rows = store->OpenRecordset("ChartReportSubType");
  vetlo::Tamo component = LoadComponent().NewTamo(platform);
  std::string last = LastLine("return", false);
  try {
    component.ShowChartReport(observed, *rows, *row, &chart, &report,
                              ParameterArgument(arguments.parameter1),
                              ParameterArgument(arguments.parameter2));
  } catch (const vetlo::Failure& failure) {
    last = LastLine("failure", failure.number());
    // That the call failed is part of the trace. That the store cannot be read is not.
    if (IsOfTheStore(failure.number())) {
      kept.OnFailure(failure.number(), failure.what());
    }
  }
  trace.TakeEvents(log);
  trace.Add(last);
  out << trace.text();
  vetlo::TellOfPassedByValues(*store, kept);
  RequireWhole(kept);
}

}  // namespace quillmarsh
