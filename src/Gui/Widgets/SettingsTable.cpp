#include "Gui/Widgets/SettingsTable.h"

#include "Gui/Widgets/SearchField.h"
#include "Gui/Widgets/SettingsDelegate.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCollator>
#include <QHeaderView>
#include <QMouseEvent>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace ChipLoom {

namespace {

constexpr int AllColumns = -1;

bool takesEdits(const QModelIndex &index)
{
    return index.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
}

QString cellText(const QModelIndex &index)
{
    const QVariant tick = index.data(Qt::CheckStateRole);
    const QString text = index.data(Qt::DisplayRole).toString();
    if (!tick.isValid() || !text.isEmpty())
        return text;
    return tick.toInt() == Qt::Checked ? SettingsTable::tr("Yes") : SettingsTable::tr("No");
}

/// Filters rows by a text in any cell. Sorting puts numbers in the order of numbers, within texts as well: "PA9" stands
/// before "PA10".
class RowFilter : public QSortFilterProxyModel
{
public:
    RowFilter(QAbstractItemModel *model, QObject *parent) : QSortFilterProxyModel(parent)
    {
        m_collator.setNumericMode(true);
        setFilterCaseSensitivity(Qt::CaseInsensitive);
        setFilterKeyColumn(AllColumns);
        setSourceModel(model);
    }

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override
    {
        const QVariant a = left.data(Qt::CheckStateRole);
        const QVariant b = right.data(Qt::CheckStateRole);
        if (a.isValid() && b.isValid() && a != b)
            return a.toInt() < b.toInt();
        return m_collator.compare(left.data().toString(), right.data().toString()) < 0;
    }

private:
    QCollator m_collator{QLocale(QLocale::English)}; // the C locale knows no numbers
};

/// The width that a title needs when it is broken into two lines.
int widthInTwoLines(const QString &title, const QFontMetrics &metrics)
{
    int width = metrics.horizontalAdvance(title);
    for (int blank = title.indexOf(QLatin1Char(' ')); blank >= 0; blank = title.indexOf(QLatin1Char(' '), blank + 1))
        width = std::min(width, std::max(metrics.horizontalAdvance(title.left(blank)),
                                         metrics.horizontalAdvance(title.mid(blank + 1))));
    return width;
}

/// A click on an editable cell of a selected row keeps the selection, so that the edit that follows reaches it.
class RowsView : public QTableView
{
public:
    using QTableView::QTableView;

    /// The width that all cells of a column need; of a wide one, that nine of ten need.
    int usualWidth(int column) const
    {
        QStyleOptionViewItem option;
        option.initFrom(this);
        option.font = font();
        QVector<int> widths;
        for (int row = 0; row < model()->rowCount(); ++row)
            widths.append(itemDelegate()->sizeHint(option, model()->index(row, column)).width());
        if (widths.isEmpty())
            return 0;
        const auto usual = widths.end() - 1 - widths.size() / 10;
        std::nth_element(widths.begin(), usual, widths.end());
        const int widest = *std::max_element(usual, widths.end());
        return std::min(widest, std::max(*usual, fontMetrics().averageCharWidth() * 20));
    }

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override
    {
        if (event && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease)) {
            const auto *mouse = static_cast<const QMouseEvent *>(event);
            if (mouse->modifiers() == Qt::NoModifier && takesEdits(index) && selectionModel()->isSelected(index))
                return QItemSelectionModel::NoUpdate;
        }
        return QTableView::selectionCommand(index, event);
    }
};

} // namespace

QVariant SettingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(title(section)) : QVariant();
}

void SettingsModel::setKeys(const QStringList &keys)
{
    if (m_keys != keys) {
        beginResetModel();
        m_keys = keys;
        endResetModel();
    } else if (!keys.isEmpty()) {
        emit dataChanged(index(0, 0), index(int(keys.size()) - 1, columnCount() - 1));
    }
}

SettingsTable::SettingsTable(SettingsModel &model, QWidget *parent)
    : QWidget(parent), m_model(model), m_proxy(new RowFilter(&model, this)),
      m_filter(new SearchField(tr("Filter rows"))), m_view(new RowsView)
{
    m_view->setModel(m_proxy);
    m_view->setItemDelegate(new SettingsDelegate(*this));
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                            QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    m_view->setAlternatingRowColors(true);
    m_view->setWordWrap(false);
    m_view->setTextElideMode(Qt::ElideMiddle); // names in a list differ at their ends
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() * 3 / 2);
    m_view->horizontalHeader()->setStretchLastSection(true);
    QHeaderView *header = m_view->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter | Qt::Alignment(Qt::TextWordWrap));
    header->setHighlightSections(false);
    header->setMinimumHeight(header->fontMetrics().lineSpacing() * 5 / 2);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(AllColumns, Qt::AscendingOrder); // the model's order, until a header is clicked
    m_proxy->setDynamicSortFilter(true);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_filter);
    layout->addWidget(m_view, 1);
    addActions();

    connect(m_filter, &QLineEdit::textChanged, m_proxy, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_view, &QTableView::clicked, this,
            [this](const QModelIndex &index) { emit rowClicked(modelIndex(index).row()); });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &SettingsTable::selectionChanged);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &SettingsTable::selectionChanged);

    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, &SettingsTable::rememberSelection);
    connect(m_proxy, &QAbstractItemModel::modelReset, this, &SettingsTable::recallSelection);
}

