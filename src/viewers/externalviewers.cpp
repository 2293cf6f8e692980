#include "viewers/externalviewers.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/registry.h"

#include <QFileInfo>

namespace fx {

namespace {
const QString kMicroStationKey = QStringLiteral("Software\\Bentley\\MicroStation\\");
} // namespace

QString GetDefaultMSTNPath()
{
    try {
        if (!RegKeyExists(RegRoot::LocalMachine, kMicroStationKey))
            return QString();
        for (const QString &installation : RegGetSubKeys(RegRoot::LocalMachine, kMicroStationKey)) {
            const QString key = kMicroStationKey + installation;
            const QStringList values = RegGetValues(RegRoot::LocalMachine, key);
            if (!values.contains(QStringLiteral("PathName"), Qt::CaseInsensitive)
                || !values.contains(QStringLiteral("Version"), Qt::CaseInsensitive))
                continue;
            const QString path = RegGetValue(RegRoot::LocalMachine, key, QStringLiteral("PathName")).text.trimmed();
            if (path.isEmpty() || !IsFileExists(path))
                continue;
            // Only MicroStation 7 speaks the key-ins and the pipe the viewer uses.
            if (RegGetValue(RegRoot::LocalMachine, key, QStringLiteral("Version")).text.trimmed().startsWith(QLatin1String("07.")))
                return path;
        }
    } catch (const Failure &) {
        // The default of a setting: a registry that can't be read means no installation.
    }
    return QString();
}

bool CanRunMicroStation(const QString &exePath)
{
#ifdef Q_OS_WIN
    const QFileInfo file(exePath.trimmed());
    return !exePath.trimmed().isEmpty() && file.isFile() && file.isExecutable();
#else
    // A clash is shown through MicroStation's automation, which only Windows has; a program
    // named here (the simulated site's, say) answers the pipe but shows nothing.
    Q_UNUSED(exePath);
    return false;
#endif
}

bool CanRunSmartPlantReview()
{
#ifdef Q_OS_WIN
    // The machine-wide half of the classes root holds the automation's ProgID.
    try {
        return RegKeyExists(RegRoot::LocalMachine, QStringLiteral("Software\\Classes\\DrApi.DrApi.1"));
    } catch (const Failure &) {
        return false;
    }
#else
    return false;
#endif
}

} // namespace fx
