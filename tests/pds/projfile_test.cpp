// The probe text, the proj_file reader and the control file run by perl found on the machine.

#include "frame/registry.h"
#include "pds/messages.h"
#include "pds/projfile.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kDelimiter("\0\0\0\0\x68\0\0\0", 8);

// An entry as a list writes it: the name blank-padded to 21, texts at 22 and 73, each
// followed by NUL bytes up to the next text.
QByteArray Entry(const QByteArray &name, const QByteArray &number, const QByteArray &description)
{
    QByteArray entry = name.leftJustified(21, ' ') + number;
    entry = entry.leftJustified(72, '\0') + description;
    return entry.leftJustified(entry.size() + 8, '\0');
}

TEST(ProbeScript, the_fragment_goes_before_every_marker_with_the_result_path_backslashes_doubled)
{
    const QString probe = ProbeScript(u"$x = 1;\r\n__END__\r\ndata\r\n__END__\r\n"_s, u"C:\\Temp\\r 1"_s);
    const QString fragment =
        uR"(open(O, ">C:\\Temp\\r 1");print O "[ENV]\n";foreach $key (keys(%ENV)){print O "$key=$ENV{$key}\n";} close(O);)"_s;
    EXPECT_EQ(probe, u"$x = 1;\r\n"_s + fragment + u"\r\n__END__\r\ndata\r\n"_s + fragment + u"\r\n__END__\r\n"_s);
    EXPECT_EQ(ProbeScript(u"no marker"_s, u"/tmp/r"_s), u"no marker"_s);
}

TEST(ProjFileParse, entries_are_read_by_position_and_the_first_of_two_case_twins_wins)
{
    QByteArray bytes = "HEADER with blanks " + Entry("NotAProject", "X", "Y").left(30);
    const QByteArray entries[] = {
        Entry("Alpha", "PN-A", "  First plant  "),
        Entry("ALPHA", "PN-COPY", "Copy"),
        QByteArray(128, '\0'),
        Entry("bad\xffname", "PN-B", "Damaged"),
        Entry("beta", "PN-B", "Hidden \xff in its text"),
        Entry("NoBlankAtAll", "", "").replace(' ', '\0'),
        // No two NUL bytes after position 73: the description stays empty.
        (QByteArray("Gamma").leftJustified(21, ' ') + "PN-G").leftJustified(72, '\0') + "Cut off",
        // The number runs on without two NUL bytes: neither text is read.
        QByteArray("Delta").leftJustified(21, ' ') + "PN-D",
    };
    for (const QByteArray &entry : entries)
        bytes += kDelimiter + entry;
    bytes += "   ";

    const QList<ProjFileProject> projects = ParseProjFile(bytes, u"list"_s);
    ASSERT_EQ(projects.size(), 3);
    EXPECT_EQ(projects[0].Name, u"Alpha"_s);
    EXPECT_EQ(projects[0].Number, u"PN-A"_s);
    EXPECT_EQ(projects[0].Description, u"First plant"_s);
    EXPECT_EQ(projects[1].Name, u"Gamma"_s);
    EXPECT_EQ(projects[1].Number, u"PN-G"_s);
    EXPECT_EQ(projects[1].Description, QString());
    EXPECT_EQ(projects[2].Name, u"Delta"_s);
    EXPECT_EQ(projects[2].Number, QString());

    EXPECT_TRUE(ParseProjFile(bytes.left(bytes.indexOf(kDelimiter) + 8), u"list"_s).isEmpty());
    EXPECT_EQ(fxtest::FailureText([] { ParseProjFile(QByteArray("HEADER \0\0\0\0\x68\0\0", 14), u"/x/proj_file"_s); }),
              u"ParseProjFile: "_s + ArgForm(msg::ProjFileIncorrect, {u"/x/proj_file"_s}));
}

