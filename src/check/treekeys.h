#pragma once
// The node keys of the project tree: a chain of levels, each its name, U+0002 and
// its value, joined by U+0001; the kind tests on a key and the readers of a node's parts.

#include <QList>
#include <QString>

namespace fx {

/// The levels a key is made of, from the top. Root is the one node keyed "Models".
enum class TreeLevel { None, Root, Discipline, SubProject, Area, Model, LineID, EQP, DrawingType, Drawing };

/// Joins the levels of a key.
inline constexpr QChar TreeLevelSeparator = QChar(0x0001);
/// Parts a level's name from its value.
inline constexpr QChar TreeValueSeparator = QChar(0x0002);

/// The key of the root node.
QString TreeRootKey();

/// The name a level has in a key ("Discipline", "SubProject", ... "Drawing"); empty for None
/// and Root.
QString TreeLevelName(TreeLevel level);
/// The level of a name in a key, compared as written; None for an unknown name.
TreeLevel TreeLevelOfName(const QString &name);

/// The key of a child of `parentKey` at `level` with `value`. The disciplines (and drawing
/// types) hang below the root, but their keys start afresh: "Discipline" U+0002 "3".
QString TreeChildKey(const QString &parentKey, TreeLevel level, const QString &value);
/// The key of the placeholder that stands for the unopened `level` below `parentKey`: the
/// parent key, U+0001, the level name, U+0002, and nothing after it.
QString TreePlaceholderKey(const QString &parentKey, TreeLevel level);

/// One level of a key.
struct TreeKeyPart
{
    QString name;
    QString value;
};
/// The levels of a key, from the top; the root key gives none.
QList<TreeKeyPart> SplitTreeKey(const QString &key);
/// The keys of the nodes above `key`, from the top down, the root's not among them.
QStringList TreeAncestorKeys(const QString &key);

/// The kind of node a key names: the level of its last part (Root for "Models", None for
/// anything that is not a well-formed key of the tree). The pattern tests below read
/// "the deepest level decides", which is what their further conditions say for the
/// discipline, the area and the model.
TreeLevel TreeKindOfKey(const QString &key);
bool IsDisciplineKey(const QString &key);
bool IsSubProjectKey(const QString &key);
bool IsAreaKey(const QString &key);
bool IsModelKey(const QString &key);
bool IsDrawingTypeKey(const QString &key);
bool IsDrawingKey(const QString &key);

/// A node text: the number or name, and " - " and the description when there is one. Blanks
/// at the ends of either are left out (a PDS char column comes padded).
QString TreeNodeText(const QString &name, const QString &description);

/// The parts of a node as its key and text tell them. Every reader sets the numbers to -1 and
/// the texts to empty first, and leaves them so for a node of another kind.
struct TreeNodeParts
{
    int discipline = -1;   ///< discipline_indx_no
    int subProject = -1;   ///< sub_project_ndx_no, when the node lies in a sub-project
    int area = -1;         ///< area_index_no
    QString model;         ///< model_no
    int drawingType = -1;  ///< drawing_type
    QString drawing;       ///< drawing_no
    QString name;          ///< the text before the first " - "
    QString description;   ///< the text after it
};

TreeNodeParts ReadDisciplineNode(const QString &key, const QString &text);
TreeNodeParts ReadSubProjectNode(const QString &key, const QString &text);
TreeNodeParts ReadAreaNode(const QString &key, const QString &text);
TreeNodeParts ReadModelNode(const QString &key, const QString &text);
TreeNodeParts ReadDrawingTypeNode(const QString &key, const QString &text);
TreeNodeParts ReadDrawingNode(const QString &key, const QString &text);

} // namespace fx
