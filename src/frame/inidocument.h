#pragma once
// One .ini file in memory: every line as it was read, and an index of its sections and keys.

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace fx {

/// A change to an .ini file, with the private-profile meaning: a null value removes the key,
/// a null key removes the whole section.
struct IniEdit
{
    QString section;
    std::optional<QString> key;
    std::optional<QString> value;
};

/// The parsed text of an .ini file, able to give itself back byte for byte.
///
/// Invariants: serialising an unedited document gives the bytes it was parsed from; the first
/// section of a name (compared case-insensitively) is the one found, and within a section the
/// first key of a name; an edit touches only the lines it must, every other line keeps its
/// text, its line end and its place.
class IniDocument
{
public:
    enum class Encoding { Utf8, Windows1252 };

    /// Parses bytes: valid UTF-8 is read as UTF-8, anything else as Windows-1252; a leading
    /// UTF-8 byte order mark is set aside in both cases.
    static IniDocument Parse(const QByteArray &bytes);

    /// The file's bytes in the encoding and line-end style it was read with.
    QByteArray Serialize() const;

    /// The value of a key: trimmed, without one enclosing pair of quotes.
    std::optional<QString> Value(const QString &section, const QString &key) const;
    bool HasSection(const QString &section) const;
    /// Key names of the section in file order, each name once; empty for a missing section.
    QStringList KeyNames(const QString &section) const;
    /// Section names in file order, each name once.
    QStringList SectionNames() const;

    /// Applies one edit; true if the document changed.
    bool Apply(const IniEdit &edit);
    /// Appends an empty section unless one of that name exists; true if it was added.
    bool AddSection(const QString &section);

    Encoding TextEncoding() const { return m_encoding; }
    bool IsEmpty() const { return m_preamble.empty() && m_sections.empty(); }

    /// Names compare through this form: trimmed and case-folded.
    static QString Fold(const QString &name) { return name.trimmed().toCaseFolded(); }

private:
    enum class Ending : quint8 { None, Lf, CrLf };

    struct Line
    {
        QString text;
        Ending ending = Ending::None;
        bool isKey = false;
        QString keyName;   ///< trimmed, as written (key lines)
        QString value;     ///< trimmed and unquoted (key lines)
    };

    struct Section
    {
        QString name;                    ///< as written in the header
        Line header;
        std::vector<Line> body;          ///< every line up to the next header
        QHash<QString, qsizetype> keys;  ///< folded key name -> first body line with it
        void Reindex();
    };

    static Line MakeKeyLine(const QString &name, const QString &value, Ending ending);
    const Section *FindSection(const QString &section) const;
    void ReindexSections();
    void EnsureLastLineEnds();
    bool SetValue(const QString &section, const QString &key, const QString &value);
    bool DeleteKey(const QString &section, const QString &key);
    bool DeleteSection(const QString &section);

    Encoding m_encoding = Encoding::Utf8;
    bool m_bom = false;
    Ending m_newline = Ending::Lf;          ///< for lines this program adds
    std::vector<Line> m_preamble;           ///< lines before the first header: never keys
    std::vector<Section> m_sections;
    QHash<QString, qsizetype> m_sectionIndex; ///< folded name -> first section with it
};

} // namespace fx
