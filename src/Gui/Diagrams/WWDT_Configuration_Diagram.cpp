#include "Gui/Diagrams/WWDT_Configuration_Diagram.h"

#include "Gui/Diagrams/WatchdogMap.h"

#include <QLabel>

namespace ChipLoom {

namespace {

constexpr int ResetValue = 0x3F; // the counter resets with the step to it

}

WWDT_Configuration_Diagram::WWDT_Configuration_Diagram(QWidget *parent) : ConfigurationDiagram(parent)
{
    Redraw();
}

void WWDT_Configuration_Diagram::DrawMap()
{
    m_WWDTItems = Draw(WatchdogMap::counter()) + Draw(WatchdogMap::withWindow()) + Draw(WatchdogMap::lastValue());
    const auto label = [this](const QRectF &place, const char *name) {
        QLabel *value = NewQLabelInScenePos({}, place.x(), place.y(), place.width(), place.height(), name);
        m_WWDTItems.append(itemOf(value));
        return value;
    };
    m_CounterValue_LineEdit = label(WatchdogMap::CounterValue, "m_CounterValue_LineEdit");
    m_ResetValue_LineEdit = label(WatchdogMap::ResetValue, "m_ResetValue_LineEdit");
    m_Time_Timeout_LineEdit = label(WatchdogMap::Timeout, "m_Time_Timeout_LineEdit");
    m_WindowValue_LineEdit = label(WatchdogMap::WindowValue, "m_WindowValue_LineEdit");
    m_Time_RefreshNotAllowed_LineEdit = label(WatchdogMap::RefreshNotAllowed, "m_Time_RefreshNotAllowed_LineEdit");
    m_Time_RefreshTheWindow_LineEdit = label(WatchdogMap::RefreshWindow, "m_Time_RefreshTheWindow_LineEdit");
    SetExtent(WatchdogMap::Size);
}

void WWDT_Configuration_Diagram::ReciveWWDTParamValue(const WatchdogCount &count)
{
    m_count = count;
    ShowValues();
}

void WWDT_Configuration_Diagram::ShowValues()
{
    SetLabelText(m_CounterValue_LineEdit, hexadecimalText(m_count.counter));
    SetLabelText(m_WindowValue_LineEdit, hexadecimalText(m_count.window));
    SetLabelText(m_ResetValue_LineEdit, hexadecimalText(ResetValue));
    SetLabelText(m_Time_RefreshNotAllowed_LineEdit, millisecondText(m_count.timing.refreshNotAllowed));
    SetLabelText(m_Time_RefreshTheWindow_LineEdit, millisecondText(m_count.timing.refreshWindow));
    SetLabelText(m_Time_Timeout_LineEdit, millisecondText(m_count.timing.timeout));
}

} // namespace ChipLoom
