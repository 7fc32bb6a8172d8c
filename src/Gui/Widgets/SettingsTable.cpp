#include "Gui/Widgets/SettingsTable.h"

#include "Gui/Widgets/SearchField.h"
#include "Gui/Widgets/SettingsDelegate.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCollator>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTextBoundaryFinder>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>
#include <numeric>

namespace ChipLoom {

namespace {

constexpr int AllColumns = -1;
constexpr int GridLine = 2;       // with the pixel that rounding may take
constexpr int TitleMargins = 12;  // what the style leaves beside a title, and its line
constexpr int WidestColumn = 36;  // in letters of usual width
constexpr int FewestLetters = 20; // of a text that is cut in its middle
constexpr int LeastLetters = 15;  // of one that would push a column out of sight otherwise
constexpr int TypedLetters = 12;  // room for what the user has not typed yet

bool takesEdits(const QModelIndex &index)
{
    return index.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
}

/// Whether the user may write what he likes.
bool isTyped(const QModelIndex &index)
{
    return (index.flags() & Qt::ItemIsEditable) && !index.data(SettingsModel::ChoicesRole).isValid();
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

/// The width that a title needs when it is broken into that many lines at most.
int widthInLines(int lines, const QString &title, const QFontMetrics &metrics)
{
    int width = metrics.horizontalAdvance(title);
    if (lines == 1)
        return width;
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, title);
    breaks.setPosition(1); // Chinese may break anywhere: no letter stands alone
    for (int at = breaks.toNextBoundary(); at > 0 && at + 1 < title.size(); at = breaks.toNextBoundary())
        width = std::min(width, std::max(metrics.horizontalAdvance(title.left(at).trimmed()),
                                         widthInLines(lines - 1, title.mid(at), metrics)));
    return width;
}

/// A click on an editable cell of a selected row keeps the selection, so that the edit that follows reaches it.
class RowsView : public QTableView
{
public:
    using QTableView::QTableView;

