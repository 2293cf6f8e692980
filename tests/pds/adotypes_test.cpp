#include "pds/adotypes.h"
#include "pds/recordset.h"
#include "pds/sqlitedb.h"
#include "pds/tableimporter.h"

#include "support/failures.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace fx;

TEST(AdoTypes, declared_types_read_back_to_the_same_type_and_size)
{
    const std::pair<int, qint64> cases[] = {{adotype::SmallInt, 0}, {adotype::Integer, 0}, {adotype::Double, 0},
                                            {adotype::Single, 0},   {adotype::Date, 0},    {adotype::VarWChar, 20},
                                            {adotype::VarWChar, 255}, {adotype::BigInt, 0}};
    for (const auto &[type, size] : cases) {
        qint64 readSize = -1;
        EXPECT_EQ(AdoTypeOfDeclaredType(DeclaredTypeOfAdoType(type, size), &readSize), type) << type;
        EXPECT_EQ(readSize, size) << type;
    }
}

TEST(AdoTypes, jet_ddl_of_later_statements_maps_as_jet_reads_it)
{
    qint64 size = 0;
    EXPECT_EQ(AdoTypeOfDeclaredType(QStringLiteral("text (50)"), &size), adotype::VarWChar);
    EXPECT_EQ(size, 50);
    EXPECT_EQ(AdoTypeOfDeclaredType(QStringLiteral("TEXT"), &size), adotype::VarWChar);
    EXPECT_EQ(size, 255);
    EXPECT_EQ(AdoTypeOfDeclaredType(QStringLiteral("LONG")), adotype::Integer);
    EXPECT_EQ(AdoTypeOfDeclaredType(QStringLiteral("memo")), adotype::LongVarWChar);
    EXPECT_TRUE(IsAdoDataTypeString(adotype::Guid));
    EXPECT_FALSE(IsAdoDataTypeString(adotype::Double));
}

TEST(TableImporter, creates_the_table_and_keeps_nulls_and_types_across_slices)
{
    QTemporaryDir dir;
    SqliteDb db(dir.filePath(QStringLiteral("store.db")), SqliteDb::OpenMode::ReadWriteCreate);
    const QList<RecordsetField> fields = {{QStringLiteral("id"), adotype::Integer, 0},
                                          {QStringLiteral("name"), adotype::VarWChar, 20}};
    {
        TableImporter importer(db, QStringLiteral("t"), fields);
        for (int i = 0; i < TableImporter::kSliceRows + 5; ++i)
            importer.AddRow({qint64(i), i % 2 ? QVariant() : QVariant(QStringLiteral("it's %1").arg(i))});
        importer.Finish();
    }
    const Recordset result = db.Read(QStringLiteral("SELECT * FROM t WHERE id IN (0, 10003) ORDER BY id"));
    ASSERT_EQ(result.RecordCount(), 2);
    EXPECT_EQ(result.Fields().at(1).type, adotype::VarWChar);
    EXPECT_EQ(result.Fields().at(1).definedSize, 20);
    EXPECT_EQ(result.Value(0, QStringLiteral("NAME")).toString(), QStringLiteral("it's 0"));
    EXPECT_TRUE(result.Value(1, 1).isNull());
    EXPECT_EQ(db.Read(QStringLiteral("SELECT COUNT(*) FROM t")).Value(0, 0).toLongLong(), TableImporter::kSliceRows + 5);
}

TEST(TableImporter, an_unfinished_slice_rolls_back_and_a_too_wide_row_fails)
{
    QTemporaryDir dir;
    SqliteDb db(dir.filePath(QStringLiteral("store.db")), SqliteDb::OpenMode::ReadWriteCreate);
    db.Execute(QStringLiteral("CREATE TABLE t (id INTEGER)"));
    {
        TableImporter importer(db, QStringLiteral("T"), {});
        EXPECT_TRUE(importer.TableExisted());
        importer.AddRow({qint64(1)});
        EXPECT_NE(fxtest::FailureText([&] { importer.AddRow({qint64(2), qint64(3)}); }), QString());
    }
    EXPECT_EQ(db.Read(QStringLiteral("SELECT COUNT(*) FROM t")).Value(0, 0).toLongLong(), 0);
}
