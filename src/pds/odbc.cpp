#include "pds/odbc.h"

#include "frame/failure.h"
#include "pds/adotypes.h"
#include "pds/messages.h"

#include <QDateTime>
#include <QRegularExpression>

#include <limits>
#include <vector>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace fx {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "ODBC wide characters must be UTF-16");

namespace {

SQLWCHAR *WideMutable(QString &text)
{
    return reinterpret_cast<SQLWCHAR *>(text.data());
}

QString FromWide(const SQLWCHAR *text, qsizetype length)
{
    return QString(reinterpret_cast<const QChar *>(text), length);
}

/// The diagnostic records of a handle as "[state] message" joined by blanks; the first state
/// goes to `state`.
QString Diagnostics(SQLSMALLINT handleType, SQLHANDLE handle, QString *state)
{
    QStringList messages;
    for (SQLSMALLINT record = 1;; ++record) {
        SQLWCHAR sqlState[6] = {};
        SQLINTEGER native = 0;
        SQLWCHAR text[1024] = {};
        SQLSMALLINT length = 0;
        const SQLRETURN rc =
            SQLGetDiagRecW(handleType, handle, record, sqlState, &native, text, SQLSMALLINT(std::size(text)), &length);
        if (!SQL_SUCCEEDED(rc))
            break;
        const QString code = FromWide(sqlState, 5);
        if (state && state->isEmpty())
            *state = code;
        messages << QLatin1Char('[') + code + QStringLiteral("] ")
                        + FromWide(text, qMin<qsizetype>(length, qsizetype(std::size(text)) - 1));
    }
    return messages.join(QLatin1Char(' '));
}

[[noreturn]] void RaiseDiagnostics(SQLSMALLINT handleType, SQLHANDLE handle, const char *call, const QString &sql,
                                   const QString &connectionString = QString())
{
    QString state;
    QString text = Diagnostics(handleType, handle, &state);
    if (text.isEmpty())
        text = QString::fromUtf8(call) + QStringLiteral(" failed");
    if (!sql.isEmpty())
        text += QStringLiteral(" (SQL: ") + sql + QLatin1Char(')');
    if (!connectionString.isEmpty())
        text = BlankPassword(text, connectionString);
    Raise(msg::DatabaseError, {state.isEmpty() ? QStringLiteral("HY000") : state, text});
}

/// The value of the first key of a connection string among `keys`, braces removed.
QString ConnectionStringValue(const QString &connectionString, const QStringList &keys)
{
    static const QRegularExpression pair(QStringLiteral("(?:^|;)\\s*([^=;]+?)\\s*=\\s*(\\{(?:[^}]|\\}\\})*?\\}(?!\\})|[^;]*)"));
    auto it = pair.globalMatch(connectionString);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        if (!keys.contains(match.captured(1), Qt::CaseInsensitive))
            continue;
        QString value = match.captured(2);
        if (value.startsWith(QLatin1Char('{')) && value.endsWith(QLatin1Char('}')))
            value = value.mid(1, value.size() - 2).replace(QStringLiteral("}}"), QStringLiteral("}"));
        return value;
    }
    return QString();
}

// A value bound to a marker, with the storage the driver reads at SQLExecute.
struct BoundValue
{
    SQLINTEGER integer = 0;
    SQLBIGINT bigInteger = 0;
    double real = 0;
    QString text;
    SQLLEN indicator = 0;
};

bool IsIntegerValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
    case QMetaType::Short: case QMetaType::UShort: case QMetaType::Long: case QMetaType::ULong: case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

bool IsTextType(int sqlType)
{
    switch (sqlType) {
    case SQL_CHAR: case SQL_VARCHAR: case SQL_LONGVARCHAR: case SQL_WCHAR: case SQL_WVARCHAR:
    case SQL_WLONGVARCHAR: case SQL_GUID:
        return true;
    default:
        return false;
    }
}

} // namespace

QString BlankPassword(const QString &text, const QString &connectionString)
{
    static const QRegularExpression keyed(QStringLiteral("((?:pwd|password)\\s*=\\s*)(\\{(?:[^}]|\\}\\})*?\\}(?!\\})|[^;\\s]*)"),
                                          QRegularExpression::CaseInsensitiveOption);
    QString result = text;
    result.replace(keyed, QStringLiteral("\\1"));
    const QString password = ConnectionStringValue(connectionString, {QStringLiteral("Pwd"), QStringLiteral("Password")});
    if (password.size() > 3)
        result.replace(password, QStringLiteral("*****"));
    return result;
}

