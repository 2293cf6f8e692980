#pragma once
// Writing one file of a simulated site, its folders made on the way, and noting a hard case
// in the site's manifest.

#include "pdssim/sitelayout.h"

#include <QByteArray>
#include <QString>

namespace pdssim {

/// Writes `bytes` as the whole file at `path`, making its folder first; with `executable` the
/// owner, group and others may run it. Raises when the file cannot be written.
void WriteSiteFile(const QString &path, const QByteArray &bytes, bool executable = false);

/// Notes a hard case of the site's files as `key`=`value` in section [SiteFiles] of the manifest.
void NoteEdgeCase(const SiteLayout &layout, const QString &key, const QString &value);

} // namespace pdssim
