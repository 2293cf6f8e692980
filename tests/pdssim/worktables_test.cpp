// The working tables of the clash store, built by a whole load of an edge site of each kind
// and held row for row against what each column means.

#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "frame/settings.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/pdstime.h"
#include "pds/projectdatabase.h"
#include "pds/projectschema.h"
#include "pds/scratchfiles.h"
#include "pds/sqlitedb.h"
#include "pdssim/edgemanifest.h"
#include "pdssim/sitebuild.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "store/clashdefinitions.h"
#include "store/clashfile.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/loadclashes.h"
#include "store/workingdatabase.h"

#include "sitekind.h"
#include "support/failures.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QMap>

#include <gtest/gtest.h>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

class WorkTables : public fxtest::SiteKindTest
{
protected:
    // Builds an edge site of the kind and opens its project as the program does.
    void SetUp() override
    {
        SiteKindTest::SetUp();
        if (IsSkipped())
            return;
        const SiteLayout layout = fxtest::ProgramSite(box.Root() + u"site"_s, project, m_kind, 40, true, box.ProgramDir());
        UseProjectDatabase(cris, GetProjectDatabase(SiteUserConfigFile(layout, project), project));
        cases = ReadManifest(layout.ManifestFile());
        const DGNSettings units = GetModelDGNSettings(cris, project);
        factor = double(units.uorPerSub) * units.subPerMaster;
        // The edge project is locked by another reviewer: unlocked, as a reviewer may.
        fxtest::RecordingMessageBox unlock(IdYes);
        InitClashes(layout.ControlFile(), project);
    }

    QString CaseKey(const char *name, const char *key) const
    {
        const EdgeCase *edge = FindEdgeCase(cases, QString::fromLatin1(name));
        EXPECT_NE(edge, nullptr) << name;
        return edge ? edge->Key(QString::fromLatin1(key)) : QString();
    }

    // The row of a clash by column name; empty when the clash has none.
    QMap<QString, QVariant> BaseRow(const QString &clashId)
    {
        const Recordset rows = Db().Read(u"SELECT * FROM base_clash_table WHERE clash_id = "_s + clashId);
        QMap<QString, QVariant> row;
        if (rows.RecordCount() == 1)
            for (int i = 0; i < rows.FieldCount(); ++i)
                row.insert(rows.Fields().at(i).name, rows.Value(0, i));
        return row;
    }

    QVariant One(const QString &sql) { const Recordset r = Db().Read(sql); return r.IsEmpty() ? QVariant() : r.Value(0, 0); }

    SqliteDb &Db() { return ClashConnection(); }

    // A name of its own per test, so that tests side by side on one PostgreSQL server never meet.
    const QString project = u"W"_s + RandomScratchName().toUpper();
    CRIS cris;
    QList<EdgeCase> cases;
    double factor = 1;
};