void SettingsTable::addActions()
{
    const auto add = [this](QWidget *owner, const QString &text, const QKeySequence &key, auto run) {
        auto *action = new QAction(text, owner);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, run);
        owner->addAction(action);
    };
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    add(m_view, tr("Copy as Text"), QKeySequence::Copy, [this] { QApplication::clipboard()->setText(copiedText()); });
    add(m_view, tr("Select All"), QKeySequence::SelectAll, [this] { m_view->selectAll(); });
    add(this, tr("Filter rows"), QKeySequence::Find, [this] {
        m_filter->setFocus();
        m_filter->selectAll();
    });
}

QModelIndex SettingsTable::modelIndex(const QModelIndex &viewIndex) const
{
    return m_proxy->mapToSource(viewIndex);
}

QModelIndex SettingsTable::viewIndex(int modelRow, int column) const
{
    return m_proxy->mapFromSource(m_model.index(modelRow, column));
}

QVector<int> SettingsTable::selectedRows() const
{
    QVector<int> rows;
    const QModelIndexList selected = m_view->selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows.append(modelIndex(index).row());
    std::sort(rows.begin(), rows.end());
    const int current = modelIndex(m_view->currentIndex()).row();
    const auto first = std::find(rows.begin(), rows.end(), current);
    if (first != rows.end())
        std::rotate(rows.begin(), first, first + 1);
    return rows;
}

void SettingsTable::selectRow(int modelRow)
{
    const QModelIndex index = viewIndex(modelRow, 0);
    if (!index.isValid())
        return;
    m_view->setCurrentIndex(index);
    m_view->selectRow(index.row());
}

void SettingsTable::setForSelection(const QModelIndex &viewIndex, const QVariant &value, int role)
{
    const QModelIndex edited = modelIndex(viewIndex);
    QVector<int> rows{edited.row()};
    if (m_view->selectionModel()->isSelected(viewIndex)) {
        for (const int row : selectedRows()) {
            if (!rows.contains(row))
                rows.append(row);
        }
    }
    // By their keys: an edit may bring and take rows.
    QStringList keys;
    for (const int row : qAsConst(rows))
        keys.append(m_model.rowKey(row));
    for (const QString &key : qAsConst(keys)) {
        const int row = m_model.rowOf(key);
        const QModelIndex index = row < 0 ? QModelIndex() : m_model.index(row, edited.column());
        if (index.isValid() && takesEdits(index))
            m_model.setData(index, value, role);
    }
}

QString SettingsTable::copiedText() const
{
    QVector<int> rows;
    const QModelIndexList selected = m_view->selectionModel()->selectedRows();
    for (const QModelIndex &index : selected)
        rows.append(index.row());
    if (rows.isEmpty()) {
        rows.resize(m_proxy->rowCount());
        std::iota(rows.begin(), rows.end(), 0);
    }
    std::sort(rows.begin(), rows.end());
    QStringList cells;
    QStringList lines;
    for (int column = 0; column < m_proxy->columnCount(); ++column)
        cells.append(m_proxy->headerData(column, Qt::Horizontal).toString());
    lines.append(cells.join(QLatin1Char('\t')));
    for (const int row : qAsConst(rows)) {
        cells.clear();
        for (int column = 0; column < m_proxy->columnCount(); ++column)
            cells.append(cellText(m_proxy->index(row, column)));
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void SettingsTable::rememberSelection()
{
    m_selectedKeys.clear();
    for (const int row : selectedRows())
        m_selectedKeys.append(m_model.rowKey(row));
    m_currentColumn = std::max(0, m_view->currentIndex().column());
}

void SettingsTable::recallSelection()
{
    QItemSelectionModel *selection = m_view->selectionModel();
    bool isFirst = true;
    for (const QString &key : qAsConst(m_selectedKeys)) {
        const QModelIndex index = viewIndex(m_model.rowOf(key), m_currentColumn);
        if (!index.isValid())
            continue;
        if (isFirst)
            selection->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        selection->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        isFirst = false;
    }
    m_selectedKeys.clear();
}

void SettingsTable::fitColumns()
{
    const QFontMetrics metrics = m_view->horizontalHeader()->fontMetrics();
    const int most = metrics.averageCharWidth() * 36;
    const int frame = metrics.height() * 3 / 2;                           // margins and the arrow of the sorting
    for (int column = 0; column + 1 < m_proxy->columnCount(); ++column) { // the last one takes what is left
        const QString title = m_proxy->headerData(column, Qt::Horizontal).toString();
        const int content = static_cast<RowsView *>(m_view)->usualWidth(column) + metrics.averageCharWidth();
        m_view->setColumnWidth(column, std::max(widthInTwoLines(title, metrics) + frame, std::min(most, content)));
    }
}

} // namespace ChipLoom
