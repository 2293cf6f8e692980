// Files that are no clash store, handed to the built fendrix-cli: refused by name, and nothing
// of them copied into TEMP.

#include "proof/proofrig.h"

#include "pds/sqlitedb.h"

#include <QDirIterator>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

TEST(ProofClashFile, a_corrupt_or_foreign_file_is_refused_and_leaves_no_working_copy)
{
    fxproof::ProofRig rig;
    QByteArray garbage(64 * 1024, '\0');
    std::mt19937 bytes(7);
    for (char &byte : garbage)
        byte = char(bytes());
    const QString corrupt = rig.Root() + u"corrupt.fxdb"_s;
    {
        QFile file(corrupt);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(garbage);
    }
    // A sound SQLite file of another program: the right format, not a clash store.
    const QString foreign = rig.Root() + u"foreign.fxdb"_s;
    {
        fx::SqliteDb db(foreign, fx::SqliteDb::OpenMode::ReadWriteCreate);
        db.Execute(u"CREATE TABLE notes (id INT, text VARCHAR(40)); INSERT INTO notes VALUES (1, 'kept');"_s);
    }
    const QByteArray foreignBytes = fxtest::Sandbox::ReadFile(foreign);

    for (const QString &file : {corrupt, foreign}) {
        const fxproof::CliResult run = rig.Run(rig.OpenFile(file) + QStringList{u"counts"_s});
        EXPECT_EQ(run.exitCode, 1) << run.Told();
        EXPECT_TRUE(run.err.contains(u"Invalid Fendrix access database '"_s + file + u"'"_s)) << run.Told();
        EXPECT_TRUE(run.out.isEmpty()) << run.Told();
    }
    EXPECT_EQ(fxtest::Sandbox::ReadFile(corrupt), garbage) << "a refused file is left as it was";
    EXPECT_EQ(fxtest::Sandbox::ReadFile(foreign), foreignBytes);

    // The runs' logs are all that they leave in TEMP.
    QStringList left;
    QDirIterator files(rig.Temp(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        if (!file.endsWith(u".log"_s))
            left << file;
    }
    EXPECT_EQ(left, QStringList());
}
