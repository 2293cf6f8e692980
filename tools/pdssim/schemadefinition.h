#pragma once
// The tables of a project schema "pd_<project>" as Fendrix reads them: every table, its columns
// with their RIS types, and its unique index. The one place that names them.

#include <QList>
#include <QString>
#include <QStringList>

namespace pdssim {

/// One column: its name and RIS type ("char(20)", "smallint", "int", "double", "real", "timestamp").
struct ColumnDefinition
{
    const char *name;
    const char *risType;
};

/// One table of the project schema.
struct TableDefinition
{
    const char *name;
    QList<ColumnDefinition> columns;
    /// The columns of the table's unique index; empty for a table that may hold duplicates.
    QStringList uniqueIndex;
    /// Columns with a plain index of their own.
    QStringList indexes;

    /// The position of a column, or -1.
    int ColumnIndex(const QString &column) const;
};

/// Every table in the order they are written: reference data first, the clash tables last.
const QList<TableDefinition> &ProjectTables();

/// The definition of one table; raises for a name that has none.
const TableDefinition &ProjectTable(const QString &name);

/// The PostgreSQL type that holds values of a RIS type.
QString PostgreSQLTypeOfRISType(const QString &risType);

} // namespace pdssim
