#include "Gui/Clock/ClockSolutionsDialog.h"

#include "Gui/App/Style.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace ChipLoom {

ClockSolutionsDialog::ClockSolutionsDialog(QWidget *parent)
    : QDialog(parent, Qt::Popup), m_table(new QTableWidget(this)), m_hint(new QLabel(this))
{
    m_table->setColumnCount(5);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setShowGrid(false);
    m_table->setTabKeyNavigation(false);
    Style::setRole(m_hint, Style::Role::Hint);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_table);
    layout->addWidget(m_hint);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &ClockSolutionsDialog::choose);
}

void ClockSolutionsDialog::setSolutions(const QVector<ClockSolutionRow> &rows)
{
    m_table->setHorizontalHeaderLabels({tr("PLL"), tr("SCLK"), tr("Error"), tr("AHB / APB1 / APB2"), tr("USB")});
    m_hint->setText(tr("Return or a double click takes the chosen solution."));
    m_table->setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        const ClockSolutionRow &solution = rows[row];
        const std::array texts{solution.pll, solution.sclk, solution.error, solution.buses, solution.usb};
        for (int column = 0; column < int(texts.size()); ++column)
            m_table->setItem(row, column, new QTableWidgetItem(texts[std::size_t(column)]));
    }
    m_table->resizeRowsToContents();
    m_table->setCurrentCell(rows.isEmpty() ? -1 : 0, 0);
    m_table->setFocus();

    int width = 4 + m_table->frameWidth() * 2;
    for (int column = 0; column < m_table->columnCount(); ++column)
        width += m_table->columnWidth(column);
    m_table->setMinimumWidth(width);
    const int rowHeight = rows.isEmpty() ? 24 : m_table->rowHeight(0);
    m_table->setFixedHeight(m_table->horizontalHeader()->sizeHint().height() + rowHeight * qMax(1, rows.size()) + 6);
    adjustSize();
}

void ClockSolutionsDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        choose(m_table->currentRow());
    else
        QDialog::keyPressEvent(event);
}

void ClockSolutionsDialog::choose(int row)
{
    accept();
    if (row >= 0)
        emit chosen(row);
}

} // namespace ChipLoom
