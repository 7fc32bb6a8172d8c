#include "Cli/ClockListing.h"

#include "ClockConfig/ClockTexts.h"
#include "Model/SeriesHelpers.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>

namespace ChipLoom {

namespace {

QString shown(const char *text)
{
    return QCoreApplication::translate("Cli", text);
}

QString seriesName(const ClockSeries &series)
{
    return ZV32MCUSERIALS_To_MCUSerialString(series.code);
}

QString choices(const ZV32MCUPLL &page, ClockField field)
{
    const auto range = [](double min, double max) {
        return shown(QT_TRANSLATE_NOOP("Cli", "%1 to %2")).arg(min).arg(max);
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

/// The value of a setting as it is given again, without the signs of the boxes ("/4").
QString settingValue(const ZV32MCUPLL &page, ClockField field)
{
    if (field == ClockField::PllMs || field == ClockField::PllNs)
        return QString::number(clockFieldValue(page.clock(), field));
    return page.text(field);
}

QString frequencyText(double mhz)
{
    return mhz > 0 && mhz < 1 ? QString::number(mhz * 1000, 'f', 3) + QLatin1String(" kHz")
                              : QString::number(mhz, 'f', 3) + QLatin1String(" MHz");
}

void writeColumns(QTextStream &out, const QList<QStringList> &lines)
{
    QList<int> widths;
    for (const QStringList &line : lines) {
        for (int i = 0; i < line.size(); ++i) {
            if (i == widths.size())
                widths.append(0);
            widths[i] = std::max(widths[i], line.at(i).size());
        }
    }
    for (const QStringList &line : lines) {
        QString text = QStringLiteral("  ");
        for (int i = 0; i < line.size(); ++i)
            text += line.at(i).leftJustified(widths.at(i) + 2);
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        out << text << '\n';
    }
}

bool needsHext(ClockField field, std::optional<double> value)
{
    if (field == ClockField::Hext)
        return true;
    if (!value)
        return false;
    return (field == ClockField::PllRc && int(*value) == PLLRC_HEXT) ||
           (field == ClockField::SclkSelect && int(*value) == SYSCLK_HEXT) ||
           (field == ClockField::RtcSel && int(*value) == RTCSEL_HEXT);
}

} // namespace

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
            return shown(QT_TRANSLATE_NOOP("Cli", "%1 takes: %2")).arg(name, QStringLiteral("on, off"));
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
        return shown(QT_TRANSLATE_NOOP("Cli", "The clock of %1 has no \"%2\"; it has: %3"))
            .arg(seriesName(series), name, names.join(QLatin1String(", ")));
    }
    const bool typed = isTypedClockField(*field);
    const std::optional<double> option = typed ? std::nullopt : clockOptionByText(page.clock(), *field, value);
    if (!typed && !option)
        return shown(QT_TRANSLATE_NOOP("Cli", "%1 takes: %2")).arg(name, choices(page, *field));
    if (alone && needsHext(*field, option) && !page.clock().Get_HEXT_Enable())
        page.Set_hext_enable_flag(true, false);
    if (alone && *field == ClockField::RtcSel && int(*option) == RTCSEL_LEXT)
        page.Set_lext_enable_flag(true);
    const ClockOutcome outcome =
        page.apply(typed ? ClockChange::enter(*field, value) : ClockChange::choose(*field, *option));
    return clockRefusalText(series, outcome);
}

void writeClock(QTextStream &out, const ZV32MCUPLL &page)
{
    const ClockSeries &series = page.series();
    QList<QStringList> settings;
    for (const ClockField field : allClockFields()) {
        if (hasClockField(series, field))
            settings.append({clockFieldName(series, field), settingValue(page, field), choices(page, field)});
    }
    out << shown(QT_TRANSLATE_NOOP("Cli", "Clock settings of %1")).arg(seriesName(series)) << '\n';
    writeColumns(out, settings);

    QList<QStringList> frequencies;
    for (const ClockBranch branch : clockBranches(series)) {
        if (!page.isShown(branch))
            continue;
        const ClockReading reading = page.reading(branch);
        QString remark = reading.inRange() ? QString() : shown(QT_TRANSLATE_NOOP("Cli", "out of range"));
        if (branch == ClockBranch::Sclk && page.sclkErrorPpm())
            remark =
                shown(QT_TRANSLATE_NOOP("Cli", "%1 ppm from what was asked for")).arg(*page.sclkErrorPpm(), 0, 'f', 1);
        frequencies.append(
            {QLatin1String(clockBranchName(branch)), frequencyText(reading.mhz), clockLimitsText(reading), remark});
    }
    out << '\n' << shown(QT_TRANSLATE_NOOP("Cli", "Frequencies")) << '\n';
    writeColumns(out, frequencies);
    if (!page.pllRegisterText().isEmpty())
        out << "\nCRM_PLLCFG " << page.pllRegisterText() << '\n';

    const std::vector<ClockProblem> problems = page.problems();
    if (problems.empty())
        return;
    out << '\n' << shown(QT_TRANSLATE_NOOP("Cli", "Problems")) << '\n';
    for (const ClockProblem &problem : problems)
        out << "  " << clockProblemText(series, problem, page.clock().GetPllInPutValue()) << '\n';
}

QJsonObject clockJson(const ZV32MCUPLL &page)
{
    const ClockSeries &series = page.series();
    QJsonObject settings;
    for (const ClockField field : allClockFields()) {
        if (hasClockField(series, field))
            settings.insert(clockFieldName(series, field), settingValue(page, field));
    }
    QJsonArray frequencies;
    for (const ClockBranch branch : clockBranches(series)) {
        if (!page.isShown(branch))
            continue;
        const ClockReading reading = page.reading(branch);
        QJsonObject row{{QStringLiteral("name"), QLatin1String(clockBranchName(branch))},
                        {QStringLiteral("mhz"), reading.mhz},
                        {QStringLiteral("inRange"), reading.inRange()}};
        if (reading.limits.min > 0)
            row.insert(QStringLiteral("min"), reading.limits.min);
        if (reading.limits.max > 0)
            row.insert(QStringLiteral("max"), reading.limits.max);
        frequencies.append(row);
    }
    QJsonArray problems;
    for (const ClockProblem &problem : page.problems())
        problems.append(clockProblemText(series, problem, page.clock().GetPllInPutValue()));
    QJsonObject object{{QStringLiteral("series"), seriesName(series)},
                       {QStringLiteral("settings"), settings},
                       {QStringLiteral("frequencies"), frequencies},
                       {QStringLiteral("problems"), problems}};
    if (!page.pllRegisterText().isEmpty())
        object.insert(QStringLiteral("pllRegister"), page.pllRegisterText());
    return object;
}

} // namespace ChipLoom
