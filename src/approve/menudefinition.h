#pragma once
// The approval window's main menu and toolbar as data: every item, its caption (a translation
// key), its place and the command it gives. The windows build themselves from these tables.

#include <QList>
#include <QString>

namespace fx {

/// What a menu item or toolbar button does when clicked.
enum class MenuCommand {
    None,               ///< a top-level menu or a separator
    LoadClashes4PDS,
    LoadClashes4File,
    LoadSettings,
    SaveSettings,
    Save,
    SwitchToCheck,
    RecentProject,
    Exit,
    ApproveReal,
    ApproveFalse,
    Unapprove,
    SetDescription,
    ShowClash,
    EventWindow,
    Report,
    ApprovalFilter,
    PrivilegeManager,
    Options,
    LanguageEditor,
    LanguageSwitch,
    Manual,
    About,
};

/// One item of the main menu. A separator has an empty caption.
struct MenuItemDef
{
    QString key;
    const char *caption = ""; ///< English text, the translation key
    QString parent;           ///< empty for a top-level menu
    bool visible = true;
    QString shortcut;
    MenuCommand command = MenuCommand::None;

    /// True for a separator.
    bool IsSeparator() const { return *caption == '\0'; }
};

/// One button of the main toolbar; a separator has an empty key.
struct ToolButtonDef
{
    int index = 0; ///< 1 to 10, the button's place
    QString key;
    const char *toolTip = "";
    MenuCommand command = MenuCommand::None;

    /// True for a separator.
    bool IsSeparator() const { return key.isEmpty(); }
};

/// The main menu in order, the ten recent-project items included; the language items are
/// added later from the installed languages.
const QList<MenuItemDef> &MenuItems();

/// The ten toolbar buttons in order.
const QList<ToolButtonDef> &ToolButtons();

/// The item of `key`, exact match; nullptr when there is none.
const MenuItemDef *FindMenuItem(const QString &key);

/// The button of `key`, case ignored (the form says "Approvalfilter", the rules "ApprovalFilter").
const ToolButtonDef *FindToolButton(const QString &key);

/// The command a click on the item `key` gives: the table's row first, then every other
/// "Menu_Lang*" key to the language switch and "Menu_File_RecentProject<n>" to the recent load.
MenuCommand DispatchMenuKey(const QString &key);

/// False while the window behind `command` does not exist in this program yet: its items
/// are shown disabled.
bool IsCommandWindowBuilt(MenuCommand command);

/// The key of the recent-project item `number` (1 to 10).
QString RecentProjectKey(int number);

/// The status code the approval flow gives for toolbar button `index` 1 to 4: 1, 2, 3, and
/// 0 for a description only; -1 for any other button.
int ApprovalStatusOfButton(int index);

} // namespace fx
