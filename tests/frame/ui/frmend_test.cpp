#include "frame/log.h"
#include "frame/processend.h"
#include "frame/ui/frmend.h"
#include "support/sandbox.h"

#include <QCloseEvent>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {
// A form that counts its unloads (close events) and can close another one as it goes.
class CountingForm : public QWidget
{
public:
    explicit CountingForm(const QString &name) { setObjectName(name); }
    int unloads = 0;
    QPointer<QWidget> alsoClose;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++unloads;
        if (alsoClose)
            alsoClose->close();
        event->accept();
    }
};
} // namespace

TEST(FrmEnd, unloads_every_form_still_shown_logs_each_and_then_quits)
{
    fxtest::Sandbox box;
    InitLog(u"T"_s, QString(), box.Temp() + u"end.log"_s);
    CountingForm toolbar(u"frmClashToolBar"_s), about(u"frmAbout"_s), hidden(u"frmDescription"_s), other(u"popup"_s);
    toolbar.show();
    about.show();
    other.show();
    int quits = 0;
    FrmEnd end([&] { ++quits; });
    end.Touch();
    EXPECT_EQ(toolbar.unloads, 0) << "the sequence waits for its timer";
    ASSERT_TRUE(QTest::qWaitFor([&] { return quits > 0; }, 5000));

    EXPECT_EQ(quits, 1);
    EXPECT_EQ(toolbar.unloads, 1);
    EXPECT_EQ(about.unloads, 1);
    // Not a form, or already unloaded (hidden): left alone.
    EXPECT_EQ(other.unloads, 0);
    EXPECT_EQ(hidden.unloads, 0);
    const QString log = QString::fromUtf8(fxtest::Sandbox::ReadFile(GetLogFile()));
    EXPECT_TRUE(log.contains(u"frmClashToolBar successfully unloaded"_s)) << qPrintable(log);
    EXPECT_TRUE(log.contains(u"frmAbout successfully unloaded"_s));
    EXPECT_FALSE(log.contains(u"frmEnd successfully"_s));
    EXPECT_FALSE(log.contains(u"frmDescription successfully"_s));
}

TEST(FrmEnd, a_form_closed_by_another_on_the_way_is_not_unloaded_twice)
{
    auto *second = new CountingForm(u"frmViewControl"_s);
    second->setAttribute(Qt::WA_DeleteOnClose);
    CountingForm first(u"frmClashToolBar"_s);
    first.alsoClose = second;
    second->show();
    first.show();
    bool quit = false;
    FrmEnd end([&] { quit = true; });
    end.Touch();
    ASSERT_TRUE(QTest::qWaitFor([&] { return quit; }, 5000));
    EXPECT_EQ(first.unloads, 1);
}

TEST(FrmEndDeathTest, with_work_in_hand_the_process_is_gone_before_the_event_loop_could_go_on)
{
    EXPECT_EXIT(
        {
            BusyScope work;
            FrmEnd end([] { std::_Exit(3); });
            end.Touch();
            QTest::qWait(5000);
            std::_Exit(4);
        },
        testing::ExitedWithCode(0), "");
}
