#include "GenerateCode/Generatecode_IP.h"

#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

struct PinMember
{
    QString member;
    QString caption; // of the setting that it takes; empty: the pin itself
};

const QString ModeCaption = QStringLiteral("GPIO mode");
const std::array<PinMember, 5> PinMembers{{
    {QStringLiteral("gpio_init_struct.gpio_drive_strength"), QStringLiteral("Driver capability")},
    {QStringLiteral("gpio_init_struct.gpio_out_type"), QStringLiteral("GPIO type")},
    {QStringLiteral("gpio_init_struct.gpio_mode"), ModeCaption},
    {QStringLiteral("gpio_init_struct.gpio_pins"), {}},
    {QStringLiteral("gpio_init_struct.gpio_pull"), QStringLiteral("Pull type")},
}};

// Here the comparators share one remap, which stands fixed while no output of theirs is routed to a pin.
constexpr std::array FixedComparatorRemap{ZV32F415, ZV32WB415};

bool pinsAreRemapped(ZV32MCUSERIALS series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits && traits->pinsRemapped;
}

} // namespace

void writePinSettings(QString &text, const SignalsGPIOSetting &setting)
{
    for (const PinMember &line : PinMembers) {
        const QString value = line.caption.isEmpty() ? QString() : valueOfCaption(setting, line.caption);
        if (!value.isEmpty() && line.caption != ModeCaption)
            rewriteAssignments(text, line.member, value);
    }
}

GenerateCode_IP::PinDefines GenerateCode_IP::definesOf(const QString &pin) const
{
    PinDefines defines;
    if (const GPIO_Pin_Define_Info *define = defineOfPin(pin))
        defines = {define->GPIO_x, define->GPIO_Pin_x, define->GPIO_PinSource_x};
    const SignalsGPIOSetting *setting = settingOnPin(pin);
    if (setting && !setting->signalUserLabel.isEmpty()) {
        defines.port = setting->signalUserLabel_EXT + QLatin1String("_GPIO_PORT");
        defines.pin = setting->signalUserLabel_EXT + QLatin1String("_PIN");
    }
    return defines;
}

bool GenerateCode_IP::writeInitCall(const PinDefines &pin, SectionedText &text)
{
    return rewriteCalls(text, QStringLiteral("gpio_init"), 2,
                        callText(QStringLiteral("gpio_init"), {pin.port, QStringLiteral("&gpio_init_struct")}));
}

bool GenerateCode_IP::GenerateCode_SignalPIN(const QString &signal, const QString &key, SectionedText &text) const
{
    const QString section = key + QLatin1String(" pin");
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    if (!setting)
        return GenerateCode_Handle_Function(text, section, false);
    std::optional<SectionedText> work = text.keptBody(section);
    if (!work)
        return false;

    const QString pin = Get_PinName_Accord_PinSignal(signal);
    const PinDefines defines = definesOf(pin);
    for (const PinMember &line : PinMembers) {
        const QString value = line.caption.isEmpty() ? defines.pin : valueOfCaption(*setting, line.caption);
        if (!value.isEmpty())
            rewriteAssignments(*work, line.member, value);
    }
    if (!writeInitCall(defines, *work))
        return false;
    const bool muxed = valueOfCaption(*setting, ModeCaption) == QLatin1String("GPIO_MODE_MUX");
    if (muxed && !pinsAreRemapped(m_MCUSerial) &&
        !rewriteCall(*work, QStringLiteral("gpio_pin_mux_config"),
                     {defines.port, defines.source, Get_PinSignal_DefineString_GPIO_Mux_x(pin, signal)}))
        return false;
    return text.replaceSection(section, std::move(*work));
}

bool GenerateCode_IP::GenerateCode_SignalPIN_NoModify(const QString &signal, const QString &key,
                                                      SectionedText &text) const
{
    const QString section = key + QLatin1String(" pin");
    if (!SignalName_Used(signal))
        return GenerateCode_Handle_Function(text, section, false);
    std::optional<SectionedText> work = text.keptBody(section);
    if (!work)
        return false;

    const PinDefines defines = definesOf(Get_PinName_Accord_PinSignal(signal));
    if (!defines.pin.isEmpty())
        rewriteAssignments(*work, QStringLiteral(".gpio_pins"), defines.pin);
    if (!writeInitCall(defines, *work))
        return false;
    const QString function = QStringLiteral("gpio_pin_mux_config");
    const auto mux = [&](QString &call, const QStringList &samples) {
        appendCall(call, function, {defines.port, defines.source, samples.at(2)});
    };
    if (!pinsAreRemapped(m_MCUSerial) &&
        !work->writeFirst({Statement::Kind::Call, function, 3}, SectionedText::Part::Statement, mux))
        return false;
    return text.replaceSection(section, std::move(*work));
}

bool GenerateCode_IP::GenerateCode_GPIO_init_struct(SectionedText &text, const QStringList &signalNames,
                                                    const QString &section, bool addLine) const
{
    const bool used = !usedOf(signalNames).isEmpty();
    return used && !addLine ? text.replaceSection(section, text.bodyText(section))
                            : GenerateCode_Handle_Function(text, section, used);
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

bool GenerateCode_IP::writeRemapSection(const QString &section, const QString &constant, SectionedText &text) const
{
    if (constant.isEmpty())
        return GenerateCode_Handle_Function(text, section, false);
    std::optional<SectionedText> work = text.keptBody(section);
    return work && rewriteCall(*work, QStringLiteral("gpio_pin_remap_config"), {constant, QStringLiteral("TRUE")}) &&
           text.replaceSection(section, std::move(*work));
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

bool GenerateCode_IP::GenerateCode_GPIOGMUX(const QStringList &signalNames, SectionedText &text) const
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

bool GenerateCode_IP::GenerateCode_GPIOGMUX1(const QStringList &signalNames, SectionedText &text) const
{
    return writeRemapSection(QStringLiteral("gpio1 gmux"), remapConstant(usedOf(signalNames)), text);
}

bool GenerateCode_IP::GenerateCode_PD0_PD1_GMUX(SectionedText &text) const
{
    static const QStringList CrystalPins{QStringLiteral("PD0/HEXT_IN"), QStringLiteral("HEXT_IN/PD0"),
                                         QStringLiteral("PD1/HEXT_OUT"), QStringLiteral("HEXT_OUT/PD1")};
    bool used = false;
    for (const SignalsGPIOSetting *setting : own().settings)
        used = used || CrystalPins.contains(setting->InPinName);
    return GenerateCode_Handle_Function(text, QStringLiteral("gpio pd01 gmux"), used);
}

} // namespace ChipLoom
