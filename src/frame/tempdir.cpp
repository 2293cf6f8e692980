#include "frame/tempdir.h"

#include "frame/paths.h"

namespace fx {

QString GetTempEnvDir()
{
    if (qEnvironmentVariableIsSet("TEMP"))
        return AddBackslash(qEnvironmentVariable("TEMP"));
    if (qEnvironmentVariableIsSet("TMPDIR"))
        return AddBackslash(qEnvironmentVariable("TMPDIR"));
    return AddBackslash(QStringLiteral("/tmp"));
}

} // namespace fx
