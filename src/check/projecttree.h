#pragma once
// The project tree as one item model, headless: the root "Models", the
// disciplines, sub-projects (piping's discipline 3 only), areas and models of a PDS project,
// each level read only when it is opened, with check boxes of three states. The approval
// filter (restricted to what has clashes) and the check window both show it through
// ProjectTreeView (check/ui/projecttreeview.h); scripts use it without any window.
//
// How to use it:
//
//     ProjectTreeModel tree(SchemaTreeSource(project));   // or StoreTreeSource()
//     tree.TreeInit();                                    // root and disciplines
//     tree.TreeLoad4INI(section, prefix);                 // ticks and open levels
//     ...                                                 // the user ticks and opens
//     tree.NodeExpandAllSelected(QStringLiteral("model"));
//     for (const TreeNodeInfo &model : tree.TickedModels()) ...
//     tree.TreeSave2INI(section, prefix);
//
// Failures (a level that cannot be read) are raised as Failure, in the frame of the operation;
// a row that cannot be shown is only logged and skipped. Drawing types and drawings have their
// keys and readers (treekeys.h), but no level of this tree reads them: nothing of the program adds
// a drawing type node yet.

#include "check/treekeys.h"
#include "check/treesource.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <memory>
#include <vector>

namespace fx {

/// One node of the tree as its key, its text and its data tell it.
struct TreeNodeInfo
{
    QString key;
    QString text;
    TreeLevel kind = TreeLevel::None;
    TreeNodeParts parts;     ///< numbers and texts of the key and the text
    int partitionNo = -1;    ///< a model's partition_no; -1 for other nodes
};

/// The project tree: one column, node keys, placeholders of unopened levels, three-state ticks.
///
/// Invariants (hold after every public call):
/// - every node's key is unique in the tree and found by IndexOfKey();
/// - a node whose level is unopened has exactly one child, its placeholder, and nothing else;
/// - a node with children (placeholders aside) is ticked when at least one of them is ticked,
///   and partly ticked when, in addition, one is unticked or partly ticked; so an unticked node
///   has an unticked subtree and a ticked node that is not partly ticked a wholly ticked one.
///   Counting a partly ticked child as "not all ticked" keeps a discipline over a partly
///   ticked area from showing, and being saved, as wholly ticked.
/// - the children of a level just read take their parent's tick.
class ProjectTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        /// QString: the node key.
        NodeKeyRole = Qt::UserRole + 1,
        /// bool: partly ticked, drawn with the button face as background (the system colour 8000000F).
        PartlyTickedRole,
        /// bool: the node is the placeholder of an unopened level ("Reading ... ...").
        PlaceholderRole,
        /// int: a model's partition_no; -1 for other nodes.
        PartitionNoRole,
        /// bool, settable: the view shows the node opened. Stored by TreeSave2INI under
        /// "Expand_"; a view keeps it by setting it on its expanded and collapsed signals.
        ExpandedRole,
        /// int: the TreeLevel of the node (None for a placeholder).
        NodeKindRole,
    };

    /// A tree with no source: TreeInit raises until SetSource() gives one.
    explicit ProjectTreeModel(QObject *parent = nullptr);
    explicit ProjectTreeModel(TreeSource source, QObject *parent = nullptr);
    ~ProjectTreeModel() override;

    /// Where the levels are read from. Takes effect at the next read; TreeInit to start anew.
    void SetSource(TreeSource source);
    const TreeSource &Source() const { return m_source; }

    // ---- QAbstractItemModel
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    /// Display: the node text (a placeholder's translated); CheckState: Unchecked, Checked or
    /// PartiallyChecked (none on a placeholder); and the roles above.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// CheckState Checked or Unchecked runs NodeCheck (PartiallyChecked is refused: it is a
    /// result of the children, never a choice); ExpandedRole sets the flag.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // ---- the operations of the tree
    /// Clears the tree, adds the root and the disciplines, each with the placeholder of its next
    /// level, logs what it read, and asks views to open the root (ExpandRequested).
    void TreeInit();
    /// Removes every node: the tree of a closed project.
    void TreeClear();
    /// Opens the level under the node: reads it, replaces the placeholder by a child for each
    /// row that can be shown (each with the placeholder of its own next level) and logs. Nothing
    /// for a node that is open or has no level below. The children take the node's tick.
    /// Lets waiting events run between rows; a second call for the same node meanwhile does
    /// nothing, and a TreeInit or TreeClear meanwhile makes it drop what it read.
    void NodeExpand(const QModelIndex &index);
    /// Gives the node the tick `ticked`, every node below it the same (NodeCheckChildren), and
    /// each node above it the tick and partly ticked state its children make.
    void NodeCheck(const QModelIndex &index, bool ticked);
    /// Copies the node's tick to every node below it and clears the partly ticked state on all
    /// of them. The nodes above are left as they are: NodeCheck is the whole click.
    void NodeCheckChildren(const QModelIndex &index);
    /// Opens, below every ticked node (partly ticked ones included), the unopened levels down to
    /// the deepest level `levels` names, and goes on into the new children. `levels` is a
    /// lower-case list such as ",area,model," or a single name ("model"); the levels on the way
    /// to a named one are opened too (sub-projects on the way to areas, areas to models).
    void NodeExpandAllSelected(const QString &levels);
    /// Stores the ticks and the opened (ExpandedRole) nodes in `section` of `file` (the user
    /// config file when empty) as the keys "Check_" + prefix and "Expand_" + prefix, replacing
    /// what they held. A wholly ticked subtree is stored by its top node alone.
    void TreeSave2INI(const QString &section, const QString &prefix, const QString &file = QString()) const;
    /// Restores what TreeSave2INI stored: every tick is taken off, the stored opened nodes are
    /// opened (NodeExpand, the levels above them first) and shown (ExpandRequested), the stored
    /// ticked nodes ticked with their subtrees (opening the levels above them as needed), and the
    /// nodes above them set from the leaves upward. A stored key that names no node of the
    /// project is ignored.
    void TreeLoad4INI(const QString &section, const QString &prefix, const QString &file = QString());

    // ---- nodes by key and index
    /// The root node ("Models"); invalid before TreeInit.
    QModelIndex RootIndex() const;
    /// The node of `key`; invalid when there is none (placeholders have keys too).
    QModelIndex IndexOfKey(const QString &key) const;
    /// The node of `key`, opening the unopened levels above it (NodeExpand) as needed; invalid
    /// when the project has no such node.
    QModelIndex ReachIndex(const QString &key);
    /// The key of a node; empty for an invalid index.
    QString KeyOfIndex(const QModelIndex &index) const;
    /// Key, text, kind, parts and partition of a node.
    TreeNodeInfo NodeInfo(const QModelIndex &index) const;
    /// The node's check mark (partly ticked nodes have it too).
    bool IsTicked(const QModelIndex &index) const;
    bool IsPartlyTicked(const QModelIndex &index) const;
    /// True when the node's level below is unopened: its one child is a placeholder.
    bool IsUnopened(const QModelIndex &index) const;
    /// The nodes flagged opened by ExpandedRole, parents before children.
    QModelIndexList ExpandedIndexes() const;
    /// Every node of the tree but the placeholders.
    int NodeCount() const;

    /// The ticked nodes of one kind (partly ticked ones included), in tree order, among the
    /// nodes read so far: call NodeExpandAllSelected first to reach them all.
    QList<TreeNodeInfo> TickedNodes(TreeLevel kind) const;
    /// TickedNodes(TreeLevel::Model).
    QList<TreeNodeInfo> TickedModels() const { return TickedNodes(TreeLevel::Model); }

