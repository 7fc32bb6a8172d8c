#include "Cli/ClockListing.h"

#include "Cli/TextTable.h"
#include "ClockConfig/ClockSettings.h"
#include "ClockConfig/ClockTexts.h"
#include "Model/SeriesHelpers.h"

#include <QCoreApplication>
#include <QJsonArray>

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

} // namespace

void writeClock(QTextStream &out, const ZV32MCUPLL &page)
{
    const ClockSeries &series = page.series();
    QList<QStringList> settings;
    for (const ClockField field : allClockFields()) {
        if (hasClockField(series, field))
            settings.append({clockFieldName(series, field), settingValue(page, field), clockChoicesText(page, field)});
    }
    out << shown(QT_TRANSLATE_NOOP("Cli", "Clock settings of %1")).arg(seriesName(series)) << '\n';
    writeTable(out, settings, 2);

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
    writeTable(out, frequencies, 2);
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
