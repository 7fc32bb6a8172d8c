#include "GenerateCode/Generatecode_IP.h"

#include "GenerateCode/PinBlock.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"
#include "Model/SeriesHelpers.h"

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

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

PinBlock::PinBlock(const TextCut &block) : text(block.text())
{
    for (const TextCut::Piece &piece : block.pieces()) {
        const auto member = std::find_if(PinMembers.begin(), PinMembers.end(), [&](const PinMember &one) {
            return piece.kind == TextCut::Piece::Kind::Assignment && piece.name.endsWith(one.member);
        });
        const int arguments = piece.bodyStart + piece.name.size() + 1;
        if (member != PinMembers.end()) {
            places.push_back({member->caption.isEmpty() ? Kind::Pin : Kind::Setting,
                              static_cast<quint8>(member - PinMembers.begin()), piece.bodyStart, piece.bodyEnd()});
        } else if (piece.is({Statement::Kind::Call, QStringLiteral("gpio_init"), 2})) {
            places.push_back({Kind::Init, 0, arguments, piece.bodyEnd()});
        } else if (piece.is({Statement::Kind::Call, QStringLiteral("gpio_pin_mux_config"), 3})) {
            places.push_back({Kind::Mux, 0, arguments, piece.bodyEnd()});
            if (muxSample.isEmpty())
                muxSample = piece.samples.at(2);
        }
    }
}

void writePinSettings(std::string &text, const SignalsGPIOSetting &setting)
{
    for (const PinMember &line : PinMembers) {
        const QString value = line.caption.isEmpty() ? QString() : valueOfCaption(setting, line.caption);
        if (!value.isEmpty() && line.caption != ModeCaption)
            rewriteAssignments(text, line.member, value);
    }
}

bool GenerateCode_IP::GenerateCode_SignalPIN(const QString &signal, const TextCut &block, std::string &text) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    return !setting || writePinBlock(numberOfSignal(signal), *setting, true, PinBlock::of(block), text);
}

bool GenerateCode_IP::GenerateCode_SignalPIN(SignalNumber signal, const PinBlock &block, std::string &text) const
{
    const SignalsGPIOSetting *setting = pins().settingOf(signal);
    return !setting || writePinBlock(signal, *setting, true, block, text);
}

bool GenerateCode_IP::GenerateCode_SignalPIN_NoModify(const QString &signal, const TextCut &block,
                                                      std::string &text) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    return !setting || writePinBlock(numberOfSignal(signal), *setting, false, PinBlock::of(block), text);
}

// Without its setting the block keeps its electrical settings and the number of the multiplexer.
bool GenerateCode_IP::writePinBlock(SignalNumber signal, const SignalsGPIOSetting &setting, bool withSetting,
                                    const PinBlock &block, std::string &text) const
{
    static const GPIO_Pin_Define_Info Undefined;
    const QStringView name = pinNameOf(setting);
    const PinDefines::Pin *pin = pins().defines().find(name);
    const GPIO_Pin_Define_Info &define = pin ? pin->define : Undefined;
    const QString &label = pins().labelOf(name);
    const QString *mode = withSetting ? findValueOfCaption(setting, ModeCaption) : nullptr;
    const bool muxed = !withSetting || (mode && *mode == QLatin1String("GPIO_MODE_MUX"));
    bool hasInit = false;
    bool hasMux = !muxed || pinsAreRemapped(m_MCUSerial);
    const size_t start = text.size();
    int copied = 0;
    const auto copyTo = [&](const PinBlock::Place &place) {
        text.append(between(block.text, copied, place.start));
        copied = place.end;
    };
    const auto appendName = [&](const PinBlock::Place &place, const QString &ofDefine, QLatin1String ofLabel) {
        copyTo(place);
        append(text, label.isEmpty() ? ofDefine : label);
        if (!label.isEmpty())
            text += ofLabel.data();
    };
    for (const PinBlock::Place &place : block.places) {
        switch (place.kind) {
        case PinBlock::Kind::Pin:
            if (!(label.isEmpty() && define.GPIO_Pin_x.isEmpty()))
                appendName(place, define.GPIO_Pin_x, PinOfLabel);
            break;
        case PinBlock::Kind::Setting:
            if (const QString *value =
                    withSetting ? findValueOfCaption(setting, PinMembers[place.member].caption) : nullptr;
                value && !value->isEmpty()) {
                copyTo(place);
                append(text, *value);
            }
            break;
        case PinBlock::Kind::Init:
            appendName(place, define.GPIO_x, PortOfLabel);
            text += ", &gpio_init_struct);";
            hasInit = true;
            break;
        case PinBlock::Kind::Mux:
            if (hasMux)
                break;
            appendName(place, define.GPIO_x, PortOfLabel);
            text += ", ";
            append(text, define.GPIO_PinSource_x);
            text += ", ";
            if (!withSetting)
                append(text, block.muxSample);
            else if (pin)
                append(text, pin->muxOf(signal));
            text += ");";
            hasMux = true;
            break;
        }
    }
    text.append(between(block.text, copied, length(block.text)));
    if (!hasInit || !hasMux)
        text.resize(start);
    return hasInit && hasMux;
}

