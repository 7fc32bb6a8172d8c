#include "Design/Calculators/DiagramValues.h"

#include "Design/Calculators/TimerTiming.h"

#include <algorithm>
#include <limits>

namespace ChipLoom {

namespace {

// "7", or the quanta in a token such as "CAN_BTS1_7TQ".
int quantaOf(const ParameterReader &parameters, const QString &name)
{
    QString text = parameters.text(name).section(QLatin1Char('_'), -1);
    if (text.endsWith(QLatin1String("TQ")))
        text.chop(2);
    return text.toInt();
}

CanBit canBit(const ParameterReader &parameters, const QString &prefix, int sync, bool syncInFirst)
{
    const RefParameter *select = parameters.parameter(
        prefix.isEmpty() ? QStringLiteral("BaudRate_Result_Select") : prefix + QLatin1String("BaudRate_Result_Select"));
    CanBit bit;
    if (!select || select->CurrentValue.isEmpty())
        return bit;
    bit.sync = sync;
    bit.bs1 = quantaOf(parameters, prefix + QLatin1String("BS1_Size")) - (syncInFirst ? sync : 0);
    bit.bs2 = quantaOf(parameters, prefix + QLatin1String("BS2_Size"));
    bit.samplePoint = 100.0 * (bit.sync + bit.bs1) / std::max(1, bit.quanta());
    bit.bitRate = parameters.frequency(prefix + QLatin1String("RealBaudRate")).value_or(0) / 1e3;
    return bit;
}

std::uint32_t registerValue(std::optional<double> value)
{
    return static_cast<std::uint32_t>(
        std::clamp(value.value_or(0), 0.0, double(std::numeric_limits<std::uint32_t>::max())));
}

std::uint32_t greatestOf(const ParameterReader &parameters, const QString &name)
{
    constexpr std::uint32_t Usual = 65535;
    bool isNumber = false;
    const std::uint32_t bound = parameters.parameter(name)->MaxValue.toUInt(&isNumber);
    return isNumber ? bound : Usual;
}

} // namespace

CanBits canBitsOf(const ParameterReader &parameters)
{
    CanBits bits;
    if (!parameters.has(QStringLiteral("NominalBaudRate"))) {
        bits.nominal = canBit(parameters, {}, 1, false);
        return bits;
    }
    bits.type = parameters.has(QStringLiteral("DataBaudRate")) ? CAN_TYPE_NominalData : CAN_TYPE_Nominal;
    bits.nominal = canBit(parameters, QStringLiteral("Nominal_"), 1, true);
    if (bits.type == CAN_TYPE_NominalData)
        bits.data = canBit(parameters, QStringLiteral("Data_"), 1, true);
    return bits;
}

SpiFrame spiFrameOf(const ParameterReader &parameters)
{
    SpiFrame frame;
    frame.ti = parameters.text(QStringLiteral("TIMode")) == QLatin1String("SPI_TIMODE_ENABLE");
    frame.bitClockHz = parameters.frequency(QStringLiteral("ClockFrequency")).value_or(0);
    if (frame.ti)
        return frame;
    frame.clockHighWhenIdle =
        parameters.text(QStringLiteral("CLKPolarity")) == QLatin1String("SPI_CLOCK_POLARITY_HIGH");
    frame.secondEdge = parameters.text(QStringLiteral("CLKPhase")) == QLatin1String("SPI_CLOCK_PHASE_2EDGE");
    frame.lowestBitFirst = parameters.text(QStringLiteral("FirstBit")) == QLatin1String("SPI_FIRST_BIT_LSB");
    return frame;
}

I2cRequest i2cRequestOf(const ParameterReader &parameters)
{
    const QString mode = parameters.text(QStringLiteral("I2C_Mode"));
    return {.clockHz = parameters.clockHz(),
            .mode = mode == QLatin1String("I2C_Fast_Plus") ? I2cMode::FastPlus
                    : mode == QLatin1String("I2C_Fast")    ? I2cMode::Fast
                                                           : I2cMode::Standard,
            .speedHz = parameters.frequency(QStringLiteral("ClockSpeed")).value_or(0),
            .riseTime = parameters.number(QStringLiteral("Rise_Time")).value_or(0),
            .fallTime = parameters.number(QStringLiteral("Fall_Time")).value_or(0),
            .analogFilter = parameters.isOn(QStringLiteral("Analog_Filter")),
            .digitalFilter = static_cast<int>(parameters.number(QStringLiteral("Digital_Filter")).value_or(0))};
}

I2cBusTimes i2cBusTimesOf(const ParameterReader &parameters)
{
    const I2cRequest request = i2cRequestOf(parameters);
    const I2cLimits &limits = i2cLimits(request.mode);
    I2cBusTimes times{true, limits.maxRise, limits.maxFall, limits.dataSetup, limits.dataHold, request.speedHz};
    if (!parameters.has(QStringLiteral("Timing_Configuration_Value")))
        return times;
    if (const I2cAnswer answer = solveI2cTiming(request); answer.timing) {
        const I2cTimes solved = i2cTimes(request, *answer.timing);
        times = {false, request.riseTime, request.fallTime, solved.dataSetup, solved.dataHold, answer.timing->speedHz};
    }
    return times;
}

bool isExternallyClocked(const ParameterReader &parameters)
{
    return parameters.has(QStringLiteral("EncoderMode")) ||
           parameters.text(QStringLiteral("ClockSource")) == QLatin1String("TMR_CLOCKSOURCE_EXTMODEB") ||
           parameters.text(QStringLiteral("TMR_SubMode_Control")) == QLatin1String("TMR_SUB_EXTERNAL_CLOCK_MODE_A");
}

std::optional<TimerCount> timerCountOf(const ParameterReader &parameters)
{
    const QString dividerName = QStringLiteral("DividerValue");
    const QString periodName = QStringLiteral("Period");
    if (!parameters.number(dividerName) || !parameters.number(periodName))
        return std::nullopt;
    TimerCount count;
    count.divider = registerValue(parameters.number(dividerName));
    count.maxDivider = greatestOf(parameters, dividerName);
    count.period = registerValue(parameters.number(periodName));
    count.maxPeriod = greatestOf(parameters, periodName);
    const QString direction = parameters.text(QStringLiteral("CounterDirection"));
    if (direction.startsWith(QLatin1String("TMR_COUNT_TWO_WAY")))
        count.direction = TimerCount::Direction::TwoWay;
    else if (direction == QLatin1String("TMR_COUNT_DOWN"))
        count.direction = TimerCount::Direction::Down;
    if (!isExternallyClocked(parameters))
        count.clockHz = parameters.clockHz();
    count.overflowHz =
        timerOverflowHz(count.clockHz, count.divider, count.period, count.direction == TimerCount::Direction::TwoWay);
    return count;
}

WatchdogCount watchdogCountOf(const ParameterReader &parameters)
{
    const int prescaler = parameters.tokenNumber(QStringLiteral("Prescaler")).value_or(1);
    const std::optional<double> window = parameters.number(QStringLiteral("Window"));
    WatchdogCount count;
    count.counter = static_cast<int>(parameters.number(QStringLiteral("Counter")).value_or(0));
    count.window = static_cast<int>(window.value_or(count.counter));
    count.hasWindow = window.has_value();
    const RefParameter *counter = parameters.parameter(QStringLiteral("Counter"));
    count.hexadecimal = counter && counter->CurrentValueType == CURRENTVALUETYPE_HEX;
    const auto timing = parameters.instance().startsWith(QLatin1String("WWDT")) ? wwdtTiming : wdtTiming;
    count.timing = timing(parameters.clockHz(), prescaler, count.counter, count.window);
    return count;
}

int opModeOf(const ParameterReader &parameters)
{
    const int mode = parameters.tokenNumber(QStringLiteral("OP_Mode")).value_or(0);
    return mode >= 1 && mode <= 6 ? mode : 0;
}

} // namespace ChipLoom
