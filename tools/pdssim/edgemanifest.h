#pragma once
// The hard cases a site was given, listed for tests to find: one section a case, naming the
// table and the key values of its rows.

#include <QList>
#include <QPair>
#include <QString>

namespace pdssim {

/// One hard case: a name (the section), the table it lives in, the key values that find its
/// rows, and a line that tells what it is meant to provoke.
struct EdgeCase
{
    QString name;
    QString table;
    QList<QPair<QString, QString>> keys;
    QString note;

    /// The value of a key, or an empty text.
    QString Key(const QString &key) const;
};

/// Writes the cases as "[name]", "table=", the keys in their order, "note=", a blank line between.
void WriteManifest(const QString &path, const QList<EdgeCase> &cases);

/// Reads a manifest that WriteManifest wrote; a missing file gives no cases.
QList<EdgeCase> ReadManifest(const QString &path);

/// The case of that name, or nullptr.
const EdgeCase *FindEdgeCase(const QList<EdgeCase> &cases, const QString &name);

} // namespace pdssim
