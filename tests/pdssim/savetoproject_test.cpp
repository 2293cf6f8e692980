// Writing a reviewer's changes back to projects of pdssim sites of every kind: the project's
// tables read back row for row against what the changes must make of them, the reviews others
// made meanwhile, the markers, the backups, and a project left as it was when nothing changed.

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/log.h"
#include "frame/messagebox.h"
#include "frame/processstate.h"
#include "pds/cris.h"
#include "pds/localdb.h"
#include "pds/messages.h"
#include "pds/pdstime.h"
#include "pds/projectdatabase.h"
#include "pds/projectlocks.h"
#include "pds/projectschema.h"
#include "pds/scratchfiles.h"
#include "permissions/permissionnames.h"
#include "permissions/privilegedb.h"
#include "pdssim/edgemanifest.h"
#include "pdssim/siteconfig.h"
#include "pdssim/sitelayout.h"
#include "store/clashfile.h"
#include "store/clashstatus.h"
#include "store/clashstore.h"
#include "store/clashview.h"
#include "store/loadclashes.h"
#include "store/messages.h"
#include "store/savetoproject.h"

#include "sitekind.h"
#include "support/loglines.h"
#include "support/recordingmessagebox.h"
#include "support/sandbox.h"

#include <QDir>
#include <QFile>
#include <QLocale>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace fx;
using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

// A value as the comparisons see it: integers without a fraction whatever the kind delivers,
// NULL as "NULL".
QString Text(const QVariant &value)
{
    if (value.isNull())
        return u"NULL"_s;
    if (value.typeId() == QMetaType::Double && std::floor(value.toDouble()) == value.toDouble())
        return QString::number(qint64(value.toDouble()));
    return value.toString();
}

// One table of a project, every value as text, its rows by a key column.
struct TableRows
{
    QStringList fields;
    QMap<qint64, QStringList> rows;

    static TableRows Of(const Recordset &rows, const char *key)
    {
        TableRows table;
        for (const RecordsetField &field : rows.Fields())
            table.fields << field.name.toLower();
        for (const QVariantList &row : rows.Rows()) {
            QStringList values;
            for (const QVariant &value : row)
                values << Text(value);
            table.rows.insert(row.at(table.fields.indexOf(QLatin1String(key))).toLongLong(), values);
        }
        return table;
    }

    // A value to change; a row not there yet is made, empty.
    QString &At(qint64 key, const char *field)
    {
        QStringList &row = rows[key];
        row.resize(fields.size());
        return row[fields.indexOf(QLatin1String(field))];
    }
    QString Value(qint64 key, const char *field) const
    {
        return rows.value(key).value(fields.indexOf(QLatin1String(field)));
    }
    // The rows as "key: a|b|c" lines, which a failed comparison prints readably.
    QStringList Lines() const
    {
        QStringList lines;
        for (auto it = rows.cbegin(); it != rows.cend(); ++it)
            lines << QString::number(it.key()) + u": "_s + it.value().join(u'|');
        return lines;
    }
};

// What a test needs of a project's clash tables.
struct ProjectClashes
{
    TableRows clashes; ///< pdtable_132 by unique_clash_id
    TableRows reviews; ///< pdtable_135 by system_unique_no
    QMap<qint64, qint64> newestRun; ///< the newest completion_date of each area
    QMap<QString, qint64> disciplines; ///< pdtable_111 by name

    qint64 HighestReview() const { return reviews.rows.isEmpty() ? 0 : reviews.rows.lastKey(); }
    QList<qint64> ReviewsOf(qint64 clash) const
    {
        QList<qint64> numbers;
        for (auto it = reviews.rows.cbegin(); it != reviews.rows.cend(); ++it)
            if (it.value().at(reviews.fields.indexOf(u"unique_clash_id"_s)).toLongLong() == clash)
                numbers << it.key();
        return numbers;
    }
    qint64 RunOf(qint64 clash) const { return newestRun.value(clashes.Value(clash, "area_index_no").toLongLong()); }

