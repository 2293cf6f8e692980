// The project tree's view offscreen: opening a node reads its level, a click ticks, a partly
// ticked node is drawn on the button face, a dropped list is imported and any other file is
// refused; a screenshot of it all in the build's screenshots folder.

#include "../treefixture.h"

#include "check/projecttree.h"
#include "check/ui/projecttreeview.h"
#include "frame/processstate.h"
#include "store/clashstore.h"
#include "support/recordingmessagebox.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QStyle>
#include <QTest>
#include <QUrl>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;
using fxtest::Key;

namespace {

const QString kPiping = Key({{"Discipline", "1"}});
const QString kPA1 = Key({{"Discipline", "1"}, {"Area", "11"}});
const QString kP1101 = Key({{"Discipline", "1"}, {"Area", "11"}, {"Model", "P1101"}});
const QString kStructural = Key({{"Discipline", "3"}});

class TreeView : public fxtest::HandMadeProject
{
protected:
    void SetUp() override
    {
        HandMadeProject::SetUp();
        Process().BatchMode = false;
        // The hand-made project is also the open store, for the lists dropped on the view.
        ClashStore().ProjectDefinition.name = u"P"_s;
        ClashStore().ClashConnection = std::make_unique<SqliteDb>(box.Temp() + u"project.db"_s);
        window.resize(360, 420);
        auto *layout = new QVBoxLayout(&window);
        view = new ProjectTreeView(&window);
        layout->addWidget(view);
        tree.SetSource(Source());
        view->SetTreeModel(&tree);
        window.show();
        tree.TreeInit();
    }

    void TearDown() override { FreeClashes(); }

    QModelIndex At(const QString &key) const { return tree.IndexOfKey(key); }

    // A left click on the check box of a node.
    void ClickCheckBox(const QModelIndex &index)
    {
        view->scrollTo(index);
        QStyleOptionViewItem option;
        option.initFrom(view);
        option.rect = view->visualRect(index);
        option.features |= QStyleOptionViewItem::HasCheckIndicator;
        const QRect box = view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, view);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, box.center());
    }

    // The colour behind the text of a node, at the right end of its row.
    QColor Background(const QModelIndex &index)
    {
        const QImage image = view->viewport()->grab().toImage();
        const QRect rect = view->visualRect(index);
        return image.pixelColor(view->viewport()->width() - 4, rect.center().y());
    }

    // Drops `file` on the view as a file manager would.
    void Drop(const QString &file)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        const QPointF at = view->viewport()->rect().center();
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
    }

    // The model outlives the window that shows it.
    ProjectTreeModel tree;
    QWidget window;
    ProjectTreeView *view = nullptr;
};