// The same row worked out column by column in C++ from the cleaned copies, one table at a time.
QMap<QString, QVariant> ExpectedRow(SqliteDb &db, qint64 id, double factor)
{
    const auto one = [&](const QString &sql) {
        const Recordset r = db.Read(sql);
        QMap<QString, QVariant> row;
        if (r.RecordCount() >= 1)
            for (int i = 0; i < r.FieldCount(); ++i)
                row.insert(r.Fields().at(i).name, r.Value(0, i));
        return row;
    };
    const QString n = QString::number(id);
    const auto clash = one(u"SELECT * FROM pdtable_132 WHERE unique_clash_id = "_s + n);
    const auto review = one(u"SELECT * FROM pdtable_135 WHERE unique_clash_id = "_s + n);
    const auto volume = one(u"SELECT * FROM pdtable_133 WHERE unique_clash_id = "_s + n);
    const auto name = [](const QList<ClashDefinition> &list, const QVariant &number) -> QVariant {
        if (number.isNull())
            return {};
        for (const ClashDefinition &d : list)
            if (d.number == number.toInt())
                return d.name;
        return QVariant();
    };
    QMap<QString, QVariant> row;
    row[u"clash_id"_s] = id;
    row[u"type"_s] = GetClashTypes().isEmpty() ? clash[u"recent_clash_type"_s].toString() : name(GetClashTypes(), clash[u"recent_clash_type"_s]);
    const bool approved = clash[u"if_approval_status"_s].toInt() == 2;
    row[u"status"_s] = approved ? u"Approved"_s : u"Unapproved"_s;
    const int action = review.value(u"action"_s).isNull() ? 0 : review[u"action"_s].toInt();
    row[u"action"_s] = approved && action == 2 ? u"Approve Real Clash"_s
                       : approved && action == 3 ? u"Approve False Clash"_s : u"Unapprove Clash"_s;
    row[u"review_comment"_s] = review.value(u"review_comment"_s);
    const qint64 date = review.value(u"review_date"_s).toLongLong();
    row[u"recent_review_date"_s] = date == 0 ? QVariant() : QVariant(GetTimeStamp2Date(date).toString(u"yyyy-MM-dd HH:mm:ss"_s));
    for (const char *sideName : {"a", "b"}) {
        const QString side = QString::fromLatin1(sideName);
        const QString comp = clash[side == u"a"_s ? u"comp_a_unique_id"_s : u"comp_b_unique_id"_s].toString();
        const QString modelNo = clash[u"model_index_no_"_s + side].toString();
        const QString discipline = clash[u"discipline_index_"_s + side].toString();
        const auto model = one(u"SELECT * FROM pdtable_113 WHERE model_index_no = "_s + modelNo + u" AND discipline_indx_no = "_s + discipline);
        const auto site = model.isEmpty() ? model : one(u"SELECT site_id FROM pdtable_119 WHERE model_index_no = "_s + modelNo);
        row[u"site_id_"_s + side] = site.value(u"site_id"_s).isNull() ? QVariant(u"No SiteID"_s) : site[u"site_id"_s];
        row[u"discipline_"_s + side] = one(u"SELECT discipline_name FROM pdtable_111 WHERE discipline_indx_no = "_s + discipline).value(u"discipline_name"_s);
        row[u"area_"_s + side] = model.isEmpty() ? QVariant() : one(u"SELECT area_name FROM pdtable_112 WHERE area_index_no = "_s + model[u"area_index_no"_s].toString() + u" AND discipline_indx_no = "_s + model[u"discipline_indx_no"_s].toString()).value(u"area_name"_s);
        row[u"model_"_s + side] = model.value(u"model_no"_s);
        const QVariant status = model.value(u"model_status"_s);
        const QVariant statusName = name(GetModelStatus(), status);
        row[u"model_status_"_s + side] = statusName.isNull() ? (status.isNull() ? QVariant() : QVariant(status.toString())) : statusName;
        const auto component = one(u"SELECT * FROM pdtable_134 WHERE unique_comp_id = "_s + comp + u" AND model_index_no = "_s + modelNo);
        const QString secondary = component.value(u"secondary_descript"_s).toString();
        row[u"comp_"_s + side] = component.value(u"primary_descript"_s).toString() + (secondary.isEmpty() ? QString() : u"-"_s + secondary);
        const QString areaColumn = side == u"a"_s ? u"area_index_no"_s : u"area_index_no_b"_s;
        const QVariant actionArea = one(u"SELECT area_name FROM pdtable_112 WHERE area_index_no = "_s + clash[areaColumn].toString()).value(u"area_name"_s);
        row[u"action_area_"_s + side] = actionArea.isNull() ? QVariant(u"Project"_s) : actionArea;
    }
    row[u"action_discipline"_s] = one(u"SELECT discipline_name FROM pdtable_111 WHERE discipline_indx_no = "_s + clash[u"action_discipline"_s].toString()).value(u"discipline_name"_s);
    const char *axes[] = {"x", "y", "z"};
    const char *centres[] = {"easting", "northing", "elevation"};
    for (int axis = 0; axis < 3; ++axis) {
        const auto value = [&](const char *c, const char *end) { return volume.value(u"comp_%1_range_%2_%3"_s.arg(QLatin1String(c), QLatin1String(axes[axis]), QLatin1String(end))).toDouble(); };
        const double alo = value("a", "lo"), ahi = value("a", "hi"), blo = value("b", "lo"), bhi = value("b", "hi");
        const bool overlap = !volume.isEmpty() && alo <= bhi && blo <= ahi;
        row[QString::fromLatin1(centres[axis])] = overlap ? QVariant(std::round((std::max(alo, blo) + std::min(ahi, bhi)) / factor / 2 * 10000) / 10000) : QVariant();
    }
    for (const char *pair : {"discipline", "model", "site_id"}) {
        const QString a = row[QString::fromLatin1(pair) + u"_a"_s].toString(), b = row[QString::fromLatin1(pair) + u"_b"_s].toString();
        row[QString::fromLatin1(pair) + u"_structure"_s] = a.compare(b, Qt::CaseInsensitive) > 0 ? a + u" - "_s + b : b + u" - "_s + a;
    }
    return row;
}

