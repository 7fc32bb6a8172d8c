#pragma once

#include "Gui/Diagrams/ConfigurationDiagram.h"

#include <array>

class QGraphicsProxyWidget;

namespace ChipLoom {

/// How an operational amplifier is wired in each of its six ways of working.
class OP_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit OP_Configuration_Diagram(QWidget *parent = nullptr);

    /// 1 to 6; 0 shows nothing.
    void ReciveOPModeType(int mode);

protected:
    void DrawMap() override;
    void ShowValues() override;

private:
    int m_OP_Mode_Type = 0;
    QLabel *m_AttentionPoint1 = nullptr;
    QGraphicsProxyWidget *m_AttentionPointProxyWidget1 = nullptr;
    QList<QGraphicsItem *> m_OPMapMode1_Items, m_OPMapMode2_Items, m_OPMapMode3_Items, m_OPMapMode4_Items,
        m_OPMapMode5_Items, m_OPMapMode6_Items;
    const std::array<QList<QGraphicsItem *> *, 6> m_modes{&m_OPMapMode1_Items, &m_OPMapMode2_Items,
                                                          &m_OPMapMode3_Items, &m_OPMapMode4_Items,
                                                          &m_OPMapMode5_Items, &m_OPMapMode6_Items};
};

} // namespace ChipLoom
