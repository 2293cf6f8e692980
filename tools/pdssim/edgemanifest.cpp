#include "pdssim/edgemanifest.h"
#include "pdssim/sitemessages.h"

#include "frame/failure.h"
#include "pds/messages.h"

#include <QFile>
#include <QSaveFile>

namespace pdssim {

QString EdgeCase::Key(const QString &key) const
{
    for (const auto &pair : keys)
        if (pair.first == key)
            return pair.second;
    return QString();
}

void WriteManifest(const QString &path, const QList<EdgeCase> &cases)
{
    fx::Frame("WriteManifest", [&] {
        QByteArray text;
        for (const EdgeCase &edge : cases) {
            text += '[' + edge.name.toUtf8() + "]\n";
            text += "table=" + edge.table.toUtf8() + '\n';
            for (const auto &pair : edge.keys)
                text += pair.first.toUtf8() + '=' + pair.second.toUtf8() + '\n';
            text += "note=" + edge.note.toUtf8() + "\n\n";
        }
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
            fx::Raise(pdssim::sitemsg::SimManifestNotWritten, {path});
    });
}

QList<EdgeCase> ReadManifest(const QString &path)
{
    QList<EdgeCase> cases;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return cases;
    for (const QByteArray &raw : file.readAll().split('\n')) {
        const QString line = QString::fromUtf8(raw);
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            cases.append(EdgeCase{line.mid(1, line.size() - 2), {}, {}, {}});
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (cases.isEmpty() || equals < 0)
            continue;
        const QString key = line.left(equals), value = line.mid(equals + 1);
        if (key == QLatin1String("table"))
            cases.last().table = value;
        else if (key == QLatin1String("note"))
            cases.last().note = value;
        else
            cases.last().keys.append({key, value});
    }
    return cases;
}

const EdgeCase *FindEdgeCase(const QList<EdgeCase> &cases, const QString &name)
{
    for (const EdgeCase &edge : cases)
        if (edge.name == name)
            return &edge;
    return nullptr;
}

} // namespace pdssim
