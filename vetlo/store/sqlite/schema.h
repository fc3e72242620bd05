#pragma once

#include <vector>

#include "vetlo/store/model.h"
#include "vetlo/store/sqlite/connection.h"

namespace vetlo {

// Makes the tables of the model and the marks of a store in an empty database.
void CreateSchema(Connection& connection);

// Makes the indexes that are not there yet. A store without them gives the same figures, slowly.
void CreateIndexes(Connection& connection);
// How many those are.
std::size_t CountMissingIndexes(Connection& connection);

// A column that one of our indexes begins with, and whether any index of a store does.
struct IndexedColumn {
  const Table* table = nullptr;
  const Column* column = nullptr;
  bool has_index = false;
};

// Those of a store that lacks some of our indexes; none where all are there.
std::vector<IndexedColumn> ColumnsOfMissingIndexes(Connection& connection);

// Fails with kStoreUnusable unless the database is a store of a version that we know, with all
// tables and columns of the model.
void CheckSchema(Connection& connection);

}  // namespace vetlo
