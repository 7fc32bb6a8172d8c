#include "ClockConfig/ClockSettings.h"

#include "ClockConfig/ClockTexts.h"
#include "Model/SeriesHelpers.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("Clock", text);
}

QString seriesName(const ClockSeries &series)
{
    return ZV32MCUSERIALS_To_MCUSerialString(series.code);
}

bool isOutputPin(ClockField field)
{
    return field == ClockField::ClkoutPin || field == ClockField::Clkout1Pin || field == ClockField::Clkout2Pin;
}

} // namespace

QString clockChoicesText(const ZV32MCUPLL &page, ClockField field)
{
    const auto range = [](double min, double max) {
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 to %2")).arg(min).arg(max);
    };
    switch (field) {
    case ClockField::Hext:
        return range(HEXT_INPUT_MIN_VALUE, HEXT_INPUT_MAX_VALUE);
    case ClockField::PllMs:
        return range(PLL_MS_MIN_VALUE, PLL_MS_MAX_VALUE);
    case ClockField::PllNs:
        return range(PLL_NS_MIN_VALUE, PLL_NS_MAX_VALUE);
    case ClockField::I2sf5Clock:
        return range(I2SF5_EXTERNAL_CLOCK_MINVALUE_1M, I2SF5_EXTERNAL_CLOCK_MAXVALUE_72M);
    case ClockField::Sclk:
        return range(page.sclkInputLimits().min, page.sclkInputLimits().max);
    default:
        break;
    }
    const std::vector<ClockOption> options = clockOptions(page.clock(), field);
    if (options.size() > 16)
        return range(options.front().value, options.back().value);
    QStringList texts;
    for (const ClockOption &option : options)
        texts.append(option.text());
    return texts.join(QLatin1String(", "));
}

const ClockSeries *clockSeriesByText(const QString &text)
{
    const QString name = text.toUpper();
    for (const ClockSeries &series : allClockSeries()) {
        if (name == seriesName(series) || QLatin1String("ZV32") + name == seriesName(series))
            return &series;
    }
    return nullptr;
}

QString clockSeriesNames()
{
    QStringList names;
    for (const ClockSeries &series : allClockSeries())
        names.append(seriesName(series));
    return names.join(QLatin1String(", "));
}

QString applyClockSetting(ZV32MCUPLL &page, const QString &name, const QString &value, bool alone)
{
    const ClockSeries &series = page.series();
    if (alone && name == QLatin1String("usb") && series.hasUsb()) {
        const bool on = value == QLatin1String("on");
        if (!on && value != QLatin1String("off"))
            return shown(QT_TRANSLATE_NOOP("Clock", "%1 takes: %2")).arg(name, QStringLiteral("on, off"));
        page.Set_USB_Flag(on);
        return {};
    }
    const std::optional<ClockField> field = clockFieldByName(series, name);
    if (!field) {
        QStringList names;
        for (const ClockField known : allClockFields()) {
            if (hasClockField(series, known))
                names.append(clockFieldName(series, known));
        }
        return shown(QT_TRANSLATE_NOOP("Clock", "The clock of %1 has no \"%2\"; it has: %3"))
            .arg(seriesName(series), name, names.join(QLatin1String(", ")));
    }
    if (!alone && isOutputPin(*field))
        return shown(
            QT_TRANSLATE_NOOP("Clock", "The pin of a clock output is chosen by the modes of CRM and on the pins"));
    const bool typed = isTypedClockField(*field);
    const std::optional<double> option = typed ? std::nullopt : clockOptionByText(page.clock(), *field, value);
    if (!typed && !option)
        return shown(QT_TRANSLATE_NOOP("Clock", "%1 takes: %2")).arg(name, clockChoicesText(page, *field));
    if (alone) {
        const ClockRefusal missing = typed ? ClockRefusal::None : page.optionRefusal(*field, *option);
        if (missing == ClockRefusal::HextOff || (*field == ClockField::Hext && !page.clock().Get_HEXT_Enable()))
            page.Set_hext_enable_flag(true, false);
        if (missing == ClockRefusal::LextOff)
            page.Set_lext_enable_flag(true);
    }
    const ClockOutcome outcome =
        page.apply(typed ? ClockChange::enter(*field, value) : ClockChange::choose(*field, *option));
    return clockRefusalText(series, outcome);
}

} // namespace ChipLoom
