#pragma once
// The RIS column types as the dump writes and reads their values. The schema databases keep a
// timestamp as the text "YYYY-MM-DD HH:MM:SS"; the dump writes it "YYYY-MM-DD:HH:MM:SS".

#include <QByteArray>
#include <QString>
#include <QVariant>

namespace pdssim {

/// A declared RIS type: its kind and, for char(n) and decimal(p,s), its sizes.
struct RisType
{
    enum Kind { SmallInt, Int, Double, Real, Decimal, Timestamp, Char };
    Kind kind = Char;
    int size = 240;  ///< char: n; decimal: p
    int scale = 0;   ///< decimal: s

    /// The kind of a declared type ("char(20) not null", "decimal(8,2)"); a type RIS does not
    /// know is taken as char(240).
    static RisType Of(const QString &declared);

    /// The characters of the value in a fixed-form row: int 11, smallint 6, timestamp 19,
    /// char(n) n, double 23, real 14, decimal(p,s) p + 2 (sign and point).
    int FixedWidth() const;

    /// The value as a fixed-form field: left-aligned, padded with blanks (or cut) to the width;
    /// a NULL is blanks.
    QByteArray FixedField(const QVariant &value) const;

    /// The value in the free form, without its blank: texts quoted with quotes doubled; a NULL
    /// is empty.
    QByteArray FreeValue(const QVariant &value) const;

    /// The value a dump's text stands for, in the form the database keeps; a blank text is NULL.
    /// False when the text is no value of the type (`value` is left alone).
    bool Parse(const QString &text, QVariant &value) const;

    /// "smallint", "int", "double", "real", "decimal", "timestamp" or "char", for messages.
    QString Name() const;
};

} // namespace pdssim
