#pragma once
// The table of the clash grid: draws the band of a group across the whole row, its arrow and
// its counts, and opens or closes it at a click on it or with the keys Right and Left, + and -.

#include <QTableView>

namespace fx {

class ClashGridModel;

/// The table view of the clash grid, with group bands.
class GridTable : public QTableView
{
    Q_OBJECT

public:
    explicit GridTable(QWidget *parent = nullptr);

    /// Opens or closes the band at `row` as the user's gesture does: a failure is shown.
    void SetGroupOpen(int row, bool open);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    ClashGridModel *GridModel() const;
    void PaintBand(QPainter &painter, int row) const;
    // True when the key opened, closed or left a band (or closed a clash's group).
    bool GroupKey(int key);
    void MakeCurrent(int row);

    int m_pressedBand = -1; ///< the band under a plain left press, opened or closed at its release
};

} // namespace fx
