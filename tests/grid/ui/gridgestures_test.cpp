// The clash grid window under the user's hands: selecting with Ctrl and Shift, picking an
// action discipline, the filter drop-down and its guard, the filter row following the columns,
// a refresh keeping the place, and the discipline colours as painted, in cells and lists.

#include "grid/ui/clashgriddelegate.h"
#include "grid/ui/valuepopup.h"
#include "store/clashstore.h"
#include "store/statusline.h"

#include "gridwindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTest>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

using GridGestures = fxtest::GridWindow;

TEST_F(GridGestures, rows_selected_with_ctrl_and_shift_give_their_clash_ids_in_row_order)
{
    ShowAll();
    ClickRow(5);
    ClickRow(2, Qt::ControlModifier);
    ClickRow(9, Qt::ControlModifier);
    const auto id = [&](int row) { return Model().ClashIdOfRow(row); };
    EXPECT_EQ(view->SelectedClashIds(), (QList<qint64>{id(2), id(5), id(9)}));
    EXPECT_EQ(view->CurrentClashId(), id(9));
    ClickRow(5, Qt::ControlModifier);
    EXPECT_EQ(view->SelectedClashIds(), (QList<qint64>{id(2), id(9)}));
    ClickRow(9);
    ClickRow(12, Qt::ShiftModifier);
    EXPECT_EQ(view->SelectedCount(), 4);
    EXPECT_EQ(view->SelectedClashIds(), (QList<qint64>{id(9), id(10), id(11), id(12)}));
    // A plain click leaves one row; the selection of clashes by id goes the other way.
    ClickRow(3);
    EXPECT_EQ(view->SelectedClashIds(), QList<qint64>{id(3)});
    view->SelectClashes({id(30), id(7), id(8)});
    EXPECT_EQ(view->SelectedClashIds(), (QList<qint64>{id(7), id(8), id(30)}));
    EXPECT_EQ(view->CurrentClashId(), id(30));
}

TEST_F(GridGestures, a_picked_action_discipline_is_written_with_the_review_date_and_told)
{
    ShowAll();
    int edited = 0;
    QObject::connect(view.get(), &ClashGridView::ClashesEdited, [&] { ++edited; });
    const QModelIndex cell = Model().index(4, Column(u"action_discipline"_s));
    const qint64 clash = Model().ClashIdOfRow(4);
    Table().setCurrentIndex(cell);
    Table().edit(cell);
    auto *editor = Table().findChild<QComboBox *>(u"actionDisciplineEditor"_s);
    ASSERT_NE(editor, nullptr);
    QStringList offered;
    for (int i = 0; i < editor->count(); ++i)
        offered << editor->itemText(i);
    EXPECT_EQ(offered, view->DropDownList(u"action_discipline"_s, true));
    EXPECT_TRUE(offered.contains(u"Structural"_s));
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    editor->setCurrentIndex(int(offered.indexOf(u"Structural"_s)));
    Q_EMIT editor->activated(editor->currentIndex());
    const QVariantList row = ClashConnection()
                                 .Read(u"SELECT action_discipline, recent_review_date FROM clashes WHERE clash_id = %1;"_s.arg(clash))
                                 .Rows()
                                 .value(0);
    EXPECT_EQ(row.value(0).toString(), u"Structural"_s);
    const QDateTime stamped = QDateTime::fromString(row.value(1).toString(), u"yyyy-MM-dd HH:mm:ss"_s);
    EXPECT_GE(stamped, before.addMSecs(-before.time().msec()));
    EXPECT_LE(stamped, QDateTime::currentDateTime());
    EXPECT_TRUE(GetClashesChanged());
    EXPECT_EQ(edited, 1);
    EXPECT_EQ(view->Caption(), ClashCountsCaption());
    EXPECT_EQ(Cell(4, u"action_discipline"_s), u"Structural"_s);

    // A read-only project offers no editor.
    ClashStore().ReadOnly = true;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Table().edit(Model().index(6, Column(u"action_discipline"_s)));
    EXPECT_EQ(Table().findChild<QComboBox *>(u"actionDisciplineEditor"_s), nullptr);
    EXPECT_EQ(edited, 1);
}

