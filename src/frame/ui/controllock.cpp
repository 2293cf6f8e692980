#include "frame/ui/controllock.h"

#include "frame/ui/actionkey.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSet>
#include <QTextEdit>
#include <QWidget>

namespace fx {

namespace {

const QString kSplashForm = QStringLiteral("frmSplash");

// The top-level menus and the items that end the program stay usable during long work.
const QStringList kKeptKeys = {QStringLiteral("Menu_File"),   QStringLiteral("Menu_View"),
                               QStringLiteral("Menu_Window"), QStringLiteral("Menu_Admin"),
                               QStringLiteral("Menu_RDB"),    QStringLiteral("Menu_Tools"),
                               QStringLiteral("Menu_File_Close"), QStringLiteral("Menu_File_Exit")};

bool IsLeftAloneByName(const QString &name)
{
    if (name.compare(QLatin1String("lstLog"), Qt::CaseInsensitive) == 0)
        return true;
    for (const char *part : {"help", "exit", "close", "minus"})
        if (name.contains(QLatin1String(part), Qt::CaseInsensitive))
            return true;
    return false;
}

// Only the controls a user can act with are locked; the parts Qt builds inside a control
// (named "qt_..." or not at all) follow their control.
bool IsLockable(const QWidget *widget)
{
    const QString name = widget->objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || IsLeftAloneByName(name))
        return false;
    if (qobject_cast<const QRadioButton *>(widget) || qobject_cast<const QScrollBar *>(widget))
        return false;
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget) ||
           qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const QAbstractItemView *>(widget) || qobject_cast<const QAbstractSlider *>(widget);
}

bool IsLockable(const QAction *action)
{
    const QString key = ActionKey(action);
    // Actions Qt makes inside a control (a line edit's clear button) belong to that control.
    if (key.isEmpty() || key.startsWith(QLatin1String("_q_")) || key.startsWith(QLatin1String("qt_")))
        return false;
    return !action->isSeparator() && !StaysEnabledWhileLocked(key) && !IsLeftAloneByName(key);
}

// The windows that take part: the caller's and every other named one, the splash window aside.
QList<QWidget *> LockedWindows(QWidget *form)
{
    QList<QWidget *> windows;
    if (form)
        windows.append(form->window());
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (windows.contains(top) || qobject_cast<QMenu *>(top) || top->objectName().isEmpty() ||
            top->objectName() == kSplashForm)
            continue;
        windows.append(top);
    }
    return windows;
}

} // namespace

bool StaysEnabledWhileLocked(const QString &key)
{
    return key.startsWith(QLatin1String("Menu_Lang"), Qt::CaseInsensitive) ||
           key.startsWith(QLatin1String("Menu_Help"), Qt::CaseInsensitive) ||
           kKeptKeys.contains(key, Qt::CaseInsensitive);
}

ControlLock::ControlLock(QWidget *form)
{
    QSet<QObject *> seen;
    for (QWidget *window : LockedWindows(form)) {
        const QList<QWidget *> widgets = window->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (!IsLockable(widget) || seen.contains(widget))
                continue;
            seen.insert(widget);
            // The widget's own switch, not isEnabled(), which also says whether its parent is.
            m_widgets.append(widget);
            m_widgetWasEnabled.append(!widget->testAttribute(Qt::WA_ForceDisabled));
            widget->setEnabled(false);
        }
        QList<QAction *> actions = window->findChildren<QAction *>();
        for (const QMenu *menu : window->findChildren<QMenu *>())
            actions.append(menu->menuAction());
        for (QAction *action : actions) {
            if (!IsLockable(action) || seen.contains(action))
                continue;
            seen.insert(action);
            m_actions.append(action);
            m_actionWasEnabled.append(action->isEnabled());
            action->setEnabled(false);
        }
    }
}

ControlLock::~ControlLock()
{
    for (qsizetype i = 0; i < m_widgets.size(); ++i)
        if (m_widgets[i])
            m_widgets[i]->setEnabled(m_widgetWasEnabled[i]);
    for (qsizetype i = 0; i < m_actions.size(); ++i)
        if (m_actions[i])
            m_actions[i]->setEnabled(m_actionWasEnabled[i]);
}

} // namespace fx
