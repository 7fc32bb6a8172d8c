#include "GenerateCode/Generatecode_IP.h"

#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

struct InitLine
{
    const char *pattern;
    const char *member;
    const char *caption; // null: the pin itself
};

constexpr std::array<InitLine, 5> InitLines{{
    {R"(gpio_init_struct.gpio_drive_strength\s *= \s*\w+;{0,1})", "gpio_drive_strength", "Driver capability"},
    {R"(gpio_init_struct.gpio_out_type\s*=\s*\w+;{0,1})", "gpio_out_type", "GPIO type"},
    {R"(gpio_init_struct.gpio_mode\s*=\s*\w+;{0,1})", "gpio_mode", "GPIO mode"},
    {R"(gpio_init_struct.gpio_pins\s*=\s*\w+;{0,1})", "gpio_pins", nullptr},
    {R"(gpio_init_struct.gpio_pull\s*=\s*\w+;{0,1})", "gpio_pull", "Pull type"},
}};

// Here the comparators share one remap, which stands fixed while no output of theirs is routed to a pin.
constexpr std::array FixedComparatorRemap{ZV32F415, ZV32WB415};

bool pinsAreRemapped(ZV32MCUSERIALS series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits && traits->pinsRemapped;
}

} // namespace

bool GenerateCode_IP::writeInitCall(const QString &pin, QString &text) const
{
    return rewriteAll(text, QStringLiteral(R"(gpio_init\((\w+,\s*\&\w+)\);{0,1})"),
                      QLatin1String("gpio_init(") + Get_PinSignal_DefineString_GPIOx_UserDefine(pin) +
                          QLatin1String(", &gpio_init_struct);"));
}

bool GenerateCode_IP::writeMuxCall(const QString &pin, const QString &mux, QString &text, bool keepMux) const
{
    const CallMatch call = findCall(text, QStringLiteral("gpio_pin_mux_config"), 3);
    if (!call.found())
        return false;
    const QStringList arguments{Get_PinSignal_DefineString_GPIOx_UserDefine(pin),
                                Get_PinSignal_DefineString_GPIO_PinSource_x(pin), keepMux ? call.arguments.at(2) : mux};
    text.replace(call.start, call.length,
                 QLatin1String("gpio_pin_mux_config(") + arguments.join(QLatin1String(", ")) + QLatin1String(");"));
    return true;
}

bool GenerateCode_IP::GenerateCode_SignalPIN(const QString &signal, const QString &key, QString &text) const
{
    const SectionSpan span = findSection(text, key + QLatin1String(" pin"));
    if (!span.found())
        return false;
    if (!SignalName_Used(signal)) {
        replaceSection(text, span, {});
        return true;
    }

    const QString pin = Get_PinName_Accord_PinSignal(signal);
    const QString userPin = Get_PinSignal_DefineString_GPIO_Pin_x_UserDefine(pin);
    QString work = keptBody(text, span);
    for (const InitLine &line : InitLines) {
        QString value;
        if (line.caption)
            value = Get_PinSignal_DefineString_gpio_initstruct_member(signal, QLatin1String(line.caption));
        else
            value = userPin.isEmpty() ? Get_PinSignal_DefineString_GPIO_Pin_x(pin) : userPin;
        if (value.isEmpty())
            continue;
        rewriteAll(work, QLatin1String(line.pattern),
                   QLatin1String("gpio_init_struct.") + QLatin1String(line.member) + QLatin1String(" = ") + value +
                       QLatin1Char(';'));
    }
    if (!writeInitCall(pin, work))
        return false;
    const bool muxed = Get_PinSignal_DefineString_gpio_initstruct_member(signal, QStringLiteral("GPIO mode")) ==
                       QLatin1String("GPIO_MODE_MUX");
    if (muxed && !pinsAreRemapped(m_MCUSerial) &&
        !writeMuxCall(pin, Get_PinSignal_DefineString_GPIO_Mux_x(pin, signal), work, false))
        return false;
    replaceSection(text, span, work);
    return true;
}

bool GenerateCode_IP::GenerateCode_SignalPIN_NoModify(const QString &signal, const QString &key, QString &text) const
{
    const SectionSpan span = findSection(text, key + QLatin1String(" pin"));
    if (!span.found())
        return false;
    if (!SignalName_Used(signal)) {
        replaceSection(text, span, {});
        return true;
    }

    const QString pin = Get_PinName_Accord_PinSignal(signal);
    const QString userPin = Get_PinSignal_DefineString_GPIO_Pin_x_UserDefine(pin);
    const QString value = userPin.isEmpty() ? Get_PinSignal_DefineString_GPIO_Pin_x(pin) : userPin;
    QString work = keptBody(text, span);
    if (!value.isEmpty())
        rewriteAll(work, QStringLiteral(R"(\.gpio_pins\s*=\s*\w+;{0,1})"),
                   QLatin1String(".gpio_pins = ") + value + QLatin1Char(';'));
    if (!writeInitCall(pin, work))
        return false;
    if (!pinsAreRemapped(m_MCUSerial) && !writeMuxCall(pin, {}, work, true))
        return false;
    replaceSection(text, span, work);
    return true;
}