Q_SIGNALS:
    /// The tree asks its views to show the node opened: the root after TreeInit, the stored
    /// nodes after TreeLoad4INI. A view that misses it finds them in ExpandedIndexes().
    void ExpandRequested(const QModelIndex &index);

private:
    struct Node;
    struct ChildRow;

    Node *NodeOf(const QModelIndex &index) const;
    QModelIndex IndexOf(const Node *node) const;
    Node *FindNode(const QString &key) const;
    static Node *PlaceholderOf(const Node *node);

    // projecttree_levels.cpp: reading and adding levels
    QList<ChildRow> ReadLevel(const QString &key, const QString &text, TreeLevel level);
    void OpenLevel(Node *node);
    int AddChildren(Node *parent, const QList<ChildRow> &rows, TreeLevel level, bool notify);
    std::unique_ptr<Node> NewNode(Node *parent, const QString &key, const QString &text, bool ticked);
    void AddPlaceholder(Node &node, TreeLevel level);
    Node *ReachNode(const QString &key);

    // projecttree.cpp: ticks
    void SetSubtreeTick(Node *node, bool ticked);
    bool UpdateFromChildren(Node *node);
    void UpdateAncestors(Node *node);
    void EmitSubtreeChanged(Node *node);
    void EmitNodeChanged(Node *node);

    TreeSource m_source;
    /// The invisible parent of the root; holds no key.
    std::unique_ptr<Node> m_top;
    QHash<QString, Node *> m_keys;
    /// Keys of the nodes whose level is being read while events run.
    QSet<QString> m_reading;
    /// Grows with every TreeInit and TreeClear: a read begun before one drops its rows.
    quint64 m_generation = 0;
};

/// The models ticked in a tree's stored state: a tree read from `source`, restored from
/// `section` and `prefix` of `file` (the user config file when empty), opened down to the
/// models, without any view. For scripts and the approval filter's rules.
QList<TreeNodeInfo> TickedModels4INI(const TreeSource &source, const QString &section, const QString &prefix,
                                     const QString &file = QString());

} // namespace fx
