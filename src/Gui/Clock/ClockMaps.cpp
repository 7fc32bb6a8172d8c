#include "Gui/Clock/ClockMaps.h"

#include "Gui/Clock/ClockMapPen.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ChipLoom {

namespace {

// The columns and the levels of the drawing. HEXT runs above the PLL and HICK below it, so that no wire crosses
// another on the way to SCLK; the buses leave one vertical line to the right.
constexpr qreal SourceX = 14;
constexpr qreal SourceRight = 156;
constexpr qreal LickY = 60;
constexpr qreal LextY = 105;
constexpr qreal HextToRtcY = 150;
constexpr qreal HextY = 235;
constexpr qreal HextToPllY = 315;
constexpr qreal PllY = 335;
constexpr qreal HickToPllY = 355;
constexpr qreal HickY = 435;
constexpr qreal PllToUsbY = 497;
constexpr qreal UsbY = 517;
constexpr qreal HickToUsbY = 537;
constexpr qreal FirstRowY = 40;
constexpr qreal PllLeft = 355;
constexpr qreal PllRight = 695;
constexpr qreal PllTapX = 715;
constexpr qreal VcoTapX = 563;
constexpr qreal SclkMuxX = 790;
constexpr qreal SclkDotX = 915;
constexpr qreal AhbX = 1003;
constexpr qreal BusDivX = 1046;
constexpr qreal BusDotX = 1108;
constexpr qreal ResultX = 1165;
constexpr qreal ResultWidth = 66;
constexpr qreal ResultNameX = 1237;
constexpr qreal ListX = 1365;
constexpr qreal LowerY = 582;
constexpr qreal KernelX = 724;

/// A peripheral that chooses its clock among several.
struct KernelRow
{
    const char *label;
    ClockField select;
    ClockBranch branch;
    ClockExtra info;
    ClockPath path;
};

constexpr KernelRow Kernels[]{
    {QT_TRANSLATE_NOOP("Clock", "adc (MHz)"), ClockField::AdcSource, ClockBranch::Adc, ClockExtra::AdcInfo,
     ClockPath::Adc},
    {QT_TRANSLATE_NOOP("Clock", "usart1 (MHz)"), ClockField::Usart1Source, ClockBranch::Usart1, ClockExtra::Usart1Info,
     ClockPath::Usart1},
    {QT_TRANSLATE_NOOP("Clock", "usart2 (MHz)"), ClockField::Usart2Source, ClockBranch::Usart2, ClockExtra::Usart2Info,
     ClockPath::Usart2},
    {QT_TRANSLATE_NOOP("Clock", "usart3 (MHz)"), ClockField::Usart3Source, ClockBranch::Usart3, ClockExtra::Usart3Info,
     ClockPath::Usart3},
    {QT_TRANSLATE_NOOP("Clock", "i2c1 (MHz)"), ClockField::I2c1Source, ClockBranch::I2c1, ClockExtra::I2c1Info,
     ClockPath::I2c1},
    {QT_TRANSLATE_NOOP("Clock", "can1 (MHz)"), ClockField::Can1Source, ClockBranch::Can1, ClockExtra::Can1Info,
     ClockPath::Can1},
    {QT_TRANSLATE_NOOP("Clock", "can2 (MHz)"), ClockField::Can2Source, ClockBranch::Can2, ClockExtra::Can2Info,
     ClockPath::Can2},
    {QT_TRANSLATE_NOOP("Clock", "can3 (MHz)"), ClockField::Can3Source, ClockBranch::Can3, ClockExtra::Can3Info,
     ClockPath::Can3},
    {QT_TRANSLATE_NOOP("Clock", "i2sf5 (MHz)"), ClockField::I2sf5Source, ClockBranch::I2sf5, ClockExtra::I2sf5Info,
     ClockPath::I2sf5},
};

/// A clock output; of the dividers it shows those that the series has.
struct OutputRow
{
    const char *label;
    ClockField source;
    ClockField divider;
    ClockField divider1;
    ClockField divider2;
    ClockField pin;
    ClockExtra sourceClock;
    ClockExtra result;
    ClockExtra info;
    ClockPath path;
};

constexpr OutputRow Outputs[]{
    {QT_TRANSLATE_NOOP("Clock", "CLKOUT"), ClockField::Clkout, ClockField::ClkoutDiv, ClockField::ClkoutDiv1,
     ClockField::ClkoutDiv2, ClockField::ClkoutPin, ClockExtra::ClkoutSource, ClockExtra::ClkoutResult,
     ClockExtra::ClkoutInfo, ClockPath::Clkout1},
    {QT_TRANSLATE_NOOP("Clock", "CLKOUT1"), ClockField::Clkout1, ClockField::ClkoutDiv, ClockField::Clkout1Div1,
     ClockField::Clkout1Div2, ClockField::Clkout1Pin, ClockExtra::ClkoutSource, ClockExtra::ClkoutResult,
     ClockExtra::ClkoutInfo, ClockPath::Clkout1},
    {QT_TRANSLATE_NOOP("Clock", "CLKOUT2"), ClockField::Clkout2, ClockField::ClkoutDiv, ClockField::Clkout2Div1,
     ClockField::Clkout2Div2, ClockField::Clkout2Pin, ClockExtra::Clkout2Source, ClockExtra::Clkout2Result,
     ClockExtra::Clkout2Info, ClockPath::Clkout2},
};

QStringList names(std::span<const ClockListRun> runs)
{
    QStringList result;
    for (const ClockListRun &run : runs) {
        for (int n = run.first; n <= run.last; ++n)
            result.append(QLatin1String(run.kind) + (n ? QString::number(n) : QString()));
    }
    return result;
}

/// Draws the blocks of one series, in the order in which the clock flows.
class MapWriter
{
    Q_DECLARE_TR_FUNCTIONS(Clock) // the context of the keys

public:
    MapWriter(const ClockSeries &series, const ClockMapTable &table) : m_series(series), m_table(table) {}

