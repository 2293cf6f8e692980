#pragma once
// The binary project list "proj_file" of a simulated site.
//
// Layout: a header of kProjFileHeaderSize bytes, then per project the delimiter
// 00 00 00 00 68 00 00 00 and an entry of kProjFileEntrySize bytes. In an entry (positions
// from 1): the name blank-padded over 1 to 21, the number text from 22 and the description
// from 73, each followed by two NUL bytes; the rest of a text's field is NUL.

#include "pdssim/sitelayout.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace pdssim {

inline constexpr int kProjFileHeaderSize = 64;
inline constexpr int kProjFileEntrySize = 128;

/// One entry as its bytes stand in the file.
struct ProjFileEntry
{
    QByteArray name;
    QByteArray number;
    QByteArray description;
};

struct ProjFileOptions
{
    QString project; ///< the site's own project, first in the list
    /// Adds an entry that differs from another only in case, a deleted (NUL) entry and one
    /// with the byte 255 in its name.
    bool edge = false;
};

/// The entries in file order: the site's project, then the others.
QList<ProjFileEntry> SiteProjFileEntries(const ProjFileOptions &options);

/// The whole file for `entries`.
QByteArray ProjFileBytes(const QList<ProjFileEntry> &entries);

/// Writes SiteLayout::ProjFile() with SiteProjFileEntries.
void WriteProjFile(const SiteLayout &layout, const ProjFileOptions &options);

} // namespace pdssim
