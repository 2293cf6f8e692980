#pragma once
// The list that drops down from a filter cell: the values now in view, one click to filter.

#include <QFrame>
#include <QStringList>

class QListView;
class QStringListModel;

namespace fx {

/// A popup list of filter values under a filter cell.
class ValuePopup : public QFrame
{
    Q_OBJECT

public:
    explicit ValuePopup(QWidget *parent = nullptr);

    /// Shows `values` under `anchor`, at least `width` wide, with `current` selected if listed.
    void ShowValues(const QStringList &values, const QString &current, const QWidget *anchor, int width);
    /// The values listed.
    QStringList Values() const;
    /// Picks a value as a click would.
    void Choose(const QString &value);

Q_SIGNALS:
    /// A value was picked; the popup is closed.
    void Chosen(const QString &value);

private:
    QListView *m_list;
    QStringListModel *m_values;
};

} // namespace fx
