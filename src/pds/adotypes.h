#pragma once
// ADO data type numbers. Results keep them because the text-file and dump formats choose
// their column types by these numbers, as the Windows program did.

#include <QString>

namespace fx::adotype {

inline constexpr int SmallInt = 2;
inline constexpr int Integer = 3;
inline constexpr int Single = 4;
inline constexpr int Double = 5;
inline constexpr int Currency = 6;
inline constexpr int Date = 7;
inline constexpr int BSTR = 8;
inline constexpr int Boolean = 11;
inline constexpr int Decimal = 14;
inline constexpr int TinyInt = 16;
inline constexpr int UnsignedTinyInt = 17;
inline constexpr int UnsignedSmallInt = 18;
inline constexpr int UnsignedInt = 19;
inline constexpr int BigInt = 20;
inline constexpr int UnsignedBigInt = 21;
inline constexpr int Guid = 72;
inline constexpr int Binary = 128;
inline constexpr int Char = 129;
inline constexpr int WChar = 130;
inline constexpr int Numeric = 131;
inline constexpr int DBDate = 133;
inline constexpr int DBTime = 134;
inline constexpr int DBTimeStamp = 135;
inline constexpr int VarNumeric = 139;
inline constexpr int VarChar = 200;
inline constexpr int LongVarChar = 201;
inline constexpr int VarWChar = 202;
inline constexpr int LongVarWChar = 203;
inline constexpr int VarBinary = 204;
inline constexpr int LongVarBinary = 205;

} // namespace fx::adotype

namespace fx {

/// True for the ADO types that hold text: 8, 129, 130, 200, 201, 202, 203 and 72.
bool IsAdoDataTypeString(int adoType);

/// True for the ADO types whose values are whole numbers.
bool IsAdoDataTypeInteger(int adoType);

/// The ADO type (and defined size, for text) of a column declared in the local store, read
/// the way Jet reads its own DDL: TEXT(n)/VARCHAR(n)/CHAR(n) text of n, bare TEXT 255, MEMO long
/// text, SHORT/SMALLINT 2, LONG/INTEGER/INT/COUNTER 3, DOUBLE/FLOAT 5, REAL/SINGLE 4, DATETIME 7.
/// An empty or unknown declaration gives VarWChar of 255.
int AdoTypeOfDeclaredType(const QString &declaredType, qint64 *definedSize = nullptr);

/// The column type the local store declares for an ADO type, in the Jet DDL that
/// AdoTypeOfDeclaredType reads back to the same type and size.
QString DeclaredTypeOfAdoType(int adoType, qint64 definedSize);

} // namespace fx
