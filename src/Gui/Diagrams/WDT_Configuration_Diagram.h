#pragma once

#include "Gui/Diagrams/WatchdogMap.h"

namespace ChipLoom {

/// When the independent watchdog may be refreshed and when it resets, with and without its window.
class WDT_Configuration_Diagram : public WatchdogDiagram
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
    QList<QGraphicsItem *> m_WDTItems;
    QList<QGraphicsItem *> m_WWDTItems;
};

} // namespace ChipLoom
