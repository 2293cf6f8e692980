#include "frame/fileuse.h"

#include <QFile>

#ifdef __linux__
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#endif

namespace fx {

#ifdef __linux__
namespace {

struct DirCloser
{
    void operator()(DIR *dir) const { ::closedir(dir); }
};
using DirHandle = std::unique_ptr<DIR, DirCloser>;

bool IsNumber(const char *name)
{
    if (*name == '\0')
        return false;
    for (const char *c = name; *c; ++c)
        if (*c < '0' || *c > '9')
            return false;
    return true;
}

// The access mode of one descriptor, from the "flags:" line (octal) of its fdinfo entry;
// -1 when the entry is gone (the descriptor was closed meanwhile) or unreadable.
int AccessModeOf(const std::string &fdinfoPath)
{
    const int fd = ::open(fdinfoPath.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return -1;
    char text[512];
    const ssize_t length = ::read(fd, text, sizeof text - 1);
    ::close(fd);
    if (length <= 0)
        return -1;
    text[length] = '\0';
    const char *flags = std::strstr(text, "flags:");
    if (!flags)
        return -1;
    return static_cast<int>(std::strtol(flags + 6, nullptr, 8)) & O_ACCMODE;
}

// Descriptors are compared by device and inode, so a file reached by another name (a hard
// link, a moved file) still counts.
bool ProcessWritesFile(const std::string &pid, const struct stat &target)
{
    const std::string fdFolder = "/proc/" + pid + "/fd";
    DirHandle fds(::opendir(fdFolder.c_str()));
    if (!fds)
        return false; // gone, or not ours to look at
    while (const dirent *entry = ::readdir(fds.get())) {
        if (!IsNumber(entry->d_name))
            continue;
        struct stat opened;
        if (::stat((fdFolder + '/' + entry->d_name).c_str(), &opened) != 0)
            continue;
        if (opened.st_dev != target.st_dev || opened.st_ino != target.st_ino)
            continue;
        const int mode = AccessModeOf("/proc/" + pid + "/fdinfo/" + entry->d_name);
        if (mode == O_WRONLY || mode == O_RDWR)
            return true;
    }
    return false;
}

} // namespace
#endif

bool IsFileOpenForWritingElsewhere(const QString &path)
{
#ifdef __linux__
    struct stat target;
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &target) != 0)
        return false;
    const std::string self = std::to_string(::getpid());
    DirHandle processes(::opendir("/proc"));
    if (!processes)
        return false;
    while (const dirent *entry = ::readdir(processes.get())) {
        if (IsNumber(entry->d_name) && self != entry->d_name && ProcessWritesFile(entry->d_name, target))
            return true;
    }
    return false;
#else
    Q_UNUSED(path);
    return false;
#endif
}

} // namespace fx
