#pragma once

#include "Design/Calculators/DiagramValues.h"
#include "Gui/Diagrams/ConfigurationDiagram.h"

namespace ChipLoom {

/// The course of a watchdog's counter from one reload to the reset. Where there is a window, a refresh before it resets
/// too.
namespace WatchdogMap {

inline constexpr QSizeF Size{400, 222};

// Places of the values.
inline constexpr QRectF CounterValue{0, 30, 84, 16};
inline constexpr QRectF WindowValue{0, 84, 84, 16};
inline constexpr QRectF ResetValue{0, 124, 84, 16};
inline constexpr QRectF RefreshNotAllowed{116, 174, 114, 16};
inline constexpr QRectF RefreshWindow{232, 174, 114, 16};
inline constexpr QRectF Timeout{116, 204, 230, 16};

/// The counter between its marks.
DiagramDescription counter();
/// A reload is taken at any time.
DiagramDescription withoutWindow();
DiagramDescription withWindow();
/// The last counter value before the reset stands beside the plot.
DiagramDescription lastValue();

} // namespace WatchdogMap

/// A drawing of a watchdog: the values beside the plot.
class WatchdogDiagram : public ConfigurationDiagram
{
    Q_OBJECT
protected:
    using ConfigurationDiagram::ConfigurationDiagram;

    /// Makes the labels of the values; what comes back belongs to the variant with a window.
    QList<QGraphicsItem *> DrawLabels();
    /// Writes a count into them. The counter resets with the step to `resetValue`.
    void ShowCount(const WatchdogCount &count, int resetValue);

private:
    QLabel *m_WindowValue_LineEdit = nullptr;
    QLabel *m_CounterValue_LineEdit = nullptr;
    QLabel *m_ResetValue_LineEdit = nullptr;
    QLabel *m_Time_RefreshNotAllowed_LineEdit = nullptr;
    QLabel *m_Time_RefreshTheWindow_LineEdit = nullptr;
    QLabel *m_Time_Timeout_LineEdit = nullptr;
};

} // namespace ChipLoom
