// The grouped clash grid under the user's hands: bands opened and closed by click and by key,
// drawn across the row, commands taking the selected clashes only, a header sort keeping the
// groups, and filters, refreshes and a rebuild keeping what was open and where the user was.

#include "grid/ui/gridtable.h"
#include "store/statusline.h"

#include "gridwindow.h"
#include "support/recordingmessagebox.h"

#include <QImage>
#include <QScrollBar>
#include <QTest>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class GridGroups : public fxtest::GridWindow
{
protected:
    void Key(int key) { QTest::keyClick(&Table(), Qt::Key(key)); }

    bool IsOpen(int row) const { return Model().data(Model().index(row, 0), ClashGridModel::GroupOpenRole).toBool(); }

    int Level(int row) const { return Model().data(Model().index(row, 0), ClashGridModel::GroupLevelRole).toInt(); }

    // The clash ids beneath the band at `row`, up to the next band.
    QList<qint64> Beneath(int row) const
    {
        QList<qint64> ids;
        for (int at = row + 1; at < Model().rowCount() && !Model().IsBand(at); ++at)
            ids << Model().ClashIdOfRow(at);
        return ids;
    }

    // The clashes a band counts, as its text says.
    int BandCount(int row) const
    {
        const QString text = Model().data(Model().index(row, 0)).toString();
        EXPECT_TRUE(text.contains(u"(%1 clashes: "_s.arg(Model().GroupCountOfRow(row)))) << text.toStdString();
        return Model().GroupCountOfRow(row);
    }

    // The first band whose group holds more than `clashes` clashes.
    int BandOver(int clashes) const
    {
        for (int row = 0; row < Model().rowCount(); ++row)
            if (Model().IsBand(row) && BandCount(row) > clashes)
                return row;
        return -1;
    }
};

TEST_F(GridGroups, bands_open_and_close_by_click_and_key_are_drawn_across_the_row_and_commands_take_only_clashes)
{
    ShowAll();
    const QString flat = view->Caption();
    view->SetGroupColumns({u"discipline_a"_s, u"model_a"_s});
    // The status line counts clashes, not the bands in view.
    EXPECT_EQ(view->Caption(), flat);
    ASSERT_TRUE(Model().IsBand(0));
    const int outer = Model().rowCount();

    ClickRow(0);
    EXPECT_TRUE(IsOpen(0));
    ASSERT_GT(Model().rowCount(), outer);
    EXPECT_EQ(Level(1), 1);
    ClickRow(0);
    EXPECT_FALSE(IsOpen(0));
    EXPECT_EQ(Model().rowCount(), outer);
    // Ctrl selects a band without opening it.
    ClickRow(0, Qt::ControlModifier);
    EXPECT_FALSE(IsOpen(0));

    Table().setFocus();
    const int column = Column(u"comp_a"_s);
    Table().setCurrentIndex(Model().index(0, column));
    Key(Qt::Key_Right);
    EXPECT_TRUE(IsOpen(0));
    Key(Qt::Key_Right);
    EXPECT_EQ(Table().currentIndex().row(), 1);
    Key(Qt::Key_Plus);
    ASSERT_TRUE(IsOpen(1));
    // The clashes read for the group are those its band counts.
    const QList<qint64> inner = Beneath(1);
    ASSERT_FALSE(inner.isEmpty());
    EXPECT_EQ(int(inner.size()), BandCount(1));
    // On a clash Left moves a column as ever; "-" closes the clash's group and stays on its band.
    Key(Qt::Key_Down);
    EXPECT_EQ(view->CurrentClashId(), inner.front());
    Key(Qt::Key_Left);
    EXPECT_LT(Header().visualIndex(Table().currentIndex().column()), Header().visualIndex(column));
    EXPECT_TRUE(IsOpen(1));
    Key(Qt::Key_Minus);
    EXPECT_FALSE(IsOpen(1));
    EXPECT_EQ(Table().currentIndex().row(), 1);
    EXPECT_EQ(view->CurrentClashId(), -1);
    // A closed band leads up to its parent's, which "-" closes.
    Key(Qt::Key_Left);
    EXPECT_EQ(Table().currentIndex().row(), 0);
    Key(Qt::Key_Minus);
    EXPECT_EQ(Model().rowCount(), outer);

    // Selected bands stand for no clash: the commands get the clash rows alone.
    Key(Qt::Key_Right);
    static_cast<GridTable &>(Table()).SetGroupOpen(1, true);
    view->SelectClashes({});
    ClickRow(0, Qt::ControlModifier);
    EXPECT_TRUE(IsOpen(0));
    EXPECT_EQ(view->SelectedCount(), 0);
    EXPECT_TRUE(view->SelectedClashIds().isEmpty());
    ClickRow(2, Qt::ControlModifier);
    ClickRow(1, Qt::ControlModifier);
    EXPECT_EQ(view->SelectedClashIds(), QList<qint64>{inner.front()});
    EXPECT_EQ(view->SelectedCount(), 1);
    view->SelectClashes({});

    // The band is one piece across the row: its colour also under the last column, its text at the left.
    Table().scrollToTop();
    const QImage image = Table().viewport()->grab().toImage();
    const QRect band = Table().visualRect(Model().index(0, 0));
    const QColor fill = Table().palette().color(QPalette::Window);
    EXPECT_EQ(image.pixelColor(Table().viewport()->width() - 3, band.top() + 2), fill);
    int ink = 0;
    for (int x = 0; x < 200; ++x)
        for (int y = band.top(); y <= band.bottom(); ++y)
            ink += image.pixelColor(x, y).lightness() < 100 ? 1 : 0;
    EXPECT_GT(ink, 50);

    // For the eye: the first discipline open, the second of its models open too.
    static_cast<GridTable &>(Table()).SetGroupOpen(1, false);
    if (Model().IsBand(2))
        static_cast<GridTable &>(Table()).SetGroupOpen(2, true);
    Table().horizontalScrollBar()->setValue(0);
    Screenshot(*view, u"grouped_open"_s);
}

