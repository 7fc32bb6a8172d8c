// The clock section of the design file: one text element for each value that the series has. Frequencies that follow
// from the values are not stored.

#include "ClockConfig/ZV32MCUPLL.h"

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

namespace ChipLoom {

namespace {

constexpr double LargestStoredFrequency = 1000.0; // MHz; beyond it a file is damaged

QString sectionName()
{
    return QStringLiteral("ClockConfiguration");
}

/// The elements of the first clock section below the root. Of several elements with one name the first counts; a file
/// that is no XML has none.
std::optional<QHash<QString, QString>> readElements(QIODevice &file)
{
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement())
        return std::nullopt;
    std::optional<QHash<QString, QString>> elements;
    while (reader.readNextStartElement()) {
        if (elements || reader.name() != sectionName()) {
            reader.skipCurrentElement();
            continue;
        }
        elements.emplace();
        while (reader.readNextStartElement()) {
            const QString name = reader.name().toString();
            const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
            if (!elements->contains(name))
                elements->insert(name, text);
        }
    }
    if (reader.hasError())
        return std::nullopt;
    return elements;
}

bool isFrequency(const QString &text)
{
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(value) && value >= 0 && value <= LargestStoredFrequency;
}

double frequency(const QString &text)
{
    return isFrequency(text) ? text.trimmed().toDouble() : 0.0;
}

/// The nearest thing to a stored number that the field can be.
double chosen(const ZV32ConfigCLK &clock, ClockField field, double value)
{
    switch (field) {
    case ClockField::SysticDiv:
        return value == 1 ? 1 : 8;
    case ClockField::PllRc:
        return value != 0 ? PLLRC_HICK : PLLRC_HEXT;
    case ClockField::PllMs:
        return value >= PLL_MS_MIN_VALUE && value <= PLL_MS_MAX_VALUE ? value : PLL_MS_MIN_VALUE;
    case ClockField::PllNs:
        return value >= PLL_NS_MIN_VALUE && value <= PLL_NS_MAX_VALUE ? value : PLL_NS_MIN_VALUE;
    case ClockField::PllMult: // the calculation puts it into the bounds of the PLL input
        return value >= 2 && value <= 64 ? value : 2;
    default:
        break;
    }
    const std::vector<ClockOption> options = clockOptions(clock, field);
    const bool offered =
        std::any_of(options.begin(), options.end(), [&](const ClockOption &option) { return option.value == value; });
    return offered ? value : options.front().value;
}

} // namespace

bool ZV32MCUPLL::SaveToFile(QXmlStreamWriter *writer) const
{
    if (!writer)
        return false;
    writer->writeStartElement(sectionName());
    for (const ClockField field : allClockFields()) {
        if (!isStoredClockField(series(), field))
            continue;
        double value = clockFieldValue(clock(), field);
        int decimals = 0;
        if (field == ClockField::Hext) {
            decimals = 6;
            // A crystal that is still to be entered must still be so when the file is opened again.
            if (!hextTextIsValid())
                value = frequency(m_state.hextText);
        } else if (field == ClockField::I2sf5Clock) {
            decimals = 6;
            value = m_state.i2sf5Clock;
        } else if (field == ClockField::UsbDiv) {
            decimals = 1;
        }
        writer->writeTextElement(clockFieldName(series(), field), QString::number(value, 'f', decimals));
    }
    writer->writeEndElement();
    return !writer->hasError();
}

std::vector<ZV32MCUPLL::Misfit> ZV32MCUPLL::OpenFromFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? OpenFromFile(file) : std::vector<Misfit>();
}

std::vector<ZV32MCUPLL::Misfit> ZV32MCUPLL::OpenFromFile(QIODevice &file)
{
    const std::optional<QHash<QString, QString>> elements = readElements(file);
    if (!elements)
        return {};
    std::vector<Misfit> misfits;
    ZV32ConfigCLK &clock = m_state.clock;
    for (const ClockField field : allClockFields()) {
        if (!isStoredClockField(series(), field))
            continue;
        const QString name = clockFieldName(series(), field);
        const QString text = elements->value(name);
        bool fits = isFrequency(text);
        if (field == ClockField::Hext) {
            m_state.hextText = text;
            clock.Set_HEXT_Value(frequency(text));
            m_state.hextEntered = clock.Get_HEXT_Enable() && hextTextIsValid();
        } else if (field == ClockField::I2sf5Clock) {
            m_state.i2sf5Text = text;
            if (i2sf5TextIsValid())
                m_state.i2sf5Clock = frequency(text);
        } else {
            const double value = field == ClockField::UsbDiv ? text.toDouble(&fits) : text.toInt(&fits);
            const double taken = chosen(clock, field, value);
            fits = fits && taken == value;
            setClockFieldValue(clock, field, taken);
        }
        if (!fits && elements->contains(name))
            misfits.push_back({field, text});
    }
    if (m_state.freertos)
        clock.Set_SysticDIV(1);
    m_state.sclkTarget = m_state.sclkReached = 0.0;
    if (clock.Get_HickToUsb() == HICK_TO_USB_ENABLE)
        clock.Set_USBCLKValue(USB_OUTPUT_CLK_VALUE);
    Update_Flexible_Controls();
    recalculate();
    // Without a frequency at its input the PLL allows no multiplier; the one that waits for the frequency stays.
    const int multiplier = elements->value(clockFieldName(series(), ClockField::PllMult)).toInt();
    if (isStoredClockField(series(), ClockField::PllMult) && clock.Get_PLL_MUL_Max() == 0 && multiplier >= 2 &&
        multiplier <= 64)
        clock.Set_PLL_MUL(multiplier);
    if (clock.Get_PLL_MUL_Max() == 0) // then none is saved either
        std::erase_if(misfits, [](const Misfit &misfit) { return misfit.field == ClockField::PllMult; });
    markChanged(&Flags::usb);
    if (series().i2sf5)
        markChanged(&Flags::i2sf5);
    return misfits;
}

} // namespace ChipLoom
