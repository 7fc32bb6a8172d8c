#include "Gui/Diagrams/WDT_Configuration_Diagram.h"

#include "Gui/Diagrams/WatchdogMap.h"

#include <QLabel>

namespace ChipLoom {

WDT_Configuration_Diagram::WDT_Configuration_Diagram(QWidget *parent) : ConfigurationDiagram(parent)
{
    Redraw();
}

void WDT_Configuration_Diagram::DrawMap()
{
    Draw(WatchdogMap::counter());
    m_WDTItems = Draw(WatchdogMap::withoutWindow());
    m_WWDTItems = Draw(WatchdogMap::withWindow());
    const auto label = [this](const QRectF &place, const char *name) {
        return NewQLabelInScenePos({}, place.x(), place.y(), place.width(), place.height(), name);
    };
    m_CounterValue_LineEdit = label(WatchdogMap::CounterValue, "m_CounterValue_LineEdit");
    m_ResetValue_LineEdit = label(WatchdogMap::ResetValue, "m_ResetValue_LineEdit");
    m_Time_Timeout_LineEdit = label(WatchdogMap::Timeout, "m_Time_Timeout_LineEdit");
    m_WindowValue_LineEdit = label(WatchdogMap::WindowValue, "m_WindowValue_LineEdit");
    m_Time_RefreshNotAllowed_LineEdit = label(WatchdogMap::RefreshNotAllowed, "m_Time_RefreshNotAllowed_LineEdit");
    m_Time_RefreshTheWindow_LineEdit = label(WatchdogMap::RefreshWindow, "m_Time_RefreshTheWindow_LineEdit");
    m_WWDTItems += {itemOf(m_WindowValue_LineEdit), itemOf(m_Time_RefreshNotAllowed_LineEdit),
                    itemOf(m_Time_RefreshTheWindow_LineEdit)};
    SetExtent(WatchdogMap::Size);
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
    const auto text = [this](int value) {
        return m_count.hexadecimal ? hexadecimalText(value) : QString::number(value);
    };
    SetLabelText(m_CounterValue_LineEdit, text(m_count.counter));
    SetLabelText(m_WindowValue_LineEdit, text(m_count.window));
    SetLabelText(m_ResetValue_LineEdit, hexadecimalText(0));
    SetLabelText(m_Time_RefreshNotAllowed_LineEdit, millisecondText(m_count.timing.refreshNotAllowed));
    SetLabelText(m_Time_RefreshTheWindow_LineEdit, millisecondText(m_count.timing.refreshWindow));
    SetLabelText(m_Time_Timeout_LineEdit, millisecondText(m_count.timing.timeout));
}

} // namespace ChipLoom
