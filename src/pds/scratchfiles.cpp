#include "pds/scratchfiles.h"

#include "frame/fileops.h"
#include "frame/inifile.h"
#include "frame/paths.h"

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

ScratchTextTable::ScratchTextTable(QString textFile)
    : m_path(std::move(textFile))
{
}

ScratchTextTable::~ScratchTextTable()
{
    if (m_path.isEmpty())
        return;
    DeleteFileA(m_path, false);
    const QString schemaIni = GetFolderOfPath(m_path) + QStringLiteral("Schema.ini");
    if (IsFileExists(schemaIni))
        IniFile::Write(schemaIni, GetFileNameOfPath(m_path), std::nullopt, std::nullopt);
}

} // namespace fx