    ClockMapDescription write()
    {
        lowSpeedSources();
        rtc();
        highSpeedSources();
        pllInput();
        pll();
        sclk();
        results();
        buses();
        if (m_series.hasUsb())
            usb();
        kernelClocks();
        clockOutputs();
        return m_pen.result();
    }

private:
    void source(ClockSubject control, bool editable, const QString &caption, const QString &name, qreal y)
    {
        m_pen.caption(caption, SourceX, y - 30, 138);
        m_pen.name(name, SourceX, y - 8, 80);
        if (editable)
            m_pen.edit(std::get<ClockField>(control), 96, y, 60);
        else
            m_pen.value(control, 96, y, 60);
    }

    void lowSpeedSources()
    {
        source(ClockExtra::Lick, false, QT_TR_NOOP("Low speed internal clock"), QT_TR_NOOP("lick(kHz)"), LickY);
        source(ClockExtra::Lext, false, QT_TR_NOOP("Low speed external crystal"), QT_TR_NOOP("lext(kHz)"), LextY);
        m_pen.info(ClockExtra::LextInfo, 158, LextY - 30);
        m_pen.label(ClockField::LextBypass, 96, LextY + 12, 60);
    }

    void rtc()
    {
        constexpr qreal muxX = 420;
        const qreal wdtY = 25;
        m_pen.wire(ClockPath::Always, {{SourceRight, LickY}, {185, LickY}});
        m_pen.dot(ClockPath::Always, 185, LickY);
        m_pen.arrow(ClockPath::Always, {{185, LickY}, {185, wdtY}, {480, wdtY}});
        m_pen.value(ClockExtra::ToWdt, 480, wdtY, 66);
        m_pen.name(QT_TR_NOOP("to wdt(kHz)"), 552, wdtY - 8, 110);

        m_pen.arrow(ClockPath::LickToRtc, {{185, LickY}, {muxX - 22, LickY}});
        m_pen.arrow(ClockPath::LextToRtc, {{SourceRight, LextY}, {muxX - 22, LextY}});
        m_pen.wire(ClockPath::HextToRtc, {{185, HextY}, {185, HextToRtcY}, {260, HextToRtcY}});
        if (m_series.rtcDivider)
            m_pen.combo(ClockField::RtcDiv, 260, HextToRtcY, 60);
        else
            m_pen.block(QStringLiteral("/128"), 260, HextToRtcY, 60);
        m_pen.arrow(ClockPath::HextToRtc, {{320, HextToRtcY}, {muxX - 22, HextToRtcY}});
        m_pen.radio(ClockField::RtcSel, RTCSEL_LICK, muxX - 20, LickY);
        m_pen.radio(ClockField::RtcSel, RTCSEL_LEXT, muxX - 20, LextY);
        m_pen.radio(ClockField::RtcSel, RTCSEL_HEXT, muxX - 20, HextToRtcY);
        m_pen.mux(muxX, LickY - 16, HextToRtcY - LickY + 32);
        m_pen.arrow(ClockPath::Always, {{muxX + ClockMapPen::MuxWidth, LextY}, {480, LextY}});
        m_pen.value(ClockExtra::ToRtc, 480, LextY, 66);
        m_pen.name(m_table.ertc ? QT_TR_NOOP("to ertc(kHz)") : QT_TR_NOOP("to rtc(kHz)"), 552, LextY - 8, 110);
    }

