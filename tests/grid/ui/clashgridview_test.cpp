// The clash grid window on a simulated site: column settings of Config.ini, the automatic
// filter, typed filters and their refusals, sorting by header and the group area.

#include "frame/settings.h"
#include "grid/messages.h"
#include "grid/ui/grouparea.h"
#include "store/statusline.h"

#include "gridwindow.h"
#include "support/loglines.h"

#include <QApplication>
#include <QWindow>
#include <QMouseEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTimer>
#include <QScrollBar>

#include <algorithm>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

class GridView : public fxtest::GridWindow
{
protected:
    static QString Saved(const QString &section, const QString &column)
    {
        return GetIniValue(GetConfigFile(), section, column);
    }
    static void Save(const QString &section, const QString &column, const QString &value)
    {
        SetIniValue(GetConfigFile(), section, column, value);
    }
    // Column names in the order the header shows them.
    QStringList ShownOrder() const
    {
        QStringList names;
        for (int visual = 0; visual < Header().count(); ++visual)
            names << Model().ColumnNames().at(Header().logicalIndex(visual));
        return names;
    }
};

TEST_F(GridView, column_settings_come_back_from_config_ini_by_their_rules_and_are_saved_by_FreeGrid)
{
    GetClashes();
    const int count = int(ClashConnection().Read(u"SELECT COUNT(*) FROM pragma_table_info('clashes');"_s).Value(0, 0).toInt());
    Save(u"ColumnsOrder"_s, u"type"_s, u"0"_s);
    // An order equal to the number of columns is ignored: the column stays where it was.
    Save(u"ColumnsOrder"_s, u"comp_a"_s, QString::number(count));
    Save(u"ColumnsOrder"_s, u"comp_b"_s, u"-1"_s);
    Save(u"ColumnsWidth"_s, u"comp_a"_s, u"77"_s);
    Save(u"ColumnsWidth"_s, u"model_a"_s, u"wide"_s);
    Save(u"ColumnsWidth"_s, u"comp_b"_s, u"100000"_s);
    Save(u"ColumnsFilter"_s, u"status"_s, u"Approved"_s);
    AutoFilter(false, false);
    view->ShowClashesInGrid();

    QStringList expected = Model().ColumnNames();
    expected.move(expected.indexOf(u"type"_s), 0);
    EXPECT_EQ(ShownOrder(), expected);
    EXPECT_EQ(Header().sectionSize(Column(u"comp_a"_s)), 77);
    EXPECT_EQ(Header().sectionSize(Column(u"model_a"_s)), Header().defaultSectionSize());
    // A width not smaller than the grid's own sizes the column to its contents.
    EXPECT_LT(Header().sectionSize(Column(u"comp_b"_s)), Table().width());
    EXPECT_EQ(view->FilterText(u"status"_s), QString());
    EXPECT_EQ(Model().rowCount(), StoreCount(u"1"_s));

    // What the user changed goes back to Config.ini when the grid is freed, and comes back.
    Header().moveSection(Header().visualIndex(Column(u"model_b"_s)), 1);
    Header().resizeSection(Column(u"model_b"_s), 133);
    const QString model = Cell(0, u"model_b"_s);
    view->SetFilterText(u"model_b"_s, model);
    view->SetFilterText(u"status"_s, u"Unapproved"_s);
    const QStringList order = ShownOrder();
    view->FreeGrid();
    EXPECT_FALSE(view->IsOpen());
    EXPECT_EQ(view->Caption(), QString());
    EXPECT_EQ(Saved(u"ColumnsOrder"_s, u"model_b"_s), u"1"_s);
    EXPECT_EQ(Saved(u"ColumnsWidth"_s, u"model_b"_s), u"133"_s);
    EXPECT_EQ(Saved(u"ColumnsFilter"_s, u"model_b"_s), model);
    EXPECT_EQ(Saved(u"ColumnsFilter"_s, u"status"_s), u"Unapproved"_s);
    EXPECT_EQ(Saved(u"ColumnsOrder"_s, u"clash_id"_s), QString::number(order.indexOf(u"clash_id"_s)));

    view->ShowClashesInGrid();
    EXPECT_EQ(ShownOrder(), order);
    EXPECT_EQ(Header().sectionSize(Column(u"model_b"_s)), 133);
    EXPECT_EQ(view->FilterText(u"model_b"_s), model);
    EXPECT_EQ(view->FilterText(u"status"_s), QString());
    EXPECT_EQ(Model().rowCount(), StoreCount(u"model_b LIKE "_s + DBQuote(u"%"_s + model)));
}

