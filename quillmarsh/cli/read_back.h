#pragma once

#include <optional>
#include <string>
#include <vector>

#include "quillmarsh/cli/settings_rows.h"
#include "vetlo/store/forwarding.h"

namespace quillmarsh {

// A store that reads its settings rows back at the end of every change, just before the change is
// made to last. They are what this program has saved, whatever others save right behind it.
// The store must outlive it.
class ReadBackDatabase : public vetlo::ForwardingDatabase {
 public:
  using ForwardingDatabase::ForwardingDatabase;

  // Rows that cannot be read back keep no change from being made.
  void CommitTrans() override;

  // Whether a change was made, whatever has failed behind it.
  [[nodiscard]] bool HasChanged() const { return changed_; }

  // The rows as the last change left them. Fails with a UserError, which says that the change was
  // saved all the same, where they could not be read.
  [[nodiscard]] const std::vector<SettingsRowFacts>& Rows() const;

 private:
  std::vector<SettingsRowFacts> rows_;
  std::optional<std::string> failure_;
  bool changed_ = false;
};

}  // namespace quillmarsh
