#include "frame/computername.h"

#include <QSysInfo>

namespace fx {

QString GetComputerName()
{
    const QString fromEnv = qEnvironmentVariable("COMPUTERNAME").trimmed();
    return fromEnv.isEmpty() ? QSysInfo::machineHostName() : fromEnv;
}

QString BareComputerName(const QString &name)
{
    QString bare = name.trimmed();
    while (bare.startsWith(QLatin1Char('\\')) || bare.startsWith(QLatin1Char('/')))
        bare.remove(0, 1);
    return bare;
}

bool IsThisComputer(const QString &name)
{
    const QString bare = BareComputerName(name);
    if (bare.isEmpty())
        return false;
    const QString host = QSysInfo::machineHostName();
    for (const QString &own : {qEnvironmentVariable("COMPUTERNAME").trimmed(), host, host.section(QLatin1Char('.'), 0, 0)})
        if (!own.isEmpty() && own.compare(bare, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

} // namespace fx
