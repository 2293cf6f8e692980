#include "frame/filewait.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/fileuse.h"
#include "frame/messages.h"
#include "frame/paths.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

namespace fx {

namespace {
// A file still being written by its maker does not count as there yet.
bool IsFileReady(const QString &path)
{
    if (!IsFileExists(path))
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    file.close();
    return !IsFileOpenForWritingElsewhere(path);
}
} // namespace

void IsFileExistsA(const QString &path, qint64 limitMs)
{
    Frame("IsFileExistsA", [&] {
        const QString file = NativePath(path);
        const QDeadlineTimer limit(limitMs);
        while (!IsFileReady(file)) {
            if (limit.hasExpired())
                Raise(msg::FileWaitTimeout);
            DoEvents();
            QThread::msleep(50);
        }
    });
}

} // namespace fx
