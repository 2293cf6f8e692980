#include "pds/jetfunctions.h"

#include <sqlite3.h>

namespace fx {

void RegisterJetFunctions(sqlite3 *db)
{
    (void)db; // UNFINISHED: filled in by the local-store work before this lands
}

QString JetDateLiteral(const QDateTime &dateTime)
{
    return QLatin1Char('\'') + dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QLatin1Char('\'');
}

} // namespace fx
