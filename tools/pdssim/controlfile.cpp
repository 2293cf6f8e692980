#include "pdssim/controlfile.h"

#include "pdssim/siteserver.h"
#include "pdssim/sitewrite.h"

#include "frame/failure.h"

#include <QStringList>

namespace pdssim {

namespace {
// A value inside a single-quoted Perl string: a backslash doubled, a quote escaped.
QString PerlQuoted(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('\''), QStringLiteral("\\'"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString SetEnv(const char *name, const QString &value)
{
    return QStringLiteral("$ENV{'%1'} = %2;").arg(QLatin1String(name), PerlQuoted(value));
}
} // namespace

void WriteControlFile(const SiteLayout &layout, const ControlFileOptions &options)
{
    fx::Frame("WriteControlFile", [&] {
        const QString server = SiteServer();
        const QString projFile = ServerPath(layout, layout.ProjFileDir());
        QStringList lines = {
            QStringLiteral("@rem = '--*-Perl-*--';"),
            QStringLiteral("# PDS control file: the project list of this site and the shell's settings."),
            QStringLiteral("# Read by the PDS shell; the lines after the end marker are its data block."),
            SetEnv("PROJ_ADDR", server),
            SetEnv("PROJ_FILE", projFile),
            SetEnv("PDS_QUEUE", QStringLiteral("pdsqueue@") + server),
            SetEnv("PD_SHELL", QStringLiteral("C:\\win32app\\ingr\\PDSHELL\\")),
            SetEnv("PDS_TMP", QStringLiteral("C:\\TEMP\\")),
            SetEnv("PDS_DEBUG", QStringLiteral("OFF")),
            QStringLiteral("$ENV{'PDS_NODE'} = $ENV{'COMPUTERNAME'} if defined $ENV{'COMPUTERNAME'};"),
            QStringLiteral("foreach $d ('PROJ_FILE', 'PDS_TMP') { $ENV{$d} .= '\\\\' unless $ENV{$d} =~ /\\\\$/; }"),
            QStringLiteral("__END__"),
            QStringLiteral("PROJ_ADDR   ") + server,
            QStringLiteral("PROJ_FILE   ") + projFile,
            QStringLiteral("PD_SHELL    08.00.00.12"),
        };
        if (options.edge) {
            lines << QStringLiteral("# the block below is kept from an older release") << QStringLiteral("__END__");
            NoteEdgeCase(layout, QStringLiteral("ControlFileEndMarkers"), QStringLiteral("2"));
        }
        lines << QStringLiteral("RIS         05.04.00.03") << QString();
        WriteSiteFile(layout.ControlFile(), lines.join(QStringLiteral("\r\n")).toLatin1());
    });
}

} // namespace pdssim
