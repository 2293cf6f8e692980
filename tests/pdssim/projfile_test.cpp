// A site's control file run through the site's perl, its proj_file, and the project selection
// working on the site as the dialog drives it.

#include "frame/configkeys.h"
#include "frame/logmessage.h"
#include "pds/messages.h"
#include "pds/projfile.h"
#include "pds/selectproject.h"
#include "pdssim/projfile.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitemessages.h"
#include "pdssim/siteserver.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

class SiteProjects : public testing::Test
{
protected:
    void SetUp() override
    {
        SiteOptions options;
        options.root = box.Root() + u"site"_s;
        options.project = u"demo"_s;
        options.clashes = 50;
        options.edge = true;
        options.pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE);
        BuildSite(options);
        InstallSiteConfig(layout, box.ProgramDir());
    }

    // A control file beside the site's, made from its text.
    QString VariantOf(const QString &from, const QString &to) const
    {
        const QByteArray text = fxtest::Sandbox::ReadFile(layout.ControlFile());
        return box.WriteFile(u"variant.cmd"_s, QString::fromLatin1(text).replace(from, to).toLatin1());
    }

    fxtest::Sandbox box;
    const SiteLayout layout{box.Root() + u"site"_s};
};

TEST_F(SiteProjects, the_control_file_leads_through_the_site_perl_to_each_project_once)
{
    EXPECT_EQ(PdsPerlPath(), layout.PdShellDir() + u"share/pdsperl"_s);
    // The edge site's control file holds two end markers: the probe goes in twice and still answers.
    EXPECT_EQ(fxtest::Sandbox::ReadFile(layout.ControlFile()).count("__END__\r\n"), 2);
    const ProjFile projFile = GetProjFile(layout.ControlFile(), false);
    EXPECT_EQ(projFile.PROJ_ADDR, SiteServer());
    EXPECT_EQ(projFile.PROJ_FILE, ServerPath(layout, layout.ProjFileDir()));
    EXPECT_TRUE(QDir(box.Temp()).entryList(QDir::Files).isEmpty());

    // The case twin UNIT2, the deleted entry and the one with byte 255 are left out; unit2's
    // own texts stay. A plain site's list, without them, reads the same.
    for (const bool edge : {true, false}) {
        if (!edge)
            WriteProjFile(layout, {u"demo"_s, false});
        const QList<ProjFileProject> projects = GetProjFileProjects(projFile);
        QStringList names;
        for (const ProjFileProject &project : projects)
            names << project.Name;
        EXPECT_EQ(names, QStringList({u"demo"_s, u"unit2"_s, u"tankfarm"_s, u"pilot"_s})) << edge;
        ASSERT_EQ(projects.size(), 4);
        EXPECT_EQ(projects[1].Number, u"PN-U2"_s);
        EXPECT_EQ(projects[1].Description, u"Utilities unit 2"_s);
        EXPECT_EQ(projects[0].Description, u"Clash review plant demo"_s);
        EXPECT_EQ(projects[3].Description, u"Pilot plant (archived)"_s);
    }
    // The site's own name replaces another of the same name; a name too long for its field is refused.
    EXPECT_EQ(SiteProjFileEntries({u"PILOT"_s, false}).size(), 3);
    EXPECT_EQ(fxtest::FailureText([&] { WriteProjFile(layout, {u"a_project_name_of_21c"_s, false}); }),
              u"WriteProjFile: ProjFileBytes: "_s
                  + ArgForm(pdssim::sitemsg::SimProjFileTextTooLong, {u"a_project_name_of_21c"_s, u"20"_s}));

    // Without an end marker the probe never runs, and the ended interpreter is not waited for.
    EXPECT_EQ(fxtest::FailureText([&] { GetProjFile(VariantOf(u"__END__"_s, u"# end"_s), false); }),
              u"GetProjFile: "_s + ArgForm(msg::ExecutingControlFileFailed));
    EXPECT_TRUE(QDir(box.Temp()).entryList(QDir::Files).isEmpty());
}

TEST_F(SiteProjects, the_environment_takes_the_probe_variables_until_the_next_probe_replaces_them)
{
    GetProjFile(layout.ControlFile(), false);
    EXPECT_FALSE(qEnvironmentVariableIsSet("PDS_QUEUE"));

    GetProjFile(layout.ControlFile(), true);
    EXPECT_EQ(qEnvironmentVariable("PDS_QUEUE"), u"pdsqueue@"_s + SiteServer());
    EXPECT_EQ(qEnvironmentVariable("PROJ_FILE"), ServerPath(layout, layout.ProjFileDir()));
    EXPECT_EQ(qEnvironmentVariable("TEMP"), box.Temp());

    // A control file that drops the variable: the one set before goes with the next probe.
    GetProjFile(VariantOf(u"$ENV{'PDS_DEBUG'}"_s, u"delete $ENV{'PDS_QUEUE'}; $ENV{'PDS_DEBUG'}"_s), true);
    EXPECT_FALSE(qEnvironmentVariableIsSet("PDS_QUEUE"));
    EXPECT_EQ(qEnvironmentVariable("PDS_DEBUG"), u"OFF"_s);
}

