#include "frame/ui/controllock.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QToolBar>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

using namespace fx;

namespace {

template <typename Control>
Control *Add(QWidget *parent, const char *name)
{
    auto *control = new Control(parent);
    control->setObjectName(QString::fromLatin1(name));
    parent->layout()->addWidget(control);
    return control;
}

QAction *AddAction(QMenu *menu, const char *key)
{
    QAction *action = menu->addAction(QString::fromLatin1(key));
    action->setObjectName(QString::fromLatin1(key));
    return action;
}

// A main window with a menu, a tool bar and controls of every kind the lock tells apart.
struct LockWindow
{
    LockWindow()
    {
        window.setObjectName(QStringLiteral("frmMain"));
        auto *central = new QWidget(&window);
        central->setObjectName(QStringLiteral("Picture1"));
        new QVBoxLayout(central);
        window.setCentralWidget(central);
        QMenu *file = window.menuBar()->addMenu(QStringLiteral("&File"));
        file->setObjectName(QStringLiteral("Menu_File"));
        open = AddAction(file, "Menu_File_Open");
        exit = AddAction(file, "Menu_File_Exit");
        QMenu *clash = window.menuBar()->addMenu(QStringLiteral("&Clash"));
        clash->setObjectName(QStringLiteral("Menu_Clash"));
        approve = AddAction(clash, "Menu_Clash_Approve");
        QMenu *lang = window.menuBar()->addMenu(QStringLiteral("&Language"));
        lang->setObjectName(QStringLiteral("Menu_Lang"));
        german = AddAction(lang, "Menu_Lang_LLGerman");
        about = AddAction(window.menuBar()->addMenu(QStringLiteral("&Help")), "Menu_Help_About");
        QToolBar *tools = window.addToolBar(QStringLiteral("Toolbar1"));
        tools->setObjectName(QStringLiteral("Toolbar1"));
        tools->addAction(approve);
        save = tools->addAction(QStringLiteral("Save"));
        save->setObjectName(QStringLiteral("Tool_Save"));

        cmdOK = Add<QPushButton>(central, "cmdOK");
        txtName = Add<QLineEdit>(central, "txtName");
        chkWasOff = Add<QCheckBox>(central, "chkWasOff");
        chkWasOff->setEnabled(false);
        cmdHelp = Add<QPushButton>(central, "cmdHelp");
        cmdClose = Add<QPushButton>(central, "cmdCloseWindow");
        lstLog = Add<QListWidget>(central, "lstLog");
        lstProjects = Add<QListWidget>(central, "lstProjects");
        lblStatus = Add<QLabel>(central, "lblStatus");
        optA = Add<QRadioButton>(central, "Option1_0");
    }

    QMainWindow window;
    QAction *open, *exit, *approve, *german, *about, *save;
    QPushButton *cmdOK, *cmdHelp, *cmdClose;
    QLineEdit *txtName;
    QCheckBox *chkWasOff;
    QListWidget *lstLog, *lstProjects;
    QLabel *lblStatus;
    QRadioButton *optA;
};

} // namespace

TEST(StaysEnabledWhileLocked, keeps_language_help_top_menus_and_the_way_out)
{
    for (const char *key : {"Menu_Lang", "Menu_Lang_LLGerman", "Menu_Lang_Editor", "Menu_Help_About", "Menu_File",
                            "Menu_Tools", "Menu_RDB", "Menu_File_Close", "Menu_File_Exit"})
        EXPECT_TRUE(StaysEnabledWhileLocked(QString::fromLatin1(key))) << key;
    // The list names whole keys: the items below a kept top menu are locked.
    for (const char *key : {"Menu_File_Open", "Menu_Tools_Options", "Menu_Clash", "Menu_File_ExitAll"})
        EXPECT_FALSE(StaysEnabledWhileLocked(QString::fromLatin1(key))) << key;
}

TEST(ControlLock, disables_what_starts_work_and_leaves_the_rest)
{
    LockWindow w;
    QAction *clashMenu = w.window.findChild<QMenu *>(QStringLiteral("Menu_Clash"))->menuAction();
    QAction *fileMenu = w.window.findChild<QMenu *>(QStringLiteral("Menu_File"))->menuAction();
    const QList<QWidget *> lockedControls{w.cmdOK, w.txtName, w.lstProjects};
    const QList<QAction *> lockedActions{w.open, w.approve, w.save, clashMenu};
    {
        const ControlLock lock(&w.window);
        for (QWidget *control : lockedControls)
            EXPECT_FALSE(control->isEnabled()) << qPrintable(control->objectName());
        for (QAction *action : lockedActions)
            EXPECT_FALSE(action->isEnabled()) << qPrintable(action->text());
        for (QAction *action : {w.exit, w.german, w.about, fileMenu})
            EXPECT_TRUE(action->isEnabled()) << qPrintable(action->text());
        for (QWidget *control : std::initializer_list<QWidget *>{w.cmdHelp, w.cmdClose, w.lstLog, w.lblStatus, w.optA})
            EXPECT_TRUE(control->isEnabled()) << qPrintable(control->objectName());
        // The container holding the controls is no control: disabling it would take the
        // help button and the labels with it.
        EXPECT_TRUE(w.window.centralWidget()->isEnabled());
    }
    for (QWidget *control : lockedControls)
        EXPECT_TRUE(control->isEnabled()) << qPrintable(control->objectName());
    for (QAction *action : lockedActions)
        EXPECT_TRUE(action->isEnabled()) << qPrintable(action->text());
    EXPECT_FALSE(w.chkWasOff->isEnabled()) << "a control disabled before stays disabled";
}

TEST(ControlLock, takes_in_the_other_windows_but_not_the_splash_and_nests)
{
    LockWindow w;
    QWidget other;
    other.setObjectName(QStringLiteral("frmApprovalFilter"));
    new QVBoxLayout(&other);
    QPushButton *apply = Add<QPushButton>(&other, "btnChangeStatus");
    QWidget splash;
    splash.setObjectName(QStringLiteral("frmSplash"));
    new QVBoxLayout(&splash);
    QPushButton *splashButton = Add<QPushButton>(&splash, "cmdSkip");
    w.open->setEnabled(false);

    auto outer = std::make_unique<ControlLock>(&w.window);
    EXPECT_FALSE(apply->isEnabled());
    EXPECT_TRUE(splashButton->isEnabled());
    {
        // A second lock inside the first finds everything disabled and leaves it so.
        const ControlLock inner(&other);
        EXPECT_FALSE(w.cmdOK->isEnabled());
    }
    EXPECT_FALSE(w.cmdOK->isEnabled());
    EXPECT_FALSE(apply->isEnabled());
    outer.reset();
    EXPECT_TRUE(w.cmdOK->isEnabled());
    EXPECT_TRUE(apply->isEnabled());
    EXPECT_FALSE(w.open->isEnabled());
}

TEST(ControlLock, survives_a_control_deleted_while_locked)
{
    LockWindow w;
    {
        const ControlLock lock(&w.window);
        delete w.txtName;
        delete w.save;
    }
    EXPECT_TRUE(w.cmdOK->isEnabled());
}
