#pragma once
// The tips of the day: one a line in tip.txt, "///" a line break; where the user stopped and
// whether tips show at all are kept in the program-settings store under the application's title.

#include <QString>
#include <QStringList>

#include <optional>

namespace fx {

class DayTips
{
public:
    /// The tips of `tipFile` (empty: tip.txt in the program's folder) to show at this start:
    /// nothing when the file is missing, holds no tip, or ShowTipsAtStartup is "0".
    static std::optional<DayTips> ForStartup(const QString &tipFile = QString());

    /// The tips of a file, empty lines dropped, without looking at the settings.
    static DayTips Read(const QString &tipFile);

    /// The tip now shown, "///" turned into line breaks and translated.
    QString CurrentTip() const;
    /// Goes on to the next tip, after the last to the first.
    void NextTip();
    /// Takes the stored CurrentTip (a number past the end starts at 0), then moves the stored
    /// number one on, so the next start shows the next tip.
    void StartRound();
    /// Stores the number of the next tip to show (on closing the window).
    void StoreCurrentTip() const;

    int Count() const { return int(m_tips.size()); }
    int Index() const { return m_index; }

    static bool ShowTipsAtStartup();
    static void SetShowTipsAtStartup(bool on);

private:
    QStringList m_tips;
    int m_index = 0;
};

} // namespace fx
