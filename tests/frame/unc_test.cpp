#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/unc.h"
#include "support/sandbox.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

QString NotAccessible(const char *path, const char *server)
{
    return ArgForm(msg::DirectoryOnServerNotAccessible, {QString::fromUtf8(path), QString::fromUtf8(server)});
}

TEST(LocalPath2UNC, server_folder_goes_through_its_share_to_the_mount_or_fails)
{
    fxtest::Sandbox box;
    const QByteArray root = box.Root().toUtf8();
    const auto expand = [&box](const char *text) { return QString::fromUtf8(text).replace(u"ROOT/"_s, box.Root()); };
    // The server "srv" shares D:\PDS as "pds", D:\PDSX as "px" and the whole drive as "D$";
    // this computer shares D:\PDS\proj1 as "proj".
    box.Env().Set("COMPUTERNAME", u"THISBOX"_s);
    box.WriteFile(u"program/Registry.ini"_s,
                  "[\\\\srv\\SYSTEM\\CurrentControlSet\\Services\\lanmanserver\\Shares]\r\n"
                  "D$=multi_sz:CSCFlags=0|MaxUses=4294967295|Path=D:\\|Permissions=0|Remark=Default share|Type=0\r\n"
                  "pds=multi_sz:CSCFlags=0|MaxUses=4294967295|PATH=D:\\PDS|Permissions=0|Type=0\r\n"
                  "px=multi_sz:Path=D:\\PDSX|Type=0\r\n"
                  "[SYSTEM\\CurrentControlSet\\Services\\lanmanserver\\Shares]\r\nproj=multi_sz:Path=D:\\PDS\\proj1|Type=0\r\n");
    box.WriteFile(u"program/Fendrix.ini"_s, "[Settings]\n[NetworkMounts]\n\\\\srv\\pds = " + root + "mnt/pds\n\\\\SRV\\PX = " + root +
                                                "mnt/pdsx/\n\\\\srv\\d$ = " + root + "mnt/d\n\\\\thisbox\\proj=" + root + "mnt/d/other\n");
    for (const char *folder : {"mnt/pds/proj1", "mnt/pdsx/a", "mnt/d/other"})
        QDir().mkpath(box.Root() + QString::fromUtf8(folder));
    const std::tuple<const char *, const char *, QString> cases[] = { // server, path, result
        {"srv", "d:\\pds\\proj1", expand("ROOT/mnt/pds/proj1")},
        {"\\\\SRV", "D:\\Pds\\proj1", expand("ROOT/mnt/pds/proj1")},
        {"srv", "d:\\pds", expand("ROOT/mnt/pds")},
        {"srv", "d:\\pdsx\\a", expand("ROOT/mnt/pdsx/a")}, // not below the share "pds"
        {"srv", "d:\\other", expand("ROOT/mnt/d/other")},  // the administrative share comes last
        {"srv", "\\\\srv\\pds\\proj1", expand("ROOT/mnt/pds/proj1")},
        {"srv", "ROOT/mnt/pdsx", expand("ROOT/mnt/pdsx")},
        {"ThisBox", "d:\\pds\\proj1", expand("ROOT/mnt/d/other")},
        {" ", "d:\\pds", ArgForm(msg::ServerNameNotDefined)},
        {"srv", "", ArgForm(msg::PathNameNotDefined)},
        {"\\\\srv", "d:\\pds\\missing", NotAccessible("d:\\pds\\missing", "srv")},
        {"srv", "e:\\nowhere", NotAccessible("e:\\nowhere", "srv")},
        {"srv", "\\\\srv\\unmounted\\x", NotAccessible("\\\\srv\\unmounted\\x", "srv")},
        {"unknown", "d:\\pds\\proj1", NotAccessible("d:\\pds\\proj1", "unknown")},
    };
    for (const auto &[server, path, result] : cases) {
        try {
            EXPECT_EQ(LocalPath2UNC(QString::fromUtf8(server), expand(path)), result) << server << " " << path;
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.Source() + u": "_s + failure.Description(), u"LocalPath2UNC: "_s + result) << server << " " << path;
        }
    }
}

} // namespace