// Columns compared as the store gives them: numbers as numbers, texts as texts.
void ExpectSameRow(const QMap<QString, QVariant> &actual, const QMap<QString, QVariant> &expected, const QString &what)
{
    ASSERT_EQ(actual.keys(), expected.keys()) << what.toStdString();
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        const QVariant got = actual.value(it.key());
        if (it->isNull()) {
            EXPECT_TRUE(got.isNull()) << what.toStdString() << " " << it.key().toStdString() << " = " << got.toString().toStdString();
        } else if (it->typeId() == QMetaType::Double) {
            EXPECT_NEAR(got.toDouble(), it->toDouble(), 1e-9) << what.toStdString() << " " << it.key().toStdString();
        } else {
            EXPECT_EQ(got.toString(), it->toString()) << what.toStdString() << " " << it.key().toStdString();
        }
    }
}

} // namespace

TEST_P(WorkTables, every_clash_row_holds_what_its_columns_mean_hard_cases_included)
{
    const Recordset ids = Db().Read(u"SELECT clash_id FROM base_clash_table ORDER BY rowid"_s);
    EXPECT_EQ(ids.RecordCount(), One(u"SELECT COUNT(*) FROM pdtable_132"_s).toLongLong());
    qint64 previous = -1;
    for (const QVariantList &id : ids.Rows()) {
        EXPECT_GT(id.at(0).toLongLong(), previous) << "rows in order of the clash id";
        previous = id.at(0).toLongLong();
        ExpectSameRow(BaseRow(id.at(0).toString()), ExpectedRow(Db(), previous, factor), u"clash "_s + id.at(0).toString());
    }

    // The quirks pinned on their own, in case the row above and the store share a mistake.
    const auto approved = BaseRow(CaseKey("approved_without_review", "unique_clash_id"));
    EXPECT_EQ(approved[u"status"_s].toString(), u"Approved"_s);
    EXPECT_EQ(approved[u"action"_s].toString(), u"Unapprove Clash"_s);
    EXPECT_TRUE(approved[u"review_comment"_s].isNull());
    EXPECT_TRUE(approved[u"recent_review_date"_s].isNull());
    const auto unapproved = BaseRow(CaseKey("unapproved_with_real_action", "unique_clash_id"));
    EXPECT_EQ(unapproved[u"status"_s].toString(), u"Unapproved"_s);
    EXPECT_EQ(unapproved[u"action"_s].toString(), u"Unapprove Clash"_s);
    EXPECT_TRUE(BaseRow(CaseKey("review_date_zero", "unique_clash_id"))[u"recent_review_date"_s].isNull());
    const auto quoted = BaseRow(CaseKey("comment_with_quotes", "unique_clash_id"));
    EXPECT_EQ(quoted[u"review_comment"_s].toString(), CaseKey("comment_with_quotes", "review_comment"));
    EXPECT_EQ(quoted[u"action"_s].toString(), u"Approve Real Clash"_s);
    EXPECT_EQ(BaseRow(CaseKey("missing_area_row", "unique_clash_id"))[u"action_area_a"_s].toString(), u"Project"_s);
    EXPECT_TRUE(BaseRow(CaseKey("unlisted_clash_type", "unique_clash_id"))[u"type"_s].isNull());
    EXPECT_EQ(BaseRow(CaseKey("unlisted_model_status", "unique_clash_id"))[u"model_status_a"_s].toString(), u"9"_s);
    EXPECT_EQ(BaseRow(CaseKey("description_with_separator", "unique_clash_id"))[u"comp_a"_s].toString(), u"A-B-C"_s);
    const auto gone = BaseRow(CaseKey("zero_row_number", "unique_clash_id"));
    EXPECT_EQ(gone[u"comp_a"_s].toString(), QString());
    EXPECT_FALSE(gone[u"comp_a"_s].isNull());
    EXPECT_EQ(BaseRow(CaseKey("ranges_apart_x", "unique_clash_id"))[u"site_id_a"_s].toString(), u"No SiteID"_s);
    EXPECT_TRUE(BaseRow(CaseKey("status_99", "unique_clash_id")).isEmpty());
    EXPECT_GT(One(u"SELECT COUNT(*) FROM base_clash_table WHERE type = 'Hard - Hard'"_s).toInt(), 0);
}

