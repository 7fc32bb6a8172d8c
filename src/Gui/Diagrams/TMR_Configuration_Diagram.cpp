#include "Gui/Diagrams/TMR_Configuration_Diagram.h"

#include "Design/Calculators/TimerTiming.h"
#include "Gui/App/Style.h"
#include "Gui/ChipView/PinGraphicsView.h"
#include "Gui/Widgets/EntryField.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QLabel>
#include <QLineEdit>

#include <array>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr qreal PlotLeft = 124, PlotRight = 392;
constexpr qreal Top = 112, Zero = 164;
constexpr qreal PeriodWidth = 86;

DiagramDescription chain()
{
    DiagramDescription map;
    map.box(QRectF(4, 6, 100, 24), QStringLiteral("TMRx_CLK"));
    map.box(QRectF(138, 6, 116, 24), QStringLiteral("/ (TMRx_DIV + 1)"));
    for (const qreal x : {104.0, 254.0})
        map.lines.append({{{x, 18}, {x + 34, 18}}, DiagramTone::Strong, false, DiagramLine::Ends::Arrow});
    map.lines.append({{{PlotLeft, Top - 6}, {PlotLeft, Zero}, {PlotRight, Zero}}, DiagramTone::Muted});
    map.lines.append({{{PlotLeft, Top}, {PlotRight, Top}}, DiagramTone::Muted, true});
    const auto level = [&map](const char *text, qreal y) {
        map.captions.append({diagramText(text), QRectF(0, y - 8, 120, 16), Qt::AlignLeft});
    };
    level(QT_TRANSLATE_NOOP("Diagram", "Counter = TMRx_PR"), Top);
    level(QT_TRANSLATE_NOOP("Diagram", "Counter = 0"), Zero);
    return map;
}

DiagramDescription periodBox(const char *text)
{
    DiagramDescription map;
    map.box(QRectF(288, 6, 108, 24), QString::fromUtf8(text));
    return map;
}

DiagramDescription course(const QVector<QPointF> &points, const QVector<qreal> &overflows, const char *caption)
{
    DiagramDescription map;
    map.lines.append({points});
    for (const qreal x : overflows)
        map.lines.append({{{x, Top - 10}, {x, Zero}}, DiagramTone::Accent, true});
    map.captions.append({diagramText(caption), QRectF(PlotLeft, Zero + 6, PlotRight - PlotLeft, 16)});
    return map;
}

DiagramDescription oneWay(bool up, const char *caption)
{
    QVector<QPointF> points;
    QVector<qreal> overflows;
    for (int i = 0; i < 3; ++i) {
        const qreal x = PlotLeft + i * PeriodWidth;
        points += {{x, up ? Zero : Top}, {x + PeriodWidth, up ? Top : Zero}};
        overflows.append(x + PeriodWidth);
    }
    return course(points, overflows, caption);
}

DiagramDescription twoWay()
{
    QVector<QPointF> points{{PlotLeft, Zero}};
    QVector<qreal> overflows;
    for (int i = 1; i <= 3; ++i) {
        const qreal x = PlotLeft + i * PeriodWidth;
        points.append({x, i % 2 == 1 ? Top : Zero});
        overflows.append(x);
    }
    return course(points, overflows, QT_TRANSLATE_NOOP("Diagram", "Up and down counter"));
}

// Edges come when they come: steps of unequal length.
DiagramDescription external()
{
    constexpr int Steps = 4;
    constexpr std::array<qreal, Steps> Lengths{22, 40, 16, 56};
    QVector<QPointF> points;
    QVector<qreal> overflows;
    qreal x = PlotLeft;
    for (int period = 0; period < 2; ++period) {
        for (int step = 0; step < Steps; ++step) {
            const qreal y = Zero - (Zero - Top) * step / (Steps - 1);
            points += {{x, y}, {x + Lengths[static_cast<size_t>(step)], y}};
            x += Lengths[static_cast<size_t>(step)];
        }
        overflows.append(x);
    }
    return course(points, overflows, QT_TRANSLATE_NOOP("Diagram", "External clock"));
}

class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

} // namespace

TMR_Configuration_Diagram::TMR_Configuration_Diagram(QWidget *parent) : ConfigurationDiagram(parent)
{
    view()->setFocusPolicy(Qt::StrongFocus);
    Redraw();
}