void GenerateCode_IP::GenerateCode_GPIO_init_struct(const SignalNumbers &signalNumbers, std::string_view body,
                                                    bool addLine, std::string &text) const
{
    if (!isAnyUsed(signalNumbers))
        return;
    text.append(body);
    if (addLine)
        text += '\n';
}

bool GenerateCode_IP::IPSignalGroupInfoList_HaveTMROutput(const IPSignalGroupInfo &group) const
{
    for (const IPSignal &member : group.signalGroup) {
        if (member.TMRIPCanUseFlag)
            continue;
        for (const SignalsGPIOSetting *setting : lists().AllSignalsGPIOSettingList) {
            if (IsPinNameSame(setting->signalInPinName, member.signalInPinName) &&
                setting->signalName.startsWith(QLatin1String("TMR")) &&
                (setting->signalIOMode.contains(QLatin1String("MuxOutputPushPull")) ||
                 setting->signalIOMode.contains(QLatin1String("MuxOutputOpenDrain"))))
                return true;
        }
    }
    return false;
}

QString GenerateCode_IP::remapConstant(const QStringList &usedSignals) const
{
    if (usedSignals.isEmpty())
        return {};
    QStringList pins;
    for (const QString &signal : usedSignals)
        pins.append(Get_PinName_Accord_PinSignal(signal));
    const auto stands = [&](const IPSignalGroupInfo &group, int i) {
        return std::any_of(group.signalGroup.begin(), group.signalGroup.end(), [&](const IPSignal &member) {
            return member.signalName == usedSignals.at(i) && IsPinNameSame(member.signalInPinName, pins.at(i));
        });
    };
    for (const IPSignalGroupInfo &group : lists().deviceIPSignalGroupInfoList) {
        int fitting = 0;
        while (fitting < pins.size() && stands(group, fitting))
            ++fitting;
        if (fitting == pins.size() && !IPSignalGroupInfoList_HaveTMROutput(group))
            return group.GMUX;
    }
    return {};
}

bool GenerateCode_IP::writeRemapBlock(const QString &constant, const TextCut &block, std::string &text)
{
    const Statement remap{Statement::Kind::Call, QStringLiteral("gpio_pin_remap_config"), 2};
    if (constant.isEmpty())
        return true;
    for (const TextCut::Piece &piece : block.pieces()) {
        if (!piece.is(remap))
            continue;
        text.append(block.between(0, piece.bodyStart));
        appendCall(text, piece.name, {constant, QStringLiteral("TRUE")});
        text.append(block.between(piece.bodyEnd(), length(block.text())));
        return true;
    }
    return false;
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

bool GenerateCode_IP::isAnyUsed(const SignalNumbers &signalNumbers) const
{
    return std::any_of(signalNumbers.begin(), signalNumbers.end(),
                       [this](SignalNumber signal) { return pins().settingOf(signal); });
}

bool GenerateCode_IP::GenerateCode_GPIOGMUX(const QStringList &signalNames, const TextCut &block,
                                            std::string &text) const
{
    const QStringList used = usedOf(signalNames);
    const bool comparatorSeries =
        std::find(FixedComparatorRemap.begin(), FixedComparatorRemap.end(), m_MCUSerial) != FixedComparatorRemap.end();
    const bool comparator = m_IPName == QLatin1String("CMP1") || m_IPName == QLatin1String("CMP2");
    const bool outputRouted = used.contains(QLatin1String("CMP1_OUT")) || used.contains(QLatin1String("CMP2_OUT"));
    if (comparatorSeries && comparator && !outputRouted)
        return writeRemapBlock(QStringLiteral("CMP_MUX_11"), block, text);
    return writeRemapBlock(remapConstant(used), block, text);
}

bool GenerateCode_IP::GenerateCode_GPIOGMUX1(const QStringList &signalNames, const TextCut &block,
                                             std::string &text) const
{
    return writeRemapBlock(remapConstant(usedOf(signalNames)), block, text);
}

bool GenerateCode_IP::anyOnCrystal(const QList<SignalsGPIOSetting *> &settings)
{
    static const QStringList CrystalPins{QStringLiteral("PD0/HEXT_IN"), QStringLiteral("HEXT_IN/PD0"),
                                         QStringLiteral("PD1/HEXT_OUT"), QStringLiteral("HEXT_OUT/PD1")};
    return std::any_of(settings.begin(), settings.end(),
                       [](const SignalsGPIOSetting *setting) { return CrystalPins.contains(setting->InPinName); });
}

bool GenerateCode_IP::GenerateCode_PD0_PD1_GMUX(SectionedText &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("gpio pd01 gmux"), standsOnCrystal());
}

} // namespace ChipLoom
