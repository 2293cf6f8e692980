#pragma once
// A small store with a `clashes` table of the grid's shape, made by hand.

#include "grid/clashgridmodel.h"
#include "pds/sqlitedb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/clashview.h"

#include "support/sandbox.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>
#include <utility>

// Readable texts when a comparison fails.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace fxtest {

class GridStore : public testing::Test
{
protected:
    using Values = std::initializer_list<std::pair<const char *, QVariant>>;

    void SetUp() override
    {
        const QString file = box.Temp() + QStringLiteral("store.fxdb");
        fx::ClashStore().ProjectDefinition.name = QStringLiteral("P");
        fx::ClashStore().WorkDB = file;
        fx::ClashStore().ClashConnection = std::make_unique<fx::SqliteDb>(file, fx::SqliteDb::OpenMode::ReadWriteCreate);
        fx::ClashRecordset().open = true;
        fx::ClashRecordset().Filter.clear();
        Db().Execute(QStringLiteral(
                         "CREATE TABLE clashes (clash_id INTEGER PRIMARY KEY, type TEXT, status TEXT, recent_review_date DATETIME, "
                         "discipline_structure TEXT, model_structure TEXT, discipline_a TEXT, comp_a TEXT, discipline_b TEXT, "
                         "comp_b TEXT, action_discipline TEXT, easting DOUBLE);"
                         "CREATE TABLE pdtable_111 (discipline_name TEXT);"
                         "INSERT INTO pdtable_111 VALUES ('Piping'), ('Equipment'), ('Structural');")
                         .replace(QStringLiteral("TEXT"), QString::fromLatin1(fx::StoreTextType)));
    }

    void TearDown() override { fx::FreeClashes(); }

    static fx::SqliteDb &Db() { return fx::ClashConnection(); }

    static void Row(qint64 id, Values values)
    {
        Db().Execute(QStringLiteral("INSERT INTO clashes (clash_id) VALUES (%1);").arg(id));
        for (const auto &[column, value] : values) {
            fx::SqliteStatement update(Db(), QStringLiteral("UPDATE clashes SET [%1] = ?1 WHERE clash_id = %2;")
                                                 .arg(QLatin1String(column))
                                                 .arg(id));
            update.Bind(1, value);
            update.Step();
        }
    }

    // The clash ids of the model's rows, in row order.
    static QList<qint64> Ids(const fx::ClashGridModel &model)
    {
        QList<qint64> ids;
        for (int row = 0; row < model.rowCount(); ++row)
            ids << model.ClashIdOfRow(row);
        return ids;
    }

    Sandbox box;
};

} // namespace fxtest