QString OdbcConnectionValue(const QString &value)
{
    static const QRegularExpression special(QStringLiteral("[;{}]|^\\s|\\s$"));
    if (!value.contains(special))
        return value;
    QString escaped = value;
    escaped.replace(QLatin1Char('}'), QStringLiteral("}}"));
    return QLatin1Char('{') + escaped + QLatin1Char('}');
}

int AdoTypeOfOdbcType(int sqlType, bool unsignedType)
{
    switch (sqlType) {
    case SQL_CHAR: return adotype::Char;
    case SQL_VARCHAR: return adotype::VarChar;
    case SQL_LONGVARCHAR: return adotype::LongVarChar;
    case SQL_WCHAR: return adotype::WChar;
    case SQL_WVARCHAR: return adotype::VarWChar;
    case SQL_WLONGVARCHAR: return adotype::LongVarWChar;
    case SQL_DECIMAL: case SQL_NUMERIC: return adotype::Numeric;
    case SQL_SMALLINT: return unsignedType ? adotype::UnsignedSmallInt : adotype::SmallInt;
    case SQL_INTEGER: return unsignedType ? adotype::UnsignedInt : adotype::Integer;
    case SQL_BIGINT: return unsignedType ? adotype::UnsignedBigInt : adotype::BigInt;
    case SQL_TINYINT: return unsignedType ? adotype::UnsignedTinyInt : adotype::TinyInt;
    case SQL_BIT: return adotype::Boolean;
    case SQL_REAL: return adotype::Single;
    case SQL_FLOAT: case SQL_DOUBLE: return adotype::Double;
    case SQL_TYPE_DATE: case SQL_DATE: return adotype::DBDate;
    case SQL_TYPE_TIME: case SQL_TIME: return adotype::DBTime;
    case SQL_TYPE_TIMESTAMP: case SQL_TIMESTAMP: return adotype::DBTimeStamp;
    case SQL_GUID: return adotype::Guid;
    case SQL_BINARY: return adotype::Binary;
    case SQL_VARBINARY: return adotype::VarBinary;
    case SQL_LONGVARBINARY: return adotype::LongVarBinary;
    default: return adotype::VarWChar;
    }
}

// --- OdbcConnection

OdbcConnection::OdbcConnection(const QString &connectionString)
{
    SQLHENV env = SQL_NULL_HENV;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env)))
        Raise(msg::DatabaseError, {QStringLiteral("HY001"), QStringLiteral("SQLAllocHandle failed")});
    m_env = env;
    SQLSetEnvAttr(env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLHDBC dbc = SQL_NULL_HDBC;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, env, &dbc))) {
        SQLFreeHandle(SQL_HANDLE_ENV, env);
        RaiseDiagnostics(SQL_HANDLE_ENV, env, "SQLAllocHandle", QString());
    }
    m_dbc = dbc;
    SQLSetConnectAttr(dbc, SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(SQLULEN(30)), 0);

    QString input = connectionString;
    SQLWCHAR output[1024];
    SQLSMALLINT outputLength = 0;
    const SQLRETURN rc = SQLDriverConnectW(dbc, nullptr, WideMutable(input), SQLSMALLINT(input.size()), output,
                                           SQLSMALLINT(std::size(output)), &outputLength, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(rc)) {
        // The destructor does not run for a constructor that raises: free the handles here.
        QString state;
        QString text = Diagnostics(SQL_HANDLE_DBC, dbc, &state);
        SQLFreeHandle(SQL_HANDLE_DBC, dbc);
        SQLFreeHandle(SQL_HANDLE_ENV, env);
        if (text.isEmpty())
            text = QStringLiteral("SQLDriverConnect failed");
        Raise(msg::DatabaseError, {state.isEmpty() ? QStringLiteral("HY000") : state,
                                   BlankPassword(text, connectionString)});
    }
    m_connected = true;

    SQLWCHAR escape[8] = {};
    SQLSMALLINT escapeLength = 0;
    if (SQL_SUCCEEDED(SQLGetInfoW(dbc, SQL_SEARCH_PATTERN_ESCAPE, escape, sizeof(escape), &escapeLength)))
        m_patternEscape = FromWide(escape, escapeLength / qsizetype(sizeof(SQLWCHAR)));
}

