#include "pdssim/projfile.h"
#include "pdssim/sitemessages.h"

#include "pdssim/sitewrite.h"

#include "frame/failure.h"
#include "pds/messages.h"

namespace pdssim {

namespace {
constexpr char kDelimiter[] = {0, 0, 0, 0, 0x68, 0, 0, 0};
constexpr int kNameSize = 21;       // positions 1 to 21
constexpr int kNumberStart = 21;    // position 22
constexpr int kDescriptionStart = 72; // position 73

// A text and its two NUL bytes at `start`, raising when it would overrun `end`.
void PutText(QByteArray &entry, int start, int end, const QByteArray &text)
{
    if (start + text.size() + 2 > end)
        fx::Raise(pdssim::sitemsg::SimProjFileTextTooLong, {QString::fromLatin1(text), QString::number(end - start - 2)});
    entry.replace(start, text.size(), text);
}

QByteArray EntryBytes(const ProjFileEntry &project)
{
    QByteArray entry(kProjFileEntrySize, '\0');
    if (project.name.isEmpty())
        return entry;
    if (project.name.size() >= kNameSize)
        fx::Raise(pdssim::sitemsg::SimProjFileTextTooLong, {QString::fromLatin1(project.name), QString::number(kNameSize - 1)});
    entry.replace(0, kNameSize, project.name.leftJustified(kNameSize, ' '));
    PutText(entry, kNumberStart, kDescriptionStart, project.number);
    PutText(entry, kDescriptionStart, kProjFileEntrySize, project.description);
    return entry;
}
} // namespace

QList<ProjFileEntry> SiteProjFileEntries(const ProjFileOptions &options)
{
    return fx::Frame("SiteProjFileEntries", [&] {
        const QByteArray own = options.project.toLatin1();
        QList<ProjFileEntry> entries = {{own, "PN-" + own.toUpper(), "Clash review plant " + own}};
        // Other projects of the same server; one that would share the site's name is left out.
        const ProjFileEntry others[] = {
            {"unit2", "PN-U2", "Utilities unit 2"},
            {"tankfarm", "PN-TF", "Tank farm extension"},
            {"pilot", "PN-PL", "Pilot plant (archived)"},
        };
        for (const ProjFileEntry &other : others)
            if (other.name.toLower() != own.toLower())
                entries.append(other);
        if (options.edge) {
            entries.append({"UNIT2", "PN-U2-COPY", "Copy of unit 2 under another case"});
            entries.append({QByteArray(), QByteArray(), QByteArray()});
            entries.append({"old\xffunit", "PN-OLD", "Entry of a damaged list"});
        }
        return entries;
    });
}

QByteArray ProjFileBytes(const QList<ProjFileEntry> &entries)
{
    return fx::Frame("ProjFileBytes", [&] {
        // The header: a title and the entry count and size as 16-bit little-endian words.
        QByteArray bytes("PDS PROJECT CONTROL FILE V8");
        bytes.resize(kProjFileHeaderSize, '\0');
        bytes[48] = char(entries.size() & 0xff);
        bytes[49] = char(entries.size() >> 8);
        bytes[50] = char(kProjFileEntrySize);
        for (const ProjFileEntry &entry : entries) {
            bytes.append(kDelimiter, sizeof kDelimiter);
            bytes.append(EntryBytes(entry));
        }
        return bytes;
    });
}

void WriteProjFile(const SiteLayout &layout, const ProjFileOptions &options)
{
    fx::Frame("WriteProjFile", [&] {
        const QList<ProjFileEntry> entries = SiteProjFileEntries(options);
        WriteSiteFile(layout.ProjFile(), ProjFileBytes(entries));
        if (options.edge) {
            NoteEdgeCase(layout, QStringLiteral("ProjFileCaseTwin"), QStringLiteral("UNIT2"));
            NoteEdgeCase(layout, QStringLiteral("ProjFileEntries"), QString::number(entries.size()));
            NoteEdgeCase(layout, QStringLiteral("ProjFileSkippedEntries"), QStringLiteral("3"));
        }
    });
}

} // namespace pdssim
