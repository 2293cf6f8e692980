#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/unc.h"
#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace fx;

namespace {

// The server "srv" shares D:\PDS as "pds", D:\PDSX as "pdsx" and the whole drive as "D$".
const QByteArray kRegistry =
    "[\\\\srv\\SYSTEM\\CurrentControlSet\\Services\\lanmanserver\\Shares]\r\n"
    "D$=multi_sz:CSCFlags=0|MaxUses=4294967295|Path=D:\\|Permissions=0|Remark=Default share|Type=0\r\n"
    "pds=multi_sz:CSCFlags=0|MaxUses=4294967295|PATH=D:\\PDS|Permissions=0|Type=0\r\n"
    "pdsx=multi_sz:Path=D:\\PDSX|Type=0\r\n";

class LocalPath2UNCTest : public testing::Test
{
protected:
    void SetUp() override
    {
        box.WriteFile(QStringLiteral("program/Registry.ini"), kRegistry);
        box.WriteFile(QStringLiteral("program/Fendrix.ini"),
                      "[Settings]\n[NetworkMounts]\n"
                      "\\\\srv\\pds = " + Root() + "mnt/pds\n"
                      "\\\\SRV\\PDSX = " + Root() + "mnt/pdsx/\n"
                      "\\\\srv\\d$ = " + Root() + "mnt/d\n");
        for (const char *folder : {"mnt/pds/proj1", "mnt/pdsx/a", "mnt/d/other"})
            QDir().mkpath(box.Root() + QString::fromUtf8(folder));
    }

    QByteArray Root() const { return box.Root().toUtf8(); }

    QString Expand(const char *text) const { return QString::fromUtf8(text).replace(QStringLiteral("ROOT/"), box.Root()); }

    void ExpectFailure(const QString &server, const QString &path, const QString &description)
    {
        try {
            LocalPath2UNC(server, path);
            ADD_FAILURE() << "no failure for " << path.toStdString();
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.Source(), QStringLiteral("LocalPath2UNC"));
            EXPECT_EQ(failure.Description(), description);
        }
    }

    fxtest::Sandbox box;
};

struct MappingCase
{
    const char *name;
    const char *server;
    const char *path;
    const char *expected;
};

void PrintTo(const MappingCase &c, std::ostream *os)
{
    *os << c.name;
}

class LocalPath2UNCMaps : public LocalPath2UNCTest, public testing::WithParamInterface<MappingCase>
{
};

TEST_P(LocalPath2UNCMaps, server_folder_to_the_mounted_share)
{
    const MappingCase &c = GetParam();
    EXPECT_EQ(LocalPath2UNC(QString::fromUtf8(c.server), Expand(c.path)), Expand(c.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, LocalPath2UNCMaps,
    testing::Values(MappingCase{"folder_below_a_share", "srv", "d:\\pds\\proj1", "ROOT/mnt/pds/proj1"},
                    MappingCase{"case_and_server_backslashes_do_not_matter", "\\\\SRV", "D:\\Pds\\proj1", "ROOT/mnt/pds/proj1"},
                    MappingCase{"share_itself", "srv", "d:\\pds", "ROOT/mnt/pds"},
                    MappingCase{"share_folder_matches_only_at_a_separator", "srv", "d:\\pdsx\\a", "ROOT/mnt/pdsx/a"},
                    MappingCase{"administrative_share_when_nothing_else_fits", "srv", "d:\\other", "ROOT/mnt/d/other"},
                    MappingCase{"network_path_goes_through_the_mounts", "srv", "\\\\srv\\pds\\proj1", "ROOT/mnt/pds/proj1"},
                    MappingCase{"other_path_stands_as_it_is", "srv", "ROOT/mnt/pdsx", "ROOT/mnt/pdsx"}),
    [](const testing::TestParamInfo<MappingCase> &info) { return info.param.name; });

TEST_F(LocalPath2UNCTest, blank_server_or_path_is_refused)
{
    ExpectFailure(QStringLiteral(" "), QStringLiteral("d:\\pds"), ArgForm(msg::ServerNameNotDefined));
    ExpectFailure(QStringLiteral("srv"), QString(), ArgForm(msg::PathNameNotDefined));
}

TEST_F(LocalPath2UNCTest, folder_without_share_mount_or_existence_is_not_accessible)
{
    for (const char *path : {"d:\\pds\\missing", "e:\\nowhere", "\\\\srv\\unmounted\\x"})
        ExpectFailure(QStringLiteral("\\\\srv"), QString::fromUtf8(path),
                      ArgForm(msg::DirectoryOnServerNotAccessible, {QString::fromUtf8(path), QStringLiteral("srv")}));
    ExpectFailure(QStringLiteral("unknown"), QStringLiteral("d:\\pds\\proj1"),
                  ArgForm(msg::DirectoryOnServerNotAccessible, {QStringLiteral("d:\\pds\\proj1"), QStringLiteral("unknown")}));
}

TEST_F(LocalPath2UNCTest, shares_of_this_computer_come_from_the_local_registry)
{
    box.Env().Set("COMPUTERNAME", QStringLiteral("THISBOX"));
    box.WriteFile(QStringLiteral("program/Registry.ini"),
                  "[SYSTEM\\CurrentControlSet\\Services\\lanmanserver\\Shares]\n"
                  "proj=multi_sz:Path=D:\\PDS\\proj1|Type=0\n");
    box.WriteFile(QStringLiteral("program/Fendrix.ini"), "[NetworkMounts]\n\\\\thisbox\\proj=" + Root() + "mnt/pds/proj1\n");
    EXPECT_EQ(LocalPath2UNC(QStringLiteral("ThisBox"), QStringLiteral("d:\\pds\\proj1")), Expand("ROOT/mnt/pds/proj1"));
}

} // namespace