OdbcConnection::~OdbcConnection()
{
    if (m_connected)
        SQLDisconnect(m_dbc);
    if (m_dbc)
        SQLFreeHandle(SQL_HANDLE_DBC, m_dbc);
    if (m_env)
        SQLFreeHandle(SQL_HANDLE_ENV, m_env);
}

QString OdbcConnection::EscapePattern(const QString &text) const
{
    if (m_patternEscape.isEmpty())
        return text;
    QString escaped;
    escaped.reserve(text.size() + 4);
    for (const QChar c : text) {
        if (c == QLatin1Char('_') || c == QLatin1Char('%') || QString(c) == m_patternEscape)
            escaped += m_patternEscape;
        escaped += c;
    }
    return escaped;
}

void OdbcConnection::Execute(const QString &sql)
{
    OdbcStatement statement(*this);
    statement.Execute(sql);
}

Recordset OdbcConnection::Read(const QString &sql)
{
    OdbcStatement statement(*this);
    statement.Execute(sql);
    Recordset result(statement.Fields());
    QList<QVariantList> rows;
    while (statement.Fetch(4096, rows)) {
        for (QVariantList &row : rows)
            result.AppendRow(std::move(row));
        rows.clear();
    }
    for (QVariantList &row : rows)
        result.AppendRow(std::move(row));
    return result;
}

void OdbcConnection::ReadInSlices(const QString &sql, int sliceRows,
                                  const std::function<void(const QList<RecordsetField> &)> &onFields,
                                  const std::function<void(const QList<QVariantList> &)> &onSlice)
{
    OdbcStatement statement(*this);
    statement.Execute(sql);
    onFields(statement.Fields());
    QList<QVariantList> rows;
    bool more = true;
    while (more) {
        rows.clear();
        more = statement.Fetch(qMax(1, sliceRows), rows);
        if (!rows.isEmpty())
            onSlice(rows);
    }
}

QStringList OdbcConnection::Tables(const QString &schema)
{
    OdbcStatement statement(*this);
    statement.ExecuteTables(schema);
    QStringList names;
    QList<QVariantList> rows;
    while (statement.Fetch(1024, rows)) {
    }
    for (const QVariantList &row : rows)
        names << row.at(2).toString();
    return names;
}

QList<ColumnDescription> OdbcConnection::Columns(const QString &schema, const QString &table)
{
    OdbcStatement statement(*this);
    statement.ExecuteColumns(schema, table);
    QList<QVariantList> rows;
    while (statement.Fetch(1024, rows)) {
    }
    QList<ColumnDescription> columns;
    for (const QVariantList &row : rows) {
        ColumnDescription column;
        column.name = row.at(3).toString();
        const int sqlType = row.at(4).toInt();
        column.adoType = AdoTypeOfOdbcType(sqlType, row.at(5).toString().contains(QLatin1String("unsigned"),
                                                                                 Qt::CaseInsensitive));
        column.size = row.at(6).toLongLong();
        column.type = row.at(5).toString();
        if (IsTextType(sqlType) && sqlType != SQL_GUID && !row.at(6).isNull())
            column.type += QStringLiteral("(%1)").arg(column.size);
        else if ((sqlType == SQL_DECIMAL || sqlType == SQL_NUMERIC) && !row.at(6).isNull())
            column.type += QStringLiteral("(%1,%2)").arg(column.size).arg(row.at(8).toLongLong());
        columns << column;
    }
    return columns;
}

void OdbcConnection::SetAutoCommit(bool on)
{
    const SQLRETURN rc = SQLSetConnectAttrW(m_dbc, SQL_ATTR_AUTOCOMMIT,
                                            reinterpret_cast<SQLPOINTER>(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF),
                                            SQL_IS_UINTEGER);
    if (!SQL_SUCCEEDED(rc))
        RaiseDiagnostics(SQL_HANDLE_DBC, m_dbc, "SQLSetConnectAttr", QString());
}

