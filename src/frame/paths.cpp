#include "frame/paths.h"

#include <QDir>

namespace fx {

namespace {
bool IsSeparator(QChar c)
{
    return c == QLatin1Char('\\') || c == QLatin1Char('/');
}

qsizetype LastSeparator(const QString &path)
{
    for (qsizetype i = path.size() - 1; i >= 0; --i)
        if (IsSeparator(path.at(i)))
            return i;
    return -1;
}

// "x:" or "x:\" (a drive, with or without its separator).
bool IsDrive(const QString &path)
{
    return (path.size() == 2 || (path.size() == 3 && IsSeparator(path.at(2)))) && path.at(1) == QLatin1Char(':');
}
} // namespace

QString NativePath(const QString &path)
{
    QString result = path;
    const QChar native = QDir::separator();
    for (QChar &c : result)
        if (IsSeparator(c))
            c = native;
    return result;
}

QString AddBackslash(const QString &path)
{
    const QString trimmed = NativePath(path.trimmed());
    if (trimmed.isEmpty())
        return trimmed;
    return trimmed.endsWith(QDir::separator()) ? trimmed : trimmed + QDir::separator();
}

QString GetFolderOfPath(const QString &path)
{
    QString p = NativePath(path);
    if (IsDrive(p))
        return p.left(2) + QDir::separator();
    if (p.size() > 1 && p.endsWith(QDir::separator()))
        p.chop(1);
    const qsizetype at = LastSeparator(p);
    return at < 0 ? QString() : p.left(at + 1);
}

QString GetFileNameOfPath(const QString &path)
{
    const QString p = NativePath(path);
    return p.mid(LastSeparator(p) + 1);
}

QString GetBaseNameOfPath(const QString &path)
{
    const QString name = GetFileNameOfPath(path);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

QString GetExtensionOfPath(const QString &path)
{
    const QString name = GetFileNameOfPath(path);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}

QString QuotePath(const QString &path)
{
    return QLatin1Char('"') + path + QLatin1Char('"');
}

QString SpecialChars()
{
    return QStringLiteral("\\/:*?\"<>|");
}

bool HasSpecialChars(const QString &text)
{
    const QString special = SpecialChars();
    for (QChar c : text)
        if (special.contains(c))
            return true;
    return false;
}

} // namespace fx
