#pragma once
// Jet's ways of turning values into text and back: numbers as CStr writes them, Format with its
// patterns, and dates in the form the local store keeps them.

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <optional>

namespace fx {

/// A number as Jet's CStr writes it: whole numbers plainly, others to 15 significant digits
/// ("0.1", "1E+20", "1.5E-07").
QString JetNumberText(double value);

/// The number a text stands for when Jet converts it (blanks around allowed); none otherwise.
std::optional<double> JetNumberOfText(const QString &text);

/// Jet's Format(value, pattern). Number patterns of "0", "#", "," and "." ("0", "0.00", "00",
/// "#,##0.0") round halves away from zero, as Format does (2.5 gives "3", -0.4 gives "-0").
/// Date patterns of y, m, d, h, n, s ("yyyy-mm-dd hh:nn:ss", "m" after "h" meaning minutes) take
/// the store's date text or a Jet day number. A null value gives null; a value the pattern does
/// not fit, or a pattern of another kind, gives the value as text.
QVariant JetFormat(const QVariant &value, const QString &pattern);

/// 'YYYY-MM-DD HH:MM:SS' without quotes: a date as the store keeps it.
QString JetDateText(const QDateTime &dateTime);

/// The date of a text in the store's form, its date part alone ("yyyy-mm-dd"), with a "T" for
/// the blank, or Jet's literal form "m/d/yyyy [h:mm[:ss]]"; invalid when the text is none of these.
QDateTime JetDateFromText(const QString &text);

/// The date of a Jet day number: days since 30 December 1899, the fraction being the time of day.
QDateTime JetDateFromSerial(double serial);

} // namespace fx
