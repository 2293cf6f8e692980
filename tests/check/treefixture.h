#pragma once
// A small project made by hand for the project tree: three disciplines (Piping, Equipment,
// Structural with two sub-projects), five areas, seven models, and one clash, in one SQLite
// file that stands for the schema or for the store.

#include "check/projecttree.h"
#include "frame/logmessage.h"
#include "pds/sqlitedb.h"
#include "support/sandbox.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace fxtest {

/// Collects the progress messages, with their arguments filled in.
class LogLines : public fx::ILogSink
{
public:
    void ShowLogMessage(const QString &text) override { lines << text; }
    bool Has(const QString &line) const { return lines.contains(line); }
    QStringList lines;

private:
    fx::LogSinkRegistration m_registration{this};
};

/// A key from its levels: {"Discipline", "1"}, {"Area", "11"} ...
inline QString Key(std::initializer_list<std::pair<const char *, const char *>> levels)
{
    QString key;
    for (const auto &[name, value] : levels)
        key = fx::TreeChildKey(key, fx::TreeLevelOfName(QString::fromLatin1(name)), QString::fromUtf8(value));
    return key;
}

class HandMadeProject : public testing::Test
{
protected:
    void SetUp() override
    {
        m_db = std::make_unique<fx::SqliteDb>(box.Temp() + QStringLiteral("project.db"), fx::SqliteDb::OpenMode::ReadWriteCreate);
        Db().Execute(QStringLiteral(
            "CREATE TABLE pdtable_111 (discipline_indx_no SMALLINT, discipline_name CHAR(20));"
            "CREATE TABLE pdtable_112 (discipline_indx_no SMALLINT, area_index_no INT, area_name CHAR(20), "
            "  area_description CHAR(40), interference_mode SMALLINT);"
            "CREATE TABLE pdtable_113 (model_index_no INT, discipline_indx_no SMALLINT, area_index_no INT, partition_no SMALLINT, "
            "  model_no CHAR(20), model_description CHAR(40), model_type SMALLINT);"
            "CREATE TABLE pdtable_116 (sub_project_ndx_no INT, sub_project_no CHAR(20), sub_project_name CHAR(40));"
            "CREATE TABLE pdtable_117 (area_index_no INT, sub_project_ndx_no INT);"
            "CREATE TABLE clashes (clash_id INTEGER PRIMARY KEY, discipline_a TEXT, discipline_b TEXT, area_a TEXT, area_b TEXT, "
            "  model_a TEXT, model_b TEXT);"
            "INSERT INTO pdtable_111 VALUES (1, 'Piping'), (2, 'Equipment'), (3, 'Structural');"
            "INSERT INTO pdtable_112 VALUES (1, 11, 'PA1', 'Piping area 1', 1), (1, 12, 'PA2', 'Piping area 2', 1), "
            "  (2, 21, 'EA1', NULL, 1), (3, 31, 'SA1', 'Steel north', 1), (3, 32, 'SA2', 'Steel south', 1);"
            "INSERT INTO pdtable_113 VALUES (1, 1, 11, 1, 'P1101', 'Pipe rack', 1), (2, 1, 11, 2, 'P1102', 'Pumps', 1), "
            "  (3, 1, 12, 3, 'P1201', 'Tank farm', 1), (4, 2, 21, 1, 'E2101', 'Vessels', 1), "
            // S3101's second row of type 2 holds an additional file of the same model.
            "  (5, 3, 31, 1, 'S3101', 'Main steel', 1), (6, 3, 31, 2, 'S3101', 'Main steel', 2), "
            "  (7, 3, 32, 3, 'S3201', 'Platforms', 1);"
            "INSERT INTO pdtable_116 VALUES (1, 'SP-1', 'North'), (2, 'SP-2', 'South');"
            "INSERT INTO pdtable_117 VALUES (31, 1), (32, 2);"
            "INSERT INTO clashes VALUES (1, 'Piping', 'Structural', 'PA1', 'SA1', 'P1101', 'S3101');"));
    }

    fx::SqliteDb &Db() { return *m_db; }

    /// The file as the tree's source; `reads` counts the statements it ran.
    fx::TreeSource Source(bool restricted = false)
    {
        return {[this](const QString &sql) {
                    ++reads;
                    statements << sql;
                    return m_db->Read(sql);
                },
                restricted};
    }

    /// Every index of the model, parents before children.
    static QModelIndexList AllIndexes(const QAbstractItemModel &model, const QModelIndex &parent = {})
    {
        QModelIndexList indexes;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex index = model.index(row, 0, parent);
            indexes << index;
            indexes << AllIndexes(model, index);
        }
        return indexes;
    }

    /// The texts of a node's children.
    static QStringList ChildTexts(const QAbstractItemModel &model, const QModelIndex &parent)
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(parent); ++row)
            texts << model.index(row, 0, parent).data().toString();
        return texts;
    }

    Sandbox box;
    LogLines log;
    int reads = 0;
    QStringList statements;

private:
    std::unique_ptr<fx::SqliteDb> m_db;
};

} // namespace fxtest
