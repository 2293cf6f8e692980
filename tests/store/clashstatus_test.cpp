// Status and description changes on the working table of clashes.

#include "frame/settings.h"
#include "frame/translation.h"
#include "pds/localdb.h"
#include "store/clashstatus.h"
#include "store/description.h"

#include "support/failures.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

#include <QDateTime>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

const QString OldDate = u"2000-01-01 00:00:00"_s;

struct Row
{
    int id;
    const char *status;
    const char *action;
    QVariant comment;
};

// A `clashes` table with the columns a status change touches, every clash reviewed long ago.
class ClashesTable
{
public:
    ClashesTable(const fxtest::Sandbox &box, const QList<Row> &rows)
        : m_db(box.Temp() + u"store.db"_s, SqliteDb::OpenMode::ReadWriteCreate)
    {
        m_db.Execute(u"CREATE TABLE [clashes] ([clash_id] INT, [type] VARCHAR(255), [status] VARCHAR(255), "
                     "[action] VARCHAR(255), [review_comment] VARCHAR(255), [recent_review_date] DATETIME);"_s);
        for (const Row &row : rows) {
            const QString comment = row.comment.isNull() ? u"NULL"_s : DBQuote(row.comment.toString());
            m_db.Execute(u"INSERT INTO [clashes] VALUES (%1, 'Hard', '%2', '%3', %4, '%5');"_s.arg(row.id)
                             .arg(QString::fromUtf8(row.status), QString::fromUtf8(row.action), comment, OldDate));
        }
    }

    SqliteDb &Db() { return m_db; }

    QString Field(int id, const QString &column)
    {
        // As text: the store keeps dates as text, which a date column would turn into dates.
        const Recordset rs = MDBRead(m_db, u"SELECT CAST([%1] AS TEXT) FROM [clashes] WHERE clash_id = %2;"_s.arg(column).arg(id));
        return rs.RecordCount() == 1 ? rs.Value(0, 0).toString() : u"<missing>"_s;
    }
    bool IsNull(int id, const QString &column)
    {
        return MDBRead(m_db, u"SELECT [%1] FROM [clashes] WHERE clash_id = %2;"_s.arg(column).arg(id)).Value(0, 0).isNull();
    }
    bool Stamped(int id) { return Field(id, u"recent_review_date"_s) != OldDate; }

private:
    SqliteDb m_db;
};

QString Text(const QString &failure)
{
    return FillMessageArgs(failure);
}

} // namespace

TEST(ClashStatus, an_approval_touches_only_clashes_not_yet_in_that_state_and_stamps_each)
{
    fxtest::Sandbox box;
    ClashesTable t(box, {{1, "Unapproved", "Unapprove Clash", QVariant()},
                         {2, "Approved", "Approve Real Clash", u"old"_s},
                         {3, "Approved", "approve real clash", u""_s},
                         {4, "Approved", "Approve False Clash", u"was false"_s},
                         {5, "Unapproved", "Unapprove Clash", u"outside"_s}});
    const QString before = QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    qint64 count = -1;
    SetClashStatusA(t.Db(), u"clash_id <= 4"_s, u"  it's real  "_s, ClashActionApproveReal, DescriptionModeOverwrite,
                    count);
    EXPECT_EQ(count, 2);
    // Clash 1 from unapproved, clash 4 from false to real; the comparison ignores case.
    for (int id : {1, 4}) {
        EXPECT_EQ(t.Field(id, u"status"_s), u"Approved"_s);
        EXPECT_EQ(t.Field(id, u"action"_s), u"Approve Real Clash"_s);
        EXPECT_EQ(t.Field(id, u"review_comment"_s), u"it's real"_s);
        EXPECT_GE(t.Field(id, u"recent_review_date"_s), before);
    }
    for (int id : {2, 3, 5})
        EXPECT_FALSE(t.Stamped(id)) << id;
    EXPECT_EQ(t.Field(2, u"review_comment"_s), u"old"_s);
    EXPECT_EQ(t.Field(5, u"status"_s), u"Unapproved"_s);

    SetClashStatusA(t.Db(), u"clash_id <= 4"_s, u"again"_s, ClashActionApproveReal, DescriptionModeOverwrite, count);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), u"it's real"_s);

    SetClashStatusA(t.Db(), u"clash_id IN (1, 5)"_s, u"no"_s, ClashActionUnapprove, DescriptionModeLeave, count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(t.Field(1, u"status"_s), u"Unapproved"_s);
    EXPECT_EQ(t.Field(1, u"action"_s), u"Unapprove Clash"_s);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), u"it's real"_s);

    SetClashStatusA(t.Db(), u"clash_id = 5"_s, u"false one"_s, ClashActionApproveFalse, DescriptionModeOverwrite, count);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(t.Field(5, u"status"_s), u"Approved"_s);
    EXPECT_EQ(t.Field(5, u"action"_s), u"Approve False Clash"_s);
}

