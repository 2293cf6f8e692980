#include "store/savechanges.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/messagebox.h"
#include "frame/translation.h"
#include "pds/projectschema.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/messages.h"
#include "store/savetoproject.h"

namespace fx {

SaveChangesDialogModel::SaveChangesDialogModel()
    : m_projectEnabled(IsPermissionGranted(PermissionSaveChangesNo) && IsSchemaAvailable())
    , m_selected(m_projectEnabled ? SaveChangesToProject : SaveChangesToFile)
{
}

QString SaveChangesDialogModel::Caption() const
{
    return TranslateText(QString::fromLatin1(msg::SaveChangesCaption));
}

QString SaveChangesDialogModel::Label() const
{
    const QString nots = GetClashesChanged() ? QString() : TranslateText(QString::fromLatin1(msg::SaveChangesNot));
    return TranslateText(ArgForm(msg::SaveChangesLabel, {GetProjectName(), nots}));
}

bool SaveChangesDialogModel::IsOptionEnabled(int option) const
{
    if (option == SaveChangesToProject)
        return m_projectEnabled;
    return option == SaveChangesToFile || option == SaveChangesDiscard;
}

void SaveChangesDialogModel::SelectOption(int option)
{
    if (IsOptionEnabled(option))
        m_selected = option;
}

bool SaveChangesDialogModel::Accept()
{
    if (m_selected != SaveChangesToFile
        && ShowMessage(QString::fromLatin1(msg::AreYouSure), MbYesNo | MbIconQuestion | MbDefButton2) != IdYes)
        return false;
    m_status = m_selected;
    return true;
}

QString DefaultClashFileName()
{
    const QString clashFile = GetClashFile();
    if (!clashFile.isEmpty())
        return clashFile;
    const QString name = GetProjectName() + QStringLiteral("_clashes.fxdb");
    if (!IsSchemaAvailable())
        return name;
    try {
        return GetProjectDirectory(GetProjectName()) + name;
    } catch (const Failure &failure) {
        // Only a place offered: the user still picks one, so the reason goes to the log.
        LogMessage(failure.Description());
        return name;
    }
}

bool ApplySaveChangesStatus(int status, const std::function<QString(const QString &offered)> &askFile)
{
    return Frame("ApplySaveChangesStatus", [&] {
        switch (status) {
        case SaveChangesToProject:
            SaveClashes2PDS();
            break;
        case SaveChangesToFile: {
            const QString file = askFile ? askFile(DefaultClashFileName()) : QString();
            if (file.isEmpty())
                return false;
            SaveClashes2File(file);
            break;
        }
        case SaveChangesDiscard:
            return true;
        default:
            return false;
        }
        SetClashesChanged(false);
        return true;
    });
}

} // namespace fx
