#pragma once

#include <string>
#include <vector>

#include "vetlo/store/forwarding.h"

namespace quillmarsh::bench {

// One question to a store, in the words in which a lean program would ask it.
struct Question {
  std::string text;    // a whole table, an SQL text, or the row of a key
  vetlo::Variant key;  // of a row that was sought; empty otherwise
};

// Notes all that is asked of a store, by the component and by its services.
class AskedStore : public vetlo::ForwardingDatabase {
 public:
  explicit AskedStore(vetlo::Database& store) : ForwardingDatabase(store) {}

  using Database::OpenRecordset;
  std::unique_ptr<vetlo::Recordset> OpenRecordset(std::string_view strSource,
                                                  vetlo::RecordsetType type) override;

  [[nodiscard]] const std::vector<Question>& questions() const { return questions_; }

 private:
  std::vector<Question> questions_;
};

}  // namespace quillmarsh::bench
