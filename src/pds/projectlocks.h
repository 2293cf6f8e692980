#pragma once
// The project and interference area locks ("marker files") kept in the project schema. They
// are advisory: a check and the lock that follows are separate statements, except for the
// claim of the project lock, which no two processes can win at once.

#include <QDateTime>
#include <QList>
#include <QString>

namespace fx {

class CRIS;

/// A lock as the schema records it.
struct LockHolder
{
    QString owner;  ///< "UNKNOWN" when the schema holds none
    QDateTime date; ///< null when the schema holds no date
};

/// An interference area's lock.
struct AreaLockHolder
{
    qint64 area = 0; ///< area_index_no
    LockHolder holder;
};

/// The time a lock was taken as the lock prompts show it; empty when the schema holds none.
QString LockSinceText(const QDateTime &since);

/// True when the project row is locked; gives who holds it and since when.
bool IsProjectLocked(CRIS &cris, const QString &project, LockHolder *holder = nullptr);
bool IsProjectLocked(const QString &project, LockHolder *holder = nullptr);

/// Locks the project row for `owner`, now; a blank owner is the logged-on user.
void ProjectLockA(CRIS &cris, const QString &project, const QString &owner = QString());
void ProjectLockA(const QString &project, const QString &owner = QString());

/// Takes the project row's lock for `owner` only if it is free, or still the lock of
/// `takeOverDate` (one the user agreed to take over): one conditional statement, read back, so
/// that of two processes claiming at once only one wins. False when another holds it now. The
/// owner is cut to the width the schema declares for lock_owner.
bool ProjectClaimA(CRIS &cris, const QString &project, const QString &owner,
                   const QDateTime &takeOverDate = QDateTime());

/// Clears the project row's lock, whoever holds it.
void ProjectUnlockA(CRIS &cris, const QString &project);
void ProjectUnlockA(const QString &project);

/// True when an interference area is locked; gives each locked area with its holder.
bool IsIntAreaLocked(CRIS &cris, const QString &project, QList<AreaLockHolder> *locks = nullptr);
bool IsIntAreaLocked(const QString &project, QList<AreaLockHolder> *locks = nullptr);

/// Locks every interference area for `owner`, now; a blank owner is the logged-on user.
void IntAreaLock(CRIS &cris, const QString &project, const QString &owner = QString());
void IntAreaLock(const QString &project, const QString &owner = QString());

/// Clears the locks of every interference area.
void IntAreaUnlock(CRIS &cris, const QString &project);
void IntAreaUnlock(const QString &project);

/// Clears the lock of one area.
void AreaUnlockA(CRIS &cris, const QString &project, qint64 area);
void AreaUnlockA(const QString &project, qint64 area);

/// A lock held in the schema for as long as the guard lives: released when the guard goes, on
/// every way out of the operation that took it. A failure to release then is logged, never
/// raised; Release() releases at once and raises.
class SchemaLockGuard
{
public:
    SchemaLockGuard(const SchemaLockGuard &) = delete;
    SchemaLockGuard &operator=(const SchemaLockGuard &) = delete;

    /// Releases the lock now; afterwards the guard holds nothing.
    void Release();

protected:
    using Unlock = void (*)(CRIS &, const QString &);
    SchemaLockGuard(CRIS &cris, const QString &project, Unlock unlock, const char *releaseFailedMessage);
    ~SchemaLockGuard();
    /// Called by the derived constructor once the lock is taken.
    void Held() { m_held = true; }

private:
    CRIS &m_cris;
    QString m_project;
    Unlock m_unlock;
    const char *m_releaseFailedMessage;
    bool m_held = false;
};

/// The project lock: ProjectLockA when made, ProjectUnlockA when it goes.
class ProjectLockGuard : public SchemaLockGuard
{
public:
    ProjectLockGuard(CRIS &cris, const QString &project, const QString &owner);

    /// The lock claimed by ProjectClaimA instead; raises "Project marker file is locked by
    /// ..." with the winner when another process holds it.
    struct Claim
    {
        QDateTime takeOverDate;
    };
    ProjectLockGuard(CRIS &cris, const QString &project, const QString &owner, const Claim &claim);
};

/// The interference areas' locks: IntAreaLock when made, IntAreaUnlock when it goes.
class AreaLockGuard : public SchemaLockGuard
{
public:
    AreaLockGuard(CRIS &cris, const QString &project, const QString &owner);
};

} // namespace fx
