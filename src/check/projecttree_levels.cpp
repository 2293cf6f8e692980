// Reading the levels of the project tree: TreeInit, NodeExpand, NodeExpandAllSelected.

#include "check/projecttree.h"

#include "check/messages.h"
#include "check/projecttreenode.h"
#include "check/treestatements.h"
#include "frame/events.h"
#include "frame/failure.h"
#include "frame/logmessage.h"

#include <QSet>

#include <optional>

namespace fx {

namespace {

// The warnings of one level: the parent is missing, the key is taken, anything else.
struct LevelWarnings
{
    const char *parentMissing;
    const char *notUnique;
    const char *notShown;
};

LevelWarnings WarningsOf(TreeLevel level)
{
    switch (level) {
    case TreeLevel::Discipline:
        return {msg::TreeDisciplineNotShown, msg::TreeDisciplineNotUnique, msg::TreeDisciplineNotShown};
    case TreeLevel::SubProject:
        return {msg::TreeSubProjectParentMissing, msg::TreeSubProjectNotUnique, msg::TreeSubProjectNotShown};
    case TreeLevel::Area:
        return {msg::TreeAreaParentMissing, msg::TreeAreaNotUnique, msg::TreeAreaNotShown};
    default:
        return {msg::TreeModelParentMissing, msg::TreeModelNotUnique, msg::TreeModelNotShown};
    }
}

const char *PlaceholderText(TreeLevel level)
{
    switch (level) {
    case TreeLevel::SubProject: return msg::TreeReadingSubProjects;
    case TreeLevel::Area: return msg::TreeReadingAreas;
    default: return msg::TreeReadingModels;
    }
}

// An index number of a row: NULL and text that is no whole number give the reason a
// conversion of the original would have failed with.
std::optional<qint64> IndexNumber(const QVariant &value, QString &error)
{
    if (value.isNull()) {
        error = QString::fromLatin1(msg::TreeInvalidUseOfNull);
        return std::nullopt;
    }
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    if (!ok || number != double(qint64(number))) {
        error = QString::fromLatin1(msg::TreeTypeMismatch);
        return std::nullopt;
    }
    return qint64(number);
}

QString Text(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString();
}

// The discipline and sub-project a key lies in, -1 for none.
struct KeyNumbers
{
    qint64 discipline = -1;
    qint64 subProject = -1;
    qint64 area = -1;
};

KeyNumbers NumbersOfKey(const QString &key)
{
    KeyNumbers numbers;
    for (const TreeKeyPart &part : SplitTreeKey(key)) {
        const TreeLevel level = TreeLevelOfName(part.name);
        if (level == TreeLevel::Discipline)
            numbers.discipline = part.value.toLongLong();
        else if (level == TreeLevel::SubProject)
            numbers.subProject = part.value.toLongLong();
        else if (level == TreeLevel::Area)
            numbers.area = part.value.toLongLong();
    }
    return numbers;
}

// The name part of a node text, for the log lines of a level being read.
QString NameOfText(const QString &text)
{
    const qsizetype at = text.indexOf(QLatin1String(" - "));
    return at < 0 ? text : text.left(at);
}

// The key of the discipline, and of the sub-project under it when there is one.
QString DisciplineKey(qint64 discipline, qint64 subProject)
{
    const QString key = TreeChildKey(QString(), TreeLevel::Discipline, QString::number(discipline));
    return subProject < 0 ? key : TreeChildKey(key, TreeLevel::SubProject, QString::number(subProject));
}

} // namespace

// ---- nodes

std::unique_ptr<ProjectTreeModel::Node> ProjectTreeModel::NewNode(Node *parent, const QString &key, const QString &text,
                                                                 bool ticked)
{
    auto node = std::make_unique<Node>();
    node->key = key;
    node->text = text;
    node->parent = parent;
    node->kind = TreeKindOfKey(key);
    node->ticked = ticked;
    return node;
}

void ProjectTreeModel::AddPlaceholder(Node &node, TreeLevel level)
{
    auto placeholder = NewNode(&node, TreePlaceholderKey(node.key, level), QString::fromLatin1(PlaceholderText(level)), node.ticked);
    placeholder->kind = TreeLevel::None;
    placeholder->placeholderFor = level;
    placeholder->row = 0;
    node.children.push_back(std::move(placeholder));
}

// ---- reading a level

QList<ProjectTreeModel::ChildRow> ProjectTreeModel::ReadLevel(const QString &key, const QString &text, TreeLevel level)
{
    if (!m_source.read)
        Raise(msg::TreeWithoutSource);
    // What is needed of the node is copied first: events run while the rows are taken, and
    // the node may be gone by the end.
    const KeyNumbers at = NumbersOfKey(key);
    const bool restricted = m_source.restricted;
    const TreeRowReader read = m_source.read;
    QList<ChildRow> rows;
    Recordset rs;
    switch (level) {
    case TreeLevel::Discipline:
        rs = read(TreeDisciplinesStatement(restricted));
        break;
    case TreeLevel::SubProject:
        LogMessage(msg::TreeReadingSubProjectsOf, {QString::number(at.discipline)});
        rs = read(TreeSubProjectsStatement(restricted));
        break;
    case TreeLevel::Area:
        if (at.subProject >= 0) {
            LogMessage(msg::TreeReadingAreasOfSubProject, {NameOfText(text), QString::number(at.subProject)});
            QStringList numbers;
            const Recordset areas = read(TreeSubProjectAreasStatement(at.subProject));
            for (const QVariantList &row : areas.Rows()) {
                QString error;
                if (const auto number = IndexNumber(row.at(0), error))
                    numbers << QString::number(*number);
            }
            rs = read(TreeAreasStatement(at.discipline, numbers.isEmpty() ? QStringLiteral("-1") : numbers.join(QStringLiteral(", ")),
                                         restricted));
        } else {
            LogMessage(msg::TreeReadingAreasOfDiscipline, {NameOfText(text), QString::number(at.discipline)});
            rs = read(TreeAreasStatement(at.discipline, QString(), restricted));
        }
        break;
    case TreeLevel::Model:
        LogMessage(msg::TreeReadingModelsOfArea, {NameOfText(text), QString::number(at.area)});
        rs = read(TreeModelsStatement(at.area, restricted));
        break;
    default:
        return rows;
    }

    for (const QVariantList &values : rs.Rows()) {
        ChildRow row;
        QString error;
        switch (level) {
        case TreeLevel::Discipline: {
            const QString name = Text(values.at(1));
            const auto number = IndexNumber(values.at(0), error);
            row.who = {name, number ? QString::number(*number) : Text(values.at(0))};
            if (number) {
                row.parentKey = TreeRootKey();
                row.key = DisciplineKey(*number, -1);
                // Piping's discipline 3 has its sub-projects between it and the areas.
                row.next = *number == 3 ? TreeLevel::SubProject : TreeLevel::Area;
            }
            row.text = TreeNodeText(name, QString());
            break;
        }
        case TreeLevel::SubProject: {
            const QString no = Text(values.at(1));
            const auto number = IndexNumber(values.at(0), error);
            row.who = {no, number ? QString::number(*number) : Text(values.at(0))};
            row.parentNumber = QString::number(at.discipline);
            if (number) {
                row.parentKey = key;
                row.key = TreeChildKey(key, TreeLevel::SubProject, QString::number(*number));
                row.next = TreeLevel::Area;
            }
            row.text = TreeNodeText(no, Text(values.at(2)));
            break;
        }
        case TreeLevel::Area: {
            const QString name = Text(values.at(2));
            const auto discipline = IndexNumber(values.at(0), error);
            const auto number = IndexNumber(values.at(1), error);
            row.who = {name, number ? QString::number(*number) : Text(values.at(1))};
            row.parentNumber = discipline ? QString::number(*discipline) : Text(values.at(0));
            if (discipline && number) {
                row.parentKey = DisciplineKey(*discipline, at.subProject);
                row.key = TreeChildKey(row.parentKey, TreeLevel::Area, QString::number(*number));
                row.next = TreeLevel::Model;
            }
            row.text = TreeNodeText(name, Text(values.at(3)));
            break;
        }
        case TreeLevel::Model: {
            const QString model = Text(values.at(2));
            const auto discipline = IndexNumber(values.at(0), error);
            const auto area = IndexNumber(values.at(1), error);
            row.who = {model};
            row.parentNumber = discipline ? QString::number(*discipline) : Text(values.at(0));
            if (discipline && area) {
                row.parentKey = TreeChildKey(DisciplineKey(*discipline, at.subProject), TreeLevel::Area, QString::number(*area));
                row.key = TreeChildKey(row.parentKey, TreeLevel::Model, model);
            }
            // A structural model's row of another type holds an additional file of a model that
            // has a row of its own. A NULL type is no number other than 1.
            const QVariant type = values.at(5);
            bool typed = false;
            const int modelType = type.isNull() ? 1 : type.toString().trimmed().toInt(&typed);
            row.hidden = discipline && *discipline == 3 && !type.isNull() && (!typed || modelType != 1);
            QString partitionError;
            if (const auto partition = IndexNumber(values.at(4), partitionError))
                row.partitionNo = int(*partition);
            row.text = TreeNodeText(model, Text(values.at(3)));
            break;
        }
        default:
            break;
        }
        row.error = error;
        rows << row;
        DoEventsIfInput();
    }
    return rows;
}

int ProjectTreeModel::AddChildren(Node *parent, const QList<ChildRow> &rows, TreeLevel level, bool notify)
{
    const LevelWarnings warnings = WarningsOf(level);
    std::vector<std::unique_ptr<Node>> added;
    QSet<QString> batch;
    for (const ChildRow &row : rows) {
        if (row.hidden)
            continue;
        if (!row.error.isEmpty()) {
            LogMessage(warnings.notShown, QStringList(row.who) << row.error);
            continue;
        }
        if (row.parentKey != parent->key) {
            LogMessage(warnings.parentMissing, QStringList(row.who) << row.parentNumber);
            continue;
        }
        if (m_keys.contains(row.key) || batch.contains(row.key)) {
            LogMessage(warnings.notUnique, row.who);
            continue;
        }
        batch.insert(row.key);
        auto node = NewNode(parent, row.key, row.text, parent->ticked);
        node->partitionNo = row.partitionNo;
        node->row = int(added.size());
        if (row.next != TreeLevel::None)
            AddPlaceholder(*node, row.next);
        added.push_back(std::move(node));
    }

    const QModelIndex at = IndexOf(parent);
    if (Node *placeholder = PlaceholderOf(parent)) {
        if (notify)
            beginRemoveRows(at, 0, 0);
        m_keys.remove(placeholder->key);
        parent->children.clear();
        if (notify)
            endRemoveRows();
    }
    const int count = int(added.size());
    if (count == 0)
        return 0;
    if (notify)
        beginInsertRows(at, 0, int(added.size()) - 1);
    for (auto &node : added) {
        m_keys.insert(node->key, node.get());
        for (const auto &child : node->children)
            m_keys.insert(child->key, child.get());
        parent->children.push_back(std::move(node));
    }
    if (notify)
        endInsertRows();
    return count;
}

void ProjectTreeModel::OpenLevel(Node *node)
{
    const Node *placeholder = PlaceholderOf(node);
    if (!placeholder || m_reading.contains(node->key))
        return;
    const TreeLevel level = placeholder->placeholderFor;
    const QString key = node->key;
    const QString text = node->text;
    const quint64 generation = m_generation;
    m_reading.insert(key);
    struct ReadingMark
    {
        QSet<QString> &reading;
        QString key;
        ~ReadingMark() { reading.remove(key); }
    } mark{m_reading, key};

    const QList<ChildRow> rows = ReadLevel(key, text, level);
    // Events ran while the rows were taken: the tree may have been cleared, or the node opened
    // by another way in.
    node = FindNode(key);
    if (generation != m_generation || !PlaceholderOf(node))
        return;
    const int count = AddChildren(node, rows, level, true);
    switch (level) {
    case TreeLevel::SubProject: LogMessage(msg::TreeSubProjectsFound, {QString::number(count)}); break;
    case TreeLevel::Area: LogMessage(msg::TreeAreasFound, {QString::number(count)}); break;
    default: LogMessage(msg::TreeModelsFound, {QString::number(count)}); break;
    }
}

// ---- the operations of the tree

void ProjectTreeModel::TreeClear()
{
    beginResetModel();
    m_keys.clear();
    m_top->children.clear();
    m_reading.clear();
    ++m_generation;
    endResetModel();
}

void ProjectTreeModel::TreeInit()
{
    Frame("TreeInit", [&] {
        TreeClear();
        LogMessage(msg::TreeReadProjectData, {});
        LogMessage(msg::TreeReadDisciplines, {});
        const quint64 generation = m_generation;
        const QList<ChildRow> rows = ReadLevel(TreeRootKey(), QString(), TreeLevel::Discipline);
        if (generation != m_generation)
            return;
        // The root is built whole, disciplines included, and shown with one insertion.
        auto root = NewNode(m_top.get(), TreeRootKey(), QString::fromLatin1(msg::TreeRootText), false);
        root->kind = TreeLevel::Root;
        root->expanded = true;
        m_keys.insert(root->key, root.get());
        const int count = AddChildren(root.get(), rows, TreeLevel::Discipline, false);
        beginInsertRows(QModelIndex(), 0, 0);
        m_top->children.push_back(std::move(root));
        endInsertRows();
        LogMessage(msg::TreeDisciplinesFound, {QString::number(count)});
        Q_EMIT ExpandRequested(RootIndex());
    });
}

void ProjectTreeModel::NodeExpand(const QModelIndex &index)
{
    Frame("NodeExpand", [&] {
        if (Node *node = NodeOf(index))
            OpenLevel(node);
    });
}

ProjectTreeModel::Node *ProjectTreeModel::ReachNode(const QString &key)
{
    if (Node *node = FindNode(key))
        return node;
    const quint64 generation = m_generation;
    for (const QString &above : TreeAncestorKeys(key)) {
        Node *node = FindNode(above);
        if (!node)
            return nullptr;
        OpenLevel(node);
        if (generation != m_generation)
            return nullptr;
    }
    return FindNode(key);
}

QModelIndex ProjectTreeModel::ReachIndex(const QString &key)
{
    return Frame("ReachIndex", [&] { return IndexOf(ReachNode(key)); });
}

void ProjectTreeModel::NodeExpandAllSelected(const QString &levels)
{
    Frame("NodeExpandAllSelected", [&] {
        // The depth each chain of levels is wanted to: sub-project 1, area 2, model 3 (line ids
        // and equipment, which no statement reads, would be 4).
        int wanted = 0;
        for (const QString &name : levels.toLower().split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            const QString level = name.trimmed();
            if (level == QLatin1String("subproject"))
                wanted = std::max(wanted, 1);
            else if (level == QLatin1String("area"))
                wanted = std::max(wanted, 2);
            else if (level == QLatin1String("model"))
                wanted = std::max(wanted, 3);
            else if (level == QLatin1String("lineid") || level == QLatin1String("eqp"))
                wanted = std::max(wanted, 4);
        }
        const auto depth = [](TreeLevel level) {
            switch (level) {
            case TreeLevel::SubProject: return 1;
            case TreeLevel::Area: return 2;
            case TreeLevel::Model: return 3;
            default: return 5;
            }
        };
        // Keys, not nodes: events run while a level is read.
        QStringList stack{TreeRootKey()};
        while (!stack.isEmpty()) {
            const QString key = stack.takeLast();
            Node *node = FindNode(key);
            if (!node || !node->ticked)
                continue;
            if (const Node *placeholder = PlaceholderOf(node)) {
                if (depth(placeholder->placeholderFor) > wanted)
                    continue;
                OpenLevel(node);
                node = FindNode(key);
                if (!node)
                    continue;
            }
            for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
                if ((*child)->ticked && !(*child)->IsPlaceholder())
                    stack << (*child)->key;
        }
    });
}

} // namespace fx