    void highSpeedSources()
    {
        source(ClockField::Hext, true, QT_TR_NOOP("High speed external crystal"), QT_TR_NOOP("hext(4-25MHz)"), HextY);
        m_pen.info(ClockExtra::HextInfo, 158, HextY - 30);
        m_pen.label(ClockField::HextBypass, 96, HextY + 12, 60);
        source(ClockExtra::Hick, false, QT_TR_NOOP("High speed internal clock"), QT_TR_NOOP("hick(MHz)"), HickY);

        using enum ClockPath;
        m_pen.wire(HextToRtc | HextToPll | HextToSclk, {{SourceRight, HextY}, {185, HextY}});
        m_pen.dot(HextToRtc | HextToPll | HextToSclk, 185, HextY);
        m_pen.wire(HextToPll | HextToSclk, {{185, HextY}, {205, HextY}});
        m_pen.dot(HextToPll | HextToSclk, 205, HextY);
        const ClockPaths usb = m_series.hasUsb() ? HickToUsb : ClockPaths();
        m_pen.wire(HickToPll | HickToSclk | usb, {{SourceRight, HickY}, {185, HickY}});
        if (m_series.hasUsb())
            m_pen.dot(HickToPll | HickToSclk | usb, 185, HickY);
        m_pen.wire(HickToPll | HickToSclk, {{185, HickY}, {205, HickY}});
        m_pen.dot(HickToPll | HickToSclk, 205, HickY);
    }

    void pllInput()
    {
        constexpr qreal radioX = 293;
        using enum ClockPath;
        if (m_series.directPllInput) {
            m_pen.arrow(HextToPll, {{205, HextY}, {205, HextToPllY}, {radioX - 2, HextToPllY}});
        } else {
            m_pen.wire(HextToPll, {{205, HextY}, {205, HextToPllY}, {221, HextToPllY}});
            m_pen.combo(ClockField::PllHextDiv, 221, HextToPllY, 50);
            m_pen.arrow(HextToPll, {{271, HextToPllY}, {radioX - 2, HextToPllY}});
        }
        m_pen.wire(HickToPll, {{205, HickY}, {205, HickToPllY}, {219, HickToPllY}});
        if (m_series.hickPllExtraDivider) {
            m_pen.combo(ClockField::PllHickDiv, 219, HickToPllY, 52);
            m_pen.arrow(HickToPll, {{271, HickToPllY}, {radioX - 2, HickToPllY}});
        } else {
            m_pen.block(QStringLiteral("/%1").arg(m_series.hickPllDivider), 221, HickToPllY, 40);
            m_pen.arrow(HickToPll, {{261, HickToPllY}, {radioX - 2, HickToPllY}});
        }
        m_pen.radio(ClockField::PllRc, PLLRC_HEXT, radioX, HextToPllY);
        m_pen.radio(ClockField::PllRc, PLLRC_HICK, radioX, HickToPllY);
        m_pen.mux(radioX + 20, PllY - 36, 72);
    }

