#include "frame/ui/formplacing.h"

#include "frame/settings.h"
#include "support/sandbox.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <gtest/gtest.h>

using namespace fx;

TEST(FormPlace, a_window_comes_back_where_it_was_hidden_unless_that_lies_off_the_screen)
{
    fxtest::Sandbox box;
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect place(screen.left() + 40, screen.top() + 30, 320, 200);
    {
        QWidget form;
        KeepFormPlace(&form, QStringLiteral("frmPlaced"));
        form.setGeometry(place);
        form.show();
        form.hide();
    }
    QWidget again;
    RestoreFormPlace(&again, QStringLiteral("frmPlaced"));
    EXPECT_EQ(again.geometry(), place);

    // A place beyond the screen (another monitor, since gone) is not taken.
    QWidget wide;
    wide.setGeometry(screen.right() + 100, screen.top(), 300, 200);
    SaveFormPlace(&wide, QStringLiteral("frmGone"));
    QWidget restored;
    const QRect before = restored.geometry();
    RestoreFormPlace(&restored, QStringLiteral("frmGone"));
    EXPECT_EQ(restored.geometry(), before);
    EXPECT_EQ(GetIniValue(GetConfigFile(), QStringLiteral("frmGone"), QStringLiteral("WindowState")), QStringLiteral("0"));
}