    // Clashes of one area with a known action discipline and a check run, for which `wanted` holds.
    QList<qint64> Pick(const std::function<bool(qint64)> &wanted) const
    {
        QList<qint64> ids;
        for (auto it = clashes.rows.cbegin(); it != clashes.rows.cend(); ++it) {
            const qint64 id = it.key();
            const QString area = clashes.Value(id, "area_index_no");
            if (area == clashes.Value(id, "area_index_no_b") && newestRun.contains(area.toLongLong())
                && std::find(disciplines.cbegin(), disciplines.cend(), clashes.Value(id, "action_discipline").toLongLong())
                       != disciplines.cend()
                && wanted(id))
                ids << id;
        }
        return ids;
    }
    // Clashes not approved and never reviewed, as Pick finds them.
    QList<qint64> Unreviewed() const
    {
        return Pick([&](qint64 id) { return clashes.Value(id, "if_approval_status") == u"1"_s && ReviewsOf(id).isEmpty(); });
    }

    // The review row a write-back adds for a review made here: user numbers 0, approval method 2.
    void AddReviewMadeHere(qint64 number, qint64 clash, qint64 date, int action, const QString &comment)
    {
        const QList<std::pair<const char *, QString>> values{
            {"system_unique_no", QString::number(number)}, {"unique_clash_id", QString::number(clash)},
            {"review_date", QString::number(date)}, {"review_user_no", u"0"_s}, {"responsib_user_no", u"0"_s},
            {"action", QString::number(action)}, {"review_comment", comment}, {"approval_method", u"2"_s}};
        for (const auto &[field, value] : values)
            reviews.At(number, field) = value;
    }
    // The newest review row of a clash, which the write-back gives the review made here.
    void SetReviewTakenOver(qint64 number, qint64 date, int action, const QString &comment, int method)
    {
        reviews.At(number, "review_date") = QString::number(date);
        reviews.At(number, "action") = QString::number(action);
        reviews.At(number, "review_comment") = comment;
        reviews.At(number, "approval_method") = QString::number(method);
    }
};

class WriteBack : public fxtest::SiteKindTest
{
protected:
    // Builds the site and opens its project as a reviewer does; an edge site's markers, held
    // by another user, are released by their owner first.
    void Open(bool edge)
    {
        layout.emplace(fxtest::ProgramSite(box.Root() + u"site"_s, project, m_kind, 30, edge, box.ProgramDir()));
        UseProjectDatabase(cris, GetProjectDatabase(SiteUserConfigFile(*layout, project), project));
        if (edge) {
            ProjectUnlockA(cris, project);
            IntAreaUnlock(cris, project);
        }
        InitClashes(layout->ControlFile(), project);
        GetClashes();
    }

    QString Schema() const { return u"pd_"_s + project; }

    ProjectClashes Read()
    {
        ProjectClashes read;
        read.clashes = TableRows::Of(cris.DBRead(Schema(), u"SELECT * FROM pdtable_132"_s), "unique_clash_id");
        read.reviews = TableRows::Of(cris.DBRead(Schema(), u"SELECT * FROM pdtable_135"_s), "system_unique_no");
        const Recordset runs = cris.DBRead(Schema(), u"SELECT * FROM pdtable_131"_s);
        for (qsizetype i = 0; i < runs.RecordCount(); ++i) {
            qint64 &newest = read.newestRun[runs.Value(i, u"area_index_no"_s).toLongLong()];
            newest = std::max(newest, runs.Value(i, u"completion_date"_s).toLongLong());
        }
        const Recordset disciplines = cris.DBRead(Schema(), u"SELECT * FROM pdtable_111"_s);
        for (qsizetype i = 0; i < disciplines.RecordCount(); ++i)
            read.disciplines.insert(disciplines.Value(i, u"discipline_name"_s).toString().trimmed(),
                                    disciplines.Value(i, u"discipline_indx_no"_s).toLongLong());
        return read;
    }

    static void Change(qint64 clash, qint16 action, const QString &description, qint16 mode = DescriptionModeOverwrite)
    {
        qint64 count = 0;
        SetClashStatusA(u"clash_id = "_s + QString::number(clash), description, action, mode, count);
        ASSERT_EQ(count, 1) << clash;
    }