    void pll()
    {
        constexpr qreal muxRight = 313 + ClockMapPen::MuxWidth;
        m_pen.box({PllLeft, 278, PllRight - PllLeft, 112});
        m_pen.text(ClockMapText::Kind::Title, QT_TR_NOOP("PLL"), PllLeft + 8, 282, 60);
        const bool dual = m_series.pll == PllForm::Dual;
        if (dual) {
            m_pen.caption(QT_TR_NOOP("pll mode"), 500, 285, 66, Qt::AlignRight);
            m_pen.combo(ClockField::PllMode, 572, 293, 116);
        }
        if (m_series.hasMultiplier()) {
            m_pen.setForm(dual ? ClockFormOnly::Normal : ClockFormOnly::Both);
            m_pen.arrow(ClockPath::Pll, {{muxRight, PllY}, {490, PllY}});
            m_pen.caption(QT_TR_NOOP("pll_mul"), 490, 307, 70, Qt::AlignHCenter);
            m_pen.combo(ClockField::PllMult, 490, PllY, 70);
            m_pen.wire(ClockPath::Pll, {{560, PllY}, {PllRight, PllY}});
            m_pen.label(ClockExtra::PllNote, PllLeft + 10, 358, 320, 18);
        }
        if (m_series.hasFeedback()) {
            m_pen.setForm(dual ? ClockFormOnly::Flexible : ClockFormOnly::Both);
            const ClockField output = m_series.hasFp() ? ClockField::PllFp : ClockField::PllFr;
            m_pen.arrow(ClockPath::Pll, {{muxRight, PllY}, {385, PllY}});
            factor(QT_TR_NOOP("pll_ms"), QT_TR_NOOP("(1-15)"), 385, 54);
            m_pen.edit(ClockField::PllMs, 385, PllY, 54);
            m_pen.arrow(ClockPath::Pll, {{439, PllY}, {475, PllY}});
            factor(QT_TR_NOOP("pll_ns"), QT_TR_NOOP("(31-500)"), 475, 64);
            m_pen.edit(ClockField::PllNs, 475, PllY, 64);
            m_pen.arrow(ClockPath::Pll, {{539, PllY}, {596, PllY}});
            m_pen.caption(m_series.hasFp() ? QT_TR_NOOP("pll_fp") : QT_TR_NOOP("pll_fr"), 596, 307, 62,
                          Qt::AlignHCenter);
            m_pen.combo(output, 596, PllY, 62);
            m_pen.wire(ClockPath::Pll, {{658, PllY}, {PllRight, PllY}});
            m_pen.label(ClockExtra::PllCfg, PllLeft, 393, 190);
        }
        m_pen.setForm(ClockFormOnly::Both);
    }

    void factor(const QString &caption, const QString &range, qreal x, qreal width)
    {
        m_pen.caption(caption, x - 14, 307, width + 28, Qt::AlignHCenter);
        m_pen.hint(range, x - 14, 350, width + 28);
    }

