#include "Gui/Diagrams/CAN_Configuration_Diagram.h"

#include <QGraphicsItem>
#include <QLabel>

namespace ChipLoom {

namespace {

constexpr qreal PhaseHeight = 126;
constexpr qreal Left = 10;
constexpr qreal AfterSync = 80;
constexpr qreal SamplePoint = 270;
constexpr qreal Right = 390;

DiagramDescription title(qreal top, const char *text)
{
    DiagramDescription description;
    description.captions.append(
        {diagramText(text), QRectF(Left, top + 2, 380, 16), Qt::AlignLeft, DiagramTone::Strong, true});
    return description;
}

DiagramDescription segments(qreal top)
{
    DiagramDescription description;
    const auto segment = [&](qreal from, qreal to, const char *caption) {
        description.box(QRectF(from, top + 42, to - from, 28), QLatin1String(caption));
    };
    segment(Left, AfterSync, "SYNC_SEG");
    segment(AfterSync, SamplePoint, "BSEG1");
    segment(SamplePoint, Right, "BSEG2");
    description.lines.append(
        {{{SamplePoint, top + 94}, {SamplePoint, top + 36}}, DiagramTone::Accent, true, DiagramLine::Ends::Plain});
    description.lines.append(
        {{{SamplePoint, top + 88}, {SamplePoint, top + 71}}, DiagramTone::Accent, false, DiagramLine::Ends::Arrow});
    description.captions.append({diagramText(QT_TRANSLATE_NOOP("Diagram", "Sample")),
                                 QRectF(AfterSync, top + 76, SamplePoint - AfterSync - 6, 16), Qt::AlignRight,
                                 DiagramTone::Accent, false});
    description.lines.append(
        {{{Left, top + 102}, {Right, top + 102}}, DiagramTone::Muted, false, DiagramLine::Ends::Arrows});
    for (const qreal x : {Left, Right})
        description.lines.append(
            {{{x, top + 70}, {x, top + 107}}, DiagramTone::Muted, false, DiagramLine::Ends::Plain});
    return description;
}

} // namespace

CAN_Configuration_Diagram::CAN_Configuration_Diagram(QWidget *parent, CAN_TYPE type) : ConfigurationDiagram(parent)
{
    m_bits.type = type;
    Redraw();
}

void CAN_Configuration_Diagram::DrawMap()
{
    Draw(segments(0));
    m_pictSync_LineEdit = NewQLabelInScenePos({}, Left, 22, 70, 18, "m_pictSync_LineEdit");
    m_pictBS1_LineEdit = NewQLabelInScenePos({}, AfterSync, 22, 184, 18, "m_pictBS1_LineEdit");
    m_pictBS2_LineEdit = NewQLabelInScenePos({}, SamplePoint + 4, 22, 116, 18, "m_pictBS2_LineEdit");
    m_pictSample_LineEdit = NewQLabelInScenePos({}, SamplePoint + 6, 75, 60, 18, "m_pictSample_LineEdit");
    m_pictBit_LineEdit = NewQLabelInScenePos({}, Left, 105, 380, 18, "m_pictBit_LineEdit");
    m_CANMap_Items = DrawCANMap();
    m_CANFDNominalMap_Items = DrawCANFDMap_Nominal();
    m_CANFDDataMap_Items = DrawCANFDMap_Data();
}

QList<QGraphicsItem *> CAN_Configuration_Diagram::DrawCANMap()
{
    return Draw(title(0, QT_TRANSLATE_NOOP("Diagram", "Normal Bit Timing")));
}

QList<QGraphicsItem *> CAN_Configuration_Diagram::DrawCANFDMap_Nominal()
{
    return Draw(title(0, QT_TRANSLATE_NOOP("Diagram", "Nominal Bit Timing")));
}

QList<QGraphicsItem *> CAN_Configuration_Diagram::DrawCANFDMap_Data()
{
    const qreal top = PhaseHeight;
    QList<QGraphicsItem *> items =
        Draw(title(top, QT_TRANSLATE_NOOP("Diagram", "Data Bit Timing"))) + Draw(segments(top));
    m_pictDataSync_LineEdit = NewQLabelInScenePos({}, Left, top + 22, 70, 18, "m_pictDataSync_LineEdit");
    m_pictDataBS1_LineEdit = NewQLabelInScenePos({}, AfterSync, top + 22, 184, 18, "m_pictDataBS1_LineEdit");
    m_pictDataBS2_LineEdit = NewQLabelInScenePos({}, SamplePoint + 4, top + 22, 116, 18, "m_pictDataBS2_LineEdit");
    m_pictDataSample_LineEdit = NewQLabelInScenePos({}, SamplePoint + 6, top + 75, 60, 18, "m_pictDataSample_LineEdit");
    m_pictDataBit_LineEdit = NewQLabelInScenePos({}, Left, top + 105, 380, 18, "m_pictDataBit_LineEdit");
    for (const QLabel *label : {m_pictDataSync_LineEdit, m_pictDataBS1_LineEdit, m_pictDataBS2_LineEdit,
                                m_pictDataSample_LineEdit, m_pictDataBit_LineEdit})
        items.append(itemOf(label));
    return items;
}

void CAN_Configuration_Diagram::ReciveCanParamValue(const CanBits &bits)
{
    m_bits = bits;
    ShowValues();
}

void CAN_Configuration_Diagram::showBit(const Phase &phase, const CanBit &bit)
{
    const bool known = bit.quanta() > 0;
    const auto quanta = [known](int count) {
        return known ? QStringLiteral("%1 tq").arg(count) : QStringLiteral("\u2013");
    };
    SetLabelText(phase.sync, quanta(bit.sync));
    SetLabelText(phase.bs1, quanta(bit.bs1));
    SetLabelText(phase.bs2, quanta(bit.bs2));
    SetLabelText(phase.sample, known ? shortNumber(bit.samplePoint, 1) + QLatin1String(" %") : quanta(0));
    SetLabelText(phase.bit, known
                                ? QStringLiteral("%1, %2 kbit/s").arg(quanta(bit.quanta()), shortNumber(bit.bitRate, 3))
                                : quanta(0));
}

void CAN_Configuration_Diagram::ShowValues()
{
    const bool withData = m_bits.type == CAN_TYPE_NominalData;
    SetItemsVisible(m_CANMap_Items, m_bits.type == CAN_TYPE_1);
    SetItemsVisible(m_CANFDNominalMap_Items, m_bits.type != CAN_TYPE_1);
    SetItemsVisible(m_CANFDDataMap_Items, withData);
    showBit({m_pictSync_LineEdit, m_pictBS1_LineEdit, m_pictBS2_LineEdit, m_pictSample_LineEdit, m_pictBit_LineEdit},
            m_bits.nominal);
    showBit({m_pictDataSync_LineEdit, m_pictDataBS1_LineEdit, m_pictDataBS2_LineEdit, m_pictDataSample_LineEdit,
             m_pictDataBit_LineEdit},
            m_bits.data);
    SetExtent({400, withData ? 2 * PhaseHeight : PhaseHeight});
}

} // namespace ChipLoom