TEST_F(GridView, the_automatic_filter_shows_the_unapproved_clashes_with_their_counts_unless_skipped_or_already_set)
{
    fxtest::RecordingMessageBox boxes;
    int asked = 0;
    bool skip = false;
    view->SetFilterMessageHook([&] {
        ++asked;
        return skip;
    });
    GetClashes();
    const qint64 total = StoreCount(u"1"_s);
    const qint64 unapproved = StoreCount(u"status = 'Unapproved'"_s);
    ASSERT_GT(unapproved, 0);
    ASSERT_LT(unapproved, total);
    view->ShowClashesInGrid();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(view->FilterText(u"status"_s), u"Unapproved"_s);
    EXPECT_EQ(Model().rowCount(), unapproved);
    EXPECT_EQ(fxtest::LogLineCount(QString::fromLatin1(msg::GridSettingAutomaticFilter)), 1);
    const QString filtered = u"; Filtered: %1 clashes (approved: 0; unapproved: %1)"_s.arg(unapproved);
    EXPECT_TRUE(view->Caption().startsWith(u"Total: %1 clashes"_s.arg(total))) << view->Caption().toStdString();
    EXPECT_TRUE(view->Caption().endsWith(filtered)) << view->Caption().toStdString();
    // Counted from the rows read for the grid, the caption is what the store counts.
    view->SetFilterText(u"discipline_a"_s, u"Piping"_s);
    EXPECT_EQ(view->Caption(), ClashCountsCaption());
    view->SetFilterText(u"status"_s, QString());
    EXPECT_EQ(view->Caption(), ClashCountsCaption());
    EXPECT_TRUE(view->Caption().contains(u"Filtered"_s));
    view->SetFilterText(u"discipline_a"_s, QString());
    view->SetFilterText(u"status"_s, u"Unapproved"_s);

    // A status filter in place survives a rebuild, and the message is not asked again.
    view->SetFilterText(u"status"_s, u"App*"_s);
    view->ShowClashesInGrid();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(view->FilterText(u"status"_s), u"App*"_s);
    EXPECT_EQ(Model().rowCount(), total - unapproved);

    // Skipped in the message: all clashes, and the caption without a filtered part.
    view->FreeGrid();
    skip = true;
    view->ShowClashesInGrid();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(view->FilterText(u"status"_s), QString());
    EXPECT_EQ(Model().rowCount(), total);
    EXPECT_FALSE(view->Caption().contains(u"Filtered"_s));
    EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(GridView, a_typed_filter_takes_quotes_and_wildcards_as_text_and_keeps_the_current_clash)
{
    ShowAll();
    ClashConnection().Execute(u"UPDATE clashes SET comp_a = 'O''Neil pipe ' || clash_id WHERE clash_id % 7 = 0;"_s);
    view->RefreshClashes();
    const qint64 quoted = StoreCount(u"clash_id % 7 = 0"_s);
    const QList<qint64> all = Ids();
    qint64 kept = -1;
    for (qsizetype i = all.size() / 2; i < all.size() && kept < 0; ++i)
        kept = all.at(i) % 7 == 0 ? all.at(i) : -1;
    ASSERT_GT(kept, 0);

    view->SetFilterText(u"comp_a"_s, u"O'Neil*"_s);
    EXPECT_EQ(Model().rowCount(), quoted);
    view->SetFilterText(u"comp_a"_s, u"*Neil pipe 1*"_s);
    EXPECT_EQ(Model().rowCount(), StoreCount(u"clash_id % 7 = 0 AND comp_a LIKE '%pipe 1%'"_s));
    // "_" and "%" typed by the user are characters, not wildcards.
    view->SetFilterText(u"comp_a"_s, u"_Neil%"_s);
    EXPECT_EQ(Model().rowCount(), 0);
    view->SetFilterText(u"comp_a"_s, QString());
    EXPECT_EQ(Ids(), all);

    const int column = Column(u"comp_a"_s);
    Table().setCurrentIndex(Model().index(Model().RowOfClash(kept), column));
    // Without a wildcard of its own the text matches at the end.
    view->SetFilterText(u"comp_a"_s, u"'Neil pipe "_s + QString::number(kept));
    EXPECT_EQ(Ids(), QList<qint64>{kept});
    EXPECT_EQ(view->CurrentClashId(), kept);
    EXPECT_EQ(Table().currentIndex().column(), column);
    view->SetFilterText(u"comp_a"_s, QString());
    EXPECT_EQ(Ids(), all);
    EXPECT_EQ(view->CurrentClashId(), kept);
}

TEST_F(GridView, a_refused_filter_is_shown_and_its_cell_emptied_and_the_grid_goes_on)
{
    fxtest::RecordingMessageBox boxes;
    ShowAll();
    const qint64 total = Model().rowCount();
    view->SetFilterText(u"recent_review_date"_s, u"2024*"_s);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes[0].text, u"Filtering 'recent_review_date' is not available"_s);
    EXPECT_EQ(view->FilterText(u"recent_review_date"_s), QString());
    EXPECT_EQ(Model().rowCount(), total);
    // That column has no drop-down; the others have one.
    EXPECT_EQ(Table().findChild<QAction *>(u"dropDown_recent_review_date"_s), nullptr);
    EXPECT_NE(Table().findChild<QAction *>(u"dropDown_comp_a"_s), nullptr);

    // A statement the store refuses: the message, the cell emptied, the rows as they were.
    view->SetFilterText(u"type"_s, Cell(0, u"type"_s));
    const qint64 typed = Model().rowCount();
    ClashConnection().Execute(u"ALTER TABLE clashes RENAME TO clashes_away;"_s);
    view->SetFilterText(u"model_a"_s, u"x"_s);
    ClashConnection().Execute(u"ALTER TABLE clashes_away RENAME TO clashes;"_s);
    ASSERT_EQ(boxes.boxes.size(), 2u);
    EXPECT_TRUE(boxes.boxes[1].text.contains(u"clashes"_s)) << boxes.boxes[1].text.toStdString();
    EXPECT_EQ(view->FilterText(u"model_a"_s), QString());
    EXPECT_EQ(view->FilterText(u"type"_s), Cell(0, u"type"_s));
    EXPECT_EQ(Model().rowCount(), typed);
    view->SetFilterText(u"type"_s, QString());
    EXPECT_EQ(Model().rowCount(), total);
}