    void sclk()
    {
        using enum ClockPath;
        constexpr qreal radioX = SclkMuxX - 20;
        constexpr qreal divX = 600;
        if (m_series.sclkDividers) {
            m_pen.caption(QT_TR_NOOP("hext to sclk"), divX - 20, HextY - 29, 100, Qt::AlignHCenter);
            m_pen.wire(HextToSclk, {{205, HextY}, {divX, HextY}});
            m_pen.combo(ClockField::SclkHextDiv, divX, HextY, 60);
            m_pen.arrow(HextToSclk, {{divX + 60, HextY}, {radioX - 2, HextY}});
        } else {
            m_pen.arrow(HextToSclk, {{205, HextY}, {radioX - 2, HextY}});
        }

        const bool tapped = m_series.usb == UsbForm::Divider;
        m_pen.wire(tapped ? Pll : PllToSclk, {{PllRight, PllY}, {PllTapX, PllY}});
        if (tapped)
            m_pen.dot(Pll, PllTapX, PllY);
        if (m_series.halfPllIsSclk) {
            m_pen.wire(PllToSclk, {{PllTapX, PllY}, {724, PllY}});
            m_pen.block(QStringLiteral("/2"), 724, PllY, 26);
            m_pen.arrow(PllToSclk, {{750, PllY}, {radioX - 2, PllY}});
        } else {
            m_pen.arrow(PllToSclk, {{PllTapX, PllY}, {radioX - 2, PllY}});
        }

        m_pen.caption(QT_TR_NOOP("hick to sclk"), 400, HickY - 29, 100, Qt::AlignHCenter);
        m_pen.wire(HickToSclk, {{205, HickY}, {420, HickY}});
        m_pen.combo(ClockField::HickToSclk, 420, HickY, 60);
        if (m_series.sclkDividers) {
            m_pen.wire(HickToSclk, {{480, HickY}, {divX, HickY}});
            m_pen.combo(ClockField::SclkHickDiv, divX, HickY, 60);
            m_pen.arrow(HickToSclk, {{divX + 60, HickY}, {radioX - 2, HickY}});
        } else {
            m_pen.arrow(HickToSclk, {{480, HickY}, {radioX - 2, HickY}});
        }

        m_pen.caption(QT_TR_NOOP("sclk select"), radioX - 34, HextY - 36, 100, Qt::AlignHCenter);
        m_pen.radio(ClockField::SclkSelect, SYSCLK_HEXT, radioX, HextY);
        m_pen.radio(ClockField::SclkSelect, SYSCLK_PLL, radioX, PllY);
        m_pen.radio(ClockField::SclkSelect, SYSCLK_HICK, radioX, HickY);
        m_pen.mux(SclkMuxX, HextY - 18, HickY - HextY + 36);
        m_pen.arrow(Always, {{SclkMuxX + ClockMapPen::MuxWidth, PllY}, {832, PllY}});
        m_pen.caption(QT_TR_NOOP("sclk (MHz)"), 822, PllY - 29, 86, Qt::AlignHCenter);
        m_pen.edit(ClockField::Sclk, 832, PllY, 66);
        m_pen.label(ClockExtra::SclkError, 822, PllY + 14, 176, 32);
        m_pen.button(ClockExtra::Solutions, 832, PllY + 60, 110);
        if (m_table.sclkLimitNote)
            m_pen.label(ClockExtra::SclkLimitNote, 820, PllY + 78, 180, 48);
    }

    void results()
    {
        qreal y = 26;
        const auto next = [&y] { return std::exchange(y, y + 26); };
        result(QT_TR_NOOP("System clock"), ClockExtra::SystemClock, next());
        result(QT_TR_NOOP("PLL clock"), ClockExtra::PllClock, next());
        if (m_series.hasUsb())
            result(QT_TR_NOOP("USB clock"), ClockExtra::UsbClock, next());
        result(QT_TR_NOOP("ADC clock"), ClockExtra::AdcClock, next());
        m_pen.box({690, 16, 206, y - 16});
    }

    void result(const QString &name, ClockExtra control, qreal y)
    {
        m_pen.name(name, 698, y, 90);
        m_pen.label(control, 792, y, 98);
    }

    // One row of the right-hand column: the box, its name and, with instances, the button that lists them.
    void row(const QString &label, ClockBranch branch, qreal y, std::span<const ClockListRun> instances = {})
    {
        m_pen.value(branch, ResultX, y, ResultWidth);
        m_pen.name(label, ResultNameX, y - 8, ListX - ResultNameX - 2);
        if (!instances.empty())
            m_pen.list(label, names(instances), ListX, y, 40);
    }

