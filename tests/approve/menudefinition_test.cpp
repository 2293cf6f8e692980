#include "approve/menudefinition.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace fx;

TEST(MenuDefinition, keys_are_unique_and_every_item_hangs_under_a_top_level_menu)
{
    QSet<QString> keys;
    for (const MenuItemDef &item : MenuItems()) {
        EXPECT_FALSE(keys.contains(item.key)) << item.key.toStdString();
        keys.insert(item.key);
        if (item.parent.isEmpty()) {
            EXPECT_FALSE(item.IsSeparator()) << item.key.toStdString();
            continue;
        }
        const MenuItemDef *parent = FindMenuItem(item.parent);
        ASSERT_NE(parent, nullptr) << item.key.toStdString();
        EXPECT_TRUE(parent->parent.isEmpty()) << item.key.toStdString();
        EXPECT_TRUE(item.key.startsWith(item.parent)) << item.key.toStdString();
    }
    EXPECT_EQ(FindMenuItem(QStringLiteral("Menu_Help_Manual"))->shortcut, QStringLiteral("F1"));
    // The recent items and their separators start hidden.
    for (const char *key : {"Menu_File_Minus_0", "Menu_File_MinusRecentProject", "Menu_File_RecentProject1",
                            "Menu_File_RecentProject10", "Menu_File_Minus_4"})
        EXPECT_FALSE(FindMenuItem(QString::fromLatin1(key))->visible) << key;
    EXPECT_EQ(FindMenuItem(QStringLiteral("Menu_File_RecentProject11")), nullptr);
}

TEST(MenuDefinition, the_dispatcher_takes_the_table_first_then_the_language_and_recent_patterns)
{
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_Lang_Editor")), MenuCommand::LanguageEditor);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_Lang_Deutsch")), MenuCommand::LanguageSwitch);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_File_RecentProject7")), MenuCommand::RecentProject);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_File_RecentProject")), MenuCommand::None);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_File_RecentProjectX")), MenuCommand::None);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_File_MinusRecentProject")), MenuCommand::None);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("Menu_Tools_Options")), MenuCommand::Options);
    EXPECT_EQ(DispatchMenuKey(QStringLiteral("menu_tools_options")), MenuCommand::None);
}

TEST(MenuDefinition, toolbar_buttons_are_found_case_aside_and_match_a_menu_command)
{
    ASSERT_EQ(ToolButtons().size(), 10);
    const ToolButtonDef *filter = FindToolButton(QStringLiteral("ApprovalFilter"));
    ASSERT_NE(filter, nullptr);
    EXPECT_EQ(filter->index, 5);
    EXPECT_EQ(FindToolButton(QString()), nullptr);
    for (const ToolButtonDef &button : ToolButtons()) {
        EXPECT_EQ(button.IsSeparator(), button.index == 6 || button.index == 9) << button.index;
        if (button.IsSeparator())
            continue;
        bool inMenu = false;
        for (const MenuItemDef &item : MenuItems())
            inMenu = inMenu || item.command == button.command;
        EXPECT_TRUE(inMenu) << button.index;
    }
    EXPECT_EQ(ApprovalStatusOfButton(1), 1);
    EXPECT_EQ(ApprovalStatusOfButton(3), 3);
    EXPECT_EQ(ApprovalStatusOfButton(4), 0);
    EXPECT_EQ(ApprovalStatusOfButton(5), -1);
    EXPECT_FALSE(IsCommandWindowBuilt(MenuCommand::Report));
    EXPECT_TRUE(IsCommandWindowBuilt(MenuCommand::Options));
    EXPECT_TRUE(IsCommandWindowBuilt(MenuCommand::ApproveReal));
}
