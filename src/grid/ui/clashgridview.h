#pragma once
// The clash grid as reviewers see it: a group-by area on top, the table with a filter row under
// its header and the bands of the groups, and the caption that is the window's status line.
// The rows come from ClashGridModel; this widget keeps the user's place, the column settings of
// Config.ini and the grid's rules for filters, sorting, grouping, selection and the
// action_discipline editor.

#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

class QTableView;

namespace fx {

class ClashGridModel;

class ClashGridView : public QWidget
{
    Q_OBJECT

public:
    explicit ClashGridView(QWidget *parent = nullptr);
    ~ClashGridView() override;

    /// Asked by SetAutoFilter, when the setting wants it, whether to skip the automatic filter
    /// (the filter message dialog). Unset: never skipped.
    void SetFilterMessageHook(std::function<bool()> askSkip);

    /// Fetches the open project's clashes and binds them: column settings of Config.ini,
    /// SetAutoFilter, the filter cells, the place of the clash shown before. Finishes what it can
    /// and then raises what failed, as "ShowClashesInGrid: ...".
    void ShowClashesInGrid();
    /// Reads the rows again under the same filter and sort, keeping the place.
    void RefreshClashes();
    /// Saves the column settings and empties the grid: no rows, no groups, no filters, no caption.
    void FreeGrid();
    /// Shows `text`, translated, in the group area while the grid has no rows.
    void SetGridText(const QString &text);
    QString GridText() const;
    /// Writes order, width and filter of every column to Config.ini; nothing while no rows are bound.
    void SaveColumnSettings();
    /// Puts "Unapproved" into the status filter when it is empty and the AutoFilter settings
    /// and the filter message agree.
    void SetAutoFilter();
    /// The caption: the counts of the open project, and of the filtered rows.
    void UpdateStatusLine();
    QString Caption() const;

    /// True while rows are bound.
    bool IsOpen() const;
    /// The model of the bound rows; null when none are bound.
    ClashGridModel *Model() const;
    QTableView *Table() const;

    /// The clash ids of the selected rows, in row order, letting events run between rows. A
    /// selected band stands for no clash: commands act on the clash rows the user selected.
    QList<qint64> SelectedClashIds() const;
    /// The selected clash rows.
    int SelectedCount() const;
    /// Selects exactly the rows of these clashes; the first becomes the current row.
    void SelectClashes(const QList<qint64> &clashIds);
    /// The clash of the current row; -1 for none or a band.
    qint64 CurrentClashId() const;

    /// The text of a column's filter cell.
    QString FilterText(const QString &column) const;
    /// As if the user typed `text` into the column's filter cell and left it.
    void SetFilterText(const QString &column, const QString &text);
    /// As if the user clicked the column's header.
    void ClickHeader(const QString &column);
    /// The group columns in order.
    QStringList GroupColumns() const;
    /// As if the user dragged these headers into the group area, in this order.
    void SetGroupColumns(const QStringList &columns);
    /// The values the drop-down of a column offers: its filter cell's, or in a data row the
    /// action_discipline editor's. Guarded: asked again within a second, the last list.
    QStringList DropDownList(const QString &column, bool dataRow);

Q_SIGNALS:
    /// An edit of action_discipline stamped a row; the store has changes.
    void ClashesEdited();
    /// The caption changed.
    void StatusLineChanged(const QString &caption);

private:
    void Bind(std::unique_ptr<ClashGridModel> model);
    void Unbind();
    void ApplySavedWidths();
    // The caption; `exact` counts everything anew, else the rows in view are the model's.
    void ShowCounts(bool exact);
    // The filter routine for the cell the user left, and for all cells at once.
    void FilterCellLeft(int column);
    void RunFilters();
    void HeaderClicked(int column);
    void AddGroupColumn(const QString &column);
    void ApplyGroupColumns(const QStringList &columns);
    QStringList DropDown(const QString &column, bool dataRow);
    void OpenFilterDropDown(int column);

    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace fx
