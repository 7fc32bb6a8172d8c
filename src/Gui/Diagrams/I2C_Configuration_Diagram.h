#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

namespace ChipLoom {

/// Clock and data of the bus with the times that its standard limits.
class I2C_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit I2C_Configuration_Diagram(QWidget *parent = nullptr);

    void ReciveI2CParamValue(const I2cBusTimes &times);

protected:
    void DrawMap() override;
    void ShowValues() override;

private:
    I2cBusTimes m_times;
    QLabel *m_picTr_LineEdit = nullptr;
    QLabel *m_picTf_LineEdit = nullptr;
    QLabel *m_pictSUDAT_LineEdit = nullptr;
    QLabel *m_pictHDDAT_LineEdit = nullptr;
    QLabel *m_picfSCL_LineEdit = nullptr;
    QList<QGraphicsItem *> m_I2CMap_Items;
};

} // namespace ChipLoom
