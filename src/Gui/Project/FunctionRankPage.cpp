#include "Gui/Project/FunctionRankPage.h"

#include "GenerateCode/FunctionRank.h"
#include "Gui/App/Style.h"
#include "Gui/Project/ProjectPrompts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace ChipLoom {

namespace {

enum Column { NumberColumn, FunctionColumn, InstanceColumn, NoCallColumn, Columns };

} // namespace

FunctionRankPage::FunctionRankPage(UserPrompt &prompt, QWidget *parent)
    : QWidget(parent), m_prompt(prompt), m_FuncNameTableWidget(new QTableWidget(0, Columns)),
      m_allCallsCheckBox(new QCheckBox(tr("Leave out all calls"))), m_btnRankReset(new QPushButton(tr("Reset"))),
      m_btnMoveUp(new QPushButton(tr("Move Up"))), m_btnMoveDown(new QPushButton(tr("Move Down")))
{
    m_FuncNameTableWidget->setObjectName(QStringLiteral("m_FuncNameTableWidget"));
    m_FuncNameTableWidget->setHorizontalHeaderLabels(
        {tr("Rank"), tr("Function Name"), tr("Instance Name"), tr("Do Not Call")});
    m_FuncNameTableWidget->verticalHeader()->hide();
    m_FuncNameTableWidget->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_FuncNameTableWidget->horizontalHeader()->setSectionResizeMode(FunctionColumn, QHeaderView::Stretch);
    m_FuncNameTableWidget->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_FuncNameTableWidget->setSelectionMode(QAbstractItemView::SingleSelection);
    m_FuncNameTableWidget->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_FuncNameTableWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    m_allCallsCheckBox->setObjectName(QStringLiteral("m_allCallsCheckBox"));
    m_btnRankReset->setObjectName(QStringLiteral("m_btnRankReset"));
    m_btnMoveUp->setObjectName(QStringLiteral("m_btnMoveUp"));
    m_btnMoveDown->setObjectName(QStringLiteral("m_btnMoveDown"));

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_allCallsCheckBox);
    buttons->addStretch();
    for (QPushButton *button : {m_btnRankReset, m_btnMoveUp, m_btnMoveDown})
        buttons->addWidget(button);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_FuncNameTableWidget);

    connect(m_btnMoveUp, &QPushButton::clicked, this, &FunctionRankPage::slot_MoveUP_Action);
    connect(m_btnMoveDown, &QPushButton::clicked, this, &FunctionRankPage::slot_MoveDOWN_Action);
    connect(m_btnRankReset, &QPushButton::clicked, this, &FunctionRankPage::RankReset_btnSlot);
    connect(m_allCallsCheckBox, &QCheckBox::clicked, this, &FunctionRankPage::allCallsChanged);
    connect(m_FuncNameTableWidget, &QTableWidget::cellChanged, this, &FunctionRankPage::MainDoNotCall_CheckBox_Changed);
    connect(m_FuncNameTableWidget, &QTableWidget::currentCellChanged, this, &FunctionRankPage::updateControls);
    connect(m_FuncNameTableWidget, &QTableWidget::customContextMenuRequested, this, &FunctionRankPage::showMenu);
}

void FunctionRankPage::setRank(const QList<MainFuncNameForRank> &rank)
{
    m_ValidFuncNameForRank = rank;
    CreateValidFuncNameTable();
}

void FunctionRankPage::CreateValidFuncNameTable()
{
    const QSignalBlocker blocker(m_FuncNameTableWidget);
    const int current = currentRow();
    m_FuncNameTableWidget->setRowCount(m_ValidFuncNameForRank.size());
    for (int row = 0; row < m_ValidFuncNameForRank.size(); ++row)
        AddFunctionNameToTable(row);
    m_FuncNameTableWidget->setCurrentCell(current, FunctionColumn);
    updateControls();
}

void FunctionRankPage::AddFunctionNameToTable(int row)
{
    const MainFuncNameForRank &function = m_ValidFuncNameForRank.at(row);
    const QStringList texts{QString::number(row + 1), function.FuncName, function.InstanceName, QString()};
    for (int column = 0; column < Columns; ++column) {
        auto *item = new QTableWidgetItem(texts.at(column));
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        if (function.FixPosFlag)
            item->setForeground(Style::Muted);
        if (column == NoCallColumn) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(function.MainDoNotCallFlag ? Qt::Checked : Qt::Unchecked);
            item->setToolTip(tr("The function is generated, but main does not call it."));
        }
        m_FuncNameTableWidget->setItem(row, column, item);
    }
}

int FunctionRankPage::currentRow() const
{
    return m_FuncNameTableWidget->currentRow();
}

bool FunctionRankPage::canMoveUp(int row) const
{
    return row > 0 && row < m_ValidFuncNameForRank.size() && !m_ValidFuncNameForRank.at(row).FixPosFlag &&
           !m_ValidFuncNameForRank.at(row - 1).FixPosFlag;
}

bool FunctionRankPage::canMoveDown(int row) const
{
    return row >= 0 && row + 1 < m_ValidFuncNameForRank.size() && !m_ValidFuncNameForRank.at(row).FixPosFlag;
}

void FunctionRankPage::swapWithNext(int row, int current)
{
    m_ValidFuncNameForRank.swapItemsAt(row, row + 1);
    m_FuncNameTableWidget->setCurrentCell(current, FunctionColumn);
    CreateValidFuncNameTable();
}

void FunctionRankPage::slot_MoveUP_Action()
{
    if (canMoveUp(currentRow()))
        swapWithNext(currentRow() - 1, currentRow() - 1);
}

void FunctionRankPage::slot_MoveDOWN_Action()
{
    if (canMoveDown(currentRow()))
        swapWithNext(currentRow(), currentRow() + 1);
}

void FunctionRankPage::RankReset_btnSlot()
{
    if (ProjectPrompts::mayResetRanking(m_prompt))
        setRank(resetFunctionRank(m_ValidFuncNameForRank));
}

void FunctionRankPage::MainDoNotCall_CheckBox_Changed(int row, int column)
{
    if (column != NoCallColumn)
        return;
    m_ValidFuncNameForRank[row].MainDoNotCallFlag =
        m_FuncNameTableWidget->item(row, column)->checkState() == Qt::Checked;
    updateControls();
}

void FunctionRankPage::allCallsChanged(bool checked)
{
    for (MainFuncNameForRank &function : m_ValidFuncNameForRank)
        function.MainDoNotCallFlag = checked;
    CreateValidFuncNameTable();
}

void FunctionRankPage::showMenu(const QPoint &position)
{
    QMenu menu(this);
    menu.addAction(m_btnMoveUp->text(), this, &FunctionRankPage::slot_MoveUP_Action)
        ->setEnabled(canMoveUp(currentRow()));
    menu.addAction(m_btnMoveDown->text(), this, &FunctionRankPage::slot_MoveDOWN_Action)
        ->setEnabled(canMoveDown(currentRow()));
    menu.exec(m_FuncNameTableWidget->viewport()->mapToGlobal(position));
}

void FunctionRankPage::updateControls()
{
    m_btnMoveUp->setEnabled(canMoveUp(currentRow()));
    m_btnMoveDown->setEnabled(canMoveDown(currentRow()));
    m_allCallsCheckBox->setChecked(!m_ValidFuncNameForRank.isEmpty() &&
                                   std::all_of(m_ValidFuncNameForRank.begin(), m_ValidFuncNameForRank.end(),
                                               [](const MainFuncNameForRank &f) { return f.MainDoNotCallFlag; }));
}

} // namespace ChipLoom
