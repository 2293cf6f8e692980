#pragma once
// frmDVCS: the offsets of the design volume coordinate system, set from the options.

#include <QDialog>
#include <QString>

#include <array>
#include <optional>

class QLineEdit;

namespace fx {

class FrmDVCS : public QDialog
{
    Q_OBJECT

public:
    FrmDVCS(const std::array<QString, 3> &centres, const QString &masterUnits, QWidget *parent = nullptr);

    /// Shows the three offsets modally; the offsets as OK left them, none when cancelled.
    static std::optional<std::array<QString, 3>> ShowMe(const std::array<QString, 3> &centres,
                                                         const QString &masterUnits, QWidget *parent);

    std::array<QString, 3> Centres() const;

private:
    std::array<QLineEdit *, 3> m_boxes{};
};

} // namespace fx
