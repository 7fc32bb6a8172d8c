#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

#include <QString>

class QLineEdit;

namespace ChipLoom {

/// How the clock of a timer becomes its overflows. A frequency that the user types is turned into the divider and the
/// period whose overflow is the nearest to it.
class TMR_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit TMR_Configuration_Diagram(QWidget *parent = nullptr);

    void ReciveTMRParamValue(const TimerCount &count);
    QLineEdit *overflowField() const { return m_TMRx_FOverflow_LineEdit; }

signals:
    void SendTMRParam_Div_Pr(unsigned int divider, unsigned int period);

protected:
    void DrawMap() override;
    void ShowValues() override;

private:
    void LineEdit_returnPressed();
    bool isTwoWay() const;

    double m_Tmr_Clock = 0; ///< Hz
    unsigned int m_Tmr_div_max = 65535;
    unsigned int m_Tmr_pr_max = 65535;
    TimerCount m_count;
    QLabel *m_TMRx_CLK_LineEdit = nullptr;
    QLabel *m_TMRx_DIV_LineEdit = nullptr;
    QLabel *m_TMRx_PR_LineEdit = nullptr;
    QLabel *m_TMRx_FOverflow_Label = nullptr;
    QLineEdit *m_TMRx_FOverflow_LineEdit = nullptr;
    QString m_TMRx_FOverflow_String;             ///< what the field shows unless something is typed
    QList<QGraphicsItem *> m_TMRMap1_Items;      ///< up
    QList<QGraphicsItem *> m_TMRMap2_Items;      ///< down
    QList<QGraphicsItem *> m_TMRMap3_Items;      ///< what is clocked from outside
    QList<QGraphicsItem *> m_TMRMapTwoWay_Items; ///< up and down in turn
    QList<QGraphicsItem *> m_OneWay_Items;       ///< steps of a period when counting one way
    QList<QGraphicsItem *> m_TwoWay_Items;       ///< the same for both ways
    QList<QGraphicsItem *> m_Internal_Items;     ///< what follows from a known clock
};

} // namespace ChipLoom