    // A review made here at a given moment, as an older store would hold it.
    static void ReviewedAt(qint64 clash, const QString &action, const QString &comment, const QDateTime &local)
    {
        ClashConnection().Execute(u"UPDATE clashes SET status = 'Approved', action = %1, review_comment = %2, "
                                  "recent_review_date = %3 WHERE clash_id = %4"_s
                                      .arg(DBQuote(action), DBQuote(comment), GetDateSqlForm(local))
                                      .arg(clash));
    }

    // The project's seconds of the moment a clash was reviewed here.
    static qint64 LocalStamp(qint64 clash)
    {
        const QString text = ClashConnection()
                                 .Read(u"SELECT recent_review_date FROM clashes WHERE clash_id = "_s + QString::number(clash))
                                 .Value(0, 0)
                                 .toString();
        return GetDate2TimeStamp(QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_s));
    }

    // The number and text of the failure of a save; number 0 when it succeeded.
    static std::pair<qint32, QString> Save()
    {
        try {
            SaveClashes2PDS();
        } catch (const Failure &failure) {
            return {failure.Number(), failure.Source() + u": "_s + failure.Description()};
        }
        return {0, QString()};
    }

    QStringList BackupFiles() const
    {
        return QDir(box.Temp() + u"FendrixBackup"_s).entryList(QDir::Files, QDir::Name);
    }

    void ExpectMarkersReleasedAndNothingLeft()
    {
        EXPECT_FALSE(IsProjectLocked(cris, project));
        EXPECT_FALSE(IsIntAreaLocked(cris, project));
        EXPECT_EQ(QDir(box.Temp()).entryList({u"fxmerge*"_s, u"fxload*"_s}, QDir::Files), QStringList());
    }

    // A name of its own per test, so that tests side by side on one PostgreSQL server never meet.
    const QString project = u"W"_s + RandomScratchName().toUpper();
    std::optional<SiteLayout> layout;
    CRIS cris;
};

} // namespace

