#include "pds/adotypes.h"

#include <QRegularExpression>

namespace fx {

bool IsAdoDataTypeString(int adoType)
{
    switch (adoType) {
    case adotype::BSTR: case adotype::Char: case adotype::WChar: case adotype::VarChar:
    case adotype::LongVarChar: case adotype::VarWChar: case adotype::LongVarWChar: case adotype::Guid:
        return true;
    default:
        return false;
    }
}

bool IsAdoDataTypeInteger(int adoType)
{
    switch (adoType) {
    case adotype::SmallInt: case adotype::Integer: case adotype::Boolean: case adotype::TinyInt:
    case adotype::UnsignedTinyInt: case adotype::UnsignedSmallInt: case adotype::UnsignedInt:
    case adotype::BigInt: case adotype::UnsignedBigInt:
        return true;
    default:
        return false;
    }
}

int AdoTypeOfDeclaredType(const QString &declaredType, qint64 *definedSize)
{
    static const QRegularExpression sized(QStringLiteral("^\\s*([A-Z ]+?)\\s*\\(\\s*(\\d+)"));
    const QString upper = declaredType.trimmed().toUpper();
    QString name = upper;
    qint64 size = -1;
    const QRegularExpressionMatch match = sized.match(upper);
    if (match.hasMatch()) {
        name = match.captured(1);
        size = match.captured(2).toLongLong();
    }
    auto text = [&](qint64 fallback) {
        if (definedSize)
            *definedSize = size > 0 ? size : fallback;
        return adotype::VarWChar;
    };
    if (definedSize)
        *definedSize = 0;
    if (name == QLatin1String("MEMO") || name == QLatin1String("LONGTEXT") || name == QLatin1String("LONGCHAR")
        || name == QLatin1String("NOTE")) {
        if (definedSize)
            *definedSize = 536870910;
        return adotype::LongVarWChar;
    }
    if (name.contains(QLatin1String("CHAR")) || name == QLatin1String("TEXT") || name == QLatin1String("STRING"))
        return text(255);
    if (name == QLatin1String("SHORT") || name == QLatin1String("SMALLINT") || name == QLatin1String("INTEGER2"))
        return adotype::SmallInt;
    if (name == QLatin1String("BYTE") || name == QLatin1String("TINYINT"))
        return adotype::UnsignedTinyInt;
    if (name == QLatin1String("LONG") || name == QLatin1String("INTEGER") || name == QLatin1String("INT")
        || name == QLatin1String("INTEGER4") || name == QLatin1String("COUNTER")
        || name == QLatin1String("AUTOINCREMENT"))
        return adotype::Integer;
    if (name == QLatin1String("BIGINT"))
        return adotype::BigInt;
    if (name == QLatin1String("DOUBLE") || name == QLatin1String("FLOAT") || name == QLatin1String("FLOAT8")
        || name == QLatin1String("NUMBER") || name == QLatin1String("DOUBLE PRECISION"))
        return adotype::Double;
    if (name == QLatin1String("REAL") || name == QLatin1String("SINGLE") || name == QLatin1String("FLOAT4"))
        return adotype::Single;
    if (name == QLatin1String("DECIMAL") || name == QLatin1String("NUMERIC"))
        return adotype::Numeric;
    if (name == QLatin1String("CURRENCY") || name == QLatin1String("MONEY"))
        return adotype::Currency;
    if (name == QLatin1String("DATETIME") || name == QLatin1String("DATE") || name == QLatin1String("TIME")
        || name == QLatin1String("TIMESTAMP"))
        return adotype::Date;
    if (name == QLatin1String("BIT") || name == QLatin1String("YESNO") || name == QLatin1String("BOOLEAN")
        || name == QLatin1String("LOGICAL"))
        return adotype::Boolean;
    if (name.contains(QLatin1String("BINARY")) || name == QLatin1String("BLOB") || name == QLatin1String("IMAGE")
        || name == QLatin1String("LONGBINARY"))
        return adotype::LongVarBinary;
    return text(255);
}

QString DeclaredTypeOfAdoType(int adoType, qint64 definedSize)
{
    switch (adoType) {
    case adotype::SmallInt: case adotype::TinyInt: case adotype::UnsignedTinyInt:
        return QStringLiteral("SMALLINT");
    case adotype::Integer: case adotype::UnsignedSmallInt:
        return QStringLiteral("INTEGER");
    case adotype::UnsignedInt: case adotype::BigInt: case adotype::UnsignedBigInt:
        return QStringLiteral("BIGINT");
    case adotype::Single:
        return QStringLiteral("REAL");
    case adotype::Double: case adotype::Decimal: case adotype::Numeric: case adotype::VarNumeric:
        return QStringLiteral("DOUBLE");
    case adotype::Currency:
        return QStringLiteral("CURRENCY");
    case adotype::Date: case adotype::DBDate: case adotype::DBTime: case adotype::DBTimeStamp:
        return QStringLiteral("DATETIME");
    case adotype::Boolean:
        return QStringLiteral("BIT");
    case adotype::Binary: case adotype::VarBinary: case adotype::LongVarBinary:
        return QStringLiteral("LONGBINARY");
    case adotype::LongVarChar: case adotype::LongVarWChar:
        return QStringLiteral("MEMO");
    default:
        if (definedSize <= 0 || definedSize > 255)
            return definedSize > 255 ? QStringLiteral("MEMO") : QStringLiteral("TEXT(255)");
        return QStringLiteral("TEXT(%1)").arg(definedSize);
    }
}

} // namespace fx
