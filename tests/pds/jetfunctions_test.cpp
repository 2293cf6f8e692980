#include "pds/jetformat.h"
#include "pds/jetfunctions.h"
#include "pds/sqlitedb.h"

#include "support/failures.h"

#include <gtest/gtest.h>

using namespace fx;

namespace {

struct Case
{
    const char *expression;
    QVariant expected; // a null QVariant: the result must be NULL
};

class JetFunctions : public ::testing::Test
{
protected:
    QVariant Eval(const QString &expression) { return m_db.Read(QStringLiteral("SELECT ") + expression).Value(0, 0); }

    void ExpectAll(std::initializer_list<Case> cases)
    {
        for (const Case &c : cases) {
            const QVariant result = Eval(QString::fromUtf8(c.expression));
            if (c.expected.isNull()) {
                EXPECT_TRUE(result.isNull()) << c.expression << " gave " << result.toString().toStdString();
                continue;
            }
            EXPECT_EQ(result.typeId(), c.expected.typeId()) << c.expression << " gave " << result.toString().toStdString();
            EXPECT_EQ(result, c.expected) << c.expression << " gave " << result.toString().toStdString();
        }
    }

    SqliteDb m_db{QStringLiteral(":memory:"), SqliteDb::OpenMode::ReadWriteCreate};
};

QVariant T(const char *text) { return QVariant(QString::fromUtf8(text)); }
QVariant I(qint64 number) { return QVariant(number); }
QVariant D(double number) { return QVariant(number); }

} // namespace

TEST_F(JetFunctions, format_rounds_halves_away_from_zero_while_clng_and_cint_round_to_even)
{
    ExpectAll({{"FORMAT(2.5, '0')", T("3")},          {"FORMAT(-2.5, '0')", T("-3")},
               {"FORMAT(0.5, '0')", T("1")},          {"FORMAT(-0.4, '0')", T("-0")},
               {"FORMAT(1.005, '0.00')", T("1.01")},  {"FORMAT(9.96, '0.0')", T("10.0")},
               {"FORMAT(3.14159, '0.0')", T("3.1")},  {"FORMAT(2, '0.00')", T("2.00")},
               {"FORMAT(7, '00')", T("07")},          {"FORMAT(0.25, '#.##')", T(".25")},
               {"FORMAT(1234567.891, '#,##0.00')", T("1,234,567.89")},
               {"FORMAT('2.5', '0')", T("3")},        {"FORMAT('abc', '0')", T("abc")},
               {"CLNG(2.5)", I(2)},   {"CLNG(3.5)", I(4)},   {"CLNG(-2.5)", I(-2)}, {"CLNG('7.5')", I(8)},
               {"CINT(0.5)", I(0)},   {"CINT(1.5)", I(2)},   {"CINT(-32768)", I(-32768)},
               {"CDBL('1.25')", D(1.25)}});
}

TEST_F(JetFunctions, nulls_pass_through_the_text_functions_and_count_as_false_or_empty_elsewhere)
{
    ExpectAll({{"LCASE(NULL)", {}}, {"UCASE(NULL)", {}}, {"LEN(NULL)", {}}, {"TRIM(NULL)", {}}, {"LTRIM(NULL)", {}},
               {"RTRIM(NULL)", {}}, {"MID(NULL, 1)", {}}, {"[LEFT](NULL, 1)", {}}, {"[RIGHT](NULL, 1)", {}},
               {"INSTR(NULL, 'a')", {}}, {"INSTR(1, 'a', NULL)", {}}, {"FORMAT(NULL, '0')", {}}, {"STR(NULL)", {}},
               {"SWITCH(0, 'a', NULL, 'b')", {}}, {"JCAT(NULL, NULL)", {}},
               {"[ISNULL](NULL)", I(-1)}, {"[ISNULL]('')", I(0)}, {"NZ(NULL, 0)", I(0)}, {"NZ(NULL)", T("")},
               {"NZ(5, 0)", I(5)}, {"IIF(NULL, 'a', 'b')", T("b")}, {"JCAT(NULL, 'a', 1, NULL, 2.5)", T("a12.5")},
               {"NULL || 'a'", {}}});
}

TEST_F(JetFunctions, conditions_take_any_nonzero_number_iif_evaluates_one_branch_and_values_keep_their_type)
{
    ExpectAll({{"IIF(-1, 'y', 'n')", T("y")}, {"IIF(2, 'y', 'n')", T("y")}, {"IIF(0.0, 'y', 'n')", T("n")},
               {"IIF(1, 'y', CLNG(NULL))", T("y")}, {"IIF(' 0 ', 'y', 'n')", T("n")}, {"IIF(1 = 2, 'y', 'n')", T("n")},
               {"SWITCH(0, 'a', '2', 'b', 1, 'c')", T("b")}, {"SWITCH(1, 5)", I(5)}, {"IIF(1, 2.5, 'x')", D(2.5)}});
}

