// Whole sites: the same seed builds the same bytes again, so that a test or a benchmark on a
// site of a given seed always meets the same data.

#include "pdssim/sitebuild.h"

#include "support/sandbox.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

using namespace pdssim;
using namespace Qt::StringLiterals;

namespace {

// Every file below a folder with the hash of its bytes, in name order.
QStringList FileHashes(const QString &root)
{
    QStringList lines;
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        lines << path.mid(root.size()) + u' '
                     + QString::fromLatin1(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex());
    }
    lines.sort();
    return lines;
}

} // namespace

TEST(Site, a_site_of_the_same_seed_is_built_byte_for_byte_again_with_or_without_edge_cases_and_another_seed_differs)
{
    fxtest::Sandbox box;
    // A RIS site: its schema's database lies among the files compared.
    SiteOptions options{box.Root() + u"site"_s, u"DEMO"_s, 1000, 5, u"ris"_s, true, QStringLiteral(PDSSIM_EXECUTABLE)};
    for (const bool edge : {true, false}) {
        options.edge = edge;
        options.seed = 5;
        QDir(options.root).removeRecursively();
        BuildSite(options);
        const QStringList first = FileHashes(options.root);
        EXPECT_GT(first.size(), 10);
        QDir(options.root).removeRecursively();
        BuildSite(options);
        EXPECT_EQ(FileHashes(options.root), first) << edge;

        QDir(options.root).removeRecursively();
        options.seed = 6;
        BuildSite(options);
        EXPECT_NE(FileHashes(options.root), first) << edge;
    }
}