TEST_F(GridView, a_header_click_sorts_ascending_and_every_later_click_descending_keeping_the_clash)
{
    ShowAll();
    const int column = Column(u"comp_b"_s);
    const qint64 kept = Model().ClashIdOfRow(40);
    view->SelectClashes({kept});
    auto sortedBy = [&](bool descending) {
        QStringList values;
        for (int row = 0; row < Model().rowCount(); ++row)
            values << Cell(row, u"comp_b"_s).toLower();
        return std::is_sorted(values.begin(), values.end(), [&](const QString &a, const QString &b) {
            return descending ? a > b : a < b;
        });
    };
    view->ClickHeader(u"comp_b"_s);
    EXPECT_TRUE(sortedBy(false));
    EXPECT_EQ(Header().sortIndicatorSection(), column);
    EXPECT_EQ(Header().sortIndicatorOrder(), Qt::AscendingOrder);
    EXPECT_EQ(view->CurrentClashId(), kept);
    for (int click = 2; click <= 3; ++click) {
        view->ClickHeader(u"comp_b"_s);
        EXPECT_TRUE(sortedBy(true)) << "click " << click;
        EXPECT_EQ(Header().sortIndicatorOrder(), Qt::DescendingOrder);
        EXPECT_EQ(view->CurrentClashId(), kept);
    }
}