    void buses()
    {
        const bool apb3 = m_series.apb3Max > 0;
        const bool adc = m_series.adcDivider;
        const std::size_t count = m_table.sclkRows.size() + m_table.ahbRows.size() + 4 + (apb3 ? 1 : 0) + (adc ? 1 : 0);
        const qreal lastY = m_series.hasUsb() ? 470 : 500;
        const qreal pitch = std::min(34.0, (lastY - FirstRowY) / static_cast<qreal>(count - 1));
        // Few rows stand around the level of SCLK; one of them is always level with it.
        qreal y = std::max(FirstRowY, (lastY + FirstRowY - pitch * static_cast<qreal>(count - 1)) / 2);
        y = PllY - pitch * std::round((PllY - y) / pitch);
        const auto next = [&y, pitch] { return std::exchange(y, y + pitch); };

        m_pen.wire(ClockPath::Always, {{898, PllY}, {930, PllY}});
        if (!m_table.sclkRows.empty()) {
            m_pen.dot(ClockPath::Always, SclkDotX, PllY);
            for (const ClockBusRow &entry : m_table.sclkRows) {
                const qreal at = next();
                m_pen.arrow(ClockPath::Always, {{SclkDotX, PllY}, {SclkDotX, at}, {ResultX, at}});
                row(entry.label, entry.branch, at);
            }
        }
        m_pen.caption(QT_TR_NOOP("ahb div"), 925, PllY - 29, 66, Qt::AlignHCenter);
        m_pen.combo(ClockField::AhbDiv, 930, PllY, 58);
        m_pen.wire(ClockPath::Always, {{988, PllY}, {AhbX, PllY}});

        const qreal firstAhb = y;
        qreal lastAhb = y;
        const auto leave = [&](qreal at) {
            lastAhb = at;
            m_branches.append(at);
        };
        for (const ClockBusRow &entry : m_table.ahbRows) {
            const qreal at = next();
            leave(at);
            if (entry.branch == ClockBranch::SysTick) {
                m_pen.wire(ClockPath::Always, {{AhbX, at}, {BusDivX, at}});
                m_pen.combo(ClockField::SysticDiv, BusDivX, at, 50);
                m_pen.arrow(ClockPath::Always, {{BusDivX + 50, at}, {ResultX, at}});
            } else {
                m_pen.arrow(ClockPath::Always, {{AhbX, at}, {ResultX, at}});
            }
            row(entry.label, entry.branch, at);
        }
        if (adc && m_series.adcFromAhb) {
            const qreal at = next();
            leave(at);
            m_pen.wire(ClockPath::Adc, {{AhbX, at}, {BusDivX, at}});
            m_pen.combo(ClockField::AdcDiv, BusDivX, at, 50);
            m_pen.arrow(ClockPath::Adc, {{BusDivX + 50, at}, {ResultX, at}});
            adcRow(at);
        }

        const qreal apb1Y = next();
        leave(apb1Y);
        bus(QT_TR_NOOP("apb1"), ClockField::Apb1Div, apb1Y);
        row(QT_TR_NOOP("apb1 peripheral (MHz)"), ClockBranch::Apb1, apb1Y, m_table.apb1);
        const qreal apb1TimerY = next();
        timers(ClockExtra::Apb1TmrMul, apb1Y, apb1TimerY);
        row(QT_TR_NOOP("apb1 tmr (MHz)"), ClockBranch::Apb1Timer, apb1TimerY, m_table.apb1Timers);

        const qreal apb2Y = next();
        leave(apb2Y);
        bus(QT_TR_NOOP("apb2"), ClockField::Apb2Div, apb2Y);
        row(QT_TR_NOOP("apb2 peripheral (MHz)"), ClockBranch::Apb2, apb2Y, m_table.apb2);
        const qreal apb2TimerY = next();
        timers(ClockExtra::Apb2TmrMul, apb2Y, apb2TimerY);
        row(QT_TR_NOOP("apb2 tmr (MHz)"), ClockBranch::Apb2Timer, apb2TimerY, m_table.apb2Timers);
        if (adc && !m_series.adcFromAhb) {
            const qreal at = next();
            m_pen.dot(ClockPath::Always, BusDotX, apb2TimerY);
            m_pen.wire(ClockPath::Adc, {{BusDotX, apb2TimerY}, {BusDotX, at}, {1114, at}});
            m_pen.combo(ClockField::AdcDiv, 1114, at, 40);
            m_pen.arrow(ClockPath::Adc, {{1154, at}, {ResultX, at}});
            adcRow(at);
        }
        if (apb3) {
            const qreal at = next();
            leave(at);
            bus(QT_TR_NOOP("apb3"), ClockField::Apb3Div, at, false);
            row(QT_TR_NOOP("apb3 peripheral (MHz)"), ClockBranch::Apb3, at, m_table.apb3);
        }

        m_pen.wire(ClockPath::Always, {{AhbX, std::min(firstAhb, PllY)}, {AhbX, std::max(lastAhb, PllY)}});
        m_pen.dot(ClockPath::Always, AhbX, PllY);
        for (const qreal at : std::as_const(m_branches)) {
            if (at != PllY && at > std::min(firstAhb, PllY) && at < std::max(lastAhb, PllY))
                m_pen.dot(ClockPath::Always, AhbX, at);
        }
    }

