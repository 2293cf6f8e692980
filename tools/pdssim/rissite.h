#pragma once
// What the RIS stand-ins share about a site: its option on the command line, the schema file,
// the schemas' databases and the tables in them, and the wrapper scripts that reach the tools.

#include "pdssim/sitelayout.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace fx {
class SqliteDb;
}

namespace pdssim {

/// Takes "--site DIR" from the front of a tool's arguments; raises when it is not there.
SiteLayout TakeSite(QStringList &args);

/// Takes the options before the first plain word: "-m w" or "-mw" gives m = "w". Raises
/// `usage` for an option not in `letters` or without its value.
QHash<QChar, QString> TakeOptions(QStringList &args, const QString &letters, const QString &usage);

/// What the words after the options of risunlod and rislod ask for:
/// "table [with [variable] data] t1 t2 ...|all [view all] [index] [grant]".
struct RisTableRequest
{
    bool withData = false;
    bool variable = false;
    QStringList items; ///< empty for "all"; an item may be "t where condition", one argument
    bool indexes = false;
    bool grants = false;
};

/// Reads the table words; raises `usage` when they do not read as above.
RisTableRequest ParseTableRequest(const QStringList &words, const QString &usage);

/// True when PDSSIM_MISSING_TOOLS (names separated by ",") names `tool`: the tool then acts as
/// if it were not installed, ending at once without output or file.
bool IsToolMissing(const char *tool);

/// The names of the schema file, one a line, as they are written there.
QStringList RisSchemaNames(const SiteLayout &site);

/// The schema's name as the schema file writes it; empty when the file does not hold it or its
/// database is missing.
QString KnownRisSchema(const SiteLayout &site, const QString &schema);

/// The database file of a schema of the schema file.
QString RisSchemaDatabase(const SiteLayout &site, const QString &knownSchema);

/// Adds a schema to the schema file and creates its empty database.
void AddRisSchema(const SiteLayout &site, const QString &schema);

/// Removes a schema from the schema file and deletes its database.
void RemoveRisSchema(const SiteLayout &site, const QString &knownSchema);

/// One column of a schema table as RIS declares it.
struct RisColumn
{
    QString name;
    QString type; ///< lower case, as declared: "char(20)", "decimal(8,2)", "int"
    bool notNull = false;
};

/// The tables of a schema database, in the order of their names.
QStringList RisTables(fx::SqliteDb &db);

/// The table's name as the database writes it; empty when there is no such table.
QString RisTableName(fx::SqliteDb &db, const QString &table);

/// The columns of a table in their order.
QList<RisColumn> RisTableColumns(fx::SqliteDb &db, const QString &table);

/// The "create [unique] index" statements of the indexes made for a table, as RIS writes them.
QStringList RisIndexStatements(fx::SqliteDb &db, const QString &table);

/// A name in double quotes for SQLite, an embedded quote doubled.
QString SqlName(const QString &name);

/// Writes ris/BIN/risbatch, risunlod, rislod and risclnsr: /bin/sh scripts that run
/// `pdssimExecutable` with the tool's name, "--site" and the site's folder before their arguments.
void WriteRisToolWrappers(const SiteLayout &site, const QString &pdssimExecutable);

} // namespace pdssim