void OdbcConnection::EndTransaction(bool commit)
{
    if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, m_dbc, commit ? SQL_COMMIT : SQL_ROLLBACK)))
        RaiseDiagnostics(SQL_HANDLE_DBC, m_dbc, "SQLEndTran", QString());
}

// --- OdbcStatement

OdbcStatement::OdbcStatement(OdbcConnection &connection)
    : m_connection(connection)
{
    SQLHSTMT stmt = SQL_NULL_HSTMT;
    const SQLRETURN rc = SQLAllocHandle(SQL_HANDLE_STMT, connection.Handle(), &stmt);
    if (!SQL_SUCCEEDED(rc))
        RaiseDiagnostics(SQL_HANDLE_DBC, connection.Handle(), "SQLAllocHandle", QString());
    m_stmt = stmt;
}

OdbcStatement::~OdbcStatement()
{
    SQLFreeHandle(SQL_HANDLE_STMT, m_stmt);
}

void OdbcStatement::Check(short rc, const char *call, const QString &sql) const
{
    if (!SQL_SUCCEEDED(rc) && rc != SQL_NO_DATA)
        RaiseDiagnostics(SQL_HANDLE_STMT, m_stmt, call, sql);
}

void OdbcStatement::Execute(const QString &sql)
{
    m_sql = sql;
    QString text = sql;
    Check(SQLExecDirectW(m_stmt, WideMutable(text), SQLINTEGER(text.size())), "SQLExecDirect", sql);
    Describe();
}

void OdbcStatement::ExecuteTables(const QString &schema)
{
    m_sql = QStringLiteral("SQLTables ") + schema;
    QString pattern = m_connection.EscapePattern(schema);
    QString all = QStringLiteral("%");
    QString type = QStringLiteral("TABLE");
    Check(SQLTablesW(m_stmt, nullptr, 0, schema.isEmpty() ? nullptr : WideMutable(pattern),
                     schema.isEmpty() ? 0 : SQLSMALLINT(pattern.size()), WideMutable(all), SQL_NTS, WideMutable(type),
                     SQL_NTS),
          "SQLTables", m_sql);
    Describe();
}

void OdbcStatement::ExecuteColumns(const QString &schema, const QString &table)
{
    m_sql = QStringLiteral("SQLColumns ") + schema + QLatin1Char('.') + table;
    QString schemaPattern = m_connection.EscapePattern(schema);
    QString tablePattern = m_connection.EscapePattern(table);
    QString all = QStringLiteral("%");
    Check(SQLColumnsW(m_stmt, nullptr, 0, schema.isEmpty() ? nullptr : WideMutable(schemaPattern),
                      schema.isEmpty() ? 0 : SQLSMALLINT(schemaPattern.size()), WideMutable(tablePattern),
                      SQLSMALLINT(tablePattern.size()), WideMutable(all), SQL_NTS),
          "SQLColumns", m_sql);
    Describe();
}

void OdbcStatement::Prepare(const QString &sql)
{
    m_sql = sql;
    m_markerTypes.clear();
    QString text = sql;
    Check(SQLPrepareW(m_stmt, WideMutable(text), SQLINTEGER(text.size())), "SQLPrepare", sql);
}

short OdbcStatement::MarkerType(unsigned short marker)
{
    auto it = m_markerTypes.constFind(marker);
    if (it != m_markerTypes.cend())
        return *it;
    SQLSMALLINT type = SQL_VARCHAR;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    if (!SQL_SUCCEEDED(SQLDescribeParam(m_stmt, marker, &type, &size, &digits, &nullable)))
        type = SQL_VARCHAR;
    m_markerTypes.insert(marker, type);
    return type;
}