    void adcRow(qreal y)
    {
        row(QT_TR_NOOP("adc (MHz)"), ClockBranch::Adc, y);
        m_pen.info(ClockExtra::AdcInfo, ListX + 12, y - 8);
    }

    void bus(const QString &name, ClockField divider, qreal y, bool timers = true)
    {
        m_pen.caption(name, AhbX + 4, y - 17, BusDivX - AhbX - 6);
        m_pen.wire(ClockPath::Always, {{AhbX, y}, {BusDivX, y}});
        m_pen.combo(divider, BusDivX, y, 50);
        m_pen.arrow(ClockPath::Always, {{BusDivX + 50, y}, {ResultX, y}});
        if (timers)
            m_pen.dot(ClockPath::Always, BusDotX, y);
    }

    void timers(ClockExtra multiplier, qreal busY, qreal y)
    {
        m_pen.wire(ClockPath::Always, {{BusDotX, busY}, {BusDotX, y}, {1120, y}});
        m_pen.value(multiplier, 1120, y, 30);
        m_pen.arrow(ClockPath::Always, {{1150, y}, {ResultX, y}});
    }

    void usb()
    {
        using enum ClockPath;
        constexpr qreal muxX = 880;
        if (m_series.usb == UsbForm::VcoDivider) {
            m_pen.dot(Pll, VcoTapX, PllY);
            m_pen.wire(PllToUsb, {{VcoTapX, PllY}, {VcoTapX, PllToUsbY}, {740, PllToUsbY}});
            m_pen.caption(QT_TR_NOOP("pll_fu"), 735, PllToUsbY - 29, 70, Qt::AlignHCenter);
            m_pen.combo(ClockField::PllFu, 740, PllToUsbY, 60);
        } else {
            m_pen.wire(PllToUsb, {{PllTapX, PllY}, {PllTapX, PllToUsbY}, {740, PllToUsbY}});
            m_pen.caption(QT_TR_NOOP("usb div"), 735, PllToUsbY - 29, 70, Qt::AlignHCenter);
            m_pen.combo(ClockField::UsbDiv, 740, PllToUsbY, 60);
        }
        m_pen.arrow(PllToUsb, {{800, PllToUsbY}, {muxX - 22, PllToUsbY}});
        m_pen.caption(QT_TR_NOOP("hick to usb"), 300, HickToUsbY - 18, 100);
        m_pen.arrow(HickToUsb, {{185, HickY}, {185, HickToUsbY}, {muxX - 22, HickToUsbY}});
        m_pen.radio(ClockField::HickToUsb, HICK_TO_USB_DISABLE, muxX - 20, PllToUsbY);
        m_pen.radio(ClockField::HickToUsb, HICK_TO_USB_ENABLE, muxX - 20, HickToUsbY);
        m_pen.mux(muxX, UsbY - 36, 72);
        m_pen.arrow(PllToUsb | HickToUsb, {{muxX + ClockMapPen::MuxWidth, UsbY}, {ResultX, UsbY}});
        row(QT_TR_NOOP("usb (MHz)"), ClockBranch::Usb, UsbY);
        m_pen.info(ClockExtra::UsbInfo, ListX + 12, UsbY - 8);
    }

    // Peripherals whose clock is chosen beside the tree: small multiplexers with named inputs, three to a row.
    void kernelClocks()
    {
        for (const KernelRow &kernel : Kernels) {
            if (hasClockField(m_series, kernel.select))
                write(kernel);
        }
        if (m_kernels > 0)
            m_pen.text(ClockMapText::Kind::Title, QT_TR_NOOP("Peripheral clock sources"), KernelX, LowerY - 26, 220);
    }

