#include "pds/jetfunctions.h"

#include "frame/failure.h"
#include "pds/jetformat.h"
#include "pds/messages.h"

#include <QRegularExpression>

#include <sqlite3.h>

#include <cmath>
#include <limits>
#include <new>

namespace fx {

namespace {

// A Jet run-time failure inside a function; it fails the statement with its text.
struct JetFault
{
    const char *text;
};

QVariant ValueOf(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER: return QVariant(qint64(sqlite3_value_int64(value)));
    case SQLITE_FLOAT: return QVariant(sqlite3_value_double(value));
    case SQLITE_TEXT:
        return QVariant(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_value_text(value)),
                                          sqlite3_value_bytes(value)));
    case SQLITE_BLOB:
        return QVariant(QByteArray(static_cast<const char *>(sqlite3_value_blob(value)), sqlite3_value_bytes(value)));
    default: return QVariant();
    }
}

void SetResult(sqlite3_context *context, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType: sqlite3_result_null(context); break;
    case QMetaType::LongLong: sqlite3_result_int64(context, value.toLongLong()); break;
    case QMetaType::Double: sqlite3_result_double(context, value.toDouble()); break;
    default: {
        const QByteArray text = value.toString().toUtf8();
        if (text.isEmpty()) {
            sqlite3_result_text(context, "", 0, SQLITE_STATIC); // a null pointer would mean NULL
            break;
        }
        sqlite3_result_text64(context, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
        break;
    }
    }
}

bool IsNumber(const QVariant &value)
{
    return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Double;
}

// A value as text, the way Jet converts it for its string functions and "&".
QString Text(const QVariant &value)
{
    if (value.typeId() == QMetaType::Double)
        return JetNumberText(value.toDouble());
    if (value.typeId() == QMetaType::QByteArray)
        return QString::fromUtf8(value.toByteArray());
    return value.toString();
}

double Number(const QVariant &value)
{
    if (!value.isValid())
        throw JetFault{msg::JetInvalidUseOfNull};
    if (IsNumber(value))
        return value.toDouble();
    if (const std::optional<double> number = JetNumberOfText(Text(value)))
        return *number;
    throw JetFault{msg::JetTypeMismatch};
}

// A number made whole as CLng makes it: halves to the even neighbour, within the range given.
qint64 Whole(const QVariant &value, qint64 lowest, qint64 highest)
{
    if (value.typeId() == QMetaType::LongLong) {
        const qint64 whole = value.toLongLong();
        if (whole < lowest || whole > highest)
            throw JetFault{msg::JetOverflow};
        return whole;
    }
    const double rounded = std::nearbyint(Number(value)); // the default rounding mode is to even
    if (!(rounded >= double(lowest) && rounded <= double(highest)))
        throw JetFault{msg::JetOverflow};
    return qint64(rounded);
}

qint64 LongArg(const QVariant &value)
{
    return Whole(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
}

bool IsTrue(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL: return false;
    case SQLITE_INTEGER: return sqlite3_value_int64(value) != 0;
    case SQLITE_FLOAT: return sqlite3_value_double(value) != 0.0;
    case SQLITE_TEXT:
        if (const std::optional<double> number = JetNumberOfText(Text(ValueOf(value))))
            return *number != 0.0;
        throw JetFault{msg::JetTypeMismatch};
    default: throw JetFault{msg::JetTypeMismatch};
    }
}

QString TrimBlanks(const QString &text, bool left, bool right)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (left && begin < end && text.at(begin) == QLatin1Char(' '))
        ++begin;
    while (right && end > begin && text.at(end - 1) == QLatin1Char(' '))
        --end;
    return text.mid(begin, end - begin);
}

QVariant Format(const QVariantList &args) { return JetFormat(args.at(0), args.at(1).isValid() ? Text(args.at(1)) : QString()); }
QVariant LCase(const QVariantList &args) { return args.at(0).isValid() ? QVariant(Text(args.at(0)).toLower()) : QVariant(); }
QVariant UCase(const QVariantList &args) { return args.at(0).isValid() ? QVariant(Text(args.at(0)).toUpper()) : QVariant(); }
QVariant Trim(const QVariantList &args) { return args.at(0).isValid() ? QVariant(TrimBlanks(Text(args.at(0)), true, true)) : QVariant(); }
QVariant LTrim(const QVariantList &args) { return args.at(0).isValid() ? QVariant(TrimBlanks(Text(args.at(0)), true, false)) : QVariant(); }
QVariant RTrim(const QVariantList &args) { return args.at(0).isValid() ? QVariant(TrimBlanks(Text(args.at(0)), false, true)) : QVariant(); }

