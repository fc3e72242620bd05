#include "quillmarsh/cli/tidy_command.h"

#include <ostream>

#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/platform/failure.h"
#include "vetlo/store/sqlite/sqlite_store.h"

namespace quillmarsh {

void TidyCommand(const TidyArguments& arguments, std::ostream& out) {
  const std::string file = "'" + SafeText(arguments.store) + "'";
  std::size_t made = 0;
  try {
    made = vetlo::MakeMissingIndexes(arguments.store);
  } catch (const vetlo::Failure& failure) {
    throw UserError("cannot tidy the store " + file + ": " + failure.what());
  }
  if (made == 0) {
    out << file << " has all its indexes; there is nothing to do.\n";
    return;
  }
  out << "Made " << made << (made == 1 ? " index" : " indexes") << " in " << file
      << "; what it holds is as it was.\n";
}

}  // namespace quillmarsh
