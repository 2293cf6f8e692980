#include "pds/textfilereader.h"

#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/windows1252.h"
#include "pds/adotypes.h"

#include <QDateTime>

namespace fx {

namespace {

QByteArrayView Trimmed(QByteArrayView text)
{
    qsizetype start = 0, end = text.size();
    while (start < end && text[start] == ' ')
        ++start;
    while (end > start && text[end - 1] == ' ')
        --end;
    return text.sliced(start, end - start);
}

// "YYYY-MM-DD", followed by ":", " " or "T" and "HH:MM:SS" (RIS writes the colon).
QVariant ParseDateTime(QByteArrayView text)
{
    const auto number = [&](qsizetype at, qsizetype length, bool *ok) {
        int value = 0;
        for (qsizetype i = at; i < at + length; ++i) {
            if (i >= text.size() || text[i] < '0' || text[i] > '9') {
                *ok = false;
                return 0;
            }
            value = value * 10 + (text[i] - '0');
        }
        return value;
    };
    bool ok = text.size() == 10 || text.size() == 19;
    const QDate date(number(0, 4, &ok), number(5, 2, &ok), number(8, 2, &ok));
    QTime time(0, 0);
    if (text.size() == 19)
        time = QTime(number(11, 2, &ok), number(14, 2, &ok), number(17, 2, &ok));
    if (!ok || !date.isValid() || !time.isValid())
        return QVariant();
    return QDateTime(date, time);
}

} // namespace

TextFileReader::TextFileReader(const QString &textFile, qsizetype blockSize)
    : m_file(textFile)
{
    m_format = ReadSchemaIni(textFile);
    if (!m_file.open(QIODevice::ReadOnly))
        Raise(msg::FileNotExists, {textFile});
    m_ansi = m_format.characterSet.compare(QLatin1String("ANSI"), Qt::CaseInsensitive) == 0;
    for (const TextFileColumn &column : std::as_const(m_format.columns)) {
        RecordsetField field{column.name, adotype::VarWChar, column.width};
        if (column.type == QLatin1String("short"))
            field = {column.name, adotype::SmallInt, 0};
        else if (column.type == QLatin1String("long"))
            field = {column.name, adotype::Integer, 0};
        else if (column.type == QLatin1String("double"))
            field = {column.name, adotype::Double, 0};
        else if (column.type == QLatin1String("datetime"))
            field = {column.name, adotype::Date, 0};
        else if (column.type == QLatin1String("memo"))
            field = {column.name, adotype::LongVarWChar, 0};
        else if (field.definedSize <= 0)
            field.definedSize = 255;
        m_fields << field;
    }
    m_lines = std::make_unique<BlockLineReader>(m_file, blockSize);
    QByteArrayView header;
    if (m_format.colNameHeader)
        m_lines->ReadLine(header);
}

TextFileReader::~TextFileReader() = default;

QVariant TextFileReader::Convert(int column, QByteArrayView field) const
{
    const int type = m_fields.at(column).type;
    const bool fixed = m_format.layout == TextFileFormat::Layout::FixedLength;
    if (type == adotype::VarWChar || type == adotype::LongVarWChar) {
        if (fixed) {
            while (!field.isEmpty() && field.back() == ' ')
                field.chop(1);
        }
        if (field.isEmpty())
            return QVariant();
        return m_ansi ? FromWindows1252(field.toByteArray()) : QString::fromUtf8(field);
    }
    field = Trimmed(field);
    if (field.isEmpty())
        return QVariant();
    bool ok = false;
    if (type == adotype::Double) {
        const double value = field.toDouble(&ok);
        return ok ? QVariant(value) : QVariant();
    }
    if (type == adotype::Date)
        return ParseDateTime(field);
    const qlonglong value = field.toLongLong(&ok);
    if (ok)
        return QVariant(qint64(value));
    // "1.0" in a whole-number column still reads as a number.
    const double rounded = field.toDouble(&ok);
    return ok ? QVariant(qint64(qRound64(rounded))) : QVariant();
}

bool TextFileReader::Next(QVariantList &row)
{
    QByteArrayView line;
    if (!m_lines->ReadLine(line))
        return false;
    const int count = int(m_fields.size());
    row.clear();
    row.reserve(count);
    if (m_format.layout == TextFileFormat::Layout::FixedLength) {
        qsizetype offset = 0;
        for (int i = 0; i < count; ++i) {
            // The last field takes the rest of the row, however its trailing blanks were kept.
            const qsizetype width = i + 1 == count ? line.size() : m_format.columns.at(i).width;
            const QByteArrayView field = offset < line.size() ? line.sliced(offset, qMin(width, line.size() - offset))
                                                              : QByteArrayView();
            row << Convert(i, field);
            offset += width;
        }
        return true;
    }
    qsizetype pos = 0;
    for (int i = 0; i < count; ++i) {
        if (pos > line.size()) {
            row << QVariant();
            continue;
        }
        qsizetype end = line.indexOf(m_format.delimiter, pos);
        if (end < 0)
            end = line.size();
        row << Convert(i, line.sliced(pos, end - pos));
        pos = end + 1;
    }
    return true;
}

} // namespace fx