qint64 OdbcStatement::ExecutePrepared(const QVariantList &values)
{
    // Sized once: the driver keeps pointers into it until SQLExecute has run.
    std::vector<BoundValue> bound(size_t(values.size()));
    Check(SQLFreeStmt(m_stmt, SQL_RESET_PARAMS), "SQLFreeStmt", m_sql);
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QVariant &value = values.at(i);
        BoundValue &slot = bound[size_t(i)];
        const SQLUSMALLINT marker = SQLUSMALLINT(i + 1);
        SQLRETURN rc;
        if (value.isNull()) {
            slot.indicator = SQL_NULL_DATA;
            rc = SQLBindParameter(m_stmt, marker, SQL_PARAM_INPUT, SQL_C_CHAR, MarkerType(marker), 1, 0, nullptr, 0,
                                  &slot.indicator);
        } else if (IsIntegerValue(value)) {
            const qint64 number = value.toLongLong();
            if (number >= std::numeric_limits<SQLINTEGER>::min() && number <= std::numeric_limits<SQLINTEGER>::max()) {
                slot.integer = SQLINTEGER(number);
                rc = SQLBindParameter(m_stmt, marker, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &slot.integer, 0,
                                      &slot.indicator);
            } else {
                slot.bigInteger = number;
                rc = SQLBindParameter(m_stmt, marker, SQL_PARAM_INPUT, SQL_C_SBIGINT, SQL_BIGINT, 0, 0, &slot.bigInteger,
                                      0, &slot.indicator);
            }
        } else if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float) {
            slot.real = value.toDouble();
            rc = SQLBindParameter(m_stmt, marker, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 0, 0, &slot.real, 0,
                                  &slot.indicator);
        } else {
            slot.text = value.toString();
            slot.indicator = SQLLEN(slot.text.size() * qsizetype(sizeof(SQLWCHAR)));
            rc = SQLBindParameter(m_stmt, marker, SQL_PARAM_INPUT, SQL_C_WCHAR, SQL_WVARCHAR,
                                  SQLULEN(qMax<qsizetype>(1, slot.text.size())), 0, WideMutable(slot.text),
                                  slot.indicator, &slot.indicator);
        }
        Check(rc, "SQLBindParameter", m_sql);
    }
    Check(SQLExecute(m_stmt), "SQLExecute", m_sql);
    SQLLEN changed = 0;
    Check(SQLRowCount(m_stmt, &changed), "SQLRowCount", m_sql);
    return changed > 0 ? qint64(changed) : 0;
}

void OdbcStatement::Describe()
{
    m_fields.clear();
    m_sqlTypes.clear();
    m_done = false;
    SQLSMALLINT count = 0;
    Check(SQLNumResultCols(m_stmt, &count), "SQLNumResultCols", m_sql);
    for (SQLUSMALLINT i = 1; i <= SQLUSMALLINT(count); ++i) {
        SQLWCHAR name[256] = {};
        SQLSMALLINT nameLength = 0;
        SQLSMALLINT sqlType = 0;
        SQLULEN size = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        Check(SQLDescribeColW(m_stmt, i, name, SQLSMALLINT(std::size(name)), &nameLength, &sqlType, &size, &digits,
                              &nullable),
              "SQLDescribeCol", m_sql);
        SQLLEN unsignedType = SQL_FALSE;
        if (sqlType == SQL_SMALLINT || sqlType == SQL_INTEGER || sqlType == SQL_BIGINT || sqlType == SQL_TINYINT)
            SQLColAttributeW(m_stmt, i, SQL_DESC_UNSIGNED, nullptr, 0, nullptr, &unsignedType);
        RecordsetField field;
        field.name = FromWide(name, qMin<qsizetype>(nameLength, qsizetype(std::size(name)) - 1));
        field.type = AdoTypeOfOdbcType(sqlType, unsignedType == SQL_TRUE);
        field.definedSize = qint64(size);
        m_fields << field;
        m_sqlTypes << sqlType;
    }
}

bool OdbcStatement::Fetch(int maxRows, QList<QVariantList> &rows)
{
    if (m_done || m_fields.isEmpty())
        return false;
    const int count = int(m_fields.size());
    for (int n = 0; n < maxRows; ++n) {
        const SQLRETURN rc = SQLFetch(m_stmt);
        if (rc == SQL_NO_DATA) {
            m_done = true;
            return false;
        }
        Check(rc, "SQLFetch", m_sql);
        QVariantList row;
        row.reserve(count);
        for (int i = 0; i < count; ++i)
            row.append(Value(i));
        rows.append(std::move(row));
    }
    return true;
}

