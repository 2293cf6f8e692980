#include "pds/scratchfiles.h"

#include "frame/fileops.h"
#include "pds/schemaini.h"

#include <QRandomGenerator>

namespace fx {

QString RandomScratchName()
{
    static const char alphabet[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QString name;
    for (int i = 0; i < 8; ++i)
        name += QLatin1Char(alphabet[QRandomGenerator::global()->bounded(int(sizeof(alphabet) - 1))]);
    return name;
}

ScratchFile::ScratchFile(QString path)
    : m_path(std::move(path))
{
}

ScratchFile::~ScratchFile()
{
    if (!m_path.isEmpty())
        DeleteFileA(m_path, false);
}

TextFileScratch::TextFileScratch(QString textFile)
    : m_path(std::move(textFile))
{
}

TextFileScratch::~TextFileScratch()
{
    if (m_path.isEmpty())
        return;
    DeleteFileA(m_path, false);
    if (IsFileExists(SchemaIniPath(m_path)))
        RemoveSchemaIniSection(m_path);
}

QString TextFileScratch::Keep()
{
    return std::exchange(m_path, QString());
}

} // namespace fx