QVariant Len(const QVariantList &args)
{
    return args.at(0).isValid() ? QVariant(qint64(Text(args.at(0)).size())) : QVariant();
}

QVariant CStr(const QVariantList &args)
{
    if (!args.at(0).isValid())
        throw JetFault{msg::JetInvalidUseOfNull};
    return Text(args.at(0));
}

QVariant CLng(const QVariantList &args) { return LongArg(args.at(0)); }
QVariant CInt(const QVariantList &args) { return Whole(args.at(0), -32768, 32767); }
QVariant CDbl(const QVariantList &args) { return Number(args.at(0)); }

QVariant InStr(const QVariantList &args)
{
    const bool withStart = args.size() >= 3;
    const qint64 start = withStart ? LongArg(args.at(0)) : 1;
    const QVariant &text = args.at(withStart ? 1 : 0);
    const QVariant &find = args.at(withStart ? 2 : 1);
    if (start < 1)
        throw JetFault{msg::JetInvalidArgument};
    const bool binary = args.size() == 4 && args.at(3).isValid() && LongArg(args.at(3)) == 0;
    if (!text.isValid() || !find.isValid())
        return QVariant();
    const QString haystack = Text(text);
    if (start > haystack.size())
        return qint64(0);
    return qint64(haystack.indexOf(Text(find), start - 1, binary ? Qt::CaseSensitive : Qt::CaseInsensitive) + 1);
}

QVariant Mid(const QVariantList &args)
{
    const qint64 start = LongArg(args.at(1));
    const qint64 length = args.size() > 2 ? LongArg(args.at(2)) : -1;
    if (start < 1 || (args.size() > 2 && length < 0))
        throw JetFault{msg::JetInvalidArgument};
    if (!args.at(0).isValid())
        return QVariant();
    const QString text = Text(args.at(0));
    return text.mid(start - 1, length);
}

QVariant LeftOrRight(const QVariantList &args, bool left)
{
    const qint64 length = LongArg(args.at(1));
    if (length < 0)
        throw JetFault{msg::JetInvalidArgument};
    if (!args.at(0).isValid())
        return QVariant();
    const QString text = Text(args.at(0));
    return left ? text.left(length) : text.right(length);
}

QVariant Left(const QVariantList &args) { return LeftOrRight(args, true); }
QVariant Right(const QVariantList &args) { return LeftOrRight(args, false); }

// The number at the start of a text, blanks, tabs and line feeds anywhere skipped: "1 2x" is 12.
QVariant Val(const QVariantList &args)
{
    const QVariant &value = args.at(0);
    if (!value.isValid())
        throw JetFault{msg::JetInvalidUseOfNull};
    if (IsNumber(value))
        return value.toDouble();
    QString text = Text(value);
    text.remove(QRegularExpression(QStringLiteral("[ \\t\\n\\r]")));
    static const QRegularExpression leading(QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eEdD][+-]?\\d+)?"));
    QString number = leading.match(text).captured(0);
    number.replace(QLatin1Char('d'), QLatin1Char('e')).replace(QLatin1Char('D'), QLatin1Char('e'));
    return number.isEmpty() ? 0.0 : JetNumberOfText(number).value_or(0.0);
}

QVariant Str(const QVariantList &args)
{
    if (!args.at(0).isValid())
        return QVariant();
    const double number = Number(args.at(0));
    return (number >= 0 ? QStringLiteral(" ") : QString()) + JetNumberText(number);
}

QVariant JCat(const QVariantList &args)
{
    QString text;
    bool anyValue = false;
    for (const QVariant &arg : args) {
        if (arg.isValid()) {
            anyValue = true;
            text += Text(arg);
        }
    }
    return anyValue ? QVariant(text) : QVariant();
}

QVariant DateValue(const QVariantList &args)
{
    const QVariant &value = args.at(0);
    if (!value.isValid())
        throw JetFault{msg::JetInvalidUseOfNull};
    const QDateTime date = IsNumber(value) ? JetDateFromSerial(value.toDouble()) : JetDateFromText(Text(value));
    if (!date.isValid())
        throw JetFault{msg::JetTypeMismatch};
    return JetDateText(QDateTime(date.date(), QTime(0, 0)));
}

QVariant Now(const QVariantList &) { return JetDateText(QDateTime::currentDateTime()); }
QVariant Date(const QVariantList &) { return JetDateText(QDateTime(QDate::currentDate(), QTime(0, 0))); }

