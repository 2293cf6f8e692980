#include "frame/registry.h"

#include "frame/computername.h"
#include "frame/failure.h"
#include "frame/inifile.h"
#include "frame/messages.h"
#include "frame/programinfo.h"
#include "frame/settings.h"

#include <cmath>

namespace fx {

// Registry.ini holds one section per key path, named as the path is written ("SOFTWARE\Vendor"),
// and one entry per value: plain text, "sz:" text, "dword:" and eight hex digits, "hex:" and
// bytes as two hex digits each, separated by commas, or "multi_sz:" and the lines joined by "|".
// A value with no name (the key's default value) is the entry "@".

namespace {
constexpr QLatin1String kSz("sz:");
constexpr QLatin1String kDWord("dword:");
constexpr QLatin1String kHex("hex:");
constexpr QLatin1String kMultiSz("multi_sz:");

// One registry as a file and the prefix of its sections: "\\server\" for a remote computer.
struct Hive
{
    QString file;
    QString prefix;

    QString Section(const QString &keyPath) const { return prefix + keyPath; }
};

QString KeyOf(const QString &keyPath)
{
    QString key = keyPath.trimmed();
    while (key.startsWith(QLatin1Char('\\')))
        key.remove(0, 1);
    while (key.endsWith(QLatin1Char('\\')))
        key.chop(1);
    return key;
}

QString EntryOf(const QString &valueName)
{
    return valueName.isEmpty() ? QStringLiteral("@") : valueName;
}

bool StartsWithFolded(const QString &name, const QString &foldedPrefix)
{
    return IniDocument::Fold(name).startsWith(foldedPrefix);
}

Hive OpenHive(RegRoot root, const QString &computer)
{
    Hive hive;
    hive.file = root == RegRoot::LocalMachine ? ProgramDir() + QStringLiteral("Registry.ini")
                                              : GetConfigDir() + QStringLiteral("Registry.ini");
    const QString name = BareComputerName(computer);
    if (name.isEmpty())
        return hive;
    const QString prefix = QStringLiteral("\\\\") + name + QLatin1Char('\\');
    const QString folded = IniDocument::Fold(prefix);
    for (const QString &section : IniFile::SectionNames(hive.file)) {
        if (StartsWithFolded(section, folded)) {
            hive.prefix = prefix;
            return hive;
        }
    }
    // This computer by name is the local registry, unless the file keeps it apart.
    if (IsThisComputer(name))
        return hive;
    Raise(msg::RegistryCannotOpenComputer, {name});
}

// Sections strictly below a key: the key's section name and "\" as prefix. Below the root of
// the local registry lie all sections but those of remote computers.
bool IsBelow(const QString &section, const Hive &hive, const QString &key)
{
    if (key.isEmpty() && hive.prefix.isEmpty())
        return !section.startsWith(QLatin1String("\\\\"));
    const QString base = key.isEmpty() ? hive.prefix : hive.Section(key) + QLatin1Char('\\');
    return StartsWithFolded(section, IniDocument::Fold(base));
}

bool KeyExists(const IniDocument &doc, const Hive &hive, const QString &key)
{
    if (key.isEmpty() || doc.HasSection(hive.Section(key)))
        return true;
    const QStringList sections = doc.SectionNames();
    return std::any_of(sections.cbegin(), sections.cend(),
                       [&](const QString &section) { return IsBelow(section, hive, key); });
}

void RequireKey(const IniDocument &doc, const Hive &hive, RegRoot root, const QString &keyPath)
{
    if (!KeyExists(doc, hive, KeyOf(keyPath)))
        Raise(msg::RegistryCannotOpenKey, {RegRootName(root), keyPath});
}

bool ParseHexByte(const QString &text, char &byte)
{
    bool ok = false;
    const uint value = text.trimmed().toUInt(&ok, 16);
    byte = char(value);
    return ok && text.trimmed().size() == 2;
}

// An entry's text as a value; false when the data cannot be read as its type.
bool ParseEntry(const QString &entry, RegValue &value)
{
    if (entry.startsWith(kSz, Qt::CaseInsensitive)) {
        value.text = entry.mid(kSz.size());
        return true;
    }
    if (entry.startsWith(kDWord, Qt::CaseInsensitive)) {
        const QString digits = entry.mid(kDWord.size()).trimmed();
        bool ok = false;
        value.type = RegValue::Type::DWord;
        value.number = digits.toUInt(&ok, 16);
        return ok && digits.size() == 8;
    }
    if (entry.startsWith(kHex, Qt::CaseInsensitive)) {
        value.type = RegValue::Type::Binary;
        const QString list = entry.mid(kHex.size()).trimmed();
        if (list.isEmpty())
            return true;
        for (const QString &part : list.split(QLatin1Char(','))) {
            char byte = 0;
            if (!ParseHexByte(part, byte))
                return false;
            value.bytes.append(byte);
        }
        return true;
    }
    if (entry.startsWith(kMultiSz, Qt::CaseInsensitive)) {
        value.type = RegValue::Type::MultiString;
        const QString joined = entry.mid(kMultiSz.size());
        if (!joined.isEmpty())
            value.lines = joined.split(QLatin1Char('|'));
        return true;
    }
    value.text = entry;
    return true;
}

// A number that is not a dotted version of three parts, within the range of 32 bits.
std::optional<quint32> AsDWord(const QString &text)
{
    if (text.count(QLatin1Char('.')) >= 2)
        return std::nullopt;
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return std::nullopt;
    // Whole numbers by rounding half to even, as the conversion to a long does.
    const double whole = std::nearbyint(number);
    if (whole < -2147483648.0 || whole > 4294967295.0)
        return std::nullopt;
    return quint32(qint64(whole));
}

// Text that would read back as another type is marked as text.
QString TextEntry(const QString &text)
{
    for (const QLatin1String marker : {kSz, kDWord, kHex, kMultiSz})
        if (text.startsWith(marker, Qt::CaseInsensitive))
            return QString(kSz) + text;
    if (text.size() >= 2 && (text.front() == QLatin1Char('"') || text.front() == QLatin1Char('\'')) &&
        text.back() == text.front())
        return QString(kSz) + text;
    return text;
}
} // namespace

QString RegRootName(RegRoot root)
{
    return root == RegRoot::LocalMachine ? QStringLiteral("HKEY_LOCAL_MACHINE") : QStringLiteral("HKEY_CURRENT_USER");
}

bool RegKeyExists(RegRoot root, const QString &keyPath, const QString &computer)
{
    return Frame("RegKeyExists", [&] {
        const Hive hive = OpenHive(root, computer);
        return KeyExists(*IniFile::Snapshot(hive.file), hive, KeyOf(keyPath));
    });
}

RegValue RegGetValue(RegRoot root, const QString &keyPath, const QString &valueName, const QString &computer)
{
    return Frame("RegGetValue", [&] {
        const Hive hive = OpenHive(root, computer);
        const auto doc = IniFile::Snapshot(hive.file);
        RequireKey(*doc, hive, root, keyPath);
        const auto entry = doc->Value(hive.Section(KeyOf(keyPath)), EntryOf(valueName));
        if (!entry)
            Raise(msg::RegistryCannotQueryType, {RegRootName(root), keyPath, valueName});
        RegValue value;
        if (!ParseEntry(*entry, value))
            Raise(msg::RegistryCannotQueryValue, {RegRootName(root), keyPath, valueName});
        return value;
    });
}

void RegSetValue(RegRoot root, const QString &keyPath, const QString &valueName, const QString &value,
                 const QString &computer)
{
    Frame("RegSetValue", [&] {
        const Hive hive = OpenHive(root, computer);
        const auto number = AsDWord(value);
        const QString entry = number ? QString(kDWord) + QStringLiteral("%1").arg(*number, 8, 16, QLatin1Char('0'))
                                     : TextEntry(value.trimmed());
        // Writing into a missing section makes it: the key is created with its first value.
        if (!IniFile::Write(hive.file, hive.Section(KeyOf(keyPath)), EntryOf(valueName), entry))
            Raise(msg::RegistryCannotOpenKey, {RegRootName(root), keyPath});
    });
}

void RegCreateKey(RegRoot root, const QString &keyPath, const QString &computer)
{
    Frame("RegCreateKey", [&] {
        const Hive hive = OpenHive(root, computer);
        const QString key = KeyOf(keyPath);
        if (KeyExists(*IniFile::Snapshot(hive.file), hive, key))
            return;
        if (!IniFile::AddSection(hive.file, hive.Section(key)))
            Raise(msg::RegistryCannotOpenKey, {RegRootName(root), keyPath});
    });
}

QStringList RegGetSubKeys(RegRoot root, const QString &keyPath, const QString &computer)
{
    return Frame("RegGetSubKeys", [&] {
        const Hive hive = OpenHive(root, computer);
        const auto doc = IniFile::Snapshot(hive.file);
        RequireKey(*doc, hive, root, keyPath);
        const QString key = KeyOf(keyPath);
        const qsizetype skip = key.isEmpty() ? hive.prefix.size() : hive.Section(key).size() + 1;
        QStringList children;
        QStringList folded;
        for (const QString &section : doc->SectionNames()) {
            if (!IsBelow(section, hive, key))
                continue;
            // A deeper section implies every key on its way, so only the next step is listed.
            const QString child = section.mid(skip).section(QLatin1Char('\\'), 0, 0).trimmed();
            if (!child.isEmpty() && !folded.contains(IniDocument::Fold(child))) {
                children.append(child);
                folded.append(IniDocument::Fold(child));
            }
        }
        return children;
    });
}

QStringList RegGetValues(RegRoot root, const QString &keyPath, const QString &computer)
{
    return Frame("RegGetValues", [&] {
        const Hive hive = OpenHive(root, computer);
        const auto doc = IniFile::Snapshot(hive.file);
        RequireKey(*doc, hive, root, keyPath);
        QStringList names = doc->KeyNames(hive.Section(KeyOf(keyPath)));
        for (QString &name : names)
            if (name == QLatin1String("@"))
                name.clear();
        return names;
    });
}

} // namespace fx