TEST_F(JetFunctions, string_functions_count_from_one_and_compare_text_without_case_by_default)
{
    ExpectAll({{"INSTR('abcabc', 'C')", I(3)},      {"INSTR(4, 'abcabc', 'c')", I(6)},
               {"INSTR('abc', 'z')", I(0)},         {"INSTR(1, 'aBc', 'b', 0)", I(0)},
               {"INSTR(9, 'abc', 'a')", I(0)},      {"INSTR(2, 'abc', '')", I(2)},
               {"MID('abcdef', 2, 3)", T("bcd")},   {"MID('abc', 5)", T("")},
               {"[LEFT]('abc', 5)", T("abc")},      {"[RIGHT]('abc', 2)", T("bc")},
               {"TRIM('  a b  ')", T("a b")},       {"LTRIM('  a ')", T("a ")},
               {"RTRIM('  a ')", T("  a")},         {"LEN(TRIM(char(9) || 'a '))", I(2)},
               {"LCASE('ÄB')", T("äb")},            {"UCASE('äb')", T("ÄB")},
               {"LEN(123)", I(3)},                  {"LEN(2.5)", I(3)},
               {"VAL('  1 2.5x')", D(12.5)},        {"VAL('1.5e2')", D(150)},
               {"VAL('abc')", D(0)},                {"STR(5)", T(" 5")},
               {"STR(-5)", T("-5")},                {"CSTR(0.1)", T("0.1")},
               {"CSTR(1e20)", T("1E+20")},          {"CSTR(3.0)", T("3")},
               // SQLite's own forms with other argument counts stay as they were.
               {"trim('xxaxx', 'x')", T("a")},      {"date('2024-01-02 10:00:00')", T("2024-01-02")}});
}

TEST_F(JetFunctions, jet_failures_fail_the_statement_with_jets_text)
{
    const std::pair<const char *, const char *> cases[] = {
        {"CLNG(NULL)", "Invalid use of Null"}, {"CSTR(NULL)", "Invalid use of Null"},
        {"VAL(NULL)", "Invalid use of Null"},  {"DATEVALUE(NULL)", "Invalid use of Null"},
        {"CINT(32767.5)", "Overflow"},         {"CLNG(3000000000)", "Overflow"},
        {"CLNG('abc')", "Type mismatch"},      {"SWITCH('abc', 1)", "Type mismatch"},
        {"DATEVALUE('soon')", "Type mismatch"}, {"MID('abc', 0)", "Invalid procedure call or argument"},
        {"[LEFT]('abc', -1)", "Invalid procedure call or argument"},
        {"SWITCH(1)", "Wrong number of arguments used with function in query expression"}};
    for (const auto &[expression, text] : cases)
        EXPECT_TRUE(fxtest::FailureText([&] { Eval(QString::fromUtf8(expression)); }).contains(QString::fromUtf8(text)))
            << expression;
}

TEST_F(JetFunctions, dates_are_local_text_and_format_reads_text_and_day_numbers)
{
    ExpectAll({{"FORMAT('2024-03-05 07:08:09', 'yyyy-mm-dd hh:nn:ss')", T("2024-03-05 07:08:09")},
               {"FORMAT('2024-03-05 07:08:09', 'hh:mm')", T("07:08")},
               {"FORMAT('2024-03-05', 'dd/mm/yy')", T("05/03/24")},
               {"FORMAT(25569.5, 'yyyy-mm-dd hh:nn:ss')", T("1970-01-01 12:00:00")},
               {"DATEVALUE('2024-03-05 07:08:09')", T("2024-03-05 00:00:00")},
               {"DATEVALUE('3/5/2024')", T("2024-03-05 00:00:00")},
               {"DATE() = DATEVALUE(NOW())", I(1)}});
    const QDateTime now = JetDateFromText(Eval(QStringLiteral("NOW()")).toString());
    ASSERT_TRUE(now.isValid());
    EXPECT_LT(qAbs(now.secsTo(QDateTime::currentDateTime())), 60);
    const QDateTime moment(QDate(2024, 12, 31), QTime(23, 59, 58));
    EXPECT_EQ(JetDateLiteral(moment), QStringLiteral("'2024-12-31 23:59:58'"));
    EXPECT_EQ(JetDateFromText(JetDateText(moment)), moment);
    EXPECT_FALSE(JetDateFromText(QStringLiteral("2024-13-01")).isValid());
}
