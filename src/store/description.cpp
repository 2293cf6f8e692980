#include "store/description.h"

#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/messages.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "store/statusmessages.h"

namespace fx {

namespace {

QString Read(const ConfigKey &key)
{
    return ReadConfigKey(GetUserConfigFile(), key);
}

void Write(const ConfigKey &key, const QString &value)
{
    WriteConfigKey(GetUserConfigFile(), key, value);
}

} // namespace

bool GetDescrFlag(const ConfigKey &key)
{
    return Read(key) != QLatin1String("0");
}

void SetDescrFlag(const ConfigKey &key, bool on)
{
    Write(key, on ? QStringLiteral("1") : QStringLiteral("0"));
}

QString GetDescrText(const ConfigKey &key)
{
    return Read(key);
}

void SetDescrText(const ConfigKey &key, const QString &text)
{
    Write(key, text);
}

const ConfigKey &DescriptionKey(qint16 action)
{
    switch (action) {
    case 1:
    case 2:
        return descrkey::ApprovedDescr;
    case 3:
        return descrkey::UnapprovedDescr;
    default:
        return descrkey::Descr;
    }
}

QString GetDescription(qint16 action, bool addUser)
{
    return Frame("GetDescription", [&] {
        QString description = GetDescrText(DescriptionKey(action));
        if (addUser && GetDescrFlag(descrkey::AddUserID))
            description += QStringLiteral(": ") + GetLogonUserName();
        return description;
    });
}

DescriptionDialogModel::DescriptionDialogModel(qint16 action, bool mayChangeOptions)
    : m_action(action), m_mayChangeOptions(mayChangeOptions), m_addUserID(GetDescrFlag(descrkey::AddUserID)),
      m_doNotOverwriteDescr(!GetDescrFlag(descrkey::OverwriteClashDescr)),
      m_doNotChangeDescr(!GetDescrFlag(descrkey::ChangeClashDescr)), m_neverShow(!GetDescrFlag(descrkey::ShowDescrDialog))
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
        SetDescrText(DescriptionKey(m_action), m_text);
        SetDescrFlag(descrkey::AddUserID, m_addUserID);
        SetDescrFlag(descrkey::OverwriteClashDescr, !m_doNotOverwriteDescr);
        SetDescrFlag(descrkey::ChangeClashDescr, !m_doNotChangeDescr);
        SetDescrFlag(descrkey::ShowDescrDialog, !m_neverShow);
    });
}

} // namespace fx