using SqlFunction = void (*)(sqlite3_context *, int, sqlite3_value **);

// Turns a Jet failure inside a function into the statement's failure.
template <SqlFunction Function>
void Guarded(sqlite3_context *context, int argc, sqlite3_value **argv)
{
    try {
        Function(context, argc, argv);
    } catch (const JetFault &fault) {
        sqlite3_result_error(context, fault.text, -1);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

// A function of values; those that hand back an argument untouched (SWITCH, NZ) skip this, so
// the argument's type stays as stored.
template <QVariant (*Function)(const QVariantList &)>
void OnValues(sqlite3_context *context, int argc, sqlite3_value **argv)
{
    QVariantList args;
    args.reserve(argc);
    for (int i = 0; i < argc; ++i)
        args.append(ValueOf(argv[i]));
    SetResult(context, Function(args));
}

void Switch(sqlite3_context *context, int argc, sqlite3_value **argv)
{
    if (argc % 2 != 0)
        throw JetFault{msg::JetWrongArgumentCount};
    for (int i = 0; i < argc; i += 2) {
        if (IsTrue(argv[i])) {
            sqlite3_result_value(context, argv[i + 1]);
            return;
        }
    }
    sqlite3_result_null(context);
}

void IsNull(sqlite3_context *context, int, sqlite3_value **argv)
{
    sqlite3_result_int(context, sqlite3_value_type(argv[0]) == SQLITE_NULL ? -1 : 0);
}

void Nz(sqlite3_context *context, int argc, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) != SQLITE_NULL)
        sqlite3_result_value(context, argv[0]);
    else if (argc > 1)
        sqlite3_result_value(context, argv[1]);
    else
        sqlite3_result_text(context, "", 0, SQLITE_STATIC); // Nz in a statement gives a zero-length text
}

struct Registration
{
    const char *name;
    int argumentCount; // -1: any number
    SqlFunction function;
    bool deterministic = true;
};

const Registration kFunctions[] = {
    {"SWITCH", -1, Guarded<Switch>},
    {"ISNULL", 1, Guarded<IsNull>},
    {"NZ", 1, Guarded<Nz>},
    {"NZ", 2, Guarded<Nz>},
    {"FORMAT", 2, Guarded<OnValues<Format>>},
    {"LCASE", 1, Guarded<OnValues<LCase>>},
    {"UCASE", 1, Guarded<OnValues<UCase>>},
    {"LEN", 1, Guarded<OnValues<Len>>},
    {"TRIM", 1, Guarded<OnValues<Trim>>},
    {"LTRIM", 1, Guarded<OnValues<LTrim>>},
    {"RTRIM", 1, Guarded<OnValues<RTrim>>},
    {"CSTR", 1, Guarded<OnValues<CStr>>},
    {"CLNG", 1, Guarded<OnValues<CLng>>},
    {"CINT", 1, Guarded<OnValues<CInt>>},
    {"CDBL", 1, Guarded<OnValues<CDbl>>},
    {"INSTR", 2, Guarded<OnValues<InStr>>},
    {"INSTR", 3, Guarded<OnValues<InStr>>},
    {"INSTR", 4, Guarded<OnValues<InStr>>},
    {"MID", 2, Guarded<OnValues<Mid>>},
    {"MID", 3, Guarded<OnValues<Mid>>},
    {"LEFT", 2, Guarded<OnValues<Left>>},
    {"RIGHT", 2, Guarded<OnValues<Right>>},
    {"VAL", 1, Guarded<OnValues<Val>>},
    {"STR", 1, Guarded<OnValues<Str>>},
    {"JCAT", -1, Guarded<OnValues<JCat>>},
    {"DATEVALUE", 1, Guarded<OnValues<DateValue>>},
    {"NOW", 0, Guarded<OnValues<Now>>, false},
    {"DATE", 0, Guarded<OnValues<Date>>, false},
};

} // namespace

void RegisterJetFunctions(sqlite3 *db)
{
    for (const Registration &entry : kFunctions) {
        const int flags = SQLITE_UTF8 | (entry.deterministic ? SQLITE_DETERMINISTIC : 0);
        const int rc = sqlite3_create_function_v2(db, entry.name, entry.argumentCount, flags, nullptr, entry.function,
                                                  nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK)
            Raise(msg::DatabaseError, {QString::number(rc), QString::fromUtf8(sqlite3_errmsg(db))});
    }
}

QString JetDateLiteral(const QDateTime &dateTime)
{
    return QLatin1Char('\'') + JetDateText(dateTime) + QLatin1Char('\'');
}

} // namespace fx
