#pragma once

#include <string>

#include "vetlo/store/sqlite/connection.h"

namespace vetlo {

// Makes the tables of the model and the marks of a store in an empty database.
void CreateSchema(Connection& connection);

// Makes the indexes that are not there yet. A store without them gives the same figures, slowly.
void CreateIndexes(Connection& connection);

// Fails with kStoreUnusable unless the database is a store of a version that we know, with all
// tables and columns of the model.
void CheckSchema(Connection& connection);

}  // namespace vetlo