    struct Widths
    {
        int usual; ///< what all cells of the column need; of a wide one, nine of ten
        int most;  ///< what three of four need
        int all;   ///< what the widest needs
    };
    Widths widths(int column) const
    {
        QStyleOptionViewItem option;
        option.initFrom(this);
        option.font = font();
        QVector<int> widths;
        QHash<std::pair<QString, bool>, int> known; // what reads the same is as wide
        const int least = isTyped(model()->index(0, column)) ? fontMetrics().averageCharWidth() * TypedLetters : 0;
        for (int row = 0; row < model()->rowCount(); ++row) {
            const QModelIndex index = model()->index(row, column);
            int &width = known[{cellText(index), index.data(Qt::FontRole).isValid()}];
            if (width == 0)
                width = std::max(least, itemDelegate()->sizeHint(option, index).width());
            widths.append(width);
        }
        if (widths.isEmpty())
            return {0, 0, 0};
        std::sort(widths.begin(), widths.end());
        const int usual = widths.at(widths.size() - 1 - widths.size() / 10);
        return {std::min(widths.last(), std::max(usual, fontMetrics().averageCharWidth() * 20)),
                widths.at((widths.size() - 1) * 3 / 4), widths.last()};
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
      m_filter(new SearchField(tr("Filter rows"), this)), m_view(new RowsView(this))
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
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->viewport()->installEventFilter(this);
    QHeaderView *header = m_view->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter | Qt::Alignment(Qt::TextWordWrap));
    header->setHighlightSections(false);
    connect(header, &QHeaderView::sectionResized, this, [this, header](int column) {
        if (m_isSharing || m_hasOwnWidths)
            return;
        m_hasOwnWidths = true;
        header->setStretchLastSection(column + 1 < header->count());
    });
    header->setSortIndicator(AllColumns, Qt::AscendingOrder); // the model's order, until a header is clicked
    m_view->setSortingEnabled(true);
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
    if (!m_columnNeeds.isEmpty() && m_columnNeeds.size() != m_proxy->columnCount())
        fitColumns();
}

void SettingsTable::fitColumns()
{
    const QFontMetrics metrics = m_view->horizontalHeader()->fontMetrics();
    const int letter = metrics.averageCharWidth();
    m_columnNeeds.clear();
    for (int column = 0; column < m_proxy->columnCount(); ++column) {
        const QString title = m_proxy->headerData(column, Qt::Horizontal).toString();
        const int textWidth = widthInLines(2, title, metrics);
        // The arrow of the sorting stands beside a line in the middle; of two lines it hides next to nothing.
        const bool isOneLine = textWidth == metrics.horizontalAdvance(title);
        const int margins = TitleMargins + (isOneLine ? metrics.height() / 2 : 0);
        const int titleWidth = textWidth + margins;
        const int narrowTitle = widthInLines(3, title, metrics) + margins;
        const RowsView::Widths content = static_cast<RowsView *>(m_view)->widths(column);
        const int wanted = std::min(content.usual + letter, letter * WidestColumn);
        const int least = std::min(wanted, std::max(content.most + GridLine, letter * FewestLetters));
        const int cut = std::min(least, letter * LeastLetters);
        m_columnNeeds.append({std::max(titleWidth, wanted), std::max(narrowTitle, least), std::max(narrowTitle, cut),
                              content.all + GridLine});
    }
    m_hasOwnWidths = false;
    m_view->horizontalHeader()->setStretchLastSection(false);
    shareWidth();
}

/// Where room is short the widest columns give some, as long as most of their cells stay whole; where that is not
/// enough, optional ones stay away, then more cells are cut, and only at last the table scrolls. What is left makes
/// single wide cells whole; the last column takes the rest.
void SettingsTable::shareWidth()
{
    if (m_hasOwnWidths || m_columnNeeds.isEmpty())
        return;
    const int room = m_view->viewport()->width();
    QVector<int> columns(m_columnNeeds.size());
    std::iota(columns.begin(), columns.end(), 0);
    int ColumnNeed::*least = &ColumnNeed::least;
    const auto widthAt = [&](int column, int widest) {
        const ColumnNeed &need = m_columnNeeds.at(column);
        return std::max(need.*least, std::min(need.wanted, widest));
    };
    const auto sumAt = [&](int widest) {
        return std::accumulate(columns.begin(), columns.end(), 0,
                               [&](int sum, int column) { return sum + widthAt(column, widest); });
    };
    for (int column = m_columnNeeds.size() - 1; column > 0 && sumAt(0) > room; --column) {
        if (m_model.isOptional(column))
            columns.removeOne(column);
    }
    if (sumAt(0) > room) {
        least = &ColumnNeed::cut;
        if (sumAt(0) > room)
            least = &ColumnNeed::least;
    }
    int widest = std::numeric_limits<int>::max();
    if (sumAt(widest) > room) {
        for (widest = room; widest > 0 && sumAt(widest) > room;)
            --widest;
    }
    const QScopedValueRollback<bool> sharing(m_isSharing, true);
    QHeaderView *header = m_view->horizontalHeader();
    int left = std::max(0, room - sumAt(widest));
    for (int column = 0; column < m_columnNeeds.size(); ++column)
        header->setSectionHidden(column, !columns.contains(column));
    for (const int column : qAsConst(columns)) {
        const int width = widthAt(column, widest);
        const int more = column == columns.last() ? left : std::clamp(m_columnNeeds.at(column).whole - width, 0, left);
        header->resizeSection(column, width + more);
        left -= more;
    }
    fitTitles();
}

/// As high as the titles are in the widths of their columns, and two lines at least.
void SettingsTable::fitTitles()
{
    QHeaderView *header = m_view->horizontalHeader();
    const QFontMetrics metrics = header->fontMetrics();
    int height = metrics.lineSpacing() * 2;
    for (int column = 0; column < m_columnNeeds.size(); ++column) {
        const QRect place(0, 0, header->sectionSize(column) - TitleMargins + GridLine, height);
        if (!header->isSectionHidden(column))
            height = std::max(height,
                              metrics
                                  .boundingRect(place, Qt::TextWordWrap,
                                                m_model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString())
                                  .height());
    }
    header->setMinimumHeight(height + metrics.lineSpacing() / 2);
}

bool SettingsTable::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        shareWidth();
    return QWidget::eventFilter(watched, event);
}

} // namespace ChipLoom
