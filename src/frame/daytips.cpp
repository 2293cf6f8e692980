#include "frame/daytips.h"

#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/programinfo.h"
#include "frame/translation.h"

#include <QFileInfo>
#include <QSettings>

namespace fx {

namespace {

const QString kShowTipsAtStartup = QStringLiteral("ShowTipsAtStartup");
const QString kCurrentTip = QStringLiteral("CurrentTip");

// The platform's own settings store (the registry on Windows, a .conf file under the user's
// configuration folder elsewhere), not Config.ini: the tips follow the user, not a project.
class OptionsStore
{
public:
    OptionsStore()
        : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Norvane"), ApplicationTitle())
    {
        m_settings.beginGroup(QStringLiteral("Options"));
    }
    QSettings *operator->() { return &m_settings; }

private:
    QSettings m_settings;
};

QString TipFileOrDefault(const QString &tipFile)
{
    return tipFile.isEmpty() ? ProgramDir() + QStringLiteral("tip.txt") : tipFile;
}

} // namespace

std::optional<DayTips> DayTips::ForStartup(const QString &tipFile)
{
    return Frame("DayTips::ForStartup", [&]() -> std::optional<DayTips> {
        const QString file = TipFileOrDefault(tipFile);
        if (!QFileInfo::exists(file) || !ShowTipsAtStartup())
            return std::nullopt;
        DayTips tips = Read(file);
        if (tips.Count() == 0)
            return std::nullopt;
        tips.StartRound();
        return tips;
    });
}

DayTips DayTips::Read(const QString &tipFile)
{
    return Frame("DayTips::Read", [&] {
        DayTips tips;
        QString text = ReadFile2String(TipFileOrDefault(tipFile));
        text.remove(QLatin1Char('\r'));
        for (const QString &line : text.split(QLatin1Char('\n')))
            if (!line.trimmed().isEmpty())
                tips.m_tips.append(line);
        return tips;
    });
}

QString DayTips::CurrentTip() const
{
    if (m_tips.isEmpty())
        return QString();
    // Looked up as the file has it: a language file's line holds no line break.
    return TranslateText(m_tips[m_index]).replace(QStringLiteral("///"), QStringLiteral("\n"));
}

void DayTips::NextTip()
{
    if (!m_tips.isEmpty())
        m_index = (m_index + 1) % int(m_tips.size());
}

void DayTips::StartRound()
{
    OptionsStore store;
    bool ok = false;
    const int stored = store->value(kCurrentTip, 0).toString().toInt(&ok);
    m_index = ok && stored >= 0 && stored < Count() ? stored : 0;
    store->setValue(kCurrentTip, QString::number(m_index + 1));
}

void DayTips::StoreCurrentTip() const
{
    OptionsStore store;
    store->setValue(kCurrentTip, QString::number(m_index + 1));
}

bool DayTips::ShowTipsAtStartup()
{
    OptionsStore store;
    return store->value(kShowTipsAtStartup, QStringLiteral("1")).toString() != QLatin1String("0");
}

void DayTips::SetShowTipsAtStartup(bool on)
{
    OptionsStore store;
    store->setValue(kShowTipsAtStartup, on ? QStringLiteral("1") : QStringLiteral("0"));
}

} // namespace fx
