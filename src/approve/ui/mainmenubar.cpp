#include "approve/ui/mainmenubar.h"

#include "approve/menudefinition.h"
#include "frame/failure.h"
#include "frame/logmessage.h"

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>

namespace fx {

namespace {

// The toolbar's pictures: the platform style's standard icons that come closest.
QIcon ButtonIcon(MenuCommand command)
{
    QStyle *style = QApplication::style();
    switch (command) {
    case MenuCommand::ApproveReal:
        return style->standardIcon(QStyle::SP_DialogApplyButton);
    case MenuCommand::ApproveFalse:
        return style->standardIcon(QStyle::SP_DialogNoButton);
    case MenuCommand::Unapprove:
        return style->standardIcon(QStyle::SP_DialogResetButton);
    case MenuCommand::SetDescription:
        return style->standardIcon(QStyle::SP_FileDialogDetailedView);
    case MenuCommand::ApprovalFilter:
        return style->standardIcon(QStyle::SP_FileDialogContentsView);
    case MenuCommand::ShowClash:
        return style->standardIcon(QStyle::SP_DesktopIcon);
    case MenuCommand::Report:
        return style->standardIcon(QStyle::SP_FileIcon);
    case MenuCommand::Save:
        return style->standardIcon(QStyle::SP_DialogSaveButton);
    default:
        return {};
    }
}

} // namespace

QAction *MainMenuBar::Find(const QString &key) const
{
    if (QAction *item = items.value(key))
        return item;
    return buttons.value(key.toLower());
}

MainMenuBar AddSystemMenuAndBar(QMainWindow *window, std::function<void(const QString &key)> onMenu,
                                std::function<void(int index)> onButton)
{
    return Frame("AddSystemMenuAndBar", [&] {
        MainMenuBar bar;
        QHash<QString, QMenu *> menus;
        for (const MenuItemDef &def : MenuItems()) {
            if (def.parent.isEmpty()) {
                QMenu *menu = window->menuBar()->addMenu(QString::fromUtf8(def.caption));
                menu->setObjectName(def.key);
                menu->menuAction()->setObjectName(def.key);
                menus.insert(def.key, menu);
                bar.items.insert(def.key, menu->menuAction());
                continue;
            }
            QMenu *parent = menus.value(def.parent);
            if (!parent)
                Raise(QStringLiteral("Menu item '%0%' has no parent '%1%'"), {def.key, def.parent});
            QAction *action = parent->addAction(QString::fromUtf8(def.caption));
            action->setObjectName(def.key);
            action->setSeparator(def.IsSeparator() && def.command == MenuCommand::None);
            action->setVisible(def.visible);
            if (!def.shortcut.isEmpty())
                action->setShortcut(QKeySequence(def.shortcut));
            if (def.command == MenuCommand::EventWindow)
                action->setCheckable(true);
            if (!IsCommandWindowBuilt(def.command))
                action->setEnabled(false);
            const QString key = def.key;
            QObject::connect(action, &QAction::triggered, window, [onMenu, key] { onMenu(key); });
            bar.items.insert(def.key, action);
        }
        bar.languageMenu = menus.value(QStringLiteral("Menu_Lang"));

        bar.toolBar = window->addToolBar(QStringLiteral("Toolbar1"));
        bar.toolBar->setObjectName(QStringLiteral("Toolbar1"));
        bar.toolBar->setMovable(false);
        for (const ToolButtonDef &def : ToolButtons()) {
            if (def.IsSeparator()) {
                bar.toolBar->addSeparator();
                continue;
            }
            QAction *button = bar.toolBar->addAction(ButtonIcon(def.command), QString());
            button->setObjectName(def.key);
            button->setToolTip(QString::fromUtf8(def.toolTip));
            if (!IsCommandWindowBuilt(def.command))
                button->setEnabled(false);
            const int index = def.index;
            QObject::connect(button, &QAction::triggered, window, [onButton, index] { onButton(index); });
            bar.buttons.insert(def.key.toLower(), button);
        }
        return bar;
    });
}

void SetMenuProperty(const MainMenuBar &bar, const QString &key, const QString &property, const QVariant &value)
{
    Frame("SetMenuProperty", [&] {
        QAction *action = bar.items.value(key);
        if (!action)
            Raise(QStringLiteral("Menu item '%0%' not found"), {key});
        const QString name = property.toLower();
        if (name == QLatin1String("caption"))
            action->setText(value.toString());
        else if (name == QLatin1String("shortcut"))
            action->setShortcut(QKeySequence(value.toString()));
        else if (name == QLatin1String("enabled"))
            action->setEnabled(value.toBool());
        else if (name == QLatin1String("checked"))
            action->setChecked(value.toBool());
        else if (name == QLatin1String("visible"))
            action->setVisible(value.toBool());
        else
            Raise(QStringLiteral("Menu property '%0%' not known"), {property});
    });
}

void ApplyEnabledStates(const MainMenuBar &bar, const QList<EnabledState> &states)
{
    for (const EnabledState &state : states)
        if (QAction *action = bar.Find(state.key))
            action->setEnabled(state.enabled);
}

} // namespace fx
