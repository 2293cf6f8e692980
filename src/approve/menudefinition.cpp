#include "approve/menudefinition.h"

#include "approve/messages.h"

namespace fx {

namespace {

using C = MenuCommand;

const QString kFile = QStringLiteral("Menu_File");
const QString kClash = QStringLiteral("Menu_Clash");
const QString kView = QStringLiteral("Menu_View");
const QString kTools = QStringLiteral("Menu_Tools");
const QString kLang = QStringLiteral("Menu_Lang");
const QString kHelp = QStringLiteral("Menu_Help");
const QString kRecentPrefix = QStringLiteral("Menu_File_RecentProject");

QList<MenuItemDef> BuildMenuItems()
{
    QList<MenuItemDef> items{
        {kFile, msg::MenuFile, {}, true, {}, C::None},
        {QStringLiteral("Menu_File_LoadClashes4PDS"), msg::MenuFileLoadClashes4PDS, kFile, true, {}, C::LoadClashes4PDS},
        {QStringLiteral("Menu_File_LoadClashes4File"), msg::MenuFileLoadClashes4File, kFile, true, {}, C::LoadClashes4File},
        {QStringLiteral("Menu_File_Minus_0"), "", kFile, false, {}, C::None},
        {QStringLiteral("Menu_File_LoadSettings"), msg::MenuFileLoadSettings, kFile, true, {}, C::LoadSettings},
        {QStringLiteral("Menu_File_SaveSettings"), msg::MenuFileSaveSettings, kFile, true, {}, C::SaveSettings},
        {QStringLiteral("Menu_File_Minus_1"), "", kFile, true, {}, C::None},
        {QStringLiteral("Menu_File_Save"), msg::MenuFileSave, kFile, true, {}, C::Save},
        {QStringLiteral("Menu_File_Minus_2"), "", kFile, true, {}, C::None},
        {QStringLiteral("Menu_File_Check"), msg::MenuFileCheck, kFile, true, {}, C::SwitchToCheck},
        {QStringLiteral("Menu_File_MinusRecentProject"), "", kFile, false, {}, C::None},
    };
    // The recent items have no caption until the list fills them; hidden, they are no separators.
    for (int number = 1; number <= 10; ++number)
        items.append({RecentProjectKey(number), "", kFile, false, {}, C::RecentProject});
    items.append({
        {QStringLiteral("Menu_File_Minus_4"), "", kFile, false, {}, C::None},
        {QStringLiteral("Menu_File_Exit"), msg::MenuFileExit, kFile, true, {}, C::Exit},
        {kClash, msg::MenuClash, {}, true, {}, C::None},
        {QStringLiteral("Menu_Clash_ApproveReal"), msg::MenuClashApproveReal, kClash, true, {}, C::ApproveReal},
        {QStringLiteral("Menu_Clash_ApproveFalse"), msg::MenuClashApproveFalse, kClash, true, {}, C::ApproveFalse},
        {QStringLiteral("Menu_Clash_Unapprove"), msg::MenuClashUnapprove, kClash, true, {}, C::Unapprove},
        {QStringLiteral("Menu_Clash_SetDescription"), msg::MenuClashSetDescription, kClash, true, {}, C::SetDescription},
        {QStringLiteral("Menu_Clash_Minus_0"), "", kClash, true, {}, C::None},
        {QStringLiteral("Menu_Clash_Show"), msg::MenuClashShow, kClash, true, {}, C::ShowClash},
        {kView, msg::MenuView, {}, true, {}, C::None},
        {QStringLiteral("Menu_View_EventWindow"), msg::MenuViewEventWindow, kView, true, {}, C::EventWindow},
        {kTools, msg::MenuTools, {}, true, {}, C::None},
        {QStringLiteral("Menu_Tools_Report"), msg::MenuToolsReport, kTools, true, {}, C::Report},
        {QStringLiteral("Menu_Tools_ApprovalFilter"), msg::MenuToolsApprovalFilter, kTools, true, {}, C::ApprovalFilter},
        {QStringLiteral("Menu_Tools_Minus_0"), "", kTools, true, {}, C::None},
        {QStringLiteral("Menu_Tools_PrivilegeManager"), msg::MenuToolsPrivilegeManager, kTools, true, {}, C::PrivilegeManager},
        {QStringLiteral("Menu_Tools_Options"), msg::MenuToolsOptions, kTools, true, {}, C::Options},
        {kLang, msg::MenuLang, {}, true, {}, C::None},
        {QStringLiteral("Menu_Lang_Editor"), msg::MenuLangEditor, kLang, true, {}, C::LanguageEditor},
        {QStringLiteral("Menu_Lang_Minus"), "", kLang, true, {}, C::None},
        {kHelp, msg::MenuHelp, {}, true, {}, C::None},
        {QStringLiteral("Menu_Help_Manual"), msg::MenuHelpManual, kHelp, true, QStringLiteral("F1"), C::Manual},
        {QStringLiteral("Menu_Help_Minus_0"), "", kHelp, true, {}, C::None},
        {QStringLiteral("Menu_Help_About"), msg::MenuHelpAbout, kHelp, true, {}, C::About},
    });
    return items;
}

bool IsDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

} // namespace

const QList<MenuItemDef> &MenuItems()
{
    static const QList<MenuItemDef> items = BuildMenuItems();
    return items;
}

const QList<ToolButtonDef> &ToolButtons()
{
    static const QList<ToolButtonDef> buttons{
        {1, QStringLiteral("Approve Real Clash"), msg::TipApproveReal, C::ApproveReal},
        {2, QStringLiteral("Approve False Clash"), msg::TipApproveFalse, C::ApproveFalse},
        {3, QStringLiteral("Unapprove Clash"), msg::TipUnapprove, C::Unapprove},
        {4, QStringLiteral("Description"), msg::TipSetDescription, C::SetDescription},
        {5, QStringLiteral("Approvalfilter"), msg::TipApprovalFilter, C::ApprovalFilter},
        {6, {}, "", C::None},
        {7, QStringLiteral("Show"), msg::TipShowClash, C::ShowClash},
        {8, QStringLiteral("Report"), msg::TipCreateReport, C::Report},
        {9, {}, "", C::None},
        {10, QStringLiteral("SaveChanges"), msg::TipSaveChanges, C::Save},
    };
    return buttons;
}

const MenuItemDef *FindMenuItem(const QString &key)
{
    for (const MenuItemDef &item : MenuItems())
        if (item.key == key)
            return &item;
    return nullptr;
}

const ToolButtonDef *FindToolButton(const QString &key)
{
    for (const ToolButtonDef &button : ToolButtons())
        if (!button.IsSeparator() && button.key.compare(key, Qt::CaseInsensitive) == 0)
            return &button;
    return nullptr;
}

MenuCommand DispatchMenuKey(const QString &key)
{
    if (const MenuItemDef *item = FindMenuItem(key); item && item->command != C::RecentProject)
        return item->command;
    if (key.startsWith(kLang))
        return C::LanguageSwitch;
    if (key.size() > kRecentPrefix.size() && key.startsWith(kRecentPrefix) && IsDigit(key.at(kRecentPrefix.size())))
        return C::RecentProject;
    return C::None;
}

bool IsCommandWindowBuilt(MenuCommand command)
{
    switch (command) {
    case C::SwitchToCheck:
    case C::ShowClash:
    case C::Report:
    case C::ApprovalFilter:
    case C::PrivilegeManager:
    case C::LanguageEditor:
        return false;
    default:
        return true;
    }
}

QString RecentProjectKey(int number)
{
    return kRecentPrefix + QString::number(number);
}

int ApprovalStatusOfButton(int index)
{
    switch (index) {
    case 1:
    case 2:
    case 3:
        return index;
    case 4:
        return 0;
    default:
        return -1;
    }
}

} // namespace fx
