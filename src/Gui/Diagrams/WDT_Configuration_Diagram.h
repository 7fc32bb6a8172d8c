#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

namespace ChipLoom {

/// When the independent watchdog may be refreshed and when it resets, with and without its window.
class WDT_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit WDT_Configuration_Diagram(QWidget *parent = nullptr);

    void ReciveWDTParamValue(const WatchdogCount &count);
    void SetWDTMapVisible(bool visible);
    void SetWWDTMapVisible(bool visible);

protected:
    void DrawMap() override;
    void ShowValues() override;

private:
    WatchdogCount m_count;
    QLabel *m_WindowValue_LineEdit = nullptr;
    QLabel *m_CounterValue_LineEdit = nullptr;
    QLabel *m_ResetValue_LineEdit = nullptr;
    QLabel *m_Time_RefreshNotAllowed_LineEdit = nullptr;
    QLabel *m_Time_RefreshTheWindow_LineEdit = nullptr;
    QLabel *m_Time_Timeout_LineEdit = nullptr;
    QList<QGraphicsItem *> m_WDTItems;
    QList<QGraphicsItem *> m_WWDTItems;
};

} // namespace ChipLoom
