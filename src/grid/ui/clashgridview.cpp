#include "grid/ui/clashgridview.h"
#include "grid/ui/clashgridviewparts.h"

#include "frame/events.h"
#include "frame/failure.h"
#include "frame/messagebox.h"
#include "frame/translation.h"
#include "frame/ui/translateform.h"
#include "frame/ui/waitcursor.h"
#include "grid/autofilter.h"
#include "grid/columnsettings.h"
#include "grid/ui/clashgriddelegate.h"
#include "grid/ui/grouparea.h"
#include "grid/ui/valuepopup.h"
#include "store/clashview.h"
#include "store/statusline.h"

#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>
#include <vector>

namespace fx {

namespace {

const QString kStatus = QStringLiteral("status");
const QString kReviewDate = QStringLiteral("recent_review_date");
const QString kActionDiscipline = QStringLiteral("action_discipline");

} // namespace

ClashGridView::ClashGridView(QWidget *parent) : QWidget(parent), m_parts(std::make_unique<Parts>())
{
    Parts &p = *m_parts;
    p.groupArea = new GroupArea(this);
    p.caption = new QLabel(this);
    p.caption->setObjectName(QStringLiteral("gridCaption"));
    // Counts and names, already in the user's language: no text to look up.
    p.caption->setProperty(NoTranslateProperty, true);
    p.table = new GridTable(this);
    p.table->setObjectName(QStringLiteral("clashGrid"));
    p.header = new FilterHeader(p.table);
    p.table->setHorizontalHeader(p.header);
    p.popup = new ValuePopup(this);

    GridTable *table = p.table;
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setWordWrap(false);
    table->setSortingEnabled(false);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
                           | QAbstractItemView::EditKeyPressed);
    table->verticalHeader()->hide();
    // Fixed rows: the view then never asks half a million rows for their heights.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    auto *delegate = new ClashGridDelegate([this] { return DropDown(kActionDiscipline, true); }, table);
    table->setItemDelegate(delegate);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(p.groupArea);
    layout->addWidget(p.caption);
    layout->addWidget(table, 1);
    p.groupArea->ShowText(QString());

    // The header moves its sections with the scroll bar without telling anyone.
    connect(table->horizontalScrollBar(), &QScrollBar::valueChanged, p.header, &FilterHeader::AdjustCells);
    connect(p.header, &FilterHeader::FilterLeft, this, [this](int column) { FilterCellLeft(column); });
    connect(p.header, &FilterHeader::DropDownRequested, this, [this](int column) { OpenFilterDropDown(column); });
    connect(p.header, &QHeaderView::sectionClicked, this, [this](int column) { HeaderClicked(column); });
    connect(p.header, &FilterHeader::GroupRequested, this, [this](int column) {
        if (m_parts->model)
            AddGroupColumn(m_parts->model->ColumnNames().value(column));
    });
    connect(p.groupArea, &GroupArea::ColumnDropped, this, [this](const QString &column) { AddGroupColumn(column); });
    connect(p.groupArea, &GroupArea::ColumnRemoved, this, [this](const QString &column) {
        QStringList columns = m_parts->groupColumns;
        columns.removeAll(column);
        ApplyGroupColumns(columns);
    });
    connect(p.popup, &ValuePopup::Chosen, this, [this](const QString &value) {
        const int column = m_parts->popupColumn;
        m_parts->header->SetCellText(column, value);
        FilterCellLeft(column);
    });
    // Opened once the click is through, not inside the view's own handling of it.
    connect(delegate, &ClashGridDelegate::ArrowClicked, this, [table](const QModelIndex &index) {
        QTimer::singleShot(0, table, [table, cell = QPersistentModelIndex(index)] {
            if (cell.isValid())
                table->edit(cell);
        });
    });
    connect(delegate, &ClashGridDelegate::Edited, this, [this] {
        // An edit leaves every status as it was; the counts of the rows in view still hold.
        ShowCounts(false);
        Q_EMIT ClashesEdited();
    });
}

ClashGridView::~ClashGridView()
{
    // The table must let go of the model before the model goes.
    Unbind();
}

void ClashGridView::SetFilterMessageHook(std::function<bool()> askSkip)
{
    m_parts->askSkip = std::move(askSkip);
}

