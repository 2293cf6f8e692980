#include "pdssim/controlfile.h"
#include "pdssim/sitemessages.h"
#include "pdssim/projfile.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitefiles.h"
#include "pdssim/siteserver.h"

#include "frame/settings.h"
#include "frame/unc.h"
#include "pds/messages.h"
#include "support/failures.h"
#include "support/sandbox.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

// Runs the control file as the project selection does: the probe goes in front of every
// "__END__", the PDS shell's perl runs it, and the [ENV] section of the result is read.
QString ProbeControlFile(const fxtest::Sandbox &box, const SiteLayout &layout, const char *variable)
{
    const QString result = box.Temp() + u"probe.out"_s;
    const QString quote = u"\""_s;
    const QString fragment = u"open(O, "_s + quote + u">"_s + QString(result).replace(u"\\"_s, u"\\\\"_s) + quote
                             + u");"_s + u"print O "_s + quote + u"[ENV]\\n"_s + quote + u";"_s
                             + u"foreach $key (keys(%ENV)){print O "_s + quote + u"$key=$ENV{$key}\\n"_s + quote
                             + u";} close(O);"_s + u"\r\n__END__"_s;
    QFile control(layout.ControlFile());
    EXPECT_TRUE(control.open(QIODevice::ReadOnly));
    const QString probe = box.WriteFile(u"temp/probe.cmd"_s,
                                        QString::fromLatin1(control.readAll()).replace(u"__END__"_s, fragment).toLatin1());
    QProcess perl;
    perl.start(layout.PdShellDir() + u"share/pdsperl"_s, {u"-s"_s, probe});
    EXPECT_TRUE(perl.waitForFinished(60000));
    EXPECT_EQ(perl.exitCode(), 0) << perl.readAllStandardError().constData();
    return fx::GetIniValue(result, u"ENV"_s, QString::fromLatin1(variable)).remove(QChar(0)).trimmed();
}

TEST(SiteControlFile, the_probe_run_by_perl_yields_server_and_proj_file_folder_with_one_or_two_end_markers)
{
    for (const bool edge : {false, true}) {
        fxtest::Sandbox box;
        const SiteLayout layout(box.Root() + u"site"_s);
        WriteSiteFiles(layout, {u"demo"_s, u"sqlite"_s, edge, DgnSettings()});
        InstallSiteConfig(layout, box.ProgramDir());
        QFile control(layout.ControlFile());
        ASSERT_TRUE(control.open(QIODevice::ReadOnly));
        EXPECT_EQ(control.readAll().count("__END__\r\n"), edge ? 2 : 1);
        const QString address = ProbeControlFile(box, layout, "PROJ_ADDR");
        const QString folder = ProbeControlFile(box, layout, "PROJ_FILE");
        EXPECT_EQ(address, u"pdssrv"_s) << edge;
        EXPECT_EQ(folder, u"D:\\PDS\\proj\\"_s) << edge;
        // The two values lead to the site's project list.
        EXPECT_EQ(fx::LocalPath2UNC(address, folder) + u"proj_file"_s, layout.ProjFile());
        EXPECT_TRUE(QFileInfo::exists(layout.ProjFile()));
    }
}

struct ReadProject
{
    QByteArray name, number, description;
};

// The text of a piece from `position` (from 1) up to the next two NUL bytes, if there are two.
QByteArray TextAt(const QByteArray &piece, int position)
{
    const qsizetype end = piece.indexOf(QByteArray("\0\0", 2), position - 1);
    return end < 0 ? QByteArray() : piece.mid(position - 1, end - position + 1).trimmed();
}

// proj_file read by the rules of the project selection.
std::vector<ReadProject> ParseProjFile(const QByteArray &bytes)
{
    const QByteArray delimiter("\0\0\0\0\x68\0\0\0", 8);
    const qsizetype first = bytes.indexOf(delimiter);
    if (first < 0)
        return {};
    QByteArray rest = bytes.mid(first + delimiter.size());
    while (rest.startsWith(' '))
        rest.remove(0, 1);
    while (rest.endsWith(' '))
        rest.chop(1);
    std::vector<ReadProject> projects;
    qsizetype at = 0;
    while (at <= rest.size()) {
        qsizetype next = rest.indexOf(delimiter, at);
        if (next < 0)
            next = rest.size();
        const QByteArray piece = rest.mid(at, next - at);
        at = next + delimiter.size();
        const qsizetype blank = piece.indexOf(' ');
        const QByteArray name = blank < 0 ? QByteArray() : piece.left(blank).trimmed();
        if (name.isEmpty() || piece.startsWith('\0') || name.contains('\xff'))
            continue;
        if (std::any_of(projects.begin(), projects.end(), [&](const ReadProject &p) { return p.name.toLower() == name.toLower(); }))
            continue;
        projects.push_back({name, TextAt(piece, 22), TextAt(piece, 73)});
    }
    return projects;
}

TEST(SiteProjFile, read_by_the_selection_rules_it_gives_each_project_once_with_its_texts)
{
    fxtest::Sandbox box;
    const SiteLayout layout(box.Root() + u"site"_s);
    for (const bool edge : {false, true}) {
        WriteProjFile(layout, {u"Demo"_s, edge});
        QFile file(layout.ProjFile());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const int entries = edge ? 7 : 4;
        EXPECT_EQ(bytes.size(), kProjFileHeaderSize + entries * (8 + kProjFileEntrySize));
        EXPECT_EQ(bytes.count(QByteArray("\0\0\0\0\x68\0\0\0", 8)), entries);
        EXPECT_EQ(bytes.contains('\xff'), edge);
        const auto projects = ParseProjFile(bytes);
        ASSERT_EQ(projects.size(), 4u) << edge;
        const char *expected[][3] = {{"Demo", "PN-DEMO", "Clash review plant Demo"},
                                     {"unit2", "PN-U2", "Utilities unit 2"},
                                     {"tankfarm", "PN-TF", "Tank farm extension"},
                                     {"pilot", "PN-PL", "Pilot plant (archived)"}};
        for (size_t i = 0; i < projects.size(); ++i) {
            EXPECT_EQ(projects[i].name, expected[i][0]);
            EXPECT_EQ(projects[i].number, expected[i][1]);
            EXPECT_EQ(projects[i].description, expected[i][2]);
        }
    }
    EXPECT_EQ(fx::GetIniValue(layout.ManifestFile(), u"SiteFiles"_s, u"ProjFileCaseTwin"_s), u"UNIT2"_s);
    // The site's own name replaces another of the same name; a name too long for its field is refused.
    EXPECT_EQ(SiteProjFileEntries({u"PILOT"_s, false}).size(), 3);
    EXPECT_EQ(fxtest::FailureText([&] { WriteProjFile(layout, {u"a_project_name_of_21c"_s, false}); }),
              u"WriteProjFile: ProjFileBytes: "_s
                  + fx::ArgForm(pdssim::sitemsg::SimProjFileTextTooLong, {u"a_project_name_of_21c"_s, u"20"_s}));
}

} // namespace
