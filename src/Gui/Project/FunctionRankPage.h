#pragma once

#include "Base/UserPrompt.h"
#include "Model/ShareParameter.h"

#include <QWidget>

class QCheckBox;
class QPushButton;
class QTableWidget;

namespace ChipLoom {

/// The order of the calls in `main`: rows that the user moves, and calls that he leaves out. The fixed ones stand first
/// in grey.
class FunctionRankPage : public QWidget
{
    Q_OBJECT
public:
    explicit FunctionRankPage(UserPrompt &prompt, QWidget *parent = nullptr);

    void setRank(const QList<MainFuncNameForRank> &rank);
    const QList<MainFuncNameForRank> &rank() const { return m_ValidFuncNameForRank; }

private:
    void CreateValidFuncNameTable();
    void AddFunctionNameToTable(int row);
    void slot_MoveUP_Action();
    void slot_MoveDOWN_Action();
    void RankReset_btnSlot();
    void MainDoNotCall_CheckBox_Changed(int row, int column);
    void allCallsChanged(bool checked);
    void showMenu(const QPoint &position);
    bool canMoveUp(int row) const;
    bool canMoveDown(int row) const;
    void swapWithNext(int row, int current);
    void updateControls();
    int currentRow() const;

    UserPrompt &m_prompt;
    QList<MainFuncNameForRank> m_ValidFuncNameForRank;
    QTableWidget *m_FuncNameTableWidget;
    QCheckBox *m_allCallsCheckBox;
    QPushButton *m_btnRankReset;
    QPushButton *m_btnMoveUp;
    QPushButton *m_btnMoveDown;
};

} // namespace ChipLoom
