#pragma once
// The nodes of ProjectTreeModel, for its own source files only.

#include "check/projecttree.h"

namespace fx {

/// One node. Its place among its parent's children is `row`; children are only ever replaced
/// as a whole (the placeholder by the level's rows), so rows are set once, when added.
struct ProjectTreeModel::Node
{
    QString key;
    /// English for the root and the placeholders (translated when shown), the data otherwise.
    QString text;
    Node *parent = nullptr;
    std::vector<std::unique_ptr<Node>> children;
    int row = 0;
    TreeLevel kind = TreeLevel::None;
    /// On a placeholder, the level it stands for; None on every real node.
    TreeLevel placeholderFor = TreeLevel::None;
    bool ticked = false;
    bool partly = false;
    bool expanded = false;
    int partitionNo = -1;

    bool IsPlaceholder() const { return placeholderFor != TreeLevel::None; }
};

/// One row of a level as read, before it becomes a node.
struct ProjectTreeModel::ChildRow
{
    QString key;
    /// The key the row's own numbers make for its parent; the row is shown only under it.
    QString parentKey;
    QString text;
    TreeLevel next = TreeLevel::None;  ///< the level below it, None for a leaf
    int partitionNo = -1;
    /// Name, and number where the level's warnings have one, of the row in its warnings.
    QStringList who;
    /// The parent's number in the warning "... not exists".
    QString parentNumber;
    /// A row whose numbers could not be read: the reason of its warning.
    QString error;
    /// Left out without a word (a structural model's additional file).
    bool hidden = false;
};

} // namespace fx
