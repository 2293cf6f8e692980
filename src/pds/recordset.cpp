#include "pds/recordset.h"

#include "frame/failure.h"
#include "pds/messages.h"

namespace fx {

Recordset::Recordset(QList<RecordsetField> fields)
    : m_fields(std::move(fields))
{
}

int Recordset::FieldIndex(const QString &name) const
{
    for (int i = 0; i < m_fields.size(); ++i) {
        if (m_fields.at(i).name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QVariant Recordset::Value(qsizetype row, const QString &name) const
{
    const int field = FieldIndex(name);
    if (field < 0)
        Raise(msg::FieldNotInResult, {name});
    return Value(row, field);
}

void Recordset::AppendRow(QVariantList row)
{
    if (row.size() != m_fields.size())
        Raise(msg::RowWidthMismatch, {QString::number(row.size()), QString::number(m_fields.size())});
    m_rows.append(std::move(row));
}

} // namespace fx