TEST_F(TreeView, opening_a_node_reads_its_level_and_a_click_on_a_check_box_ticks_with_the_rules_of_the_tree)
{
    EXPECT_TRUE(view->isExpanded(tree.RootIndex()));
    view->expand(At(kPiping));
    EXPECT_FALSE(tree.IsUnopened(At(kPiping)));
    EXPECT_TRUE(At(kPiping).data(ProjectTreeModel::ExpandedRole).toBool());
    view->expand(At(kPA1));
    ASSERT_TRUE(At(kP1101).isValid());
    view->collapse(At(kPiping));
    EXPECT_FALSE(At(kPiping).data(ProjectTreeModel::ExpandedRole).toBool());
    view->expand(At(kPiping));

    ClickCheckBox(At(kP1101));
    EXPECT_EQ(At(kP1101).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(At(kPA1).data(Qt::CheckStateRole).toInt(), Qt::PartiallyChecked);
    ClickCheckBox(At(kStructural));
    EXPECT_EQ(At(kStructural).data(Qt::CheckStateRole).toInt(), Qt::Checked);

    // A partly ticked node lies on the button face; a wholly ticked one on the base.
    const QPalette palette = view->palette();
    ASSERT_NE(palette.button().color(), palette.base().color());
    EXPECT_EQ(Background(At(kPA1)), palette.button().color());
    EXPECT_EQ(Background(At(kPiping)), palette.button().color());
    EXPECT_EQ(Background(At(kStructural)), palette.base().color());
    EXPECT_EQ(Background(At(kP1101)), palette.base().color());

    QDir().mkpath(QStringLiteral(FENDRIX_SCREENSHOT_DIR));
    EXPECT_TRUE(window.grab().save(QStringLiteral(FENDRIX_SCREENSHOT_DIR "/projecttreeview.png")));

    // A click on a partly ticked node ticks it and everything below it.
    ClickCheckBox(At(kPA1));
    EXPECT_EQ(At(kPA1).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(Background(At(kPA1)), palette.base().color());
}

TEST_F(TreeView, a_dropped_list_ticks_its_models_and_another_file_is_refused)
{
    fxtest::RecordingMessageBox boxes;
    QStringList imported;
    QObject::connect(view, &ProjectTreeView::FileImported, view,
                     [&](const QString &file, int count) { imported << file + u":"_s + QString::number(count); });
    const QString list = box.WriteFile(u"models.TXT"_s, "P1101\r\nS3201\r\n");
    Drop(list);
    EXPECT_EQ(imported, QStringList{list + u":2"_s});
    EXPECT_TRUE(boxes.boxes.empty());
    EXPECT_EQ(At(kP1101).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(At(kPiping).data(Qt::CheckStateRole).toInt(), Qt::PartiallyChecked);
    EXPECT_TRUE(window.isEnabled());

    const QString other = box.WriteFile(u"models.csv"_s, "P1102\n");
    Drop(other);
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_EQ(boxes.boxes.front().text, u"Incorrect file: '%1'"_s.arg(other));
    EXPECT_EQ(imported.size(), 1);

    // An empty list is refused by ImportFile, and shown.
    Drop(box.WriteFile(u"empty.txt"_s, "\r\n"));
    ASSERT_EQ(boxes.boxes.size(), 2u);
    EXPECT_TRUE(boxes.boxes.back().text.contains(u"is empty"_s)) << boxes.boxes.back().text.toStdString();

    // Drops can be turned off.
    view->SetFileDropEnabled(false);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(list)});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(TreeView, a_level_that_cannot_be_read_is_shown_as_a_failure_and_keeps_its_placeholder)
{
    fxtest::RecordingMessageBox boxes;
    Db().Execute(u"DROP TABLE pdtable_116;"_s);
    view->expand(At(kStructural));
    ASSERT_EQ(boxes.boxes.size(), 1u);
    EXPECT_TRUE(tree.IsUnopened(At(kStructural)));
    EXPECT_TRUE(boxes.boxes.front().text.contains(u"pdtable_116"_s)) << boxes.boxes.front().text.toStdString();
}

TEST_F(TreeView, a_restored_state_opens_the_stored_nodes_in_the_view)
{
    const QString file = box.Root() + u"user.ini"_s;
    view->expand(At(kPiping));
    view->expand(At(kPA1));
    tree.TreeSave2INI(u"S"_s, QString(), file);

    ProjectTreeModel other(Source());
    ProjectTreeView second;
    second.SetTreeModel(&other);
    other.TreeInit();
    other.TreeLoad4INI(u"S"_s, QString(), file);
    EXPECT_TRUE(second.isExpanded(other.IndexOfKey(kPiping)));
    EXPECT_TRUE(second.isExpanded(other.IndexOfKey(kPA1)));
    EXPECT_FALSE(second.isExpanded(other.IndexOfKey(kStructural)));
    // A view given a tree that is already restored opens the same nodes.
    ProjectTreeView third;
    third.SetTreeModel(&other);
    EXPECT_TRUE(third.isExpanded(other.IndexOfKey(kPA1)));
}

} // namespace
