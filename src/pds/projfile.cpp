#include "pds/projfile.h"

#include "frame/execa.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/filewait.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/registry.h"
#include "frame/settings.h"
#include "frame/tempdir.h"
#include "frame/unc.h"
#include "pds/messages.h"
#include "pds/scratchfiles.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace fx {

namespace {

const QString kPdShellRoot = QStringLiteral("Software\\Intergraph\\PD_SHELL");
const QString kEndMarker = QStringLiteral("__END__");
const QString kEnvSection = QStringLiteral("ENV");
constexpr char kDelimiter[] = {0, 0, 0, 0, 0x68, 0, 0, 0};
constexpr int kNumberPosition = 22;
constexpr int kDescriptionPosition = 73;

// The variables the last applied probe set, removed before the next one is applied.
QStringList &AppliedProbeVariables()
{
    static QStringList names;
    return names;
}

void WriteProbeFile(const QString &path, const QString &text)
{
    QFile file(path);
    const QByteArray bytes = text.toLocal8Bit();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        Raise(msg::FileWriteFailed, {path});
}

// A variable of the probe's result, NUL characters removed and trimmed; blank fails.
QString ProbeValue(const QString &resultFile, const QString &name, const char *failurePrefix,
                   const QString &controlFile)
{
    const QString value = GetIniValue(resultFile, kEnvSection, name).remove(QChar(0)).trimmed();
    if (value.isEmpty())
        Raise(QString::fromUtf8(failurePrefix) + controlFile + QString::fromUtf8(msg::InControlFileNotDefined));
    return value;
}

void ApplyProbeEnvironment(const QString &resultFile)
{
    QStringList &applied = AppliedProbeVariables();
    for (const QString &name : std::as_const(applied))
        qunsetenv(name.toLocal8Bit().constData());
    QStringList names;
    QStringList values;
    GetIniSection2Array(resultFile, kEnvSection, names, values);
    for (qsizetype i = 0; i < names.size(); ++i)
        qputenv(names[i].toLocal8Bit().constData(), values[i].toLocal8Bit());
    applied = names;
}

// The proj_file folder as this computer reaches it, or empty.
QString ReachableFolder(const ProjFile &projFile)
{
    try {
        const QString folder = LocalPath2UNC(projFile.PROJ_ADDR, projFile.PROJ_FILE);
        return IsFileExists(folder, true) ? folder : QString();
    } catch (const Failure &) {
        return QString();
    }
}

// VB's Trim: blanks only, so the NUL padding of an entry stays.
QByteArray TrimBlanks(const QByteArray &bytes)
{
    qsizetype start = 0;
    qsizetype end = bytes.size();
    while (start < end && bytes[start] == ' ')
        ++start;
    while (end > start && bytes[end - 1] == ' ')
        --end;
    return bytes.mid(start, end - start);
}

// The text from `position` (from 1) up to the next two NUL bytes; empty without them.
QString TextAt(const QByteArray &entry, int position)
{
    const qsizetype end = entry.indexOf(QByteArray("\0\0", 2), position - 1);
    if (end < 0)
        return QString();
    return QString::fromLatin1(TrimBlanks(entry.mid(position - 1, end - (position - 1))));
}

QList<QByteArray> SplitAt(const QByteArray &bytes, const QByteArray &delimiter)
{
    QList<QByteArray> pieces;
    qsizetype start = 0;
    for (qsizetype at = bytes.indexOf(delimiter); at >= 0; at = bytes.indexOf(delimiter, start)) {
        pieces.append(bytes.mid(start, at - start));
        start = at + delimiter.size();
    }
    pieces.append(bytes.mid(start));
    return pieces;
}

} // namespace

QString PdShellKey()
{
    return Frame("PdShellKey", [] {
        static QString version;
        if (version.isEmpty() && RegKeyExists(RegRoot::LocalMachine, kPdShellRoot)) {
            const QStringList versions = RegGetSubKeys(RegRoot::LocalMachine, kPdShellRoot);
            if (!versions.isEmpty())
                version = versions.first();
        }
        return kPdShellRoot + QLatin1Char('\\') + version;
    });
}

QString PdShellValue(const QString &valueName)
{
    return Frame("PdShellValue", [&] {
        const QString key = PdShellKey();
        if (!RegKeyExists(RegRoot::LocalMachine, key)
            || !RegGetValues(RegRoot::LocalMachine, key).contains(valueName, Qt::CaseInsensitive))
            return QString();
        return RegGetValue(RegRoot::LocalMachine, key, valueName).text.trimmed();
    });
}

QString ProbeScript(const QString &controlText, const QString &resultFile)
{
    const QString quote = QStringLiteral("\"");
    const QString file = QString(resultFile).replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    const QString fragment = QStringLiteral("open(O, ") + quote + QLatin1Char('>') + file + quote + QStringLiteral(");")
                             + QStringLiteral("print O ") + quote + QStringLiteral("[ENV]\\n") + quote + QLatin1Char(';')
                             + QStringLiteral("foreach $key (keys(%ENV)){print O ") + quote
                             + QStringLiteral("$key=$ENV{$key}\\n") + quote + QStringLiteral(";} close(O);")
                             + QStringLiteral("\r\n") + kEndMarker;
    return QString(controlText).replace(kEndMarker, fragment);
}

