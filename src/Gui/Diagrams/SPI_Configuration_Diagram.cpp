#include "Gui/Diagrams/SPI_Configuration_Diagram.h"

#include <QGraphicsItem>
#include <QLabel>

namespace ChipLoom {

namespace {

constexpr int Bits = 8;
constexpr qreal FirstBit = 96;
constexpr qreal BitWidth = 35;
constexpr qreal LastBit = FirstBit + Bits * BitWidth;

struct Row
{
    qreal high, low;
    qreal level(bool isHigh) const { return isHigh ? high : low; }
};
constexpr Row Select{26, 42};
constexpr Row Clock{54, 74};
constexpr Row Data{86, 108};

DiagramCaption rowName(const Row &row, const char *name)
{
    return {QLatin1String(name), QRectF(0, row.high, 78, row.low - row.high), Qt::AlignLeft, DiagramTone::Strong,
            false};
}

// Data in both kinds of frames stand for a whole clock and are sampled in its middle.
DiagramDescription bits(bool lowestFirst)
{
    DiagramDescription description;
    for (int i = 0; i < Bits; ++i) {
        const qreal x = FirstBit + i * BitWidth;
        const qreal middle = (Data.high + Data.low) / 2;
        description.shapes.append({{{x, middle},
                                    {x + 4, Data.high},
                                    {x + BitWidth - 4, Data.high},
                                    {x + BitWidth, middle},
                                    {x + BitWidth - 4, Data.low},
                                    {x + 4, Data.low}},
                                   true});
        const qreal sample = x + BitWidth / 2;
        description.lines.append(
            {{{sample, Clock.high - 4}, {sample, Data.high}}, DiagramTone::Accent, true, DiagramLine::Ends::Plain});
        if (i == 0 || i == Bits - 1)
            description.captions.append({QLatin1String((i == 0) == lowestFirst ? "LSB" : "MSB"),
                                         QRectF(x + 3, Data.high, BitWidth - 6, Data.low - Data.high), Qt::AlignCenter,
                                         DiagramTone::Strong, false});
    }
    description.captions += {rowName(Select, "CS"), rowName(Clock, "SCK"), rowName(Data, "MISO/MOSI")};
    description.lines.append(
        {{{FirstBit, 124}, {FirstBit + 24, 124}}, DiagramTone::Accent, true, DiagramLine::Ends::Plain});
    description.captions.append({diagramText(QT_TRANSLATE_NOOP("Diagram", "Sample")),
                                 QRectF(FirstBit + 28, 116, 90, 16), Qt::AlignLeft, DiagramTone::Accent, false});
    return description;
}

void addTitle(DiagramDescription &description, const QString &text)
{
    description.captions.append({text, QRectF(0, 2, 396, 16), Qt::AlignLeft, DiagramTone::Strong, true});
}

DiagramDescription frame(bool clockHighWhenIdle, bool secondEdge, bool lowestFirst)
{
    DiagramDescription description = bits(lowestFirst);
    addTitle(description, QStringLiteral("CPOL = %1, CPHA = %2").arg(int(clockHighWhenIdle)).arg(int(secondEdge)));
    description.lines.append({{{82, Select.high},
                               {FirstBit - 6, Select.high},
                               {FirstBit - 6, Select.low},
                               {LastBit + 6, Select.low},
                               {LastBit + 6, Select.high},
                               {398, Select.high}}});
    const qreal idle = Clock.level(clockHighWhenIdle);
    const qreal active = Clock.level(!clockHighWhenIdle);
    // The clock leaves its idle level with the sample, or half a bit before.
    const qreal leaves = secondEdge ? 0 : BitWidth / 2;
    QVector<QPointF> clock{{82, idle}};
    for (int i = 0; i < Bits; ++i) {
        const qreal x = FirstBit + i * BitWidth + leaves;
        clock += {{x, idle}, {x, active}, {x + BitWidth / 2, active}, {x + BitWidth / 2, idle}};
    }
    clock.append({398, idle});
    description.lines.append({clock});
    return description;
}

DiagramDescription tiFrame()
{
    DiagramDescription description = bits(false);
    addTitle(description, diagramText(QT_TRANSLATE_NOOP("Diagram", "TI frame")));
    const qreal pulse = FirstBit - BitWidth / 2;
    description.lines.append({{{72, Select.low},
                               {pulse, Select.low},
                               {pulse, Select.high},
                               {FirstBit, Select.high},
                               {FirstBit, Select.low},
                               {398, Select.low}}});
    QVector<QPointF> clock{{72, Clock.low}};
    for (int i = 0; i < Bits; ++i) {
        const qreal x = FirstBit + i * BitWidth;
        clock += {{x, Clock.low}, {x, Clock.high}, {x + BitWidth / 2, Clock.high}, {x + BitWidth / 2, Clock.low}};
    }
    clock.append({398, Clock.low});
    description.lines.append({clock});
    return description;
}

} // namespace

SPI_Configuration_Diagram::SPI_Configuration_Diagram(QWidget *parent) : ConfigurationDiagram(parent)
{
    Redraw();
}

void SPI_Configuration_Diagram::DrawMap()
{
    for (unsigned i = 0; i < m_frames.size(); ++i)
        *m_frames[i] = Draw(frame((i & 4u) != 0, (i & 2u) != 0, (i & 1u) != 0));
    m_TI_Items = Draw(tiFrame());
    m_pictSCK_LineEdit = NewQLabelInScenePos({}, 250, 115, 140, 18, "m_pictSCK_LineEdit");
    SetExtent({400, 136});
}

void SPI_Configuration_Diagram::ReciveSPIParamValue(const SpiFrame &frame)
{
    m_frame = frame;
    ShowValues();
}

void SPI_Configuration_Diagram::ShowValues()
{
    for (const Items *items : m_frames)
        SetItemsVisible(*items, false);
    const unsigned shown =
        (m_frame.clockHighWhenIdle ? 4u : 0u) + (m_frame.secondEdge ? 2u : 0u) + (m_frame.lowestBitFirst ? 1u : 0u);
    SetItemsVisible(m_TI_Items, m_frame.ti);
    if (!m_frame.ti)
        SetItemsVisible(*m_frames[shown], true);
    SetLabelText(m_pictSCK_LineEdit, m_frame.bitClockHz > 0 ? frequencyText(m_frame.bitClockHz) : QString());
}

} // namespace ChipLoom
