#pragma once
// A clash grid window on a simulated SQLite site of a few hundred clashes, shown offscreen.

#include "frame/processstate.h"
#include "frame/settings.h"
#include "grid/clashgridmodel.h"
#include "grid/gridfixture.h"
#include "grid/ui/clashgridview.h"
#include "pds/localdb.h"
#include "pds/projectschema.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"

#include "../../pdssim/sitekind.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QHeaderView>
#include <QMouseEvent>
#include <QTableView>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace fxtest {

class GridWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        fx::Process().WorkDir = box.Temp();
        fx::Process().BatchMode = false;
        fx::ClearProjectCache();
        layout.emplace(ProgramSite(box.Root() + QStringLiteral("site"), project, QStringLiteral("sqlite"), 300, false,
                                   box.ProgramDir()));
        fx::InitClashes(layout->ControlFile(), project);
        view = std::make_unique<fx::ClashGridView>();
        view->resize(1200, 700);
        view->show();
    }

    void TearDown() override
    {
        view.reset();
        fx::FreeClashes();
        fx::ClearProjectCache();
        fx::Process().WorkDir.clear();
    }

    // The automatic filter's settings in the user config file.
    static void AutoFilter(bool set, bool showDialog)
    {
        const QString file = fx::GetUserConfigFile();
        fx::SetIniValue(file, QStringLiteral("AutoFilter"), QStringLiteral("SetAutoFilter"), set ? QStringLiteral("1") : QStringLiteral("0"));
        fx::SetIniValue(file, QStringLiteral("AutoFilter"), QStringLiteral("ShowFilterDialog"),
                        showDialog ? QStringLiteral("1") : QStringLiteral("0"));
    }

    // Binds the rows without the automatic filter, so that every clash is in view.
    void ShowAll()
    {
        AutoFilter(false, false);
        view->ShowClashesInGrid();
    }

    fx::ClashGridModel &Model() const { return *view->Model(); }
    QTableView &Table() const { return *view->Table(); }
    QHeaderView &Header() const { return *Table().horizontalHeader(); }
    int Column(const QString &name) const { return Model().ColumnOf(name); }
    QString Cell(int row, const QString &column) const { return Model().data(Model().index(row, Column(column))).toString(); }

    QList<qint64> Ids() const
    {
        QList<qint64> ids;
        for (int row = 0; row < Model().rowCount(); ++row)
            ids << Model().ClashIdOfRow(row);
        return ids;
    }

    // A click on a row's cell of `type`, as the mouse gives it.
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Click(Table().visualRect(Model().index(row, Column(QStringLiteral("type")))).center(), modifiers);
    }

    // A click at a place of the table's viewport, as the mouse gives it.
    void Click(const QPoint &at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, at, Table().viewport()->mapToGlobal(at), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, modifiers);
            QApplication::sendEvent(Table().viewport(), &event);
        }
    }

    static qint64 StoreCount(const QString &where)
    {
        return fx::ClashConnection().Read(QStringLiteral("SELECT COUNT(*) FROM clashes WHERE ") + where + QLatin1Char(';')).Value(0, 0).toLongLong();
    }

    // Screenshots go where the build keeps them.
    void Screenshot(QWidget &widget, const QString &name) const
    {
        const QString dir = QStringLiteral(FENDRIX_SCREENSHOT_DIR);
        QDir().mkpath(dir);
        // Layouts settle in posted events, as they would before the next paint on screen.
        QCoreApplication::processEvents();
        widget.grab().save(dir + QStringLiteral("/grid_") + name + QStringLiteral(".png"));
    }

    Sandbox box;
    const QString project = QStringLiteral("GRIDUI");
    std::optional<pdssim::SiteLayout> layout;
    std::unique_ptr<fx::ClashGridView> view;
};

} // namespace fxtest