QVariant OdbcStatement::Value(int column)
{
    const SQLUSMALLINT number = SQLUSMALLINT(column + 1);
    SQLLEN indicator = 0;
    switch (m_sqlTypes.at(column)) {
    case SQL_SMALLINT: case SQL_INTEGER: case SQL_BIGINT: case SQL_TINYINT: case SQL_BIT: {
        SQLBIGINT value = 0;
        Check(SQLGetData(m_stmt, number, SQL_C_SBIGINT, &value, 0, &indicator), "SQLGetData", m_sql);
        return indicator == SQL_NULL_DATA ? QVariant() : QVariant(qint64(value));
    }
    case SQL_REAL: case SQL_FLOAT: case SQL_DOUBLE: {
        double value = 0;
        Check(SQLGetData(m_stmt, number, SQL_C_DOUBLE, &value, 0, &indicator), "SQLGetData", m_sql);
        return indicator == SQL_NULL_DATA ? QVariant() : QVariant(value);
    }
    case SQL_TYPE_DATE: case SQL_DATE: {
        SQL_DATE_STRUCT value{};
        Check(SQLGetData(m_stmt, number, SQL_C_TYPE_DATE, &value, sizeof(value), &indicator), "SQLGetData", m_sql);
        return indicator == SQL_NULL_DATA ? QVariant() : QVariant(QDate(value.year, value.month, value.day));
    }
    case SQL_TYPE_TIME: case SQL_TIME: {
        SQL_TIME_STRUCT value{};
        Check(SQLGetData(m_stmt, number, SQL_C_TYPE_TIME, &value, sizeof(value), &indicator), "SQLGetData", m_sql);
        return indicator == SQL_NULL_DATA ? QVariant() : QVariant(QTime(value.hour, value.minute, value.second));
    }
    case SQL_TYPE_TIMESTAMP: case SQL_TIMESTAMP: {
        SQL_TIMESTAMP_STRUCT value{};
        Check(SQLGetData(m_stmt, number, SQL_C_TYPE_TIMESTAMP, &value, sizeof(value), &indicator), "SQLGetData",
              m_sql);
        if (indicator == SQL_NULL_DATA)
            return QVariant();
        return QVariant(QDateTime(QDate(value.year, value.month, value.day),
                                  QTime(value.hour, value.minute, value.second, int(value.fraction / 1000000))));
    }
    case SQL_BINARY: case SQL_VARBINARY: case SQL_LONGVARBINARY: {
        QByteArray bytes;
        char buffer[8192];
        for (;;) {
            const SQLRETURN rc = SQLGetData(m_stmt, number, SQL_C_BINARY, buffer, sizeof(buffer), &indicator);
            if (rc == SQL_NO_DATA)
                break;
            Check(rc, "SQLGetData", m_sql);
            if (indicator == SQL_NULL_DATA)
                return QVariant();
            const qsizetype got = (indicator == SQL_NO_TOTAL || indicator > SQLLEN(sizeof(buffer)))
                                      ? qsizetype(sizeof(buffer)) : qsizetype(indicator);
            bytes.append(buffer, got);
            if (rc == SQL_SUCCESS)
                break;
        }
        return QVariant(bytes);
    }
    default:
        break;
    }

    // Text, and the exact numbers, which come as text so that no digit is lost on the way.
    QString text;
    SQLWCHAR buffer[2048];
    constexpr SQLLEN capacity = SQLLEN(sizeof(buffer));
    for (;;) {
        const SQLRETURN rc = SQLGetData(m_stmt, number, SQL_C_WCHAR, buffer, capacity, &indicator);
        if (rc == SQL_NO_DATA)
            break;
        Check(rc, "SQLGetData", m_sql);
        if (indicator == SQL_NULL_DATA)
            return QVariant();
        const bool partial = indicator == SQL_NO_TOTAL || indicator >= capacity;
        const qsizetype chars = partial ? qsizetype(std::size(buffer)) - 1 : qsizetype(indicator) / 2;
        text.append(FromWide(buffer, chars));
        if (rc == SQL_SUCCESS)
            break;
    }
    const int sqlType = m_sqlTypes.at(column);
    if (sqlType == SQL_DECIMAL || sqlType == SQL_NUMERIC) {
        bool ok = false;
        if (!text.contains(QLatin1Char('.'))) {
            const qint64 whole = text.toLongLong(&ok);
            if (ok)
                return QVariant(whole);
        }
        const double value = text.toDouble(&ok);
        if (ok)
            return QVariant(value);
    }
    return QVariant(text);
}

} // namespace fx
