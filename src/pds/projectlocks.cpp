#include "pds/projectlocks.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/pdstime.h"
#include "pds/projectschema.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QRegularExpression>

namespace fx {

namespace {
// A claim first writes the owner with a mark of this claim alone, "#" and eight hex digits:
// two processes of one user must not both read their own name back.
constexpr qsizetype kClaimMarkLength = 9;
// The width PDS declares for lock_owner, taken when the catalog tells none.
constexpr qsizetype kPdsLockOwnerWidth = 40;

QString WithoutClaimMark(const QString &owner)
{
    static const QRegularExpression mark(QStringLiteral("#[0-9a-f]{8}$"));
    return QString(owner).remove(mark);
}

LockHolder HolderOf(const Recordset &rows, qsizetype row, const char *ownerField, const char *dateField)
{
    LockHolder holder;
    holder.owner = WithoutClaimMark(GetDBvalue(rows, row, QString::fromLatin1(ownerField), QString()).toString().trimmed());
    if (holder.owner.isEmpty())
        holder.owner = QString::fromUtf8(msg::UnknownLockOwner);
    holder.date = GetTimeStamp2Date(GetDBvalue(rows, row, QString::fromLatin1(dateField), 0).toLongLong());
    return holder;
}

QString OwnerOrLogonUser(const QString &owner)
{
    return owner.trimmed().isEmpty() ? GetLogonUserName() : owner;
}

QString Now()
{
    return QString::number(GetDate2TimeStamp(QDateTime::currentDateTime()));
}

// The characters the project's lock_owner column holds: a schema may declare it narrower than
// PDS does, and a longer value would be refused or cut by the server.
qsizetype LockOwnerWidth(CRIS &cris, const QString &project)
{
    for (const ColumnDescription &column : cris.DBGetCols(GetProjectSchema(project), QStringLiteral("pdtable_102"))) {
        if (column.name.compare(QLatin1String("lock_owner"), Qt::CaseInsensitive) == 0 && column.size > 0)
            return qsizetype(column.size);
    }
    return kPdsLockOwnerWidth;
}

// Runs one statement of a lock operation in the project's schema, committed.
void WriteLock(CRIS &cris, const QString &project, const QString &sql)
{
    CheckProjectNumber(project);
    cris.DBWrite(GetProjectSchema(project), sql, true);
}
} // namespace

QString LockSinceText(const QDateTime &since)
{
    return since.isValid() ? QLocale().toString(since, QLocale::ShortFormat) : QString();
}

bool IsProjectLocked(CRIS &cris, const QString &project, LockHolder *holder)
{
    return Frame("IsProjectLocked", [&] {
        CheckProjectNumber(project);
        const Recordset rows = cris.DBRead(
            GetProjectSchema(project),
            QStringLiteral("SELECT lock_owner, lock_date FROM pdtable_102 WHERE(type_of_rdb_data = 99 AND lock_status = 1);"));
        if (rows.RecordCount() == 0)
            return false;
        if (holder)
            *holder = HolderOf(rows, 0, "LOCK_OWNER", "lock_date");
        return true;
    });
}

bool IsProjectLocked(const QString &project, LockHolder *holder)
{
    return IsProjectLocked(TheCRIS(), project, holder);
}

void ProjectLockA(CRIS &cris, const QString &project, const QString &owner)
{
    Frame("ProjectLockA", [&] {
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_102 SET lock_owner = ") + DBQuote(OwnerOrLogonUser(owner))
                      + QStringLiteral(", lock_date = ") + Now()
                      + QStringLiteral(", lock_status = 1 WHERE(type_of_rdb_data = 99);"));
    });
}

void ProjectLockA(const QString &project, const QString &owner)
{
    ProjectLockA(TheCRIS(), project, owner);
}

bool ProjectClaimA(CRIS &cris, const QString &project, const QString &owner, const QDateTime &takeOverDate)
{
    return Frame("ProjectClaimA", [&] {
        CheckProjectNumber(project);
        // Both the claim and the name must fit the column: the name gives way to the mark,
        // never the reverse.
        const qsizetype width = LockOwnerWidth(cris, project);
        const QString name = OwnerOrLogonUser(owner).left(width);
        const QString claim = name.left(qMax<qsizetype>(0, width - kClaimMarkLength)) + QLatin1Char('#')
                              + QString::number(QRandomGenerator::global()->generate() | 0x10000000u, 16);
        QString free = QStringLiteral("lock_status IS NULL OR lock_status <> 1");
        if (takeOverDate.isValid())
            free += QStringLiteral(" OR lock_date = ") + QString::number(GetDate2TimeStamp(takeOverDate));
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_102 SET lock_owner = ") + DBQuote(claim) + QStringLiteral(", lock_date = ")
                      + Now() + QStringLiteral(", lock_status = 1 WHERE(type_of_rdb_data = 99 AND (") + free
                      + QStringLiteral("));"));
        const Recordset rows = cris.DBRead(GetProjectSchema(project),
                                           QStringLiteral("SELECT lock_owner FROM pdtable_102 WHERE(type_of_rdb_data = 99);"));
        if (rows.IsEmpty() || rows.Value(0, 0).toString().trimmed() != claim)
            return false;
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_102 SET lock_owner = ") + DBQuote(name)
                      + QStringLiteral(" WHERE(type_of_rdb_data = 99 AND lock_owner = ") + DBQuote(claim) + QStringLiteral(");"));
        return true;
    });
}