TEST_F(GridGestures, the_filter_drop_down_offers_the_values_in_view_and_within_a_second_the_same_list)
{
    ShowAll();
    view->SetFilterText(u"discipline_a"_s, u"Piping"_s);
    auto *button = Table().findChild<QAction *>(u"dropDown_type"_s);
    ASSERT_NE(button, nullptr);
    button->trigger();
    auto *popup = view->findChild<ValuePopup *>();
    ASSERT_NE(popup, nullptr);
    EXPECT_TRUE(popup->isVisible());
    const QStringList types = popup->Values();
    EXPECT_EQ(types, FilterValueList(u"type"_s));
    EXPECT_TRUE(types.contains(QString()));
    // Asked again at once, even for another column, the list is the one just built.
    EXPECT_EQ(view->DropDownList(u"model_b"_s, false), types);
    // The disciplines to write come from a list of their own.
    EXPECT_NE(view->DropDownList(u"action_discipline"_s, true), types);

    const QString picked = types.value(1);
    popup->Choose(picked);
    EXPECT_FALSE(popup->isVisible());
    EXPECT_EQ(view->FilterText(u"type"_s), picked);
    EXPECT_EQ(Model().rowCount(), StoreCount(u"type LIKE "_s + DBQuote(u"%"_s + picked) + u" AND discipline_a LIKE '%Piping'"_s));
    Screenshot(*view, u"filtered"_s);
}

TEST_F(GridGestures, the_filter_row_follows_widths_moves_and_horizontal_scrolling)
{
    ShowAll();
    auto placed = [&] {
        const int top = Table().horizontalHeader()->viewport()->geometry().bottom() + 1;
        for (int column = 0; column < Model().columnCount(); ++column) {
            const auto *cell = Table().findChild<QLineEdit *>(u"filter_"_s + Model().ColumnNames().at(column));
            if (!cell || cell->x() != Header().sectionViewportPosition(column) || cell->width() != Header().sectionSize(column)
                || cell->y() != top)
                return false;
        }
        return true;
    };
    EXPECT_TRUE(placed());
    Header().resizeSection(Column(u"type"_s), 250);
    EXPECT_TRUE(placed());
    Header().moveSection(Header().visualIndex(Column(u"comp_b"_s)), 0);
    EXPECT_TRUE(placed());
    Table().horizontalScrollBar()->setValue(Table().horizontalScrollBar()->maximum() / 2);
    ASSERT_GT(Header().offset(), 0);
    EXPECT_TRUE(placed());
}

TEST_F(GridGestures, a_refresh_keeps_the_current_clash_column_and_scroll_place)
{
    ShowAll();
    Table().verticalScrollBar()->setValue(100);
    Table().horizontalScrollBar()->setValue(200);
    const QModelIndex cell = Table().indexAt(QPoint(30, 30));
    ASSERT_TRUE(cell.isValid());
    Table().setCurrentIndex(cell);
    const qint64 clash = view->CurrentClashId();
    // Another reviewer's rows before it go; the clash keeps its place on screen.
    ClashConnection().Execute(u"UPDATE clashes SET type = 'gone' WHERE clash_id IN (%1, %2);"_s.arg(Model().ClashIdOfRow(0)).arg(Model().ClashIdOfRow(1)));
    view->SetFilterText(u"type"_s, Cell(cell.row(), u"type"_s));
    const qint64 rows = Model().rowCount();
    ASSERT_EQ(view->CurrentClashId(), clash);
    Table().scrollTo(Table().currentIndex(), QAbstractItemView::PositionAtCenter);
    Table().horizontalScrollBar()->setValue(200);
    const int topFiltered = Table().verticalScrollBar()->value();
    const int left = Table().horizontalScrollBar()->value();
    ASSERT_GT(left, 0);
    ClashConnection().Execute(u"UPDATE clashes SET review_comment = 'seen' WHERE clash_id = %1;"_s.arg(clash));
    view->RefreshClashes();
    EXPECT_EQ(view->CurrentClashId(), clash);
    EXPECT_EQ(Table().currentIndex().column(), cell.column());
    EXPECT_EQ(Table().verticalScrollBar()->value(), topFiltered);
    EXPECT_EQ(Table().horizontalScrollBar()->value(), left);
    EXPECT_EQ(Model().rowCount(), rows);
    EXPECT_EQ(Cell(Model().RowOfClash(clash), u"review_comment"_s), u"seen"_s);
}

