#pragma once
// Writing RIS dumps: tables of the local store as a free-form dump that rislod loads, and
// copies of a dump under other names.

#include <QString>
#include <QStringList>

namespace fx::risdump {

/// Writes `tables` (names separated by ";") of the local store `database` as a free-form dump of
/// `schema`, each table's rows filtered by `where` when given. The dump is `dumpFile` when given
/// (a bare name goes into `targetFolder`), else a new random name with ".dmp" in `targetFolder`.
/// Gives the dump's path.
QString RISDumpCreate(const QString &targetFolder, const QString &database, const QString &schema,
                      const QString &tables, const QString &where = QString(), const QString &dumpFile = QString());

/// Copies `dumpFile` to `target` with each of `names` replaced by the entry of `newNames` at the
/// same place, everywhere in the text.
void RISTableCopy(const QString &dumpFile, const QString &target, const QStringList &names,
                  const QStringList &newNames);

/// The dump type that rislod creates for a column of the local store: "smallint", "int",
/// "double", "timestamp" or "char(n)", n being 240 for every longer text.
QString RISTypeOfAdoType(int adoType, qint64 definedSize);

} // namespace fx::risdump