TEST(ClashStatus, description_modes_leave_overwrite_or_fill_only_empty_ones_and_always_stamp)
{
    fxtest::Sandbox box;
    ClashesTable t(box, {{1, "Unapproved", "Unapprove Clash", QVariant()},
                         {2, "Unapproved", "Unapprove Clash", u""_s},
                         {3, "Unapproved", "Unapprove Clash", u"kept"_s},
                         {4, "Approved", "Approve Real Clash", u"real"_s}});
    qint64 count = 0;
    // Mode 2 skips a clash with a description as a whole, its status included.
    SetClashStatusA(t.Db(), u"clash_id > 0"_s, u"O'Brien's"_s, ClashActionApproveFalse, DescriptionModeOnlyEmpty, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), u"O'Brien's"_s);
    EXPECT_EQ(t.Field(2, u"review_comment"_s), u"O'Brien's"_s);
    EXPECT_EQ(t.Field(2, u"action"_s), u"Approve False Clash"_s);
    EXPECT_EQ(t.Field(3, u"status"_s), u"Unapproved"_s);
    EXPECT_FALSE(t.Stamped(3));

    // Action 0 and mode 0 changes nothing but the stamp, on every clash of the condition.
    SetClashStatusA(t.Db(), u"clash_id IN (3, 4)"_s, u"ignored"_s, ClashActionDescription, DescriptionModeLeave, count);
    EXPECT_EQ(count, 2);
    EXPECT_TRUE(t.Stamped(3));
    EXPECT_EQ(t.Field(3, u"review_comment"_s), u"kept"_s);
    EXPECT_EQ(t.Field(4, u"action"_s), u"Approve Real Clash"_s);

    // An empty (or blank) description written over becomes NULL.
    SetClashStatusA(t.Db(), u"clash_id = 4"_s, u"   "_s, ClashActionDescription, DescriptionModeOverwrite, count);
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(t.IsNull(4, u"review_comment"_s));
    EXPECT_EQ(t.Field(4, u"status"_s), u"Approved"_s);

    // A condition with quotes of its own reaches the statement as the caller wrote it.
    SetClashStatusA(t.Db(), u"review_comment = 'O''Brien''s'"_s, u"x"_s, ClashActionDescription,
                    DescriptionModeOverwrite, count);
    EXPECT_EQ(count, 2);
}