TEST_F(GridGestures, disciplines_are_painted_in_their_colours_and_the_freed_grid_shows_its_text)
{
    ShowAll();
    const int column = Column(u"discipline_a"_s);
    Table().scrollTo(Model().index(0, column));
    const QImage image = Table().viewport()->grab().toImage();
    auto painted = [&](const QString &discipline, const QColor &colour) {
        for (int row = 0; row < Model().rowCount(); ++row) {
            const QRect rect = Table().visualRect(Model().index(row, column));
            if (Cell(row, u"discipline_a"_s) != discipline || !image.rect().contains(rect))
                continue;
            for (int y = rect.top(); y <= rect.bottom(); ++y)
                for (int x = rect.left(); x <= rect.right(); ++x)
                    if (image.pixelColor(x, y) == colour)
                        return true;
        }
        return false;
    };
    EXPECT_TRUE(painted(u"Piping"_s, QColor(0, 192, 0)));
    EXPECT_TRUE(painted(u"Structural"_s, QColor(255, 0, 0)));

    view->SetGridText(u"Please select project"_s);
    EXPECT_EQ(view->GridText(), QString::fromLatin1("Drag a column header here to group by that column"));
    view->FreeGrid();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(view->GridText(), u"Please select project"_s);
    EXPECT_EQ(view->Caption(), QString());
    EXPECT_EQ(Table().findChild<QLineEdit *>(u"filter_type"_s), nullptr);
}

TEST_F(GridGestures, lists_of_discipline_values_look_as_their_cells_and_one_click_on_the_arrow_opens_one)
{
    ShowAll();
    const QColor piping(0, 192, 0);
    // The filter drop-down of a discipline column.
    auto *button = Table().findChild<QAction *>(u"dropDown_discipline_a"_s);
    ASSERT_NE(button, nullptr);
    button->trigger();
    auto *popup = view->findChild<ValuePopup *>();
    ASSERT_TRUE(popup && popup->isVisible());
    const QAbstractItemModel *values = popup->findChild<QListView *>()->model();
    const int at = int(popup->Values().indexOf(u"Piping"_s));
    ASSERT_GE(at, 0);
    EXPECT_EQ(values->index(at, 0).data(Qt::ForegroundRole).value<QBrush>().color(), piping);
    EXPECT_TRUE(values->index(at, 0).data(Qt::FontRole).value<QFont>().bold());
    const QImage list = popup->grab().toImage();
    bool shown = false;
    for (int y = 0; y < list.height() && !shown; ++y)
        for (int x = 0; x < list.width() && !shown; ++x)
            shown = list.pixelColor(x, y) == piping;
    EXPECT_TRUE(shown) << "the list paints Piping in its colour";
    Screenshot(*popup, u"discipline_drop_down"_s);
    popup->hide();

    // One click on the arrow of an action_discipline cell, and its list is open.
    const QModelIndex cell = Model().index(3, Column(u"action_discipline"_s));
    Table().scrollTo(cell);
    // The list keeps its editor open only while the window has the focus, as on a desktop.
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    Click(ClashGridDelegate::ArrowRect(Table().visualRect(cell)).center());
    QComboBox *editor = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (editor = Table().findChild<QComboBox *>(u"actionDisciplineEditor"_s)); }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor->view()->isVisible(); }, 2000)) << "the list dropped down";
    const int structural = editor->findText(u"Structural"_s);
    ASSERT_GE(structural, 0);
    EXPECT_EQ(editor->itemData(structural, Qt::ForegroundRole).value<QBrush>().color(), QColor(255, 0, 0));
    EXPECT_TRUE(editor->itemData(structural, Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(Table().currentIndex().row(), 3);
    Screenshot(*editor->view()->window(), u"action_discipline_list"_s);
    // A click elsewhere in the cell only selects, as before.
    editor->hidePopup();
    Q_EMIT Table().itemDelegate()->closeEditor(editor);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(Table().findChild<QComboBox *>(u"actionDisciplineEditor"_s), nullptr);
    const QModelIndex other = Model().index(5, Column(u"action_discipline"_s));
    Click(Table().visualRect(other).topLeft() + QPoint(3, 3));
    QCoreApplication::processEvents();
    EXPECT_EQ(Table().findChild<QComboBox *>(u"actionDisciplineEditor"_s), nullptr);
}

} // namespace
