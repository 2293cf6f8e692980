// risclnsr: cleans the server side of a schema. The site has no server to clean, so a schema of
// the schema file is reported clean and any other one refused.

#include "pdssim/commands.h"

#include "pdssim/riserror.h"
#include "pdssim/rismessages.h"
#include "pdssim/rissite.h"

#include "frame/failure.h"

#include <cstdio>

namespace pdssim {

int RunRisClean(const QStringList &arguments)
{
    if (IsToolMissing("risclnsr"))
        return 127;
    QStringList args = arguments;
    const SiteLayout site = TakeSite(args);
    if (args.size() != 1)
        fx::Raise(RisText(rismsg::Usage, {QStringLiteral("risclnsr"), QStringLiteral("schema")}));
    const QString known = KnownRisSchema(site, args.first());
    if (known.isEmpty()) {
        std::printf("%s\n", qPrintable(RisText(rismsg::SchemaNotCleaned, {args.first()})));
        return 1;
    }
    std::printf("%s\n", qPrintable(RisText(rismsg::SchemaCleaned, {known})));
    return 0;
}

} // namespace pdssim
