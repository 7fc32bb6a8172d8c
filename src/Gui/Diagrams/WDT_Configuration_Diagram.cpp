#include "Gui/Diagrams/WDT_Configuration_Diagram.h"

namespace ChipLoom {

WDT_Configuration_Diagram::WDT_Configuration_Diagram(QWidget *parent) : WatchdogDiagram(parent)
{
    Redraw();
}

void WDT_Configuration_Diagram::DrawMap()
{
    Draw(WatchdogMap::counter());
    m_WDTItems = Draw(WatchdogMap::withoutWindow());
    m_WWDTItems = Draw(WatchdogMap::withWindow());
    m_WWDTItems += DrawLabels();
}

void WDT_Configuration_Diagram::SetWDTMapVisible(bool visible)
{
    SetItemsVisible(m_WDTItems, visible);
}

void WDT_Configuration_Diagram::SetWWDTMapVisible(bool visible)
{
    SetItemsVisible(m_WWDTItems, visible);
}

void WDT_Configuration_Diagram::ReciveWDTParamValue(const WatchdogCount &count)
{
    m_count = count;
    ShowValues();
}

void WDT_Configuration_Diagram::ShowValues()
{
    SetWDTMapVisible(!m_count.hasWindow);
    SetWWDTMapVisible(m_count.hasWindow);
    ShowCount(m_count, 0);
}

} // namespace ChipLoom
