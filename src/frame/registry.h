#pragma once
// The registry. On Windows the real one; elsewhere Registry.ini files: machine keys beside
// Fendrix.ini, user keys in the configuration folder, one section per key path, one entry per
// value. A remote computer's keys are the sections prefixed by "\\server\".

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace fx {

enum class RegRoot { LocalMachine, CurrentUser };

/// The root key's name as the failure texts show it ("HKEY_LOCAL_MACHINE").
QString RegRootName(RegRoot root);

/// One value as read: text, a 32-bit number, bytes, or several lines.
struct RegValue
{
    enum class Type { String, DWord, Binary, MultiString };
    Type type = Type::String;
    QString text;      ///< String
    quint32 number = 0; ///< DWord
    QByteArray bytes;  ///< Binary
    QStringList lines; ///< MultiString
};

bool RegKeyExists(RegRoot root, const QString &keyPath, const QString &computer = QString());
RegValue RegGetValue(RegRoot root, const QString &keyPath, const QString &valueName,
                     const QString &computer = QString());
/// A numeric value that does not match "*.*.*" is stored as a number, everything else as
/// trimmed text; a missing key is created first.
void RegSetValue(RegRoot root, const QString &keyPath, const QString &valueName, const QString &value,
                 const QString &computer = QString());
void RegCreateKey(RegRoot root, const QString &keyPath, const QString &computer = QString());
QStringList RegGetSubKeys(RegRoot root, const QString &keyPath, const QString &computer = QString());
/// The names of the key's values.
QStringList RegGetValues(RegRoot root, const QString &keyPath, const QString &computer = QString());

} // namespace fx
