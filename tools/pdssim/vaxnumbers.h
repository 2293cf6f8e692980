#pragma once
// The number forms of DGN V7 files: 32-bit integers as two little-endian 16-bit words with
// the high word first, and doubles in VAX D-float form.

#include <QByteArray>

namespace pdssim {

/// `value` in the word order of DGN V7 integers, written at `at` (four bytes).
void PutVaxInt32(QByteArray &bytes, qsizetype at, qint32 value);
/// The integer of four bytes at `at`.
qint32 GetVaxInt32(const QByteArray &bytes, qsizetype at);

/// `value` as a VAX D-float at `at` (eight bytes). Zero and values beyond the D-float range
/// (about 1.7e38) are written as zero and the largest magnitude respectively.
void PutVaxDouble(QByteArray &bytes, qsizetype at, double value);
/// The double of eight bytes at `at`; a zero exponent reads as 0.
double GetVaxDouble(const QByteArray &bytes, qsizetype at);

} // namespace pdssim
