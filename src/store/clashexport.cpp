#include "store/clashexport.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"
#include "store/messages.h"

#include <QSaveFile>

namespace fx {

namespace {

QByteArray CsvField(const QVariant &value)
{
    if (value.isNull())
        return {};
    QByteArray text = value.typeId() == QMetaType::Double ? QByteArray::number(value.toDouble(), 'g', 15)
                                                          : value.toString().toUtf8();
    if (text.contains(',') || text.contains('"') || text.contains('\n') || text.contains('\r'))
        text = '"' + text.replace("\"", "\"\"") + '"';
    return text;
}

void WriteOrRaise(QSaveFile &out, const QByteArray &bytes)
{
    if (out.write(bytes) != bytes.size())
        Raise(msg::ExportWriteFailed, {out.fileName(), out.errorString()});
}

} // namespace

qint64 ExportClashesCsv(const QString &file)
{
    return Frame("ExportClashesCsv", [&] {
        LogMessage(msg::ExportingClashes, {file});
        QString sql = QStringLiteral("SELECT * FROM [%1]").arg(ClashesTableName());
        const QString filter = GetGridFilter();
        if (!filter.isEmpty())
            sql += QStringLiteral(" WHERE(") + filter + QLatin1Char(')');
        sql += QStringLiteral(" ORDER BY [clash_id];");
        SqliteStatement rows(ClashConnection(), sql);

        QSaveFile out(file);
        if (!out.open(QIODevice::WriteOnly))
            Raise(msg::ExportWriteFailed, {file, out.errorString()});
        QByteArray line;
        for (int column = 0; column < rows.ColumnCount(); ++column)
            line += (column ? "," : "") + CsvField(rows.ColumnName(column));
        WriteOrRaise(out, line + "\r\n");
        qint64 count = 0;
        while (rows.Step()) {
            line.clear();
            for (int column = 0; column < rows.ColumnCount(); ++column)
                line += (column ? "," : "") + CsvField(rows.Column(column));
            WriteOrRaise(out, line + "\r\n");
            if (++count % 10000 == 0)
                DoEventsIfInput();
        }
        if (!out.commit())
            Raise(msg::ExportWriteFailed, {file, out.errorString()});
        LogMessage(msg::ClashesExported, {QString::number(count)});
        return count;
    });
}

} // namespace fx
