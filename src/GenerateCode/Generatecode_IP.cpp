#include "GenerateCode/Generatecode_IP.h"

#include "GenerateCode/SectionedText.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

std::shared_ptr<const PinIndex> pinIndexOf(const DesignLists &lists)
{
    return std::make_shared<const PinIndex>(std::make_shared<const PinDefines>(lists.GPIOPinDefineInfo),
                                            lists.AllSignalsGPIOSettingList);
}

const DesignLists &noLists()
{
    static const DesignLists none = [] {
        DesignLists lists;
        lists.pins = pinIndexOf(lists);
        return lists;
    }();
    return none;
}

} // namespace

GenerateCode_IP::GenerateCode_IP(ZV32MCUSERIALS series, QString ipName)
    : m_MCUSerial(series), m_IPName(std::move(ipName)), m_lists(&noLists())
{
}

void GenerateCode_IP::SetDesignLists(const DesignLists &lists)
{
    m_lists = &lists;
    m_ownLists.reset();
    m_own.reset();
}

DesignLists &GenerateCode_IP::ownLists()
{
    if (!m_ownLists) {
        m_ownLists = std::make_unique<DesignLists>(*m_lists);
        m_ownLists->generation = 0;
        m_lists = m_ownLists.get();
    }
    return *m_ownLists;
}

void GenerateCode_IP::SetAllSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &list)
{
    DesignLists &lists = ownLists();
    lists.AllSignalsGPIOSettingList = list;
    lists.pins = pinIndexOf(lists);
    m_own.reset();
}

void GenerateCode_IP::SetAllNVICSettingList(const QList<MCUNVICSetting *> &list)
{
    ownLists().AllNVICSettingList = list;
}

void GenerateCode_IP::SetGPIOPinDefineInfo(const QList<GPIO_Pin_Define_Info *> &list)
{
    DesignLists &lists = ownLists();
    lists.GPIOPinDefineInfo = list;
    lists.pins = pinIndexOf(lists);
}

void GenerateCode_IP::SetValidDMARequestList(const QList<DMARequest *> &list)
{
    ownLists().ValidDMAChannalList = list;
}

void GenerateCode_IP::SetIPSignalGroupInfoList(const QList<IPSignalGroupInfo> &list)
{
    ownLists().deviceIPSignalGroupInfoList = list;
}

const QList<SignalsGPIOSetting *> &GenerateCode_IP::own() const
{
    if (!m_own) {
        m_own = Get_VaildSignalsGPIOSettingList(lists().AllSignalsGPIOSettingList);
        for (const QString &name : m_globalSignals) {
            for (SignalsGPIOSetting *setting :
                 Get_VaildSignalsGPIOSettingList(lists().AllSignalsGPIOSettingList, name)) {
                if (!m_own->contains(setting))
                    m_own->append(setting);
            }
        }
    }
    return *m_own;
}

QList<SignalsGPIOSetting *>
GenerateCode_IP::Get_VaildSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &all) const
{
    QList<SignalsGPIOSetting *> own;
    for (SignalsGPIOSetting *setting : all) {
        const QString &name = setting->signalName;
        int end = name.indexOf(QLatin1Char('_'));
        bool isOwn = end < 0 && name.contains(m_IPName);
        for (; end >= 0 && !isOwn; end = name.indexOf(QLatin1Char('_'), end + 1))
            isOwn = name.leftRef(end).endsWith(m_IPName);
        if (isOwn)
            own.append(setting);
    }
    return own;
}

QList<SignalsGPIOSetting *> GenerateCode_IP::Get_VaildSignalsGPIOSettingList(const QList<SignalsGPIOSetting *> &all,
                                                                             const QString &signal) const
{
    QList<SignalsGPIOSetting *> same;
    for (SignalsGPIOSetting *setting : all) {
        if (IsSignalSame(setting->signalName, signal))
            same.append(setting);
    }
    return same;
}