void ClashGridView::Bind(std::unique_ptr<ClashGridModel> model)
{
    Parts &p = *m_parts;
    QItemSelectionModel *oldSelection = p.table->selectionModel();
    p.model = std::move(model);
    p.table->setModel(p.model.get());
    delete oldSelection;
    connect(p.model.get(), &QAbstractItemModel::modelReset, this, [this] { ++m_parts->resets; });
    // Rows come and go also as groups open and close.
    connect(p.model.get(), &QAbstractItemModel::rowsInserted, this, [this] { ++m_parts->resets; });
    connect(p.model.get(), &QAbstractItemModel::rowsRemoved, this, [this] { ++m_parts->resets; });
    p.header->setSortIndicator(-1, Qt::AscendingOrder);
    p.header->SetFilterCells(p.model->ColumnNames(), [](const QString &column) { return column != kReviewDate; });
    // The header grew by the filter row: the table places its rows below it again.
    p.table->doItemsLayout();
    p.groupArea->ShowColumns(p.groupColumns);
}

void ClashGridView::Unbind()
{
    Parts &p = *m_parts;
    if (!p.model)
        return;
    QItemSelectionModel *oldSelection = p.table->selectionModel();
    p.table->setModel(nullptr);
    delete oldSelection;
    p.model.reset();
    ++p.resets;
}

void ClashGridView::ShowClashesInGrid()
{
    WaitCursor wait;
    Frame("ShowClashesInGrid", [&] {
        Parts &p = *m_parts;
        p.totalApproved.reset();
        std::optional<Failure> kept;
        qint64 keepClash = -1;
        QHash<QString, QString> carried;
        QList<QVariantList> openGroups;
        if (p.model) {
            keepClash = CurrentClashId();
            openGroups = p.model->OpenGroupPaths();
            // A rebuild keeps the user's columns as they are now, the filter of status too.
            SaveColumnSettings();
            for (int column = 0; column < p.model->columnCount(); ++column)
                carried.insert(p.model->ColumnNames().at(column), p.header->CellText(column));
        }
        try {
            Unbind();
            GetClashes();
            Bind(std::make_unique<ClashGridModel>());
            const QStringList &names = p.model->ColumnNames();
            const int count = int(names.size());
            for (int column = 0; column < count; ++column) {
                if (const auto order = SavedColumnOrder(names.at(column), count))
                    p.header->moveSection(p.header->visualIndex(column), *order);
                const QString saved = SavedColumnFilter(names.at(column));
                p.header->SetCellText(column, saved.isEmpty() ? carried.value(names.at(column)) : saved);
            }
            SetAutoFilter();
            QStringList groups = p.groupColumns;
            groups.removeIf([&](const QString &column) { return !names.contains(column); });
            if (!groups.isEmpty()) {
                p.model->SetGroupColumns(groups);
                // The groups the user had open stay open, when the grouping is still the same.
                if (groups == p.groupColumns)
                    p.model->OpenGroups(openGroups);
            }
            p.groupColumns = groups;
            p.groupArea->ShowColumns(groups);
            const int row = keepClash < 0 || p.model->rowCount() == 0 ? -1 : p.model->RowOfClash(keepClash);
            if (row >= 0)
                p.table->selectionModel()->setCurrentIndex(p.model->index(row, 0), QItemSelectionModel::ClearAndSelect
                                                                                      | QItemSelectionModel::Rows);
        } catch (const Failure &failure) {
            kept = failure;
        }
        if (!p.model) {
            p.header->SetFilterCells({}, {});
            p.groupArea->ShowText(p.gridText);
            UpdateStatusLine();
        } else {
            ApplySavedWidths();
            RunFilters();
        }
        if (kept)
            throw *kept;
    });
}

void ClashGridView::ApplySavedWidths()
{
    Parts &p = *m_parts;
    const QStringList &names = p.model->ColumnNames();
    for (int column = 0; column < int(names.size()); ++column) {
        const auto width = SavedColumnWidth(names.at(column));
        if (!width)
            continue;
        if (*width >= p.table->width())
            p.table->resizeColumnToContents(column);
        else
            p.header->resizeSection(column, *width);
    }
}

void ClashGridView::RefreshClashes()
{
    Parts &p = *m_parts;
    if (!p.model)
        return;
    WaitCursor wait;
    Frame("RefreshClashes", [&] {
        const GridPlace place = p.Remember();
        p.totalApproved.reset();
        p.model->Refresh();
        SetAutoFilter();
        DoEvents();
        if (!p.model)
            return;
        RunFilters();
        p.Restore(place);
    });
}