void TMR_Configuration_Diagram::DrawMap()
{
    Draw(chain());
    m_OneWay_Items = Draw(periodBox("/ (TMRx_PR + 1)"));
    m_TwoWay_Items = Draw(periodBox("/ (2 \u00d7 TMRx_PR)"));
    m_TMRMapTwoWay_Items = Draw(twoWay());
    m_TMRMap1_Items = Draw(oneWay(true, QT_TRANSLATE_NOOP("Diagram", "Up counter")));
    m_TMRMap2_Items = Draw(oneWay(false, QT_TRANSLATE_NOOP("Diagram", "Down counter")));
    m_TMRMap3_Items = Draw(external());
    m_TMRx_CLK_LineEdit = NewQLabelInScenePos({}, 4, 33, 100, 18, "m_TMRx_CLK_LineEdit");
    m_TMRx_DIV_LineEdit = NewQLabelInScenePos({}, 138, 33, 116, 18, "m_TMRx_DIV_LineEdit");
    m_TMRx_PR_LineEdit = NewQLabelInScenePos({}, 288, 33, 108, 18, "m_TMRx_PR_LineEdit");
    m_TMRx_FOverflow_Label = NewQLabelInScenePos(diagramText(QT_TRANSLATE_NOOP("Diagram", "Overflow frequency")), 4, 64,
                                                 210, 22, "m_TMRx_FOverflow_Label");
    m_TMRx_FOverflow_LineEdit = new EntryField;
    m_TMRx_FOverflow_LineEdit->setObjectName(QStringLiteral("m_TMRx_FOverflow_LineEdit"));
    m_TMRx_FOverflow_LineEdit->setToolTip(
        diagramText(QT_TRANSLATE_NOOP("Diagram", "Type a frequency: divider and period take the values that come "
                                                 "nearest to it.")));
    connect(m_TMRx_FOverflow_LineEdit, &QLineEdit::editingFinished, this,
            &TMR_Configuration_Diagram::LineEdit_returnPressed);
    connect(m_TMRx_FOverflow_LineEdit, &QLineEdit::textEdited, this,
            [this] { Style::setInvalid(m_TMRx_FOverflow_LineEdit, false); });
    QGraphicsItem *field = NewWidgetInScene(m_TMRx_FOverflow_LineEdit, QRectF(218, 64, 140, 22));
    DiagramDescription unit;
    unit.captions.append({QStringLiteral("Hz"), QRectF(364, 64, 32, 22), Qt::AlignLeft});
    m_Internal_Items = Draw(unit);
    m_Internal_Items += {field, itemOf(m_TMRx_FOverflow_Label)};
    SetExtent({400, 190});
}

void TMR_Configuration_Diagram::ReciveTMRParamValue(const TimerCount &count)
{
    m_count = count;
    ShowValues();
}

bool TMR_Configuration_Diagram::isTwoWay() const
{
    return m_count.direction == TimerCount::Direction::TwoWay;
}

void TMR_Configuration_Diagram::ShowValues()
{
    m_Tmr_Clock = m_count.clockHz;
    m_Tmr_div_max = m_count.maxDivider;
    m_Tmr_pr_max = m_count.maxPeriod;
    const bool known = m_Tmr_Clock > 0;
    SetItemsVisible(m_TMRMap1_Items, known && m_count.direction == TimerCount::Direction::Up);
    SetItemsVisible(m_TMRMap2_Items, known && m_count.direction == TimerCount::Direction::Down);
    SetItemsVisible(m_TMRMap3_Items, !known);
    SetItemsVisible(m_TMRMapTwoWay_Items, known && isTwoWay());
    SetItemsVisible(m_TwoWay_Items, isTwoWay());
    SetItemsVisible(m_OneWay_Items, !isTwoWay());
    SetItemsVisible(m_Internal_Items, known);
    SetLabelText(m_TMRx_CLK_LineEdit,
                 known ? frequencyText(m_Tmr_Clock) : diagramText(QT_TRANSLATE_NOOP("Diagram", "External clock")));
    SetLabelText(m_TMRx_DIV_LineEdit, QString::number(m_count.divider));
    SetLabelText(m_TMRx_PR_LineEdit, QString::number(m_count.period));
    m_TMRx_FOverflow_String = shortNumber(m_count.overflowHz, 6);
    // What is being typed stays, whatever changes elsewhere meanwhile.
    if (!m_TMRx_FOverflow_LineEdit->hasFocus() || !m_TMRx_FOverflow_LineEdit->isModified())
        m_TMRx_FOverflow_LineEdit->setText(m_TMRx_FOverflow_String);
}

void TMR_Configuration_Diagram::LineEdit_returnPressed()
{
    if (!m_TMRx_FOverflow_LineEdit->isModified())
        return;
    bool isNumber = false;
    const double wanted = m_TMRx_FOverflow_LineEdit->text().trimmed().toDouble(&isNumber);
    const WaitCursor waiting;
    const std::optional<TimerDivision> division =
        isNumber && std::isfinite(wanted)
            ? timerDivisionFor(m_Tmr_Clock, wanted, m_Tmr_div_max, m_Tmr_pr_max, isTwoWay())
            : std::nullopt;
    if (!division) {
        // Who has left the field sees what the timer does.
        const bool typing = m_TMRx_FOverflow_LineEdit->hasFocus();
        Style::setInvalid(m_TMRx_FOverflow_LineEdit, typing);
        if (!typing)
            m_TMRx_FOverflow_LineEdit->setText(m_TMRx_FOverflow_String);
        return;
    }
    m_TMRx_FOverflow_LineEdit->setModified(false);
    emit SendTMRParam_Div_Pr(division->divider, division->period);
}

} // namespace ChipLoom