const SignalsGPIOSetting *GenerateCode_IP::settingOfSignal(const QString &signal) const
{
    // What is named after the instance, or is a global signal of it, is its own wherever it stands.
    const bool isNamedSo = signal.startsWith(m_IPName) && signal.midRef(m_IPName.size()).startsWith(QLatin1Char('_'));
    const bool isOwn = isNamedSo || m_globalSignals.contains(signal);
    return isOwn ? pins().settingOf(signal) : nullptr;
}

const GPIO_Pin_Define_Info *GenerateCode_IP::defineOfPin(const QString &pin) const
{
    const PinDefines::Pin *found = pins().defines().find(pin);
    return found ? &found->define : nullptr;
}

const RefParameter *GenerateCode_IP::parameter(const QString &name) const
{
    const auto found = std::find_if(m_RefParameterList.begin(), m_RefParameterList.end(),
                                    [&](const RefParameter &entry) { return entry.Name == name; });
    return found == m_RefParameterList.end() ? nullptr : &*found;
}

// Without the note in brackets.
QStringView GenerateCode_IP::pinNameOf(const SignalsGPIOSetting &setting)
{
    const QStringView name = setting.signalInPinName;
    const auto bracket = name.indexOf(QLatin1Char('['));
    return bracket < 0 ? name : name.left(bracket).trimmed();
}

QString GenerateCode_IP::Get_PinName_Accord_PinSignal(const QString &signal) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    return setting ? pinNameOf(*setting).toString() : QString();
}

QString GenerateCode_IP::Get_CombinedSignalsName_Accord_PinSignal(const QString &signal) const
{
    for (const SignalsGPIOSetting *setting : own()) {
        if (setting->signalName.contains(signal))
            return setting->signalName;
    }
    return signal;
}

bool GenerateCode_IP::SignalName_Used(const QString &signal) const
{
    return settingOfSignal(signal) != nullptr;
}

