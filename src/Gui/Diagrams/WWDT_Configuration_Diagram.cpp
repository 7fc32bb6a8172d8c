#include "Gui/Diagrams/WWDT_Configuration_Diagram.h"

namespace ChipLoom {

namespace {

constexpr int ResetValue = 0x3F; // the counter resets with the step to it

}

WWDT_Configuration_Diagram::WWDT_Configuration_Diagram(QWidget *parent) : WatchdogDiagram(parent)
{
    Redraw();
}

void WWDT_Configuration_Diagram::DrawMap()
{
    Draw(WatchdogMap::counter());
    Draw(WatchdogMap::withWindow());
    Draw(WatchdogMap::lastValue());
    DrawLabels();
}

void WWDT_Configuration_Diagram::ReciveWWDTParamValue(const WatchdogCount &count)
{
    m_count = count;
    m_count.hexadecimal = true; // as the reset value beside it
    ShowValues();
}

void WWDT_Configuration_Diagram::ShowValues()
{
    ShowCount(m_count, ResetValue);
}

} // namespace ChipLoom