void ClashGridView::FreeGrid()
{
    WaitCursor wait;
    Frame("FreeGrid", [&] {
        Parts &p = *m_parts;
        SaveColumnSettings();
        p.groupColumns.clear();
        Unbind();
        ClashRecordset() = ClashRecordsetState();
        p.header->SetFilterCells({}, {});
        p.table->doItemsLayout();
        p.groupArea->ShowText(p.gridText);
        UpdateStatusLine();
    });
}

void ClashGridView::SetGridText(const QString &text)
{
    m_parts->gridText = TranslateText(text);
    if (!m_parts->model)
        m_parts->groupArea->ShowText(m_parts->gridText);
}

QString ClashGridView::GridText() const
{
    return m_parts->groupArea->Text();
}

void ClashGridView::SaveColumnSettings()
{
    Parts &p = *m_parts;
    if (!p.model || !ClashRecordset().open)
        return;
    QList<SavedColumn> columns;
    for (int column = 0; column < p.model->columnCount(); ++column)
        columns.append({p.model->ColumnNames().at(column), p.header->visualIndex(column), p.header->sectionSize(column),
                        p.header->CellText(column)});
    fx::SaveColumnSettings(columns);
}

void ClashGridView::SetAutoFilter()
{
    Parts &p = *m_parts;
    const int status = p.model ? p.model->ColumnOf(kStatus) : -1;
    if (status < 0)
        return;
    const QString text = AutoStatusFilter(p.header->CellText(status), p.askSkip);
    if (!text.isEmpty())
        p.header->SetCellText(status, text);
}

void ClashGridView::UpdateStatusLine()
{
    ShowCounts(true);
}

void ClashGridView::ShowCounts(bool exact)
{
    Parts &p = *m_parts;
    QString caption;
    if (p.model) {
        try {
            if (exact || !p.totalApproved)
                p.totalApproved = GetTotalApprovedClashCount();
            // After a filter or a sort the rows in view are the model's, counted as it read them.
            const ClashCounts counts = exact ? ClashCounts{GetTotalClashCount(), *p.totalApproved, GetClashCount(), GetApprovedClashCount()}
                                             : ClashCounts{GetTotalClashCount(), *p.totalApproved, p.model->ClashCount(),
                                                           p.model->ApprovedRows()};
            caption = ClashCountsCaption(counts);
        } catch (const std::exception &) {
            p.totalApproved.reset();
            caption.clear();
        }
    }
    if (caption == p.caption->text())
        return;
    p.caption->setText(caption);
    Q_EMIT StatusLineChanged(caption);
}

QString ClashGridView::Caption() const
{
    return m_parts->caption->text();
}

bool ClashGridView::IsOpen() const
{
    return bool(m_parts->model);
}

ClashGridModel *ClashGridView::Model() const
{
    return m_parts->model.get();
}

QTableView *ClashGridView::Table() const
{
    return m_parts->table;
}

QList<qint64> ClashGridView::SelectedClashIds() const
{
    Parts &p = *m_parts;
    QList<qint64> ids;
    if (!p.model)
        return ids;
    const std::vector<int> rows = SelectedRows(*p.table, *p.model);
    const quint64 resets = p.resets;
    const ClashGridModel *model = p.model.get();
    for (const int row : rows) {
        ids << model->ClashIdOfRow(row);
        DoEventsIfInput();
        // What ran in between read the rows anew, and with that the selection went.
        if (p.model.get() != model || p.resets != resets)
            return {};
    }
    return ids;
}

int ClashGridView::SelectedCount() const
{
    return m_parts->model ? int(SelectedRows(*m_parts->table, *m_parts->model).size()) : 0;
}

void ClashGridView::SelectClashes(const QList<qint64> &clashIds)
{
    if (m_parts->model)
        SelectClashRows(*m_parts->table, *m_parts->model, clashIds);
}

qint64 ClashGridView::CurrentClashId() const
{
    const QModelIndex current = m_parts->table->currentIndex();
    return m_parts->model && current.isValid() ? m_parts->model->ClashIdOfRow(current.row()) : -1;
}

} // namespace fx