bool GenerateCode_IP::GPIO_x_Used(const QString &port) const
{
    const QString prefix = QLatin1Char('P') + port.mid(4, 1);
    for (const SignalsGPIOSetting *setting : own()) {
        if (setting->signalInPinName.contains(prefix))
            return true;
    }
    return false;
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIOx(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->GPIO_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_Pin_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->GPIO_Pin_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_PinSource_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->GPIO_PinSource_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_EXINT_LINE_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->EXINT_LINE_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_SCFG_GPIO_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->SCFG_GPIO_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_SCFG_PINS_SOURCE_x(const QString &pin) const
{
    const GPIO_Pin_Define_Info *define = defineOfPin(pin);
    return define ? define->SCFG_PINS_SOURCE_x : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_Mux_x(const QString &pin, const QString &signal) const
{
    const PinDefines::Pin *found = pins().defines().find(pin);
    return found ? found->muxOf(numberOfSignal(signal)) : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIO_Pin_x_UserDefine(const QString &pin) const
{
    const QString label = pins().labelOf(pin);
    return label.isEmpty() ? QString() : label + PinOfLabel;
}

QString GenerateCode_IP::Get_PinSignal_DefineString_GPIOx_UserDefine(const QString &pin) const
{
    const QString label = pins().labelOf(pin);
    return label.isEmpty() ? Get_PinSignal_DefineString_GPIOx(pin) : label + PortOfLabel;
}

const QString *findValueOfCaption(const SignalsGPIOSetting &setting, const QString &caption)
{
    for (const RefParameter &info : setting.signalPinGPIOInfoList) {
        if (info.Comment_EN.size() == caption.size() && info.Comment_EN == caption)
            return &info.CurrentValue;
    }
    return nullptr;
}

QString valueOfCaption(const SignalsGPIOSetting &setting, const QString &caption)
{
    const QString *value = findValueOfCaption(setting, caption);
    return value ? *value : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_gpio_initstruct_member(const QString &signal,
                                                                           const QString &key) const
{
    const SignalsGPIOSetting *setting = settingOfSignal(signal);
    return setting ? valueOfCaption(*setting, key) : QString();
}

QString GenerateCode_IP::Get_PinSignal_DefineString_gpio_initstruct_member(const QString &pin, const QString &signal,
                                                                           const QString &key) const
{
    for (const SignalsGPIOSetting *setting : own()) {
        if (IsSignalSame(setting->signalName, signal) && IsPinNameSame(setting->signalInPinName, pin))
            return valueOfCaption(*setting, key);
    }
    return {};
}

QString GenerateCode_IP::Get_DefineString_Param(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->CurrentValue : QString();
}

bool GenerateCode_IP::isTrue(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry && entry->CurrentValue == QLatin1String("TRUE");
}

QString GenerateCode_IP::Get_DefineString_Param_Default(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->DefaultValue : QString();
}

CURRENTVALUETYPE GenerateCode_IP::Get_Parma_ValueType(const QString &name) const
{
    const RefParameter *entry = parameter(name);
    return entry ? entry->CurrentValueType : CURRENTVALUETYPE_NONE;
}

bool GenerateCode_IP::NVIC_Is_Used(const QString &nvicName) const
{
    for (const MCUNVICSetting *setting : lists().AllNVICSettingList) {
        if (setting->NVICName == nvicName && setting->enabledFlag)
            return true;
    }
    return false;
}

QStringList GenerateCode_IP::GetPeripheralEnabledIRQHanderList(const QString &peripheral) const
{
    QString owner = peripheral;
    if (owner.contains(QLatin1String("I2S")) && !owner.contains(QLatin1String("I2SF")))
        owner.replace(QLatin1String("I2S"), QLatin1String("SPI"));
    QStringList handlers;
    for (const MCUNVICSetting *setting : lists().AllNVICSettingList) {
        if (setting->enabledFlag && setting->relatedIPNameList.contains(owner))
            handlers.append(setting->HandlerName);
    }
    return handlers;
}

bool GenerateCode_IP::GenerateCode_Interrupt_enable_sub1(SectionedText &text, const QString &section,
                                                         const QString &parameterName) const
{
    const QString &name = parameterName.isEmpty() ? section : parameterName;
    return GenerateCode_Handle_Function(text, section, isTrue(name));
}

bool GenerateCode_IP::GenerateCode_Interrupt_enable_sub2(SectionedText &text, const QString &section,
                                                         const QStringList &parameters) const
{
    bool any = false;
    for (const QString &name : parameters)
        any = any || isTrue(name);
    return GenerateCode_Handle_Function(text, section, any);
}

void GenerateCode_IP::GenerateCode_Peripheral_interrupt_remarks(const QString &peripheral, std::string_view body,
                                                                std::string &text) const
{
    const QStringList handlers = GetPeripheralEnabledIRQHanderList(peripheral);
    if (handlers.isEmpty())
        return;
    std::string comment(body);
    replaceAll(comment, "  */\n", {});
    text += comment;
    for (const QString &handler : handlers)
        append(text, QLatin1String("   *     --void ") + handler + QLatin1String("(void)\n"));
    text += "   */\n\n";
}

uint GenerateCode_IP::QStringToUInt(bool &ok, const QString &text)
{
    return text.toUInt(&ok, text.contains(QLatin1String("0x")) ? 16 : 10);
}

int GenerateCode_IP::QStringToInt(bool &ok, const QString &text)
{
    return text.toInt(&ok, text.contains(QLatin1String("0x")) ? 16 : 10);
}

QString GenerateCode_IP::UIntToQString(uint value, CURRENTVALUETYPE type)
{
    if (type == CURRENTVALUETYPE_HEX)
        return QLatin1String("0x") + QString::number(value, 16).toUpper();
    return QString::number(value);
}

} // namespace ChipLoom