TEST_P(WriteBack, approvals_an_unapproval_and_a_discipline_go_into_both_tables_with_new_reviews_numbered_after_the_highest)
{
    Open(false);
    const ProjectClashes before = Read();
    const QList<qint64> unreviewed = before.Unreviewed();
    const QList<qint64> approved = before.Pick([&](qint64 id) {
        const QList<qint64> reviews = before.ReviewsOf(id);
        return before.clashes.Value(id, "if_approval_status") == u"2"_s && !reviews.isEmpty()
               && before.reviews.Value(reviews.last(), "review_comment") != u"NULL"_s
               && before.reviews.Value(reviews.last(), "review_date").toLongLong() >= before.RunOf(id);
    });
    ASSERT_GE(unreviewed.size(), 3);
    ASSERT_FALSE(approved.isEmpty());
    const qint64 real = unreviewed.at(0), falseOne = unreviewed.at(1), moved = unreviewed.at(2), unapproved = approved.first();
    QString otherDiscipline;
    for (auto it = before.disciplines.cbegin(); it != before.disciplines.cend() && otherDiscipline.isEmpty(); ++it)
        if (it.value() != before.clashes.Value(moved, "action_discipline").toLongLong())
            otherDiscipline = it.key();
    ASSERT_FALSE(otherDiscipline.isEmpty());

    Change(real, ClashActionApproveReal, u"Needs a support, O'Brien says"_s);
    Change(falseOne, ClashActionApproveFalse, u"false one"_s);
    Change(unapproved, ClashActionUnapprove, QString());
    Change(moved, ClashActionApproveReal, QString(), DescriptionModeLeave);
    ClashConnection().Execute(u"UPDATE clashes SET action_discipline = %1 WHERE clash_id = %2"_s.arg(DBQuote(otherDiscipline)).arg(moved));
    SetClashesChanged(true);

    const auto saved = Save();
    ASSERT_EQ(saved.first, 0) << saved.second.toStdString();
    EXPECT_TRUE(GetClashesChanged()) << "the caller says when the store counts as saved";

    // What the changes must make of the project's rows; every other row stays as it was.
    ProjectClashes expected = before;
    for (const qint64 id : {real, falseOne, moved}) {
        expected.clashes.At(id, "if_approval_status") = u"2"_s;
        expected.clashes.At(id, "recent_review_date") = QString::number(before.RunOf(id));
    }
    expected.clashes.At(moved, "action_discipline") = QString::number(before.disciplines.value(otherDiscipline));
    expected.clashes.At(unapproved, "if_approval_status") = u"1"_s;
    expected.clashes.At(unapproved, "recent_review_date") = QString::number(before.RunOf(unapproved));
    qint64 number = before.HighestReview();
    for (const auto &[id, action, comment] : {std::tuple{real, 2, u"Needs a support, O'Brien says"_s},
                                              std::tuple{falseOne, 3, u"false one"_s}, std::tuple{moved, 2, u"NULL"_s}})
        expected.AddReviewMadeHere(++number, id, LocalStamp(id), action, comment);
    expected.SetReviewTakenOver(before.ReviewsOf(unapproved).last(), LocalStamp(unapproved), 1, u"NULL"_s, 1);

    const ProjectClashes after = Read();
    EXPECT_EQ(after.clashes.Lines(), expected.clashes.Lines());
    EXPECT_EQ(after.reviews.Lines(), expected.reviews.Lines());
    ExpectMarkersReleasedAndNothingLeft();
    EXPECT_EQ(fxtest::LogLineCount(ArgForm(msg::MergeRecordsInserted, {u"pdtable_135"_s, u"3"_s})), 1);

    // The backups: the project as found, the store, and what went in; each reads back.
    const QStringList files = BackupFiles();
    ASSERT_EQ(files.size(), 3) << files.join(u", "_s).toStdString();
    const QString stamp = files.first().left(files.first().indexOf(project) + project.size());
    EXPECT_EQ(files, (QStringList{stamp + u"_clashes_backup.dmp"_s, stamp + u"_clashes_backup.fxdb"_s, stamp + u"_clashes_load.dmp"_s}));
    const QString folder = box.Temp() + u"FendrixBackup/"_s;
    const auto dumped = [&](const QString &file, const char *table, const char *key) {
        return TableRows::Of(cris.RISDumpRead(folder + file, Schema(), u"SELECT * FROM "_s + QLatin1String(table)), key).Lines();
    };
    EXPECT_EQ(dumped(files.at(0), "pdtable_135", "system_unique_no"), before.reviews.Lines());
    EXPECT_EQ(dumped(files.at(0), "pdtable_132", "unique_clash_id"), before.clashes.Lines());
    EXPECT_EQ(dumped(files.at(2), "pdtable_135", "system_unique_no"), after.reviews.Lines());
    EXPECT_TRUE(IsValidMDB(folder + files.at(1)));

    // Saved again at once, nothing is new: the failure says so, and the first save's backups stay.
    const auto again = Save();
    EXPECT_EQ(again.first, NoChangesFoundNumber);
    EXPECT_EQ(again.second, u"SaveClashes2PDS: "_s + ArgForm(msg::NoChangesFound, {Schema()}));
    EXPECT_EQ(BackupFiles(), files);
    EXPECT_EQ(Read().reviews.Lines(), after.reviews.Lines());
    ExpectMarkersReleasedAndNothingLeft();
}

