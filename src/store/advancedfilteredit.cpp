#include "store/advancedfilteredit.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/inifile.h"
#include "frame/settings.h"
#include "pds/tableimporter.h"
#include "store/advancedfilter.h"
#include "store/clashstore.h"

#include <QCollator>
#include <QRegularExpression>

#include <algorithm>
#include <vector>

namespace fx {

namespace {

// Writes `values` as the section's only keys "0", "1", ... in one write of the file.
void ReplaceSection(const QString &file, const QString &section, const QStringList &names, const QStringList &values)
{
    std::vector<IniEdit> edits{{section, std::nullopt, std::nullopt}};
    for (qsizetype i = 0; i < values.size(); ++i)
        edits.push_back({section, names.at(i), values.at(i)});
    IniFile::Write(file, edits);
}

QStringList Numbered(qsizetype count)
{
    QStringList names;
    for (qsizetype i = 0; i < count; ++i)
        names << QString::number(i);
    return names;
}

QStringList ProjectValues(const FilterDimension &dimension)
{
    if (!ClashStore().ClashConnection)
        return {};
    QString sql = QStringLiteral("SELECT [%1] FROM [base_clash_table] GROUP BY [%1] ").arg(dimension.columnA);
    if (!dimension.columnB.isEmpty())
        sql += QStringLiteral("UNION SELECT [%1] FROM [base_clash_table] GROUP BY [%1] ").arg(dimension.columnB);
    const Recordset rows = ClashConnection().Read(sql);
    QStringList values;
    for (const QVariantList &row : rows.Rows()) {
        const QString value = row.at(0).isNull() ? QString::fromLatin1(NotDefinedValue) : row.at(0).toString();
        if (!values.contains(value))
            values << value;
    }
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    std::sort(values.begin(), values.end(), collator);
    return values;
}

} // namespace

void CopyIniSection(const QString &from, const QString &to, const QString &section)
{
    QStringList names, values;
    GetIniSection2Array(from, section, names, values);
    ReplaceSection(to, section, names, values);
}

AdvancedFilterEdit::AdvancedFilterEdit(const QString &userConfigFile)
    : m_file(NewWorkFileName("options", ".ini"))
{
    Frame("AdvancedFilterEdit", [&] {
        if (IsFileExists(userConfigFile))
            CopyFileA(userConfigFile, m_file);
    });
}

AdvancedFilterEdit::~AdvancedFilterEdit()
{
    DeleteFileA(m_file, false);
}

QStringList AdvancedFilterEdit::KeptValues(const QString &dimension) const
{
    QStringList names, values;
    GetIniSection2Array(m_file, AdvancedFilterSection(dimension), names, values);
    return values;
}

QList<FilterValueEntry> AdvancedFilterEdit::ColumnValues(const QString &dimension) const
{
    return Frame("AdvancedFilterEdit::ColumnValues", [&] {
        const FilterDimension column = GetFilterDimension(dimension);
        QStringList kept = KeptValues(dimension);
        QList<FilterValueEntry> entries;
        for (const QString &value : ProjectValues(column))
            entries.append({value, kept.removeAll(value) > 0});
        for (const QString &value : std::as_const(kept))
            entries.append({value, true});
        return entries;
    });
}

void AdvancedFilterEdit::KeepValues(const QString &dimension, const QStringList &values)
{
    ReplaceSection(m_file, AdvancedFilterSection(dimension), Numbered(values.size()), values);
}

void AdvancedFilterEdit::Clear()
{
    for (const FilterDimension &dimension : FilterDimensions())
        ReplaceSection(m_file, AdvancedFilterSection(dimension.name), {}, {});
}

void AdvancedFilterEdit::CopyBack(const QString &userConfigFile) const
{
    for (const FilterDimension &dimension : FilterDimensions())
        CopyIniSection(m_file, userConfigFile, AdvancedFilterSection(dimension.name));
}

bool IsLike(const QString &text, const QString &pattern)
{
    QString expression;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('*')) {
            expression += QStringLiteral(".*");
        } else if (c == QLatin1Char('?')) {
            expression += QLatin1Char('.');
        } else if (c == QLatin1Char('#')) {
            expression += QStringLiteral("[0-9]");
        } else if (c == QLatin1Char('[') && pattern.indexOf(QLatin1Char(']'), i + 1) > i) {
            const qsizetype end = pattern.indexOf(QLatin1Char(']'), i + 1);
            QString set = pattern.mid(i + 1, end - i - 1);
            const bool negated = set.startsWith(QLatin1Char('!'));
            if (negated)
                set.remove(0, 1);
            // Inside a set only "-" between two characters has a meaning of its own.
            QString escaped;
            for (qsizetype j = 0; j < set.size(); ++j)
                escaped += set.at(j) == QLatin1Char('-') && j > 0 && j + 1 < set.size()
                               ? QStringLiteral("-")
                               : QRegularExpression::escape(set.at(j));
            expression += QLatin1Char('[') + (negated ? QStringLiteral("^") : QString()) + escaped + QLatin1Char(']');
            i = end;
        } else {
            expression += QRegularExpression::escape(c);
        }
    }
    const QRegularExpression like(QRegularExpression::anchoredPattern(expression),
                                  QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return like.isValid() && like.match(text).hasMatch();
}

} // namespace fx
