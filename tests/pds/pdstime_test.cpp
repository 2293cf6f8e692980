// The date forms: second counts of the project schema and local dates of the store, with the
// reader's time zone.

#include "pds/jetformat.h"
#include "pds/pdstime.h"
#include "pds/sqlitedb.h"

#include "support/sandbox.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <ctime>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

// 3 May 2021, 10:00:00 UTC.
constexpr qint64 kMay2021 = 1620036000;
// 15 January 2021, 23:59:59 UTC: the other season for zones with daylight time.
constexpr qint64 kJanuary2021 = 1610755199;

// The computer's time zone for as long as it lives.
class TimeZoneGuard
{
public:
    ~TimeZoneGuard() { tzset(); }
    void Use(const char *zone)
    {
        m_env.Set("TZ", QString::fromLatin1(zone));
        tzset();
    }

private:
    fxtest::EnvGuard m_env;
};

// The value of one expression evaluated by the local store.
QVariant StoreValue(SqliteDb &db, const QString &expression)
{
    return db.Read(u"SELECT "_s + expression).Value(0, 0);
}

} // namespace

TEST(PdsTime, the_bias_is_the_zone_in_force_now_with_daylight_time)
{
    TimeZoneGuard zone;
    zone.Use("Asia/Kolkata");
    EXPECT_EQ(GetTimeZoneBias(), 330);

    zone.Use("Etc/GMT+5"); // POSIX sign: five hours west
    EXPECT_EQ(GetTimeZoneBias(), -300);

    zone.Use("America/St_Johns");
    const QTimeZone stJohns("America/St_Johns");
    const bool daylight = stJohns.isDaylightTime(QDateTime::currentDateTimeUtc());
    EXPECT_EQ(GetTimeZoneBias(), daylight ? -150 : -210);
    EXPECT_EQ(GetTimeZoneBias(), QDateTime::currentDateTime().offsetFromUtc() / 60);
}

TEST(PdsTime, a_count_becomes_the_readers_wall_clock_and_goes_back_to_the_second)
{
    // A count below 1 is no date.
    EXPECT_TRUE(GetTimeStamp2Date(0, -90).isNull());
    EXPECT_TRUE(GetTimeStamp2Date(-5, 330).isNull());
    EXPECT_FALSE(GetTimeStamp2Date(1, 0).isNull());

    const QDateTime west = GetTimeStamp2Date(kMay2021, -90);
    EXPECT_EQ(west.date(), QDate(2021, 5, 3));
    EXPECT_EQ(west.time(), QTime(8, 30, 0));
    EXPECT_EQ(GetDate2TimeStamp(west, -90), kMay2021);

    const QDateTime east = GetTimeStamp2Date(kJanuary2021, 330);
    EXPECT_EQ(JetDateText(east), u"2021-01-16 05:29:59"_s);
    EXPECT_EQ(GetDate2TimeStamp(east, 330), kJanuary2021);

    // A date of the store, read back from its text, counts by its wall clock alone.
    EXPECT_EQ(GetDate2TimeStamp(JetDateFromText(u"2021-05-03 08:30:00"_s), -90), kMay2021);
    EXPECT_EQ(GetDate2TimeStamp(QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC), 60), -3600);
}

TEST(PdsTime, a_date_of_the_other_season_round_trips_with_the_bias_of_the_moment)
{
    TimeZoneGuard zone;
    zone.Use("America/St_Johns");
    for (const qint64 seconds : {kJanuary2021, kMay2021, qint64(1), qint64(2147483647)}) {
        const QDateTime date = GetTimeStamp2Date(seconds);
        EXPECT_EQ(date.offsetFromUtc(), GetTimeZoneBias() * 60) << seconds;
        EXPECT_EQ(GetDate2TimeStamp(date), seconds) << seconds;
        // Through the store's text as well.
        EXPECT_EQ(GetDate2TimeStamp(JetDateFromText(JetDateText(date))), seconds) << seconds;
    }
}

