#include "Gui/Diagrams/WatchdogMap.h"

#include <QLabel>

namespace ChipLoom {

namespace WatchdogMap {

namespace {

// Places along the time: the plot, the reload, the opening of the window, and the reset.
constexpr qreal Left = 88, Reload = 130, Open = 231, Reset = 331, Right = 396;
constexpr qreal Full = 38, Window = 88.5, Empty = 138.5;

void phase(DiagramDescription &map, qreal from, qreal to, qreal y, const char *caption)
{
    map.lines.append({{{from, y}, {to, y}}, DiagramTone::Muted, false, DiagramLine::Ends::Arrows});
    map.captions.append({diagramText(caption), QRectF(from + 4, y + 3, to - from - 8, 14), Qt::AlignCenter,
                         DiagramTone::Strong, false});
}

void mark(DiagramDescription &map, qreal x, qreal from, qreal to)
{
    map.lines.append({{{x, from}, {x, to}}, DiagramTone::Muted, true});
}

} // namespace

DiagramDescription counter()
{
    DiagramDescription map;
    map.lines.append({{{Left, Full - 10}, {Left, Empty}, {Right, Empty}}, DiagramTone::Muted});
    map.lines.append({{{Left, Full}, {Right, Full}}, DiagramTone::Muted, true});
    map.lines.append({{{Left, 103}, {Reload, 124}, {Reload, Full}, {Reset, Empty}}});
    map.lines.append({{{Reset, Empty - 31}, {Reset, Empty - 2}}, DiagramTone::Accent, false, DiagramLine::Ends::Arrow});
    mark(map, Reload, Empty, 208);
    mark(map, Reset, Empty, 208);
    const auto caption = [&](const char *text, const QRectF &rect, Qt::Alignment alignment, DiagramTone tone) {
        map.captions.append({diagramText(text), rect, alignment, tone, false});
    };
    caption(QT_TRANSLATE_NOOP("Diagram", "Reload value"), {0, 16, 84, 14}, Qt::AlignCenter, DiagramTone::Strong);
    caption(QT_TRANSLATE_NOOP("Diagram", "Reload the counter"), {Reload + 6, 16, 180, 14}, Qt::AlignLeft,
            DiagramTone::Strong);
    caption(QT_TRANSLATE_NOOP("Diagram", "MCU Reset"), {Reset - 34, Empty - 46, 99, 14}, Qt::AlignCenter,
            DiagramTone::Accent);
    phase(map, Reload, Reset, 190, QT_TRANSLATE_NOOP("Diagram", "Time-out"));
    return map;
}

DiagramDescription withoutWindow()
{
    DiagramDescription map;
    phase(map, Reload, Reset, 156, QT_TRANSLATE_NOOP("Diagram", "Refresh the allowed"));
    return map;
}

DiagramDescription withWindow()
{
    DiagramDescription map;
    map.lines.append({{{Left, Window}, {Right, Window}}, DiagramTone::Accent, true});
    mark(map, Open, Window, 174);
    map.captions.append({diagramText(QT_TRANSLATE_NOOP("Diagram", "Window value")), QRectF(0, 70, 84, 14),
                         Qt::AlignCenter, DiagramTone::Strong, false});
    phase(map, Reload, Open, 156, QT_TRANSLATE_NOOP("Diagram", "Refresh not allowed"));
    phase(map, Open, Reset, 156, QT_TRANSLATE_NOOP("Diagram", "Refresh the window"));
    return map;
}

DiagramDescription lastValue()
{
    DiagramDescription map;
    map.captions.append({QStringLiteral("0x40"), QRectF(0, 108, 84, 14), Qt::AlignCenter, DiagramTone::Strong, false});
    map.lines.append({{{Left, 128}, {Right, 128}}, DiagramTone::Muted, true});
    return map;
}

} // namespace WatchdogMap

QList<QGraphicsItem *> WatchdogDiagram::DrawLabels()
{
    const auto label = [this](const QRectF &place, const char *name) {
        return NewQLabelInScenePos({}, place.x(), place.y(), place.width(), place.height(), name);
    };
    m_CounterValue_LineEdit = label(WatchdogMap::CounterValue, "m_CounterValue_LineEdit");
    m_ResetValue_LineEdit = label(WatchdogMap::ResetValue, "m_ResetValue_LineEdit");
    m_Time_Timeout_LineEdit = label(WatchdogMap::Timeout, "m_Time_Timeout_LineEdit");
    m_WindowValue_LineEdit = label(WatchdogMap::WindowValue, "m_WindowValue_LineEdit");
    m_Time_RefreshNotAllowed_LineEdit = label(WatchdogMap::RefreshNotAllowed, "m_Time_RefreshNotAllowed_LineEdit");
    m_Time_RefreshTheWindow_LineEdit = label(WatchdogMap::RefreshWindow, "m_Time_RefreshTheWindow_LineEdit");
    SetExtent(WatchdogMap::Size);
    return {itemOf(m_WindowValue_LineEdit), itemOf(m_Time_RefreshNotAllowed_LineEdit),
            itemOf(m_Time_RefreshTheWindow_LineEdit)};
}

void WatchdogDiagram::ShowCount(const WatchdogCount &count, int resetValue)
{
    const auto text = [&count](int value) {
        return count.hexadecimal ? hexadecimalText(value) : QString::number(value);
    };
    SetLabelText(m_CounterValue_LineEdit, text(count.counter));
    SetLabelText(m_WindowValue_LineEdit, text(count.window));
    SetLabelText(m_ResetValue_LineEdit, hexadecimalText(resetValue));
    SetLabelText(m_Time_RefreshNotAllowed_LineEdit, millisecondText(count.timing.refreshNotAllowed));
    SetLabelText(m_Time_RefreshTheWindow_LineEdit, millisecondText(count.timing.refreshWindow));
    SetLabelText(m_Time_Timeout_LineEdit, millisecondText(count.timing.timeout));
}

} // namespace ChipLoom