TEST_P(WriteBack, a_later_review_in_the_project_wins_and_a_review_older_than_the_check_run_adds_no_row)
{
    Open(true);
    const QList<EdgeCase> cases = ReadManifest(layout->ManifestFile());
    const EdgeCase *race = FindEdgeCase(cases, u"review_race"_s);
    const EdgeCase *stale = FindEdgeCase(cases, u"stale_local_stamp"_s);
    ASSERT_NE(race, nullptr);
    ASSERT_NE(stale, nullptr);
    const ProjectClashes before = Read();
    const QList<qint64> unreviewed = before.Unreviewed();
    ASSERT_GE(unreviewed.size(), 3);
    const qint64 mine = unreviewed.at(0), theirs = unreviewed.at(1), tooEarly = unreviewed.at(2);

    // Checked at 09:00, approved here at 10:00, approved by the other reviewer at 11:00.
    const qint64 raced = race->Key(u"unique_clash_id"_s).toLongLong();
    ReviewedAt(raced, u"Approve False Clash"_s, u"mine"_s, GetTimeStamp2Date(race->Key(u"local_review_date"_s).toLongLong()));
    // Reviewed here after the older check run of its area but before the newest.
    const qint64 between = stale->Key(u"unique_clash_id"_s).toLongLong();
    const qint64 olderRun = stale->Key(u"older_completion_date"_s).toLongLong();
    ReviewedAt(between, u"Approve Real Clash"_s, u"between the runs"_s, GetTimeStamp2Date(olderRun + 2 * 86400));
    ReviewedAt(tooEarly, u"Approve Real Clash"_s, u"too early"_s, GetTimeStamp2Date(before.RunOf(tooEarly) - 86400));
    Change(mine, ClashActionApproveReal, u"mine"_s);
    Change(theirs, ClashActionApproveReal, u"mine too"_s);

    // Between this load and the save, someone else reviews a clash in the project, later.
    const qint64 otherNumber = before.HighestReview() + 1;
    cris.DBWrite(Schema(), u"INSERT INTO pdtable_135 VALUES (%1, %2, %3, 4, 5, 3, 'theirs', 2)"_s
                               .arg(otherNumber).arg(theirs).arg(LocalStamp(theirs) + 3600), true);
    cris.DBWrite(Schema(), u"UPDATE pdtable_132 SET if_approval_status = 2, recent_review_date = %1 WHERE unique_clash_id = %2"_s
                               .arg(before.RunOf(theirs)).arg(theirs), true);
    const ProjectClashes found = Read();

    const auto saved = Save();
    ASSERT_EQ(saved.first, 0) << saved.second.toStdString();
    ProjectClashes expected = found;
    expected.clashes.At(mine, "if_approval_status") = u"2"_s;
    expected.clashes.At(mine, "recent_review_date") = QString::number(before.RunOf(mine));
    // The clash checked twice: no new row, but its newest row and its clash row take the review.
    expected.SetReviewTakenOver(before.ReviewsOf(between).last(), olderRun + 2 * 86400, 2, u"between the runs"_s, 2);
    expected.clashes.At(between, "if_approval_status") = u"2"_s;
    expected.clashes.At(between, "recent_review_date") = stale->Key(u"completion_date"_s);
    // Only the clash reviewed here alone gets a row, numbered after the other reviewer's.
    expected.AddReviewMadeHere(otherNumber + 1, mine, LocalStamp(mine), 2, u"mine"_s);

    const ProjectClashes after = Read();
    EXPECT_EQ(after.clashes.Lines(), expected.clashes.Lines());
    EXPECT_EQ(after.reviews.Lines(), expected.reviews.Lines());
    ExpectMarkersReleasedAndNothingLeft();
}

