#pragma once
// The project tree on screen: a QTreeView with check boxes over a
// ProjectTreeModel, for the approval filter's window (tvwTreeView of frmApprovalFilter), the
// check window and the Design Review wizard.
//
// Embedding it:
//
//     auto *view = new ProjectTreeView(this);          // object name "tvwTreeView"
//     view->SetTreeModel(&m_tree);                       // the window owns the model
//     m_tree.TreeInit();                                 // the view opens the root itself
//     m_tree.TreeLoad4INI(section, prefix);              // and the stored open nodes
//     connect(view, &ProjectTreeView::FileImported, ...); // optional: after a dropped list
//
// What the view does on its own:
// - Opening a node (click, keyboard, or setExpanded) reads its level: NodeExpand, under a wait
//   cursor; a failure is shown (ShowMessage) and the node keeps its placeholder. The opened
//   state goes to the model (ExpandedRole), where TreeSave2INI finds it.
// - A click on a check box is NodeCheck: the children follow, the parents show ticked or partly
//   ticked. A partly ticked node has the button face of the palette as background as well as
//   the partly checked box; a click on it ticks it with everything below.
// - A dropped file: one ending in ".txt" (case ignored) is given to ImportFile, with the
//   window's controls locked; any other shows "Incorrect file: '<file>'". Off with
//   SetFileDropEnabled(false).
// Everything else (ticks, saving, the ticked models) is the model's: ask it, not the view.

#include "check/projecttree.h"

#include <QPointer>
#include <QTreeView>

namespace fx {

/// A view of the project tree with check boxes, partly ticked backgrounds and list-file drops.
class ProjectTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit ProjectTreeView(QWidget *parent = nullptr);
    ~ProjectTreeView() override;

    /// Shows `model` (not owned; null shows nothing) and opens the nodes it has flagged opened.
    void SetTreeModel(ProjectTreeModel *model);
    ProjectTreeModel *TreeModel() const { return m_model; }

    /// Whether files dropped on the view are imported; on at first.
    void SetFileDropEnabled(bool enabled);
    bool IsFileDropEnabled() const { return m_fileDrop; }

    /// What a drop of `file` does: ImportFile for a ".txt" file, else the message "Incorrect
    /// file: '<file>'"; a failure is shown. True when the file was imported.
    bool DropFile(const QString &file);

Q_SIGNALS:
    /// A dropped list was imported: `count` models ticked.
    void FileImported(const QString &file, int count);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void OnExpanded(const QModelIndex &index);
    void OnCollapsed(const QModelIndex &index);
    void OpenFlaggedNodes();

    QPointer<ProjectTreeModel> m_model;
    bool m_fileDrop = true;
};

} // namespace fx