TEST_F(GridView, headers_dropped_on_the_group_area_group_the_rows_and_a_chip_removes_its_column)
{
    ShowAll();
    EXPECT_EQ(view->GridText(), QString::fromLatin1(msg::GridDragHeaderHint));
    Screenshot(*view, u"unfiltered"_s);
    view->SetGroupColumns({u"discipline_a"_s, u"model_a"_s});
    EXPECT_EQ(view->GroupColumns(), (QStringList{u"discipline_a"_s, u"model_a"_s}));
    EXPECT_EQ(Model().GroupColumns(), view->GroupColumns());
    // One closed band per discipline, null included.
    const int disciplines = ClashConnection().Read(u"SELECT COUNT(*) FROM (SELECT 1 FROM clashes GROUP BY discipline_a);"_s).Value(0, 0).toInt();
    ASSERT_GT(disciplines, 1);
    EXPECT_EQ(Model().rowCount(), disciplines);
    EXPECT_TRUE(Model().IsBand(disciplines - 1));

    auto *chip = view->findChild<QAbstractButton *>(u"group_discipline_a"_s);
    ASSERT_NE(chip, nullptr);
    chip->click();
    EXPECT_EQ(view->GroupColumns(), QStringList{u"model_a"_s});
    EXPECT_EQ(Model().GroupColumns(), QStringList{u"model_a"_s});
    // A header dropped on the area adds a group column.
    auto *area = view->findChild<GroupArea *>();
    ASSERT_NE(area, nullptr);
    QMimeData mime;
    mime.setData(QLatin1String(GridColumnMimeType), "type");
    QDragEnterEvent enter(area->rect().center(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(area->rect().center()), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(area, &drop);
    EXPECT_EQ(view->GroupColumns(), (QStringList{u"model_a"_s, u"type"_s}));

    // A header dragged up out of the header leaves as a drag for the area: the header's own
    // move of the section ends where it began, and no click sorts.
    view->SetGroupColumns({});
    const QStringList order = ShownOrder();
    const QPoint press(Header().sectionViewportPosition(Column(u"comp_a"_s)) + 20, 5);
    auto mouse = [&](QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, Header().viewport()->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(Header().viewport(), &event);
    };
    // The drag runs until a release; offscreen it finds no target, so it ends with none.
    QTimer::singleShot(50, view.get(), [&] {
        const QPoint at(10, 10);
        QCoreApplication::postEvent(view->windowHandle(), new QMouseEvent(QEvent::MouseButtonRelease, QPointF(at),
                                                                          QPointF(view->mapToGlobal(at)), Qt::LeftButton,
                                                                          Qt::NoButton, Qt::NoModifier));
    });
    mouse(QEvent::MouseButtonPress, press, Qt::LeftButton);
    mouse(QEvent::MouseMove, press + QPoint(150, -3), Qt::LeftButton);
    mouse(QEvent::MouseMove, press + QPoint(150, -40), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, press + QPoint(150, -40), Qt::NoButton);
    EXPECT_EQ(ShownOrder(), order);
    EXPECT_EQ(Header().sortIndicatorSection(), -1);
    EXPECT_EQ(view->GroupColumns(), QStringList());

    // Without groups the rows are the clashes again.
    EXPECT_EQ(Model().rowCount(), StoreCount(u"1"_s));
    EXPECT_EQ(view->GridText(), QString::fromLatin1(msg::GridDragHeaderHint));
}

} // namespace
