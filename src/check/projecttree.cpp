#include "check/projecttree.h"

#include "check/projecttreenode.h"
#include "frame/translation.h"

namespace fx {

ProjectTreeModel::ProjectTreeModel(QObject *parent)
    : ProjectTreeModel(TreeSource{}, parent)
{
}

ProjectTreeModel::ProjectTreeModel(TreeSource source, QObject *parent)
    : QAbstractItemModel(parent)
    , m_source(std::move(source))
    , m_top(std::make_unique<Node>())
{
}

ProjectTreeModel::~ProjectTreeModel() = default;

void ProjectTreeModel::SetSource(TreeSource source)
{
    m_source = std::move(source);
}

// ---- QAbstractItemModel

ProjectTreeModel::Node *ProjectTreeModel::NodeOf(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    return static_cast<Node *>(index.internalPointer());
}

QModelIndex ProjectTreeModel::IndexOf(const Node *node) const
{
    if (!node || node == m_top.get())
        return {};
    return createIndex(node->row, 0, const_cast<Node *>(node));
}

QModelIndex ProjectTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const Node *node = parent.isValid() ? NodeOf(parent) : m_top.get();
    if (!node || column != 0 || row < 0 || size_t(row) >= node->children.size())
        return {};
    return createIndex(row, 0, node->children[size_t(row)].get());
}

QModelIndex ProjectTreeModel::parent(const QModelIndex &child) const
{
    const Node *node = NodeOf(child);
    return node ? IndexOf(node->parent) : QModelIndex();
}

int ProjectTreeModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    const Node *node = parent.isValid() ? NodeOf(parent) : m_top.get();
    return node ? int(node->children.size()) : 0;
}

int ProjectTreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant ProjectTreeModel::data(const QModelIndex &index, int role) const
{
    const Node *node = NodeOf(index);
    if (!node)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        // The root's and the placeholders' texts are the program's own, shown in the user's language.
        return node->IsPlaceholder() || node->kind == TreeLevel::Root ? TranslateText(node->text) : node->text;
    case Qt::CheckStateRole:
        if (node->IsPlaceholder())
            return {};
        return node->ticked ? (node->partly ? Qt::PartiallyChecked : Qt::Checked) : Qt::Unchecked;
    case NodeKeyRole:
        return node->key;
    case PartlyTickedRole:
        return node->ticked && node->partly;
    case PlaceholderRole:
        return node->IsPlaceholder();
    case PartitionNoRole:
        return node->partitionNo;
    case ExpandedRole:
        return node->expanded;
    case NodeKindRole:
        return int(node->kind);
    default:
        return {};
    }
}

bool ProjectTreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    Node *node = NodeOf(index);
    if (!node || node->IsPlaceholder())
        return false;
    if (role == ExpandedRole) {
        node->expanded = value.toBool();
        return true;
    }
    if (role != Qt::CheckStateRole)
        return false;
    const auto state = Qt::CheckState(value.toInt());
    if (state == Qt::PartiallyChecked)
        return false;
    NodeCheck(index, state == Qt::Checked);
    return true;
}