    void write(const KernelRow &kernel)
    {
        constexpr qreal pitch = 20;
        const qreal x = KernelX + 222 * (m_kernels % 3);
        const qreal top = LowerY + 124 * (m_kernels / 3);
        ++m_kernels;
        const qreal height = inputs(kernel.select, x, top, 62, pitch);
        const qreal middle = top + height / 2;
        m_pen.mux(x + 88, top, height);
        m_pen.arrow(kernel.path, {{x + 88 + ClockMapPen::MuxWidth, middle}, {x + 134, middle}});
        m_pen.value(kernel.branch, x + 134, middle, ResultWidth);
        m_pen.name(kernel.label, x + 128, middle - 30, 80);
        m_pen.info(kernel.info, x + 206, middle - 8);
        if (kernel.select == ClockField::I2sf5Source) {
            const qreal y = top + height - pitch / 2 - 4;
            m_pen.edit(ClockField::I2sf5Clock, x + 134, y, ResultWidth);
            m_pen.name(QT_TR_NOOP("external (MHz)"), x + 206, y - 8, 100);
        }
    }

    // The named inputs of a multiplexer that stands to the right of them; returns its height.
    qreal inputs(ClockField select, qreal x, qreal top, qreal nameWidth, qreal pitch)
    {
        const std::vector<ClockOption> options = clockOptions(ZV32ConfigCLK(m_series.code), select);
        for (std::size_t n = 0; n < options.size(); ++n) {
            const qreal y = top + 4 + pitch / 2 + pitch * static_cast<qreal>(n);
            m_pen.caption(options[n].text(), x, y - 8, nameWidth, Qt::AlignRight);
            m_pen.radio(select, static_cast<int>(n), x + nameWidth + 4, y);
        }
        return pitch * static_cast<qreal>(options.size()) + 8;
    }

    void clockOutputs()
    {
        m_pen.text(ClockMapText::Kind::Title, QT_TR_NOOP("Clock output"), SourceX, LowerY - 26, 220);
        qreal x = SourceX;
        for (const OutputRow &output : Outputs) {
            if (!hasClockField(m_series, output.source))
                continue;
            write(output, x);
            x += 352;
        }
    }

    void write(const OutputRow &output, qreal x)
    {
        const qreal height = inputs(output.source, x, LowerY, 50, 22);
        const qreal middle = LowerY + height / 2;
        qreal at = x + 76;
        m_pen.mux(at, LowerY, height);
        at += ClockMapPen::MuxWidth;
        m_pen.label(output.sourceClock, at + 6, middle - 36, 100);
        for (const ClockField divider : {output.divider, output.divider1, output.divider2}) {
            if (!hasClockField(m_series, divider))
                continue;
            m_pen.arrow(output.path, {{at, middle}, {at + 18, middle}});
            m_pen.combo(divider, at + 18, middle, 54);
            at += 72;
        }
        m_pen.arrow(output.path, {{at, middle}, {at + 16, middle}});
        m_pen.buffer(output.path, at + 32, middle);
        m_pen.text(ClockMapText::Kind::Title, output.label, at + 38, middle - 26, 64);
        m_pen.label(output.result, at + 38, middle - 8, 106);
        m_pen.value(output.pin, at + 38, middle + 22, 50);
        m_pen.info(output.info, at + 92, middle + 14);
    }

    const ClockSeries &m_series;
    const ClockMapTable &m_table;
    ClockMapPen m_pen;
    QVector<qreal> m_branches; ///< where rows leave the AHB line
    int m_kernels = 0;
};

} // namespace

const ClockMapTable &clockMapTable(ClockMap map)
{
    static const std::array tables{
        &DrawF403EF407EPLLMap, &DrawF435F437PLLMap, &DrawF455F456F457PLLMap, &DrawF403AF407A403APLLMap,
        &DrawF423A423PLLMap,   &DrawF413PLLMap,     &DrawF415WB415PLLMap,    &DrawF402F405F490PLLMap,
        &DrawF425PLLMap,       &DrawL021F011PLLMap, &DrawF422F426PLLMap,     &DrawF406F408PLLMap,
        &DrawF421PLLMap,       &DrawM412M416PLLMap,
    };
    return **std::find_if(tables.begin(), tables.end(),
                          [map](const ClockMapTable *table) { return table->map == map; });
}

ClockMapDescription describeClockMap(const ClockSeries &series)
{
    return MapWriter(series, clockMapTable(series.map)).write();
}

} // namespace ChipLoom
