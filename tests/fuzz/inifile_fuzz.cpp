// Arbitrary bytes as an .ini file, read from memory and from disk, then edited as the program
// edits its settings. Reading never fails, an unedited file is written back byte for byte, and
// an edit changes what it names and nothing else.
#include "fuzzsupport.h"

#include "frame/inidocument.h"
#include "frame/inifile.h"
#include "frame/settings.h"
#include "frame/windows1252.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>

namespace {

using Values = std::map<std::pair<QString, QString>, std::optional<QString>>;

// Every value the document gives, by folded section and key name.
Values AllValues(const fx::IniDocument &doc)
{
    Values values;
    for (const QString &section : doc.SectionNames()) {
        fuzz::Expect(doc.HasSection(section), QStringLiteral("a listed section not found: ") + section);
        QStringList seen;
        for (const QString &key : doc.KeyNames(section)) {
            const QString folded = fx::IniDocument::Fold(key);
            fuzz::Expect(!seen.contains(folded), QStringLiteral("a key listed twice: ") + key);
            seen << folded;
            const std::optional<QString> value = doc.Value(section, key);
            fuzz::Expect(value.has_value(), QStringLiteral("a listed key without a value: ") + key);
            values[{fx::IniDocument::Fold(section), folded}] = value;
        }
    }
    return values;
}

// What a value reads as: trimmed, without one enclosing pair of quotes.
QString AsRead(const QString &value)
{
    const QString trimmed = value.trimmed();
    if (trimmed.size() >= 2 && (trimmed.front() == QLatin1Char('"') || trimmed.front() == QLatin1Char('\''))
        && trimmed.back() == trimmed.front())
        return trimmed.mid(1, trimmed.size() - 2);
    return trimmed;
}

// The document written and read again must give the same values. An edit may leave a
// Windows-1252 file with bytes that happen to be valid UTF-8, which then read as UTF-8: the
// price of telling the encodings apart by the bytes alone, so only the bytes are compared then.
void CheckWrittenAndReadBack(const fx::IniDocument &doc, const QString &after)
{
    const fx::IniDocument again = fx::IniDocument::Parse(doc.Serialize());
    fuzz::Expect(again.Serialize() == doc.Serialize(), QStringLiteral("not written the same twice after ") + after);
    if (again.TextEncoding() == doc.TextEncoding())
        fuzz::Expect(AllValues(again) == AllValues(doc), QStringLiteral("written and read back, the values differ after ") + after);
}

// A name the program could use: one line, no "=", no section or comment mark in front.
bool IsUsableKeyName(const QString &name)
{
    const QString trimmed = name.trimmed();
    return !trimmed.isEmpty() && !trimmed.contains(QLatin1Char('=')) && !trimmed.contains(QLatin1Char('\n'))
           && !trimmed.contains(QLatin1Char('\r')) && !trimmed.startsWith(QLatin1Char('[')) && !trimmed.startsWith(QLatin1Char(';'));
}

void CheckEdits(fx::IniDocument doc, const QString &newValue)
{
    const QStringList sections = doc.SectionNames();
    const QString section = sections.isEmpty() ? QStringLiteral("Settings") : sections.first();
    const QStringList keys = doc.KeyNames(section);
    QString key = QStringLiteral("AutoLoad");
    for (const QString &name : keys)
        if (IsUsableKeyName(name)) {
            key = name;
            break;
        }
    const std::pair<QString, QString> at{fx::IniDocument::Fold(section), fx::IniDocument::Fold(key)};

    Values expected = AllValues(doc);
    doc.Apply({section, key, newValue});
    expected[at] = AsRead(newValue);
    fuzz::Expect(doc.Value(section, key) == AsRead(newValue), QStringLiteral("a written value reads otherwise"));
    fuzz::Expect(AllValues(doc) == expected, QStringLiteral("writing one value changed others"));
    CheckWrittenAndReadBack(doc, QStringLiteral("a write"));

    doc.Apply({section, key, std::nullopt});
    expected.erase(at);
    fuzz::Expect(!doc.Value(section, key), QStringLiteral("a deleted key still reads"));
    fuzz::Expect(AllValues(doc) == expected, QStringLiteral("deleting one key changed others"));
    CheckWrittenAndReadBack(doc, QStringLiteral("a key deleted"));

    doc.Apply({section, std::nullopt, std::nullopt});
    fuzz::Expect(!doc.HasSection(section), QStringLiteral("a deleted section is still there"));
    std::erase_if(expected, [&](const auto &entry) { return entry.first.first == at.first; });
    fuzz::Expect(AllValues(doc) == expected, QStringLiteral("deleting one section changed others"));
    CheckWrittenAndReadBack(doc, QStringLiteral("a section deleted"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const fx::IniDocument doc = fx::IniDocument::Parse(bytes);
    fuzz::Expect(doc.Serialize() == bytes, QStringLiteral("an unedited file is not written back as it was"));
    const Values values = AllValues(doc);

    // A byte order mark in front changes nothing that is read, whatever the encoding. (A
    // second one is a character of the first line.)
    const QByteArray bom("\xEF\xBB\xBF");
    if (!bytes.startsWith(bom)) {
        const fx::IniDocument marked = fx::IniDocument::Parse(bom + bytes);
        fuzz::Expect(marked.Serialize() == bom + bytes, QStringLiteral("a file with a byte order mark is not written back as it was"));
        fuzz::Expect(AllValues(marked) == values, QStringLiteral("a byte order mark changes what is read"));
    }

    // The same file on disk, through the cache and the private-profile reads.
    const QString path = fuzz::WriteFile(QStringLiteral("fuzz.ini"), bytes.constData(), size);
    fuzz::Expect(fx::IniFile::Snapshot(path)->Serialize() == bytes, QStringLiteral("the file on disk reads otherwise"));
    for (const QString &section : doc.SectionNames()) {
        QStringList names;
        QStringList read;
        fx::GetIniSection2Array(path, section, names, read);
        fuzz::Expect(names.size() == read.size(), QStringLiteral("a section listing with names and values apart"));
        for (qsizetype i = 0; i < names.size(); ++i) {
            const std::optional<QString> value = doc.Value(section, names.at(i));
            fuzz::Expect(read.at(i) == value.value_or(QString()).trimmed().remove(QChar(0)),
                         QStringLiteral("GetIniValue differs from the file: ") + names.at(i));
        }
        break;
    }

    // The last line of the input, as a value a setting could take. A Windows-1252 file holds
    // only what its code page holds, as the Windows program's files do.
    QString newValue = QString::fromUtf8(bytes.mid(bytes.lastIndexOf('\n') + 1));
    newValue.remove(QLatin1Char('\r'));
    if (doc.TextEncoding() == fx::IniDocument::Encoding::Windows1252)
        newValue = fx::FromWindows1252(fx::ToWindows1252(newValue));
    CheckEdits(doc, newValue);
    return 0;
}
