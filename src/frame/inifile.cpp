#include "frame/inifile.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRandomGenerator>

#include <cerrno>
#include <ctime>
#include <functional>
#include <mutex>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fx {

namespace {

// What identifies one state of a file on disk. A rewrite by rename gives a new inode, one in
// place a new size or new times.
struct Stamp
{
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec modified{};
    timespec changed{};

    bool operator==(const Stamp &o) const
    {
        return device == o.device && inode == o.inode && size == o.size && modified.tv_sec == o.modified.tv_sec &&
               modified.tv_nsec == o.modified.tv_nsec && changed.tv_sec == o.changed.tv_sec &&
               changed.tv_nsec == o.changed.tv_nsec;
    }
};

Stamp StampOf(const struct stat &st)
{
    return Stamp{st.st_dev, st.st_ino, st.st_size, st.st_mtim, st.st_ctim};
}

// File times come from a clock that ticks in steps of milliseconds (seconds on some file
// systems), so a file changed just now may change again without its stamp changing. While
// that can be, the cache keeps the bytes and compares them on every access.
bool IsRacy(const Stamp &stamp)
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const timespec &last =
        (stamp.changed.tv_sec > stamp.modified.tv_sec ||
         (stamp.changed.tv_sec == stamp.modified.tv_sec && stamp.changed.tv_nsec > stamp.modified.tv_nsec))
            ? stamp.changed
            : stamp.modified;
    const qint64 window = last.tv_nsec == 0 ? 2'000'000'000 : 100'000'000;
    const qint64 age = (qint64(now.tv_sec) - last.tv_sec) * 1'000'000'000 + (now.tv_nsec - last.tv_nsec);
    return age < window;
}

struct Cached
{
    Stamp stamp;
    std::shared_ptr<const IniDocument> doc;
    bool racy = false;
    QByteArray bytes; ///< kept only while racy
};

std::shared_ptr<const IniDocument> EmptyDocument()
{
    static const auto empty = std::make_shared<const IniDocument>();
    return empty;
}

// Reads a whole regular file, with the stamp of what was read. False if it cannot be read.
bool ReadWhole(const QByteArray &native, Stamp &stamp, QByteArray &bytes)
{
    const int fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct stat st{};
    bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode);
    if (ok) {
        stamp = StampOf(st);
        bytes.resize(qsizetype(st.st_size));
        qsizetype done = 0;
        while (ok) {
            if (done == bytes.size())
                bytes.resize(done + 4096); // the file grew since fstat
            const ssize_t n = ::read(fd, bytes.data() + done, size_t(bytes.size() - done));
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0) {
                ok = n == 0;
                break;
            }
            done += n;
        }
        bytes.resize(done);
    }
    ::close(fd);
    return ok;
}

bool WriteAll(int fd, const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}

// Writes the bytes to a new file beside the target and renames it over the target, keeping
// the old file's mode and owner.
bool ReplaceFile(const QString &target, const QByteArray &bytes, const struct stat *old)
{
    const QFileInfo info(target);
    const QString prefix = info.absolutePath() + QLatin1String("/.") + info.fileName() + QLatin1Char('.');
    QByteArray temp;
    int fd = -1;
    for (int attempt = 0; attempt < 8 && fd < 0; ++attempt) {
        temp = QFile::encodeName(prefix + QString::number(QRandomGenerator::global()->generate(), 16) +
                                 QLatin1String(".tmp"));
        fd = ::open(temp.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return false;
    }
    if (fd < 0)
        return false;
    bool ok = true;
    if (old) {
        ok = ::fchmod(fd, old->st_mode & 07777) == 0;
        // Only root may give a file away; a file system without owners leaves it root's.
        if (ok && ::geteuid() == 0) {
            [[maybe_unused]] const int owned = ::fchown(fd, old->st_uid, old->st_gid);
        }
    }
    ok = ok && WriteAll(fd, bytes);
    ok = (::close(fd) == 0) && ok;
    ok = ok && ::rename(temp.constData(), QFile::encodeName(target).constData()) == 0;
    if (!ok)
        ::unlink(temp.constData());
    return ok;
}

// Writers in other processes take turns by a lock on the file itself. A rename gives the
// path a new inode, so a writer that waited makes sure it locked the file the path names now.
// A missing or unreadable file is written without a lock.
class WriterLock
{
public:
    explicit WriterLock(const QByteArray &native)
    {
        for (int attempt = 0; attempt < 100; ++attempt) {
            m_fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC);
            if (m_fd < 0)
                return;
            struct stat locked{};
            struct stat current{};
            if (::flock(m_fd, LOCK_EX) == 0 && ::fstat(m_fd, &locked) == 0 &&
                ::stat(native.constData(), &current) == 0 && locked.st_ino == current.st_ino &&
                locked.st_dev == current.st_dev)
                return;
            ::close(m_fd);
            m_fd = -1;
        }
    }
    ~WriterLock()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    WriterLock(const WriterLock &) = delete;
    WriterLock &operator=(const WriterLock &) = delete;

private:
    int m_fd = -1;
};

