#pragma once
// The list that drops down from a filter cell: the values now in view, one click to filter.

#include <QFrame>
#include <QStringList>

class QListView;

namespace fx {

class StyledValueModel;

/// A popup list of filter values under a filter cell.
class ValuePopup : public QFrame
{
    Q_OBJECT

public:
    explicit ValuePopup(QWidget *parent = nullptr);

    /// Shows the `values` of `column` under `anchor`, at least `width` wide, with `current`
    /// selected if listed; each value looks as it does in its cells.
    void ShowValues(const QString &column, const QStringList &values, const QString &current, const QWidget *anchor,
                    int width);
    /// The values listed.
    QStringList Values() const;
    /// Picks a value as a click would.
    void Choose(const QString &value);

Q_SIGNALS:
    /// A value was picked; the popup is closed.
    void Chosen(const QString &value);

private:
    QListView *m_list;
    StyledValueModel *m_values;
};

} // namespace fx
