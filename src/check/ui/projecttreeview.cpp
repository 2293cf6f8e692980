#include "check/ui/projecttreeview.h"

#include "check/importfile.h"
#include "check/messages.h"
#include "check/projecttree.h"
#include "frame/paths.h"
#include "frame/ui/controllock.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/waitcursor.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QStyledItemDelegate>

namespace fx {

namespace {

// Draws a partly ticked node on the button face, as the original's background 8000000F.
class PartlyTickedDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(ProjectTreeModel::PartlyTickedRole).toBool())
            option->backgroundBrush = option->palette.button();
    }
};

// The first local file of a drag, or an empty text.
QString DroppedFile(const QMimeData *data)
{
    if (!data || !data->hasUrls())
        return QString();
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            return url.toLocalFile();
    return QString();
}

} // namespace

ProjectTreeView::ProjectTreeView(QWidget *parent)
    : QTreeView(parent)
{
    setObjectName(QStringLiteral("tvwTreeView"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setItemDelegate(new PartlyTickedDelegate(this));
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    connect(this, &QTreeView::expanded, this, &ProjectTreeView::OnExpanded);
    connect(this, &QTreeView::collapsed, this, &ProjectTreeView::OnCollapsed);
}

ProjectTreeView::~ProjectTreeView() = default;

void ProjectTreeView::SetTreeModel(ProjectTreeModel *model)
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    setModel(model);
    if (!model)
        return;
    connect(model, &ProjectTreeModel::ExpandRequested, this, [this](const QModelIndex &index) { setExpanded(index, true); });
    OpenFlaggedNodes();
}

void ProjectTreeView::SetFileDropEnabled(bool enabled)
{
    m_fileDrop = enabled;
}

void ProjectTreeView::OpenFlaggedNodes()
{
    for (const QModelIndex &index : m_model->ExpandedIndexes())
        setExpanded(index, true);
}

void ProjectTreeView::OnExpanded(const QModelIndex &index)
{
    if (!m_model)
        return;
    m_model->setData(index, true, ProjectTreeModel::ExpandedRole);
    if (!m_model->IsUnopened(index))
        return;
    RunShowingFailure("tvwTreeView_Expand", [&] {
        WaitCursor wait;
        m_model->NodeExpand(index);
    });
}

void ProjectTreeView::OnCollapsed(const QModelIndex &index)
{
    if (m_model)
        m_model->setData(index, false, ProjectTreeModel::ExpandedRole);
}

bool ProjectTreeView::DropFile(const QString &file)
{
    bool imported = false;
    RunShowingFailure("tvwTreeView_OLEDragDrop", [&] {
        if (GetExtensionOfPath(file).compare(QLatin1String("txt"), Qt::CaseInsensitive) != 0)
            Raise(msg::ImportIncorrectFile, {file});
        if (!m_model)
            return;
        int count = 0;
        {
            // The window's controls stay locked while the list is read: events run meanwhile.
            ControlLock lock(window());
            WaitCursor wait;
            count = ImportFile(file, *m_model);
        }
        imported = true;
        Q_EMIT FileImported(file, count);
    });
    return imported;
}

void ProjectTreeView::dragEnterEvent(QDragEnterEvent *event)
{
    if (m_fileDrop && !DroppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
    else
        event->ignore();
}

void ProjectTreeView::dragMoveEvent(QDragMoveEvent *event)
{
    if (m_fileDrop && !DroppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
    else
        event->ignore();
}

void ProjectTreeView::dropEvent(QDropEvent *event)
{
    const QString file = DroppedFile(event->mimeData());
    if (!m_fileDrop || file.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    DropFile(file);
}

} // namespace fx
