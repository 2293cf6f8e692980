#include "frame/inidocument.h"

#include "frame/windows1252.h"

#include <QStringDecoder>

namespace fx {

namespace {
constexpr char kBom[] = "\xEF\xBB\xBF";

// "[name]" with anything after the last "]" ignored, as the Windows reader does.
std::optional<QString> HeaderName(const QString &trimmed)
{
    if (!trimmed.startsWith(QLatin1Char('[')))
        return std::nullopt;
    const qsizetype close = trimmed.lastIndexOf(QLatin1Char(']'));
    if (close < 1)
        return std::nullopt;
    return trimmed.mid(1, close - 1).trimmed();
}

QString Unquoted(const QString &value)
{
    if (value.size() >= 2) {
        const QChar first = value.front();
        if ((first == QLatin1Char('"') || first == QLatin1Char('\'')) && value.back() == first)
            return value.mid(1, value.size() - 2);
    }
    return value;
}
} // namespace

IniDocument::Line IniDocument::MakeKeyLine(const QString &name, const QString &value, Ending ending)
{
    Line line;
    line.text = name + QLatin1Char('=') + value;
    line.ending = ending;
    line.isKey = true;
    line.keyName = name;
    line.value = Unquoted(value.trimmed());
    return line;
}

void IniDocument::Section::Reindex()
{
    keys.clear();
    for (qsizetype i = 0; i < qsizetype(body.size()); ++i)
        if (body[i].isKey)
            if (const QString name = Fold(body[i].keyName); !keys.contains(name))
                keys.insert(name, i);
}

IniDocument IniDocument::Parse(const QByteArray &bytes)
{
    IniDocument doc;
    QByteArrayView data(bytes);
    // The byte order mark stands apart from the first line in either encoding, so that the first
    // section is found behind it; it is written back in front.
    if (data.startsWith(kBom)) {
        doc.m_bom = true;
        data = data.sliced(3);
    }
    // A second mark is a character of the first line: the decoder must not swallow it too.
    QStringDecoder utf8(QStringConverter::Utf8,
                        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    QString text = utf8(data);
    if (utf8.hasError()) {
        doc.m_encoding = Encoding::Windows1252;
        text = FromWindows1252(data.toByteArray());
    }

    bool newlineKnown = false;
    Section *current = nullptr;
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), start);
        Line line;
        if (end < 0) {
            end = text.size();
            line.ending = Ending::None;
        } else {
            line.ending = (end > start && text.at(end - 1) == QLatin1Char('\r')) ? Ending::CrLf : Ending::Lf;
        }
        const qsizetype textEnd = line.ending == Ending::CrLf ? end - 1 : end;
        line.text = text.mid(start, textEnd - start);
        start = end + 1;
        if (!newlineKnown && line.ending != Ending::None) {
            doc.m_newline = line.ending;
            newlineKnown = true;
        }

        const QString trimmed = line.text.trimmed();
        if (const auto name = HeaderName(trimmed)) {
            Section section;
            section.name = *name;
            section.header = std::move(line);
            doc.m_sections.push_back(std::move(section));
            current = &doc.m_sections.back();
            continue;
        }
        // Outside a section nothing is a key; a line without "=" or starting with ";" is kept as it is.
        const qsizetype eq = trimmed.indexOf(QLatin1Char('='));
        if (current && eq >= 0 && !trimmed.startsWith(QLatin1Char(';'))) {
            line.isKey = true;
            line.keyName = trimmed.left(eq).trimmed();
            line.value = Unquoted(trimmed.mid(eq + 1).trimmed());
        }
        (current ? current->body : doc.m_preamble).push_back(std::move(line));
    }
    for (Section &section : doc.m_sections)
        section.Reindex();
    doc.ReindexSections();
    return doc;
}

QByteArray IniDocument::Serialize() const
{
    QString text;
    auto append = [&text](const Line &line) {
        text += line.text;
        if (line.ending == Ending::CrLf)
            text += QLatin1String("\r\n");
        else if (line.ending == Ending::Lf)
            text += QLatin1Char('\n');
    };
    for (const Line &line : m_preamble)
        append(line);
    for (const Section &section : m_sections) {
        append(section.header);
        for (const Line &line : section.body)
            append(line);
    }
    QByteArray bytes = m_encoding == Encoding::Windows1252 ? ToWindows1252(text) : text.toUtf8();
    if (m_bom)
        bytes.prepend(kBom);
    return bytes;
}

void IniDocument::ReindexSections()
{
    m_sectionIndex.clear();
    for (qsizetype i = 0; i < qsizetype(m_sections.size()); ++i)
        if (const QString name = Fold(m_sections[i].name); !m_sectionIndex.contains(name))
            m_sectionIndex.insert(name, i);
}

