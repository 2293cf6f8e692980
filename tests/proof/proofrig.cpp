#include "proof/proofrig.h"

#include "frame/settings.h"
#include "pds/projectdatabase.h"
#include "pds/scratchfiles.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace fxproof {

namespace {
// A run that hangs is a failure of its own; the limit only keeps the suite from hanging with it.
constexpr int kRunLimitMs = 120000;

// The built program's folder, copied whole: the copy reads Fendrix.ini and Registry.ini beside
// itself, so each test installs its site into a folder of its own.
void CopyProgramFolder(const QString &target)
{
    const QString source = QFileInfo(QStringLiteral(FENDRIX_CLI_EXECUTABLE)).absolutePath();
    QDirIterator files(source, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString copy = target + QDir(source).relativeFilePath(file);
        QDir().mkpath(QFileInfo(copy).absolutePath());
        QFile::remove(copy);
        if (!QFile::copy(file, copy))
            ADD_FAILURE() << "cannot copy " << file.toStdString();
    }
}
} // namespace

std::string CliResult::Told() const
{
    return QStringLiteral("exit %1%2\nstdout: %3\nstderr: %4")
        .arg(exitCode)
        .arg(killed ? u" (killed)"_s : QString(), out, err)
        .toStdString();
}

CliProcess::CliProcess(const QString &program, const QStringList &args, const QProcessEnvironment &env)
    : m_process(std::make_unique<QProcess>())
{
    m_process->setProcessEnvironment(env);
    m_process->start(program, args);
    m_process->waitForStarted();
}

bool CliProcess::WaitFor(int ms)
{
    return m_process->state() == QProcess::NotRunning || m_process->waitForFinished(ms);
}

void CliProcess::Kill()
{
    if (m_process->state() != QProcess::NotRunning)
        m_process->kill();
}

CliResult CliProcess::Finish()
{
    if (m_process->state() != QProcess::NotRunning && !m_process->waitForFinished(kRunLimitMs)) {
        ADD_FAILURE() << "fendrix-cli still runs after " << kRunLimitMs << " ms: killed";
        m_process->kill();
        m_process->waitForFinished();
    }
    CliResult result;
    result.killed = m_process->exitStatus() == QProcess::CrashExit;
    result.exitCode = result.killed ? -1 : m_process->exitCode();
    result.out = QString::fromLocal8Bit(m_process->readAllStandardOutput());
    result.err = QString::fromLocal8Bit(m_process->readAllStandardError());
    return result;
}

ProofRig::ProofRig()
    : m_project(u"P"_s + fx::RandomScratchName().toUpper())
{
    CopyProgramFolder(m_box.ProgramDir());
}

void ProofRig::BuildSite(const QString &kind, int clashes)
{
    pdssim::SiteOptions options;
    options.root = m_box.Root() + u"site"_s;
    options.project = m_project;
    options.clashes = clashes;
    options.kind = kind;
    options.pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE);
    pdssim::BuildSite(options);
    m_layout.emplace(options.root);
    pdssim::InstallSiteConfig(*m_layout, m_box.ProgramDir());
    fx::UseProjectDatabase(m_cris, fx::GetProjectDatabase(pdssim::SiteUserConfigFile(*m_layout, m_project), m_project));
}

QString ProofRig::ReviewerDir(const QString &reviewer)
{
    const QString dir = m_box.Root() + u"reviewer-"_s + reviewer + u"/"_s;
    if (QDir().mkpath(dir + u"appdata"_s) && QDir().mkpath(dir + u"temp"_s) && m_layout && !QFile::exists(dir + u"user.ini"_s))
        QFile::copy(pdssim::SiteUserConfigFile(*m_layout, m_project), dir + u"user.ini"_s);
    return dir;
}

QString ProofRig::Temp(const QString &reviewer)
{
    return ReviewerDir(reviewer) + u"temp/"_s;
}

QStringList ProofRig::OpenProject(const QString &reviewer)
{
    return {u"--config"_s, ReviewerDir(reviewer) + u"user.ini"_s, u"--cmd"_s, m_layout->ControlFile(), u"--project"_s, m_project};
}

QStringList ProofRig::OpenFile(const QString &file, const QString &reviewer)
{
    QStringList args{u"--file"_s, file};
    if (m_layout)
        args = QStringList{u"--config"_s, ReviewerDir(reviewer) + u"user.ini"_s} + args;
    return args;
}

std::unique_ptr<CliProcess> ProofRig::Start(const QStringList &args, const QString &reviewer)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"TEMP"_s, Temp(reviewer));
    env.insert(u"APPDATA"_s, ReviewerDir(reviewer) + u"appdata"_s);
    return std::make_unique<CliProcess>(m_box.ProgramDir() + u"fendrix-cli"_s, args, env);
}

CliResult ProofRig::Run(const QStringList &args, const QString &reviewer)
{
    return Start(args, reviewer)->Finish();
}

fx::Recordset ProofRig::Read(const QString &sql)
{
    return m_cris.DBRead(Schema(), sql);
}

void ProofRig::Write(const QString &sql)
{
    m_cris.DBWrite(Schema(), sql, true);
}

QStringList ProofRig::ClashIds(const QString &condition)
{
    QStringList ids;
    const fx::Recordset rows = Read(u"SELECT unique_clash_id FROM pdtable_132 WHERE "_s + condition + u" ORDER BY unique_clash_id"_s);
    for (const QVariantList &row : rows.Rows())
        ids << row.at(0).toString();
    return ids;
}

QStringList ProofRig::Table(const QString &table)
{
    QStringList lines;
    const fx::Recordset rows = Read(u"SELECT * FROM "_s + table);
    for (const QVariantList &row : rows.Rows()) {
        QStringList values;
        for (const QVariant &value : row)
            values << (value.isNull() ? u"<null>"_s : value.toString());
        lines << values.join(u'|');
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

QString ProofRig::MarkerPromptStart()
{
    fx::LockHolder holder;
    if (fx::IsProjectLocked(m_cris, m_project, &holder))
        return u"Project marker file is locked by '%1' since"_s.arg(holder.owner);
    QList<fx::AreaLockHolder> areas;
    if (fx::IsIntAreaLocked(m_cris, m_project, &areas) && !areas.isEmpty())
        return u"Some of area marker files are locked by '%1' since"_s.arg(areas.first().holder.owner);
    return QString();
}

void ProofRig::ClearMarkers()
{
    fx::ProjectUnlockA(m_cris, m_project);
    fx::IntAreaUnlock(m_cris, m_project);
}

QString WriteBackOwner()
{
    return u"FX_"_s + fx::GetLogonUserName();
}

} // namespace fxproof