void ProjectUnlockA(CRIS &cris, const QString &project)
{
    Frame("ProjectUnlockA", [&] {
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_102 SET lock_owner = NULL, lock_date = 0, lock_status = 0 "
                                 "WHERE(type_of_rdb_data = 99);"));
    });
}

void ProjectUnlockA(const QString &project)
{
    ProjectUnlockA(TheCRIS(), project);
}

bool IsIntAreaLocked(CRIS &cris, const QString &project, QList<AreaLockHolder> *locks)
{
    return Frame("IsIntAreaLocked", [&] {
        CheckProjectNumber(project);
        const Recordset rows = cris.DBRead(GetProjectSchema(project),
                                           QStringLiteral("SELECT area_index_no, area_lock_owner, area_lock_date FROM pdtable_112 "
                                                          "WHERE(interference_mode = 1 AND area_lock_status = 1);"));
        if (locks) {
            locks->clear();
            for (qsizetype row = 0; row < rows.RecordCount(); ++row)
                locks->append({GetDBvalue(rows, row, QStringLiteral("area_index_no"), 0).toLongLong(),
                               HolderOf(rows, row, "area_LOCK_OWNER", "area_lock_date")});
        }
        return rows.RecordCount() > 0;
    });
}

bool IsIntAreaLocked(const QString &project, QList<AreaLockHolder> *locks)
{
    return IsIntAreaLocked(TheCRIS(), project, locks);
}

void IntAreaLock(CRIS &cris, const QString &project, const QString &owner)
{
    Frame("IntAreaLock", [&] {
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_112 SET area_lock_owner = ") + DBQuote(OwnerOrLogonUser(owner))
                      + QStringLiteral(", area_lock_status = 1, area_lock_date = ") + Now()
                      + QStringLiteral(" WHERE(interference_mode = 1);"));
    });
}

void IntAreaLock(const QString &project, const QString &owner)
{
    IntAreaLock(TheCRIS(), project, owner);
}

void IntAreaUnlock(CRIS &cris, const QString &project)
{
    Frame("IntAreaUnlock", [&] {
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_112 SET area_lock_owner = NULL, area_lock_status = 0, area_lock_date = 0 "
                                 "WHERE(interference_mode = 1);"));
    });
}

void IntAreaUnlock(const QString &project)
{
    IntAreaUnlock(TheCRIS(), project);
}

void AreaUnlockA(CRIS &cris, const QString &project, qint64 area)
{
    Frame("AreaUnlockA", [&] {
        WriteLock(cris, project,
                  QStringLiteral("UPDATE pdtable_112 SET area_lock_owner = NULL, area_lock_status = 0, area_lock_date = 0 "
                                 "WHERE (area_index_no = ")
                      + QString::number(area) + QStringLiteral(");"));
    });
}

void AreaUnlockA(const QString &project, qint64 area)
{
    AreaUnlockA(TheCRIS(), project, area);
}

SchemaLockGuard::SchemaLockGuard(CRIS &cris, const QString &project, Unlock unlock, const char *releaseFailedMessage)
    : m_cris(cris)
    , m_project(project)
    , m_unlock(unlock)
    , m_releaseFailedMessage(releaseFailedMessage)
{
}

SchemaLockGuard::~SchemaLockGuard()
{
    if (!m_held)
        return;
    // A destructor may run while a failure travels up: the lock's own failure must not replace it.
    try {
        m_unlock(m_cris, m_project);
    } catch (const Failure &failure) {
        LogMessage(m_releaseFailedMessage, {failure.Source() + QStringLiteral(": ") + FillMessageArgs(failure.Description())});
    } catch (const std::exception &e) {
        LogMessage(m_releaseFailedMessage, {QString::fromLocal8Bit(e.what())});
    }
}

void SchemaLockGuard::Release()
{
    if (!m_held)
        return;
    m_held = false;
    m_unlock(m_cris, m_project);
}

ProjectLockGuard::ProjectLockGuard(CRIS &cris, const QString &project, const QString &owner)
    : SchemaLockGuard(cris, project, &ProjectUnlockA, msg::ReleasingProjectLockFailed)
{
    ProjectLockA(cris, project, owner);
    Held();
}

ProjectLockGuard::ProjectLockGuard(CRIS &cris, const QString &project, const QString &owner, const Claim &claim)
    : SchemaLockGuard(cris, project, &ProjectUnlockA, msg::ReleasingProjectLockFailed)
{
    if (!ProjectClaimA(cris, project, owner, claim.takeOverDate)) {
        LockHolder holder;
        IsProjectLocked(cris, project, &holder);
        Raise(msg::ProjectMarkerLockedBy, {holder.owner, LockSinceText(holder.date)});
    }
    Held();
}

AreaLockGuard::AreaLockGuard(CRIS &cris, const QString &project, const QString &owner)
    : SchemaLockGuard(cris, project, &IntAreaUnlock, msg::ReleasingAreaLocksFailed)
{
    IntAreaLock(cris, project, owner);
    Held();
}

} // namespace fx