TEST(PdsTime, the_sql_fragments_carry_hours_and_minutes_of_the_bias_with_their_signs)
{
    TimeZoneGuard zone;
    EXPECT_EQ(GetTimeStamp2DateSqlForm(-90), u" - (1 * 3600 + 30 * 60)"_s);
    EXPECT_EQ(GetDate2TimeStampSqlForm(-90), u" + (1 * 3600 + 30 * 60)"_s);
    EXPECT_EQ(GetTimeStamp2DateSqlForm(330), u" + (5 * 3600 + 30 * 60)"_s);
    EXPECT_EQ(GetDate2TimeStampSqlForm(330), u" - (5 * 3600 + 30 * 60)"_s);
    EXPECT_EQ(GetTimeStamp2DateSqlForm(0), u" + (0 * 3600 + 0 * 60)"_s);
    EXPECT_EQ(GetDate2TimeStampSqlForm(0), u" - (0 * 3600 + 0 * 60)"_s);

    // A date of the store is its text, in quotes.
    EXPECT_EQ(GetDateSqlForm(QDateTime(QDate(2021, 12, 3), QTime(15, 4, 5))), u"'2021-12-03 15:04:05'"_s);

    zone.Use("Asia/Kolkata");
    EXPECT_EQ(GetTimeStamp2DateSqlForm(), GetTimeStamp2DateSqlForm(330));
    EXPECT_EQ(GetDate2TimeStampSqlForm(), GetDate2TimeStampSqlForm(330));
}

TEST(PdsTime, the_store_turns_counts_into_the_same_dates_and_back_to_the_second)
{
    fxtest::Sandbox box;
    SqliteDb db(box.Root() + u"store.db"_s, SqliteDb::OpenMode::ReadWriteCreate);
    db.Execute(u"CREATE TABLE clash (id INTEGER, review_date INTEGER)"_s);
    const QList<qint64> counts{kMay2021, kJanuary2021, 1, 86399, 2147483647, 0};
    for (qsizetype i = 0; i < counts.size(); ++i)
        db.Execute(u"INSERT INTO clash VALUES (%1, %2)"_s.arg(i).arg(counts.at(i)));

    for (const int bias : {-90, 330, 0, -210}) {
        db.Execute(u"ALTER TABLE clash ADD COLUMN local_date TEXT"_s);
        db.Execute(u"UPDATE clash SET local_date = IIF(review_date <> 0, %1, NULL)"_s.arg(
            GetTimeStamp2DateSql(u"review_date"_s, bias)));
        db.Execute(u"ALTER TABLE clash ADD COLUMN stamp INTEGER"_s);
        db.Execute(u"UPDATE clash SET stamp = %1 WHERE NOT local_date IS NULL"_s.arg(GetDate2TimeStampSql(u"local_date"_s, bias)));
        const Recordset rows = db.Read(u"SELECT review_date, local_date, stamp FROM clash ORDER BY id"_s);
        for (qsizetype i = 0; i < rows.RecordCount(); ++i) {
            const qint64 count = rows.Value(i, 0).toLongLong();
            if (count == 0) {
                EXPECT_TRUE(rows.Value(i, 1).isNull());
                continue;
            }
            EXPECT_EQ(rows.Value(i, 1).toString(), JetDateText(GetTimeStamp2Date(count, bias))) << count << " " << bias;
            EXPECT_EQ(rows.Value(i, 2).toLongLong(), count) << bias;
        }
        db.Execute(u"ALTER TABLE clash DROP COLUMN local_date"_s);
        db.Execute(u"ALTER TABLE clash DROP COLUMN stamp"_s);
    }

    // The fragments alone are integer arithmetic on the seconds.
    EXPECT_EQ(StoreValue(db, u"1000"_s + GetTimeStamp2DateSqlForm(-90)).toLongLong(), 1000 - 5400);
    EXPECT_EQ(StoreValue(db, u"1000"_s + GetDate2TimeStampSqlForm(-90)).toLongLong(), 1000 + 5400);
}