TEST(ClashStatus, the_description_limit_counts_the_trimmed_text_and_stops_before_any_row)
{
    fxtest::Sandbox box;
    ClashesTable t(box, {{1, "Unapproved", "Unapprove Clash", QVariant()}});
    int sizeChecks = 0;
    ClashStatusHooks hooks;
    hooks.checkDatabaseSize = [&] { ++sizeChecks; };
    qint64 count = 0;
    const QString hundred(100, u'a');
    SetClashStatusA(t.Db(), u"clash_id = 1"_s, u"  "_s + hundred + u"    "_s, ClashActionApproveReal,
                    DescriptionModeOverwrite, count, hooks);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), hundred);
    EXPECT_EQ(sizeChecks, 1);

    const QString tooLong = hundred + u"b"_s;
    count = 7;
    EXPECT_EQ(Text(fxtest::FailureText([&] {
                  SetClashStatusA(t.Db(), u"clash_id = 1"_s, tooLong, ClashActionUnapprove, DescriptionModeOverwrite,
                                  count, hooks);
              })),
              u"SetClashStatusA: review_comment: '"_s + tooLong + u"' is too long. (Max 100 character)"_s);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(sizeChecks, 1);
    EXPECT_EQ(t.Field(1, u"status"_s), u"Approved"_s);
}

TEST(ClashStatus, the_entry_follows_the_description_settings_the_dialog_and_reports_changes)
{
    fxtest::Sandbox box;
    SetUserConfigFile(box.AppData() + u"reviewer.ini"_s);
    ClashesTable t(box, {{1, "Unapproved", "Unapprove Clash", u"old"_s},
                         {2, "Unapproved", "Unapprove Clash", QVariant()}});
    QList<qint16> asked;
    bool answer = false;
    int changes = 0;
    ClashStatusHooks hooks;
    hooks.askDescription = [&](qint16 action) {
        asked << action;
        return answer;
    };
    hooks.clashesChanged = [&] { ++changes; };

    // Cancelled: nothing changes, the count stays.
    qint64 count = 42;
    SetClashStatus(t.Db(), u"clash_id > 0"_s, ClashActionApproveReal, count, true, true, hooks);
    EXPECT_EQ(asked, QList<qint16>{ClashActionApproveReal});
    EXPECT_EQ(count, 42);
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(t.Stamped(1));

    // The defaults: the dialog is asked, descriptions are overwritten with the user behind.
    answer = true;
    SetClashStatus(t.Db(), u"clash_id = 1"_s, ClashActionApproveReal, count, true, true, hooks);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), u"Approved by Fendrix: "_s + GetLogonUserName());

    // No dialog for a status action when switched off, still for a description alone; a
    // change that may not touch descriptions leaves them.
    asked.clear();
    SetOptionFlag(option::ShowDescrDialog, false);
    SetOptionFlag(option::ChangeClashDescr, false);
    SetOptionFlag(option::AddUserID, false);
    SetClashStatus(t.Db(), u"clash_id > 0"_s, ClashActionUnapprove, count, true, false, hooks);
    EXPECT_TRUE(asked.isEmpty());
    EXPECT_EQ(count, 1);
    EXPECT_EQ(t.Field(1, u"status"_s), u"Unapproved"_s);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), u"Approved by Fendrix: "_s + GetLogonUserName());

    // Not overwriting: only the clash without a description gets one.
    SetOptionFlag(option::ChangeClashDescr, true);
    SetOptionFlag(option::OverwriteClashDescr, false);
    SetOption(option::Descr, u"seen"_s);
    SetClashStatus(t.Db(), u"clash_id > 0"_s, ClashActionDescription, count, true, false, hooks);
    EXPECT_EQ(asked, QList<qint16>{ClashActionDescription});
    EXPECT_EQ(count, 1);
    EXPECT_EQ(t.Field(2, u"review_comment"_s), u"seen"_s);
    EXPECT_EQ(t.Field(1, u"review_comment"_s), u"Approved by Fendrix: "_s + GetLogonUserName());
    EXPECT_EQ(changes, 3);

    // Nothing left to change: complaining raises, not complaining does not report a change.
    SetClashStatus(t.Db(), u"clash_id > 0"_s, ClashActionUnapprove, count, false, false, hooks);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(Text(fxtest::FailureText(
                  [&] { SetClashStatus(t.Db(), u"clash_id > 0"_s, ClashActionUnapprove, count, false, true, hooks); })),
              u"SetClashStatus: No clashes updated"_s);
}