TEST_P(WorkTables, the_clash_volume_keeps_minus_one_for_a_missed_x_overlap_and_null_elsewhere)
{
    const QString x = CaseKey("ranges_apart_x", "unique_clash_id"), y = CaseKey("ranges_apart_y", "unique_clash_id");
    const Recordset apartX = Db().Read(u"SELECT min_x, max_x, min_y, max_y FROM intersection WHERE unique_clash_id = "_s + x);
    ASSERT_EQ(apartX.RecordCount(), 1);
    EXPECT_EQ(apartX.Value(0, 0).toDouble(), -1.0);
    EXPECT_TRUE(apartX.Value(0, 1).isNull());
    EXPECT_FALSE(apartX.Value(0, 2).isNull());
    EXPECT_TRUE(BaseRow(x)[u"easting"_s].isNull());
    EXPECT_FALSE(BaseRow(x)[u"northing"_s].isNull());
    const Recordset apartY = Db().Read(u"SELECT min_x, min_y, max_y FROM intersection WHERE unique_clash_id = "_s + y);
    EXPECT_GE(apartY.Value(0, 0).toDouble(), 0.0);
    EXPECT_TRUE(apartY.Value(0, 1).isNull());
    EXPECT_TRUE(apartY.Value(0, 2).isNull());
    EXPECT_TRUE(BaseRow(y)[u"northing"_s].isNull());
    // The bounds are master units: a design unit bound divided by the factor.
    const double lowY = One(u"SELECT MAX(comp_a_range_y_lo, comp_b_range_y_lo) FROM pdtable_133 WHERE unique_clash_id = "_s + x).toDouble();
    EXPECT_NEAR(One(u"SELECT min_y FROM intersection WHERE unique_clash_id = "_s + x).toDouble() * factor, lowY, 1e-6);

    // The factor is the store's: other units written there give other bounds, not the seed file's.
    SaveDGNSettings2MDB(Db(), DGNSettings{u"M"_s, u"MM"_s, 1000, 7, true});
    EXPECT_EQ(GetUorPerSub(Db(), project), 7);
    EXPECT_EQ(GetSubPerMast(Db(), project), 1000);
    EXPECT_EQ(GetMasterUnits(Db(), project), u"M"_s);
    CreateIntersectionTable(Db(), project);
    EXPECT_NEAR(One(u"SELECT min_y FROM intersection WHERE unique_clash_id = "_s + x).toDouble() * 7000, lowY, 1e-6);
}

TEST_P(WorkTables, linkages_read_unsigned_row_numbers_with_their_partition)
{
    for (const char *name : {"negative_row_number_minus_one", "negative_row_number"}) {
        const QString clash = CaseKey(name, "unique_clash_id");
        EXPECT_EQ(One(u"SELECT linkage_a FROM linkages WHERE unique_clash_id = "_s + clash).toString(), CaseKey(name, "linkage")) << name;
        EXPECT_EQ(One(u"SELECT linkage FROM pdtable_134 WHERE unique_comp_id = "_s + CaseKey(name, "unique_comp_id")).toString(),
                  CaseKey(name, "linkage")) << name;
    }
    EXPECT_TRUE(One(u"SELECT linkage_a FROM linkages WHERE unique_clash_id = "_s + CaseKey("unlisted_table_number", "unique_clash_id")).isNull());
    // Equipment (21) and the other forms of rows that keep their number as it stands.
    const Recordset forms = Db().Read(u"SELECT comp_table_number, comp_row_number, linkage FROM pdtable_134 WHERE comp_table_number IN (21, 22, 36, 91, 92) ORDER BY comp_table_number"_s);
    ASSERT_GT(forms.RecordCount(), 0);
    for (const QVariantList &row : forms.Rows()) {
        const int table = row.at(0).toInt();
        const QString prefix = table == 21 ? u"-32768 "_s : table == 22 ? u"0 "_s : u"4171 "_s;
        EXPECT_EQ(row.at(2).toString(), prefix + row.at(0).toString() + u' ' + row.at(1).toString() + u" 0"_s);
    }
    EXPECT_EQ(One(u"SELECT COUNT(*) FROM linkages"_s).toLongLong(), One(u"SELECT COUNT(*) FROM pdtable_132"_s).toLongLong());
}

TEST_P(WorkTables, an_older_clash_file_gains_its_action_column_without_the_clash_word)
{
    Db().Execute(u"DROP INDEX ix_base_clash_table_action; ALTER TABLE base_clash_table DROP COLUMN action"_s);
    InitClashTables(Db(), project, false);
    EXPECT_EQ(BaseRow(CaseKey("comment_with_quotes", "unique_clash_id"))[u"action"_s].toString(), u"Approve Real"_s);
    EXPECT_EQ(BaseRow(CaseKey("approved_without_review", "unique_clash_id"))[u"action"_s].toString(), u"Unapprove"_s);
    for (const QString &table : AdvancedFilterTableNames())
        EXPECT_EQ(One(u"SELECT COUNT(*) FROM [%1]"_s.arg(table)).toInt(), 0) << table.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Kinds, WorkTables, testing::Values("sqlite", "ris", "postgres"));
