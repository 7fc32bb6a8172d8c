#include "Design/Calculators/DerivedParameters.h"

#include "Design/Calculators/CanParameters.h"
#include "Design/Calculators/DiagramValues.h"
#include "Design/Calculators/SerialClocks.h"
#include "Design/Calculators/TimerTiming.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

namespace ChipLoom {

namespace {

// The eleven groups of series whose results may differ, and what does.
constexpr std::array<DerivedSeries, 11> SeriesRows{{
    {.name = "ZV32F421_SpecialParam_Operate", .series = "ZV32F421"},
    {.name = "ZV32F423_A423_SpecialParam_Operate", .series = "ZV32F423 ZV32A423"},
    {.name = "ZV32F425_SpecialParam_Operate", .series = "ZV32F425", .canSjwFollowsBS2 = true},
    {.name = "ZV32L021_SpecialParam_Operate", .series = "ZV32L021 ZV32F011"},
    {.name = "ZV32F403A_F407_A403A_SpecialParam_Operate",
     .series = "ZV32F403A ZV32F407 ZV32A403A ZV32F413 ZV32F415 ZV32WB415 ZV32F403E ZV32F407E",
     .canSjwFollowsBS2 = true},
    {.name = "ZV32F402_F405_SpecialParam_Operate", .series = "ZV32F402 ZV32F405 ZV32F490"},
    {.name = "ZV32F435_F437_SpecialParam_Operate", .series = "ZV32F435 ZV32F437"},
    {.name = "ZV32M412_M416_SpecialParam_Operate", .series = "ZV32M412 ZV32M416"},
    {.name = "ZV32F455_F456_F457_SpecialParam_Operate", .series = "ZV32F455 ZV32F456 ZV32F457"},
    {.name = "ZV32F422_F426_SpecialParam_Operate", .series = "ZV32F422 ZV32F426 ZV32F6221"},
    {.name = "ZV32F406_F408_SpecialParam_Operate", .series = "ZV32F406 ZV32F408"},
}};

// A receiver of ten-bit frames still reads the last bit when both ends share 4 percent.
constexpr double AllowedBaudError = 2.0;
// Consumer audio (IEC 60958-3, level II): 1000 parts per million.
constexpr double AllowedAudioError = 0.1;
constexpr double AllowedPhyClockError = 0.005; // 50 ppm
constexpr double AllowedI2cError = 5.0;
constexpr double AllowedCalendarError = 0.01; // some nine seconds a day
constexpr double FastestCard = 50e6;          // Hz, an SD card in high-speed mode at 3.3 V
constexpr double SlowestChipCard = 1e6;       // Hz, of a card with contacts
constexpr double FastestChipCard = 5e6;

void markRate(ParameterSheet &sheet, const QString &name, double real, double wanted)
{
    const double error = errorPercent(real, wanted);
    const double allowed = allowedRateError(name);
    if (std::abs(error) > allowed)
        sheet.warn(name, DesignReason::RateOff, {shortNumber(error, 3), shortNumber(allowed, 3)});
}

// ---- I2C ----

void I2C_Param_Operate_ClockSpeed(ParameterSheet &sheet)
{
    const std::optional<double> declared = sheet.frequency(QStringLiteral("ClockSpeed"));
    const double clock = sheet.clockHz();
    if (!declared || clock <= 0)
        return;
    // The faster modes begin above what any bus clock forbids.
    const QString name = QStringLiteral("ClockSpeed");
    const bool standard = sheet.text(QStringLiteral("I2C_Mode")) == QLatin1String("I2C_Standard");
    if (standard)
        sheet.setMinimum(name, QString::number(classicI2cLowestHz(clock)));
    const bool wide = sheet.text(QStringLiteral("DutyCycle")) == QLatin1String("I2C_FSMODE_DUTY_16_9");
    const double error = errorPercent(classicI2cSpeedHz(clock, *declared, standard ? 2 : wide ? 25 : 3), *declared);
    if (std::abs(error) > AllowedI2cError)
        sheet.warn(name, DesignReason::RateOff, {shortNumber(error, 3), shortNumber(AllowedI2cError, 3)});
}

const char *limitName(I2cLimit limit)
{
    switch (limit) {
    case I2cLimit::RiseTime:
        return "tr";
    case I2cLimit::FallTime:
        return "tf";
    case I2cLimit::DataSetup:
        return "tSU;DAT";
    case I2cLimit::DataHold:
        return "tHD;DAT";
    case I2cLimit::TooFast:
    case I2cLimit::TooSlow:
        return "fSCL";
    case I2cLimit::None:
    case I2cLimit::Clock:
        break;
    }
    return "PCLK";
}

void I2C_Param_Operate_Timing(ParameterSheet &sheet)
{
    const QString result = QStringLiteral("Timing_Configuration_Value");
    const I2cRequest request = i2cRequestOf(sheet);
    const I2cAnswer answer = solveI2cTiming(request);
    if (answer.timing) {
        sheet.set(result,
                  QLatin1String("0x") +
                      QStringLiteral("%1").arg(answer.timing->registerValue(), 8, 16, QLatin1Char('0')).toUpper());
        const double error = errorPercent(answer.timing->speedHz, request.speedHz);
        if (std::abs(error) > AllowedI2cError)
            sheet.warn(result, DesignReason::RateOff, {shortNumber(error, 3), shortNumber(AllowedI2cError, 3)});
        return;
    }
    sheet.warn(result, DesignReason::NoI2cTiming,
               {QLatin1String(limitName(answer.failing)),
                answer.nearestSpeedHz > 0 ? shortNumber(answer.nearestSpeedHz / 1e3, 3) + QStringLiteral(" kHz")
                                          : QStringLiteral("-")});
}

void i2cTimeout(ParameterSheet &sheet, const QString &prefix, bool idle)
{
    const std::optional<double> value = sheet.number(prefix + QLatin1String("_timeout_value_register"));
    if (value && sheet.isOn(prefix + QLatin1String("_timeout_enable")))
        sheet.setNumber(prefix + QLatin1String("_timeout_value"),
                        i2cTimeoutMs(sheet.clockHz(), static_cast<int>(*value), idle), 4);
}

void I2C_Param_Operate_DCLH(ParameterSheet &sheet)
{
    i2cTimeout(sheet, QStringLiteral("DCLH"),
               sheet.text(QStringLiteral("DCLH_timeout_mode")) == QLatin1String("I2C_TIMEOUT_DETCET_HIGH"));
}

void I2C_Param_Operate_CCLE(ParameterSheet &sheet)
{
    i2cTimeout(sheet, QStringLiteral("CCLE"), false);
}

void I2C_Param_Operate(ParameterSheet &sheet)
{
    if (sheet.has(QStringLiteral("Timing_Configuration_Value")))
        I2C_Param_Operate_Timing(sheet);
    else
        I2C_Param_Operate_ClockSpeed(sheet);
    I2C_Param_Operate_DCLH(sheet);
    I2C_Param_Operate_CCLE(sheet);
}

// Who chooses a class of speed wants its speed, and not the lowest that is just beyond the class of before.
QList<XMLAttributeInfo> modifyI2cParameters(const QString &name, const QString &value)
{
    if (name != QLatin1String("I2C_Mode"))
        return {};
    XMLAttributeInfo speed;
    speed.attributeName = QStringLiteral("ClockSpeed");
    speed.attributeValue = value == QLatin1String("I2C_Standard") ? QStringLiteral("100000")
                           : value == QLatin1String("I2C_Fast")   ? QStringLiteral("400000")
                                                                  : QStringLiteral("1000000");
    return {speed};
}

// ---- Serial ports ----

void USART_Param_Operate_BaudRate(ParameterSheet &sheet)
{
    const QString result = QStringLiteral("RealBaudRate");
    const std::optional<double> wanted = sheet.frequency(QStringLiteral("BaudRate"));
    const double clock = sheet.clockHz();
    if (!wanted || clock <= 0 || !sheet.has(result))
        return;
    const bool doubled = sheet.text(QStringLiteral("OverSampling")) == QLatin1String("USART_OVER_SAMPLING_8");
    const double real = realBaudRate(clock, *wanted, doubled);
    sheet.setFrequency(result, real);
    markRate(sheet, result, real, *wanted);
    // A bit is sampled so often, once a clock of the port.
    const double fastest = std::floor(clock / (doubled ? 8 : 16));
    if (*wanted > fastest)
        sheet.warn(QStringLiteral("BaudRate"), DesignReason::AboveMaximum,
                   {shortNumber(*wanted, 0), shortNumber(fastest, 0)});
}

void USART_Param_Operate_CardClock(ParameterSheet &sheet)
{
    const QString result = QStringLiteral("SmartcardClock");
    const double division = sheet.number(QStringLiteral("SmartcardDivision")).value_or(0);
    if (!sheet.has(result) || division <= 0)
        return;
    const double clock = sheet.clockHz() / (2 * division);
    sheet.setFrequency(result, clock);
    if (clock > FastestChipCard)
        sheet.warn(result, DesignReason::AboveMaximum,
                   {shortNumber(clock / 1e6, 3), shortNumber(FastestChipCard / 1e6, 3)});
    else if (clock < SlowestChipCard)
        sheet.warn(result, DesignReason::BelowMinimum,
                   {shortNumber(clock / 1e6, 3), shortNumber(SlowestChipCard / 1e6, 3)});
}

void USART_Param_Operate(ParameterSheet &sheet)
{
    USART_Param_Operate_BaudRate(sheet);
    USART_Param_Operate_CardClock(sheet);
}

// The port of printf has no page of its own.
void SYSTEM_Param_Operate(ParameterSheet &sheet)
{
    const QString name = QStringLiteral("Printf_BaudRate");
    const std::optional<double> wanted = sheet.number(name);
    const double clock = sheet.clockHz(sheet.text(QStringLiteral("UART_Printf")));
    if (wanted && clock > 0)
        markRate(sheet, name, realBaudRate(clock, *wanted, false), *wanted);
}

void SPI_Param_Operate(ParameterSheet &sheet)
{
    const std::optional<int> divider = sheet.tokenNumber(QStringLiteral("ClkDivision"));
    if (divider && *divider > 0)
        sheet.setFrequency(QStringLiteral("ClockFrequency"), sheet.clockHz() / *divider);
}

// A mapped memory ends where its addresses do.
void QSPI_Param_Operate(ParameterSheet &sheet)
{
    SPI_Param_Operate(sheet);
    const QString name = QStringLiteral("ReadAddressLength");
    const int bytes = sheet.text(name).section(QLatin1Char('_'), 2, 2).toInt();
    const int megabytes = sheet.text(QStringLiteral("FlashSize")).section(QLatin1Char('_'), 2, 2).toInt();
    int needed = 1;
    while (std::ldexp(1.0, 8 * needed) < megabytes * 1048576.0)
        ++needed;
    if (bytes > 0 && bytes < needed)
        sheet.warn(name, DesignReason::BelowMinimum, {QString::number(bytes), QString::number(needed)});
}

void SDIO_Param_Operate(ParameterSheet &sheet)
{
    const int division = static_cast<int>(sheet.number(QStringLiteral("Clock_division")).value_or(0));
    const double clock = sdioClock(sheet.clockHz(), division, sheet.isOn(QStringLiteral("Clock_divider_bypass")));
    sheet.setFrequency(QStringLiteral("ClockFrequency"), clock);
    if (clock > FastestCard)
        sheet.warn(QStringLiteral("ClockFrequency"), DesignReason::AboveMaximum,
                   {shortNumber(clock / 1e6, 3), shortNumber(FastestCard / 1e6, 3)});
}

void XMC_Param_Operate(ParameterSheet &sheet)
{
    const int divider = sheet.tokenNumber(QStringLiteral("ClockDivision")).value_or(0);
    if (divider <= 0)
        return;
    const double clock = sheet.clockHz() / divider;
    sheet.setFrequency(QStringLiteral("ClockFrequency"), clock);
    const std::optional<int> rowLines = sheet.tokenNumber(QStringLiteral("RowAddress"));
    const std::optional<double> refreshMs = sheet.number(QStringLiteral("RefreshTime"));
    if (!rowLines || !refreshMs)
        return;
    const int count = sdramRefreshCount(clock, *rowLines, *refreshMs);
    sheet.setNumber(QStringLiteral("RefreshCount"), count, 0);
    if (count == 0)
        sheet.warn(QStringLiteral("RefreshCount"), DesignReason::BelowMinimum,
                   {QString::number(count), QString::number(1)});
}

// A PHY takes a clock of 25 MHz: of the crystal as it is, which stands still where HEXT is off, or of HCLK divided.
void EMAC_Param_Operate_PhyClock(ParameterSheet &sheet)
{
    const QString result = QStringLiteral("PHYClockFrequency");
    if (!sheet.has(result))
        return;
    const bool crystal = sheet.text(QStringLiteral("PHYClockSource")) == QLatin1String("EMAC_PHY_CLOCK_HEXT");
    const double divider = crystal ? 1 : sheet.number(QStringLiteral("PHYClockDivision")).value_or(0);
    if (divider <= 0)
        return;
    const double clock = (crystal ? sheet.crystalHz() : sheet.clockHz()) / divider;
    sheet.setFrequency(result, clock);
    markRate(sheet, result, clock, 25e6);
}

// The coarse clock of the time stamps counts so many whole nanoseconds for each HCLK.
void EMAC_Param_Operate_TimeStamps(ParameterSheet &sheet)
{
    const QString name = QStringLiteral("TimeStampUpdate");
    if (sheet.text(name) != QLatin1String("EMAC_TIME_STAMP_COARSE"))
        return;
    if (const double clock = sheet.clockHz(); clock > 0)
        markRate(sheet, name, std::round(1e9 / clock) * clock, 1e9);
}

void EMAC_Param_Operate(ParameterSheet &sheet)
{
    EMAC_Param_Operate_PhyClock(sheet);
    EMAC_Param_Operate_TimeStamps(sheet);
}

// "I2S_AUDIO_FREQUENCY_11_025K" stands for 11.025 kHz.
double audioFrequency(const QString &token)
{
    QString number = token.section(QStringLiteral("FREQUENCY_"), 1);
    number.chop(1);
    return number.replace(QLatin1Char('_'), QLatin1Char('.')).toDouble() * 1e3;
}

void I2S_Param_Operate(ParameterSheet &sheet)
{
    const double wanted = audioFrequency(sheet.text(QStringLiteral("AudioFreq")));
    const double clock = sheet.clockHz();
    if (wanted <= 0 || clock <= 0)
        return;
    const QString standard = sheet.text(QStringLiteral("Standard"));
    const bool pcm = standard == QLatin1String("I2S_AUDIO_PROTOCOL_PCM_SHORT") ||
                     standard == QLatin1String("I2S_AUDIO_PROTOCOL_PCM_LONG");
    const bool narrow = sheet.text(QStringLiteral("DataFormat")) == QLatin1String("I2S_DATA_16BIT_CHANNEL_16BIT");
    const I2SDivider divider =
        i2sDivider(clock, wanted, i2sClocksPerSample(sheet.isOn(QStringLiteral("MCLKOutput")), pcm, narrow ? 16 : 32));
    sheet.setNumber(QStringLiteral("I2S_DIV"), divider.div, 0);
    sheet.setNumber(QStringLiteral("I2S_ODD"), divider.odd, 0);
    sheet.setFrequency(QStringLiteral("RealAudioFreq"), divider.sampleRate);
    sheet.setNumber(QStringLiteral("ErrorAudioFreq"), divider.errorPercent, 4);
    markRate(sheet, QStringLiteral("RealAudioFreq"), divider.sampleRate, wanted);
}

// ---- Timers ----

void TMR_Param_Operate_Timing(ParameterSheet &sheet)
{
    const std::optional<TimerCount> count = timerCountOf(sheet);
    if (!count)
        return;
    if (isExternallyClocked(sheet))
        sheet.hide(QStringLiteral("OverflowFrequency"));
    else
        sheet.setFrequency(QStringLiteral("OverflowFrequency"), count->overflowHz);
}

void TMR_Param_Operate_DeadTimeValue(ParameterSheet &sheet)
{
    const std::optional<double> value = sheet.number(QStringLiteral("DeadTime"));
    if (value)
        sheet.setNumber(QStringLiteral("DeadTimeValue"),
                        timerDeadTimeNs(static_cast<unsigned>(*value),
                                        sheet.tokenNumber(QStringLiteral("ClockDivision")).value_or(1),
                                        sheet.clockHz() / 1e6),
                        3);
}

// A filter's sampling frequency stands beside it under the same name with "Frequency" behind.
void TMR_Param_Operate_FilterFrequency(ParameterSheet &sheet)
{
    const QString dividers = sheet.text(QStringLiteral("FilterDividers"));
    const int division = sheet.tokenNumber(QStringLiteral("ClockDivision")).value_or(1);
    QStringList names;
    for (const RefParameter &entry : sheet.list())
        names.append(entry.Name);
    static const QRegularExpression ending(QStringLiteral("_?Frequency$"));
    for (const QString &name : qAsConst(names)) {
        const QString filter = QString(name).remove(ending);
        const std::optional<double> value = filter == name ? std::nullopt : sheet.number(filter);
        if (!value || !filter.contains(QLatin1String("filter"), Qt::CaseInsensitive))
            continue;
        if (const std::optional<double> hz =
                timerFilterHz(sheet.clockHz(), division, dividers, static_cast<int>(*value)))
            sheet.setFrequency(name, *hz);
    }
}

void TMR_Param_Operate(ParameterSheet &sheet)
{
    TMR_Param_Operate_Timing(sheet);
    TMR_Param_Operate_FilterFrequency(sheet);
    TMR_Param_Operate_DeadTimeValue(sheet);
}

// ---- Converters ----

// Cycles of a conversion at the chosen resolution: "ADC_RESOLUTION_12B:12.5 ADC_RESOLUTION_10B:10.5".
double conversionCycles(const ParameterReader &sheet)
{
    const QString resolution = sheet.text(QStringLiteral("ResolutionSelect"));
    const QStringList list = sheet.text(QStringLiteral("ConversionCycles")).split(QLatin1Char(' '));
    for (const QString &entry : list) {
        if (entry.section(QLatin1Char(':'), 0, 0) == resolution)
            return entry.section(QLatin1Char(':'), 1).toDouble();
    }
    return 0;
}

// In Hz. Where the converters divide the clock of the bus themselves, they say by how much and how fast it may be.
double adcClock(ParameterSheet &sheet)
{
    const double clock = sheet.clockHz() / sheet.tokenNumber(QStringLiteral("ClockDivision")).value_or(1);
    const double limit = sheet.text(QStringLiteral("ClockLimit")).toDouble();
    if (limit > 0 && clock > limit * 1e6)
        sheet.warn(QStringLiteral("Clock"), DesignReason::AboveMaximum,
                   {shortNumber(clock / 1e6, 3), shortNumber(limit, 3)});
    return clock;
}

// The ranks in use, as "OrdinarySequence_1", in the order in which the program sets them.
QStringList adcRanks(const ParameterReader &sheet)
{
    QStringList ranks;
    for (const char *sequence : {"OrdinarySequence", "PreemptSequence"}) {
        const int length = static_cast<int>(sheet.number(QLatin1String("NbrOf") + QLatin1String(sequence)).value_or(0));
        for (int n = 1; n <= length; ++n)
            ranks.append(QLatin1String(sequence) + QLatin1Char('_') + QString::number(n));
    }
    return ranks;
}

// Converters that take turns at one signal: the one has to end its sampling before the other begins.
void ADC_Shift_Operate(ParameterSheet &sheet, const QString &rank, double sampling)
{
    const std::optional<double> shift = sheet.number(QStringLiteral("ShiftCycles"));
    if (shift && rank.startsWith(QLatin1String("Ordinary")) && sampling > *shift)
        sheet.warn(QLatin1String("SamplingTime_") + rank, DesignReason::AboveMaximum,
                   {shortNumber(sampling, 1), shortNumber(*shift, 0)});
}

// A sampling time is that of the channel: where several ranks have the same channel, the last one that is set holds.
void ADC_SamplingRate_Value_Operate(ParameterSheet &sheet, double clock)
{
    static const QRegularExpression cycles(QStringLiteral("([0-9]+)_([0-9]+)"));
    const double conversion = conversionCycles(sheet);
    const int conversions = sheet.isOn(QStringLiteral("Oversampling"))
                                ? sheet.tokenNumber(QStringLiteral("OversampleRatio")).value_or(1)
                                : 1;
    const QStringList ranks = adcRanks(sheet);
    QHash<QString, QString> timeOfChannel;
    for (const QString &rank : ranks)
        timeOfChannel.insert(sheet.text(QLatin1String("Channel_") + rank), QLatin1String("SamplingTime_") + rank);
    for (const QString &rank : ranks) {
        const QString own = QLatin1String("SamplingTime_") + rank;
        const QString holding = timeOfChannel.value(sheet.text(QLatin1String("Channel_") + rank));
        if (sheet.text(own) != sheet.text(holding))
            sheet.warn(own, DesignReason::SamplingTimeShared, {holding});
        const QRegularExpressionMatch match = cycles.match(sheet.text(holding));
        if (!match.hasMatch() || conversion <= 0)
            continue;
        const double sampling = (match.captured(1) + QLatin1Char('.') + match.captured(2)).toDouble();
        ADC_Shift_Operate(sheet, rank, sampling);
        sheet.setFrequency(QLatin1String("SamplingRate_") + rank, clock / (sampling + conversion) / conversions);
    }
}

// "ADC_RESOLUTION_12B" stands for 12.
int adcBits(const ParameterReader &sheet)
{
    QString bits = sheet.text(QStringLiteral("ResolutionSelect")).section(QLatin1Char('_'), -1);
    bits.chop(1);
    return bits.toInt();
}

// A result has 16 bits: the sum of several conversions is shifted until it fits.
void ADC_Oversampling_Operate(ParameterSheet &sheet)
{
    constexpr int ResultBits = 16;
    const int ratio = sheet.tokenNumber(QStringLiteral("OversampleRatio")).value_or(1);
    const int surplus = adcBits(sheet) + static_cast<int>(std::log2(ratio)) - ResultBits;
    sheet.setMinimum(QStringLiteral("OversampleShift"), QString::number(std::max(0, surplus)));
}

// Results that go in one half-word have eight bits, at the leader and at whoever follows it.
void ADC_CommonDMA_Operate(ParameterSheet &sheet)
{
    constexpr int ByteBits = 8;
    const bool takesPart =
        !sheet.has(QStringLiteral("OrdinaryFollows")) || sheet.isOn(QStringLiteral("OrdinaryFollows"));
    if (takesPart && sheet.text(QStringLiteral("CommonDMAMode")) == QLatin1String("ADC_COMMON_DMA_BYTES") &&
        adcBits(sheet) > ByteBits)
        sheet.warn(QStringLiteral("ResolutionSelect"), DesignReason::AboveMaximum,
                   {QString::number(adcBits(sheet)), QString::number(ByteBits)});
}

void ADC_Param_Operate(ParameterSheet &sheet)
{
    const double clock = adcClock(sheet);
    sheet.setFrequency(QStringLiteral("Clock"), clock);
    ADC_SamplingRate_Value_Operate(sheet, clock);
    ADC_Oversampling_Operate(sheet);
    ADC_CommonDMA_Operate(sheet);
}

// ---- Watchdogs ----

void setTiming(ParameterSheet &sheet, const WatchdogTiming &timing)
{
    sheet.setNumber(QStringLiteral("Time_RefreshNotAllowed"), timing.refreshNotAllowed, 4);
    sheet.setNumber(QStringLiteral("Time_RefreshTheWindow"), timing.refreshWindow, 4);
    sheet.setNumber(QStringLiteral("Time_Timeout"), timing.timeout, 4);
}

void WWDT_Param_Operate_Timing(ParameterSheet &sheet)
{
    setTiming(sheet, watchdogCountOf(sheet).timing);
}

void WDT_Param_Operate_Timing(ParameterSheet &sheet)
{
    setTiming(sheet, watchdogCountOf(sheet).timing);
}

// ---- Real-time clocks ----

// The dividers at the start make a second of 32768 Hz. LICK and the divided crystal need others.
void RTC_Param_Operate(ParameterSheet &sheet)
{
    const bool enhanced = sheet.has(QStringLiteral("DivB"));
    const QString divider = enhanced ? QStringLiteral("DivB") : QStringLiteral("Divider");
    const std::optional<double> count = sheet.number(divider);
    const double first = enhanced ? sheet.number(QStringLiteral("DivA")).value_or(0) + 1 : 1;
    if (count && sheet.clockHz() > 0)
        markRate(sheet, divider, sheet.clockHz() / (first * (*count + 1)), 1);
}

// ---- Cameras ----

void DVP_Param_Operate(ParameterSheet &sheet)
{
    for (const char *stem : {"Horizontal_Scaling_Resize", "Vertical_Scaling_Resize", "Frame_Rate_Contorl"}) {
        const QString name = QLatin1String(stem);
        if (const std::optional<double> source = sheet.number(name + QLatin1String("_Source_Factor")))
            sheet.setMaximum(name + QLatin1String("_Target_Factor"), shortNumber(*source, 0));
    }
}

// Which instances have which results; the first that fits counts.
struct CalculatorRow
{
    const char *instances; // beginning of the name
    void (*operate)(ParameterSheet &sheet);
};

constexpr std::array<CalculatorRow, 18> Calculators{{
    {"USART", USART_Param_Operate},
    {"UART", USART_Param_Operate_BaudRate},
    {"CAN",
     [](ParameterSheet &sheet) {
         if (sheet.has(QStringLiteral("NominalBaudRate")))
             CAN_Nominal_Param_Operate(sheet);
         else
             CAN_Param_Operate(sheet);
     }},
    {"I2C", I2C_Param_Operate},
    {"I2S", I2S_Param_Operate},
    {"SPI", SPI_Param_Operate},
    {"QSPI", QSPI_Param_Operate},
    {"XMC_SDRAM", XMC_Param_Operate},
    {"EMAC", EMAC_Param_Operate},
    {"SDIO", SDIO_Param_Operate},
    {"TMR", TMR_Param_Operate},
    {"ADC", ADC_Param_Operate},
    {"WWDT", WWDT_Param_Operate_Timing},
    {"WDT", WDT_Param_Operate_Timing},
    {"ERTC", RTC_Param_Operate},
    {"RTC", RTC_Param_Operate},
    {"DVP", DVP_Param_Operate},
    {"SYSTEM", SYSTEM_Param_Operate},
}};

} // namespace

const DerivedSeries &derivedSeries(const QString &series)
{
    static constexpr DerivedSeries Other;
    for (const DerivedSeries &row : SeriesRows) {
        if (QString(QLatin1String(row.series)).split(QLatin1Char(' ')).contains(series))
            return row;
    }
    return Other;
}

void SpecialParam_Operate(ParameterSheet &sheet)
{
    for (const CalculatorRow &row : Calculators) {
        if (sheet.instance().startsWith(QLatin1String(row.instances))) {
            row.operate(sheet);
            return;
        }
    }
}

QList<XMLAttributeInfo> ModifyParam_Operate(const QString &instance, const QString &name, const QString &value)
{
    if (instance.contains(QLatin1String("CAN")))
        return modifyCanParameters(name, value);
    if (instance.startsWith(QLatin1String("I2C")))
        return modifyI2cParameters(name, value);
    return {};
}

double allowedRateError(const QString &parameter)
{
    if (parameter == QLatin1String("PHYClockFrequency"))
        return AllowedPhyClockError;
    // Clocks that tell the time.
    if (QStringList{"DivB", "Divider", "TimeStampUpdate"}.contains(parameter))
        return AllowedCalendarError;
    return parameter == QLatin1String("RealAudioFreq") ? AllowedAudioError : AllowedBaudError;
}

} // namespace ChipLoom
