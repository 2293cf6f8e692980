#include "check/treekeys.h"

#include <QStringList>

namespace fx {

namespace {

struct LevelName
{
    TreeLevel level;
    const char *name;
};

constexpr LevelName kLevelNames[] = {
    {TreeLevel::Discipline, "Discipline"}, {TreeLevel::SubProject, "SubProject"}, {TreeLevel::Area, "Area"},
    {TreeLevel::Model, "Model"},           {TreeLevel::LineID, "LineID"},         {TreeLevel::EQP, "EQP"},
    {TreeLevel::DrawingType, "DrawingType"}, {TreeLevel::Drawing, "Drawing"},
};

bool IsNumberLevel(TreeLevel level)
{
    return level == TreeLevel::Discipline || level == TreeLevel::SubProject || level == TreeLevel::Area
           || level == TreeLevel::DrawingType;
}

// Whether `child` may follow `parent` in a key (None: the first level).
bool MayFollow(TreeLevel parent, TreeLevel child)
{
    switch (parent) {
    case TreeLevel::None:
        return child == TreeLevel::Discipline || child == TreeLevel::DrawingType;
    case TreeLevel::Discipline:
        return child == TreeLevel::SubProject || child == TreeLevel::Area;
    case TreeLevel::SubProject:
        return child == TreeLevel::Area;
    case TreeLevel::Area:
        return child == TreeLevel::Model;
    case TreeLevel::Model:
        return child == TreeLevel::LineID || child == TreeLevel::EQP;
    case TreeLevel::DrawingType:
        return child == TreeLevel::Drawing;
    default:
        return false;
    }
}

int NumberOf(const QString &value)
{
    bool ok = false;
    const int number = value.toInt(&ok);
    return ok ? number : -1;
}

// The parts of a well-formed key with their levels; empty for anything else.
struct ParsedKey
{
    QList<TreeLevel> levels;
    QStringList values;
};

ParsedKey ParseKey(const QString &key)
{
    ParsedKey parsed;
    TreeLevel previous = TreeLevel::None;
    for (const TreeKeyPart &part : SplitTreeKey(key)) {
        const TreeLevel level = TreeLevelOfName(part.name);
        bool number = true;
        if (IsNumberLevel(level))
            (void)part.value.toInt(&number);
        if (!MayFollow(previous, level) || !number)
            return {};
        parsed.levels << level;
        parsed.values << part.value;
        previous = level;
    }
    return parsed;
}

// Name and description of a node text, split at the first " - ".
void SplitText(const QString &text, TreeNodeParts &parts)
{
    const qsizetype at = text.indexOf(QLatin1String(" - "));
    parts.name = at < 0 ? text : text.left(at);
    parts.description = at < 0 ? QString() : text.mid(at + 3);
}

// Reads a key of `kind` into its numbers and the text into name and description; a key of
// another kind leaves the parts as they start.
TreeNodeParts ReadNode(TreeLevel kind, const QString &key, const QString &text)
{
    TreeNodeParts parts;
    if (TreeKindOfKey(key) != kind)
        return parts;
    const ParsedKey parsed = ParseKey(key);
    for (qsizetype i = 0; i < parsed.levels.size(); ++i) {
        const QString &value = parsed.values.at(i);
        switch (parsed.levels.at(i)) {
        case TreeLevel::Discipline: parts.discipline = NumberOf(value); break;
        case TreeLevel::SubProject: parts.subProject = NumberOf(value); break;
        case TreeLevel::Area: parts.area = NumberOf(value); break;
        case TreeLevel::Model: parts.model = value; break;
        case TreeLevel::DrawingType: parts.drawingType = NumberOf(value); break;
        case TreeLevel::Drawing: parts.drawing = value; break;
        default: break;
        }
    }
    SplitText(text, parts);
    return parts;
}

} // namespace

QString TreeRootKey()
{
    return QStringLiteral("Models");
}

QString TreeLevelName(TreeLevel level)
{
    for (const LevelName &entry : kLevelNames)
        if (entry.level == level)
            return QString::fromLatin1(entry.name);
    return QString();
}

TreeLevel TreeLevelOfName(const QString &name)
{
    for (const LevelName &entry : kLevelNames)
        if (name == QLatin1String(entry.name))
            return entry.level;
    return TreeLevel::None;
}

QString TreeChildKey(const QString &parentKey, TreeLevel level, const QString &value)
{
    const QString part = TreeLevelName(level) + TreeValueSeparator + value;
    if (parentKey.isEmpty() || parentKey == TreeRootKey())
        return part;
    return parentKey + TreeLevelSeparator + part;
}

QString TreePlaceholderKey(const QString &parentKey, TreeLevel level)
{
    return parentKey + TreeLevelSeparator + TreeLevelName(level) + TreeValueSeparator;
}

QList<TreeKeyPart> SplitTreeKey(const QString &key)
{
    QList<TreeKeyPart> parts;
    if (key.isEmpty() || key == TreeRootKey())
        return parts;
    for (const QString &level : key.split(TreeLevelSeparator)) {
        const qsizetype at = level.indexOf(TreeValueSeparator);
        parts.append(at < 0 ? TreeKeyPart{level, QString()} : TreeKeyPart{level.left(at), level.mid(at + 1)});
    }
    return parts;
}

QStringList TreeAncestorKeys(const QString &key)
{
    QStringList keys;
    if (key.isEmpty() || key == TreeRootKey())
        return keys;
    for (qsizetype at = key.indexOf(TreeLevelSeparator); at >= 0; at = key.indexOf(TreeLevelSeparator, at + 1))
        keys << key.left(at);
    return keys;
}

TreeLevel TreeKindOfKey(const QString &key)
{
    if (key == TreeRootKey())
        return TreeLevel::Root;
    const ParsedKey parsed = ParseKey(key);
    return parsed.levels.isEmpty() ? TreeLevel::None : parsed.levels.last();
}

bool IsDisciplineKey(const QString &key)
{
    return TreeKindOfKey(key) == TreeLevel::Discipline;
}

bool IsSubProjectKey(const QString &key)
{
    return TreeKindOfKey(key) == TreeLevel::SubProject;
}

bool IsAreaKey(const QString &key)
{
    return TreeKindOfKey(key) == TreeLevel::Area;
}

bool IsModelKey(const QString &key)
{
    return TreeKindOfKey(key) == TreeLevel::Model;
}

bool IsDrawingTypeKey(const QString &key)
{
    return TreeKindOfKey(key) == TreeLevel::DrawingType;
}

bool IsDrawingKey(const QString &key)
{
    return TreeKindOfKey(key) == TreeLevel::Drawing;
}

QString TreeNodeText(const QString &name, const QString &description)
{
    QString text = name;
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    const QString rest = description.trimmed();
    return rest.isEmpty() ? text : text + QStringLiteral(" - ") + rest;
}

TreeNodeParts ReadDisciplineNode(const QString &key, const QString &text)
{
    return ReadNode(TreeLevel::Discipline, key, text);
}

TreeNodeParts ReadSubProjectNode(const QString &key, const QString &text)
{
    return ReadNode(TreeLevel::SubProject, key, text);
}

TreeNodeParts ReadAreaNode(const QString &key, const QString &text)
{
    return ReadNode(TreeLevel::Area, key, text);
}

TreeNodeParts ReadModelNode(const QString &key, const QString &text)
{
    return ReadNode(TreeLevel::Model, key, text);
}

TreeNodeParts ReadDrawingTypeNode(const QString &key, const QString &text)
{
    return ReadNode(TreeLevel::DrawingType, key, text);
}

TreeNodeParts ReadDrawingNode(const QString &key, const QString &text)
{
    return ReadNode(TreeLevel::Drawing, key, text);
}

} // namespace fx
