// Lookups in a language file of 5,000 entries, each one checking the file on disk first.
#include "frame/inifile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QString Digest(int i)
{
    return QString::fromLatin1(QCryptographicHash::hash(QByteArray::number(i), QCryptographicHash::Md5).toHex());
}

void BM_IniFileValue(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("German.ini"));
    QByteArray content = "[Language]\r\nFont=Tahoma\r\n[General]\r\n";
    for (int i = 0; i < 5000; ++i)
        content += Digest(i).toLatin1() + "=Ein \xFC" "bersetzter Text Nummer " + QByteArray::number(i) + "\r\n";
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
    file.close();

    std::vector<QString> keys;
    for (int i = 0; i < 5000; i += 7)
        keys.push_back(Digest(i));
    const QString section = QStringLiteral("General");
    size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fx::IniFile::Value(path, section, keys[next]));
        next = (next + 1) % keys.size();
    }
}
BENCHMARK(BM_IniFileValue)->MinTime(1.0);

} // namespace
