#pragma once

#include <optional>
#include <string>

#include "vetlo/store/sqlite/connection.h"

namespace vetlo {

// The sole use of a store, or of any other database, that is to be replaced by another file. A
// change that was broken off is undone first and a log of changes taken in, so that the file is
// whole by itself and needs nothing beside it; from then on, for as long as this lives, no other
// program reads or writes it. What there is to wait for is waited for as OpenStore does.
//
// A file that is no database, or a damaged one, can be used by nobody: it counts as taken, unless
// something lies beside it that may be what it needs.
class SoleUse {
 public:
  // Fails with kStoreUnusable where others are using the file or it may not be written.
  explicit SoleUse(const std::string& path);

 private:
  std::optional<Connection> connection_;
};

}  // namespace vetlo
