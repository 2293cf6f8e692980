#pragma once
// The description that a status change gives the clashes it touches, from the "DescrDialog"
// options, and the rules of the dialog that asks for it, free of any window.

#include "store/options.h"

#include <QString>

namespace fx {

/// The key that holds the description of an action: Approved for 1 and 2, Unapproved for 3,
/// the plain one for 0.
const OptionKey &DescriptionKey(qint16 action);

/// The stored description of an action; with `addUser` and AddUserID on, ": " and the logon
/// name follow it.
QString GetDescription(qint16 action, bool addUser);

/// The state and rules of the description dialog, for the window that shows it.
class DescriptionDialogModel
{
public:
    /// Filled as the dialog opens: the stored description without the user, the boxes from
    /// the settings. `mayChangeOptions` is the user's permission "Options".
    DescriptionDialogModel(qint16 action, bool mayChangeOptions);

    /// The window's caption for the action, translated.
    QString Caption() const;

    const QString &Text() const { return m_text; }
    /// A change of the text: an emptied text of a status action falls back to its default
    /// and is then selected; the label of the user box follows.
    void SetText(const QString &text);
    /// True when the last change put the default back, which the window selects.
    bool TextSelected() const { return m_textSelected; }
    bool TextEnabled() const { return !m_doNotChangeDescr; }

    bool AddUserID() const { return m_addUserID; }
    void SetAddUserID(bool on);
    bool AddUserIDEnabled() const { return !m_doNotChangeDescr && m_mayChangeOptions; }
    /// The label of the user box, translated, as set at the last change of the text.
    const QString &AddUserIDLabel() const { return m_addUserIDLabel; }

    bool DoNotOverwriteDescr() const { return m_doNotOverwriteDescr; }
    void SetDoNotOverwriteDescr(bool on) { m_doNotOverwriteDescr = on; }

    bool DoNotChangeDescr() const { return m_doNotChangeDescr; }
    /// Ticked, it disables the text and clears the user box.
    void SetDoNotChangeDescr(bool on);
    bool DoNotChangeDescrEnabled() const { return m_mayChangeOptions; }

    bool NeverShow() const { return m_neverShow; }
    void SetNeverShow(bool on) { m_neverShow = on; }
    bool NeverShowEnabled() const { return m_mayChangeOptions; }

    /// OK: keeps what the reviewer chose as the next defaults. Raises, writing nothing, when
    /// the user config file is read-only.
    void Accept();

private:
    qint16 m_action;
    bool m_mayChangeOptions;
    QString m_text;
    bool m_textSelected = false;
    QString m_addUserIDLabel;
    bool m_addUserID;
    bool m_doNotOverwriteDescr;
    bool m_doNotChangeDescr;
    bool m_neverShow;
};

} // namespace fx
