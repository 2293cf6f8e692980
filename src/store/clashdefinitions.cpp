#include "store/clashdefinitions.h"

#include "frame/failure.h"
#include "frame/programinfo.h"
#include "frame/settings.h"

#include <optional>

namespace fx {

QList<ClashDefinition> ReadClashDefinitions(const QString &file, const QString &section)
{
    return Frame("ReadClashDefinitions", [&] {
        QList<ClashDefinition> definitions;
        const QStringList keys = GetIniValue(file, section, QString(), QString(), false).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (const QString &key : keys) {
            if (key.contains(QLatin1Char('.')) || key.contains(QLatin1Char(',')))
                continue;
            bool numeric = false;
            const qint16 number = key.trimmed().toShort(&numeric);
            if (!numeric)
                continue;
            const QString name = GetIniValue(file, section, key).trimmed();
            if (!name.isEmpty())
                definitions.append(ClashDefinition{number, name});
        }
        return definitions;
    });
}

QList<ClashDefinition> GetClashTypes()
{
    static std::optional<QList<ClashDefinition>> cache;
    if (!cache)
        cache = ReadClashDefinitions(ProgramDir() + QStringLiteral("Fendrix.ini"), QStringLiteral("ClashTypesDefinition"));
    return *cache;
}

QList<ClashDefinition> GetModelStatus()
{
    static std::optional<QList<ClashDefinition>> cache;
    if (!cache)
        cache = ReadClashDefinitions(ProgramDir() + QStringLiteral("Fendrix.ini"), QStringLiteral("ModelStatusDefinition"));
    return *cache;
}

} // namespace fx
