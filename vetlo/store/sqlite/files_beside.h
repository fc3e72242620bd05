#pragma once

#include <string>
#include <vector>

namespace vetlo {

// The files that the engine keeps beside a store while it is being changed: "-journal", which
// undoes the change, "-wal" and "-shm", a log of what was changed last and its index. Where a
// program was killed in the middle they stay, and are as much a part of the store as its file:
// without them it may be damaged, and beside another file they damage that.

// Those beside a file, or beside a name that no file has, whatever they are. The path is that of
// the file itself and not of a link to it.
std::vector<std::string> FilesBeside(const std::string& store);

// Fails with kStoreUnusable where the engine would take one of them that it must not: one that is
// no regular file, for which it would wait or which does not end, or the journal of a change of
// several files.
void RequireSaneFilesBeside(const std::string& store);

}  // namespace vetlo
