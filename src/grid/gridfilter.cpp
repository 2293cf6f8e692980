#include "grid/gridfilter.h"

#include "frame/failure.h"
#include "pds/localdb.h"
#include "store/clashstore.h"
#include "store/clashview.h"

#include <algorithm>

namespace fx {

namespace {

// The user's own "_" and "\" are literal characters, not LIKE's; "*" and "%" stay wildcards.
QString LikePattern(const QString &text)
{
    QString pattern = text;
    pattern.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    pattern.replace(QLatin1Char('_'), QStringLiteral("\\_"));
    pattern.replace(QLatin1Char('*'), QLatin1Char('%'));
    return pattern;
}

QString Bracket(const QString &name)
{
    return QLatin1Char('[') + name + QLatin1Char(']');
}

QString ViewWhere()
{
    const QString clause = GetGridFilter();
    return clause.isEmpty() ? QString() : QStringLiteral(" WHERE (") + clause + QLatin1Char(')');
}

} // namespace

QString GridFilterTerm(const GridFilterColumn &column, const QString &text)
{
    if (text.isEmpty())
        return QString();
    if (text == QLatin1String("NULL"))
        return Bracket(column.name) + QStringLiteral(" = NULL");
    // The store keeps dates as text, so a date is compared as the store's literal.
    if (column.isDate)
        return Bracket(column.name) + QStringLiteral(" = ") + DBQuote(QString(text).replace(QLatin1Char('*'), QLatin1Char('%')));
    QString pattern = LikePattern(text);
    if (!pattern.startsWith(QLatin1Char('%')) && !pattern.endsWith(QLatin1Char('%')))
        pattern.prepend(QLatin1Char('%'));
    return Bracket(column.name) + QStringLiteral(" LIKE ") + DBQuote(pattern) + QStringLiteral(" ESCAPE '\\'");
}

QString GridFilterExpression(const QList<GridFilterColumn> &columns, const QStringList &texts)
{
    QStringList terms;
    for (qsizetype i = 0; i < columns.size() && i < texts.size(); ++i) {
        const QString term = GridFilterTerm(columns.at(i), texts.at(i));
        if (!term.isEmpty())
            terms << term;
    }
    return terms.join(QStringLiteral(" AND "));
}

QStringList FilterValueList(const QString &column, bool dataRow)
{
    return Frame("FilterValueList", [&] {
        const QString c = Bracket(column);
        const QString where = ViewWhere();
        // Computed values lose the column's collation; values differing in case alone are one entry.
        const QString valueOrNull =
            QStringLiteral("SELECT DISTINCT IIF(%1 IS NULL OR LEN(%1)=0, 'NULL', %1) COLLATE NOCASE AS %1 FROM [clashes]").arg(c);
        QString sql;
        if (dataRow && column == QLatin1String("action_discipline"))
            sql = QStringLiteral("SELECT DISTINCT [discipline_name] FROM [pdtable_111];");
        else if (column == QLatin1String("discipline_structure"))
            // Either side's discipline alone, so that one can filter on it.
            sql = QStringLiteral("SELECT DISTINCT JCAT('*', discipline_a, '*') COLLATE NOCASE FROM [clashes]") + where
                  + QStringLiteral(" UNION SELECT DISTINCT JCAT('*', discipline_b, '*') COLLATE NOCASE FROM [clashes] ") + where
                  + QStringLiteral(" UNION ") + valueOrNull + where + QLatin1Char(';');
        else
            sql = valueOrNull + where + QLatin1Char(';');
        const Recordset rows = ClashConnection().Read(sql);
        QStringList list;
        bool hasEmpty = false;
        for (const QVariantList &row : rows.Rows()) {
            const QVariant value = row.at(0);
            hasEmpty = hasEmpty || value.isNull();
            list << value.toString();
        }
        if (!hasEmpty)
            list << QString();
        std::sort(list.begin(), list.end(), [](const QString &a, const QString &b) {
            return QString::compare(a, b, Qt::CaseInsensitive) < 0;
        });
        return list;
    });
}

bool DropDownGuard::Due(const QDateTime &now) const
{
    return !m_lastBuild.isValid() || m_lastBuild.secsTo(now) > 1;
}

const QStringList &FilterDropDown::List(const QString &column, bool dataRow, const QDateTime &now)
{
    if (m_building || !m_guard.Due(now))
        return m_list;
    m_building = true;
    struct Done
    {
        bool &flag;
        ~Done() { flag = false; }
    } done{m_building};
    try {
        m_list = FilterValueList(column, dataRow);
    } catch (...) {
        m_list.clear();
        throw;
    }
    m_guard.Built(now);
    return m_list;
}

} // namespace fx