bool GenerateCode_IP::GenerateCode_GPIO_init_struct(QString &text, const QStringList &signalNames,
                                                    const QString &section, bool addLine) const
{
    const SectionSpan span = findSection(text, section);
    if (!span.found())
        return false;
    QString body;
    if (!usedOf(signalNames).isEmpty())
        body = addLine ? keptBody(text, span) : text.mid(span.bodyStart, span.bodyLength);
    replaceSection(text, span, body);
    return true;
}

bool GenerateCode_IP::IPSignalGroupInfoList_HaveTMROutput(const IPSignalGroupInfo &group) const
{
    for (const IPSignal &member : group.signalGroup) {
        if (member.TMRIPCanUseFlag)
            continue;
        for (const SignalsGPIOSetting *setting : m_AllSignalsGPIOSettingList) {
            if (IsPinNameSame(setting->signalInPinName, member.signalInPinName) &&
                setting->signalName.startsWith(QLatin1String("TMR")) &&
                (setting->signalIOMode.contains(QLatin1String("MuxOutputPushPull")) ||
                 setting->signalIOMode.contains(QLatin1String("MuxOutputOpenDrain"))))
                return true;
        }
    }
    return false;
}

bool GenerateCode_IP::groupFits(const IPSignalGroupInfo &group, const QStringList &usedSignals) const
{
    for (const QString &signal : usedSignals) {
        const QString pin = Get_PinName_Accord_PinSignal(signal);
        bool stands = false;
        for (const IPSignal &member : group.signalGroup)
            stands = stands || (member.signalName == signal && IsPinNameSame(member.signalInPinName, pin));
        if (!stands)
            return false;
    }
    return true;
}

QString GenerateCode_IP::remapConstant(const QStringList &usedSignals) const
{
    if (usedSignals.isEmpty())
        return {};
    for (const IPSignalGroupInfo &group : m_deviceIPSignalGroupInfoList) {
        if (groupFits(group, usedSignals) && !IPSignalGroupInfoList_HaveTMROutput(group))
            return group.GMUX;
    }
    return {};
}

bool GenerateCode_IP::writeRemapSection(const QString &section, const QString &constant, QString &text) const
{
    const SectionSpan span = findSection(text, section);
    if (!span.found())
        return false;
    if (constant.isEmpty()) {
        replaceSection(text, span, {});
        return true;
    }
    QString work = keptBody(text, span);
    const CallMatch call = findCall(work, QStringLiteral("gpio_pin_remap_config"), 2);
    if (!call.found())
        return false;
    work.replace(call.start, call.length,
                 QLatin1String("gpio_pin_remap_config(") + constant + QLatin1String(", TRUE);"));
    replaceSection(text, span, work);
    return true;
}

QStringList GenerateCode_IP::usedOf(const QStringList &signalNames) const
{
    QStringList used;
    for (const QString &signal : signalNames) {
        if (SignalName_Used(signal))
            used.append(signal);
    }
    return used;
}

bool GenerateCode_IP::GenerateCode_GPIOGMUX(const QStringList &signalNames, QString &text) const
{
    const QStringList used = usedOf(signalNames);
    const bool comparatorSeries =
        std::find(FixedComparatorRemap.begin(), FixedComparatorRemap.end(), m_MCUSerial) != FixedComparatorRemap.end();
    const bool comparator = m_IPName == QLatin1String("CMP1") || m_IPName == QLatin1String("CMP2");
    const bool outputRouted = used.contains(QLatin1String("CMP1_OUT")) || used.contains(QLatin1String("CMP2_OUT"));
    if (comparatorSeries && comparator && !outputRouted)
        return writeRemapSection(QStringLiteral("gpio gmux"), QStringLiteral("CMP_MUX_11"), text);
    return writeRemapSection(QStringLiteral("gpio gmux"), remapConstant(used), text);
}

bool GenerateCode_IP::GenerateCode_GPIOGMUX1(const QStringList &signalNames, QString &text) const
{
    return writeRemapSection(QStringLiteral("gpio1 gmux"), remapConstant(usedOf(signalNames)), text);
}

bool GenerateCode_IP::GenerateCode_PD0_PD1_GMUX(QString &text) const
{
    static const QStringList CrystalPins{QStringLiteral("PD0/HEXT_IN"), QStringLiteral("HEXT_IN/PD0"),
                                         QStringLiteral("PD1/HEXT_OUT"), QStringLiteral("HEXT_OUT/PD1")};
    bool used = false;
    for (const SignalsGPIOSetting *setting : m_VaildSignalsGPIOSettingList)
        used = used || CrystalPins.contains(setting->InPinName);
    return GenerateCode_Handle_Function(text, QStringLiteral("gpio pd01 gmux"), used);
}

} // namespace ChipLoom
