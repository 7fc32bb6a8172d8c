#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

#include <array>

namespace ChipLoom {

/// A frame on the wires: the clock, the data and where they are sampled, for each polarity, phase and order of bits,
/// and for TI frames.
class SPI_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit SPI_Configuration_Diagram(QWidget *parent = nullptr);

    void ReciveSPIParamValue(const SpiFrame &frame);

protected:
    void DrawMap() override;
    void ShowValues() override;

private:
    using Items = QList<QGraphicsItem *>;

    SpiFrame m_frame;
    QLabel *m_pictSCK_LineEdit = nullptr;
    Items m_CPOL0_CPHA0_LTF0_Items, m_CPOL0_CPHA0_LTF1_Items, m_CPOL0_CPHA1_LTF0_Items, m_CPOL0_CPHA1_LTF1_Items;
    Items m_CPOL1_CPHA0_LTF0_Items, m_CPOL1_CPHA0_LTF1_Items, m_CPOL1_CPHA1_LTF0_Items, m_CPOL1_CPHA1_LTF1_Items;
    Items m_TI_Items;
    /// The eight above, counted by polarity, phase and order as three bits.
    const std::array<Items *, 8> m_frames{
        &m_CPOL0_CPHA0_LTF0_Items, &m_CPOL0_CPHA0_LTF1_Items, &m_CPOL0_CPHA1_LTF0_Items, &m_CPOL0_CPHA1_LTF1_Items,
        &m_CPOL1_CPHA0_LTF0_Items, &m_CPOL1_CPHA0_LTF1_Items, &m_CPOL1_CPHA1_LTF0_Items, &m_CPOL1_CPHA1_LTF1_Items};
};

} // namespace ChipLoom
