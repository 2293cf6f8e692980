#pragma once
// Rows of a project schema query straight into a table of the local store.

#include "pds/schemaconnection.h"
#include "pds/sqlitedb.h"

namespace fx {

/// Brings the rows of `sql` into `table` of `store`, appending when the table exists there and
/// creating it from the query's fields otherwise. Rows travel in slices of 10000; NULLs stay
/// NULL, dates become the store's "yyyy-MM-dd HH:mm:ss" text.
void ImportQueryInto(SchemaConnection &connection, const QString &sql, SqliteDb &store, const QString &table);

} // namespace fx
