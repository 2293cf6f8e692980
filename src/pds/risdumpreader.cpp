#include "pds/risdumpreader.h"

#include "frame/failure.h"
#include "pds/messages.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cstring>

namespace fx {

namespace {

constexpr char kRISMarker[] = "***RIS***";
constexpr char kNullNumber[] = "-32768";

bool StartsWithNoCase(QByteArrayView text, QByteArrayView lowerPrefix)
{
    return text.size() >= lowerPrefix.size() && qstrnicmp(text.data(), lowerPrefix.data(), lowerPrefix.size()) == 0;
}

QByteArrayView TrimmedLeft(QByteArrayView text)
{
    qsizetype i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    return text.sliced(i);
}

/// The name that starts `text`: it runs to the first of the `stops` or the end.
QByteArrayView NameAt(QByteArrayView text, const char *stops)
{
    qsizetype i = 0;
    while (i < text.size() && !std::strchr(stops, text[i]))
        ++i;
    return text.first(i);
}

// Lines that may stand between the last row and the end marker, or right after the marker.
bool IsTrailerLine(QByteArrayView line)
{
    const QByteArrayView text = TrimmedLeft(line);
    if (StartsWithNoCase(text, "create unique index ") || StartsWithNoCase(text, "create index "))
        return text.contains(" on ");
    if (StartsWithNoCase(text, "grant "))
        return text.contains(" on ") && text.contains(" to ");
    return false;
}

QList<QByteArray> Tokens(QByteArrayView line)
{
    const QByteArray simplified = line.toByteArray().simplified();
    return simplified.isEmpty() ? QList<QByteArray>() : simplified.split(' ');
}

qsizetype ToCount(const QByteArray &token, bool *ok)
{
    const qlonglong value = token.toLongLong(ok);
    *ok = *ok && value >= 1 && value < (qlonglong(1) << 31);
    return qsizetype(value);
}

// Cuts, in place, each field of the fixed-form row that starts at `from` and ends `text` to
// its FixedTextWidth, so that the widths of the Schema.ini still place every field. A CR
// ending the row stays.
void NarrowFixedRow(QByteArray &text, qsizetype from, const QList<RISDumpColumn> &columns)
{
    qsizetype end = text.size();
    if (end > from && text.at(end - 1) == '\r')
        --end;
    qsizetype read = from;
    qsizetype write = from;
    for (const RISDumpColumn &column : columns) {
        if (read >= end)
            break;
        const qsizetype kept = qMin(FixedTextWidth(column), end - read);
        std::memmove(text.data() + write, text.constData() + read, size_t(kept));
        write += kept;
        read += column.span;
    }
    text.remove(write, end - write);
}

} // namespace

RISDumpReader::RISDumpReader(QIODevice &device, qsizetype blockSize)
    : m_lines(device, blockSize)
{
}

QByteArray RISDumpReader::SchemaOfLine(QByteArrayView line)
{
    const QByteArrayView text = TrimmedLeft(line);
    for (const char *lead : {"default schema ", "create schema ", "create secure schema "}) {
        if (StartsWithNoCase(text, lead))
            return NameAt(TrimmedLeft(text.sliced(qstrlen(lead))), " ;.\t").toByteArray();
    }
    return QByteArray();
}

QByteArray RISDumpReader::TableOfLine(QByteArrayView line)
{
    const QByteArrayView text = TrimmedLeft(line);
    if (!StartsWithNoCase(text, "create table "))
        return QByteArray();
    return NameAt(TrimmedLeft(text.sliced(13)), " (;\t").toByteArray();
}

bool RISDumpReader::NextLine(QByteArrayView &line)
{
    if (m_hasPushedBack) {
        m_hasPushedBack = false;
        line = m_pushedBack;
        return true;
    }
    return m_lines.ReadLine(line);
}

void RISDumpReader::PushBack(QByteArrayView line)
{
    m_pushedBack = line.toByteArray();
    m_hasPushedBack = true;
}

bool RISDumpReader::ReadLine(QByteArrayView &line)
{
    return NextLine(line);
}

bool RISDumpReader::FindSchema(const QString &schema)
{
    const QByteArray wanted = schema.trimmed().toLower().toLatin1();
    QByteArrayView line;
    while (NextLine(line)) {
        const QByteArray name = SchemaOfLine(line);
        if (!name.isEmpty() && name.toLower() == wanted)
            return true;
    }
    return false;
}

bool RISDumpReader::FindTable(const QString &table)
{
    const QByteArray wanted = table.trimmed().toLower().toLatin1();
    QByteArrayView line;
    while (NextLine(line)) {
        if (line.startsWith(kRISEndOfSchema) || !SchemaOfLine(line).isEmpty()) {
            PushBack(line);
            return false;
        }
        if (line.size() > 13 && TableOfLine(line).toLower() == wanted) {
            m_definition = line.toByteArray();
            m_rowsEnded = false;
            m_inTrailer = false;
            m_trailerPending = false;
            m_endOfTableFound = false;
            return true;
        }
    }
    return false;
}

RISDumpTable RISDumpReader::ReadTableHeader()
{
    RISDumpTable table;
    const QByteArrayView head = TrimmedLeft(m_definition).sliced(13);
    table.name = QString::fromLatin1(NameAt(TrimmedLeft(head), " (;\t"));

    // The definition may run over several lines; it ends where its brackets balance.
    QByteArray definition = m_definition;
    QByteArrayView line;
    while (!definition.contains('(') || definition.count('(') > definition.count(')')) {
        if (!NextLine(line))
            break;
        if (StartsWithNoCase(TrimmedLeft(line), "insert into ") || line.startsWith(kRISMarker)) {
            PushBack(line);
            break;
        }
        definition += ' ';
        definition += line;
    }
    const qsizetype open = definition.indexOf('(');
    const qsizetype close = definition.lastIndexOf(')');
    if (open < 0 || close < open)
        Raise(msg::IncorrectRISDumpFormat);

    // Items are split at commas outside brackets, so "decimal(10,2)" stays whole.
    const QByteArrayView list = QByteArrayView(definition).sliced(open + 1, close - open - 1);
    int depth = 0;
    qsizetype itemStart = 0;
    for (qsizetype i = 0; i <= list.size(); ++i) {
        const char c = i < list.size() ? list[i] : ',';
        if (c == '(')
            ++depth;
        else if (c == ')')
            --depth;
        if (c != ',' || (depth > 0 && i < list.size()))
            continue;
        const QByteArray item = list.sliced(itemStart, i - itemStart).toByteArray().trimmed();
        itemStart = i + 1;
        if (item.isEmpty())
            continue;
        RISDumpColumn column;
        const QByteArrayView name = NameAt(item, " (\t");
        column.name = QString::fromLatin1(name);
        column.type = QString::fromLatin1(item.mid(name.size()).simplified()).toLower();
        table.columns.append(column);
    }
    if (table.columns.isEmpty())
        Raise(msg::NoColumnsInTable, {table.name});

    // The insert line, then the format line.
    bool insertSeen = false;
    while (!insertSeen && NextLine(line)) {
        if (StartsWithNoCase(TrimmedLeft(line), "insert into ")) {
            insertSeen = true;
        } else if (line.startsWith(kRISMarker) || !TableOfLine(line).isEmpty() || !SchemaOfLine(line).isEmpty()) {
            break;
        }
    }
    if (!insertSeen || !NextLine(line) || line.startsWith(kRISMarker)) {
        // A table without rows, or a dump cut short: the marker decides.
        m_rowsEnded = true;
        m_endOfTableFound = line.startsWith(kRISEndOfTable);
        return table;
    }
    if (line.contains(kRISVariable))
        return table;

    table.fixed = true;
    if (line.trimmed().toByteArray().toLower() == table.name.toLower().toLatin1() + " 1") {
        if (!NextLine(line))
            Raise(msg::ColumnsWidthNotDefined, {table.name});
    }
    ReadWidths(table, line);
    return table;
}

void RISDumpReader::ReadWidths(RISDumpTable &table, QByteArrayView line)
{
    const QList<QByteArray> tokens = Tokens(line);
    const qsizetype count = table.columns.size();
    if (tokens.size() == count) {
        // A bare width for each column, fields side by side.
        for (qsizetype i = 0; i < count; ++i) {
            bool ok = false;
            table.columns[i].span = ToCount(tokens.at(i), &ok);
            if (!ok)
                Raise(msg::ColumnWidthNotCorrect, {QString::fromLatin1(tokens.at(i)), QString::fromLatin1(tokens.at(i)),
                                                   table.columns.at(i).name});
        }
        return;
    }
    if (tokens.size() != 3 * count)
        Raise(msg::ColumnsWidthNotDefined, {table.name});

    // "name start end" for each column; one blank follows every field of a row, so a field
    // spans up to the next one's start, and the last one its width and the row's final blank.
    QList<qsizetype> starts, ends;
    for (const RISDumpColumn &column : std::as_const(table.columns)) {
        qsizetype at = 0;
        while (at < count && tokens.at(3 * at).toLower() != column.name.toLower().toLatin1())
            ++at;
        if (at == count)
            Raise(msg::ColumnWidthNotFound, {column.name});
        bool okStart = false, okEnd = false;
        const qsizetype start = ToCount(tokens.at(3 * at + 1), &okStart);
        const qsizetype end = ToCount(tokens.at(3 * at + 2), &okEnd);
        const bool follows = starts.isEmpty() ? start == 1 : start > ends.last();
        if (!okStart || !okEnd || end < start || !follows)
            Raise(msg::ColumnWidthNotCorrect, {QString::fromLatin1(tokens.at(3 * at + 1)),
                                               QString::fromLatin1(tokens.at(3 * at + 2)), column.name});
        starts.append(start);
        ends.append(end);
    }
    for (qsizetype i = 0; i < count; ++i)
        table.columns[i].span = i + 1 < count ? starts.at(i + 1) - starts.at(i) : ends.at(i) - starts.at(i) + 2;
}

bool RISDumpReader::EndsRows(QByteArrayView line)
{
    if (line.startsWith(kRISMarker)) {
        m_endOfTableFound = line.startsWith(kRISEndOfTable);
        return true;
    }
    if (IsTrailerLine(line)) {
        m_inTrailer = true;
        return true;
    }
    return !TableOfLine(line).isEmpty();
}

void RISDumpReader::FindEndMarkerAfterTrailer()
{
    // Index and grant lines may precede the marker; anything else means it is missing, and is
    // left for whoever reads on (the next table, say).
    QByteArrayView line;
    while (NextLine(line)) {
        if (line.trimmed().isEmpty() || IsTrailerLine(line))
            continue;
        m_endOfTableFound = line.startsWith(kRISEndOfTable);
        if (!m_endOfTableFound)
            PushBack(line);
        return;
    }
}

bool RISDumpReader::ReadRows(QByteArrayView &rows)
{
    if (m_rowsEnded) {
        // Only now, with the caller done with the last rows, may the buffer move on.
        if (std::exchange(m_trailerPending, false))
            FindEndMarkerAfterTrailer();
        return false;
    }
    QByteArrayView block;
    const bool fromPushedBack = m_hasPushedBack;
    if (m_hasPushedBack) {
        m_hasPushedBack = false;
        m_pushedBack += '\n';
        block = m_pushedBack;
    } else if (!m_lines.ReadBlock(block)) {
        m_rowsEnded = true;
        return false;
    }
    const char *data = block.data();
    const qsizetype size = block.size();
    qsizetype pos = 0;
    while (pos < size) {
        const void *lf = std::memchr(data + pos, '\n', size_t(size - pos));
        const qsizetype next = lf ? static_cast<const char *>(lf) - data + 1 : size;
        // Only a line led by one of these letters can end the rows: a cheap test for every row.
        const char c = data[pos];
        if ((c == '*' || c == 'c' || c == 'C' || c == 'g' || c == 'G')
            && EndsRows(ChopCR(QByteArrayView(data + pos, lf ? next - pos - 1 : next - pos)))) {
            m_rowsEnded = true;
            rows = block.first(pos);
            // What follows the rows stays to be read: after the end marker or a trailer line,
            // the lines behind it; a line that ends the rows otherwise, itself too.
            const qsizetype keepFrom = m_endOfTableFound || m_inTrailer ? next : pos;
            if (fromPushedBack) {
                if (keepFrom < size)
                    PushBack(ChopCR(block.sliced(keepFrom).chopped(1)));
            } else {
                m_lines.Unread(size - keepFrom);
            }
            m_trailerPending = m_inTrailer;
            return !rows.isEmpty() || ReadRows(rows);
        }
        pos = next;
    }
    rows = block;
    return true;
}

void AppendFreeRowDelimited(QByteArrayView line, int columns, bool replaceNull, QByteArray &out)
{
    struct Value
    {
        QByteArrayView text; ///< quoted values still hold their doubled quotes
        bool quoted = false;
        bool null = false;
    };
    QVarLengthArray<Value, 64> values;
    const char *data = line.data();
    const qsizetype size = line.size();

    // nullBlanks 2 or 3: one blank follows each value, a NULL takes that many; 0: runs of
    // blanks are single separators and there is no NULL. False for a row that does not parse so.
    const auto split = [&](int nullBlanks) {
        values.clear();
        qsizetype pos = 0;
        bool first = true;
        while (true) {
            qsizetype run = 0;
            while (pos + run < size && data[pos + run] == ' ')
                ++run;
            const bool atEnd = pos + run == size;
            if (nullBlanks > 0) {
                // After a value its own blank comes first; at the row's end it may be missing.
                qsizetype nulls = first ? run : run - 1;
                if (!first && run == 0)
                    nulls = atEnd ? 0 : -1;
                if (nulls < 0 || nulls % nullBlanks != 0)
                    return false;
                for (qsizetype i = 0; i < nulls / nullBlanks; ++i)
                    values.append({QByteArrayView(), false, true});
            }
            pos += run;
            if (atEnd)
                return true;
            first = false;
            if (data[pos] == '\'') {
                qsizetype end = pos + 1;
                while (true) {
                    const void *quote = std::memchr(data + end, '\'', size_t(size - end));
                    if (!quote) {
                        if (nullBlanks > 0)
                            return false;
                        end = size;
                        break;
                    }
                    end = static_cast<const char *>(quote) - data;
                    if (end + 1 < size && data[end + 1] == '\'') {
                        end += 2;
                        continue;
                    }
                    break;
                }
                values.append({QByteArrayView(data + pos + 1, end - pos - 1), true, false});
                pos = qMin(end + 1, size);
                if (nullBlanks > 0 && pos < size && data[pos] != ' ')
                    return false;
            } else {
                const void *blank = std::memchr(data + pos, ' ', size_t(size - pos));
                const qsizetype end = blank ? static_cast<const char *>(blank) - data : size;
                values.append({QByteArrayView(data + pos, end - pos), false, false});
                pos = end;
            }
        }
    };
    if (!(split(2) && values.size() == columns) && !(split(3) && values.size() == columns))
        split(0); // never fails: an unclosed quote takes the rest of the row

    for (qsizetype i = 0; i < values.size(); ++i) {
        if (i > 0)
            out += '\x01';
        const Value &value = values.at(i);
        if (value.null)
            continue;
        const qsizetype from = out.size();
        if (!value.quoted) {
            out += replaceNull && value.text == kNullNumber ? QByteArrayView("0") : value.text;
        } else {
            QByteArrayView rest = value.text;
            for (qsizetype quote; (quote = rest.indexOf("''")) >= 0; rest = rest.sliced(quote + 2)) {
                out += rest.first(quote);
                out += '\'';
            }
            out += rest;
        }
        // The separator may not stand inside a value.
        for (qsizetype j = from; j < out.size(); ++j) {
            if (out.at(j) == '\x01')
                out[j] = ' ';
        }
    }
    out += '\n';
}

void ReplaceNullNumbersInFixedRow(char *row, qsizetype length, const QList<RISDumpColumn> &columns)
{
    qsizetype offset = 0;
    for (qsizetype i = 0; i < columns.size() && offset < length; ++i) {
        const qsizetype width = qMin(columns.at(i).span, length - offset);
        if (IsRISNumberType(columns.at(i).type)) {
            qsizetype start = offset;
            while (start < offset + width && row[start] == ' ')
                ++start;
            qsizetype end = offset + width;
            while (end > start && (row[end - 1] == ' ' || row[end - 1] == '\r'))
                --end;
            if (QByteArrayView(row + start, end - start) == kNullNumber)
                std::memcpy(row + start, "0     ", 6);
        }
        offset += columns.at(i).span;
    }
}

bool IsRISNumberType(const QString &type)
{
    // As in the Schema.ini type table, a type that holds "char" is text whatever follows.
    if (type.contains(QLatin1String("char")))
        return false;
    for (const char *number : {"int", "decimal", "real", "double"}) {
        if (type.contains(QLatin1String(number)))
            return true;
    }
    return false;
}

qsizetype FixedTextWidth(const RISDumpColumn &column)
{
    return column.type.contains(QLatin1String("char")) ? qMin(column.span, kMaxTextCharWidth) : column.span;
}

QByteArrayView RowsAsText(const RISDumpTable &table, QByteArrayView rows, bool replaceNull, QByteArray &buffer)
{
    const bool narrow = table.fixed && std::any_of(table.columns.cbegin(), table.columns.cend(), [](const RISDumpColumn &c) {
                            return FixedTextWidth(c) < c.span;
                        });
    if (table.fixed && !replaceNull && !narrow)
        return rows;
    buffer.clear();
    buffer.reserve(rows.size());
    qsizetype pos = 0;
    while (pos < rows.size()) {
        qsizetype lf = rows.indexOf('\n', pos);
        if (lf < 0)
            lf = rows.size();
        if (table.fixed) {
            const qsizetype from = buffer.size();
            buffer += rows.sliced(pos, lf - pos);
            if (replaceNull)
                ReplaceNullNumbersInFixedRow(buffer.data() + from, buffer.size() - from, table.columns);
            if (narrow)
                NarrowFixedRow(buffer, from, table.columns);
            if (lf < rows.size())
                buffer += '\n';
        } else {
            const QByteArrayView line = ChopCR(rows.sliced(pos, lf - pos));
            if (!line.isEmpty())
                AppendFreeRowDelimited(line, int(table.columns.size()), replaceNull, buffer);
        }
        pos = lf + 1;
    }
    return buffer;
}

} // namespace fx
