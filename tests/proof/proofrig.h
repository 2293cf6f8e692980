#pragma once
// The rig of the proof tests: a private copy of the built program with a pdssim site installed
// into it, fendrix-cli started as separate processes, and the project's tables read as a
// person's own tools would read them.

#include "pds/cris.h"
#include "pds/projectlocks.h"
#include "pdssim/sitelayout.h"

#include "support/sandbox.h"

#include <QMap>
#include <QProcess>
#include <QStringList>

#include <memory>
#include <optional>

namespace fxproof {

/// What one run of fendrix-cli left behind.
struct CliResult
{
    int exitCode = -1;
    bool killed = false;
    QString out;
    QString err;
    /// The run's own words, for a failed expectation.
    std::string Told() const;
};

/// One fendrix-cli process: started at once, finished (or killed) later.
class CliProcess
{
public:
    CliProcess(const QString &program, const QStringList &args, const QProcessEnvironment &env);
    /// Waits at most `ms` for the end; true when the process has ended.
    bool WaitFor(int ms);
    /// Ends it at once (SIGKILL) if it still runs.
    void Kill();
    /// Waits for the end and gives what the process left.
    CliResult Finish();

private:
    std::unique_ptr<QProcess> m_process;
};

/// A rig for one test. Reviewers are named: each has its own TEMP, APPDATA and copy of the
/// site's user config file, as two people on two machines would.
class ProofRig
{
public:
    ProofRig();

    /// Builds a site of `kind` ("sqlite", "ris" or "postgres=CONN") with `clashes` clashes and
    /// installs it into the program copy.
    void BuildSite(const QString &kind, int clashes = 200);

    QString Project() const { return m_project; }
    QString Schema() const { return QStringLiteral("pd_") + m_project; }
    /// The TEMP of a reviewer's runs, with a trailing separator.
    QString Temp(const QString &reviewer = QStringLiteral("a"));
    QString Root() const { return m_box.Root(); }
    /// The options that open the project from its control file as `reviewer`.
    QStringList OpenProject(const QString &reviewer = QStringLiteral("a"));
    /// The options that open a clash file as `reviewer`.
    QStringList OpenFile(const QString &file, const QString &reviewer = QStringLiteral("a"));

    /// Starts fendrix-cli with `args` as `reviewer`; Run waits for its end.
    std::unique_ptr<CliProcess> Start(const QStringList &args, const QString &reviewer = QStringLiteral("a"));
    CliResult Run(const QStringList &args, const QString &reviewer = QStringLiteral("a"));

    /// Reads from the project's schema.
    fx::Recordset Read(const QString &sql);
    /// Writes into the project's schema, committed.
    void Write(const QString &sql);
    /// The clash ids that a condition on pdtable_132 picks, in order.
    QStringList ClashIds(const QString &condition);
    /// The whole table, one line a row ("|" between values, NULL as "<null>"), sorted.
    QStringList Table(const QString &table);

    /// The marker text a lock prompt names, for the project's marker when it is set, else for
    /// the areas' markers; empty when none is set.
    QString MarkerPromptStart();
    /// Clears both kinds of marker, as a person with the project's tools would.
    void ClearMarkers();

private:
    QString ReviewerDir(const QString &reviewer);

    fxtest::Sandbox m_box;
    QString m_project;
    std::optional<pdssim::SiteLayout> m_layout;
    fx::CRIS m_cris;
};

/// "FX_" and the logon name: the owner a write-back of this user puts on the markers.
QString WriteBackOwner();

} // namespace fxproof
