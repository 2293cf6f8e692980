// Arbitrary bytes as the interference report that the options name as a filter: the reader
// takes a clash number from each line that has one in its first ten columns, and the filter
// made of them reads exactly those clashes from an in-memory store, and nothing else.
#include "fuzzsupport.h"

#include "frame/failure.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/pdsreportfile.h"

#include <QRegularExpression>

#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr int kStoredClashes = 2000;

struct World
{
    QString configFile;
    QString reportFile;
};

// A project "P" whose options name the report, and a store of clashes 1 to kStoredClashes.
const World &TheWorld()
{
    static const World world = [] {
        World w;
        w.reportFile = fuzz::Folder() + QStringLiteral("report.txt");
        const QByteArray config = "[POptions]\nPDSReportFile=" + w.reportFile.toUtf8() + "\n";
        w.configFile = fuzz::WriteFile(QStringLiteral("P.ini"), config.constData(), size_t(config.size()));
        fx::ClashStore().ProjectDefinition.name = QStringLiteral("P");
        fx::ClashStore().ClashConnection =
            std::make_unique<fx::SqliteDb>(QStringLiteral(":memory:"), fx::SqliteDb::OpenMode::ReadWriteCreate);
        fx::SqliteDb &db = fx::ClashConnection();
        db.Execute(QStringLiteral("CREATE TABLE base_clash_table (clash_id INTEGER PRIMARY KEY, status TEXT);"
                                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                                  "INSERT INTO base_clash_table SELECT i, 'Unapproved' FROM n;")
                       .arg(kStoredClashes));
        fuzz::AllowOnlyReading(db.Handle(), {QStringLiteral("base_clash_table")}, {});
        return w;
    }();
    return world;
}

// The clash numbers a reader of the report sees: the first ten characters of a line, blanks
// around them ignored, are a whole number above 0 written in digits, with or without a sign.
QList<qint64> ExpectedIds(const QByteArray &bytes)
{
    static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+$"));
    QList<qint64> ids;
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const QString head = line.left(10).trimmed();
        if (!number.match(head).hasMatch())
            continue;
        const qint64 id = head.toLongLong();
        if (id > 0)
            ids << id;
    }
    return ids;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const World &world = TheWorld();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    fuzz::WriteFile(QStringLiteral("report.txt"), bytes.constData(), size);
    const QList<qint64> expected = ExpectedIds(bytes);

    const QStringList ids = fx::ReadPDSReportFile(world.reportFile);
    QStringList meant;
    for (const qint64 id : expected)
        meant << QString::number(id);
    fuzz::Expect(ids == meant, QStringLiteral("clash numbers read: %1; in the report: %2").arg(ids.join(QLatin1Char(',')), meant.join(QLatin1Char(','))));

    // Through the advanced filter, which the clash view is built with, to the rows it lets pass.
    const QString filter = fx::GetAdvancedFilter(world.configFile);
    sqlite3 *db = fx::ClashConnection().Handle();
    fuzz::Expect(fuzz::IsOneCondition(db, QStringLiteral("base_clash_table"), filter),
                 QStringLiteral("the report's filter is refused: ") + filter);
    QList<qint64> passed;
    fx::SqliteStatement rows(fx::ClashConnection(), QStringLiteral("SELECT clash_id FROM base_clash_table WHERE ") + filter
                                                        + QStringLiteral(" ORDER BY clash_id;"));
    while (rows.Step())
        passed << rows.Column(0).toLongLong();
    QList<qint64> wanted;
    for (const qint64 id : expected)
        if (id <= kStoredClashes && !wanted.contains(id))
            wanted << id;
    std::sort(wanted.begin(), wanted.end());
    fuzz::Expect(passed == wanted, QStringLiteral("the report's filter lets %1 clashes pass, not %2").arg(passed.size()).arg(wanted.size()));
    return 0;
}
