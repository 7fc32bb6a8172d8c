#pragma once

#include "Gui/Clock/ClockPageModel.h"

#include <QDialog>

class QLabel;
class QTableWidget;

namespace ChipLoom {

/// The best ways to reach the wanted SCLK, one of which can be chosen.
class ClockSolutionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ClockSolutionsDialog(QWidget *parent = nullptr);

    /// Fills the list, best first, in the present language.
    void setSolutions(const QVector<ClockSolutionRow> &rows);

signals:
    void chosen(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(int row);

    QTableWidget *m_table;
    QLabel *m_hint;
};

} // namespace ChipLoom
