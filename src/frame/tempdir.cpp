#include "frame/tempdir.h"

#include "frame/paths.h"

namespace fx {

QString GetTempEnvDir()
{
    for (const char *name : {"TEMP", "TMPDIR"}) {
        const QString value = qEnvironmentVariable(name).trimmed();
        if (!value.isEmpty())
            return AddBackslash(value);
    }
    return AddBackslash(QStringLiteral("/tmp"));
}

} // namespace fx
