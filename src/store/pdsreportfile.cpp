#include "store/pdsreportfile.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "store/statusmessages.h"

namespace fx {

namespace {

// The clash number of a report line, or 0 when the line holds none. A sign is allowed before
// the digits; a decimal point or a thousands comma makes the line no clash line.
qint64 ReportLineNumber(const QString &line)
{
    const QString head = line.left(10).trimmed();
    if (head.isEmpty() || head.contains(QLatin1Char(',')) || head.contains(QLatin1Char('.')))
        return 0;
    bool ok = false;
    const qint64 number = head.toLongLong(&ok);
    return ok && number > 0 ? number : 0;
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
