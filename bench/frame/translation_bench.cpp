// Translation lookup of a known text in a language file of 5,000 entries. Every lookup still
// checks the files, so an edit made while the program runs is seen at once.

#include "frame/programinfo.h"
#include "frame/settings.h"
#include "frame/translation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {
constexpr int kEntries = 5000;

QString MessageText(int i)
{
    return QStringLiteral("Checking interference area '%0%' of model number %1 ...").arg(i);
}

// A program folder whose language files already know every text.
void WriteLanguageFiles(const QString &languageDir)
{
    QDir().mkpath(languageDir);
    QByteArray mnemonic = "[General]\n";
    QByteArray deutsch = "[Language]\nFont=Arial\n[General]\n";
    for (int i = 0; i < kEntries; ++i) {
        const QByteArray key = fx::DigestStrToHexStr(MessageText(i)).toLatin1();
        mnemonic += key + '=' + MessageText(i).toLatin1() + '\n';
        deutsch += key + "=Pruefe Kollisionsbereich '%0%' von Modell " + QByteArray::number(i) + " ...\n";
    }
    QFile m(languageDir + QStringLiteral("Mnemonic.ini"));
    QFile d(languageDir + QStringLiteral("Deutsch.ini"));
    if (!m.open(QIODevice::WriteOnly) || !d.open(QIODevice::WriteOnly))
        std::abort();
    m.write(mnemonic);
    d.write(deutsch);
}

void BM_TranslateKnownText(benchmark::State &state)
{
    QTemporaryDir dir;
    qputenv("TEMP", dir.path().toLocal8Bit());
    qputenv("APPDATA", dir.path().toLocal8Bit());
    fx::SetProgramDirOverride(dir.path());
    WriteLanguageFiles(fx::LanguageDir());
    fx::InitLanguage(QStringLiteral("Deutsch"));

    const QString text = MessageText(kEntries / 2) + QStringLiteral("|||A-100");
    for (auto _ : state)
        benchmark::DoNotOptimize(fx::TranslateText(text));
    if (!fx::TranslateText(text).startsWith(QStringLiteral("Pruefe")))
        state.SkipWithError("the text was not translated");
}
BENCHMARK(BM_TranslateKnownText)->Unit(benchmark::kMicrosecond);
} // namespace
