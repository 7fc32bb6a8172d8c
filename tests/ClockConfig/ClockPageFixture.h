#pragma once

#include "Base/Scheduler.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Model/SeriesHelpers.h"
#include "ScriptedPrompt.h"

#include <QBuffer>
#include <QXmlStreamWriter>

#include <gtest/gtest.h>

#include <algorithm>

namespace ChipLoom::Test {

using Change = ClockChange;

struct Page
{
    explicit Page(ZV32MCUSERIALS series) : state(*clockSeries(series), scheduler, prompt) {}

    ClockRefusal choose(ClockField field, double value) { return state.apply(Change::choose(field, value)).refusal; }
    ClockRefusal enter(ClockField field, const QString &text)
    {
        return state.apply(Change::enter(field, text)).refusal;
    }
    const ZV32ConfigCLK &clock() const { return state.clock(); }

    Scheduler scheduler;
    ScriptedPrompt prompt{ScriptedPrompt::Last};
    ZV32MCUPLL state;
};

inline QByteArray saved(const ZV32MCUPLL &page)
{
    QByteArray text;
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("Root"));
    EXPECT_TRUE(page.SaveToFile(&writer));
    writer.writeEndElement();
    return text;
}

/// The names of what cannot be so.
inline QStringList open(ZV32MCUPLL &page, QByteArray text)
{
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    QStringList names;
    for (const ZV32MCUPLL::Misfit &misfit : page.OpenFromFile(buffer))
        names.append(clockFieldName(page.series(), misfit.field));
    return names;
}

inline std::string nameOf(ZV32MCUSERIALS series)
{
    return ZV32MCUSERIALS_To_MCUSerialString(series).toStdString();
}

/// Controls and values must say the same, and the frequencies must follow from the values.
inline void expectConsistent(const ZV32MCUPLL &page, bool sclkTextRefused = false)
{
    const ZV32ConfigCLK &clock = page.clock();
    ZV32ConfigCLK again = clock;
    again.CalculateCLK();
    EXPECT_NEAR(again.Get_SYSCLKValue(), clock.Get_SYSCLKValue(), 0.1); // multipliers are solved in whole kHz
    EXPECT_NEAR(again.Get_AHBCLKValue(), clock.Get_AHBCLKValue(), 0.1);
    EXPECT_NEAR(again.Get_APB1CLKValue(), clock.Get_APB1CLKValue(), 0.1);
    EXPECT_EQ(again.Get_APB1DIV(), clock.Get_APB1DIV());
    if (clock.pll_isEnable()) {
        EXPECT_NEAR(again.Get_PLLCLKValue(), clock.Get_PLLCLKValue(), 0.1);
    }
    if (!sclkTextRefused) {
        EXPECT_EQ(page.text(ClockField::Sclk), QString::number(clock.Get_SYSCLKValue(), 'f', 3));
    }
    for (const ClockField field : allClockFields()) {
        if (!hasClockField(page.series(), field) || isTypedClockField(field))
            continue;
        if (field == ClockField::PllMult && (clock.Get_ConfigMode() == PLLMODE_FLEXIBLE || !clock.pll_isEnable()))
            continue; // while it is not in use it need not suit the PLL input
        const std::vector<ClockOption> options = clockOptions(clock, field);
        const double value = clockFieldValue(clock, field);
        const bool offered =
            std::any_of(options.begin(), options.end(), [&](const ClockOption &o) { return o.value == value; });
        EXPECT_TRUE(offered || (options.empty() && value == 0))
            << clockFieldName(page.series(), field).toStdString() << " = " << value;
    }
}

} // namespace ChipLoom::Test