bool IsReadOnlyMode(const struct stat &st)
{
    return (st.st_mode & S_IWUSR) == 0;
}

// The parsed files of the process, by path as the callers spell it.
class Cache
{
public:
    std::shared_ptr<const IniDocument> Load(const QString &path)
    {
        std::lock_guard lock(m_mutex);
        return LoadLocked(path, QFile::encodeName(path));
    }

    bool Modify(const QString &path, const std::function<bool(IniDocument &)> &edit)
    {
        std::lock_guard lock(m_mutex);
        const QByteArray native = QFile::encodeName(path);
        const WriterLock writerLock(native);
        struct stat st{};
        const bool exists = ::stat(native.constData(), &st) == 0;
        if (exists && (!S_ISREG(st.st_mode) || IsReadOnlyMode(st) || ::access(native.constData(), W_OK) != 0))
            return false;
        IniDocument doc = *LoadLocked(path, native);
        if (!edit(doc))
            return true;
        const QByteArray bytes = doc.Serialize();
        QString target = path;
        struct stat link{};
        if (::lstat(native.constData(), &link) == 0 && S_ISLNK(link.st_mode)) {
            const QString resolved = QFileInfo(path).canonicalFilePath();
            if (!resolved.isEmpty())
                target = resolved;
        }
        if (!ReplaceFile(target, bytes, exists ? &st : nullptr)) {
            m_files.remove(path);
            return false;
        }
        if (::stat(native.constData(), &st) != 0) {
            m_files.remove(path);
            return true;
        }
        Remember(path, StampOf(st), std::make_shared<const IniDocument>(std::move(doc)), bytes);
        return true;
    }

private:
    void Remember(const QString &path, const Stamp &stamp, std::shared_ptr<const IniDocument> doc,
                  const QByteArray &bytes)
    {
        Cached &entry = m_files[path];
        entry.stamp = stamp;
        entry.doc = std::move(doc);
        entry.racy = IsRacy(stamp);
        entry.bytes = entry.racy ? bytes : QByteArray();
    }

    std::shared_ptr<const IniDocument> LoadLocked(const QString &path, const QByteArray &native)
    {
        struct stat st{};
        if (::stat(native.constData(), &st) != 0 || !S_ISREG(st.st_mode)) {
            m_files.remove(path);
            return EmptyDocument();
        }
        const auto it = m_files.find(path);
        if (it != m_files.end() && it->stamp == StampOf(st) && !it->racy)
            return it->doc;

        Stamp stamp;
        QByteArray bytes;
        if (!ReadWhole(native, stamp, bytes)) {
            // Unreadable: empty until its permissions change, which changes its stamp.
            Remember(path, StampOf(st), EmptyDocument(), QByteArray());
            m_files[path].racy = false;
            return EmptyDocument();
        }
        if (it != m_files.end() && it->stamp == stamp && it->bytes == bytes) {
            it->racy = IsRacy(stamp);
            if (!it->racy)
                it->bytes.clear();
            return it->doc;
        }
        auto doc = std::make_shared<const IniDocument>(IniDocument::Parse(bytes));
        Remember(path, stamp, doc, bytes);
        return doc;
    }

    std::mutex m_mutex;
    QHash<QString, Cached> m_files;
};

Cache &TheCache()
{
    static Cache cache;
    return cache;
}

} // namespace

std::shared_ptr<const IniDocument> IniFile::Snapshot(const QString &path)
{
    return TheCache().Load(path);
}

std::optional<QString> IniFile::Value(const QString &path, const QString &section, const QString &key)
{
    return Snapshot(path)->Value(section, key);
}

QStringList IniFile::KeyNames(const QString &path, const QString &section)
{
    return Snapshot(path)->KeyNames(section);
}

QStringList IniFile::SectionNames(const QString &path)
{
    return Snapshot(path)->SectionNames();
}

bool IniFile::Write(const QString &path, const QString &section, const std::optional<QString> &key,
                    const std::optional<QString> &value)
{
    return Write(path, std::vector<IniEdit>{IniEdit{section, key, value}});
}

bool IniFile::Write(const QString &path, const std::vector<IniEdit> &edits)
{
    return TheCache().Modify(path, [&edits](IniDocument &doc) {
        bool changed = false;
        for (const IniEdit &edit : edits)
            changed = doc.Apply(edit) || changed;
        return changed;
    });
}

bool IniFile::AddSection(const QString &path, const QString &section)
{
    return TheCache().Modify(path, [&section](IniDocument &doc) { return doc.AddSection(section); });
}


} // namespace fx
