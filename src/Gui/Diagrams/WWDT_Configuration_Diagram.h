#pragma once

#include "Gui/Diagrams/WatchdogMap.h"

namespace ChipLoom {

/// When the window watchdog may be refreshed and when it resets.
class WWDT_Configuration_Diagram : public WatchdogDiagram
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
};

} // namespace ChipLoom
