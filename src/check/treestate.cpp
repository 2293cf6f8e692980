// TreeSave2INI, TreeLoad4INI and the models ticked in a stored state.

#include "check/treestate.h"

#include "check/projecttree.h"
#include "check/projecttreenode.h"
#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/settings.h"

namespace fx {

namespace {

QString Encode(const QString &text)
{
    return QString::fromLatin1(text.toUtf8().toPercentEncoding());
}

QString Decode(const QString &text)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toLatin1()));
}

QString StateFile(const QString &file)
{
    return file.isEmpty() ? GetUserConfigFile() : file;
}

QString CheckKey(const QString &prefix)
{
    return QStringLiteral("Check_") + prefix;
}

QString ExpandKey(const QString &prefix)
{
    return QStringLiteral("Expand_") + prefix;
}

} // namespace

QString PackTreeKeys(const QStringList &keys)
{
    QStringList entries;
    for (const QString &key : keys) {
        if (key == TreeRootKey()) {
            entries << key;
            continue;
        }
        QStringList levels;
        for (const TreeKeyPart &part : SplitTreeKey(key))
            levels << Encode(part.name) + QLatin1Char(':') + Encode(part.value);
        entries << levels.join(QLatin1Char('|'));
    }
    return entries.join(QLatin1Char(';'));
}

QStringList UnpackTreeKeys(const QString &value)
{
    QStringList keys;
    for (const QString &entry : value.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QString trimmed = entry.trimmed();
        if (trimmed == TreeRootKey()) {
            keys << trimmed;
            continue;
        }
        QStringList levels;
        bool wellFormed = true;
        for (const QString &level : trimmed.split(QLatin1Char('|'))) {
            const qsizetype at = level.indexOf(QLatin1Char(':'));
            if (at <= 0) {
                wellFormed = false;
                break;
            }
            levels << Decode(level.left(at)) + TreeValueSeparator + Decode(level.mid(at + 1));
        }
        if (wellFormed)
            keys << levels.join(TreeLevelSeparator);
    }
    return keys;
}

void ProjectTreeModel::TreeSave2INI(const QString &section, const QString &prefix, const QString &file) const
{
    Frame("TreeSave2INI", [&] {
        // The walk stops at a wholly ticked node: its subtree is ticked throughout.
        QStringList ticked;
        std::vector<const Node *> stack;
        for (auto child = m_top->children.rbegin(); child != m_top->children.rend(); ++child)
            stack.push_back(child->get());
        while (!stack.empty()) {
            const Node *node = stack.back();
            stack.pop_back();
            if (!node->ticked || node->IsPlaceholder())
                continue;
            if (!node->partly) {
                ticked << node->key;
                continue;
            }
            for (auto child = node->children.rbegin(); child != node->children.rend(); ++child)
                stack.push_back(child->get());
        }
        QStringList opened;
        for (const QModelIndex &index : ExpandedIndexes())
            opened << KeyOfIndex(index);

        const auto value = [](const QStringList &keys) {
            return keys.isEmpty() ? std::optional<QString>() : std::optional<QString>(PackTreeKeys(keys));
        };
        // A failed write is let go, as every write of settings is.
        (void)IniFile::Write(StateFile(file), {IniEdit{section, CheckKey(prefix), value(ticked)},
                                                IniEdit{section, ExpandKey(prefix), value(opened)}});
    });
}

void ProjectTreeModel::TreeLoad4INI(const QString &section, const QString &prefix, const QString &file)
{
    Frame("TreeLoad4INI", [&] {
        Node *root = FindNode(TreeRootKey());
        if (!root)
            return;
        const QString path = StateFile(file);
        const QStringList ticked = UnpackTreeKeys(GetIniValue(path, section, CheckKey(prefix), QString(), true, true));
        const QStringList opened = UnpackTreeKeys(GetIniValue(path, section, ExpandKey(prefix), QString(), true, true));
        const quint64 generation = m_generation;

        SetSubtreeTick(root, false);
        QStringList shown;
        for (const QString &key : opened) {
            Node *node = ReachNode(key);
            if (generation != m_generation)
                return;
            if (!node)
                continue;
            OpenLevel(node);
            if (generation != m_generation)
                return;
            if ((node = FindNode(key))) {
                node->expanded = true;
                shown << key;
            }
        }
        for (const QString &key : ticked) {
            Node *node = ReachNode(key);
            if (generation != m_generation)
                return;
            if (node)
                SetSubtreeTick(node, true);
        }

        // From the leaves upward: children before their parents.
        root = FindNode(TreeRootKey());
        std::vector<Node *> order;
        std::vector<Node *> stack{root};
        while (!stack.empty()) {
            Node *node = stack.back();
            stack.pop_back();
            order.push_back(node);
            for (const auto &child : node->children)
                if (!child->children.empty())
                    stack.push_back(child.get());
        }
        for (auto node = order.rbegin(); node != order.rend(); ++node)
            UpdateFromChildren(*node);
        EmitSubtreeChanged(root);
        for (const QString &key : shown)
            if (const Node *node = FindNode(key))
                Q_EMIT ExpandRequested(IndexOf(node));
    });
}

QList<TreeNodeInfo> TickedModels4INI(const TreeSource &source, const QString &section, const QString &prefix,
                                     const QString &file)
{
    return Frame("TickedModels4INI", [&] {
        ProjectTreeModel tree(source);
        tree.TreeInit();
        tree.TreeLoad4INI(section, prefix, file);
        tree.NodeExpandAllSelected(QStringLiteral(",model,"));
        return tree.TickedModels();
    });
}

} // namespace fx
