#include "frame/textfiles.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/tempdir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

namespace fx {

namespace {

// Each block runs on to the end of its last line, so a text within a line always lies in one block.
constexpr qint64 kBlockSize = 64 * 1024;

void RaiseOnError(const QFileDevice &file)
{
    if (file.error() != QFileDevice::NoError)
        Raise(msg::ErrorCode, {file.errorString()});
}

void CopyReplacing(QFile &in, QFile &out, const QByteArray &find, const QByteArray &replace)
{
    while (!in.atEnd()) {
        QByteArray block = in.read(kBlockSize);
        RaiseOnError(in);
        if (!block.endsWith('\n') && !in.atEnd())
            block += in.readLine();
        RaiseOnError(in);
        if (!find.isEmpty())
            block.replace(find, replace);
        if (out.write(block) != block.size())
            RaiseOnError(out);
    }
}

QString FindBelow(const QDir &dir, const QString &name)
{
    const QFileInfoList files = dir.entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QFileInfo &file : files)
        if (file.fileName().compare(name, Qt::CaseInsensitive) == 0)
            return QDir::toNativeSeparators(file.absoluteFilePath());
    // Linked folders are passed over: a link back up the tree would never end the search.
    const QFileInfoList folders = dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden | QDir::NoSymLinks, QDir::Name);
    for (const QFileInfo &folder : folders) {
        const QString found = FindBelow(QDir(folder.absoluteFilePath()), name);
        if (!found.isEmpty())
            return found;
    }
    return QString();
}

} // namespace

void ReplaceInFile(const QString &source, const QString &target, const QString &find, const QString &replace)
{
    Frame("ReplaceInFile", [&] {
        const QString from = NativePath(source);
        const QString to = NativePath(target);
        if (!IsFileExists(from))
            Raise(msg::FileNotExists, {from});
        if (!IsFileExists(QFileInfo(to).absolutePath(), true))
            Raise(msg::DestinationDirectoryNotExists, {to});

        QFile in(from);
        if (!in.open(QIODevice::ReadOnly))
            RaiseOnError(in);
        QTemporaryFile scratch(GetTempEnvDir() + QStringLiteral("fxreplaceXXXXXX.tmp"));
        if (!scratch.open())
            RaiseOnError(scratch);
        CopyReplacing(in, scratch, find.toLocal8Bit(), replace.toLocal8Bit());
        in.close();
        scratch.close();
        RaiseOnError(scratch);
        // The scratch file is private to us; the result takes the access of the file it replaces.
        scratch.setPermissions(QFileInfo::exists(to) ? QFile::permissions(to) : in.permissions());
        MoveFileA(scratch.fileName(), to);
    });
}

QString FindFile(const QString &startFolder, const QString &name)
{
    return Frame("FindFile", [&] {
        const QString start = NativePath(startFolder);
        if (!IsFileExists(start, true))
            Raise(msg::StartPathNotExists, {start});
        return FindBelow(QDir(start), name);
    });
}

} // namespace fx
