// CRIS: the text driver's side of the text-file route (see textfilequery.h).
#include "pds/cris.h"

#include "pds/textfilequery.h"

namespace fx {

Recordset CRIS::ReadTextTable(const QString &textFile, const QString &rewrittenSql)
{
    return ReadTextFileQuery(textFile, rewrittenSql);
}

void CRIS::ImportTextTable(const QString &textFile, const QString &rewrittenSql, const QString &database,
                           const QString &table)
{
    ImportTextFileQuery(textFile, rewrittenSql, database, table);
}

} // namespace fx