// What the dialog would show: log lines, boxes and the locking of its controls.
class Watcher : public ILogSink
{
public:
    explicit Watcher(SelectProjectModel &model)
    {
        model.SetShowFailure([this](const Failure &f) { boxes << f.Source() + u": "_s + f.Description(); });
        model.SetShowText([this](const QString &text) { boxes << text; });
        model.SetLockControls([this](bool locked) { locks << locked; });
    }
    void ShowLogMessage(const QString &text) override { log << text; }

    QStringList log, boxes;
    QList<bool> locks;
    LogSinkRegistration registration{this};
};

TEST_F(SiteProjects, the_selection_opens_on_the_registry_control_file_with_the_stored_project_and_accepts_by_itself)
{
    SetConfigProject(layout.ControlFile(), u"TANKFARM"_s);
    SetConfigAutoLoad(true);
    SelectProjectModel model;
    Watcher watch(model);
    model.Open();
    EXPECT_EQ(SelectProjectModel::Title(), u"Select PDS Project"_s);
    EXPECT_TRUE(model.AutoLoad());
    EXPECT_EQ(model.ControlFile(), layout.ControlFile());
    EXPECT_EQ(model.ProjectNames(), QStringList({u"demo"_s, u"unit2"_s, u"tankfarm"_s, u"pilot"_s}));
    EXPECT_EQ(model.SelectedIndex(), 2);
    EXPECT_EQ(watch.log, QStringList({u"Getting default control file..."_s,
                                      u"Reading control file: '%1'..."_s.arg(layout.ControlFile()),
                                      u"Reading proj_file (PROJ_ADDR: '%1'; PROJ_FILE: '%2')..."_s.arg(
                                          SiteServer(), ServerPath(layout, layout.ProjFileDir())),
                                      u"4 projects found"_s}));
    EXPECT_EQ(watch.locks, QList<bool>({true, false}));
    EXPECT_TRUE(watch.boxes.isEmpty()) << watch.boxes.join(u'\n').toStdString();

    // The timer accepts only with the check box on, and accepting stores the check box.
    model.SetAutoLoad(false);
    EXPECT_FALSE(model.AcceptByItself());
    EXPECT_FALSE(model.IsFinished());
    model.SetAutoLoad(true);
    SetConfigAutoLoad(false);
    model.Select(1);
    EXPECT_TRUE(model.AcceptByItself());
    EXPECT_EQ(model.Result().outcome, SelectProjectResult::Outcome::Project);
    EXPECT_EQ(model.Result().controlFile, layout.ControlFile());
    EXPECT_EQ(model.Result().project, u"unit2"_s);
    EXPECT_TRUE(ConfigAutoLoad());
}

TEST_F(SiteProjects, the_selection_shows_what_fails_keeps_its_list_empty_and_ends_with_a_clash_file_instead)
{
    // Config.ini's control file comes before the registry's, even when it is gone.
    const QString gone = box.Root() + u"gone.cmd"_s;
    SetConfigControlFile(gone);
    SelectProjectModel model;
    Watcher watch(model);
    model.Open();
    EXPECT_FALSE(model.AutoLoad());
    EXPECT_EQ(model.ControlFile(), gone);
    EXPECT_TRUE(model.Projects().isEmpty());
    EXPECT_EQ(watch.boxes, QStringList(u"frmSelectProject::txtControlFile_Change: GetProjFile: "_s
                                       + ArgForm(msg::ControlFileNotExisting, {gone})));
    EXPECT_EQ(watch.locks, QList<bool>({true, false}));

    // A list without projects is told, and OK refuses without a selection.
    watch.boxes.clear();
    QFile list(layout.ProjFile());
    ASSERT_TRUE(list.open(QIODevice::WriteOnly | QIODevice::Truncate));
    list.write(ProjFileBytes({{QByteArray(), QByteArray(), QByteArray()}}));
    list.close();
    model.SetControlFile(layout.ControlFile());
    EXPECT_TRUE(model.Projects().isEmpty());
    EXPECT_EQ(watch.log.last(), u"0 projects found"_s);
    EXPECT_FALSE(model.Accept());
    EXPECT_EQ(watch.boxes, QStringList({ArgForm(msg::NoProjectsInControlFile),
                                        u"frmSelectProject::cmdOK_Click: "_s + ArgForm(msg::ProjectNotDefined)}));
    EXPECT_FALSE(model.IsFinished());

    model.SetAutoLoad(true);
    EXPECT_FALSE(model.LoadFromClashFile(u" "_s));
    EXPECT_TRUE(model.LoadFromClashFile(box.Root() + u"clashes.mdb"_s));
    EXPECT_EQ(model.Result().outcome, SelectProjectResult::Outcome::ClashFile);
    EXPECT_EQ(model.Result().clashFile, box.Root() + u"clashes.mdb"_s);
    EXPECT_TRUE(ConfigAutoLoad());
    model.Cancel();
    EXPECT_EQ(model.Result().outcome, SelectProjectResult::Outcome::Cancelled);
}

} // namespace
