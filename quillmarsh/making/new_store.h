#pragma once

#include <string>

#include "quillmarsh/making/new_file.h"

namespace quillmarsh {

// A store file in the making (NewFile). It never comes to lie beside the journal or the log of
// another store, which whoever opens it next would take for its own and play into it.
class NewStore {
 public:
  enum class Old {
    kStays,      // what is there under the name, or left of another store of that name, is refused
    kIsReplaced  // it is replaced or taken away
  };

  // Looks at once whether the name can be taken, so that nobody waits for nothing. Fails with
  // PlaceTaken where the old stays; otherwise with a FileError, or with a vetlo::Failure where the
  // old store cannot be had for oneself alone, because another program uses it or it may not be
  // written.
  NewStore(const std::string& name, Old old);

  // Where to write it.
  [[nodiscard]] const std::string& path() const { return file_.path(); }

  // Looks again, and gives the finished store its name. Fails as the constructor does. An old store
  // that is replaced is whole, and has nothing lying beside it that it needs, up to the moment in
  // which the new one takes its place: whenever the program is killed, there is the old store or
  // the new one.
  void TakeName();

 private:
  std::string name_;
  Old old_;
  NewFile file_;
};

}  // namespace quillmarsh