const IniDocument::Section *IniDocument::FindSection(const QString &section) const
{
    const auto it = m_sectionIndex.constFind(Fold(section));
    return it == m_sectionIndex.cend() ? nullptr : &m_sections[*it];
}

std::optional<QString> IniDocument::Value(const QString &section, const QString &key) const
{
    const Section *found = FindSection(section);
    if (!found)
        return std::nullopt;
    const auto it = found->keys.constFind(Fold(key));
    if (it == found->keys.cend())
        return std::nullopt;
    return found->body[*it].value;
}

bool IniDocument::HasSection(const QString &section) const
{
    return FindSection(section) != nullptr;
}

QStringList IniDocument::KeyNames(const QString &section) const
{
    QStringList names;
    const Section *found = FindSection(section);
    if (!found)
        return names;
    for (qsizetype i = 0; i < qsizetype(found->body.size()); ++i) {
        const Line &line = found->body[i];
        // Only the first line of a name counts, so a repeated key is listed once.
        if (line.isKey && found->keys.value(Fold(line.keyName)) == i)
            names.append(line.keyName);
    }
    return names;
}

QStringList IniDocument::SectionNames() const
{
    QStringList names;
    for (qsizetype i = 0; i < qsizetype(m_sections.size()); ++i)
        if (m_sectionIndex.value(Fold(m_sections[i].name)) == i)
            names.append(m_sections[i].name);
    return names;
}

void IniDocument::EnsureLastLineEnds()
{
    Line *last = nullptr;
    if (!m_sections.empty())
        last = m_sections.back().body.empty() ? &m_sections.back().header : &m_sections.back().body.back();
    else if (!m_preamble.empty())
        last = &m_preamble.back();
    if (last && last->ending == Ending::None)
        last->ending = m_newline;
}

bool IniDocument::AddSection(const QString &section)
{
    if (HasSection(section))
        return false;
    EnsureLastLineEnds();
    Section added;
    added.name = section.trimmed();
    added.header.text = QLatin1Char('[') + added.name + QLatin1Char(']');
    added.header.ending = m_newline;
    m_sections.push_back(std::move(added));
    m_sectionIndex.insert(Fold(m_sections.back().name), qsizetype(m_sections.size()) - 1);
    return true;
}

bool IniDocument::SetValue(const QString &section, const QString &key, const QString &value)
{
    const QString name = key.trimmed();
    AddSection(section);
    Section &target = m_sections[m_sectionIndex.value(Fold(section))];
    const auto it = target.keys.constFind(Fold(name));
    if (it != target.keys.cend()) {
        Line &line = target.body[*it];
        // The same value again leaves the line, and so the file, as it is.
        if (line.text.mid(line.text.indexOf(QLatin1Char('=')) + 1).trimmed() == value)
            return false;
        line = MakeKeyLine(line.keyName, value, line.ending);
        return true;
    }
    // A new key goes right after the last key line, ahead of trailing blank lines and comments.
    qsizetype at = 0;
    for (qsizetype i = 0; i < qsizetype(target.body.size()); ++i)
        if (target.body[i].isKey)
            at = i + 1;
    Line line = MakeKeyLine(name, value, m_newline);
    if (at == qsizetype(target.body.size())) {
        // Only the file's last line can lack an end: the new line takes that place, as it was.
        Line &before = at == 0 ? target.header : target.body.back();
        if (before.ending == Ending::None) {
            before.ending = m_newline;
            line.ending = Ending::None;
        }
    }
    target.body.insert(target.body.begin() + at, std::move(line));
    target.keys.insert(Fold(name), at);
    return true;
}

bool IniDocument::DeleteKey(const QString &section, const QString &key)
{
    const auto sectionIt = m_sectionIndex.constFind(Fold(section));
    if (sectionIt == m_sectionIndex.cend())
        return false;
    Section &target = m_sections[*sectionIt];
    const QString folded = Fold(key);
    // Every line of the name goes, so that a later duplicate does not come to light.
    const auto removed = std::erase_if(target.body, [&](const Line &line) {
        return line.isKey && Fold(line.keyName) == folded;
    });
    if (removed == 0)
        return false;
    target.Reindex();
    return true;
}

bool IniDocument::DeleteSection(const QString &section)
{
    const QString folded = Fold(section);
    const auto removed = std::erase_if(m_sections, [&](const Section &s) { return Fold(s.name) == folded; });
    if (removed == 0)
        return false;
    ReindexSections();
    return true;
}

bool IniDocument::Apply(const IniEdit &edit)
{
    if (!edit.key)
        return DeleteSection(edit.section);
    if (!edit.value)
        return DeleteKey(edit.section, *edit.key);
    return SetValue(edit.section, *edit.key, *edit.value);
}

} // namespace fx
