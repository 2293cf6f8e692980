#include "frame/ui/translateform.h"

#include "frame/configkeys.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace fx;

namespace {

QString Text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// A private program folder with English.ini and a German.ini that knows some of the texts.
class TranslatedWindow : public ::testing::Test
{
protected:
    void SetUp() override
    {
        InitLanguage(Text("English"));
        QByteArray german = "[Language]\nFont=DejaVu Serif\n[General]\n";
        for (const auto &[english, translated] :
             {std::pair{"Settings", "Einstellungen"}, {"Save the file", "Datei speichern"}, {"&Options", "&Optionen"},
              {"&Tools", "&Werkzeuge"}, {"Options of the view", "Optionen der Ansicht"}})
            german += DigestStrToHexStr(Text(english)).toLatin1() + '=' + translated + '\n';
        box.WriteFile(Text("program/Language/German.ini"), german);

        window.setObjectName(Text("frmMain"));
        window.setWindowTitle(Text("Settings"));
        auto *central = new QWidget(&window);
        auto *layout = new QVBoxLayout(central);
        window.setCentralWidget(central);
        label = new QLabel(Text("Save the file"), central);
        label->setObjectName(Text("lblSave"));
        layout->addWidget(label);
        button = new QPushButton(Text("Nothing known"), central);
        button->setObjectName(Text("cmdUnknown"));
        layout->addWidget(button);
        edit = new QLineEdit(Text("Save the file"), central);
        edit->setObjectName(Text("txtName"));
        layout->addWidget(edit);
        tools = window.menuBar()->addMenu(Text("&Tools"));
        tools->setObjectName(Text("Menu_Tools"));
        options = tools->addAction(Text("&Options"));
        options->setObjectName(Text("Menu_Tools_Options"));
        options->setToolTip(Text("Options of the view"));
        QMenu *file = window.menuBar()->addMenu(Text("&File"));
        file->setObjectName(Text("Menu_File"));
        recent = file->addAction(Text("Save the file"));
        recent->setObjectName(Text("Menu_File_RecentProject1"));
        QToolBar *toolBar = window.addToolBar(Text("Toolbar1"));
        toolBar->addAction(options);
    }

    fxtest::Sandbox box;
    QMainWindow window;
    QLabel *label = nullptr;
    QPushButton *button = nullptr;
    QLineEdit *edit = nullptr;
    QMenu *tools = nullptr;
    QAction *options = nullptr;
    QAction *recent = nullptr;
};

} // namespace

TEST_F(TranslatedWindow, a_language_with_translations_changes_captions_and_keeps_the_english)
{
    SetLanguage(Text("German"));
    TranslateForm(&window);

    EXPECT_EQ(window.windowTitle(), Text("Einstellungen"));
    EXPECT_EQ(label->text(), Text("Datei speichern"));
    EXPECT_EQ(label->property(EnglishTextProperty).toString(), Text("Save the file"));
    EXPECT_EQ(label->font().family(), Text("DejaVu Serif"));
    EXPECT_EQ(button->text(), Text("Nothing known")) << "an unknown text stays English";
    EXPECT_EQ(edit->text(), Text("Save the file")) << "a text box keeps its content";
    EXPECT_EQ(tools->title(), Text("&Werkzeuge"));
    EXPECT_EQ(options->text(), Text("&Optionen"));
    EXPECT_EQ(options->property(EnglishTextProperty).toString(), Text("&Options"));
    EXPECT_EQ(options->toolTip(), Text("Optionen der Ansicht"));
    EXPECT_EQ(recent->text(), Text("Save the file")) << "a recent item shows a file name";

    // The unknown text was added to both files, so that a translator finds it.
    const QString key = DigestStrToHexStr(Text("Nothing known"));
    EXPECT_EQ(GetIniValue(LanguageDir() + Text("Mnemonic.ini"), Text("General"), key), Text("Nothing known"));
    EXPECT_EQ(GetIniValue(LanguageDir() + Text("German.ini"), Text("General"), key), Text("Nothing known"));
}

TEST_F(TranslatedWindow, switching_back_restores_the_english_texts)
{
    SetLanguage(Text("German"));
    TranslateForm(&window);
    ASSERT_EQ(label->text(), Text("Datei speichern"));

    SetLanguage(Text("English"));
    TranslateForm(&window);
    EXPECT_EQ(window.windowTitle(), Text("Settings"));
    EXPECT_EQ(label->text(), Text("Save the file"));
    EXPECT_EQ(tools->title(), Text("&Tools"));
    EXPECT_EQ(options->text(), Text("&Options"));
    EXPECT_EQ(options->toolTip(), Text("Options of the view"));

    // A control whose text the window fills itself is left alone.
    label->setProperty(NoTranslateProperty, true);
    label->setText(Text("Settings"));
    SetLanguage(Text("German"));
    TranslateMenuA(&window);
    EXPECT_EQ(options->text(), Text("&Optionen"));
    EXPECT_EQ(window.windowTitle(), Text("Settings")) << "TranslateMenuA touches the menus only";
    TranslateForm(&window);
    EXPECT_EQ(label->text(), Text("Settings"));
}

TEST_F(TranslatedWindow, the_language_menu_lists_the_language_files)
{
    QMenu menu;
    QAction *editor = menu.addAction(Text("Language editor"));
    editor->setObjectName(Text("Menu_Lang_Editor"));
    QAction *stale = menu.addAction(Text("French"));
    stale->setObjectName(Text("Menu_Lang_LLFrench"));
    QAction *after = menu.addAction(Text("Other"));
    after->setObjectName(Text("Menu_Lang_Other"));
    box.WriteFile(Text("program/Language/Mnemonic.ini"), "[General]\n");

    InitLanguageMenu(&menu);
    QStringList keys;
    for (const QAction *action : menu.actions())
        keys << action->objectName();
    EXPECT_EQ(keys, (QStringList{Text("Menu_Lang_Editor"), Text("Menu_Lang_LLEnglish"), Text("Menu_Lang_LLGerman"),
                                 Text("Menu_Lang_Other")}));
    auto *english = menu.findChild<QAction *>(Text("Menu_Lang_LLEnglish"));
    auto *german = menu.findChild<QAction *>(Text("Menu_Lang_LLGerman"));
    ASSERT_TRUE(english && german);
    EXPECT_TRUE(english->isChecked());
    EXPECT_FALSE(german->isChecked());
    EXPECT_EQ(GetIniValue(GetConfigFile(), Text("Language"), Text("Language")), Text("English"));

    window.show();
    SetLanguageFromMenu(&menu, Text("Menu_Lang_LLGerman"));
    EXPECT_FALSE(english->isChecked());
    EXPECT_TRUE(german->isChecked());
    EXPECT_EQ(CurrentLanguage(), Text("German"));
    EXPECT_EQ(ConfigLanguage(), Text("German"));
    EXPECT_EQ(label->text(), Text("Datei speichern")) << "every open window is translated";
    EXPECT_EQ(german->text(), Text("German")) << "a language's name is not translated";
}

TEST_F(TranslatedWindow, the_language_menu_needs_the_language_folder)
{
    QDir(LanguageDir()).removeRecursively();
    QMenu menu;
    EXPECT_EQ(fxtest::FailureText([&] { InitLanguageMenu(&menu); }),
              Text("InitLanguageMenu: Directory with language config files: '%0%' not exists|||") + LanguageDir());
    EXPECT_TRUE(menu.actions().isEmpty());
}