QString PdsPerlPath()
{
    return Frame("PdsPerlPath", [] {
        const QString pathName = PdShellValue(QStringLiteral("PathName"));
        if (!pathName.isEmpty()) {
            const QString perl = AddBackslash(NativePath(pathName)) + NativePath(QStringLiteral("share/pdsperl"))
                                 + QLatin1String(kToolSuffix);
            if (!IsFileExists(perl))
                Raise(msg::PerlFileNotExists, {perl});
            return perl;
        }
        const QString bundled = ProgramDir() + NativePath(QStringLiteral("Bin/perl")) + QLatin1String(kToolSuffix);
        if (IsFileExists(bundled))
            return bundled;
#ifndef Q_OS_WIN
        // No PDS shell and no perl of our own: the system's perl runs the probe just as well.
        const QString system = QStandardPaths::findExecutable(QStringLiteral("perl"));
        if (!system.isEmpty())
            return system;
#endif
        Raise(msg::PerlFileNotExists, {bundled});
    });
}

ProjFile GetProjFile(const QString &controlFile, bool setEnvironment)
{
    return Frame("GetProjFile", [&] {
        if (controlFile.trimmed().isEmpty())
            Raise(msg::ControlFileNotDefined);
        if (!IsFileExists(controlFile))
            Raise(msg::ControlFileNotExisting, {controlFile});

        const QString temp = GetTempFolder();
        const ScratchFile probe(temp + RandomScratchName() + QStringLiteral(".cmd"));
        const ScratchFile result(temp + RandomScratchName());
        WriteProbeFile(probe.Path(), ProbeScript(ReadFile2String(controlFile), result.Path()));
        DeleteFileA(result.Path());

        const QString perl = PdsPerlPath();
        ExecA(QuotePath(perl) + QStringLiteral(" -s ") + QuotePath(probe.Path()), QString(), 0, nullptr, true);
        // The interpreter has ended: a result that is not there now will never come.
        if (!IsFileExists(result.Path()))
            Raise(msg::ExecutingControlFileFailed);
        try {
            IsFileExistsA(result.Path());
        } catch (const Failure &) {
            Raise(msg::ExecutingControlFileFailed);
        }

        ProjFile projFile;
        projFile.PROJ_ADDR = ProbeValue(result.Path(), QStringLiteral("PROJ_ADDR"), msg::ProjAddrInControlFile, controlFile);
        projFile.PROJ_FILE = ProbeValue(result.Path(), QStringLiteral("PROJ_FILE"), msg::ProjFileInControlFile, controlFile);
        if (ReachableFolder(projFile).isEmpty())
            Raise(msg::ProjFilePathNotAccessible, {projFile.PROJ_FILE, projFile.PROJ_ADDR});
        if (setEnvironment)
            ApplyProbeEnvironment(result.Path());
        return projFile;
    });
}

QList<ProjFileProject> ParseProjFile(const QByteArray &bytes, const QString &path)
{
    return Frame("ParseProjFile", [&] {
        const QByteArray delimiter(kDelimiter, sizeof kDelimiter);
        const qsizetype first = bytes.indexOf(delimiter);
        if (first < 0)
            Raise(msg::ProjFileIncorrect, {path});
        QList<ProjFileProject> projects;
        for (const QByteArray &entry : SplitAt(TrimBlanks(bytes.mid(first + delimiter.size())), delimiter)) {
            if (entry.startsWith('\0') || entry.contains('\xff'))
                continue;
            const qsizetype blank = entry.indexOf(' ');
            const QString name = blank < 0 ? QString() : QString::fromLatin1(TrimBlanks(entry.left(blank)));
            if (name.isEmpty())
                continue;
            const bool known = std::any_of(projects.cbegin(), projects.cend(), [&](const ProjFileProject &p) {
                return p.Name.toLower() == name.toLower();
            });
            if (!known)
                projects.append({name, TextAt(entry, kDescriptionPosition), TextAt(entry, kNumberPosition)});
        }
        return projects;
    });
}

QList<ProjFileProject> GetProjFileProjects(const ProjFile &projFile)
{
    return Frame("GetProjFileProjects", [&] {
        if (projFile.PROJ_ADDR.trimmed().isEmpty())
            Raise(msg::ProjFileProjAddrNotDefined);
        if (projFile.PROJ_FILE.trimmed().isEmpty())
            Raise(msg::ProjFileProjFileNotDefined);
        const QString folder = ReachableFolder(projFile);
        if (folder.isEmpty())
            Raise(msg::ProjFileFolderNotAccessible, {projFile.PROJ_FILE, projFile.PROJ_ADDR});
        const QString path = AddBackslash(folder) + QStringLiteral("proj_file");
        // A missing or unreadable file has no delimiter and is refused as incorrect.
        QFile file(path);
        const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        return ParseProjFile(bytes, path);
    });
}

} // namespace fx
