#include "frame/osversion.h"

#include <QOperatingSystemVersion>
#include <QString>
#include <QStringList>
#include <QSysInfo>

namespace fx {

namespace {
struct OsVersion
{
    int major = 0;
    int minor = 0;
};

OsVersion ReadOsVersion()
{
    OsVersion v;
    const QOperatingSystemVersion os = QOperatingSystemVersion::current();
    if (os.type() != QOperatingSystemVersion::Unknown && os.majorVersion() >= 0) {
        v.major = os.majorVersion();
        v.minor = std::max(0, os.minorVersion());
        return v;
    }
    const QStringList parts = QSysInfo::kernelVersion().split(QLatin1Char('.'));
    bool ok = parts.size() >= 2;
    v.major = ok ? parts[0].toInt(&ok) : -1;
    v.minor = ok ? parts[1].toInt() : 0;
    if (!ok)
        v.major = -1;
    return v;
}
} // namespace

float GetOSVersion(int &major, int &minor)
{
    static const OsVersion cached = ReadOsVersion();
    major = cached.major;
    minor = cached.minor;
    return static_cast<float>(major) + static_cast<float>(minor) / 10.0f;
}

} // namespace fx
