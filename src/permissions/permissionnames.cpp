#include "permissions/permissionnames.h"

#include "frame/failure.h"
#include "frame/translation.h"
#include "permissions/messages.h"

namespace fx {

QStringList PermissionNames()
{
    static const QStringList names = {
        QString::fromUtf8(msg::PermissionCheck),          QString::fromUtf8(msg::PermissionLoadSettings),
        QString::fromUtf8(msg::PermissionOptions),        QString::fromUtf8(msg::PermissionSaveChanges),
        QString::fromUtf8(msg::PermissionChangeStatus),   QString::fromUtf8(msg::PermissionCleanHistory),
        QString::fromUtf8(msg::PermissionDeleteAllClashes), QString::fromUtf8(msg::PermissionAdministrator),
        QString::fromUtf8(msg::PermissionApprovalFilter), QString::fromUtf8(msg::PermissionSetDescription),
        QString::fromUtf8(msg::PermissionUnlockMarkers)};
    return names;
}

QString GetPermissionName(int no, bool translate)
{
    return Frame("GetPermissionName", [&] {
        if (no < 0 || no >= PermissionCount)
            Raise(msg::PermissionNumberIncorrect, {QString::number(no)});
        return TranslateText(PermissionNames().at(no), translate);
    });
}

int GetPermissionNoByName(const QString &name, const QStringList &names)
{
    return Frame("GetPermissionNoByName", [&] {
        if (name.isEmpty())
            Raise(msg::PermissionNameNotDefined);
        // The manager shows translated names: either form finds the number.
        for (int no = 0; no < names.size(); ++no)
            if (names.at(no) == name || TranslateText(names.at(no)) == name)
                return no;
        Raise(msg::PermissionNameNotExists, {name});
    });
}

QString PermissionColumn(int no)
{
    return QStringLiteral("r") + QString::number(no);
}

} // namespace fx
