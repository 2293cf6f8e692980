// CRIS: the RIS dump methods. The work is done by the procedures of risdumpparse.h,
// risdumpwriter.h and textfilequery.h; here they meet the gateway's temporary folder.
#include "pds/cris.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "pds/messages.h"
#include "pds/risdumpparse.h"
#include "pds/risdumpwriter.h"
#include "pds/textfilequery.h"
#include "pds/scratchfiles.h"

namespace fx {

QStringList CRIS::RISDumpGetSchemas(const QString &dumpFile)
{
    return risdump::RISDumpGetSchemas(dumpFile);
}

QStringList CRIS::RISDumpGetTables(const QString &dumpFile, const QString &schema)
{
    return risdump::RISDumpGetTables(dumpFile, schema);
}

QString CRIS::RISDumpCreate(const QString &targetFolder, const QString &database, const QString &schema,
                            const QString &tables, const QString &where, const QString &dumpFile)
{
    return risdump::RISDumpCreate(targetFolder, database, schema, tables, where, dumpFile);
}

QString CRIS::RISDumpParse(const QString &dumpFile, const QString &schema, const QString &table, bool replaceNull)
{
    return risdump::RISDumpParse(GetTempDir(), dumpFile, schema, table, replaceNull);
}

Recordset CRIS::RISDumpRead(const QString &dumpFile, const QString &schema, const QString &sql)
{
    return Frame("CRIS::RISDumpRead", [&] {
        CheckRISSelect(schema, sql);
        const ParsedSQL parsed = ParseSQL(sql);
        TextFileScratch textFile(RISDumpParse(dumpFile, schema, parsed.table));
        return ReadTextTable(textFile.Path(), TextFileSelect(sql, parsed.table, textFile.Path()));
    });
}

void CRIS::RISDumpImport2Access(const QString &dumpFile, const QString &schema, const QString &database,
                                const QString &table, const QString &sql)
{
    Frame("CRIS::RISDumpImport2Access", [&] {
        if (!IsFileExists(database))
            Raise(msg::AccessDatabaseNotExists, {database});
        if (table.trimmed().isEmpty())
            Raise(msg::TableToExtractNotDefined);
        CheckRISSelect(schema, sql);
        const ParsedSQL parsed = ParseSQL(sql);
        TextFileScratch textFile(RISDumpParse(dumpFile, schema, parsed.table));
        ImportTextTable(textFile.Path(), TextFileSelect(sql, parsed.table, textFile.Path()), database, table);
    });
}

void CRIS::RISTableCopy(const QString &dumpFile, const QString &target, const QStringList &names,
                        const QStringList &newNames)
{
    risdump::RISTableCopy(dumpFile, target, names, newNames);
}

} // namespace fx
