#pragma once
// The names that Fendrix.ini gives to clash type and model status numbers.

#include <QList>
#include <QString>

namespace fx {

/// One number of a definition section and its name.
struct ClashDefinition
{
    qint16 number = 0;
    QString name;
};

/// [ClashTypesDefinition] of Fendrix.ini in the program's folder; read once, then remembered.
QList<ClashDefinition> GetClashTypes();

/// [ModelStatusDefinition] of Fendrix.ini in the program's folder; read once, then remembered.
QList<ClashDefinition> GetModelStatus();

/// The entries of one section of `file`: numeric keys without "." or "," that fit 16 bits,
/// with a value that is not blank once trimmed.
QList<ClashDefinition> ReadClashDefinitions(const QString &file, const QString &section);

} // namespace fx
