#pragma once
// The advanced filter as the options dialog edits it: on a private copy of the user config
// file that lives as long as the dialog, so that only OK carries the edits back and Cancel
// leaves the user's filter as it was.

#include <QList>
#include <QString>
#include <QStringList>

namespace fx {

/// Copies `section` of `from` over the same section of `to`, key by key, the keys taken from the
/// section's own list; what the section of `to` held before is dropped.
void CopyIniSection(const QString &from, const QString &to, const QString &section);

/// One entry of a filter column's list: a value and whether it is kept out of view.
struct FilterValueEntry
{
    QString value;
    bool kept = false;

    bool operator==(const FilterValueEntry &) const = default;
};

class AdvancedFilterEdit
{
public:
    /// Copies `userConfigFile` into a new file of the work folder.
    explicit AdvancedFilterEdit(const QString &userConfigFile);
    ~AdvancedFilterEdit();
    AdvancedFilterEdit(const AdvancedFilterEdit &) = delete;
    AdvancedFilterEdit &operator=(const AdvancedFilterEdit &) = delete;

    /// The private copy.
    const QString &File() const { return m_file; }

    /// The values of `dimension` in the open project's clashes, "NOT DEFINED" for a null, in
    /// order, each ticked when the copy keeps it; values kept for a column that the project
    /// does not hold follow, ticked, so that none is lost. Nothing but those without a project.
    /// Raises "Unknown filter column" for a name that is none.
    QList<FilterValueEntry> ColumnValues(const QString &dimension) const;
    /// The values of `dimension` the copy keeps.
    QStringList KeptValues(const QString &dimension) const;
    /// Keeps exactly `values` for `dimension` in the copy.
    void KeepValues(const QString &dimension, const QStringList &values);
    /// Empties every column's kept values in the copy.
    void Clear();
    /// Carries every column's kept values from the copy into `userConfigFile`.
    void CopyBack(const QString &userConfigFile) const;

private:
    QString m_file;
};

/// True when `text` matches `pattern` by the Like rule: "*" any text, "?" one character, "#"
/// one digit, "[...]" and "[!...]" a set or its complement; case ignored.
bool IsLike(const QString &text, const QString &pattern);

} // namespace fx
