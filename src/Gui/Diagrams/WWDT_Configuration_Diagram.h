#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

namespace ChipLoom {

/// When the window watchdog may be refreshed and when it resets.
class WWDT_Configuration_Diagram : public ConfigurationDiagram
{
    Q_OBJECT
public:
    explicit WWDT_Configuration_Diagram(QWidget *parent = nullptr);

    void ReciveWWDTParamValue(const WatchdogCount &count);

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
    QList<QGraphicsItem *> m_WWDTItems;
};

} // namespace ChipLoom
