#include "frame/tempdir.h"

#include "frame/fileops.h"
#include "frame/paths.h"
#include "frame/processstate.h"

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

QString GetTempFolder()
{
    const QString kept = Process().TempDir;
    if (!kept.isEmpty() && IsFileExists(kept, true))
        return AddBackslash(kept);
    return GetTempEnvDir();
}

} // namespace fx
