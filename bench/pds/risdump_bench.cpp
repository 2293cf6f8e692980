// Reading a fixed-form RIS dump of about 100 MB: to the text file, and on into the local store,
// each against `wc -l` over the same file (wc_s is wc's time, wc_ratio wc's time over ours;
// the target is at least 0.25 for the text file). cp_s is `cp` writing the dump into a new
// file beside the text file: the least that writing a text file of that size costs.
#include "pds/risdumpparse.h"
#include "pds/sqlitedb.h"
#include "pds/textfilequery.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

struct BenchDump
{
    QTemporaryDir dir;
    QString file;
    qint64 bytes = 0;
    qint64 rows = 0;
};

// Rows as risunlod writes them: each field padded to its width, one blank after every field.
const BenchDump &Dump()
{
    static BenchDump dump = [] {
        BenchDump made;
        made.file = made.dir.filePath(QStringLiteral("big.dmp"));
        QFile out(made.file);
        out.open(QIODevice::WriteOnly);
        QByteArray block = "default schema pd_bench\n"
                           "create table pdtable_bench (id int, kind smallint, name char(40), size double, "
                           "remark char(20), model int)\n"
                           "insert into pdtable_bench (id, kind, name, size, remark, model) values (?, ?, ?, ?, ?, ?)\n"
                           "id 1 11 kind 13 18 name 20 59 size 61 83 remark 85 104 model 106 116 \n";
        const auto field = [&block](const QByteArray &value, int width) {
            block += value.leftJustified(width, ' ', true);
            block += ' ';
        };
        const qint64 target = qint64(100) << 20;
        for (qint64 i = 0; made.bytes + block.size() < target; ++i) {
            field(QByteArray::number(i), 11);
            field(i % 7 ? QByteArray::number(i % 300) : QByteArray("-32768"), 6);
            field("PIPE-" + QByteArray::number(i * 7919 % 1000003) + "-A", 40);
            field(QByteArray::number(i * 0.37, 'g', 15), 23);
            field(i % 3 ? QByteArray() : QByteArray("checked"), 20);
            field(QByteArray::number(i % 5000), 11);
            block += '\n';
            ++made.rows;
            if (block.size() > (1 << 20)) {
                made.bytes += out.write(block);
                block.clear();
            }
        }
        block += "***RIS*** End of Table ***RIS***\n***RIS*** End of Schema ***RIS***\n";
        made.bytes += out.write(block);
        return made;
    }();
    return dump;
}

double WcSeconds(const QString &file)
{
    QElapsedTimer timer;
    timer.start();
    QProcess wc;
    wc.start(QStringLiteral("wc"), {QStringLiteral("-l"), file});
    wc.waitForFinished(-1);
    return timer.nsecsElapsed() / 1e9;
}

// `cp` of the dump into a new file in `folder`, the copy removed again.
double CpSeconds(const QString &file, const QString &folder)
{
    const QString copy = folder + QStringLiteral("/copy.dmp");
    QElapsedTimer timer;
    timer.start();
    QProcess cp;
    cp.start(QStringLiteral("cp"), {file, copy});
    cp.waitForFinished(-1);
    const double seconds = timer.nsecsElapsed() / 1e9;
    QFile::remove(copy);
    return seconds;
}

void Report(benchmark::State &state, double seconds, double wcSeconds, qint64 iterations)
{
    const BenchDump &dump = Dump();
    state.counters["MB_per_s"] = benchmark::Counter(double(dump.bytes) * double(iterations) / 1e6 / seconds);
    state.counters["rows"] = double(dump.rows);
    state.counters["wc_s"] = wcSeconds;
    state.counters["wc_ratio"] = wcSeconds / (seconds / double(iterations));
}

void BM_RISDumpParseToTextFile(benchmark::State &state)
{
    const BenchDump &dump = Dump();
    QTemporaryDir temp;
    WcSeconds(dump.file); // both read from the page cache
    double seconds = 0, wcSeconds = 1e9, cpSeconds = 1e9;
    qint64 iterations = 0, textBytes = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const QString text = fx::risdump::RISDumpParse(temp.path(), dump.file, QStringLiteral("pd_bench"),
                                                       QStringLiteral("pdtable_bench"));
        seconds += timer.nsecsElapsed() / 1e9;
        ++iterations;
        state.PauseTiming();
        textBytes = QFile(text).size();
        QFile::remove(text);
        wcSeconds = std::min(wcSeconds, WcSeconds(dump.file));
        cpSeconds = std::min(cpSeconds, CpSeconds(dump.file, temp.path()));
        state.ResumeTiming();
    }
    Report(state, seconds, wcSeconds, iterations);
    state.counters["cp_s"] = cpSeconds;
    state.counters["text_MB"] = double(textBytes) / 1e6;
}
BENCHMARK(BM_RISDumpParseToTextFile)->Unit(benchmark::kMillisecond)->Iterations(20);

void BM_RISDumpIntoLocalStore(benchmark::State &state)
{
    const BenchDump &dump = Dump();
    QTemporaryDir temp;
    const double wcSeconds = WcSeconds(dump.file);
    double seconds = 0;
    qint64 iterations = 0;
    for (auto _ : state) {
        const QString store = temp.filePath(QStringLiteral("store%1.fxdb").arg(iterations));
        fx::SqliteDb(store, fx::SqliteDb::OpenMode::ReadWriteCreate);
        QElapsedTimer timer;
        timer.start();
        const QString text = fx::risdump::RISDumpParse(temp.path(), dump.file, QStringLiteral("pd_bench"),
                                                       QStringLiteral("pdtable_bench"), true);
        fx::ImportTextFileQuery(text, fx::TextFileSelect(QStringLiteral("SELECT * FROM pdtable_bench"),
                                                         QStringLiteral("pdtable_bench"), text),
                                store, QStringLiteral("pdtable_bench"));
        seconds += timer.nsecsElapsed() / 1e9;
        ++iterations;
    }
    Report(state, seconds, wcSeconds, iterations);
}
BENCHMARK(BM_RISDumpIntoLocalStore)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
