#pragma once
// A disconnected result: what a read hands its caller once the connection is gone.

#include <QList>
#include <QString>
#include <QVariant>

namespace fx {

/// One column of a result: its name, ADO type number and defined size (characters for text).
struct RecordsetField
{
    QString name;
    int type = 0;
    qint64 definedSize = 0;
};

/// Column descriptions and rows of values held in memory.
///
/// Invariant: every row has exactly one value per field; a NULL is a null QVariant
/// (`isNull()`), never an empty string or zero.
class Recordset
{
public:
    Recordset() = default;
    explicit Recordset(QList<RecordsetField> fields);

    const QList<RecordsetField> &Fields() const { return m_fields; }
    int FieldCount() const { return int(m_fields.size()); }
    /// The index of the field named `name`, compared without regard to case; -1 if none.
    int FieldIndex(const QString &name) const;

    qsizetype RecordCount() const { return m_rows.size(); }
    bool IsEmpty() const { return m_rows.isEmpty(); }
    const QVariantList &Row(qsizetype row) const { return m_rows.at(row); }
    const QList<QVariantList> &Rows() const { return m_rows; }
    QVariant Value(qsizetype row, int field) const { return m_rows.at(row).at(field); }
    /// The value of the named field; raises when the result has no such field.
    QVariant Value(qsizetype row, const QString &name) const;

    /// Appends a row; raises when its width differs from the field count.
    void AppendRow(QVariantList row);

private:
    QList<RecordsetField> m_fields;
    QList<QVariantList> m_rows;
};

} // namespace fx
