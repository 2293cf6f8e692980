// Arbitrary bytes as a proj_file: the reader refuses a file without any entry delimiter and
// otherwise gives a list that keeps its promises, whatever the bytes.
#include "fuzzsupport.h"

#include "frame/failure.h"
#include "pds/projfile.h"

#include <QSet>

#include <cstddef>
#include <cstdint>

namespace {

const QByteArray kDelimiter("\0\0\0\0\x68\0\0\0", 8);

void CheckText(const QString &text, const QString &what)
{
    fuzz::Expect(!text.startsWith(QLatin1Char(' ')) && !text.endsWith(QLatin1Char(' ')),
                 what + QStringLiteral(" has blanks around it: '") + text + QLatin1Char('\''));
    fuzz::Expect(!text.contains(QString(2, QChar(0))), what + QStringLiteral(" runs over two NUL bytes"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype first = bytes.indexOf(kDelimiter);
    QList<fx::ProjFileProject> projects;
    try {
        projects = fx::ParseProjFile(bytes, QStringLiteral("proj_file"));
    } catch (const fx::Failure &failure) {
        fuzz::Expect(first < 0, QStringLiteral("a list with a delimiter refused: ") + failure.Description());
        return 0;
    }
    fuzz::Expect(first >= 0, QStringLiteral("a list without any delimiter read"));

    // Each project comes from an entry of its own, after the header.
    const QByteArray entries = bytes.mid(first + kDelimiter.size());
    fuzz::Expect(projects.size() <= entries.count(kDelimiter) + 1, QStringLiteral("more projects than entries"));
    QSet<QString> names;
    for (const fx::ProjFileProject &project : std::as_const(projects)) {
        const QString &name = project.Name;
        fuzz::Expect(!name.isEmpty() && !name.contains(QLatin1Char(' ')) && !name.contains(QChar(0xff)),
                     QStringLiteral("a name that is no name: '") + name + QLatin1Char('\''));
        fuzz::Expect(!name.startsWith(QChar(0)), QStringLiteral("a name of an empty entry"));
        fuzz::Expect(entries.contains(name.toLatin1() + ' '), QStringLiteral("a name not followed by a blank in the file"));
        fuzz::Expect(!names.contains(name.toLower()), QStringLiteral("two projects of one name: ") + name);
        names.insert(name.toLower());
        CheckText(project.Number, QStringLiteral("the number"));
        CheckText(project.Description, QStringLiteral("the description"));
    }
    return 0;
}
