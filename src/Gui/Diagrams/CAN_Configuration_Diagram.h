#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

namespace ChipLoom {

/// The segments of a bit, with the point at which it is sampled; of a flexible data rate also those of the data phase.
class CAN_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit CAN_Configuration_Diagram(QWidget *parent = nullptr, CAN_TYPE type = CAN_TYPE_1);

    void ReciveCanParamValue(const CanBits &bits);

protected:
    void DrawMap() override;
    void ShowValues() override;

private:
    struct Phase
    {
        QLabel *sync, *bs1, *bs2, *sample, *bit;
    };

    QList<QGraphicsItem *> DrawCANMap();
    QList<QGraphicsItem *> DrawCANFDMap_Nominal();
    QList<QGraphicsItem *> DrawCANFDMap_Data();
    static void showBit(const Phase &phase, const CanBit &bit);

    CanBits m_bits;
    QLabel *m_pictSync_LineEdit = nullptr;
    QLabel *m_pictBS1_LineEdit = nullptr;
    QLabel *m_pictBS2_LineEdit = nullptr;
    QLabel *m_pictSample_LineEdit = nullptr;
    QLabel *m_pictBit_LineEdit = nullptr;
    QLabel *m_pictDataSync_LineEdit = nullptr;
    QLabel *m_pictDataBS1_LineEdit = nullptr;
    QLabel *m_pictDataBS2_LineEdit = nullptr;
    QLabel *m_pictDataSample_LineEdit = nullptr;
    QLabel *m_pictDataBit_LineEdit = nullptr;
    QList<QGraphicsItem *> m_CANMap_Items;          ///< title of the only phase
    QList<QGraphicsItem *> m_CANFDNominalMap_Items; ///< title of the first of two phases
    QList<QGraphicsItem *> m_CANFDDataMap_Items;    ///< the second phase
};

} // namespace ChipLoom
