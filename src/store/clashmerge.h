#pragma once
// The merge of a write-back: the reviewer's clashes and the project's clash tables, fresh from
// the project, meet in a private database; what differs becomes the new state of the tables.

#include "pds/sqlitedb.h"

#include <QString>

namespace fx {

/// Copies `base_clash_table` and `pdtable_111` of the store file `storeFile` into the private
/// database `database`, each with its declared columns; gives the clashes copied.
qint64 CopyStoreTables(const QString &storeFile, const QString &database);

/// The record counts of the project's clash tables before the merge and after it.
struct MergeCounts
{
    qint64 schema132 = 0;
    qint64 schema135 = 0;
    qint64 merged132 = 0;
    qint64 merged135 = 0;
};

/// The merge on the private database `db`, which holds `base_clash_table`, `pdtable_111` and the
/// project's `pdtable_131`, `pdtable_132` and `pdtable_135` as found in `schema`.
class ClashMerge
{
public:
    ClashMerge(SqliteDb &db, const QString &schema);

    /// Indexes the keys, keeps the newest check run of each area and discipline, and notes the
    /// counts of the project's tables as found.
    void Prepare();

    /// Adds the new review rows and changes the newest review rows and the clash rows where
    /// the store is later than the project. With `keepOriginalClashRows`, the clash rows as
    /// found stay in `org_pdtable_132` (with their `row_id`) to be compared afterwards. Gives
    /// true when anything changed.
    bool Merge(bool keepOriginalClashRows);

    const MergeCounts &Counts() const { return m_counts; }

private:
    qint64 Count(const char *table) const;
    /// Runs a statement and logs the rows it changed in `table` with `message`.
    qint64 Logged(const char *message, const char *table, const QString &sql);
    void AddReviewTimestamps();
    qint64 InsertNewReviews();
    qint64 UpdateNewestReviews();
    qint64 UpdateClashRows();

    SqliteDb &m_db;
    QString m_schema;
    MergeCounts m_counts;
};

} // namespace fx
