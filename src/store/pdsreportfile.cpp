#include "store/pdsreportfile.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "store/statusmessages.h"

#include <algorithm>

namespace fx {

namespace {

// The clash number of a report line, or 0 when the line holds none: digits alone, a sign
// allowed before them. Anything else (a decimal point, a thousands comma) makes the line no
// clash line; the test is ours, as Qt's conversion takes the digits before a NUL as a number.
qint64 ReportLineNumber(const QString &line)
{
    const QString head = line.left(10).trimmed();
    const qsizetype first = head.startsWith(QLatin1Char('+')) || head.startsWith(QLatin1Char('-')) ? 1 : 0;
    if (head.size() == first
        || !std::all_of(head.cbegin() + first, head.cend(), [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }))
        return 0;
    const qint64 number = head.toLongLong();
    return number > 0 ? number : 0;
}

} // namespace

QStringList ReadPDSReportFile(const QString &file)
{
    return Frame("ReadPDSReportFile", [&] {
        LogMessage(msg::ReadingPDSReportFile, {file});
        QStringList ids;
        for (const QString &line : ReadFile2Array(file)) {
            if (const qint64 number = ReportLineNumber(line); number > 0)
                ids << QString::number(number);
            DoEventsIfInput();
        }
        LogMessage(msg::ClashIDsImported, {QString::number(ids.size())});
        return ids;
    });
}

} // namespace fx
