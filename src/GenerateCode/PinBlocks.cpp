#include "GenerateCode/Generatecode_IP.h"

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

/// The places of a block that take values, found once and kept with it.
struct PinBlockPlan : TextCut::Derived
{
    struct Place
    {
        const PinMember *member; ///< of an assignment
        bool isInit;             ///< of calls: gpio_init, or else the multiplexer's
        const TextCut::Piece *piece;
    };

    explicit PinBlockPlan(const TextCut &block)
    {
        for (const TextCut::Piece &piece : block.pieces()) {
            const auto member = std::find_if(PinMembers.begin(), PinMembers.end(), [&](const PinMember &one) {
                return piece.kind == TextCut::Piece::Kind::Assignment && piece.name.endsWith(one.member);
            });
            const bool isInit = piece.is({Statement::Kind::Call, QStringLiteral("gpio_init"), 2});
            if (member != PinMembers.end())
                places.push_back({member, false, &piece});
            else if (isInit || piece.is({Statement::Kind::Call, QStringLiteral("gpio_pin_mux_config"), 3}))
                places.push_back({nullptr, isInit, &piece});
        }
    }

    std::vector<Place> places;
};

// Here the comparators share one remap, which stands fixed while no output of theirs is routed to a pin.
constexpr std::array FixedComparatorRemap{ZV32F415, ZV32WB415};

bool pinsAreRemapped(ZV32MCUSERIALS series)
{
    const SeriesTraits *traits = seriesTraits(series);
    return traits && traits->pinsRemapped;
}

} // namespace

void writePinSettings(std::string &text, const SignalsGPIOSetting &setting)
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

bool GenerateCode_IP::GenerateCode_SignalPIN(const QString &signal, const TextCut &block, std::string &text) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    return !setting || writePinBlock(signal, *setting, true, block, text);
}

bool GenerateCode_IP::GenerateCode_SignalPIN_NoModify(const QString &signal, const TextCut &block,
                                                      std::string &text) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    return !setting || writePinBlock(signal, *setting, false, block, text);
}

// Without its setting the block keeps its electrical settings and the number of the multiplexer.
bool GenerateCode_IP::writePinBlock(const QString &signal, const SignalsGPIOSetting &setting, bool withSetting,
                                    const TextCut &block, std::string &text) const
{
    const QString pin = pinNameOf(setting);
    const PinDefines defines = definesOf(pin);
    const bool muxed = !withSetting || valueOfCaption(setting, ModeCaption) == QLatin1String("GPIO_MODE_MUX");
    bool hasInit = false;
    bool hasMux = !muxed || pinsAreRemapped(m_MCUSerial);
    const size_t start = text.size();
    int copied = 0;
    const auto copyTo = [&](const TextCut::Piece &piece) {
        text.append(block.between(copied, piece.bodyStart));
        copied = piece.bodyEnd();
    };
    const auto appendPortCall = [&](const TextCut::Piece &piece) {
        copyTo(piece);
        text.append(block.between(piece.bodyStart, piece.bodyStart + piece.name.size() + 1));
        append(text, defines.port);
    };
    for (const PinBlockPlan::Place &place : block.plan<PinBlockPlan>().places) {
        const TextCut::Piece &piece = *place.piece;
        if (place.member) {
            const bool isPin = place.member->caption.isEmpty();
            const QString value = isPin         ? defines.pin
                                  : withSetting ? valueOfCaption(setting, place.member->caption)
                                                : QString();
            if (value.isEmpty())
                continue;
            copyTo(piece);
            append(text, value);
        } else if (place.isInit) {
            appendPortCall(piece);
            text += ", &gpio_init_struct);";
            hasInit = true;
        } else if (!hasMux) {
            appendPortCall(piece);
            text += ", ";
            append(text, defines.source);
            text += ", ";
            append(text, withSetting ? Get_PinSignal_DefineString_GPIO_Mux_x(pin, signal) : piece.samples.at(2));
            text += ");";
            hasMux = true;
        }
    }
    text.append(block.between(copied, length(block.text())));
    if (!hasInit || !hasMux)
        text.resize(start);
    return hasInit && hasMux;
}

void GenerateCode_IP::GenerateCode_GPIO_init_struct(const QStringList &signalNames, std::string_view body, bool addLine,
                                                    std::string &text) const
{
    if (!isAnyUsed(signalNames))
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
    for (const IPSignalGroupInfo &group : m_deviceIPSignalGroupInfoList) {
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

bool GenerateCode_IP::isAnyUsed(const QStringList &signalNames) const
{
    return std::any_of(signalNames.begin(), signalNames.end(),
                       [this](const QString &signal) { return SignalName_Used(signal); });
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