TEST(ProjFileParse, the_list_is_found_through_server_and_folder_and_each_missing_piece_is_named)
{
    fxtest::Sandbox box;
    const QString folder = box.Root() + u"list/"_s;
    box.WriteFile(u"list/proj_file"_s, "H" + kDelimiter + Entry("plant1", "P1", "Plant one"));
    const QList<ProjFileProject> projects = GetProjFileProjects({u"srv"_s, folder});
    ASSERT_EQ(projects.size(), 1);
    EXPECT_EQ(projects[0].Description, u"Plant one"_s);

    const auto failure = [](const ProjFile &projFile) {
        return fxtest::FailureText([&] { GetProjFileProjects(projFile); });
    };
    EXPECT_EQ(failure({u" "_s, folder}), u"GetProjFileProjects: "_s + ArgForm(msg::ProjFileProjAddrNotDefined));
    EXPECT_EQ(failure({u"srv"_s, QString()}), u"GetProjFileProjects: "_s + ArgForm(msg::ProjFileProjFileNotDefined));
    const QString missing = box.Root() + u"nowhere/"_s;
    EXPECT_EQ(failure({u"srv"_s, missing}),
              u"GetProjFileProjects: "_s + ArgForm(msg::ProjFileFolderNotAccessible, {missing, u"srv"_s}));
    QDir().mkpath(box.Root() + u"empty"_s);
    EXPECT_EQ(failure({u"srv"_s, box.Root() + u"empty"_s}),
              u"GetProjFileProjects: ParseProjFile: "_s
                  + ArgForm(msg::ProjFileIncorrect, {box.Root() + u"empty/proj_file"_s}));
}

TEST(PdsPerl, the_shell_key_names_the_interpreter_else_the_program_folder_else_perl_on_the_path)
{
    fxtest::Sandbox box;
    const QString systemPerl = QStandardPaths::findExecutable(u"perl"_s);
    if (systemPerl.isEmpty())
        GTEST_SKIP() << "no perl on PATH";
    EXPECT_EQ(PdsPerlPath(), systemPerl);
    const QString bundled = box.WriteFile(u"program/Bin/perl"_s, "#!/bin/sh\n");
    EXPECT_EQ(PdsPerlPath(), bundled);

    RegSetValue(RegRoot::LocalMachine, u"Software\\Intergraph\\PD_SHELL\\08.00"_s, u"PathName"_s, box.Root());
    EXPECT_EQ(PdShellKey(), u"Software\\Intergraph\\PD_SHELL\\08.00"_s);
    EXPECT_EQ(fxtest::FailureText([] { PdsPerlPath(); }),
              u"PdsPerlPath: "_s + ArgForm(msg::PerlFileNotExists, {box.Root() + u"share/pdsperl"_s}));
    EXPECT_EQ(PdShellValue(u"ControlFile"_s), QString());
}

TEST(GetProjFile, a_control_file_run_by_perl_gives_both_values_or_names_what_is_missing)
{
    fxtest::Sandbox box;
    if (QStandardPaths::findExecutable(u"perl"_s).isEmpty())
        GTEST_SKIP() << "no perl on PATH";
    const QString folder = box.Root() + u"list/"_s;
    QDir().mkpath(folder);
    const auto control = [&](const QString &body) {
        return box.WriteFile(u"c.cmd"_s, (body + u"\r\n__END__\r\ndata\r\n"_s).toLatin1());
    };
    const auto failure = [](const QString &file) {
        return fxtest::FailureText([&] { GetProjFile(file, false); });
    };

    const ProjFile found = GetProjFile(control(u"$ENV{'PROJ_ADDR'} = ' srv '; $ENV{'PROJ_FILE'} = '%1';"_s.arg(folder)), false);
    EXPECT_EQ(found.PROJ_ADDR, u"srv"_s);
    EXPECT_EQ(found.PROJ_FILE, folder);
    // Probe and result are gone; the temporary folder is as before.
    EXPECT_TRUE(QDir(box.Temp()).entryList(QDir::Files).isEmpty()) << QDir(box.Temp()).entryList().join(u' ').toStdString();

    const QString noFile = control(u"$ENV{'PROJ_ADDR'} = 'srv';"_s);
    EXPECT_EQ(failure(noFile), u"GetProjFile: PROJ_FILE in control file '"_s + noFile + u"' not defined"_s);
    EXPECT_EQ(failure(control(u"$ENV{'PROJ_ADDR'} = 'srv'; $ENV{'PROJ_FILE'} = '/no/such/folder/';"_s)),
              u"GetProjFile: "_s + ArgForm(msg::ProjFilePathNotAccessible, {u"/no/such/folder/"_s, u"srv"_s}));
    EXPECT_EQ(failure(control(u"die 'broken';"_s)), u"GetProjFile: "_s + ArgForm(msg::ExecutingControlFileFailed));
    EXPECT_EQ(failure(u" "_s), u"GetProjFile: "_s + ArgForm(msg::ControlFileNotDefined));
    EXPECT_EQ(failure(folder + u"none.cmd"_s),
              u"GetProjFile: "_s + ArgForm(msg::ControlFileNotExisting, {folder + u"none.cmd"_s}));
    EXPECT_TRUE(QDir(box.Temp()).entryList(QDir::Files).isEmpty());
}

} // namespace
