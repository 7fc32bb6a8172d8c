#include "GenerateCode/Peripherals/DeclaredGenerator.h"

namespace ChipLoom {

namespace {

constexpr int PinLines = 16; // the lines behind these belong to other peripherals
constexpr int LastLine = 22;

QString lineName(int line)
{
    return QLatin1String("EXINT") + QString::number(line);
}

QStringList pinSignals()
{
    QStringList names;
    for (int line = 0; line < PinLines; ++line)
        names.append(lineName(line));
    return names;
}

// The call that connects a line with the port of its pin; the function differs with the way in which pins are chosen.
Topic sourceCall(const char *function, int line)
{
    const QString signal = lineName(line);
    return call("GenerateCode_EXINT_line_config", function,
                {computed([signal](const DeclaredGenerator &generator) {
                     return generator.Get_PinSignal_DefineString_SCFG_GPIO_x(
                         generator.Get_PinName_Accord_PinSignal(signal));
                 }),
                 computed([signal](const DeclaredGenerator &generator) {
                     return generator.Get_PinSignal_DefineString_SCFG_PINS_SOURCE_x(
                         generator.Get_PinName_Accord_PinSignal(signal));
                 })});
}

std::vector<Topic> exintFunction()
{
    std::vector<Topic> topics{pinDeclaration(pinSignals()), pinDefaults(pinSignals()), crystalPins()};
    for (int line = 0; line <= LastLine; ++line) {
        const QString key = lineName(line).toLower();
        std::vector<Topic> inner;
        if (line < PinLines) {
            inner.push_back(pin(key, lineName(line)));
            inner.push_back(section("GenerateCode_EXINT_line_config", key + " source", isPlaced({lineName(line)}),
                                    {sourceCall("scfg_exint_line_config", line).onlyWhen("mux"),
                                     sourceCall("gpio_exint_line_config", line).onlyWhen("remap")}));
        }
        const QByteArray mode = "InterruptEvent_" + lineName(line).toLatin1();
        const QByteArray polarity = "Polarity_" + lineName(line).toLatin1();
        inner.push_back(assignment("GenerateCode_EXINT_init", "exint_init_struct.line_mode", mode.constData()));
        inner.push_back(assignment("GenerateCode_EXINT_init", "exint_init_struct.line_polarity", polarity.constData()));
        topics.push_back(section("GenerateCode_EXINT_init", key + " line", isGiven(mode.constData()), inner)
                             .onlyWhen(QLatin1String("lines:") + QString::number(line)));
    }
    topics.push_back(interruptRemarks());
    return topics;
}

std::vector<InterruptBranch> lineBranches()
{
    std::vector<InterruptBranch> branches;
    for (int line = 0; line <= LastLine; ++line) {
        const QString number = QString::number(line);
        const QByteArray mode = "InterruptEvent_" + lineName(line).toLatin1();
        branches.push_back({number + QLatin1String("_FLAG"), isOneOf(mode.constData(), {"EXINT_LINE_INTERRUPT"}),
                            QLatin1String("lines:") + number});
    }
    return branches;
}

} // namespace

const PeripheralTopics &exintTopics()
{
    static const PeripheralTopics topics{
        .kind = "EXINT",
        .function = exintFunction(),
        .branches = lineBranches(),
        .globalSignals = pinSignals(),
    };
    return topics;
}

} // namespace ChipLoom
