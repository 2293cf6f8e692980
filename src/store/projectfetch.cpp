// The project's clash tables as found: a backup dump first, then a copy for the merge.

#include "store/projectload.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/paths.h"
#include "pds/cris.h"
#include "store/messages.h"

namespace fx {

void FetchProjectClashTables(CRIS &cris, const QString &schema, const QString &database, const QString &backupDump)
{
    Frame("FetchProjectClashTables", [&] {
        LogMessage(msg::BackupClashData, {schema, backupDump});
        const QString tables = QString::fromLatin1(FetchedClashTables);
        const QString folder = GetFolderOfPath(backupDump);
        const bool ris = cris.GetDBConType() == DBConType::RIS;
        if (ris)
            cris.RISUnload(schema, folder, tables, QString(), RISDumpForm::Fixed, true, backupDump);
        for (const QString &table : tables.split(QLatin1Char(';'))) {
            LogMessage(msg::ImportingCurrentClashData, {table});
            const QString sql = QStringLiteral("SELECT * FROM ") + table;
            if (ris)
                cris.RISDumpImport2Access(backupDump, schema, database, table, sql);
            else
                cris.DBImport2Access(database, table, sql, schema);
        }
        // The SQL kinds have no unload tool: the backup is written from the copy, which nothing
        // has changed yet, in the same format.
        if (!ris)
            cris.RISDumpCreate(folder, database, schema, tables, QString(), backupDump);
    });
}

} // namespace fx
