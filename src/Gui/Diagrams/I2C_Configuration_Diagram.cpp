#include "Gui/Diagrams/I2C_Configuration_Diagram.h"

#include <QGraphicsItem>
#include <QLabel>

namespace ChipLoom {

namespace {

// Where the clock begins to rise and is high, begins to fall and is low, and rises again.
constexpr qreal Rise = 60, High = 90, Fall = 170, Low = 185, RiseAgain = 290, HighAgain = 320, End = 392;
constexpr qreal ClockHigh = 42, ClockLow = 82;
// Where the data change, and their levels.
constexpr qreal Change = 222, Changed = 234;
constexpr qreal DataHigh = 116, DataLow = 152;

DiagramLine mark(qreal x, qreal from, qreal to)
{
    return {{{x, from}, {x, to}}, DiagramTone::Accent, true, DiagramLine::Ends::Plain};
}

DiagramLine dimension(qreal from, qreal to, qreal y)
{
    return {{{from, y}, {to, y}}, DiagramTone::Muted, false, DiagramLine::Ends::Arrows};
}

DiagramDescription busMap()
{
    DiagramDescription map;
    map.lines = {{{{40, ClockLow}, {Rise, ClockLow}}},
                 {{{High, ClockHigh}, {Fall, ClockHigh}}},
                 {{{Low, ClockLow}, {RiseAgain, ClockLow}}},
                 {{{HighAgain, ClockHigh}, {End, ClockHigh}}},
                 {{{40, DataHigh}, {Change, DataHigh}, {Changed, DataLow}, {End, DataLow}}},
                 {{{40, DataLow}, {Change, DataLow}, {Changed, DataHigh}, {End, DataHigh}}}};
    // Lines load and discharge: quarters of ellipses.
    const qreal height = ClockLow - ClockHigh;
    const auto rise = [&](qreal from, qreal to) {
        return ArcItem{QRectF(from, ClockHigh, 2 * (to - from), 2 * height), 180, -90};
    };
    map.arcs = {rise(Rise, High),
                rise(RiseAgain, HighAgain),
                {QRectF(Fall, ClockHigh - height, 2 * (Low - Fall), 2 * height), 180, 90}};
    map.lines += {mark(Rise, 34, 104),        mark(High, 34, 60),          mark(Fall, 34, 60),      mark(Low, 34, 174),
                  mark(Change, DataLow, 174), mark(Changed, DataLow, 174), mark(RiseAgain, 60, 174)};
    map.lines += {dimension(Rise, RiseAgain, 98), dimension(Low, Change, 168), dimension(Changed, RiseAgain, 168)};
    const auto caption = [&](const char *text, const QRectF &rect, Qt::Alignment alignment) {
        map.captions.append({QLatin1String(text), rect, alignment, DiagramTone::Strong, false});
    };
    caption("SCL", {0, 54, 38, 16}, Qt::AlignLeft);
    caption("SDA", {0, 126, 38, 16}, Qt::AlignLeft);
    caption("tr", {Rise - 5, 1, 40, 14}, Qt::AlignCenter);
    caption("tf", {Fall - 12, 1, 40, 14}, Qt::AlignCenter);
    caption("HD;DAT", {150, 176, 90, 14}, Qt::AlignCenter);
    caption("SU;DAT", {252, 176, 90, 14}, Qt::AlignCenter);
    return map;
}

} // namespace

I2C_Configuration_Diagram::I2C_Configuration_Diagram(QWidget *parent) : ConfigurationDiagram(parent)
{
    Redraw();
}

void I2C_Configuration_Diagram::DrawMap()
{
    m_I2CMap_Items = Draw(busMap());
    m_picTr_LineEdit = NewQLabelInScenePos({}, Rise - 30, 15, 90, 16, "m_picTr_LineEdit");
    m_picTf_LineEdit = NewQLabelInScenePos({}, Fall - 37, 15, 90, 16, "m_picTf_LineEdit");
    m_pictHDDAT_LineEdit = NewQLabelInScenePos({}, 150, 190, 90, 16, "m_pictHDDAT_LineEdit");
    m_pictSUDAT_LineEdit = NewQLabelInScenePos({}, 252, 190, 90, 16, "m_pictSUDAT_LineEdit");
    m_picfSCL_LineEdit = NewQLabelInScenePos({}, RiseAgain + 4, 90, 104, 16, "m_picfSCL_LineEdit");
    SetExtent({400, 208});
}

void I2C_Configuration_Diagram::ReciveI2CParamValue(const I2cBusTimes &times)
{
    m_times = times;
    ShowValues();
}

void I2C_Configuration_Diagram::ShowValues()
{
    // Where the standard's limits stand in for times: rise, fall and hold at most, setup at least.
    const auto text = [this](double ns, const QString &limit) {
        const QString time = shortNumber(ns, 1) + QLatin1String(" ns");
        return m_times.limits ? limit + QLatin1Char(' ') + time : time;
    };
    const QString most = QStringLiteral("\u2264");
    const QString least = QStringLiteral("\u2265");
    SetLabelText(m_picTr_LineEdit, text(m_times.rise, most));
    SetLabelText(m_picTf_LineEdit, text(m_times.fall, most));
    SetLabelText(m_pictSUDAT_LineEdit, text(m_times.dataSetup, least));
    SetLabelText(m_pictHDDAT_LineEdit, text(m_times.dataHold, most));
    SetLabelText(m_picfSCL_LineEdit, QStringLiteral("1 / (%1 KHz)").arg(shortNumber(m_times.speedHz / 1e3, 3)));
}

} // namespace ChipLoom
