#include "grid/autofilter.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "grid/messages.h"
#include "store/options.h"

namespace fx {

QString AutoStatusFilter(const QString &statusFilterNow, const std::function<bool()> &askSkip)
{
    return Frame("SetAutoFilter", [&] {
        if (!statusFilterNow.isEmpty())
            return QString();
        if (GetOptionFlag(option::ShowFilterDialog) && askSkip && askSkip())
            return QString();
        // Read after the message, whose boxes may have just changed it.
        if (!GetOptionFlag(option::SetAutoFilter))
            return QString();
        LogMessage(msg::GridSettingAutomaticFilter, {});
        return QStringLiteral("Unapproved");
    });
}

} // namespace fx
