#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillmarsh/cli/event_text.h"
#include "quillmarsh/cli/json_text.h"
#include "quillmarsh/cli/observed_database.h"
#include "tests/support/drawing.h"

namespace vetlo::testing {

// The lines of a trace, as a test expects them. The value stands as JSON.
inline std::string Put(std::string_view on, std::string_view member, std::string_view value) {
  return R"({"on":")" + std::string(on) + R"(","put":")" + std::string(member) + R"(","value":)" +
         std::string(value) + "}";
}

inline std::string PutText(std::string_view on, std::string_view member, std::string_view text) {
  return Put(on, member, quillmarsh::JsonText(text));
}

inline std::string TabStop(int stop, std::string_view value) {
  return R"({"on":"report","put":"SelTabs","at":[)" + std::to_string(stop) + R"(],"value":)" +
         std::string(value) + "}";
}

inline std::string Opened(std::string_view source) {
  return R"({"on":"store","call":"OpenRecordset","value":)" + quillmarsh::JsonText(source) + "}";
}

inline std::string Closed(std::string_view source) {
  return R"({"on":"store","call":"Close","value":)" + quillmarsh::JsonText(source) + "}";
}

inline const std::string kDoEvents = R"({"on":"host","call":"DoEvents"})";

// The tables in which every call looks up names, in their order.
inline const std::vector<std::string> kLookUpTables = {
    "Account",        "AccountItem",        "AccountItemType",       "Category",
    "Classification", "ClassificationItem", "ClassificationSubItem", "Payee",
    "SubCategory"};

// Some lines after others.
inline std::vector<std::string>& operator<<(std::vector<std::string>& lines,
                                            const std::vector<std::string>& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}
inline std::vector<std::string>& operator<<(std::vector<std::string>& lines,
                                            const std::string& line) {
  lines.push_back(line);
  return lines;
}

inline std::vector<std::string> OpenedTables() {
  std::vector<std::string> lines;
  for (const std::string& table : kLookUpTables) {
    lines.push_back(Opened(table));
  }
  return lines;
}

inline std::vector<std::string> ClosedTables() {
  std::vector<std::string> lines;
  for (const std::string& table : kLookUpTables) {
    lines.push_back(Closed(table));
  }
  return lines;
}

inline std::vector<std::string> OpenedAndClosed(const std::vector<std::string>& sources) {
  std::vector<std::string> lines;
  for (const std::string& source : sources) {
    lines.push_back(Opened(source));
    lines.push_back(Closed(source));
  }
  return lines;
}

// A store whose recordsets are told into a log as they are opened and closed.
class TracedStore : public quillmarsh::ObservedDatabase {
 public:
  TracedStore(Database& store, EventLog& log)
      : ObservedDatabase(
            store,
            {[&log](std::string_view source, RecordsetType) {
               log.Add({"store", "call", "OpenRecordset", std::nullopt, std::string(source)});
             },
             [&log](std::string_view source) {
               log.Add({"store", "call", "Close", std::nullopt, std::string(source)});
             }}) {}
};

// The events of a drawing, texts written to the report one after another as one.
inline std::vector<std::string> EventsWithWholeTexts(const Drawing& drawing) {
  EventLog merged;
  std::string text;
  const auto flush = [&] {
    if (!text.empty()) {
      merged.Put("report", "SelText", std::exchange(text, {}));
    }
  };
  for (const Event& event : drawing.log.events()) {
    if (event.on == "report" && event.member == "SelText") {
      text += std::get<std::string>(event.value);
    } else {
      flush();
      merged.Add(event);
    }
  }
  flush();
  std::vector<std::string> lines;
  for (const Event& event : merged.events()) {
    lines.push_back(quillmarsh::EventText(event));
  }
  return lines;
}

}  // namespace vetlo::testing