TEST_P(WriteBack, with_nothing_new_the_project_stays_as_it_was_no_backup_is_left_and_markers_are_asked_about_first)
{
    Open(false);
    const ProjectClashes before = Read();
    std::pair<qint32, QString> saved;
    {
        fxtest::RecordingMessageBox boxes(IdYes);
        saved = Save();
        EXPECT_TRUE(boxes.boxes.empty());
    }
    const QString noChanges = ArgForm(msg::NoChangesFound, {Schema()});
    EXPECT_EQ(saved, (std::pair<qint32, QString>{NoChangesFoundNumber, u"SaveClashes2PDS: "_s + noChanges}));
    EXPECT_EQ(BackupFiles(), QStringList());
    EXPECT_TRUE(QDir(box.Temp() + u"FendrixBackup"_s).exists());
    EXPECT_EQ(Read().clashes.Lines(), before.clashes.Lines());
    EXPECT_EQ(Read().reviews.Lines(), before.reviews.Lines());
    ExpectMarkersReleasedAndNothingLeft();
    // Told once as the tail's line, never logged as a failure.
    EXPECT_EQ(fxtest::LogLineCount(noChanges), 1);
    EXPECT_EQ(fxtest::LogLineCount(u"SaveClashes2PDS: "_s + noChanges), 0);

    // Another reviewer holds the project: refused here, the other's marker stays.
    ProjectLockA(cris, project, u"FX_other"_s);
    {
        fxtest::RecordingMessageBox boxes(IdNo);
        EXPECT_EQ(Save().second, u"SaveClashes2PDS: "_s + ArgForm(msg::ProjectMarkerLocked));
        ASSERT_EQ(boxes.boxes.size(), 1u);
        EXPECT_TRUE(boxes.boxes.front().text.contains(u"Overwriting lock may cause data loss. Do you wish to continue?"_s));
    }
    LockHolder holder;
    EXPECT_TRUE(IsProjectLocked(cris, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_other"_s);
    {
        // Nobody there to answer: the default keeps the other's marker.
        EXPECT_EQ(Save().second, u"SaveClashes2PDS: "_s + ArgForm(msg::ProjectMarkerLocked));
        EXPECT_TRUE(IsProjectLocked(cris, project));
    }
    ProjectUnlockA(cris, project);

    // An area held by another: taken over on Yes, and released with the project's marker at the end.
    IntAreaLock(cris, project, u"FX_other"_s);
    {
        fxtest::RecordingMessageBox boxes(IdYes);
        EXPECT_EQ(Save().first, NoChangesFoundNumber);
        ASSERT_EQ(boxes.boxes.size(), 1u);
        EXPECT_TRUE(boxes.boxes.front().text.startsWith(u"Some of area marker files are locked by 'FX_other' since "_s))
            << boxes.boxes.front().text.toStdString();
    }
    ExpectMarkersReleasedAndNothingLeft();

    // A user who may not unlock markers is refused at once, told who holds the project since when.
    ProjectLockA(cris, project, u"FX_other"_s);
    ASSERT_TRUE(IsProjectLocked(cris, project, &holder));
    fxtest::GrantOnly(layout->ControlFile(), {PermissionSaveChangesNo, PermissionChangeStatusNo});
    PrivilegeMyPermissionInit();
    {
        fxtest::RecordingMessageBox boxes(IdYes);
        EXPECT_EQ(Save().second, u"SaveClashes2PDS: "_s + ArgForm(msg::ProjectMarkerLockedBy, {u"FX_other"_s,
                                                                                              QLocale().toString(holder.date, QLocale::ShortFormat)}));
        EXPECT_TRUE(boxes.boxes.empty());
    }
    EXPECT_TRUE(IsProjectLocked(cris, project));
    ProjectUnlockA(cris, project);

    // A project that can't be reached is refused before any marker is touched.
    ClashStore().SchemaAvailable = false;
    ProjectLockA(cris, project, u"FX_other"_s);
    EXPECT_EQ(Save().second, u"SaveClashes2PDS: "_s + ArgForm(msg::WriteBackSchemaNotExists));
    EXPECT_TRUE(IsProjectLocked(cris, project, &holder));
    EXPECT_EQ(holder.owner, u"FX_other"_s);
}

TEST_P(WriteBack, a_write_back_that_fails_leaves_the_project_as_it_was_releases_the_markers_and_keeps_its_backups)
{
    Open(false);
    const ProjectClashes before = Read();
    const QList<qint64> unreviewed = before.Unreviewed();
    ASSERT_GE(unreviewed.size(), 3);
    const QList<qint64> reviewed = before.Pick([&](qint64 id) { return !before.ReviewsOf(id).isEmpty(); });
    ASSERT_FALSE(reviewed.isEmpty());
    for (const qint64 id : unreviewed.mid(0, 3))
        Change(id, ClashActionApproveReal, u"approved"_s);
    Change(reviewed.first(), ClashActionApproveFalse, u"not real"_s);

    if (m_kind != u"ris"_s) {
        // The project refuses the second of the new review rows, after the clash rows and the
        // changed review rows went in: the transaction takes all of them back.
        const qint64 refused = before.HighestReview() + 2;
        cris.DBWrite(Schema(), m_kind == u"sqlite"_s
                                   ? u"CREATE TRIGGER fx_refuse BEFORE INSERT ON pdtable_135 WHEN NEW.system_unique_no >= %1 "
                                     "BEGIN SELECT RAISE(ABORT, 'refused by the project'); END"_s.arg(refused)
                                   : u"ALTER TABLE pdtable_135 ADD CONSTRAINT fx_refuse CHECK (system_unique_no < %1) NOT VALID"_s.arg(refused),
                     true);
        const auto failed = Save();
        EXPECT_EQ(failed.first, 1);
        EXPECT_TRUE(failed.second.startsWith(u"SaveClashes2PDS: LoadProjectClashTables: CRIS::DBWriteBatches: "_s
                                             + QString::fromLatin1(msg::DatabaseError)))
            << failed.second.toStdString();
        EXPECT_EQ(Read().clashes.Lines(), before.clashes.Lines());
        EXPECT_EQ(Read().reviews.Lines(), before.reviews.Lines());
        ExpectMarkersReleasedAndNothingLeft();
        EXPECT_EQ(BackupFiles().size(), 3) << "a failed load keeps the backups that name what was there";
        // Logged once, though the server's text may run over several lines.
        EXPECT_EQ(ReadFile2String(GetLogFile()).count(u"SaveClashes2PDS: LoadProjectClashTables: CRIS::DBWriteBatches: "_s), 1);
        cris.DBWrite(Schema(), m_kind == u"sqlite"_s ? u"DROP TRIGGER fx_refuse"_s : u"ALTER TABLE pdtable_135 DROP CONSTRAINT fx_refuse"_s,
                     true);
    }

    if (m_kind == u"sqlite"_s) {
        // The project echoes each new review row: its count after the load is not the merge's,
        // and the text names the backup to restore from.
        cris.DBWrite(Schema(), u"CREATE TRIGGER fx_echo AFTER INSERT ON pdtable_135 WHEN NEW.system_unique_no > 0 BEGIN "
                               "INSERT INTO pdtable_135 VALUES (-NEW.system_unique_no, NEW.unique_clash_id, 0, 0, 0, 1, NULL, 1); END"_s,
                     true);
        const qint64 merged = before.reviews.rows.size() + 3;
        const auto failed = Save();
        const QStringList dumps = BackupFiles().filter(u"_clashes_backup.dmp"_s);
        ASSERT_FALSE(dumps.isEmpty());
        EXPECT_EQ(failed, (std::pair<qint32, QString>{1, u"SaveClashes2PDS: "_s + ArgForm(msg::LoadRecordsCountCritical,
                                                                                           {u"pdtable_135"_s, QString::number(merged + 3),
                                                                                            QString::number(merged), u"\n"_s,
                                                                                            box.Temp() + u"FendrixBackup/"_s + dumps.last()})}));
        EXPECT_EQ(Read().reviews.rows.size(), merged + 3) << "left as loaded, for a person to restore";
        ExpectMarkersReleasedAndNothingLeft();
        cris.DBWrite(Schema(), u"DROP TRIGGER fx_echo"_s, true);
    }

    // The project's clash list was emptied meanwhile: the merge can't match its count, and
    // nothing is loaded.
    const ProjectClashes found = Read();
    cris.DBWrite(Schema(), u"DELETE FROM pdtable_132"_s, true);
    const QStringList backups = BackupFiles();
    const auto counted = Save();
    EXPECT_EQ(counted, (std::pair<qint32, QString>{1, u"SaveClashes2PDS: "_s + ArgForm(msg::IncorrectRecordsCount,
                                                                                        {u"pdtable_132"_s, u"0"_s, u"0"_s})}));
    EXPECT_EQ(Read().reviews.Lines(), found.reviews.Lines());
    EXPECT_EQ(Read().clashes.rows.size(), 0);
    ExpectMarkersReleasedAndNothingLeft();
    EXPECT_EQ(BackupFiles().size(), backups.size() + 1) << "the backup of the project as found stays";
}

INSTANTIATE_TEST_SUITE_P(Kinds, WriteBack, testing::Values("sqlite", "ris", "postgres"));
