// The RIS stand-ins as tools: the error box to the column, and a batch that goes on after an
// error and keeps the schema file and the schemas' databases together.

#include "pds/sqlitedb.h"
#include "pdssim/commands.h"
#include "pdssim/riserror.h"
#include "pdssim/rissite.h"

#include "support/sandbox.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(RisErrorBox, the_box_keeps_79_columns_and_points_under_the_place_of_the_error)
{
    EXPECT_EQ(pdssim::RisErrorBox({pdssim::RisErrorKind::UnknownRelation, u"alter schema sch1 include table t1"_s, 31, {}, {}}),
              u"*******************************************************************************\n"
              "*   RIS Error: RIS_E_UNKNOWN_RELATION (0x8a94a13a)                            *\n"
              "*                                                                             *\n"
              "*   alter schema sch1 include table t1                                        *\n"
              "*                                  ^                                          *\n"
              "*   Relation unknown or no access for operation.                              *\n"
              "*******************************************************************************\n"_s);

    // A long statement over several lines is wrapped, the caret under its own piece.
    const QString statement = u"select a,\n\tb from "_s + QString(80, u'x') + u" where c = 1"_s;
    const QString box = pdssim::RisErrorBox({pdssim::RisErrorKind::Syntax, statement, 90, {u"near c"_s}, {}});
    const QStringList lines = box.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines)
        EXPECT_EQ(line.size(), 79) << line.toStdString();
    const qsizetype second = lines.indexOf(u"*   "_s + (QString(26, u'x') + u" where c = 1"_s).leftJustified(71) + u"   *"_s);
    ASSERT_GT(second, 0) << box.toStdString();
    EXPECT_EQ(lines.at(second - 1), u"*   select a, b from "_s + QString(54, u'x') + u"   *"_s);
    EXPECT_EQ(lines.at(second + 1).indexOf(u'^'), 4 + 90 - 71);
    EXPECT_EQ(lines.at(second + 3), u"*   near c"_s.leftJustified(75) + u"   *"_s);
}

TEST(RisBatch, a_batch_goes_on_after_an_error_and_creates_and_drops_schemas)
{
    fxtest::Sandbox box;
    const pdssim::SiteLayout site(box.Root() + u"site"_s);
    pdssim::AddRisSchema(site, u"pd_demo"_s);
    const QString input = box.WriteFile(u"in.txt"_s,
                                        "default schema pd_demo;\n"
                                        "create table t (a int, b char(4));\n"
                                        "insert into t values (1, 'a;b');\n"
                                        "insert into nowhere values (1);\n"
                                        "insert into t values (2, NULL);\n"
                                        "select a, b from t order by a;\n"
                                        "create schema pd_new on database (MSSQL, DBNAME x) user u.pw;\n"
                                        "drop schema pd_demo force;\n"
                                        "show schema names;\n"
                                        "default schema pd_demo;\n"
                                        "quit;\n"
                                        "insert into t values (3, 'never');\n");
    const QString output = box.Root() + u"out.txt"_s;
    EXPECT_EQ(pdssim::RunRisBatch({u"--site"_s, site.Root(), u"-i"_s, input, u"-o"_s, output}), 1);
    const QString text = QString::fromLatin1(fxtest::Sandbox::ReadFile(output));
    EXPECT_EQ(text.count(u"RIS Error: "_s), 2) << text.toStdString();
    EXPECT_TRUE(text.contains(u"RIS_E_UNKNOWN_RELATION"_s));
    EXPECT_TRUE(text.contains(u"a b\n1 'a;b'\n2 NULL\n"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"show schema names;\nSchema name: pd_new\ndefault schema pd_demo;\n*****"_s))
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"RIS_E_UNKNOWN_SCHEMA"_s));
    EXPECT_FALSE(text.contains(u"never"_s));
    EXPECT_FALSE(QFile::exists(site.RisSchemaDir() + u"pd_demo.db"_s));
    EXPECT_TRUE(QFile::exists(site.RisSchemaDir() + u"pd_new.db"_s));
    EXPECT_EQ(pdssim::RisSchemaNames(site), QStringList{u"pd_new"_s});
}

} // namespace