Qt::ItemFlags ProjectTreeModel::flags(const QModelIndex &index) const
{
    const Node *node = NodeOf(index);
    if (!node)
        return Qt::NoItemFlags;
    if (node->IsPlaceholder())
        return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
    if (node->kind == TreeLevel::Model)
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

// ---- ticks

void ProjectTreeModel::SetSubtreeTick(Node *node, bool ticked)
{
    node->ticked = ticked;
    node->partly = false;
    for (const auto &child : node->children)
        SetSubtreeTick(child.get(), ticked);
}

bool ProjectTreeModel::UpdateFromChildren(Node *node)
{
    bool anyTicked = false;
    bool anyNotWhole = false;
    bool anyChild = false;
    for (const auto &child : node->children) {
        if (child->IsPlaceholder())
            continue;
        anyChild = true;
        anyTicked = anyTicked || child->ticked;
        anyNotWhole = anyNotWhole || !child->ticked || child->partly;
    }
    // A node without children of its own (an unopened level, an area without models) keeps
    // the tick it was given.
    if (!anyChild)
        return false;
    const bool partly = anyTicked && anyNotWhole;
    if (node->ticked == anyTicked && node->partly == partly)
        return false;
    node->ticked = anyTicked;
    node->partly = partly;
    return true;
}

void ProjectTreeModel::UpdateAncestors(Node *node)
{
    // A parent whose state stays leaves every node above it as it was.
    for (Node *up = node->parent; up && up != m_top.get(); up = up->parent) {
        if (!UpdateFromChildren(up))
            break;
        EmitNodeChanged(up);
    }
}

void ProjectTreeModel::EmitNodeChanged(Node *node)
{
    const QModelIndex at = IndexOf(node);
    Q_EMIT dataChanged(at, at, {Qt::CheckStateRole, PartlyTickedRole});
}

void ProjectTreeModel::EmitSubtreeChanged(Node *node)
{
    // One signal for the node and one for each set of children: a few hundred for a whole
    // project of thousands of models.
    EmitNodeChanged(node);
    std::vector<Node *> stack{node};
    while (!stack.empty()) {
        Node *at = stack.back();
        stack.pop_back();
        if (at->children.empty())
            continue;
        Q_EMIT dataChanged(IndexOf(at->children.front().get()), IndexOf(at->children.back().get()),
                           {Qt::CheckStateRole, PartlyTickedRole});
        for (const auto &child : at->children)
            if (!child->children.empty())
                stack.push_back(child.get());
    }
}

void ProjectTreeModel::NodeCheck(const QModelIndex &index, bool ticked)
{
    Node *node = NodeOf(index);
    if (!node || node->IsPlaceholder())
        return;
    SetSubtreeTick(node, ticked);
    EmitSubtreeChanged(node);
    UpdateAncestors(node);
}

void ProjectTreeModel::NodeCheckChildren(const QModelIndex &index)
{
    Node *node = NodeOf(index);
    if (!node || node->IsPlaceholder())
        return;
    SetSubtreeTick(node, node->ticked);
    EmitSubtreeChanged(node);
}

// ---- nodes by key and index

ProjectTreeModel::Node *ProjectTreeModel::FindNode(const QString &key) const
{
    return m_keys.value(key, nullptr);
}

ProjectTreeModel::Node *ProjectTreeModel::PlaceholderOf(const Node *node)
{
    if (!node || node->children.size() != 1 || !node->children.front()->IsPlaceholder())
        return nullptr;
    return node->children.front().get();
}

QModelIndex ProjectTreeModel::RootIndex() const
{
    return m_top->children.empty() ? QModelIndex() : IndexOf(m_top->children.front().get());
}

QModelIndex ProjectTreeModel::IndexOfKey(const QString &key) const
{
    return IndexOf(FindNode(key));
}

QString ProjectTreeModel::KeyOfIndex(const QModelIndex &index) const
{
    const Node *node = NodeOf(index);
    return node ? node->key : QString();
}

TreeNodeInfo ProjectTreeModel::NodeInfo(const QModelIndex &index) const
{
    TreeNodeInfo info;
    const Node *node = NodeOf(index);
    if (!node)
        return info;
    info.key = node->key;
    info.text = node->text;
    info.kind = node->kind;
    info.partitionNo = node->partitionNo;
    switch (node->kind) {
    case TreeLevel::Discipline: info.parts = ReadDisciplineNode(node->key, node->text); break;
    case TreeLevel::SubProject: info.parts = ReadSubProjectNode(node->key, node->text); break;
    case TreeLevel::Area: info.parts = ReadAreaNode(node->key, node->text); break;
    case TreeLevel::Model: info.parts = ReadModelNode(node->key, node->text); break;
    case TreeLevel::DrawingType: info.parts = ReadDrawingTypeNode(node->key, node->text); break;
    case TreeLevel::Drawing: info.parts = ReadDrawingNode(node->key, node->text); break;
    default: break;
    }
    return info;
}

bool ProjectTreeModel::IsTicked(const QModelIndex &index) const
{
    const Node *node = NodeOf(index);
    return node && node->ticked;
}

bool ProjectTreeModel::IsPartlyTicked(const QModelIndex &index) const
{
    const Node *node = NodeOf(index);
    return node && node->ticked && node->partly;
}

bool ProjectTreeModel::IsUnopened(const QModelIndex &index) const
{
    return PlaceholderOf(NodeOf(index)) != nullptr;
}

QModelIndexList ProjectTreeModel::ExpandedIndexes() const
{
    QModelIndexList indexes;
    std::vector<const Node *> stack{m_top.get()};
    while (!stack.empty()) {
        const Node *node = stack.back();
        stack.pop_back();
        if (node->expanded)
            indexes << IndexOf(node);
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
            stack.push_back(child->get());
    }
    return indexes;
}

int ProjectTreeModel::NodeCount() const
{
    int count = 0;
    for (const Node *node : m_keys)
        count += node->IsPlaceholder() ? 0 : 1;
    return count;
}

QList<TreeNodeInfo> ProjectTreeModel::TickedNodes(TreeLevel kind) const
{
    // An unticked node has an unticked subtree: the walk leaves it.
    QList<TreeNodeInfo> nodes;
    std::vector<const Node *> stack;
    for (auto child = m_top->children.rbegin(); child != m_top->children.rend(); ++child)
        stack.push_back(child->get());
    while (!stack.empty()) {
        const Node *node = stack.back();
        stack.pop_back();
        if (!node->ticked || node->IsPlaceholder())
            continue;
        if (node->kind == kind)
            nodes << NodeInfo(IndexOf(node));
        for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
            stack.push_back(child->get());
    }
    return nodes;
}

} // namespace fx