TEST_F(GridGroups, a_header_click_keeps_the_groups_and_filters_refreshes_and_rebuilds_keep_open_groups_and_the_clash)
{
    ShowAll();
    view->SetGroupColumns({u"discipline_a"_s});
    const int band = BandOver(5);
    ASSERT_GE(band, 0);
    const QVariantList path = Model().GroupPathOfRow(band);
    static_cast<GridTable &>(Table()).SetGroupOpen(band, true);
    const qint64 kept = Beneath(band).at(3);
    view->SelectClashes({kept});

    view->ClickHeader(u"comp_b"_s);
    view->ClickHeader(u"comp_b"_s);
    EXPECT_EQ(view->GroupColumns(), QStringList{u"discipline_a"_s});
    EXPECT_NE(view->findChild<QAbstractButton *>(u"group_discipline_a"_s), nullptr);
    EXPECT_EQ(Header().sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(view->CurrentClashId(), kept);

    // A filter counts within the groups; the caption's filtered count is the groups' sum.
    view->SetFilterText(u"status"_s, u"Unapproved"_s);
    EXPECT_EQ(view->Caption(), ClashCountsCaption());
    view->SetFilterText(u"status"_s, QString());
    EXPECT_EQ(view->CurrentClashId(), kept);

    // Another reviewer's change: the refresh keeps the group open and the clash current.
    ClashConnection().Execute(u"UPDATE clashes SET review_comment = 'seen' WHERE clash_id = %1;"_s.arg(kept));
    view->RefreshClashes();
    EXPECT_EQ(view->CurrentClashId(), kept);
    EXPECT_EQ(Cell(Model().RowOfClash(kept), u"review_comment"_s), u"seen"_s);
    // So does a rebuild of the grid, as a new load of the settings makes it.
    view->ShowClashesInGrid();
    EXPECT_EQ(view->GroupColumns(), QStringList{u"discipline_a"_s});
    EXPECT_EQ(view->CurrentClashId(), kept);
    EXPECT_TRUE(IsOpen(Model().RowOfGroupPath(path)));

    // A store that refuses a group's clashes: the message, the band stays closed, the grid goes on.
    fxtest::RecordingMessageBox boxes;
    const int other = Model().RowOfGroupPath(path) == 0 ? Model().rowCount() - 1 : 0;
    ASSERT_FALSE(IsOpen(other));
    ClashConnection().Execute(u"ALTER TABLE clashes RENAME TO clashes_away;"_s);
    ClickRow(other);
    ClashConnection().Execute(u"ALTER TABLE clashes_away RENAME TO clashes;"_s);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_TRUE(boxes.boxes[0].text.contains(u"clashes"_s)) << boxes.boxes[0].text.toStdString();
    EXPECT_FALSE(IsOpen(other));
    ClickRow(other);
    EXPECT_TRUE(IsOpen(other));
}

} // namespace
