#include "grid/autofilter.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/settings.h"
#include "grid/messages.h"

namespace fx {

QString AutoStatusFilter(const QString &statusFilterNow, const std::function<bool()> &askSkip)
{
    return Frame("SetAutoFilter", [&] {
        if (!statusFilterNow.isEmpty())
            return QString();
        const QString file = GetUserConfigFile();
        if (ReadConfigKey(file, autofilterkey::ShowFilterDialog) != QLatin1String("0") && askSkip && askSkip())
            return QString();
        // Read after the message, whose boxes may have just changed it.
        if (ReadConfigKey(file, autofilterkey::SetAutoFilter) == QLatin1String("0"))
            return QString();
        LogMessage(msg::GridSettingAutomaticFilter, {});
        return QStringLiteral("Unapproved");
    });
}

} // namespace fx
