#include "Gui/Diagrams/OP_Configuration_Diagram.h"

#include <QCoreApplication>
#include <QGraphicsProxyWidget>
#include <QLabel>

namespace ChipLoom {

namespace {

// The amplifier, and the node at which its inverting input meets what surrounds it.
constexpr qreal Body = 200, Tip = 270, Middle = 70;
constexpr qreal PlusY = 54, MinusY = 86;
constexpr qreal Node = 170, Bottom = 150, Output = 320;

struct Text
{
    const char *source;
    const char *comment;
};

// What to mind in each mode.
constexpr std::array<Text, 6> AttentionPoints{{
    QT_TRANSLATE_NOOP3("Diagram", "Feedback and gain are made by parts outside of the chip.", "ModeType1_point1"),
    QT_TRANSLATE_NOOP3("Diagram", "The output follows the input; the inverting input is connected inside.",
                       "ModeType2_point1"),
    QT_TRANSLATE_NOOP3("Diagram", "The resistors inside set the gain; no inverting pin is used.", "ModeType3_point1"),
    QT_TRANSLATE_NOOP3("Diagram", "A capacitor between INM0 and OP_OUT filters; the resistors inside set the gain.",
                       "ModeType4_point1"),
    QT_TRANSLATE_NOOP3("Diagram", "INM0 is the signal or its bias; INM1 may carry a filter.", "ModeType5_point1"),
    QT_TRANSLATE_NOOP3("Diagram", "The converter or INP3 gives the level that the output follows.", "ModeType6_point1"),
}};

void wire(DiagramDescription &map, const QVector<QPointF> &points)
{
    map.lines.append({points});
}

void input(DiagramDescription &map, const char *name, qreal y, qreal to)
{
    wire(map, {{110, y}, {to, y}});
    map.captions.append({QLatin1String(name), QRectF(0, y - 8, 106, 16), Qt::AlignRight, DiagramTone::Strong, false});
}

void resistor(DiagramDescription &map, const QRectF &body)
{
    map.shapes.append({{body.topLeft(), body.topRight(), body.bottomRight(), body.bottomLeft()}, true});
}

void followTheOutput(DiagramDescription &map)
{
    wire(map, {{Output, Middle}, {Output, 112}, {Node, 112}, {Node, MinusY}, {Body, MinusY}});
}

// From the output over one resistor to the node, and over another one to the foot.
void divideTheOutput(DiagramDescription &map)
{
    wire(map, {{Output, Middle}, {Output, 112}, {268, 112}});
    resistor(map, QRectF(228, 106, 40, 12));
    wire(map, {{228, 112}, {Node, 112}, {Node, MinusY}, {Body, MinusY}});
    wire(map, {{Node, 112}, {Node, 120}});
    resistor(map, QRectF(Node - 6, 120, 12, 24));
    wire(map, {{Node, 144}, {Node, Bottom}});
}

void ground(DiagramDescription &map)
{
    for (int i = 0; i < 3; ++i)
        wire(map, {{Node - 9 + 3 * i, Bottom + 3 * i}, {Node + 9 - 3 * i, Bottom + 3 * i}});
}

DiagramDescription opMap(int mode)
{
    DiagramDescription map;
    map.shapes.append({{{Body, Middle - 38}, {Tip, Middle}, {Body, Middle + 38}}, true});
    map.captions.append(
        {QStringLiteral("+"), QRectF(Body + 3, PlusY - 9, 16, 18), Qt::AlignCenter, DiagramTone::Strong, true});
    map.captions.append(
        {QStringLiteral("\u2212"), QRectF(Body + 3, MinusY - 9, 16, 18), Qt::AlignCenter, DiagramTone::Strong, true});
    map.lines.append({{{Tip, Middle}, {345, Middle}}, DiagramTone::Strong, false, DiagramLine::Ends::Arrow});
    map.captions.append(
        {QStringLiteral("OP_OUT"), QRectF(348, Middle - 8, 52, 16), Qt::AlignLeft, DiagramTone::Strong, false});
    input(map, mode == 6 ? "INP3 or DACx_OUT" : "INP0", PlusY, Body);
    switch (mode) {
    case 1:
        input(map, "INM0", MinusY, Body);
        break;
    case 2:
    case 6:
        followTheOutput(map);
        break;
    case 3:
        divideTheOutput(map);
        ground(map);
        break;
    case 4:
        divideTheOutput(map);
        ground(map);
        input(map, "INM0", MinusY, Node);
        break;
    case 5:
        divideTheOutput(map);
        wire(map, {{Node, Bottom}, {110, Bottom}});
        input(map, "INM0", Bottom, Node);
        input(map, "INM1", MinusY, Node);
        break;
    default:
        break;
    }
    return map;
}

} // namespace

OP_Configuration_Diagram::OP_Configuration_Diagram(QWidget *parent) : ConfigurationDiagram(parent)
{
    Redraw();
}

void OP_Configuration_Diagram::DrawMap()
{
    for (unsigned i = 0; i < m_modes.size(); ++i)
        *m_modes[i] = Draw(opMap(static_cast<int>(i) + 1));
    m_AttentionPoint1 = NewQLabelInScenePos({}, 4, 164, 392, 20, "m_AttentionPoint1");
    m_AttentionPointProxyWidget1 = m_AttentionPoint1->graphicsProxyWidget();
    SetExtent({400, 188});
}

void OP_Configuration_Diagram::ReciveOPModeType(int mode)
{
    m_OP_Mode_Type = mode;
    ShowValues();
}

void OP_Configuration_Diagram::ShowValues()
{
    for (int i = 0; i < static_cast<int>(m_modes.size()); ++i)
        SetItemsVisible(*m_modes[static_cast<size_t>(i)], i + 1 == m_OP_Mode_Type);
    const bool known = m_OP_Mode_Type >= 1 && m_OP_Mode_Type <= static_cast<int>(AttentionPoints.size());
    m_AttentionPointProxyWidget1->setVisible(known);
    if (!known)
        return;
    const Text &text = AttentionPoints[static_cast<size_t>(m_OP_Mode_Type - 1)];
    SetLabelText(m_AttentionPoint1, QCoreApplication::translate("Diagram", text.source, text.comment));
}

} // namespace ChipLoom
