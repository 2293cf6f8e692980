#include "store/description.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/messages.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "store/statusmessages.h"

namespace fx {

const OptionKey &DescriptionKey(qint16 action)
{
    switch (action) {
    case 1:
    case 2:
        return option::ApprovedDescr;
    case 3:
        return option::UnapprovedDescr;
    default:
        return option::Descr;
    }
}

QString GetDescription(qint16 action, bool addUser)
{
    return Frame("GetDescription", [&] {
        QString description = GetOption(DescriptionKey(action));
        if (addUser && GetOptionFlag(option::AddUserID))
            description += QStringLiteral(": ") + GetLogonUserName();
        return description;
    });
}

DescriptionDialogModel::DescriptionDialogModel(qint16 action, bool mayChangeOptions)
    : m_action(action), m_mayChangeOptions(mayChangeOptions), m_addUserID(GetOptionFlag(option::AddUserID)),
      m_doNotOverwriteDescr(!GetOptionFlag(option::OverwriteClashDescr)),
      m_doNotChangeDescr(!GetOptionFlag(option::ChangeClashDescr)), m_neverShow(!GetOptionFlag(option::ShowDescrDialog))
{
    // The boxes first, so that the label made by the first text already knows the user box.
    SetText(GetDescription(action, false));
    m_textSelected = false;
}

QString DescriptionDialogModel::Caption() const
{
    const char *prefix = "";
    switch (m_action) {
    case 1:
        prefix = msg::DescrCaptionApproveReal;
        break;
    case 2:
        prefix = msg::DescrCaptionApproveFalse;
        break;
    case 3:
        prefix = msg::DescrCaptionUnapprove;
        break;
    default:
        break;
    }
    return TranslateText(ArgForm(msg::DescrCaption, {TranslateText(QString::fromUtf8(prefix))}));
}

void DescriptionDialogModel::SetText(const QString &text)
{
    m_text = text;
    m_textSelected = false;
    if (m_text.isEmpty() && m_action != 0) {
        m_text = QString::fromUtf8(DescriptionKey(m_action).defaultValue);
        m_textSelected = true;
    }
    m_addUserIDLabel = m_addUserID && !m_text.isEmpty()
                           ? TranslateText(ArgForm(msg::AddUserIDLabelWithText, {m_text, GetLogonUserName()}))
                           : TranslateText(QString::fromUtf8(msg::AddUserIDLabel));
}

void DescriptionDialogModel::SetAddUserID(bool on)
{
    if (AddUserIDEnabled())
        m_addUserID = on;
}

void DescriptionDialogModel::SetDoNotChangeDescr(bool on)
{
    if (!m_mayChangeOptions)
        return;
    m_doNotChangeDescr = on;
    if (on)
        m_addUserID = false;
}

void DescriptionDialogModel::Accept()
{
    Frame("frmDescription::cmdOK", [&] {
        const QString file = GetUserConfigFile();
        if (IsFileReadOnly(file))
            Raise(msg::FileWriteDenied, {file});
        SetOption(DescriptionKey(m_action), m_text);
        SetOptionFlag(option::AddUserID, m_addUserID);
        SetOptionFlag(option::OverwriteClashDescr, !m_doNotOverwriteDescr);
        SetOptionFlag(option::ChangeClashDescr, !m_doNotChangeDescr);
        SetOptionFlag(option::ShowDescrDialog, !m_neverShow);
    });
}

} // namespace fx
