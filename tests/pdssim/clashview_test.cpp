// The view of clashes over a project loaded from an edge site: the whole chain from the
// project's tables to `clashes`, with a component separator and a DVCS centre.

#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "pds/projectschema.h"
#include "pdssim/edgemanifest.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"

#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

TEST(ClashViewOnASite, a_loaded_project_splits_its_separated_description_and_shifts_the_centres_by_the_dvcs)
{
    fxtest::Sandbox box;
    Process().WorkDir = box.Temp();
    ClearProjectCache();
    const QString project = u"VIEWEDGE"_s;
    const SiteOptions options{.root = box.Root() + u"site"_s, .project = project, .clashes = 20, .edge = true,
                              .pdssimExecutable = QStringLiteral(PDSSIM_EXECUTABLE)};
    BuildSite(options);
    const SiteLayout layout(options.root);
    InstallSiteConfig(layout, box.ProgramDir());
    SetUserConfigFile(SiteUserConfigFile(layout, project));
    const QList<EdgeCase> cases = ReadManifest(layout.ManifestFile());
    const EdgeCase *split = FindEdgeCase(cases, u"description_with_separator"_s);
    ASSERT_NE(split, nullptr);

    {
        // The edge site's markers are held by another user: open it read only.
        Process().BatchMode = false;
        fxtest::RecordingMessageBox boxes(IdNo);
        InitClashes(layout.ControlFile(), project);
    }
    SetIniValue(GetUserConfigFile(), project + u"Options"_s, u"CompSeparator"_s, u"-"_s);
    SetIniValue(GetUserConfigFile(), project + u"DVCS"_s, u"ElevationCenter"_s, u"100,25"_s);
    SqliteDb &db = ClashConnection();
    const auto one = [&](const QString &sql) { return db.Read(sql).Value(0, 0); };
    EXPECT_EQ(GetClashes(), one(u"SELECT COUNT(*) FROM base_clash_table"_s).toLongLong());

    const Recordset row = db.Read(u"SELECT comp_a_0, comp_a_1, comp_a_2 FROM clashes WHERE clash_id = "_s
                                  + split->Key(u"unique_clash_id"_s));
    ASSERT_EQ(row.RecordCount(), 1);
    EXPECT_EQ(row.Row(0), (QVariantList{u"A"_s, u"B"_s, u"C"_s}));
    // Every piece put together again gives the description of base_clash_table.
    const int last = int(one(u"SELECT COUNT(*) FROM pragma_table_info('clashes') WHERE name LIKE 'comp_a_%'"_s).toLongLong()) - 1;
    ASSERT_GE(last, 2);
    QStringList joined;
    for (int i = 0; i <= last; ++i)
        joined << u"IIF(c.comp_a_%1 IS NULL, '', IIF(%1 = 0, '', '-') || c.comp_a_%1)"_s.arg(i);
    EXPECT_EQ(one(u"SELECT COUNT(*) FROM clashes c JOIN base_clash_table b ON b.clash_id = c.clash_id WHERE "
                  "IFNULL(b.comp_a, '') <> "_s + joined.join(u" || "_s))
                  .toLongLong(),
              0);
    EXPECT_EQ(one(u"SELECT COUNT(*) FROM clashes WHERE elevation_dvcs IS NOT elevation + 100.25 OR easting_dvcs IS NOT easting"_s)
                  .toLongLong(),
              0);
    EXPECT_GT(one(u"SELECT COUNT(*) FROM clashes WHERE elevation_dvcs IS NOT NULL"_s).toLongLong(), 0);
    FreeClashes();
    ClearProjectCache();
}
