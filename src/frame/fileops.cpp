#include "frame/fileops.h"

#include "frame/failure.h"
#include "frame/fileuse.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/savedfailure.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace fx {

namespace fs = std::filesystem;

namespace {

fs::path FsPath(const QString &path)
{
    return fs::path(QFile::encodeName(path).toStdString());
}

std::error_code LastOsError()
{
    return std::error_code(errno, std::generic_category());
}

// A target that is an existing folder receives the file under its own name.
QString Destination(const QString &source, const QString &target)
{
    const QString to = NativePath(target);
    if (QFileInfo(to).isDir())
        return AddBackslash(to) + GetFileNameOfPath(source);
    return to;
}

QString ExistingFile(const QString &path)
{
    const QString file = NativePath(path);
    if (!IsFileExists(file))
        Raise(msg::FileNotExists, {file});
    return file;
}

struct FileCloser
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};

// Through stdio rather than QFile so that a failure carries the system's error number.
QByteArray ReadWholeFile(const QString &path)
{
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(QFile::encodeName(path).constData(), "rb"));
    if (!file)
        RaiseErrorCode(LastOsError());
    QByteArray content;
    char block[65536];
    while (const size_t length = std::fread(block, 1, sizeof block, file.get()))
        content.append(block, static_cast<qsizetype>(length));
    if (std::ferror(file.get()))
        RaiseErrorCode(LastOsError());
    return content;
}

} // namespace

void RaiseErrorCode(const std::error_code &error)
{
    Raise(msg::ErrorCode, {QStringLiteral("%1 (%2)").arg(error.value()).arg(QString::fromLocal8Bit(error.message()))});
}

bool IsFileExists(const QString &path, bool isFolder)
{
    if (path.isEmpty())
        return false;
    const QFileInfo info(NativePath(path));
    return isFolder ? info.isDir() : info.isFile();
}

bool IsFileReadOnly(const QString &path)
{
    const QFileInfo info(NativePath(path));
    return info.exists() && !info.permissions().testFlag(QFileDevice::WriteOwner);
}

bool CopyFileA(const QString &source, const QString &target, bool raiseOnError)
{
    return RaiseOrSave(raiseOnError, [&] {
        Frame("CopyFileA", [&] {
            const QString from = ExistingFile(source);
            std::error_code error;
            fs::copy_file(FsPath(from), FsPath(Destination(from, target)), fs::copy_options::overwrite_existing, error);
            if (error)
                RaiseErrorCode(error);
        });
    });
}

bool MoveFileA(const QString &source, const QString &target, bool raiseOnError)
{
    return RaiseOrSave(raiseOnError, [&] {
        Frame("MoveFileA", [&] {
            const QString from = ExistingFile(source);
            const fs::path to = FsPath(Destination(from, target));
            std::error_code error;
            fs::rename(FsPath(from), to, error);
            if (error == std::errc::cross_device_link) {
                // Another file system: copy, and give up the source only once the copy stands.
                error.clear();
                fs::copy_file(FsPath(from), to, fs::copy_options::overwrite_existing, error);
                if (!error)
                    fs::remove(FsPath(from), error);
            }
            if (error)
                RaiseErrorCode(error);
        });
    });
}

bool DeleteFileA(const QString &path, bool raiseOnError)
{
    return RaiseOrSave(raiseOnError, [&] {
        Frame("DeleteFileA", [&] {
            const QString file = NativePath(path);
            const QFileInfo info(file);
            if (!info.exists() && !info.isSymLink())
                return;
            if (info.isDir() && !info.isSymLink())
                RaiseErrorCode(std::make_error_code(std::errc::is_a_directory));
            if (IsFileOpenForWritingElsewhere(file))
                Raise(msg::FileAlreadyInUse, {file});
            std::error_code error;
            fs::remove(FsPath(file), error);
            if (error)
                RaiseErrorCode(error);
            if (QFileInfo::exists(file))
                Raise(msg::FileNotDeleted, {file});
        });
    });
}

bool DeleteFolderA(const QString &folder, bool raiseOnError)
{
    return RaiseOrSave(raiseOnError, [&] {
        Frame("DeleteFolderA", [&] {
            const QString dir = NativePath(folder);
            const QFileInfo info(dir);
            if (!info.exists() && !info.isSymLink())
                return;
            // A file named by mistake stays: removing a folder must never take a file with it.
            if (!info.isDir() || info.isSymLink())
                RaiseErrorCode(std::make_error_code(std::errc::not_a_directory));
            std::error_code error;
            fs::remove_all(FsPath(dir), error);
            if (error)
                RaiseErrorCode(error);
        });
    });
}

QDateTime GetFileLastModifiedDate(const QString &path)
{
    return QFileInfo(NativePath(path)).lastModified();
}

QDateTime GetFileDateCreated(const QString &path)
{
    const QFileInfo info(NativePath(path));
    const QDateTime born = info.birthTime();
    return born.isValid() ? born : info.metadataChangeTime();
}

qint64 GetFileSize(const QString &path, bool raiseOnError)
{
    qint64 size = -1;
    RaiseOrSave(raiseOnError, [&] {
        Frame("GetFileSize", [&] { size = QFileInfo(ExistingFile(path)).size(); });
    });
    return size;
}

QString GetFileVersion(const QString &path)
{
    const QString file = QFileInfo(NativePath(path)).canonicalFilePath();
    if (!file.isEmpty() && file == QFileInfo(ProgramFilePath()).canonicalFilePath())
        return ProgramVersion();
    return QString();
}

QStringList ReadFile2Array(const QString &path, bool raiseOnError)
{
    QStringList lines;
    RaiseOrSave(raiseOnError, [&] {
        Frame("ReadFile2Array", [&] {
            const QString text = QString::fromLocal8Bit(ReadWholeFile(ExistingFile(path)));
            qsizetype start = 0;
            for (qsizetype at = text.indexOf(QLatin1Char('\n')); at >= 0; at = text.indexOf(QLatin1Char('\n'), start)) {
                const qsizetype end = (at > start && text.at(at - 1) == QLatin1Char('\r')) ? at - 1 : at;
                lines.append(text.mid(start, end - start));
                start = at + 1;
            }
            if (start < text.size())
                lines.append(text.mid(start));
        });
    });
    return lines;
}

QString ReadFile2String(const QString &path, bool raiseOnError)
{
    QString text;
    RaiseOrSave(raiseOnError, [&] {
        Frame("ReadFile2String", [&] { text = QString::fromLocal8Bit(ReadWholeFile(ExistingFile(path))); });
    });
    return text;
}

QByteArray ReadFile2Bytes(const QString &path)
{
    return Frame("ReadFile2Bytes", [&] { return ReadWholeFile(ExistingFile(path)); });
}

bool IsFileAlreadyInUse(const QString &path, bool raiseOnError)
{
    return !RaiseOrSave(raiseOnError, [&] {
        Frame("IsFileAlreadyInUse", [&] {
            const QString file = NativePath(path);
            if (IsFileOpenForWritingElsewhere(file))
                Raise(msg::FileIsAlreadyInUse, {file});
        });
    });
}

} // namespace fx
