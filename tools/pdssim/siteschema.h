#pragma once
// The project schema of a site, put where the site's kind of database keeps it.

#include "pdssim/edgemanifest.h"
#include "pdssim/schemagenerator.h"
#include "pdssim/sitelayout.h"

namespace pdssim {

enum class SchemaKind { Sqlite, Ris, PostgreSQL };

/// Generates "pd_<project>" for a site: the SQLite kind into SqliteSchemaDir(), the RIS kind
/// into RisSchemaDir(); the PostgreSQL kind generates into SqliteSchemaDir() and copies that
/// file onto the server of `connectionString`. Gives the hard cases, for the manifest.
QList<EdgeCase> BuildSiteSchema(const SiteLayout &layout, const SchemaOptions &options, SchemaKind kind,
                                const QString &connectionString = QString());

} // namespace pdssim
